// The interlister's listing (--classic): through the cores of gas2interlist and the
// interlister itself, whose state is a process's own, so each text gets a process.
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>
#include <string>

#include "assembly/descriptor.h"
#include "assembly/text_file.h"
#include "clist/forms/forms.h"
#include "clist/messages.h"
#include "clist/operands.h"
#include "gas2interlist/place.h"
#include "interlist/command_line.h"
#include "interlist/listing.h"
#include "interlist/listing_output.h"
#include "interlist/state.h"

namespace clist {

// The name by which a process finds a descriptor of its own.
static std::string name_of(int descriptor) {
    return "/proc/self/fd/" + std::to_string(descriptor);
}

// The child's whole life. What it says goes to `messages`.
[[noreturn]] static void interlist(int assembly, int listing, int messages, bool has_warnings) {
    dup2(messages, STDOUT_FILENO);
    dup2(messages, STDERR_FILENO);
    std::array<std::string, 4> words = {"clist", has_warnings ? "-" : "--no_warnings",
                                        name_of(assembly), name_of(listing)};
    std::array<char*, 5> arguments{};
    for (std::size_t i = 0; i < words.size(); ++i) {
        arguments[i] = words[i].data();
    }
    prog_name = arguments[0];
    try {
        init(static_cast<int>(words.size()), arguments.data());
        process_assy();
        end_listing();
        _exit(0);
    } catch (const std::exception& failure) {
        std::fputs(failure.what(), stderr);
        _exit(1);
    }
}

// Says what the child has said, each line as one of our own.
static void pass_on(int messages) {
    const std::optional<assembly::text_file> said = assembly::text_file::open(name_of(messages));
    std::string_view text = said ? said->text() : std::string_view();
    while (!text.empty()) {
        std::string_view line = line_at(text, 0);
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        line.remove_prefix(line.starts_with(">> ") ? 3 : 0);
        if (!line.empty()) {
            say(line);
        }
    }
}

static bool write_all(int descriptor, const gas2interlist::interlisted_text& text) {
    return gas2interlist::for_each_piece(text, [descriptor](std::string_view piece) {
        output to(descriptor);
        to.put(piece);
        return to.flush();
    });
}

// Waits for the child. False when it failed, which it has said but for a signal.
static bool succeeded(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    if (WIFSIGNALED(status)) {
        say(std::string("the interlister was ended: ") + strsignal(WTERMSIG(status)));
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

static bool fail() {
    say(std::strerror(errno));
    return false;
}

static bool write_one(const annotation& model, const listing_options& options, output& to) {
    gas2interlist::interlisted_text text{.assembly = model.code().text};
    if (const std::optional<assembly::assembly_error> error = gas2interlist::place_directives(
            text, options.source_map, assembly::system_sources(), model.input().modified)) {
        say(model.input().name + ":" + std::to_string(error->line) + ": " + error->message);
        return false;
    }
    if (options.warnings) {
        for (const std::string& warning : text.warnings) {
            say(warning);
        }
    }
    const assembly::descriptor placed(memfd_create("assembly", MFD_CLOEXEC));
    const assembly::descriptor listing(memfd_create("listing", MFD_CLOEXEC));
    const assembly::descriptor messages(memfd_create("messages", MFD_CLOEXEC));
    if (placed.number < 0 || listing.number < 0 || messages.number < 0 ||
        !write_all(placed.number, text)) {
        return fail();
    }
    const pid_t child = fork();
    if (child < 0) {
        return fail();
    }
    if (child == 0) {
        interlist(placed.number, listing.number, messages.number, options.warnings);
    }
    const bool is_made = succeeded(child);
    pass_on(messages.number);
    if (!is_made) {
        return false;
    }
    const std::optional<assembly::text_file> made =
        assembly::text_file::open(name_of(listing.number));
    if (!made) {
        return fail();
    }
    to.put(made->text());
    return true;
}

bool write_classic(const form_input& from, output& to) {
    for (const annotation& model : from.models) {
        if (!write_one(model, from.options, to)) {
            return false;
        }
    }
    return true;
}

}  // namespace clist
