// Vendor qualifiers, those among them that have a text of their own.
#include "demangle/scheme1/vendor_qualifiers.h"

#include <algorithm>
#include <iterator>

#include "demangle/scheme1/template_args.h"
#include "demangle/scheme1/unqualified_names.h"

namespace scheme1 {

static constexpr vendor_form vendor_forms[] = {
    {"__handle", "^", "", vendor_place::mark},
    {"__trkref", "%", "", vendor_place::mark},
    {"__interior_ptr", "interior_ptr<", ">", vendor_place::around},
    {"__pin_ptr", "pin_ptr<", ">", vendor_place::around},
    {"__vector", "__attribute__((vector_size(?))) ", "", vendor_place::before},
};

// A vector name that carries its element count.
static constexpr std::string_view opencl_vector = "__opencl_vector";

// "U" source-name [ args ]
const char* read_vendor_qualifier(const char* at, vendor_qualifier* qualifier,
                                  eabi_decode_state* state) {
    const silence silent(state);
    std::uint64_t length = 0;
    const char* const start = read_number(at + 1, &length, state);
    at = source_name(at + 1, state);
    if (state->error_seen != 0) {
        return at;
    }
    qualifier->name = {start, static_cast<std::size_t>(at - start)};
    if (*at == 'I') {
        qualifier->args = at;
        return template_args(at, false, state);
    }
    const auto* const form = std::ranges::find(vendor_forms, qualifier->name, &vendor_form::name);
    qualifier->form = form != std::end(vendor_forms) ? form : nullptr;
    return at;
}

void emit_vendor_name(const vendor_qualifier& qualifier, eabi_decode_state* state) {
    if (state->suppress_depth != 0) {
        return;
    }
    if (qualifier.form != nullptr) {
        emit_text(qualifier.form->text, state);
        return;
    }
    if (qualifier.args == nullptr && qualifier.name.starts_with(opencl_vector) &&
        qualifier.name.size() > opencl_vector.size()) {
        const std::string_view count = qualifier.name.substr(opencl_vector.size());
        if (count.find_first_not_of("0123456789") == std::string_view::npos) {
            std::uint64_t elements = 0;  // of the name's own digits: more may follow the name
            for (const char digit : count) {
                elements = elements * 10 + static_cast<std::uint64_t>(digit - '0');
            }
            emit_text("OpenCL Vector of ", state);
            emit_number(elements, state);
            emit_char(' ', state);
            return;
        }
    }
    emit_text(qualifier.name, state);
    if (qualifier.args != nullptr) {
        const no_record unrecorded(state);
        template_args(qualifier.args, qualifier.name.ends_with('<'), state);
    }
    emit_char(' ', state);
}

}  // namespace scheme1
