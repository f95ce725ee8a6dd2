// Listings of real code of many targets, held against what the compiler wrote and what its
// object tells: nothing is added but comments, every line of code has the line that the
// object's line table gives it and came through the calls that its debugging data tell of.
//
// What is listed by default is a sample. TRUTH=whole has every source at every level and
// with every option, for every target; TRUTH_SOURCES names other sources (and -I folders), and
// TRUTH_FLAGS the only options then, parted by commas.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "clist/listing.h"
#include "tests/clist/listed.h"
#include "tests/clist/toolchain.h"
#include "tests/clist/words.h"
#include "tests/harness/program.h"

using namespace clist;

namespace {

// --- What is compiled ---

const std::vector<toolchain> toolchains = {
    {"gcc", "", false, "x86_64-linux-gnu", "#"},
    {"clang", "", true, "x86_64-linux-gnu", "#"},
    {"gcc_aarch64", "aarch64-linux-gnu-", false, "aarch64-linux-gnu", "//"},
    {"clang_aarch64", "aarch64-linux-gnu-", true, "aarch64-linux-gnu", "//"},
    {"gcc_arm", "arm-linux-gnueabihf-", false, "arm-linux-gnueabihf", "@"},
    {"clang_arm", "arm-linux-gnueabihf-", true, "arm-linux-gnueabihf", "@"},
    {"gcc_riscv64", "riscv64-linux-gnu-", false, "riscv64-linux-gnu", "#"},
    {"clang_riscv64", "riscv64-linux-gnu-", true, "riscv64-linux-gnu", "#"},
    {"gcc_powerpc64le", "powerpc64le-linux-gnu-", false, "powerpc64le-linux-gnu", "#"},
    {"clang_powerpc64le", "powerpc64le-linux-gnu-", true, "powerpc64le-linux-gnu", "#"},
    {"gcc_mingw", "x86_64-w64-mingw32-", false, "x86_64-w64-mingw32", "#"},
    {"clang_mingw", "x86_64-w64-mingw32-", true, "x86_64-w64-mingw32", "#"},
};

struct sample {
    std::string source;
    std::string flags;
    std::string name = {};  // under which it is compiled, if not its own
};

const std::string data = std::filesystem::absolute("../data/listed").lexically_normal();
const std::string root = std::filesystem::absolute("../..").lexically_normal();

const std::string odd_c = data + "/odd.c";
const std::string odd_cpp = data + "/odd.cpp";
const std::string print_c = "stb_sprintf.c";  // a library that is one header
const std::string section_cpp = root + "/assembly/section.cpp";

bool is_cpp(const std::string& source) {
    return source.ends_with(".cpp") || source.ends_with(".cc");
}

std::vector<std::string> more_sources() {
    const char* const named = std::getenv("TRUTH_SOURCES");
    return words_in(named == nullptr ? "" : named);
}

std::vector<std::string> all_flags() {
    std::vector<std::string> all;
    if (const char* const given = std::getenv("TRUTH_FLAGS")) {
        std::istringstream stream(given);
        for (std::string flags; std::getline(stream, flags, ',');) {
            all.push_back(flags);
        }
        return all;
    }
    for (const std::string level : {"-O0", "-O1", "-O2", "-O3", "-Os"}) {
        for (const char* const form : {"-g", "-gdwarf-4", "-g1", "-g -ffunction-sections -fpic"}) {
            all.push_back(level + " " + form);
        }
    }
    return all;
}

std::vector<sample> whole_sample(const toolchain& with) {
    std::vector<sample> all;
    std::vector<std::string> sources;
    std::string folders;
    for (const std::string& it : more_sources()) {
        if (it.starts_with("-")) {
            folders += " " + it;
        } else {
            sources.push_back(it);
        }
    }
    if (sources.empty()) {
        sources = {odd_c, odd_cpp, print_c, section_cpp};
    }
    for (const std::string& source : sources) {
        for (const std::string& flags : all_flags()) {
            all.push_back({source, flags + folders});
        }
    }
    std::erase_if(all, [&](const sample& it) {
        return with.is_clang && std::string_view(with.name) == "clang_mingw" && is_cpp(it.source);
    });
    return all;
}

// Every level, form and option at least once, what differs between targets for each.
std::vector<sample> small_sample(const toolchain& with) {
    const std::string name = with.name;
    if (name == "gcc" || name == "clang") {
        return {
            {odd_c, "-O2 -g"},
            {odd_c, "-O0 -g",
             "7 gr\xc3\xb6\xc3\x9f"
             "e.c"},
            {odd_c, "-O1 -gdwarf-4 -ffunction-sections -fdata-sections"},
            {odd_c, "-O3 -g1"},
            {print_c, "-O2 -gdwarf-4"},
            {print_c, "-O3 -g -fpic"},
            {print_c, "-O0 -g1"},
            {odd_cpp, "-O2 -g"},
            {odd_cpp, "-O3 -gdwarf-4"},
            {odd_cpp, "-O0 -g -ffunction-sections"},
            {section_cpp, "-O2 -g1"},
            {section_cpp, "-O3 -g"},
            {section_cpp, "-O1 -g"},
        };
    }
    std::vector<sample> samples = {
        {odd_c, "-O2 -g"},
        {odd_c, "-O3 -gdwarf-4 -ffunction-sections"},
        {odd_c, "-O0 -g"},
        {print_c, "-O2 -g"},
    };
    if (name != "clang_mingw") {
        samples.push_back({odd_cpp, name.size() % 2 == 0 ? "-O2 -g" : "-O3 -gdwarf-4"});
    }
    return samples;
}

std::vector<sample> samples_for(const toolchain& with) {
    const char* const wish = std::getenv("TRUTH");
    std::vector<sample> samples = wish != nullptr && std::string_view(wish) == "whole"
                                      ? whole_sample(with)
                                      : small_sample(with);
    if (TRUTH_SANITIZED) {
        samples.resize(1);
    }
    return samples;
}

bool is_required() {
    return std::getenv("TRUTH") != nullptr;
}

// --- What listings show ---

listing_options quiet() {
    listing_options options;
    options.warnings = false;
    return options;
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

// The kinds of comments that a listing adds, by their form.
enum class added { nothing, line, no_line, inlined };

added kind_of(const std::string& line, const std::string& comment) {
    if (!line.starts_with(comment + " ")) {
        return added::nothing;
    }
    const std::string rest = line.substr(comment.size() + 1);
    if (rest == "no line") {
        return added::no_line;
    }
    if (rest.starts_with("inlined: ")) {
        return added::inlined;
    }
    const std::size_t bar = rest.find(" | ");
    const std::size_t colon = rest.rfind(':', bar);
    const bool has_number = bar != std::string::npos && colon != std::string::npos &&
                            colon + 1 < bar && colon != 0 &&
                            std::all_of(rest.begin() + static_cast<std::ptrdiff_t>(colon) + 1,
                                        rest.begin() + static_cast<std::ptrdiff_t>(bar),
                                        [](char c) { return c >= '0' && c <= '9'; });
    return has_number ? added::line : added::nothing;
}

std::string trimmed(const std::string& line) {
    const std::size_t begin = line.find_first_not_of(" \t\r");
    return begin == std::string::npos
               ? ""
               : line.substr(begin, line.find_last_not_of(" \t\r") + 1 - begin);
}

struct shown_code {
    std::string place;    // FILE:LINE of the comment above; "no line"
    std::string inlined;  // the comment behind it
    source_line line;
    std::vector<called_line> frames;
    std::vector<called_line> own;  // the same with own sources only
};

// A listing with every line, taken apart.
struct whole_listing {
    std::string assembly;  // without what was added
    std::string labelled;  // that, with a label ahead of every line of code or of other bytes
    std::vector<shown_code> code;
};

const std::string label_prefix = "truth_label_";
const std::string room_prefix = "truth_room_";

// Whether a line makes bytes among the code that are none: ahead of code that begins at a
// round address, or constants and tables.
bool fills_room(const std::string& line) {
    constexpr std::array<std::string_view, 6> directives = {".p2align", ".align", ".long",
                                                            ".word",    ".short", ".byte"};
    return std::any_of(directives.begin(), directives.end(),
                       [&](std::string_view it) { return line.starts_with(it); });
}

std::vector<called_line> frames_in(const nlohmann::json& object, const std::string& folder) {
    std::vector<called_line> frames;
    for (const auto& it : object["frames"]) {
        const std::string file = it["file"];
        frames.push_back({it["function"],
                          {(std::filesystem::path(folder) / file).lexically_normal(), it["line"]}});
    }
    return frames;
}

// Reads a listing; where lines of code are is told by the objects of --json.
whole_listing take_apart(const std::string& text, const std::vector<nlohmann::json>& objects,
                         const std::vector<nlohmann::json>& own, const std::string& comment,
                         const std::string& folder) {
    whole_listing whole;
    shown_code shown;
    std::size_t rooms = 0;
    bool is_debug = false;
    for (const std::string& line : lines_of(text)) {
        const added kind = kind_of(line, comment);
        if (kind == added::inlined) {
            shown.inlined = line;
            continue;
        }
        if (kind != added::nothing) {
            const std::size_t begin = comment.size() + 1;
            shown = {line.substr(begin, line.find(" | ") - begin), "", {}, {}, {}};
            continue;
        }
        whole.assembly += line + "\n";
        const std::size_t number = whole.code.size();
        if (number < objects.size() && trimmed(line) == objects[number]["text"]) {
            whole.labelled += label_prefix + std::to_string(number) + ":\n";
            shown.frames = frames_in(objects[number], folder);
            shown.own = frames_in(own[number], folder);
            shown.line = shown.frames.front().line;
            whole.code.push_back(shown);
        }
        is_debug = is_debug || line.starts_with("\t.section\t.debug_");
        if (!is_debug && fills_room(trimmed(line))) {
            whole.labelled += room_prefix + std::to_string(rooms++) + ":\n";
        }
        whole.labelled += line + "\n";
    }
    return whole;
}

std::string told(const source_line& it) {
    return it.line == 0 ? "no line" : it.file + ":" + std::to_string(it.line);
}

std::string told(const std::vector<called_line>& frames) {
    std::string text;
    for (const called_line& it : frames) {
        text += it.function + " at " + told(it.line) + "; ";
    }
    return text;
}

// --- What is held against what ---

// A comment's FILE:LINE against the line that is told to machines.
bool is_place_of(const std::string& place, const source_line& line) {
    if (line.line == 0) {
        return place == "no line";
    }
    std::string number(1, ':');
    number += std::to_string(line.line);
    if (!place.ends_with(number)) {
        return false;
    }
    std::string file = place.substr(0, place.size() - number.size());
    file = std::filesystem::path(file).lexically_normal();
    return line.file == file || line.file.ends_with("/" + file);
}

struct figures {
    std::size_t code = 0;
    std::size_t inlined = 0;
    std::size_t wrong = 0;
};

class checker {
  public:
    checker(const whole_listing& shown, const object_truth& truth) : shown_(shown), truth_(truth) {
        for (std::size_t i = 0; i < shown.code.size(); ++i) {
            const auto found = truth.labels.find(label_prefix + std::to_string(i));
            addresses_.push_back(found == truth.labels.end() ? 0 : found->second);
            at_[addresses_.back()] = i;  // of those that have no code of their own, the last
        }
        for (const auto& [name, address] : truth.labels) {
            if (name.starts_with(room_prefix)) {
                rooms_.insert(address);
            }
        }
    }

    figures check() {
        EXPECT_EQ(truth_.frames.size(), shown_.code.size());
        for (std::size_t i = 0; i < shown_.code.size(); ++i) {
            check_code(i);
        }
        // Where the table has another line, there must be a line of code, or other bytes.
        for (const auto& [address, line] : truth_.lines) {
            auto next = at_.upper_bound(address);
            if (!line || next == at_.begin() || at_.contains(address)) {
                continue;
            }
            --next;
            const auto room = rooms_.upper_bound(address);
            if (room != rooms_.begin() && *std::prev(room) > next->first) {
                continue;
            }
            expect(shown_.code[next->second].line == *line, next->second, "line within it",
                   told(*line), told(shown_.code[next->second].line));
        }
        return {shown_.code.size(), inlined_, wrong_};
    }

  private:
    void check_code(std::size_t i) {
        const shown_code& code = shown_.code[i];
        expect(is_place_of(code.place, code.line), i, "comment", told(code.line), code.place);
        expect(code.inlined.empty() == (code.frames.size() == 1), i, "inlined", told(code.frames),
               code.inlined);
        if (at_[addresses_[i]] != i) {
            return;
        }
        auto row = truth_.lines.upper_bound(addresses_[i]);
        const source_line nothing;
        const source_line& line =
            row == truth_.lines.begin() || !(--row)->second ? nothing : *row->second;
        expect(line == code.line, i, "line", told(line), told(code.line));
        if (i < truth_.frames.size()) {
            check_frames(i, truth_.frames[i]);
        }
    }

    void check_frames(std::size_t i, const std::vector<called_line>& frames) {
        const shown_code& code = shown_.code[i];
        inlined_ += frames.size() > 1 ? 1 : 0;
        const bool is_known = frames.size() != 1 || frames[0].function != "??";
        expect(is_same(frames, code.frames, is_known), i, "frames", told(frames),
               told(code.frames));
        const std::vector<called_line> own = own_part(frames);
        expect(is_same(own, code.own, is_known), i, "own frames", told(own), told(code.own));
    }

    static bool is_same(const std::vector<called_line>& expected,
                        const std::vector<called_line>& found, bool is_known) {
        return std::equal(expected.begin(), expected.end(), found.begin(), found.end(),
                          [&](const called_line& one, const called_line& other) {
                              return one.line == other.line &&
                                     (!is_known || one.function == other.function);
                          });
    }

    // With own sources only, a library's code has the line of the project that it was inlined
    // into, if it was; all else has its own line. Libraries are those of the system here.
    static std::vector<called_line> own_part(const std::vector<called_line>& frames) {
        const auto first = std::find_if_not(
            frames.begin(), frames.end(),
            [](const called_line& it) { return it.line.file.starts_with("/usr/"); });
        return first == frames.end() ? frames : std::vector(first, frames.end());
    }

    void expect(bool holds, std::size_t i, const char* what, const std::string& expected,
                const std::string& found) {
        constexpr std::size_t most_told = 5;
        if (!holds && ++wrong_ <= most_told) {
            ADD_FAILURE() << "code " << i << ": " << what << " is\n  " << found << "\nand not\n  "
                          << expected;
        }
    }

    const whole_listing& shown_;
    const object_truth& truth_;
    std::vector<std::uint64_t> addresses_;
    std::map<std::uint64_t, std::size_t> at_;
    std::set<std::uint64_t> rooms_;
    std::size_t inlined_ = 0;
    std::size_t wrong_ = 0;
};

// The names in a line that begin with ".L", as local labels of compilers do.
std::vector<std::string> local_names(const std::string& line) {
    std::vector<std::string> names;
    for (std::size_t at = line.find(".L"); at != std::string::npos; at = line.find(".L", at)) {
        const std::size_t end =
            std::min(line.find_first_not_of(
                         "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_.", at),
                     line.size());
        if (at == 0 ||
            std::string_view(" \t,($*#-+:[").find(line[at - 1]) != std::string_view::npos) {
            names.push_back(line.substr(at, end - at));
        }
        at = end;
    }
    return names;
}

// The words in a line that may be symbols.
void add_words(const std::string& line, std::set<std::string>& words) {
    std::string word;
    for (const char c : line + " ") {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.' || c == '$') {
            word += c;
        } else if (!word.empty()) {
            words.insert(std::exchange(word, {}));
        }
    }
}

// Directives that emit data, as far as compilers write them.
bool is_data(const std::string& line) {
    static const std::set<std::string> directives = {
        ".byte",  ".1byte", ".2byte", ".short",  ".value",  ".hword", ".half",
        ".word",  ".4byte", ".long",  ".int",    ".8byte",  ".quad",  ".xword",
        ".dword", ".octa",  ".ascii", ".asciz",  ".string", ".zero",  ".space",
        ".skip",  ".fill",  ".float", ".single", ".double", ".comm",  ".lcomm",
    };
    return directives.contains(line.substr(0, line.find_first_of(" \t")));
}

// Holds the listing without noise against the whole one: the same code with the same comments,
// blank lines between functions and nowhere else, no directives but of data and in inline
// assembly, no label that nothing refers to, and every label that code and data refer to.
class noise_checker {
  public:
    noise_checker(const whole_listing& whole, const std::vector<nlohmann::json>& objects,
                  const std::string& comment)
        : whole_(whole), objects_(objects), comment_(comment) {
        for (const nlohmann::json& it : objects) {
            const std::string symbol = it["symbol"];
            functions_ += functions_ == 0 || symbol != last_symbol_ ? 1 : 0;
            symbols_.insert(last_symbol_ = symbol);
        }
    }

