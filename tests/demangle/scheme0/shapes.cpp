// How the hard names are written; every row of the tables is one of them.
#include "tests/demangle/scheme0/shapes.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "tests/demangle/scheme0/parts.h"

namespace scheme0 {

std::string repeated(std::size_t count, const std::string& text) {
    std::string whole;
    for (std::size_t number = 0; number != count; ++number) {
        whole += text;
    }
    return whole;
}

namespace {

// `front` as often as asked, the innermost, `back` as often.
std::string nested(const std::string& start, const std::string& front, const std::string& inner,
                   const std::string& back, std::size_t count) {
    return start + repeated(count, front) + inner + repeated(count, back);
}

std::string listed(const std::string& content) {
    return "__tm__" + std::to_string(content.size() + 1) + "_" + content;
}

std::string joined_texts(std::initializer_list<std::string_view> texts) {
    std::string whole;
    for (const std::string_view text : texts) {
        whole += text;
    }
    return whole;
}

// A list holding a list, from the inside out; `open` and `close` stand around each.
std::string nested_lists(const std::string& open, const std::string& close, std::size_t count) {
    std::string name = "A";
    for (std::size_t number = 0; number != count; ++number) {
        const std::string inner = open == "X__" ? name : length_prefixed(name);
        name = joined_texts({"A", listed(joined_texts({open, inner, close}))});
    }
    return name;
}

constexpr Nesting nesting_rows[] = {
    {"pointers", [](std::size_t count) { return nested("f__F", "P", "i", "", count); }, 1},
    {"references", [](std::size_t count) { return nested("f__F", "R", "i", "", count); }, 1},
    {"qualifiers", [](std::size_t count) { return nested("f__F", "PC", "i", "", count); }, 2},
    {"member pointers", [](std::size_t count) { return nested("f__F", "M1A", "i", "", count); }, 1},
    {"arrays", [](std::size_t count) { return nested("f__F", "A_", "i", "", count); }, 1},
    {"vectors", [](std::size_t count) { return nested("f__F", "B4_", "i", "", count); }, 1},
    {"handles", [](std::size_t count) { return nested("f__F", "Hh", "i", "", count); }, 1},
    {"interior pointers", [](std::size_t count) { return nested("f__F", "Hi", "i", "", count); },
     1},
    {"functions in parameters",
     [](std::size_t count) { return nested("f__F", "F", "i", "_v", count); }, 1},
    {"pointers to functions in parameters",
     [](std::size_t count) { return nested("f__F", "PF", "i", "_v", count); }, 4},
    {"functions in results",
     [](std::size_t count) { return nested("f__F", "PFv_", "i", "", count); }, 4},
    {"typeof", [](std::size_t count) { return nested("f__F", "t", "i", "", count); }, 1},
    {"qualified names", [](std::size_t count) { return nested("f__F", "Q1_", "1A", "", count); },
     1},
    {"qualified scopes", [](std::size_t count) { return nested("f__", "Q1_", "1AFv", "", count); },
     1},
    {"prefix operators",
     [](std::size_t count) { return nested("f__FyOng", "Ong", "Z1Z", "O", count) + "O"; }, 3},
    {"operators on the left",
     [](std::size_t count) { return nested("f__Fy", "Opl", "Z1Z", "Z2ZO", count + 1); }, 3},
    {"operators on the right",
     [](std::size_t count) { return nested("f__Fy", "OplZ1Z", "Z2Z", "O", count + 1); }, 3},
    {"calls", [](std::size_t count) { return nested("f__Fy", "OclZ1Z", "Z2Z", "O", count + 1); },
     3},
    {"types in expressions",
     [](std::size_t count) { return nested("f__F", "yOszT", "i", "O", count); }, 5},
    {"expressions in array bounds",
     [](std::size_t count) { return nested("f__F", "AXOszT", "i", "O_i", count); }, 5},
    {"template arguments",
     [](std::size_t count) { return "f__F" + length_prefixed(nested_lists("", "", count)); }, 5},
    {"template arguments of operands",
     [](std::size_t count) { return "f__F" + length_prefixed(nested_lists("X__", "__", count)); },
     6},
    {"owners of member pointers",
     [](std::size_t count) { return "f__F" + length_prefixed(nested_lists("M", "i", count)); }, 6},
    {"conversions as operands",
     [](std::size_t count) { return nested("f__Fy", "Ong____opy", "OngZ1ZO", "__O", count); }, 6},
};

// As many repetitions as `length` holds of a nesting.
std::string filled(const Nesting& row, std::size_t length) {
    std::size_t low = 0;
    std::size_t high = length;
    while (low + 1 < high) {
        const std::size_t middle = (low + high) / 2;
        (row.name(middle).size() <= length ? low : high) = middle;
    }
    return row.name(low);
}

std::string cut(std::string name, std::size_t length) {
    name.resize(std::min(name.size(), length));
    return name;
}

// `start`, then `unit` until `length` is full, and `end`.
std::string run_of(const std::string& start, const std::string& unit, const std::string& end,
                   std::size_t length) {
    const std::size_t room = length - std::min(length, start.size() + end.size());
    return start + repeated(room / unit.size(), unit) + end;
}

// Parameter lists in parameter lists, each repeating what stands in it.
std::string parameter_bomb(const std::string& repeats, std::size_t length) {
    const std::size_t each = repeats.size() + 4;
    return nested("f__F", "PF", "i", repeats + "_v", (length - 5) / each);
}

// A run of `length` characters in all, its digits included.
std::string run_that_fills(std::size_t length, const std::string& unit) {
    const std::size_t digits = length > 1003 ? 4 : length > 102 ? 3 : length > 11 ? 2 : 1;
    const std::size_t size = length - digits;
    return length_prefixed(cut(run_of("", unit, unit, size), size));
}

// Components that hold all earlier ones, by reference: each level doubles the expansion
// until it would pass `most` characters.
std::string reference_bomb(std::size_t length, std::size_t most) {
    std::string code = "f__F";  // compressed, and how much it stands for
    std::size_t at = 4;
    std::size_t place = at;  // where the last component stands
    std::size_t size = 20;   // and its size, digits included
    code += "18" + std::string(18, 'a');
    at += size;
    for (;;) {
        const std::string reference = joined_texts({"J", std::to_string(place), "J"});
        const std::size_t content = 1 + 2 * size;
        const std::string digits = std::to_string(content);
        const std::string more = joined_texts({digits, "a", reference, reference});
        if (at + digits.size() + content > most || code.size() + more.size() + 20 > length) {
            // What room is left goes to repetitions.
            while (at + size <= most && code.size() + reference.size() + 20 <= length) {
                code += reference;
                at += size;
            }
            return joined_texts({"__CPR", std::to_string(at), "__", code});
        }
        code += more;
        place = at;
        size = digits.size() + content;
        at += size;
    }
}

constexpr std::size_t mebibyte = 1 << 20;

template <int index>
std::string filled_row(std::size_t length) {
    return filled(nesting_rows[index], length);
}

constexpr HostileShape shape_rows[] = {
    {"underscores", [](std::size_t length) { return std::string(length, '_'); }},
    {"underscores behind a letter",
     [](std::size_t length) { return "a" + std::string(length - 1, '_'); }},
    {"separators", [](std::size_t length) { return run_of("", "a__", "", length); }},
    {"separators with qualifier letters",
     [](std::size_t length) { return run_of("a", "__CVDrDLDRS", "", length); }},
    {"one run of qualifier letters",
     [](std::size_t length) { return run_of("a__", "CV", "", length); }},
    {"underscores and qualifier letters",
     [](std::size_t length) { return run_of("a", "__C", "", length); }},
    {"list openings", [](std::size_t length) { return run_of("a", "__tm__", "", length); }},
    {"list openings with numbers",
     [](std::size_t length) { return run_of("a", "__tm__1_", "", length); }},
    {"list openings with huge numbers",
     [](std::size_t length) { return run_of("a__tm__", "9", "_i", length); }},
    {"digits", [](std::size_t length) { return run_of("a__", "9", "", length); }},
    {"zeros", [](std::size_t length) { return run_of("a__", "0", "1A", length); }},
    {"component count", [](std::size_t length) { return run_of("__Q", "9", "_1A", length); }},
    {"count without components", [](std::size_t length) { return cut("__Q99999999999_", length); }},
    {"many components",
     [](std::size_t length) { return run_of("f__Q1300_", "1AZ1Z", "Fv", length); }},
    {"empty components", [](std::size_t length) { return run_of("__Q4000_", "G", "", length); }},
    {"constructor of many components",
     [](std::size_t length) { return run_of("__ct__Q2000_", "1A", "Fv", length); }},
    {"one long identifier",
     [](std::size_t length) { return std::string(length - 4, 'a') + "__Fv"; }},
    {"one long run", [](std::size_t length) { return "f__F" + run_that_fills(length - 4, "a"); }},
    {"run of separators",
     [](std::size_t length) { return "f__F" + run_that_fills(length - 4, "a__"); }},
    {"run of list openings",
     [](std::size_t length) { return "f__F" + run_that_fills(length - 4, "a__tm__2_i__"); }},
    {"run of unnamed forms",
     [](std::size_t length) { return "f__F" + run_that_fills(length - 4, "a__Ut1"); }},
    {"run of unnamed openings",
     [](std::size_t length) { return "f__F" + run_that_fills(length - 4, "__Ut"); }},
    {"table of many classes",
     [](std::size_t length) { return run_of("__vtbl", "__1A__A", "", length); }},
    {"table run of many classes",
     [](std::size_t length) { return "__vtbl__" + run_that_fills(length - 8, "a__"); }},
    {"many parameters", [](std::size_t length) { return run_of("f__F", "PFRCc_v", "", length); }},
    {"parameter repeated often",
     [](std::size_t length) { return run_of("f__FPCc", "N91", "", length); }},
    {"repeated repetitions",
     [](std::size_t length) { return run_of("f__FPCc", "T1N92", "", length); }},
    {"repetitions one after the other",
     [](std::size_t length) {
         return run_of("f__F" + run_that_fills(length / 2, "a"), "N91", "", length);
     }},
    {"parameter lists that double",
     [](std::size_t length) { return parameter_bomb("T1", length); }},
    {"parameter lists that repeat",
     [](std::size_t length) { return parameter_bomb("N91", length); }},
    {"parameter lists of nothing",
     [](std::size_t length) { return nested("f__F", "F", "Q1_G", "N91_Q1_G", (length - 8) / 9); }},
    {"parameter lists that repeat behind an error",
     [](std::size_t length) {
         std::string name = parameter_bomb("N91", length);
         std::replace(name.begin(), name.end(), 'i', 'h');
         return name;
     }},
    {"parameter lists that repeat in a scope",
     [](std::size_t length) {
         const std::string bomb = parameter_bomb("N91", length - 30).substr(4);
         return "__ct__" + length_prefixed("A" + listed(bomb)) + "Fv";
     }},
    {"parameter lists that repeat in a conversion",
     [](std::size_t length) {
         return "__op" + parameter_bomb("N91", length - 10).substr(4) + "__1AFv";
     }},
    {"parameter lists that repeat in an expression",
     [](std::size_t length) {
         return "f__FyOszT" + parameter_bomb("N91", length - 10).substr(4) + "O";
     }},
    {"many arguments",
     [](std::size_t length) { return "f" + listed(repeated((length - 20) / 4, "XZ1Z")) + "__Fv"; }},
    {"many operands", [](std::size_t length) { return run_of("f__FyOclZ1Z", "Z1Z", "O", length); }},
    {"long literal",
     [](std::size_t length) {
         return "f__FyiL_" + std::to_string(length - 20) + "_" + std::string(length - 20, '7');
     }},
    {"zeros of a boolean",
     [](std::size_t length) {
         return "f__FybL_" + std::to_string(length - 20) + "_" + std::string(length - 20, '0');
     }},
    {"long array bound", [](std::size_t length) { return run_of("f__FA", "9", "_i", length); }},
    {"long parameter index", [](std::size_t length) { return run_of("f__FiT", "9", "_", length); }},
    {"long template parameter",
     [](std::size_t length) { return run_of("f__FZ", "9", "Z", length); }},
    {"compressed zeros", [](std::size_t length) { return run_of("__CPR", "0", "1__f", length); }},
    {"escaped letters",
     [](std::size_t length) {
         const std::size_t count = (length - 20) / 2;
         return "__CPR" + std::to_string(count + 3) + "__" + repeated(count, "JJ") + "__F";
     }},
    {"back-references to a megabyte",
     [](std::size_t length) { return reference_bomb(length, mebibyte); }},
    {"back-references to 16 megabytes",
     [](std::size_t length) { return reference_bomb(length, 16 * mebibyte - 64); }},
    {"back-references that read long numbers",
     [](std::size_t length) {
         const std::string digits(length / 2, '0');
         return "__CPR16000000__f__F" + digits + "1A" +
                run_of("", "J4J", "", length - std::min(length, digits.size() + 25));
     }},
    {"nested pointers", filled_row<0>},
    {"nested qualifiers", filled_row<2>},
    {"nested member pointers", filled_row<3>},
    {"nested arrays", filled_row<4>},
    {"nested vectors", filled_row<5>},
    {"nested handles", filled_row<6>},
    {"nested interior pointers", filled_row<7>},
    {"nested functions in parameters", filled_row<8>},
    {"nested pointers to functions in parameters", filled_row<9>},
    {"nested functions in results", filled_row<10>},
    {"nested typeof", filled_row<11>},
    {"nested qualified names", filled_row<12>},
    {"nested qualified scopes", filled_row<13>},
    {"nested prefix operators", filled_row<14>},
    {"nested operators on the left", filled_row<15>},
    {"nested operators on the right", filled_row<16>},
    {"nested calls", filled_row<17>},
    {"nested types in expressions", filled_row<18>},
    {"nested expressions in array bounds", filled_row<19>},
    {"nested template arguments", filled_row<20>},
    {"nested template arguments of operands", filled_row<21>},
    {"nested owners of member pointers", filled_row<22>},
    {"nested conversions as operands", filled_row<23>},
};

}  // namespace

std::span<const Nesting> nestings() {
    return nesting_rows;
}

std::span<const HostileShape> hostile_shapes() {
    return shape_rows;
}

}  // namespace scheme0
