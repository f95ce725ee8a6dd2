// Reads the command line of clist: a table with a row for each option, walked by
// getopt_long, which stops at the first word that is no option.
#include "clist/options.h"

#include <getopt.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <optional>
#include <span>

#include "clist/arguments.h"
#include "clist/forms/page.h"
#include "clist/words.h"

namespace clist {
namespace {

constexpr std::string_view usage =
    R"(Usage: clist [OPTION...] COMPILER ARGS...     compile to assembly and list that
       clist [OPTION...] prog.c | FILE.s... | -  with cc -O2; assembly at hand
       clist --launcher [OPTION...] COMPILER ARGS...  compile; list beside x.o
       clist -p BUILD_DIR [OPTION...]     what its compile_commands.json names
Shows the source lines with the code made of them, in the order of the code.

  -o FILE     write to FILE            --list     number the functions
  --function GLOB|NUMBER  only these   --stats    a table of the functions
  --lines FILE:FROM-TO    only these   --html     a page, source beside code
  --context N  and what they call      --json     an object an instruction
  --all        keep every line         --classic  the listing of interlist(1)
  --mangled    symbols as they are     --intel    Intel's syntax (x86)
  --mca        cycles, by llvm-mca     --sources own|all  of libraries or not
  --comment TEXT  starts a comment     --source-map OLD=NEW  sources that moved
  --color[=always|never|auto]          --no-warnings
--launcher:  --suffix TEXT  x.oTEXT, not x.o.lst   --strict  no listing: error
-p:  -j N  at once   -o DIR  for the listings   --through CMD  run compiles so
--depfile FILE  tell make what a listing depends on   --help   --version

Status: 0, 1 failure, 2 wrong usage, or the compiler's.  More: man clist
Example: clist --function main gcc -O2 -c prog.c
)";

template <class number>
bool read_number(std::string_view text, number& value) {
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    return failure == std::errc() && end == text.data() + text.size();
}

// FILE:LINE, FILE:FROM-TO, FILE:FROM- or FILE:-TO. The file may have colons in its name.
bool read_line_range(std::string_view text, line_range& range) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string_view::npos || colon == 0) {
        return false;
    }
    range.file = text.substr(0, colon);
    const std::string_view numbers = text.substr(colon + 1);
    const std::size_t hyphen = numbers.find('-');
    const std::string_view from = numbers.substr(0, hyphen);
    if (hyphen == std::string_view::npos) {
        range.to = 0;
        return read_number(from, range.from) && range.from > 0 && (range.to = range.from, true);
    }
    const std::string_view to = numbers.substr(hyphen + 1);
    return numbers.size() > 1 && (from.empty() || read_number(from, range.from)) &&
           (to.empty() || read_number(to, range.to)) && range.from > 0 && range.from <= range.to;
}

bool set_form(options& given, listing_form form) {
    const bool is_first = given.listing.form == listing_form::code || given.listing.form == form;
    given.listing.form = form;
    return is_first;
}

bool set_color(options& given, std::string_view value) {
    if (value.empty() || value == "always") {
        given.color = color_choice::always;
    } else if (value == "never") {
        given.color = color_choice::never;
    } else if (value == "auto") {
        given.color = color_choice::when_terminal;
    } else {
        return false;
    }
    return true;
}

bool add_source_map(options& given, std::string_view value) {
    const std::size_t sign = value.find('=');
    if (sign == std::string_view::npos) {
        return false;
    }
    given.listing.source_map.emplace_back(value.substr(0, sign), value.substr(sign + 1));
    return true;
}

enum class takes : std::uint8_t { nothing, value, optional_value };

struct option_row {
    const char* name;
    char letter;        // 0: none
    takes what;         // whether it has a value
    bool is_form;       // says what a listing looks like: handed on to the steps of a project
    const char* needs;  // what its value must be, for the message when it is not
    // Takes the option in; false when its value makes no sense.
    bool (*set)(options& given, std::string_view value);
};

constexpr auto nothing = takes::nothing;
constexpr auto value_ = takes::value;

constexpr const char* one_form = "cannot stand beside another form of listing";

