// The version report of a tool with a build number of its own.
#include <support/buildid.h>

int main() {
    const build_inputs inputs{
        .date = "Mar  7 2024",  // __DATE__ and __TIME__ in a tool that is stamped when
        .time = "09:15:00",     // it is compiled
        .build_tag = "a01",
        .version1 = "1.2.3",
        .version2 = "9.0",
        .branch = "Release_8_3",
    };
    std::printf("Sample Linker v9.0\n");
    return buildid_of(inputs, stdout, "Build Number ") == '\n' ? 0 : 1;
}