    void check(const std::string& text) {
        EXPECT_FALSE(text.starts_with("\n") || text.ends_with("\n\n") ||
                     text.find("\n\n\n") != std::string::npos)
            << "a blank line too many";
        std::size_t blanks = 0;
        bool begins_function = true;
        for (const std::string& line : lines_of(text)) {
            if (begins_function) {
                const std::string name = line.substr(0, line.find(':'));
                EXPECT_TRUE(symbols_.contains(name) || symbols_.contains(""))
                    << line << " is no function's beginning";
            }
            begins_function = line.empty();
            blanks += line.empty() ? 1 : 0;
            check_line(line);
        }
        EXPECT_EQ(blanks + 1, functions_) << "blank lines";
        EXPECT_EQ(number_, objects_.size()) << "lines of code";
        EXPECT_EQ(wrong_, 0U) << "lines of code with other comments than among all lines";
        for (const std::string& name : used_) {
            EXPECT_TRUE(labels_.contains(name) || !is_defined(name))
                << name << " is used and not shown";
        }
        for (const std::string& name : labels_) {
            EXPECT_TRUE(!name.starts_with(".L") || used_.contains(name))
                << name << " is shown and not used";
            EXPECT_TRUE(name.starts_with(".L") || symbols_.contains(name) ||
                        words_.contains(name) || data_names_.contains(name))
                << name << " is shown, no function, and not used";
        }
    }

