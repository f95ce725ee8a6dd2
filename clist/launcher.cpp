// Runs the real compile first, untouched; only then the one for the listing.
#include "clist/launcher.h"

#include <sys/resource.h>

#include <csignal>
#include <cstring>
#include <exception>
#include <filesystem>

#include "clist/messages.h"
#include "clist/process.h"

namespace clist {
namespace {

namespace fs = std::filesystem;

// Ends as the compiler was ended, without a core file of our own.
void end_by(int signal) {
    const rlimit no_core{0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
    std::signal(signal, SIG_DFL);
    raise(signal);
}

std::string first_line(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

// Leaves a listing beside what was made of a source. False after a message.
bool list_beside(const arguments& command, std::size_t source, const options& given,
                 const listing_writer& write_listing) {
    const std::string object = output_of(command, source);
    compile_settings settings;
    settings.intel = given.intel;
    settings.is_extra = true;
    std::string failure;
    try {
        // Nothing is left beside a device, or where the compiler made something else.
        if (!fs::is_regular_file(object)) {
            return true;
        }
        const std::string listing = object + given.suffix;
        if (uses_file(command, listing)) {
            failure = "the compile itself uses " + listing;
        } else {
            compiled made = compile(command, source, settings);
            if (made.status == 0) {
                return write_listing(command, source, made, given, listing);
            }
            failure = made.error;
            if (!made.messages.empty()) {
                failure += ": " + first_line(made.messages);
            }
        }
    } catch (const std::exception& unexpected) {
        failure = unexpected.what();
    }
    say("no listing of " + command.all[source].option + ": " + failure);
    return false;
}

}  // namespace

int launch(const options& given, const listing_writer& write_listing) {
    const arguments command = read_arguments(given.words);
    const bool leaves_listings = command.makes_code && !command.reads_standard_input &&
                                 (command.to_object || command.to_assembly);
    if (!leaves_listings) {
        const int failure = become(given.words);
        say("cannot run " + given.words.front() + ": " + std::strerror(failure));
        return exit_failure;
    }
    const run_result real = run(given.words);
    if (real.signal != 0) {
        end_by(real.signal);
    }
    if (!real.succeeded()) {
        if (real.error != 0) {
            say(failure_text(given.words.front(), real));
        }
        return status_of(real);
    }
    // From here on nothing fails the build.
    std::signal(SIGXFSZ, SIG_IGN);
    bool has_all = true;
    for (const std::size_t source : command.sources) {
        has_all = list_beside(command, source, given, write_listing) && has_all;
    }
    return has_all || !given.strict ? exit_success : exit_failure;
}

}  // namespace clist
