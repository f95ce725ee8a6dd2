// What symdecode takes for a mangled name, and how one is decoded. The filter hands over
// runs of text and whole symbols, and gets back which bytes were the name and what it
// reads as.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The scheme is chosen for each name by its shape.
constexpr int scheme_auto = -1;

// A run or symbol of this many bytes or more is never looked into.
constexpr std::size_t longest_name = 65536;

// How a name reads: in the library's way, or in that of the platform's own demangler for
// the schemes that it knows.
enum class name_style { house, gnu };

struct name_settings {
    int scheme = scheme_auto;  // a scheme's number or scheme_auto
    name_style style = name_style::house;
    bool names_only = false;        // without scope and signature; not in the platform's style
    bool strip_underscore = false;  // drop the underscore that some targets put in front
    bool extended = true;           // also what newer compilers write, ".suffix" clones included
};

// Settings and the memory that decoding reuses from name to name. One per thread
// would not do: the library's settings are process-wide.
struct name_decoder {
    name_settings settings;
    std::string name;    // the name at hand, for its NUL
    std::string buffer;  // what the library writes to
    std::string platform_text;
};

// A mangled name inside a text. `begin` and `end` are offsets into the text and hold
// the name proper; a leading underscore that was dropped or kept, a version and the
// like lie outside. `decoded` lives in the decoder until its next call.
struct found_name {
    bool found = false;
    std::size_t begin = 0;
    std::size_t end = 0;
    int scheme = 0;
    bool drops_underscore = false;  // the byte before `begin` is an underscore to leave out
    std::string_view decoded{};
};

// Whether a scheme has this number.
bool is_scheme(int number);

// Whether a name may hold this byte behind an underscore, as every name does somewhere.
bool may_follow_underscore(char byte);

// A run of bytes that can be part of a name: letters, digits, "_", ".", "$" and the
// bytes of characters beyond ASCII. The bytes around it cannot.
struct text_run {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool plain = true;  // letters, digits and underscores only
};

// The run in `text` around the run byte at `at`, or an empty one where there is none. It
// does not begin before `floor`.
text_run run_around(std::string_view text, std::size_t at, std::size_t floor);

// The first mangled name at or after `from` in `run`, the bytes of a whole run; `plain`
// is what run_around said of it.
found_name find_name(name_decoder& decoder, std::string_view run, bool plain, std::size_t from);

// The same for a text that is known to be one symbol, so that no guess is needed: all
// of it, but for a leading underscore and an "@version", must be the name, and under
// scheme_auto whatever does not begin with "_Z" is tried as scheme 0.
found_name find_whole_name(name_decoder& decoder, std::string_view symbol);
