// The slow second interlister.
#include "tests/interlist/reference_model.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

// A file in memory with the indicators of a stream.
struct Text {
    std::string bytes;
    std::size_t at = 0;
    bool end_met = false;

    int get() {
        if (at >= bytes.size()) {
            end_met = true;
            return -1;
        }
        return static_cast<unsigned char>(bytes[at++]);
    }
};

// fgets: none at the end of the file.
std::optional<std::string> standard_line(Text& text, int limit) {
    std::string line;
    for (int count = 0; count < limit - 1; ++count) {
        const int byte = text.get();
        if (byte < 0) {
            break;
        }
        line += static_cast<char>(byte);
        if (byte == '\n') {
            break;
        }
    }
    return line.empty() ? std::nullopt : std::optional<std::string>(line);
}

int tool_character(Text& text) {
    const int byte = text.get();
    if (byte == 13) {
        const int next = text.get();
        if (next == 10) {
            return 10;
        }
        if (next >= 0) {
            --text.at;
        }
        return 13;
    }
    if (byte == 26) {
        return tool_character(text);
    }
    return byte == 255 ? -1 : byte;
}

std::string tool_line(Text& text, int limit) {
    std::string line;
    while (static_cast<int>(line.size()) < limit - 1) {
        const int character = tool_character(text);
        if (character < 0) {
            break;
        }
        line += static_cast<char>(character);
        if (character == 10) {
            break;
        }
    }
    return line;
}

bool begins(const std::string& line, const char* prefix) {
    return line.rfind(prefix, 0) == 0;
}

// sscanf "%d" with values beyond int brought back to the nearest.
void scan_number(const std::string& text, int& value) {
    char* end = nullptr;
    const long number = std::strtol(text.c_str(), &end, 10);
    if (end != text.c_str()) {
        value = number > INT_MAX ? INT_MAX : number < INT_MIN ? INT_MIN : static_cast<int>(number);
    }
}

struct Model {
    const std::map<std::string, std::string>& sources;
    ModelOptions options;
    ModelResult result = {};
    Text assembly = {};
    Text source = {};
    bool source_open = false;
    std::string open_name = {};
    std::uint32_t line_number = 0;
    int function_line = 0;
    bool in_comment = false;

    void write_assembly(const std::string& line) {
        for (const char* prefix :
             {"\t.ifile\t", "\t.iline\t", "\t.isym\t", "\t.ifunc\t", "\t.iendfunc\t"}) {
            if (begins(line, prefix)) {
                return;
            }
        }
        result.listing += line;
    }

    void open_source(const std::string& line) {
        std::string name = line.size() < 9 ? "" : line.substr(9);
        name.resize(std::min(name.find('\0'), name.size()));
        const std::size_t quote = name.rfind('"');
        if (quote != std::string::npos) {
            name.resize(quote);
        } else {
            while (!name.empty() && (name.back() == '\n' || name.back() == '\r')) {
                name.pop_back();
            }
        }
        if (name == open_name) {
            return;
        }
        const auto found = sources.find(name);
        source_open = found != sources.end();
        if (source_open) {
            source = {};
            source.bytes = found->second;
        } else {
            result.warnings +=
                ">> WARNING: Cannot open source file '" + name + "': No such file or directory\n";
        }
        line_number = 1;
        open_name = name;
    }

    void run() {
        while (const auto line = standard_line(assembly, 16384)) {
            if (begins(*line, "\t.ifunc\t")) {
                scan_number(line->substr(8), function_line);
                function();
            } else if (begins(*line, "\t.ifile\t")) {
                open_source(*line);
            } else {
                write_assembly(*line);
            }
        }
    }

    bool look_ahead(std::uint32_t& end_line, std::uint32_t& count) {
        const std::size_t start = assembly.at;
        std::uint32_t number = 0;
        while (const auto line = standard_line(assembly, 16384)) {
            ++number;
            if (begins(*line, "\t.iendfunc\t")) {
                count = number;
                int value = static_cast<int>(end_line);
                scan_number(line->substr(11), value);
                end_line = static_cast<std::uint32_t>(value);
                assembly.at = start;
                assembly.end_met = false;
                return true;
            }
            if (begins(*line, "\t.iline\t")) {
                count = number;
                // A value that cannot be the outcome of the scan means none.
                int first = 1;
                int second = 2;
                scan_number(line->substr(8), first);
                scan_number(line->substr(8), second);
                const std::uint32_t position = static_cast<std::uint32_t>(function_line) +
                                               static_cast<std::uint32_t>(first) - 1U;
                if (first == second && position >= line_number) {
                    end_line = position;
                    assembly.at = start;
                    assembly.end_met = false;
                    return false;
                }
            }
        }
        assembly.at = start;
        assembly.end_met = false;
        return true;
    }