constexpr std::array option_table = {
    option_row{"output", 'o', value_, false, "a file name",
               [](options& given, std::string_view value) {
                   given.output = value;
                   return !value.empty();
               }},
    option_row{"all", 0, nothing, true, nullptr,
               [](options& given, std::string_view) { return given.listing.all = true; }},
    option_row{"mangled", 0, nothing, true, nullptr,
               [](options& given, std::string_view) { return given.listing.mangled = true; }},
    option_row{"sources", 0, value_, true, "own or all",
               [](options& given, std::string_view value) {
                   given.listing.own_sources = value == "own";
                   return value == "own" || value == "all";
               }},
    option_row{"function", 0, value_, true, "a name or a number",
               [](options& given, std::string_view value) {
                   given.listing.functions.emplace_back(value);
                   return !value.empty();
               }},
    option_row{"lines", 0, value_, true, "FILE:FROM-TO",
               [](options& given, std::string_view value) {
                   return read_line_range(value, given.listing.lines.emplace_back());
               }},
    option_row{"context", 0, value_, true, "a number",
               [](options& given, std::string_view value) {
                   return read_number(value, given.listing.context);
               }},
    option_row{"list", 0, nothing, true, one_form,
               [](options& given, std::string_view) {
                   return set_form(given, listing_form::list);
               }},
    option_row{"stats", 0, nothing, true, one_form,
               [](options& given, std::string_view) {
                   return set_form(given, listing_form::stats);
               }},
    option_row{"classic", 0, nothing, true, one_form,
               [](options& given, std::string_view) {
                   return set_form(given, listing_form::classic);
               }},
    option_row{"html", 0, nothing, true, one_form,
               [](options& given, std::string_view) {
                   return set_form(given, listing_form::page);
               }},
    option_row{"json", 0, nothing, true, nullptr,
               [](options& given, std::string_view) { return given.listing.json = true; }},
    option_row{"intel", 0, nothing, true, nullptr,
               [](options& given, std::string_view) { return given.intel = true; }},
    option_row{"mca", 0, nothing, true, nullptr,
               [](options& given, std::string_view) { return given.listing.mca = true; }},
    option_row{"comment", 0, value_, true, "what starts a comment",
               [](options& given, std::string_view value) {
                   given.listing.comment = value;
                   return !value.empty() && value.find('\n') == std::string_view::npos;
               }},
    option_row{"source-map", 0, value_, true, "OLD=NEW", add_source_map},
    option_row{"color", 0, takes::optional_value, false, "always, never or auto", set_color},
    option_row{"no-warnings", 0, nothing, true, nullptr,
               [](options& given, std::string_view) {
                   given.listing.warnings = false;
                   return true;
               }},
    option_row{"launcher", 0, nothing, false, nullptr,
               [](options& given, std::string_view) {
                   given.what = work::launcher;
                   return true;
               }},
    option_row{"suffix", 0, value_, false, "what to put behind the object's name",
               [](options& given, std::string_view value) {
                   given.suffix = value;
                   return !value.empty() && value.find('/') == std::string_view::npos;
               }},
    option_row{"strict", 0, nothing, false, nullptr,
               [](options& given, std::string_view) { return given.strict = true; }},
    option_row{"project", 'p', value_, false, "the folder of a build",
               [](options& given, std::string_view value) {
                   given.build_dir = value;
                   return !value.empty();
               }},
    option_row{"jobs", 'j', value_, false, "a number from 1 on",
               [](options& given, std::string_view value) {
                   unsigned count = 0;
                   given.jobs = value;
                   return read_number(value, count) && count > 0;
               }},
    option_row{"through", 0, value_, false, "a command",
               [](options& given, std::string_view value) {
                   given.through = split_blanks(value);
                   return !given.through.empty();
               }},
    option_row{"depfile", 0, value_, false, "a file name",
               [](options& given, std::string_view value) {
                   given.depfile = value;
                   return !value.empty();
               }},
    option_row{"help", 'h', nothing, false, nullptr,
               [](options& given, std::string_view) {
                   given.what = work::help;
                   return true;
               }},
    option_row{"version", 'V', nothing, false, nullptr,
               [](options& given, std::string_view) {
                   given.what = work::version;
                   return true;
               }},
};

// getopt_long answers with a row's number from here on, whatever spelling it met.
constexpr int first_row = 256;

