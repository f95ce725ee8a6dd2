// The program against the slow second interlister, on random inputs.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <random>
#include <vector>

#include "tests/interlist/fresh_state.h"
#include "tests/interlist/pass.h"
#include "tests/interlist/reference_model.h"

namespace {

// What a family of random inputs is made of.
struct Flavour {
    const char* name;
    int c_lines;           // lines of a C file, at most
    int functions;         // functions of an assembly file, at most
    int function_lines;    // assembly lines of a function, at most
    int file_changes;      // another C file before one function in so many
    int odd_bytes;         // one character in so many is CR, Ctrl-Z, 255 or NUL; 0: none
    int long_lines;        // one line in so many is about as long as the buffers; 0: none
    bool carriage_return;  // lines end in CR LF
    std::size_t window;    // size of the reading windows
    int runs;
};

constexpr Flavour flavours[] = {
    {"plain", 40, 6, 12, 8, 0, 0, false, 65536, 1500},
    {"line ends", 40, 6, 12, 8, 0, 0, true, 65536, 300},
    {"odd bytes", 40, 6, 12, 8, 30, 0, false, 65536, 1500},
    {"long lines", 12, 5, 8, 8, 0, 4, false, 32768, 400},
    {"long lines with odd bytes", 12, 5, 8, 8, 40, 4, true, 32768, 400},
    {"large", 12000, 400, 60, 8, 0, 0, false, 32768, 6},
    {"large with odd bytes", 6000, 200, 60, 8, 2000, 900, false, 65536, 6},
    {"long functions", 300, 5, 6000, 8, 0, 0, false, 32768, 8},
    {"other files again and again", 3000, 200, 20, 1, 500, 100, false, 32768, 20},
    {"other files with long lines", 60, 40, 8, 1, 60, 4, true, 65536, 60},
};

void PrintTo(const Flavour& flavour, std::ostream* out) {
    *out << flavour.name;
}

class Draw {
  public:
    explicit Draw(unsigned seed) : engine_(seed) {}
    int upto(int most) { return std::uniform_int_distribution<int>(0, most)(engine_); }
    bool one_in(int n) { return n > 0 && upto(n - 1) == 0; }
    template <std::size_t n>
    const char* any(const std::array<const char*, n>& of) {
        return of[static_cast<std::size_t>(upto(static_cast<int>(n) - 1))];
    }

  private:
    std::mt19937 engine_;
};

std::string long_text(Draw& draw, const char* unit) {
    const auto length =
        static_cast<std::size_t>(draw.one_in(3) ? draw.upto(40000) : 16384 - 20 + draw.upto(40));
    std::string text;
    while (text.size() < length) {
        text += unit;
    }
    text.resize(length);
    return text;
}

// Ends the line and sows odd bytes into it.
std::string finished(Draw& draw, const Flavour& flavour, std::string line) {
    line += flavour.carriage_return && !draw.one_in(9) ? "\r\n" : "\n";
    if (flavour.odd_bytes != 0) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            if (draw.one_in(flavour.odd_bytes)) {
                constexpr std::array<char, 4> odd{'\r', '\x1a', '\xff', '\0'};
                line.insert(i, 1, odd[static_cast<std::size_t>(draw.upto(3))]);
            }
        }
    }
    return line;
}

std::string random_source(Draw& draw, const Flavour& flavour) {
    constexpr std::array<const char*, 14> lines{
        "",
        "int a;",
        "    b = 1;",
        "\tc = 2;",
        "{",
        "  }",
        "  /* comment",
        "   more */",
        "\t    d();  // e",
        "  \tf\tg\th",
        "        ",
        "/* one line */",
        "*/ x",
        "    a line that is longer than the seventy-one columns a listing has by default   x y z"};
    std::string text;
    for (int n = draw.upto(flavour.c_lines); n > 0; --n) {
        text += finished(draw, flavour,
                         draw.one_in(flavour.long_lines)
                             ? long_text(draw, draw.one_in(2) ? "\tx" : "  word")
                             : draw.any(lines));
    }
    if (draw.one_in(3) && !text.empty()) {
        text.pop_back();
    }
    return text;
}

std::string directive(const char* name, int value) {
    return std::string("\t.").append(name).append("\t").append(std::to_string(value));
}

std::string random_function(Draw& draw, const Flavour& flavour) {
    constexpr std::array<const char*, 8> lines{
        "\tmov r1, r2", "label:",      "\t.loc 1 2 3", "",
        "\t.isym\t_x",  "\t.ifunc\t3", "\t.ident",     " .iline\t3"};
    const int first = draw.upto(flavour.c_lines + 2);
    std::string text = finished(draw, flavour, directive("ifunc", first));
    int position = 1;
    const int jump = 2 + flavour.c_lines / 100;
    for (int n = draw.upto(flavour.function_lines); n > 0; --n) {
        if (draw.one_in(4)) {
            // Never below the first: that is a very large number, and a listing of
            // billions of lines.
            position = std::max(1, position + draw.upto(jump) - jump / 4);
            text += finished(draw, flavour,
                             draw.one_in(30) ? "\t.iline\t" : directive("iline", position));
        } else {
            text += finished(
                draw, flavour,
                draw.one_in(flavour.long_lines) ? long_text(draw, "nop ; ") : draw.any(lines));
        }
    }
    if (!draw.one_in(6)) {
        text += finished(
            draw, flavour,
            draw.one_in(20) ? "\t.iendfunc\tx" : directive("iendfunc", first + position + 2));
    }
    return text;
}

