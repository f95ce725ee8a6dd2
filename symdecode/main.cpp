// symdecode: the demangler as a filter. Reads the command line, then decodes the names
// given as arguments, or copies standard input with the names in it decoded.
#include <getopt.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "symdecode/filter.h"

static constexpr int status_failed = 1;
static constexpr int status_usage = 2;

static constexpr char usage_text[] =
    "Usage: symdecode [options] [name ...]\n"
    "Turns mangled C++ symbol names back into declarations.\n"
    "\n"
    "With names, prints each one decoded on a line of its own. Without, copies\n"
    "standard input to standard output with every mangled name in it replaced.\n"
    "\n"
    "  -s, --scheme=SCHEME     0 (name__signature), 1 (_Z...) or auto, the default\n"
    "      --style=STYLE       how names of scheme 1 read: house, the default, or gnu,\n"
    "                          the platform's own texts\n"
    "  -p, --names-only        leave out signatures: the plain name (house style)\n"
    "  -_, --strip-underscore  drop the underscore that some targets put in front\n"
    "  -x, --extended          accept what newer compilers write (the default)\n"
    "  -e, --strict            accept only the fixed tables of each scheme\n"
    "  -l, --lines             standard input holds one name a line\n"
    "  -j, --json              print an object a line for each name\n"
    "  -h, --help              print this text and exit\n"
    "  -V, --version           print the version and exit\n"
    "\n"
    "The status is 0, 1 when reading or writing fails, 2 for a bad command line.\n";

enum class mode { run, help, version, usage_error };

struct command_line {
    mode what = mode::run;
    bool lines = false;
    std::vector<std::string_view> names;
};

static bool parse_scheme(std::string_view text, int& scheme) {
    if (text == "auto") {
        scheme = scheme_auto;
        return true;
    }
    scheme = text.size() == 1 ? text.front() - '0' : scheme_auto;
    return is_scheme(scheme);
}

static bool parse_style(std::string_view text, name_style& style) {
    style = text == "gnu" ? name_style::gnu : name_style::house;
    return text == "gnu" || text == "house";
}

static command_line parse_command_line(int argc, char** argv, text_filter& filter) {
    constexpr int style_option = 256;  // no letter
    static const option long_options[] = {
        {"scheme", required_argument, nullptr, 's'},
        {"style", required_argument, nullptr, style_option},
        {"names-only", no_argument, nullptr, 'p'},
        {"strip-underscore", no_argument, nullptr, '_'},
        {"extended", no_argument, nullptr, 'x'},
        {"strict", no_argument, nullptr, 'e'},
        {"lines", no_argument, nullptr, 'l'},
        {"json", no_argument, nullptr, 'j'},
        {"help", no_argument, nullptr, 'h'},
        {"version", no_argument, nullptr, 'V'},
        {nullptr, 0, nullptr, 0},
    };
    name_settings& settings = filter.decoder.settings;
    command_line result;
    for (int letter = 0; letter != -1;) {
        letter = getopt_long(argc, argv, "s:p_xeljhV", long_options, nullptr);
        switch (letter) {
            case -1:
                break;
            case 's':
                if (!parse_scheme(optarg, settings.scheme)) {
                    std::fprintf(stderr, "symdecode: invalid scheme '%s': use 0, 1 or auto\n",
                                 optarg);
                    result.what = mode::usage_error;
                    return result;
                }
                break;
            case style_option:
                if (!parse_style(optarg, settings.style)) {
                    std::fprintf(stderr, "symdecode: invalid style '%s': use house or gnu\n",
                                 optarg);
                    result.what = mode::usage_error;
                    return result;
                }
                break;
            case 'p':
                settings.names_only = true;
                break;
            case '_':
                settings.strip_underscore = true;
                break;
            case 'x':
                settings.extended = true;
                break;
            case 'e':
                settings.extended = false;
                break;
            case 'l':
                result.lines = true;
                break;
            case 'j':
                filter.json = true;
                break;
            case 'h':
                result.what = mode::help;
                return result;
            case 'V':
                result.what = mode::version;
                return result;
            default:
                result.what = mode::usage_error;
                return result;
        }
    }
    if (settings.names_only && settings.style == name_style::gnu) {
        std::fputs("symdecode: --names-only goes with the house style only\n", stderr);
        result.what = mode::usage_error;
    }
    result.names.assign(argv + optind, argv + argc);
    return result;
}

