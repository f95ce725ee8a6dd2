// Runs the real compile first, untouched; only then the one for the listing.
#include "clist/launcher.h"

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <cstring>

#include "clist/messages.h"
#include "clist/process.h"

namespace clist {
namespace {

// Ends as the compiler was ended, without a core file of our own.
void end_by(int signal) {
    const rlimit no_core{0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
    std::signal(signal, SIG_DFL);
    raise(signal);
}

bool is_regular_file(const std::string& name) {
    struct stat status {};
    return stat(name.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

std::string first_line(const std::string& text) {
    return text.substr(0, text.find('\n'));
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
    int status = exit_success;
    for (const std::size_t source : command.sources) {
        const std::string object = output_of(command, source);
        if (!is_regular_file(object)) {
            continue;
        }
        compile_settings settings;
        settings.intel = given.intel;
        settings.is_extra = true;
        const compiled assembly = compile(command, source, settings);
        std::string failure = assembly.error;
        if (assembly.status == 0) {
            failure = write_listing(command, source, assembly, given, object + given.suffix);
        } else if (!assembly.messages.empty()) {
            failure += ": " + first_line(assembly.messages);
        }
        if (!failure.empty()) {
            say("no listing of " + command.all[source].option + ": " + failure);
            status = given.strict ? exit_failure : status;
        }
    }
    return status;
}

}  // namespace clist
