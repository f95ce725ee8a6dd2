// The version report: a banner line and the build number.
#include "interlist/version.h"

#include "interlist/diagnostics.h"
#include "support/buildid.h"

constexpr int title_width = 40;
constexpr const char* title = "Morvex C Source Interlister";
constexpr const char* version = "v" INTERLIST_VERSION;
constexpr const char* version_suffix = "";  // a qualifier of special builds

int print_banner(FILE* stream) {
    std::fprintf(stream, "%-*.*s", title_width, title_width, title);
    std::fprintf(stream, "%s%s", version, version_suffix);
    return std::fputc('\n', stream);
}

void report_version() {
    print_banner(stdout);
    buildid(stdout, "Build Number ");
    end_report();
}