static int fail(const char* stream) {
    std::fprintf(stderr, "symdecode: %s: %s\n", stream, std::strerror(errno));
    return status_failed;
}

// Writes all of `out` and empties it. A reader that has gone away needs no message.
static bool write_out(std::string& out) {
    std::string_view rest = out;
    while (!rest.empty()) {
        const ssize_t written = write(STDOUT_FILENO, rest.data(), rest.size());
        if (written >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            if (errno != EPIPE) {
                fail("standard output");
            }
            return false;
        }
    }
    out.clear();
    return true;
}

static int decode_names(text_filter& filter, const std::vector<std::string_view>& names) {
    std::string out;
    for (const std::string_view name : names) {
        filter_symbol(filter, name, out);
        if (out.size() > output_step && !write_out(out)) {
            return status_failed;
        }
    }
    return write_out(out) ? 0 : status_failed;
}

// Reads once into what is free of `buffer`; -1 on an error.
static ssize_t read_in(std::vector<char>& buffer, std::size_t held) {
    for (;;) {
        const ssize_t count = read(STDIN_FILENO, buffer.data() + held, buffer.size() - held);
        if (count >= 0 || errno != EINTR) {
            return count;
        }
    }
}

// Whatever a read gives is passed on before the next one, but for the end of it that may
// be part of a name, so that a slow writer's text is not sat on.
static int filter_input(text_filter& filter, bool lines) {
    std::vector<char> buffer(4 * longest_name);
    std::string out;
    std::size_t held = 0;
    for (bool last = false; !last;) {
        const ssize_t count = read_in(buffer, held);
        const int read_error = count < 0 ? errno : 0;
        last = count <= 0;
        std::string_view text(buffer.data(), held + static_cast<std::size_t>(last ? 0 : count));
        for (bool again = true; again;) {
            const std::size_t done = lines ? filter_lines(filter, text, last, out)
                                           : filter_text(filter, text, last, out);
            text.remove_prefix(done);
            again = out.size() > output_step && !text.empty();
            if (!write_out(out)) {
                return status_failed;
            }
        }
        held = text.size();
        std::memmove(buffer.data(), text.data(), held);
        if (read_error != 0) {
            errno = read_error;
            return fail("standard input");
        }
    }
    return 0;
}

static int run(int argc, char** argv) {
    text_filter filter;
    const command_line command = parse_command_line(argc, argv, filter);
    std::string out;
    switch (command.what) {
        case mode::help:
            out = usage_text;
            break;
        case mode::version:
            out = "symdecode " SYMDECODE_VERSION "\n";
            break;
        case mode::usage_error:
            std::fputs("Try 'symdecode --help' for more information.\n", stderr);
            return status_usage;
        case mode::run:
            return command.names.empty() ? filter_input(filter, command.lines)
                                         : decode_names(filter, command.names);
    }
    return write_out(out) ? 0 : status_failed;
}

// Where memory is exhausted there may be none for an exception either.
[[noreturn]] static void end_without_memory() {
    constexpr std::string_view message = "symdecode: memory exhausted\n";
    const ssize_t written = write(STDERR_FILENO, message.data(), message.size());
    (void)written;
    _exit(status_failed);
}

int main(int argc, char** argv) {
    std::set_new_handler(end_without_memory);
    try {
        return run(argc, argv);
    } catch (const std::bad_alloc&) {
        end_without_memory();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "symdecode: %s\n", failure.what());
        return status_failed;
    }
}
