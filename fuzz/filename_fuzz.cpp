// Fuzzes the functions that work on the text of a name. The input is two texts, a name
// and an extension, apart by their first NUL. Buffers are exactly as large as the
// contracts ask for, so that a byte too many is found; results are held against what
// the contracts say of them.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "support/filename.h"

namespace {

void expect(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// The place of the last point, when it lies in the last component.
std::size_t extension_point(std::string_view name) {
    const std::size_t point = name.rfind('.');
    return point != std::string_view::npos && name.find('/', point) == std::string_view::npos
               ? point
               : std::string_view::npos;
}

void check_split_and_build(const std::string& name) {
    const char* dir = nullptr;
    const char* base = nullptr;
    const char* ext = nullptr;
    fn_split(name.c_str(), &dir, &base, &ext);
    const std::string parts[] = {dir, base, ext};
    for (const std::string& part : parts) {
        expect(part.size() <= 499);
    }
    expect(parts[1].size() <= 498 || parts[2].empty());
    expect(parts[1].find('/') == std::string::npos);
    expect(parts[2].find_first_of("./") == std::string::npos);

    char* const built = fn_build(nullptr, dir, base, ext);
    const std::size_t last = name.rfind('/') + 1;
    const std::size_t point = name.rfind('.');
    const bool has_ext = point != std::string::npos && point >= last && point + 1 < name.size();
    const std::size_t base_size = (has_ext ? point : name.size()) - last;
    if (last <= 499 && base_size <= (has_ext ? 498 : 499) && parts[2].size() < 499) {
        expect(name == built);
    }
    const auto room = std::make_unique<char[]>(std::strlen(built) + 1);
    expect(fn_build(room.get(), dir, base, ext) == room.get());
    expect(std::strcmp(room.get(), built) == 0);
    std::free(built);
    expect(fn_matches_ext(name.c_str(), parts[2].c_str()));
}

void check_addext(const std::string& name, const std::string& ext, int replace) {
    const auto room = std::make_unique<char[]>(name.size() + ext.size() + 2);
    std::strcpy(room.get(), name.c_str());
    fn_addext(room.get(), ext.c_str(), replace);
    const std::string_view bare = std::string_view(ext).substr(ext.starts_with('.') ? 1 : 0);
    const std::size_t point = extension_point(name);
    std::string expected = name;
    if (point == std::string::npos) {
        expected += ext.empty() ? "" : ".";
        expected += bare;
    } else if (replace != 0) {
        expected.resize(point + (ext.empty() ? 0 : 1));
        expected += bare;
    }
    expect(expected == room.get());
}

void check_delext(const std::string& name) {
    const auto room = std::make_unique<char[]>(name.size() + 1);
    std::strcpy(room.get(), name.c_str());
    fn_delext(room.get());
    expect(name.substr(0, extension_point(name)) == room.get());
}

void check_tests(const std::string& name, const std::string& other) {
    const char* const base = fn_basename(name.c_str());
    expect((base == nullptr) == name.empty());
    expect(base == nullptr || base == name.c_str() + (name.rfind('/') + 1));
    expect((fn_hasdir(name.c_str()) == 1) == (name.find('/') != std::string::npos));
    expect((fn_has_full_path(name.c_str()) == 1) == name.starts_with('/'));
    expect((fn_has_relative_path(name.c_str()) == 1) ==
           (name.starts_with("./") || name.starts_with("../")));
    const int order = fn_strcmp(name.c_str(), other.c_str());
    expect((order == 0) == (name == other));
    expect(order == -fn_strcmp(other.c_str(), name.c_str()));
    expect(fn_is_user_specified_stream(name.c_str()) == (name == "stdout" || name == "stderr"));
    expect(fn_explicit_disable(name.c_str()) == (name == "none"));
    char* const copy = fn_realname(name.c_str());
    expect(name == copy);
    std::free(copy);
    expect(cstr_to_fn(name) == name && fn_to_cstr(name) == name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::string name = input.substr(0, input.find('\0'));
    const std::string ext = name.size() < size ? input.c_str() + name.size() + 1 : "";
    check_split_and_build(name);
    check_addext(name, ext, 0);
    check_addext(name, ext, 1);
    check_delext(name);
    check_tests(name, ext);
    return 0;
}
