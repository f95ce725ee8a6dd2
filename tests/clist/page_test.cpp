// The page as clist writes it: its chunks unpacked and compared literally, and pages joined.
#include "clist/forms/page.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "assembly/text_file.h"
#include "clist/listing.h"
#include "gas2interlist/report.h"
#include "tests/harness/program.h"

using namespace clist;

namespace {

using change = std::function<void(listing_options&)>;
using chunks = std::map<std::string, std::string>;

std::string contents(int descriptor) {
    std::string text(static_cast<std::size_t>(lseek(descriptor, 0, SEEK_END)), '\0');
    EXPECT_EQ(pread(descriptor, text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
    close(descriptor);
    return text;
}

std::string file(const std::string& name) {
    const std::optional<assembly::text_file> found = assembly::text_file::open(name);
    EXPECT_TRUE(found) << name;
    return found ? std::string(found->text()) : "";
}

// The page of assembly texts, each under its name.
std::string page(
    const std::vector<std::pair<std::string, std::string>>& texts,
    const change& set = [](listing_options&) {}) {
    setenv("SOURCE_DATE_EPOCH", "86400", 1);
    gas2interlist::set_program_name("clist");
    listing_options options;
    options.form = listing_form::page;
    options.source_map = {{"/src", "../data/inlined"}, {"/usr/include", "../data/library"}};
    set(options);
    std::vector<listing_input> inputs;
    for (const auto& [name, text] : texts) {
        inputs.push_back({.name = name,
                          .text = text,
                          .target = "x86_64-linux-gnu",
                          .directory = {},
                          .modified = 0,
                          .command = {"gcc", "-DX=\"a b\"", name}});
    }
    const int descriptor = memfd_create("page", 0);
    testing::internal::CaptureStderr();
    {
        output out(descriptor);
        EXPECT_EQ(write_listing(inputs, options, out), 0);
        EXPECT_TRUE(out.flush());
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    return contents(descriptor);
}

std::string bytes_of_base64(std::string_view text) {
    const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    unsigned bits = 0;
    int count = 0;
    EXPECT_EQ(text.size() % 4, 0U);
    for (const char c : text.substr(0, text.find('='))) {
        const std::size_t value = letters.find(c);
        EXPECT_NE(value, std::string::npos) << c;
        bits = bits << 6U | static_cast<unsigned>(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> static_cast<unsigned>(count) & 0xffU);
        }
    }
    return bytes;
}

std::string unpacked(std::string bytes) {
    z_stream stream = {};
    EXPECT_EQ(inflateInit2(&stream, 15 + 16), Z_OK);
    stream.next_in = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    std::string text;
    int status = Z_OK;
    while (status == Z_OK) {
        char part[4096];
        stream.next_out = reinterpret_cast<Bytef*>(part);
        stream.avail_out = sizeof part;
        status = inflate(&stream, Z_NO_FLUSH);
        text.append(part, sizeof part - stream.avail_out);
    }
    EXPECT_EQ(status, Z_STREAM_END);
    EXPECT_EQ(stream.avail_in, 0U);
    inflateEnd(&stream);
    return text;
}

constexpr std::string_view head = "<script type=\"application/gzip\" data-chunk=\"";

// The lines that hold chunks, by name, the page's own script left out.
chunks packed_chunks(const std::string& page) {
    chunks found;
    for (std::size_t at = page.find(head); at != std::string::npos; at = page.find(head, at)) {
        at += head.size();
        const std::size_t end = page.find('\n', at);
        const std::string line = page.substr(at, end - at);
        const std::size_t quote = line.find('"');
        EXPECT_TRUE(line.ends_with("</script>"));
        if (const std::string name = line.substr(0, quote); name != "script") {
            EXPECT_TRUE(found.emplace(name, line.substr(quote)).second) << name;
        }
    }
    return found;
}

chunks chunks_of(const std::string& page) {
    chunks found;
    for (const auto& [name, line] : packed_chunks(page)) {
        const std::string_view tail = "</script>";
        found[name] = unpacked(
            bytes_of_base64(std::string_view(line).substr(2, line.size() - 2 - tail.size())));
    }
    return found;
}

std::string data(const std::string& name) {
    return file("../data/" + name);
}

std::vector<std::string> names_of(const chunks& all) {
    std::vector<std::string> names;
    for (const auto& [name, text] : all) {
        names.push_back(name);
    }
    return names;
}

// The numbers of a column.
std::vector<long> column(const std::string& json, const std::string& name) {
    std::vector<long> numbers;
    const std::string begin = '"' + name + "\":[";
    const std::size_t found = json.find(begin);
    EXPECT_NE(found, std::string::npos) << name;
    const char* at = json.c_str() + found + begin.size();
    while (*at != ']') {
        char* end = nullptr;
        numbers.push_back(std::strtol(at, &end, 10));
        at = *end == ',' ? end + 1 : end;
    }
    return numbers;
}

// The texts of a column; the only ones here that JSON escapes have quotes or tabs.
std::vector<std::string> texts(const std::string& json, const std::string& name) {
    std::vector<std::string> all;
    const std::string begin = '"' + name + "\":[";
    for (std::size_t at = json.find(begin) + begin.size(); json[at] != ']'; ++at) {
        if (json[at] != '"') {
            continue;
        }
        std::string& text = all.emplace_back();
        for (++at; json[at] != '"'; ++at) {
            at += json[at] == '\\' ? 1 : 0;
            text += json[at] == 't' && json[at - 1] == '\\' ? '\t' : json[at];
        }
    }
    return all;
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

// What the browser makes of a unit when it shows all of the assembly.
std::string all_lines(const chunks& from) {
    std::vector<std::string> code = lines_of(from.at("0/code"));
    const std::vector<std::string> hidden = lines_of(from.at("0/hidden"));
    const std::vector<std::string> tails = texts(from.at("0/rows"), "tail");
    std::size_t tail = 0;
    for (const long row : column(from.at("0/rows"), "tail_row")) {
        code.at(static_cast<std::size_t>(row)) += tails.at(tail++);
    }
    std::map<long, std::string> rows;
    long line = 0;
    std::size_t row = 0;
    for (const long step : column(from.at("0/rows"), "assembly_line")) {
        line += step;
        if (step != 0) {
            EXPECT_TRUE(rows.emplace(line, code.at(row)).second) << line;
        }
        ++row;
    }
    EXPECT_EQ(row, code.size());
    std::string text;
    auto next = hidden.begin();
    for (line = 1; static_cast<std::size_t>(line) <= rows.size() + hidden.size(); ++line) {
        const auto found = rows.find(line);
        text += (found == rows.end() ? *next++ : found->second) + '\n';
    }
    EXPECT_EQ(next, hidden.end());
    return text;
}

void mangled(listing_options& options) {
    options.mangled = true;
    options.warnings = false;
}

void quiet(listing_options& options) {
    options.warnings = false;
}

}  // namespace

TEST(Page, HasTheUnitAndTheTextOfItsSource) {
    const chunks made = chunks_of(page({{"t.s", data("inlined/gcc_5.s")}}));
    EXPECT_EQ(names_of(made), (std::vector<std::string>{"0/code", "0/hidden", "0/rows", "0/unit",
                                                        "text/5fc23a8730f34ccf133857d4efcf0f3e"}));
    EXPECT_EQ(made.at("text/5fc23a8730f34ccf133857d4efcf0f3e"), data("inlined/inlined.c"));
}

TEST(Page, TellsOfTheUnitInItsHead) {
    EXPECT_EQ(chunks_of(page({{"t.s", data("inlined/gcc_5.s")}})).at("0/unit"),
              R"({"format":1,"name":"t.s","command":["gcc","-DX=\"a b\"","t.s"],)"
              R"("compiler":"GCC: (Debian 12.2.0-14+deb12u1) 12.2.0",)"
              R"("target":"x86_64-linux-gnu","comment":"#","program":"clist )" PROJECT_VERSION
              R"(","made":"1970-01-02T00:00:00Z","rows":6,"instructions":5,)"
              R"("files":[{"path":"inlined.c","text":"text/5fc23a8730f34ccf133857d4efcf0f3e",)"
              R"("lines":13,"system":false,"heat_line":[2,9,1,1],"heat_count":[2,1,1,1]}],)"
              R"("functions":{"name":["outer"],"symbol":["outer"],"file":[0],"line":[11],)"
              R"("row":[0],"rows":[6],"instructions":[5],"inlined":[2]},)"
              R"("inlined":{"name":["square","sum_of_squares"],"file":[0,0],"line":[2,6],)"
              R"("instructions":[2,2]}})");
}