  private:
    bool is_defined(const std::string& name) const {
        return whole_.assembly.starts_with(name + ":") ||
               whole_.assembly.find("\n" + name + ":") != std::string::npos;
    }

    void check_line(const std::string& line) {
        const added kind = kind_of(line, comment_);
        if (kind == added::inlined) {
            shown_.inlined = line;
            return;
        }
        if (kind != added::nothing) {
            const std::size_t begin = comment_.size() + 1;
            shown_ = {line.substr(begin, line.find(" | ") - begin), "", {}, {}, {}};
            return;
        }
        const std::string bare = trimmed(line);
        // For some targets the mark has another character than comments.
        if (bare == comment_ + "APP" || bare == "#APP" || bare == "/APP") {
            in_inline_ = true;
        } else if (bare == comment_ + "NO_APP" || bare == "#NO_APP" || bare == "/NO_APP") {
            in_inline_ = false;
            return;
        }
        if (number_ < objects_.size() && bare == objects_[number_]["text"]) {
            const shown_code& same = whole_.code[number_++];
            wrong_ += shown_.place == same.place && shown_.inlined == same.inlined ? 0 : 1;
        } else if (line.ends_with(":") && !line.starts_with('\t')) {
            last_label_ = line.substr(0, line.size() - 1);
            if (!in_inline_ || line.starts_with(".L")) {
                labels_.insert(last_label_);
            }
            return;
        } else if (!in_inline_ && !bare.empty() && !bare.starts_with(comment_)) {
            // Where nothing marks it, inline assembly is told by what only it has.
            EXPECT_TRUE(is_data(bare) || (comment_ == "@" && (bare.starts_with(".pushsection") ||
                                                              bare == ".popsection")))
                << line;
            data_names_.insert(last_label_);  // code may reach them from an anchor ahead
        }
        add_words(line, words_);
        for (const std::string& name : local_names(line.substr(0, line.find(comment_ + " ")))) {
            used_.insert(name);
        }
    }

