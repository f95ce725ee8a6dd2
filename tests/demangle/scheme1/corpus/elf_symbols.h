// The dynamic symbols of ELF files, for the tests that decode real names.
#pragma once

#include <string>
#include <vector>

// The names that begin with "_Z" in the file's dynamic symbol table, each once, without
// a version; empty when the file is no 64-bit ELF file of this machine's byte order.
std::vector<std::string> mangled_symbols(const std::string& file);