// The list compared with the frames and rows that stand beside it in the data.
TEST(Page, ListsTheFunctionsThatStandNowhereByThemselves) {
    std::size_t listed = 0;
    for (const char* name : {"gas/gcc_c_O3_dwarf4.s", "gas/gcc_cpp_O1_dwarf4.s",
                             "inlined/clang_5.s", "inlined/gcc_4.s", "library/use.s"}) {
        const chunks made = chunks_of(page({{"t.s", data(name)}}, quiet));
        const std::string& rows = made.at("0/rows");
        const std::vector<std::string> names = texts(rows, "names");
        const std::vector<long> function = column(rows, "frame_function");
        const std::vector<long> line = column(rows, "frame_line");
        const std::vector<long> parent = column(rows, "frame_parent");
        const std::vector<long> run_frame = column(rows, "run_frame");
        const std::vector<long> run_rows = column(rows, "run_rows");
        const std::string kinds = rows.substr(rows.find("\"kinds\":\"") + 9);

        std::map<std::string, long> instructions;
        std::map<std::string, long> first_line;
        std::size_t row = 0;
        for (std::size_t run = 0; run < run_rows.size(); ++run) {
            const auto end = row + static_cast<std::size_t>(run_rows[run]);
            const auto count = std::count(&kinds[row], &kinds[end], 'i');
            std::set<long> within;
            for (long at = run_frame[run]; at >= 0; at = parent[static_cast<std::size_t>(at)]) {
                within.insert(function[static_cast<std::size_t>(at)]);
            }
            for (const long it : within) {
                instructions[names[static_cast<std::size_t>(it)]] += count;
            }
            row = end;
        }
        for (std::size_t i = 0; i < function.size(); ++i) {
            const std::string& it = names[static_cast<std::size_t>(function[i])];
            const long known = first_line.emplace(it, line[i]).first->second;
            first_line[it] = std::min(known, line[i]);
        }
        for (std::size_t i = 0; i < function.size(); ++i) {
            if (parent[i] < 0) {
                instructions.erase(names[static_cast<std::size_t>(function[i])]);
            }
        }

        const std::string& unit = made.at("0/unit");
        const std::string inlined = unit.substr(unit.find("\"inlined\":{"));
        const std::vector<std::string> found = texts(inlined, "name");
        listed += found.size();
        EXPECT_EQ(std::set(found.begin(), found.end()).size(), instructions.size()) << name;
        for (std::size_t i = 0; i < found.size(); ++i) {
            ASSERT_TRUE(instructions.contains(found[i])) << found[i];
            EXPECT_EQ(column(inlined, "instructions")[i], instructions[found[i]]) << found[i];
            EXPECT_EQ(column(inlined, "line")[i], first_line[found[i]]) << found[i];
        }
    }
    EXPECT_GT(listed, 5U);
}