// The tables that getopt_long reads, made of the one above.
struct getopt_tables {
    std::array<option, option_table.size() + 1> names{};
    std::string letters = "+:";  // stop at the first other word; tell what lacks its value

    getopt_tables() {
        for (std::size_t i = 0; i < option_table.size(); ++i) {
            const option_row& row = option_table[i];
            names[i] = {row.name, static_cast<int>(row.what), nullptr,
                        first_row + static_cast<int>(i)};
            if (row.letter != 0) {
                letters += row.letter;
                letters += row.what == takes::value ? ":" : "";
            }
        }
    }
};

const option_row& row_of(int answer) {
    if (answer >= first_row) {
        return option_table[static_cast<std::size_t>(answer - first_row)];
    }
    return *std::find_if(option_table.begin(), option_table.end(),
                         [&](const option_row& row) { return row.letter == answer; });
}

std::string spelling(const option_row& row) {
    return std::string("--") + row.name;
}

std::string quoted(std::string_view text) {
    return std::string("'").append(text).append("'");
}

// A name that is no program but something to read assembly from.
bool is_assembly(const std::string& word) {
    struct stat status {};
    return word == "-" || word == "/dev/stdin" || word.starts_with("/dev/fd/") ||
           word.ends_with(".s") || word.ends_with(".S") || word.ends_with(".asm") ||
           (stat(word.c_str(), &status) == 0 && S_ISFIFO(status.st_mode));
}

// Takes an option in; false at the end of the reading, for --help and for an error.
bool take(options& given, int answer, std::string_view spelled) {
    if (answer == '?' || answer == ':') {
        const bool is_letter = optopt > 0 && optopt < first_row;
        if (answer == ':') {
            given.error =
                "option " + quoted(is_letter ? spelled.substr(0, 2) : spelled) + " needs a value";
        } else if (optopt >= first_row) {
            given.error = "option " + quoted(spelling(row_of(optopt))) + " takes no value";
        } else {
            given.error = "unknown option " + quoted(spelled) +
                          (is_letter ? ": the compiler's options stand behind its name" : "");
        }
        return false;
    }
    const option_row& row = row_of(answer);
    const std::string_view value = optarg != nullptr ? optarg : "";
    if (!row.set(given, value)) {
        given.error = row.what == takes::nothing
                          ? spelling(row) + " " + row.needs
                          : spelling(row) + " needs " + row.needs + ", not " + quoted(value);
        return false;
    }
    if (row.is_form) {
        std::string& word = given.form_words.emplace_back(spelling(row));
        if (row.what != takes::nothing) {
            word.append("=").append(value);
        }
    }
    return given.what != work::help && given.what != work::version;
}

struct usage_rule {
    bool is_broken;
    const char* message;
};

// What no single option can tell.
std::string conflict(const options& given) {
    const listing_options& listing = given.listing;
    const bool is_launcher = given.what == work::launcher;
    const bool is_project = given.what == work::project;
    const bool is_chosen = !listing.functions.empty() || !listing.lines.empty();
    const usage_rule rules[] = {
        {is_launcher && !given.build_dir.empty(), "--launcher and -p exclude each other"},
        {is_project && !given.words.empty(), "-p takes no compiler and no files"},
        {is_launcher && given.words.empty(), "--launcher needs a compiler behind it"},
        {!is_project && given.words.empty(),
         "nothing to list: name a compiler with its arguments, a source or assembly"},
        {!is_project && !given.jobs.empty(), "-j is for -p"},
        {!is_project && !given.through.empty(), "--through is for -p"},
        {!is_launcher && !given.suffix.empty(), "--suffix is for --launcher"},
        {!is_launcher && given.strict, "--strict is for --launcher"},
        {is_launcher && !given.output.empty(), "-o is not for --launcher: see --suffix"},
        {given.what != work::compile && !given.depfile.empty(),
         "--depfile is for a single compile"},
        {!given.depfile.empty() && given.output.empty(), "--depfile needs -o"},
        {!given.depfile.empty() && given.depfile == given.output, "--depfile and -o name one file"},
        {given.what == work::assembly && given.intel,
         "--intel is for compiles: assembly at hand stays in its syntax"},
        {listing.form == listing_form::page && !has_page(),
         "--html: this clist was built without the page"},
        {listing.json &&
             (listing.form == listing_form::classic || listing.form == listing_form::page),
         "--json cannot stand beside --classic or --html"},
        {listing.mca && (listing.form != listing_form::code || listing.json),
         "--mca is for the listing of code alone"},
        {listing.form == listing_form::classic &&
             (is_chosen || listing.all || listing.mangled || listing.own_sources),
         "--classic lists all code, in the one form that it has"},
        {listing.all && (listing.form != listing_form::code || listing.json || listing.mca),
         "--all is for the listing of code alone"},
        {listing.context > 0 && !is_chosen, "--context is for --function and --lines"},
        {given.what == work::assembly &&
             std::count(given.words.begin(), given.words.end(), "-") > 1,
         "standard input can be named but once"},
        {is_project && is_chosen, "--function and --lines are not for -p"},
    };
    for (const usage_rule& rule : rules) {
        if (rule.is_broken) {
            return rule.message;
        }
    }
    return {};
}

