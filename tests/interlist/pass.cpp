// Runs the listing pass inside the test program.
#include "tests/interlist/pass.h"

#include "interlist/command_line.h"
#include "interlist/listing.h"
#include "interlist/listing_output.h"
#include "interlist/output.h"
#include "tests/interlist/fresh_state.h"

static void start_with(std::vector<std::string> arguments) {
    start_afresh();
    arguments.insert(arguments.begin(), "interlist");
    std::vector<char*> words;
    for (auto& argument : arguments) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);
    init(static_cast<int>(words.size()) - 1, words.data());
}

void run_pass(const std::vector<std::string>& arguments) {
    start_with(arguments);
    process_assy();
    end_listing();
    close_and_clear(ASSY);
    close_and_clear(CFILE);
}

std::string listing_of(const ScratchFolder& folder, const std::string& assembly,
                       std::vector<std::string> options) {
    options.push_back(folder.write("prog.asm", assembly));
    run_pass(options);
    return folder.read("prog.cl");
}

void begin_pass(const ScratchFolder& folder, const std::string& assembly) {
    start_with({folder.write("prog.asm", assembly)});
}

std::string listing_so_far() {
    flush_output(list_output);
    return read_file(temp_file_name);
}
