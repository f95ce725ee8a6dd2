// Hands code to llvm-mca and takes its figures as comments.
#include "clist/forms/machine.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
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

// The program under one of the names that packages give it; empty when there is none.
static std::string find_program() {
    const char* const path = std::getenv("PATH");
    std::string_view folders = path == nullptr ? "" : path;
    constexpr std::array<std::string_view, 8> names = {
        "llvm-mca",    "llvm-mca-19", "llvm-mca-18", "llvm-mca-17",
        "llvm-mca-16", "llvm-mca-15", "llvm-mca-14", "llvm-mca-13",
    };
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
        for (const std::string_view name : names) {
            std::string file = std::string(folder) + "/" + std::string(name);
            if (access(file.c_str(), X_OK) == 0) {
                return file;
            }
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

std::string machine_analysis(const annotation& model, const std::vector<function_line>& lines) {
    scratch_folder folder;
    const std::string code = folder.file("code.s");
    const std::string result = folder.file("result");
    {
        std::ofstream file(code);
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
    }
    run_settings settings;
    settings.messages_to = result;
    const run_result ended = run(command(model, code), settings);
    const std::optional<assembly::text_file> told = assembly::text_file::open(result);
    if (ended.error != 0 || !told) {
        return as_comments(failure_text(program(), ended), model.comment());
    }
    return as_comments(told->text(), model.comment());
}

}  // namespace clist