    bool counts_as_blank(const std::string& line) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            const char c = line[i];
            const char next = i + 1 < line.size() ? line[i + 1] : '\0';
            if (c == '\n') {
                return true;
            }
            if (c == '{' || c == '}' || c == ' ' || c == '\t' || c == '\v' || c == '\f' ||
                c == '\r') {
                continue;
            }
            if (in_comment) {
                if (c == '*' && next == '/') {
                    in_comment = false;
                    ++i;
                }
                continue;
            }
            if (c == '/' && next == '*') {
                in_comment = true;
                ++i;
                continue;
            }
            in_comment = false;
            return false;
        }
        return true;
    }

    std::string shaped(std::string line, int& strip_count) const {
        std::string expanded;
        std::size_t taken = 0;
        while (taken < line.size() &&
               (line[taken] != '\t' || expanded.size() + line.size() - taken <= 16376)) {
            if (line[taken] == '\t') {
                expanded.append(8 - expanded.size() % 8, ' ');
            } else {
                expanded += line[taken];
            }
            ++taken;
        }
        line = expanded + line.substr(taken);
        if (options.keep_indentation || line.empty() || line[0] != ' ') {
            return line;
        }
        const auto blanks = static_cast<int>(std::min(line.find_first_not_of(' '), line.size()));
        if (strip_count == 0) {
            strip_count = std::min(blanks, 10000);
            return line.substr(static_cast<std::size_t>(std::min(blanks, 9999)));
        }
        return line.substr(static_cast<std::size_t>(std::min(blanks, strip_count)));
    }

    void write_source(std::string line) {
        const int width = options.width == 0 ? 71 : options.width < 9 ? 1 : options.width - 8;
        const auto w = static_cast<std::size_t>(width);
        while (!line.empty() && line.back() == '\n') {
            line.pop_back();
        }
        char number[32];
        std::snprintf(number, sizeof number, "; %3d | ", static_cast<int>(line_number));
        result.listing += number;
        if (line.size() <= w) {
            line.resize(w, ' ');
            result.listing += line + "\n";
            return;
        }
        std::string first = line.substr(0, w);
        while (!first.empty() && first.back() == ' ') {
            first.pop_back();
        }
        result.listing += first + "\n";
        for (std::size_t at = w; at < line.size(); at += w) {
            std::string piece = line.substr(at, w);
            piece.resize(w, ' ');
            result.listing += ";     | " + piece + "\n";
        }
    }

    void separator() {
        const int dashes = options.width == 0 ? 70 : options.width < 1 ? 0 : options.width - 1;
        result.listing += ';';
        result.listing.append(static_cast<std::size_t>(dashes), '-');
        result.listing += '\n';
    }

    void function() {
        if (!source_open) {
            return;
        }
        const auto start = static_cast<std::uint32_t>(function_line);
        if (start < line_number) {
            source.at = 0;
            source.end_met = false;
            line_number = 1;
        }
        while (line_number < start && !source.end_met) {
            tool_line(source, 16384);
            ++line_number;
        }
        // Behind the end nothing is read, however far one counts.
        line_number = line_number < start ? start : line_number;
        std::uint32_t end_line = 0;
        std::uint32_t count = 0;
        std::uint32_t previous = 0;
        std::uint32_t last_read = 0;
        int strip_count = 0;
        for (;;) {
            const bool done = look_ahead(end_line, count);
            bool printed = false;
            while ((line_number < end_line && !source.end_met) ||
                   (end_line == previous && previous > last_read)) {
                if (options.skip_blanks && source.end_met && line_number < previous) {
                    // Empty lines, none of them listed: only the last one counts.
                    line_number = previous;
                }
                // A C line is a string, which a NUL ends.
                std::string line = tool_line(source, 16377);
                line.resize(std::min(line.size(), line.find('\0')));
                if (!options.skip_blanks || !counts_as_blank(line)) {
                    if (!printed) {
                        separator();
                    }
                    printed = true;
                    write_source(shaped(line, strip_count));
                }
                last_read = line_number;
                ++line_number;
            }
            if (printed) {
                separator();
                strip_count = 0;
            }
            while (count-- != 0) {
                write_assembly(tool_line(assembly, 16384));
                if (assembly.end_met) {
                    break;
                }
            }
            count = 0xffffffffU;
            if (done) {
                return;
            }
            previous = end_line;
        }
    }
};

}  // namespace

ModelResult model_listing(const std::string& assembly,
                          const std::map<std::string, std::string>& sources,
                          const ModelOptions& options) {
    Model model{.sources = sources, .options = options};
    model.assembly.bytes = assembly;
    model.run();
    return model.result;
}
