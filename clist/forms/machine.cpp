// Hands code to llvm-mca and takes its figures as comments.
#include "clist/forms/machine.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>

#include "assembly/text_file.h"
#include "clist/operands.h"
#include "clist/process.h"

namespace clist {

// The triple that llvm-mca is told where only the text tells the target.
namespace {
struct triple_row {
    std::string_view dialect;
    std::string_view triple;
    std::string_view processor;  // one that has figures, where the target's common one has none
};
}  // namespace
static constexpr std::array<triple_row, 5> triples = {{
    {"x86_64", "x86_64-linux-gnu", ""},
    {"aarch64", "aarch64-linux-gnu", "cortex-a57"},
    {"arm", "armv7-linux-gnueabihf", "cortex-a9"},
    {"riscv", "riscv64-linux-gnu", "sifive-u74"},
    {"powerpc", "powerpc64le-linux-gnu", "pwr9"},
}};

// The program under one of the names that packages give it, wherever it is run; empty when
// there is none.
static std::string find_program() {
    for (const char* const name : {"llvm-mca", "llvm-mca-19", "llvm-mca-18", "llvm-mca-17",
                                   "llvm-mca-16", "llvm-mca-15", "llvm-mca-14", "llvm-mca-13"}) {
        if (const std::string file = found_program(name); !file.empty()) {
            return std::filesystem::absolute(file);
        }
    }
    return {};
}

static const std::string& program() {
    static const std::string found = find_program();
    return found;
}

bool has_machine_analysis() {
    return !program().empty();
}

static std::vector<std::string> command(const annotation& model, const std::string& code) {
    std::vector<std::string> words = {program()};
    std::string_view triple = model.input().target;
    std::string_view processor;
    for (const triple_row& row : triples) {
        if (row.dialect == model.code().language->name) {
            triple = triple.empty() ? row.triple : triple;
            processor = row.processor;
        }
    }
    if (!triple.empty()) {
        words.push_back("-mtriple=" + std::string(triple));
    }
    if (!processor.empty()) {
        words.push_back("-mcpu=" + std::string(processor));
    }
    words.push_back(code);
    return words;
}

static std::string as_comments(std::string_view text, std::string_view comment) {
    std::string result;
    while (!text.empty()) {
        const std::string_view line = line_at(text, 0);
        result += comment;
        result += line.empty() ? " |" : " | ";
        result += line;
        result += '\n';
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return result;
}

// The first line that tells of an error, without the place in a file that is gone by then.
static std::string error_in(std::string_view text) {
    constexpr std::string_view mark = "error: ";
    const std::size_t at = text.find(mark);
    return at == std::string_view::npos ? std::string() : std::string(line_at(text, at));
}

static bool write_code(const std::string& name, const annotation& model,
                       const std::vector<function_line>& lines) {
    std::ofstream file(name);
    if (model.code().text.find(".intel_syntax") != std::string_view::npos) {
        file << "\t.intel_syntax noprefix\n";
    }
    // Jumps inside the function need their labels.
    for (const function_line& it : lines) {
        if (it.kind == line_kind::label) {
            file << model.code().name_of(model.code().labels[it.index]) << ":\n";
        } else if (it.kind == line_kind::code) {
            file << line_at(model.code().text, it.at) << '\n';
        }
    }
    return file.flush().good();
}

machine_figures machine_analysis(const annotation& model, const std::vector<function_line>& lines) {
    scratch_folder folder;
    run_settings settings;
    settings.messages_to = folder.file("result");
    // It names the file in what it says.
    settings.directory = folder.path();
    const std::string code = "code.s";
    machine_figures figures;
    if (!write_code(folder.file(code), model, lines)) {
        figures.failure = std::string("the code for it: ") + std::strerror(errno);
    } else {
        const run_result ended = run(command(model, code), settings);
        const std::optional<assembly::text_file> told =
            assembly::text_file::open(settings.messages_to);
        if (told) {
            figures.comments = as_comments(told->text(), model.comment());
        }
        if (!ended.succeeded()) {
            figures.failure = failure_text(program(), ended);
            const std::string error = told ? error_in(told->text()) : "";
            figures.failure += error.empty() ? "" : ": " + error;
        } else if (!told) {
            figures.failure = std::string("what it tells: ") + std::strerror(errno);
        }
    }
    if (figures.comments.empty()) {
        figures.comments = as_comments(figures.failure, model.comment());
    }
    return figures;
}

}  // namespace clist