std::string random_assembly(Draw& draw, const Flavour& flavour) {
    constexpr std::array<const char*, 4> names{"\t.ifile\t\"a.c\"", "\t.ifile\t\"b.c\"",
                                               "\t.ifile\t\"none.c\"", "\t.ifile\t\"a.c\" "};
    std::string text = draw.one_in(5) ? "" : "\t.ifile\t\"a.c\"\n";
    for (int n = draw.upto(flavour.functions); n > 0; --n) {
        if (draw.one_in(flavour.file_changes)) {
            text += std::string(draw.any(names)) + (flavour.carriage_return ? "\r\n" : "\n");
        }
        text += finished(draw, flavour, "\t.text");
        text += random_function(draw, flavour);
    }
    if (draw.one_in(4) && !text.empty()) {
        text.pop_back();
    }
    return text;
}

// A pipe that already holds all it will deliver, as a name in the file system.
std::string filled_pipe(const std::string& bytes, int& reading_end) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0);
    EXPECT_EQ(write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    close(ends[1]);
    reading_end = ends[0];
    return std::string("/dev/fd/").append(std::to_string(reading_end));
}

class AgainstTheModel : public testing::TestWithParam<Flavour> {};

}  // namespace

TEST_P(AgainstTheModel, TheListingIsTheSame) {
    const Flavour& flavour = GetParam();
    // A listing that runs away must not fill the disk.
    const rlimit limit{64U << 20, 64U << 20};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    const ScratchFolder folder;
    const std::string back = std::filesystem::current_path();
    ASSERT_EQ(chdir(folder.path().c_str()), 0);
    const std::size_t usual_window = assy_input.size;
    for (int run = 0; run < flavour.runs; ++run) {
        Draw draw(static_cast<unsigned>(run));
        const std::map<std::string, std::string> sources{{"a.c", random_source(draw, flavour)},
                                                         {"b.c", random_source(draw, flavour)}};
        const std::string assembly = random_assembly(draw, flavour);
        ModelOptions options{draw.one_in(3), draw.one_in(3), 0};
        std::vector<std::string> arguments;
        if (options.skip_blanks) {
            arguments.emplace_back("-b");
        }
        if (options.keep_indentation) {
            arguments.emplace_back("-p");
        }
        if (draw.one_in(3)) {
            options.width = draw.upto(90);
            arguments.insert(arguments.end(), {"-w", std::to_string(options.width)});
        }
        for (const auto& [name, text] : sources) {
            folder.write(name, text);
        }
        int pipe_end = -1;
        const bool through_a_pipe = assembly.size() < 32000 && draw.one_in(4);
        arguments.push_back(through_a_pipe ? filled_pipe(assembly, pipe_end)
                                           : folder.write("x.asm", assembly));
        arguments.push_back("x.cl");
        assy_input.size = cfile_input.size = flavour.window;

        testing::internal::CaptureStderr();
        run_pass(arguments);
        std::string messages = testing::internal::GetCapturedStderr();
        assy_input.size = cfile_input.size = usual_window;
        close(pipe_end);

        const ModelResult expected = model_listing(assembly, sources, options);
        messages = messages.substr(std::min(messages.find(">> WARNING"), messages.size()));
        const std::string listing = folder.read("x.cl");
        if (listing != expected.listing || messages != expected.warnings) {
            std::size_t at = 0;
            while (at < listing.size() && at < expected.listing.size() &&
                   listing[at] == expected.listing[at]) {
                ++at;
            }
            const std::size_t from = at < 200 ? 0 : at - 200;
            ADD_FAILURE() << flavour.name << ", run " << run << ", differs at " << at
                          << "\nlisted:\n"
                          << listing.substr(from, 400) << "\nexpected:\n"
                          << expected.listing.substr(from, 400) << "\nmessages:\n"
                          << messages << "\nexpected:\n"
                          << expected.warnings;
            break;
        }
    }
    ASSERT_EQ(chdir(back.c_str()), 0);
}

INSTANTIATE_TEST_SUITE_P(RandomInputs, AgainstTheModel, testing::ValuesIn(flavours),
                         [](const auto& each) {
                             std::string name = each.param.name;
                             for (char& c : name) {
                                 c = c == ' ' ? '_' : c;
                             }
                             return name;
                         });
