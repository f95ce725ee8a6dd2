// The table, and a search in it that costs a few instructions: every line that begins with
// a full stop is looked up.
#include "assembly/directive.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace assembly {

using enum directive;

static constexpr directive_row rows[] = {
    {".loc", loc},
    {".file", file},
    {".type", type, 0, true},
    {".def", def, 0, true},
    {".size", size},
    {".cfi_startproc", begin_procedure, 0, true},
    {".cfi_endproc", end_procedure},
    {".seh_proc", begin_procedure},
    {".seh_endproc", end_procedure},
    {".section", named_section, 0, true},
    {".text", own_section, 0, true},
    {".data", own_section},
    {".bss", own_section},
    {".rdata", own_section},
    {".sdata", own_section},
    {".sbss", own_section},
    {".cstring", own_section},
    {".const", own_section},
    {".handlerdata", own_section},
    {".seh_handlerdata", own_section},
    {".fnend", end_handler},
    {".pushsection", push_section},
    {".popsection", pop_section},
    {".previous", previous_section},
    {".subsection", subsection},
    {".macro", begin_macro},
    {".endm", end_macro},
    {".set", set, 0, true},
    {".equ", set},
    {".equiv", set},
    {".p2align", align, 0, true},
    {".align", align, 0, true},
    {".balign", align, 0, true},
    {".inst", instruction},
    {".inst.n", instruction},
    {".inst.w", instruction},
    {".insn", instruction},
    {".byte", values, 1},
    {".1byte", values, 1},
    {".2byte", values, 2},
    {".4byte", values, 4},
    {".8byte", values, 8},
    {".short", values, 2},
    {".hword", values, 2},
    {".half", values, 2},
    {".value", values, 2},
    {".word", word},
    {".long", values, 4},
    {".int", values, 4},
    {".quad", values, 8},
    {".xword", values, 8},
    {".dword", values, 8},
    {".uahalf", values, 2},
    {".uaword", values, 4},
    {".uaxword", values, 8},
    {".dtprelword", values, 4},
    {".dtpreldword", values, 8},
    {".secrel32", values, 4},
    {".secidx", values, 2},
    {".rva", values, 4},
    {".uleb128", uleb128},
    {".sleb128", sleb128},
    {".ascii", text},
    {".asciz", terminated_text},
    {".string", terminated_text},
    {".zero", room, 1},
    {".skip", room, 1},
    {".space", room, 1},
    {".octa", alike},
    {".fill", alike},
    {".float", alike},
    {".single", alike},
    {".double", alike},
    {".tfloat", alike},
    {".gpword", alike},
    {".gpdword", alike},
    {".dc.a", alike},
    {".dc.b", alike},
    {".dc.l", alike},
    {".ifile", interlist},
    {".ifunc", interlist},
    {".iline", interlist},
    {".isym", interlist},
    {".iendfunc", interlist},
    {".arch", other, 0, true},
    {".arm", other, 0, true},
    {".cfi_lsda", other, 0, true},
    {".cfi_personality", other, 0, true},
    {".code", other, 0, true},
    {".code16", other, 0, true},
    {".code32", other, 0, true},
    {".endef", other, 0, true},
    {".ent", other, 0, true},
    {".fpu", other, 0, true},
    {".global", other, 0, true},
    {".globl", other, 0, true},
    {".hidden", other, 0, true},
    {".internal", other, 0, true},
    {".local", other, 0, true},
    {".option", other, 0, true},
    {".private_extern", other, 0, true},
    {".protected", other, 0, true},
    {".scl", other, 0, true},
    {".syntax", other, 0, true},
    {".thumb", other, 0, true},
    {".thumb_func", other, 0, true},
    {".weak", other, 0, true},
    {".weak_definition", other, 0, true},
};

static constexpr directive_row no_row = {"", other, 0, false};

// Room for each row at the place that its letters tell, or the next free one.
static constexpr std::size_t place_count = 512;

static constexpr std::size_t place_of(std::string_view name) {
    const auto letter = [name](std::size_t at) {
        return static_cast<std::size_t>(static_cast<unsigned char>(name[at]));
    };
    return (letter(1) * 37 + letter(name.size() / 2) * 5 + letter(name.size() - 1) * 11 +
            name.size() * 17) %
           place_count;
}

static constexpr auto places = [] {
    std::array<const directive_row*, place_count> table{};
    for (const directive_row& row : rows) {
        std::size_t at = place_of(row.name);
        while (table[at] != nullptr) {
            at = (at + 1) % place_count;
        }
        table[at] = &row;
    }
    return table;
}();

const directive_row& find_directive(std::string_view name) {
    if (name.size() < 2) {
        return no_row;
    }
    for (std::size_t at = place_of(name); places[at] != nullptr; at = (at + 1) % place_count) {
        if (places[at]->name == name) {
            return *places[at];
        }
    }
    return no_row;
}

}  // namespace assembly
