// Calls something of every public header.
#include <demangle/decode.h>
#include <demangle/decode_eabi.h>
#include <demangle/decode_id.h>
#include <support/buildid.h>
#include <support/filename.h>
#include <support/safealloc.h>
#include <support/zesignalsupport.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

static void ignore(int) {}
static void leave_well(int) {
    std::_Exit(0);
}

int main() {
    char name[32] = "prog.asm";
    fn_addext(name, ".cl", 1);
    std::puts(name);

    decode_mangle_scheme = 1;
    std::puts(decode_id("_ZN1A1fEi", 1));
    decode_mangle_scheme = 0;
    std::puts(decode_id("f__1AFi", 1));
    std::printf("%d\n", decode_is_ia64_subobject("_ZN1AC2Ev") ? 1 : 0);

    char text[32];
    int error = 0;
    int overflow = 0;
    std::size_t needed = 0;
    decode_identifier("x__1A", text, sizeof text, &error, &overflow, &needed, 1);
    std::puts(text);
    decode_identifier_eabi("_Z1fv", text, sizeof text, &error, &overflow, &needed, 1);
    std::puts(text);

    std::free(safemalloc(16));
    buildid(stdout, "Build Number ");

    // One variable, on both sides of a shared library's border.
    install_common_handlers(ignore, ignore);
    if (callback != ignore) {
        return 1;
    }
    callback = leave_well;
    std::puts(support_message_text());
    common_signal_handler(SIGFPE, "consumer", nullptr);
}