TEST(Page, TellsWhereEachRowCameFrom) {
    EXPECT_EQ(chunks_of(page({{"t.s", data("inlined/gcc_5.s")}})).at("0/rows"),
              R"({"kinds":"fiiiii","names":["outer","square","sum_of_squares"],)"
              R"("frame_function":[0,0,2,1,2,1,0],"frame_file":[0,0,0,0,0,0,0],)"
              R"("frame_line":[11,12,7,2,6,2,13],"frame_parent":[-1,-1,1,2,1,4,-1],)"
              R"("run_rows":[1,1,1,1,1,1],"run_frame":[-1,0,3,5,1,6],)"
              R"("tail_row":[],"tail":[],)"
              R"("assembly_line":[9,8,22,7,8,2]})");
}

TEST(Page, HasTheCodeRowByRow) {
    EXPECT_EQ(chunks_of(page({{"t.s", data("inlined/gcc_5.s")}})).at("0/code"),
              "outer:\n"
              "\tmovl\t%edi, (%rdx)\n"
              "\timull\t%esi, %esi\n"
              "\timull\t%edi, %edi\n"
              "\tleal\t-7(%rdi,%rsi), %eax\n"
              "\tret\n");
}

TEST(Page, LosesNoLineOfTheAssembly) {
    for (const char* name :
         {"gas/clang_c_O0_darwin.s", "gas/clang_c_O0_riscv64.s", "gas/clang_c_O1.s",
          "gas/clang_c_O1_arm.s", "gas/clang_c_O2_aarch64.s", "gas/clang_cpp_O0_dwarf4.s",
          "gas/gcc_c_O0.s", "gas/gcc_c_O2_sections.s", "gas/gcc_c_O3_dwarf4.s",
          "gas/gcc_cpp_O1_dwarf4.s", "inlined/gcc_5_split.s", "library/use.s"}) {
        EXPECT_EQ(all_lines(chunks_of(page({{"t.s", data(name)}}, mangled))), data(name)) << name;
    }
}