    const whole_listing& whole_;
    const std::vector<nlohmann::json>& objects_;
    const std::string& comment_;
    shown_code shown_;
    bool in_inline_ = false;
    std::size_t number_ = 0;
    std::size_t wrong_ = 0;
    std::size_t functions_ = 0;
    std::string last_symbol_;
    std::set<std::string> symbols_;
    std::set<std::string> labels_;
    std::set<std::string> used_;
    std::set<std::string> words_;
    std::string last_label_;
    std::set<std::string> data_names_;
};

// The list counts as much code of each function as is shown.
void check_list(const std::vector<nlohmann::json>& list, const std::vector<nlohmann::json>& all) {
    std::size_t number = 0;
    for (const nlohmann::json& it : list) {
        const std::size_t end = number + it["instructions"].get<std::size_t>();
        ASSERT_LE(end, all.size());
        for (; number < end; ++number) {
            ASSERT_EQ(all[number]["symbol"], it["symbol"]);
        }
    }
    EXPECT_EQ(number, all.size());
}

std::string source_in(const ScratchFolder& folder, const sample& of) {
    if (of.source == print_c) {
        return folder.write("print.c",
                            "#define STB_SPRINTF_IMPLEMENTATION\n"
                            "#include \"stb_sprintf.h\"\n");
    }
    if (!of.name.empty()) {
        std::filesystem::copy_file(of.source, folder / of.name);
        return of.name;
    }
    return of.source;
}

Finished compile(const toolchain& with, const sample& of, const ScratchFolder& folder) {
    const std::string source = source_in(folder, of);
    std::vector<std::string> command = compiler(with, source);
    for (const std::string& word : words_in(of.flags)) {
        command.push_back(word);
    }
    command.insert(command.end(), {"-w", "-I", root, "-I/usr/include/stb"});
    if (is_cpp(source)) {
        command.push_back("-std=c++20");
    }
    command.insert(command.end(), {"-S", source, "-o", "code.s"});
    RunOptions options;
    options.directory = folder.path();
    return run_program(command, options);
}

std::string object_of(const toolchain& with, const sample& of, const ScratchFolder& folder,
                      const std::string& text) {
    folder.write("one.s", text);
    std::vector<std::string> command = assembler(with, of.flags);
    command.insert(command.end(), {"one.s", "-o", "one.o"});
    RunOptions options;
    options.directory = folder.path();
    const Finished it = run_program(command, options);
    EXPECT_EQ(it.status, 0) << it.err;
    return folder.read("one.o");
}

figures check(const toolchain& with, const sample& of) {
    const ScratchFolder folder;
    const Finished compiled = compile(with, of, folder);
    EXPECT_EQ(compiled.status, 0) << compiled.err;
    const std::string text = folder.read("code.s");
    const listing_input input = {.name = "code.s",
                                 .text = text,
                                 .target = with.target,
                                 .directory = folder.path(),
                                 .modified = 0,
                                 .command = {}};
    listing_options options = quiet();
    options.mangled = true;
    const auto listing = [&](const std::function<void(listing_options&)>& set) {
        listing_options changed = options;
        set(changed);
        return list({input}, changed).text;
    };
    const auto objects_of = [&](const std::function<void(listing_options&)>& set) {
        options.json = true;
        std::vector<nlohmann::json> objects;
        for (const std::string& line : lines_of(listing(set))) {
            objects.push_back(nlohmann::json::parse(line));
        }
        options.json = false;
        return objects;
    };
    const std::string all = listing([](listing_options& it) { it.all = true; });
    const std::vector<nlohmann::json> objects = objects_of([](listing_options&) {});
    const std::vector<nlohmann::json> own =
        objects_of([](listing_options& it) { it.own_sources = true; });
    EXPECT_EQ(own.size(), objects.size());
    if (own.size() != objects.size()) {
        return {};
    }
    check_list(objects_of([](listing_options& it) { it.form = listing_form::list; }), objects);
    const whole_listing whole = take_apart(all, objects, own, with.comment, folder.path());
    EXPECT_TRUE(whole.assembly == text) << "more or less was added than comments";
    EXPECT_EQ(whole.code.size(), objects.size());
    EXPECT_TRUE(object_of(with, of, folder, all) == object_of(with, of, folder, text))
        << "the listing's object is another";
    noise_checker(whole, objects, with.comment).check(listing([](listing_options&) {}));
    folder.write("labelled.s", whole.labelled);
    const object_truth truth =
        read_object(with, folder.path(), "labelled.s", of.flags, label_prefix);
    return checker(whole, truth).check();
}

class Truth : public testing::TestWithParam<toolchain> {};

TEST_P(Truth, IsTold) {
    const toolchain& with = GetParam();
    if (const std::string missing = missing_programs(with); !missing.empty() && !is_required()) {
        GTEST_SKIP() << "not installed:" << missing;
    }
    figures all;
    for (const sample& it : samples_for(with)) {
        SCOPED_TRACE(it.source + " " + it.flags);
        const figures found = check(with, it);
        EXPECT_GT(found.code, 0U);
        all.code += found.code;
        all.inlined += found.inlined;
        all.wrong += found.wrong;
    }
    std::cout << with.name << ": " << all.code << " lines of code, " << all.inlined
              << " inlined, wrong " << all.wrong << "\n";
}

INSTANTIATE_TEST_SUITE_P(Listings, Truth, testing::ValuesIn(toolchains),
                         [](const auto& it) { return std::string(it.param.name); });

}  // namespace
