// Reads an input and answers where its code came from.
#include "clist/annotate.h"

#include <algorithm>
#include <future>

#include "assembly/line_information.h"
#include "clist/messages.h"

namespace clist {

using assembly::code_scope;
using assembly::source_function;

// File numbers beyond this are looked up each time.
static constexpr std::uint32_t greatest_kept_file = 1 << 16;

annotation::annotation(const listing_input& input, const listing_options& options,
                       source_list& sources, name_table& names)
    : input_(input), options_(options), sources_(sources), names_(names) {}

static bool has_declared_function(const assembly::assembly_file& code) {
    return std::any_of(code.functions.begin(), code.functions.end(),
                       [](const assembly::function_code& it) { return it.is_declared; });
}

bool annotation::read() {
    const assembly::dialect* const language =
        input_.target.empty() ? nullptr : &assembly::dialect_of_target(input_.target);
    if (const std::optional<assembly::assembly_error> error =
            assembly::read_assembly(input_.text, code_, {.language = language, .debug = true})) {
        say(input_.name + ":" + std::to_string(error->line) + ": " + error->message);
        return false;
    }
    std::string_view missing = assembly::missing_lines(code_, input_.text);
    if (!missing.empty() && !has_declared_function(code_)) {
        code_.functions.clear();  // what is there in place of code is none
    } else if (missing.empty() && !code_.instructions.empty() && code_.positions.empty()) {
        // Here code counts, too, that nothing declares for a function.
        missing = "no line information; compile with -g";
    }
    labels_.emplace(code_);
    read_names();
    comment_ = options_.comment.empty() ? code_.language->comment : options_.comment;
    if (!debug_.compilation_directory.empty()) {
        code_.compilation_directory = debug_.compilation_directory;
    } else if (code_.compilation_directory.empty()) {
        code_.compilation_directory = input_.directory;
    }
    collect_sources();
    if (options_.warnings) {
        if (!missing.empty()) {
            say(input_.name + ": " + std::string(missing));
        }
        if (code_.functions.empty() && missing.empty()) {
            say(input_.name + ": no functions");
        }
        if (debug_.is_partial) {
            say(input_.name +
                ": some of the debugging data is not understood; inlined code may not be told");
        }
    }
    return true;
}

static bool shows_used_only(const listing_options& options) {
    return options.form == listing_form::page ||
           (options.form == listing_form::code && !options.all && !options.json);
}

// What is referred to and what the debugging data tell are found without each other, in a
// large text at the same time.
void annotation::read_names() {
    constexpr std::size_t large = std::size_t{1} << 20;
    std::future<std::unique_ptr<references>> used;
    if (shows_used_only(options_)) {
        // Where no thread is to be had, it is done when it is asked for.
        used = std::async(input_.text.size() < large ? std::launch::deferred
                                                     : std::launch::async | std::launch::deferred,
                          [this] { return std::make_unique<references>(code_, *labels_); });
    }
    debug_ = assembly::read_debug_info(code_, *labels_);
    if (used.valid()) {
        used_ = used.get();
    }
}

void annotation::collect_sources() {
    for (const auto& [number, entry] : code_.files) {
        if (number < greatest_kept_file) {
            if (source_of_file_.size() <= number) {
                source_of_file_.resize(number + 1, none);
            }
            source_of_file_[number] = sources_.add(code_, entry, input_);
        }
    }
    const auto use = [this](std::uint32_t file) {
        if (const std::uint32_t source = source_of(file); source != none) {
            sources_[source].is_used = true;
        }
    };
    for (const assembly::code_position& it : code_.positions) {
        use(it.file);
    }
    for (const code_scope& it : debug_.scopes) {
        use(it.call_file);
    }
}

std::uint32_t annotation::source_of(std::uint32_t file) const {
    if (file < source_of_file_.size()) {
        return source_of_file_[file];
    }
    const auto entry = code_.files.find(file);
    return entry == code_.files.end() ? none : sources_.add(code_, entry->second, input_);
}

origin annotation::origin_of(std::uint32_t instruction) const {
    origin it{.scope = debug_.scope_of[instruction]};
    if (const std::uint32_t index = code_.instructions[instruction].position; index != none) {
        const assembly::code_position& position = code_.positions[index];
        it.source = source_of(position.file);
        it.line = position.line;
    }
    if (!options_.own_sources) {
        return it;
    }
    origin outer = it;
    while (outer.source == none || !sources_[outer.source].is_own) {
        if (outer.scope == none || debug_.scopes[outer.scope].parent == none) {
            return it;  // the whole function is a library's
        }
        const code_scope& scope = debug_.scopes[outer.scope];
        outer = {.source = source_of(scope.call_file),
                 .line = scope.call_line,
                 .scope = scope.parent,
                 .inlined = outer.scope};
    }
    return outer;
}

void annotation::prefetch_line(std::uint32_t position) const {
    if (position < code_.positions.size()) {
        const assembly::code_position& it = code_.positions[position];
        if (const std::uint32_t source = source_of(it.file); source != none) {
            sources_.prefetch_line(source, it.line);
        }
    }
}

std::string_view annotation::text_of(std::uint32_t instruction) const {
    std::string_view line = code_.line_of(code_.instructions[instruction]);
    constexpr std::string_view blanks = " \t\r";
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    return line.substr(0, line.find_last_not_of(blanks) + 1);
}

void annotation::frames_of(const origin& from, std::string_view symbol,
                           std::vector<frame>& frames) const {
    frames.clear();
    frame step{.source = from.source, .line = from.line};
    if (from.scope == none) {
        step.function = names_.readable(symbol);
        frames.push_back(step);
        return;
    }
    for (std::uint32_t scope = from.scope; scope != none; scope = debug_.scopes[scope].parent) {
        step.function = function_name(scope);
        frames.push_back(step);
        const code_scope& it = debug_.scopes[scope];
        step = {.source = source_of(it.call_file), .line = it.call_line};
    }
}

std::string_view annotation::function_name(std::uint32_t scope) const {
    const source_function& function = debug_.functions[debug_.scopes[scope].function];
    if (!function.linkage_name.empty()) {
        return names_.readable(function.linkage_name);
    }
    return function.name.empty() ? "(function without a name)" : function.name;
}

std::string annotation::plain_function_name(std::uint32_t scope) const {
    const source_function& function = debug_.functions[debug_.scopes[scope].function];
    return options_.mangled || function.linkage_name.empty()
               ? std::string(function_name(scope))
               : name_table::plain(function.linkage_name);
}

std::string_view annotation::name_of(const assembly::function_code& function) const {
    return function.symbol.empty() ? "(code without a name)" : names_.readable(function.symbol);
}

}  // namespace clist
