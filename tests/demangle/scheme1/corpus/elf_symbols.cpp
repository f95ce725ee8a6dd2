// Reads the dynamic symbol table of an ELF file through its section headers.
#include "tests/demangle/scheme1/corpus/elf_symbols.h"

#include <elf.h>

#include <bit>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <string_view>

namespace {

// A record at an offset of the file, or nothing when the file ends before it does.
template <typename Record>
bool read_record(std::string_view file, std::size_t at, Record& record) {
    if (at > file.size() || file.size() - at < sizeof record) {
        return false;
    }
    std::memcpy(&record, file.data() + at, sizeof record);
    return true;
}

std::string_view section_bytes(std::string_view file, const Elf64_Shdr& section) {
    if (section.sh_offset > file.size() || file.size() - section.sh_offset < section.sh_size) {
        return {};
    }
    return file.substr(section.sh_offset, section.sh_size);
}

void collect(std::string_view symbols, std::string_view strings, std::set<std::string>& names) {
    Elf64_Sym symbol;
    for (std::size_t at = 0; read_record(symbols, at, symbol); at += sizeof symbol) {
        if (symbol.st_name >= strings.size()) {
            continue;
        }
        std::string_view name = strings.substr(symbol.st_name);
        name = name.substr(0, name.find('\0'));
        if (name.starts_with("_Z")) {
            names.emplace(name.substr(0, name.find('@')));
        }
    }
}

}  // namespace

std::vector<std::string> mangled_symbols(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    constexpr unsigned char order =
        std::endian::native == std::endian::little ? ELFDATA2LSB : ELFDATA2MSB;

    std::set<std::string> names;
    Elf64_Ehdr header;
    if (read_record(std::string_view(bytes), 0, header) &&
        std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
        header.e_ident[EI_CLASS] == ELFCLASS64 && header.e_ident[EI_DATA] == order &&
        header.e_shentsize == sizeof(Elf64_Shdr)) {
        for (std::size_t number = 0; number < header.e_shnum; ++number) {
            Elf64_Shdr section;
            Elf64_Shdr strings;
            if (read_record(std::string_view(bytes), header.e_shoff + number * sizeof section,
                            section) &&
                section.sh_type == SHT_DYNSYM &&
                read_record(std::string_view(bytes),
                            header.e_shoff + section.sh_link * sizeof strings, strings)) {
                collect(section_bytes(bytes, section), section_bytes(bytes, strings), names);
            }
        }
    }
    return {names.begin(), names.end()};
}