// Puts the compiler that the environment names before a source that stands alone.
void add_compiler(options& given, const environment& surroundings) {
    const std::optional<std::string_view> language = language_of_name(given.words.front());
    if (!language || given.what == work::launcher) {
        return;
    }
    std::vector<std::string> words = split_blanks(
        language->starts_with("c++") ? surroundings.cxx_compiler : surroundings.c_compiler);
    words.emplace_back("-O2");
    given.words.insert(given.words.begin(), words.begin(), words.end());
}

}  // namespace

environment environment_of_process() {
    const auto value = [](const char* name, const char* otherwise) {
        const char* const text = std::getenv(name);
        return text != nullptr && !split_blanks(text).empty() ? text : otherwise;
    };
    return {value("CC", "cc"), value("CXX", "c++")};
}

options read_options(const std::vector<std::string>& arguments, const environment& surroundings) {
    static const getopt_tables tables;
    std::string program = "clist";
    std::vector<char*> argv{program.data()};
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    const int count = static_cast<int>(arguments.size()) + 1;

    options given;
    optind = 0;  // starts getopt_long afresh
    opterr = 0;
    while (true) {
        const int before = std::max(optind, 1);
        const int answer =
            getopt_long(count, argv.data(), tables.letters.c_str(), tables.names.data(), nullptr);
        if (answer != -1) {
            if (!take(given, answer, argv[static_cast<std::size_t>(before)])) {
                return given;
            }
            continue;
        }
        if (optind >= count) {
            break;
        }
        const auto word = arguments.begin() + (optind - 1);
        const bool is_file = given.what != work::launcher && given.build_dir.empty() &&
                             (given.what == work::assembly || is_assembly(*word));
        // Behind "--", which was passed over, and from a compiler on, no word is an option.
        const bool is_last = !is_file || optind > before;
        given.what = is_file ? work::assembly : given.what;
        given.words.insert(given.words.end(), word, is_last ? arguments.end() : word + 1);
        if (is_last) {
            break;
        }
        ++optind;
    }

    if (!given.build_dir.empty() && given.what != work::launcher) {
        given.what = work::project;
    }
    given.error = conflict(given);
    if (given.error.empty() && given.what != work::assembly && given.what != work::project) {
        add_compiler(given, surroundings);
    }
    if (given.suffix.empty()) {
        given.suffix = given.listing.form == listing_form::page ? ".html" : ".lst";
    }
    return given;
}

bool wants_color(const options& given) {
    if (given.color != color_choice::when_terminal) {
        return given.color == color_choice::always;
    }
    const char* const no_color = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    return given.output.empty() && (no_color == nullptr || *no_color == '\0') &&
           terminal != nullptr && std::string_view(terminal) != "dumb" &&
           isatty(STDOUT_FILENO) != 0;
}

bool is_own_option(std::string_view word) {
    return std::any_of(option_table.begin(), option_table.end(), [&](const option_row& row) {
        const std::string name = spelling(row);
        return row.letter == 0 && word.substr(0, word.find('=')) == name;
    });
}

std::string_view usage_text() {
    return usage;
}

}  // namespace clist
