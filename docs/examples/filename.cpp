// The names that a compiler driver derives from that of its input.
#include <support/filename.h>

#include <cstdlib>

int main() {
    const char* const input = "src/lib.v2/main.c";
    if (!fn_matches_ext(input, "c")) {  // without the point
        return 1;
    }

    // The parts lie in static buffers that the next call overwrites.
    const char* dir = nullptr;
    const char* base = nullptr;
    const char* ext = nullptr;
    fn_split(input, &dir, &base, &ext);
    std::printf("parts:   %s + %s + %s\n", dir, base, ext);

    // Without a destination the name is allocated, and the caller's to free.
    char* const object = fn_build(nullptr, "build", base, "o");
    std::printf("object:  %s\n", object);
    std::free(object);

    // In place, in a buffer with room for the longer name.
    char listing[64] = "main.asm";
    fn_addext(listing, ".listing", 1);
    std::printf("listing: %s\n", listing);

    // An option may name a stream, or no output at all.
    for (const char* const report : {"report.txt", "stderr", "none"}) {
        std::printf("report:  %s is %s\n", report,
                    fn_explicit_disable(report)           ? "off"
                    : fn_is_user_specified_stream(report) ? "a stream"
                                                          : "a file");
    }

    // A name for a file that does not exist yet; nothing is created.
    char* const scratch = fn_tmpnam(nullptr, nullptr, "/tmp");
    std::printf("scratch: %s\n", fn_exists(scratch) == 1 ? "taken" : "free");
    std::free(scratch);
}
