// Fuzzes the reading of compile databases and of the command lines in them, up to the Ninja
// file. One input is a database. A database that is taken has entries with all that a
// listing needs, and its Ninja file has as many lines as it should: no byte of a name or of
// an argument gets out of its place.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "clist/arguments.h"
#include "clist/compile.h"
#include "clist/database.h"
#include "clist/project.h"

using namespace clist;

static void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

static void check_command(const database_entry& entry) {
    const arguments command = read_arguments(entry.words, "/nowhere");
    std::vector<std::string> words;
    for (const argument& each : command.all) {
        each.put_to(words);
    }
    // Nothing is lost and nothing added where no response file was opened.
    require(words == entry.words ||
            std::any_of(entry.words.begin(), entry.words.end(),
                        [](const std::string& word) { return word.starts_with('@'); }));
    for (const std::size_t source : command.sources) {
        const std::vector<std::string> made = assembly_command(
            command, source, {.is_extra = true, .tells_dependencies = true}, "out.s");
        require(std::count(made.begin(), made.end(), command.all[source].option) >= 1);
        require(std::count(made.begin(), made.end(), "out.s") >= 1);
        require(!output_of(command, source).empty() || command.output);
        for (const std::string& folder : system_folders(command, source)) {
            require(folder != "/");  // it would hold the source
        }
    }
}

static bool has_line_break(const listing_step& step) {
    const auto breaks = [](const std::string& word) {
        return word.find_first_of("\r\n") != std::string::npos;
    };
    return breaks(step.output) || breaks(step.directory) || breaks(step.name) ||
           std::any_of(step.words.begin(), step.words.end(), breaks);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const database known = read_database({reinterpret_cast<const char*>(data), size});
    require(known.error.empty() || known.entries.empty());
    for (const database_entry& entry : known.entries) {
        require(!entry.directory.empty() && !entry.file.empty() && !entry.words.empty());
        check_command(entry);
    }
    options given;
    given.suffix = ".lst";
    std::vector<listing_step> steps = plan_listings(known.entries, "/b", "/b/l", given);
    std::erase_if(steps, has_line_break);
    const std::string text = ninja_file(steps, "/bin/clist", "/b/l/.clist", given);
    require(std::count(text.begin(), text.end(), '\n') ==
            11 + 7 * static_cast<std::ptrdiff_t>(steps.size()));
    read_dependencies({reinterpret_cast<const char*>(data), size});
    return 0;
}
