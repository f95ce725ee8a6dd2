// From assembly texts to a listing: reads them, chooses what is shown and hands that to the
// form that was asked for.
#include "clist/listing.h"

#include <deque>
#include <filesystem>
#include <memory>

#include "clist/annotate.h"
#include "clist/forms/forms.h"
#include "clist/forms/machine.h"
#include "clist/messages.h"
#include "clist/selection.h"

namespace clist {

static form_writer writer_of(const listing_options& options) {
    switch (options.form) {
        case listing_form::list:
            return write_list;
        case listing_form::stats:
            return write_stats;
        case listing_form::classic:
            return write_classic;
        case listing_form::page:
            return write_page;
        default:
            break;
    }
    if (options.json) {
        return write_objects;
    }
    return options.all ? write_whole : write_code;
}

// Everything between the assembly and a form, each part standing on those before it.
struct listing::parts {
    std::span<const listing_input> inputs;
    const listing_options& options;
    source_list sources;
    name_table names;
    std::deque<annotation> models = {};
    selection shown = {};

    parts(std::span<const listing_input> from, const listing_options& how)
        : inputs(from),
          options(how),
          sources(how, assembly::system_sources()),
          names(how.mangled) {}
};

listing::listing(std::span<const listing_input> inputs, const listing_options& options)
    : parts_(std::make_unique<parts>(inputs, options)) {}

listing::~listing() = default;

bool listing::read() {
    if (parts_->options.mca && !has_machine_analysis()) {
        say("--mca needs llvm-mca, which is in the package llvm");
        return false;
    }
    for (const listing_input& it : parts_->inputs) {
        if (!parts_->models.emplace_back(it, parts_->options, parts_->sources, parts_->names)
                 .read()) {
            return false;
        }
    }
    parts_->sources.choose_shown_names();
    std::string error;
    parts_->shown = select(parts_->models, parts_->options, error);
    if (!error.empty()) {
        say(error);
    }
    return error.empty();
}

bool listing::comes_from(const std::string& file) const {
    std::error_code failure;
    if (!std::filesystem::is_regular_file(file, failure)) {
        return false;
    }
    for (std::uint32_t i = 0; i < parts_->sources.size(); ++i) {
        const source_file& source = parts_->sources[i];
        if (source.is_used && std::filesystem::equivalent(file, source.path, failure)) {
            return true;
        }
    }
    return false;
}

bool listing::write(output& out) {
    return writer_of(parts_->options)(
        {.models = parts_->models, .shown = parts_->shown, .options = parts_->options}, out);
}

int write_listing(std::span<const listing_input> inputs, const listing_options& options,
                  output& out) {
    listing it(inputs, options);
    return it.read() && it.write(out) ? 0 : 1;
}

}  // namespace clist