TEST(Page, ShowsSymbolsAsPeopleReadThem) {
    const chunks made = chunks_of(page({{"t.s", data("gas/gcc_cpp_O1_dwarf4.s")}}, quiet));
    EXPECT_EQ(made.at("0/code").find("_Z"), std::string::npos);
    EXPECT_NE(made.at("0/unit").find("\"symbol\":[\"_Z"), std::string::npos);
    EXPECT_EQ(made.at("0/unit").find("\"name\":[\"_Z"), std::string::npos);
}

TEST(Page, HoldsOnlyTheFunctionsThatWereAskedFor) {
    const chunks all = chunks_of(page({{"t.s", data("gas/gcc_c_O0.s")}}, quiet));
    const chunks one = chunks_of(page({{"t.s", data("gas/gcc_c_O0.s")}}, [](listing_options& o) {
        o.warnings = false;
        o.functions = {"2"};
    }));
    EXPECT_EQ(column(one.at("0/unit"), "row"), (std::vector<long>{0}));
    EXPECT_GT(column(all.at("0/unit"), "row").size(), 1U);
    const std::string lines = all_lines(one);
    EXPECT_NE(data("gas/gcc_c_O0.s").find(lines), std::string::npos);
    EXPECT_EQ(column(one.at("0/unit"), "instructions")[0],
              column(all.at("0/unit"), "instructions")[1]);
}

TEST(Page, HoldsOnlyTheLinesThatWereAskedFor) {
    const chunks made =
        chunks_of(page({{"t.s", data("inlined/gcc_5.s")}}, [](listing_options& options) {
            options.lines = {{.file = "inlined.c", .from = 13, .to = 13}};
        }));
    EXPECT_EQ(made.at("0/code"),
              "outer:\n"
              "\tret\n");
}

TEST(Page, ShowsLibraryCodeAsTheLineThatItWasInlinedInto) {
    const auto of = [](bool own) {
        return chunks_of(page({{"t.s", data("library/use.s")}}, [own](listing_options& options) {
            options.source_map[0].second = "../data/library";
            options.own_sources = own;
        }));
    };
    EXPECT_EQ(of(false).at("0/unit").find(R"("path":"use.c")") != std::string::npos, true);
    EXPECT_NE(of(false).at("0/unit").find(R"("system":true)"), std::string::npos);
    EXPECT_EQ(of(true).at("0/unit").find("pair.h"), std::string::npos);
    EXPECT_EQ(of(true).at("0/unit").find(R"("system":true)"), std::string::npos);
}

