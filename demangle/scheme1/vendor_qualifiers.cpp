// The vendor qualifiers of the Itanium ABI decoder ("U" and a name in front of a type).
// Called by the types.
#include "demangle/scheme1/function_types.h"

static constexpr eabi_vendor_form vendor_forms[] = {
    {"__handle", "^", "", eabi_vendor_place::mark},
    {"__trkref", "%", "", eabi_vendor_place::mark},
    {"__interior_ptr", "interior_ptr<", ">", eabi_vendor_place::around},
    {"__pin_ptr", "pin_ptr<", ">", eabi_vendor_place::around},
    {"__vector", "__attribute__((vector_size(?))) ", "", eabi_vendor_place::before},
};

// A vector name that carries its element count.
static constexpr std::string_view opencl_vector = "__opencl_vector";

// "U" source-name [ args ]
const char* eabi_read_vendor_qualifier(const char* at, eabi_vendor_qualifier* qualifier,
                                       eabi_decode_state* state) {
    const eabi_silence silent(state);
    std::uint64_t length = 0;
    const char* const start = eabi_number(at + 1, &length, state);
    at = eabi_source_name(at + 1, state);
    if (state->error_seen != 0) {
        return at;
    }
    qualifier->name = {start, static_cast<std::size_t>(at - start)};
    for (const eabi_vendor_form& form : vendor_forms) {
        if (form.name == qualifier->name) {
            qualifier->form = &form;
        }
    }
    if (*at == 'I') {
        qualifier->args = at;
        at = eabi_template_args(at, false, state);
    }
    return at;
}

void eabi_put_vendor_name(const eabi_vendor_qualifier& qualifier, eabi_decode_state* state) {
    if (state->suppress_depth != 0) {
        return;
    }
    if (qualifier.form != nullptr) {
        eabi_put(qualifier.form->text, state);
        return;
    }
    if (qualifier.name.starts_with(opencl_vector) && qualifier.name.size() > opencl_vector.size()) {
        const std::string_view count = qualifier.name.substr(opencl_vector.size());
        if (count.find_first_not_of("0123456789") == std::string_view::npos) {
            std::uint64_t elements = 0;
            eabi_number(count.data(), &elements, state);
            eabi_put("OpenCL Vector of ", state);
            emit_number(elements, state);
            eabi_put(' ', state);
            return;
        }
    }
    eabi_put(qualifier.name, state);
    if (qualifier.args != nullptr) {
        const eabi_no_record no_record(state);
        eabi_template_args(qualifier.args, false, state);
    }
    eabi_put(' ', state);
}
