// From assembly texts to a listing: reads them, chooses what is shown and hands that to the
// form that was asked for.
#include "clist/listing.h"

#include <deque>

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

static bool write(std::span<const listing_input> inputs, const listing_options& options,
                  output& out) {
    if (options.mca && !has_machine_analysis()) {
        say("--mca needs llvm-mca, which is in the package llvm");
        return false;
    }
    source_list sources(options, assembly::system_sources());
    name_table names(options.mangled);
    std::deque<annotation> models;
    for (const listing_input& it : inputs) {
        if (!models.emplace_back(it, options, sources, names).read()) {
            return false;
        }
    }
    sources.choose_shown_names();
    std::string error;
    const selection shown = select(models, options, error);
    if (!error.empty()) {
        say(error);
        return false;
    }
    return writer_of(options)({.models = models, .shown = shown, .options = options}, out);
}

int write_listing(std::span<const listing_input> inputs, const listing_options& options,
                  output& out) {
    return write(inputs, options, out) ? 0 : 1;
}

}  // namespace clist
