// What the words of a compiler's command line say: sources and their languages, where the
// output goes, whether code is made at all. Knows the options of GCC and Clang that matter
// here, and of the others which ones take the next word as their value.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace clist {

// What an argument is for.
enum class role : std::uint8_t {
    program,          // before the first option or source: the compiler, what it runs under
    source,           // C, C++ or Objective-C
    other_input,      // assembly, objects, libraries
    output,           // -o
    language,         // -x
    to_object,        // -c
    to_assembly,      // -S
    no_code,          // -E, -M, --version, ...: no code is made
    dependencies,     // -MD, -MMD: a dependency file beside the output
    dependency_file,  // -MF
    dependency_name,  // -MT, -MQ
    dependency_rest,  // -MP, -MG, ...
    preprocessor,     // -Wp,...
    debug_on,         // -g, -g1, -ggdb, -gdwarf-4, ...
    debug_off,        // -g0
    split_debug,      // -gsplit-dwarf: debugging data in a file of its own
    link_time,        // -flto
    side_file,        // one more file is written, the code stays the same
    use_profile,      // -fprofile-use: looks for a file named as the output
    system_folder,    // -isystem, --sysroot
    target,           // --target=
    end_of_options,   // --
    other,
};

struct argument {
    role what = role::other;
    std::string option;     // the first word, or its part before the value
    std::string value;      // empty where there is none
    bool is_split = false;  // the value is a word of its own
    std::string language;   // of a source
    std::size_t top = 0;  // the word of the command line that it is in: a response file's has many

    // Adds its one or two words.
    void put_to(std::vector<std::string>& words) const;
};

struct arguments {
    std::vector<std::string> given;     // the words
    std::vector<argument> all;          // response files taken apart
    std::vector<std::size_t> sources;   // indices into `all`
    std::optional<std::string> output;  // -o
    std::string target;                 // --target, or the prefix of the compiler's name
    // Response files of which the first word is the value of an option before them.
    std::set<std::size_t> torn;
    bool to_object = false;
    bool to_assembly = false;
    bool makes_code = false;  // there are sources, and what is made of them is code
    bool has_debug = false;   // line information is asked for
    bool has_link_time = false;
    bool reads_standard_input = false;

    bool has(role what) const;
    // The compiler itself: the last word of the program.
    const std::string& compiler() const;
};

// Takes a command line apart. `directory` is where relative response files are looked for.
arguments read_arguments(const std::vector<std::string>& words, const std::string& directory = {});

// The language of a file by its name, as -x calls it; nothing for what is no source of C,
// C++ or Objective-C.
std::optional<std::string_view> language_of_name(std::string_view name);

// Whether a compiler's name, or what the link of this name in $PATH leads to, is Clang's.
bool is_clang(const std::string& compiler);

}  // namespace clist