TEST(Page, HasAUnitForEachInputAndEachTextOnce) {
    const chunks made =
        chunks_of(page({{"a.s", data("inlined/gcc_5.s")}, {"b.s", data("inlined/gcc_4.s")}}));
    EXPECT_EQ(names_of(made), (std::vector<std::string>{"0/code", "0/hidden", "0/rows", "0/unit",
                                                        "1/code", "1/hidden", "1/rows", "1/unit",
                                                        "text/5fc23a8730f34ccf133857d4efcf0f3e"}));
    EXPECT_TRUE(made.at("1/unit").starts_with(R"({"format":1,"name":"b.s",)"));
}

TEST(Page, TellsOfASourceThatIsMissing) {
    const chunks made =
        chunks_of(page({{"t.s", data("inlined/gcc_5.s")}}, [](listing_options& options) {
            options.warnings = false;
            options.source_map = {};
        }));
    EXPECT_NE(made.at("0/unit").find(R"("path":"inlined.c","text":null,"lines":13,)"),
              std::string::npos);
    EXPECT_EQ(made.size(), 4U);
}

TEST(Page, KeepsToJsonWhateverNamesSay) {
    // A quote, a backslash, a control character, bytes that are no UTF-8, the end of a script.
    const std::string name = "a\"\\\x01\xff</script>";
    const std::string text =
        "\t.text\n\t.type\t\"f<&>\", @function\n\"f<&>\":\n\t.file 1 \"x\\\"</script>.c\"\n"
        "\t.loc 1 3 1\n\tret\n\t.size\t\"f<&>\", 1\n";
    const std::string made = page({{name, text}}, quiet);
    EXPECT_EQ(made.find("f<&>"), std::string::npos) << "outside of what is packed";
    const chunks all = chunks_of(made);
    EXPECT_TRUE(all.at("0/unit").starts_with(
        R"({"format":1,"name":"a\"\\\u0001\ufffd</script>","command":)"))
        << all.at("0/unit");
    EXPECT_NE(all.at("0/unit").find(R"("path":"x\"</script>.c")"), std::string::npos);
}

TEST(Page, IsTheSameForTheSameInput) {
    const std::string text = data("gas/gcc_cpp_O1_dwarf4.s");
    EXPECT_EQ(page({{"t.s", text}}, quiet), page({{"t.s", text}}, quiet));
}

TEST(Page, TakesTextsWithoutCode) {
    for (const char* text :
         {"", "\n", "\t.text", "ret\n", "f:\n", "\t.file 1 \"x.c\"\n\t.loc 1 1\n"}) {
        EXPECT_EQ(all_lines(chunks_of(page({{"t.s", text}}, quiet))),
                  *text == '\0' || std::string_view(text).ends_with('\n')
                      ? text
                      : text + std::string("\n"));
    }
}

TEST(Page, HasLinesWithoutNumbersAndNumbersWithoutSense) {
    const std::string text =
        "\t.text\n\t.type\tf, @function\nf:\n\t.file 1 \"none.c\"\n"
        "\tnop\n\t.loc 1 0 0\n\tnop\n\t.loc 1 1000000000 1\n\tnop\n\t.loc 7 3 1\n\tret\n"
        "\t.size\tf, 1\n";
    const chunks made = chunks_of(page({{"t.s", text}}, quiet));
    EXPECT_EQ(column(made.at("0/rows"), "run_frame"), (std::vector<long>{-1, 0, -1}));
    EXPECT_EQ(column(made.at("0/rows"), "run_rows"), (std::vector<long>{3, 1, 1}));
    EXPECT_EQ(column(made.at("0/rows"), "frame_line"), (std::vector<long>{1000000000}));
}

TEST(Page, StandsInFrontOfAndBehindItsData) {
    const std::string made = page({{"t.s", data("inlined/gcc_5.s")}});
    EXPECT_TRUE(made.starts_with("<!doctype html>\n"));
    EXPECT_TRUE(made.ends_with("</html>\n"));
    EXPECT_EQ(made.find("@DATA@"), std::string::npos);
    EXPECT_LT(made.size(), 250'000U);
}

namespace {

// The index of pages that lie in a folder.
struct joined {
    std::string text;
    std::string messages;
    bool is_made;
};

joined join(const std::vector<std::pair<std::string, std::string>>& pages) {
    const ScratchFolder folder;
    std::vector<joined_page> files;
    for (const auto& [name, text] : pages) {
        if (!text.empty()) {
            std::ofstream(folder.path() + '/' + name) << text;
        }
        files.push_back({.file = folder.path() + '/' + name, .address = "pages/" + name});
    }
    const int descriptor = memfd_create("index", 0);
    testing::internal::CaptureStderr();
    joined result;
    {
        output out(descriptor);
        result.is_made = join_pages(files, "demo <&>", out);
        EXPECT_TRUE(out.flush());
    }
    result.messages = testing::internal::GetCapturedStderr();
    const std::size_t at = result.messages.find(folder.path());
    if (at != std::string::npos) {
        result.messages.erase(at, folder.path().size() + 1);
    }
    result.text = contents(descriptor);
    return result;
}

}  // namespace

TEST(JoinedPages, HaveTheUnitsOfAllUnderNumbersOfTheirOwn) {
    const std::string one =
        page({{"a.s", data("inlined/gcc_5.s")}, {"b.s", data("library/use.s")}}, quiet);
    const std::string two = page({{"c.s", data("inlined/gcc_4.s")}}, quiet);
    const joined made = join({{"one.html", one}, {"two.html", two}});
    EXPECT_EQ(made.messages, "");
    EXPECT_TRUE(made.is_made);
    const chunks first = packed_chunks(one);
    const chunks second = packed_chunks(two);
    chunks expected = first;
    for (const auto& [name, line] : second) {
        // The text is the same that the first page has.
        expected.emplace(name[0] == '0' ? "2" + name.substr(1) : name, line);
    }
    chunks got = packed_chunks(made.text);
    EXPECT_EQ(chunks_of(made.text).at("start"), R"({"title":"demo <&>","pages":[]})");
    got.erase("start");
    EXPECT_EQ(got, expected);
    EXPECT_TRUE(made.text.starts_with("<!doctype html>\n"));
    EXPECT_TRUE(made.text.ends_with("</html>\n"));
}

TEST(JoinedPages, AreAStartPageWhereTheyAreTooMuchForOne) {
    // Nobody unpacks what is joined, so anything can stand for 40 MB of code.
    const std::string much(40'000'000, 'A');
    const auto large = [&](const std::string& name) {
        std::string text = page({{name, data("inlined/gcc_5.s")}});
        const std::string code = std::string(head) + "0/code\">";
        return text.insert(text.find(code) + code.size(), much);
    };
    const joined made = join({{"one.html", large("a.s")}, {"two.html", large("b.s")}});
    EXPECT_TRUE(made.is_made);
    const chunks got = chunks_of(made.text);
    EXPECT_EQ(names_of(got), (std::vector<std::string>{"0/unit", "1/unit", "start"}));
    EXPECT_EQ(got.at("start"),
              R"({"title":"demo <&>","pages":["pages/one.html","pages/two.html"]})");
    EXPECT_TRUE(got.at("1/unit").starts_with(R"({"format":1,"name":"b.s",)"));
}

TEST(JoinedPages, MayBeJoinedOnceMore) {
    const std::string one = page({{"a.s", data("inlined/gcc_5.s")}});
    const std::string index = join({{"one.html", one}}).text;
    EXPECT_EQ(join({{"index.html", index}}).text, index);
}

TEST(JoinedPages, SayWhatIsNoPage) {
    const joined missing = join({{"none.html", ""}});
    EXPECT_FALSE(missing.is_made);
    EXPECT_EQ(missing.messages, "clist: none.html: No such file or directory\n");
    for (const std::string text :
         {"hello\n", "<html></html>", "<script type=\"application/gzip\" data-chunk=\"",
          "<script type=\"application/gzip\" data-chunk=\"x/unit\">A</script>\n",
          "<script type=\"application/gzip\" data-chunk=\"99999999999/unit\">A</script>\n"}) {
        const joined other = join({{"other.html", text}});
        EXPECT_FALSE(other.is_made) << text;
        EXPECT_EQ(other.messages, "clist: other.html: no page that clist wrote\n");
    }
}
