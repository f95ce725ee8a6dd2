// The command line: options in clusters, long options, one or two file names.
#include "interlist/command_line.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <span>
#include <string_view>

#include "interlist/diagnostics.h"
#include "interlist/files.h"
#include "interlist/listing_output.h"
#include "interlist/number.h"
#include "interlist/state.h"
#include "interlist/version.h"
#include "support/filename.h"

// The text says "<toolname>" on purpose: the tool is known under many names.
void usage() {
    std::printf("Usage: %s [-options] filename\n\n", "<toolname>");
    std::puts("This tool is designed to be invoked by the compiler.");
}

[[noreturn]] static void show_usage() {
    usage();
    end_report();
}

static void take_long_option(std::string_view option) {
    if (option == "toolversion") {
        report_version();
    }
    if (option == "help") {
        show_usage();
    }
    if (option == "no_warnings") {
        no_warnings = 1;
    }
    // Others are ignored: drivers pass options that not every tool knows.
}

// Scans the cluster that `*argument` starts and returns the argument in which
// the scan ended: the same one, or the separate value of a -w. After a -w the
// scan goes on at the same index of the argument that holds the value, so the
// digits of "-w80" and the last one of "-w 132" are read as option letters.
static std::span<char*> take_letters(std::span<char*> arguments) {
    std::string_view argument = arguments.front();
    for (std::size_t at = 1; at < argument.size();) {
        const char letter = argument[at++];
        switch (letter) {
            case 'b':
            case 'B':
                skip_blanks = 1;
                break;
            case 'p':
            case 'P':
                preserve_sp = 1;
                break;
            case 'q':
            case 'Q':
                ++quiet_mode;
                break;
            case 'w':
            case 'W': {
                std::string_view value = argument.substr(at);
                if (value.empty() && arguments.size() > 1) {
                    arguments = arguments.subspan(1);
                    value = argument = arguments.front();
                }
                cut_colm = leading_number(value).value_or(0);
                break;
            }
            default:
                std::fprintf(stderr, ">> Unknown option -%c\n", letter);
        }
    }
    return arguments;
}

static void take_name(std::string_view name, int place) {
    if (place == 1) {
        copy_text(assy_file_name, name);
    } else if (place == 2) {
        copy_text(temp_file_name, name);
    }
}

// The input's name with the extension ".cl" in place of its own.
static void derive_listing_name() {
    const std::string_view name = assy_file_name;
    const std::size_t slash = name.find_last_of('/');
    const std::size_t point = name.find_last_of('.');
    const bool has_extension =
        point != std::string_view::npos && (slash == std::string_view::npos || slash < point);
    constexpr std::string_view extension = ".cl";
    if ((has_extension ? point : name.size()) + extension.size() > longest_text) {
        limit_error();
    }
    copy_text(temp_file_name, name);
    fn_addext(temp_file_name, extension.data(), 1);
}

static void open_files() {
    ASSY = open_file(assy_file_name, "rb");
    if (ASSY == nullptr) {
        file_error("Cannot open input file", assy_file_name);
    }
    attach_input(assy_input, ASSY);
    begin_listing();
}

void init(int argc, char** argv) {
    if (argc < 2) {
        show_usage();
    }
    int names = 0;
    std::span<char*> arguments(argv + 1, static_cast<std::size_t>(argc - 1));
    for (; !arguments.empty(); arguments = arguments.subspan(1)) {
        const std::string_view argument = arguments.front();
        if (argument.starts_with("--")) {
            take_long_option(argument.substr(2));
        } else if (argument.starts_with('-')) {
            arguments = take_letters(arguments);
        } else {
            take_name(argument, ++names);
        }
    }
    switch (names) {
        case 0:
            show_usage();
        case 1:
            derive_listing_name();
            break;
        case 2:
            break;
        default:
            std::printf("\n>> ERROR - Garbage on command line");
            end_program(1);
    }
    open_files();
}
