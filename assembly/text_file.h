// A file's text, mapped where the system can map it. Used for assembly and for sources,
// which may be large and are read once.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace assembly {

class text_file {
  public:
    // Opens a file, or standard input for "-". On failure nothing, and errno tells why.
    static std::optional<text_file> open(const std::string& name);

    // The same for a source: a regular file of at most 256 MB.
    static std::optional<text_file> open_source(const std::string& name);

    text_file(text_file&& other) noexcept;
    text_file& operator=(text_file&& other) noexcept;
    text_file(const text_file&) = delete;
    text_file& operator=(const text_file&) = delete;
    ~text_file();

    // Stays where it is until the object ends or is moved from.
    std::string_view text() const { return mapped_.data() != nullptr ? mapped_ : read_; }

    // When the file was last changed, in nanoseconds since the epoch; 0 for what is no
    // regular file.
    std::int64_t modified() const { return modified_; }

  private:
    text_file() = default;
    bool load(int descriptor);

    std::string_view mapped_;
    std::string read_;  // of what cannot be mapped
    std::int64_t modified_ = 0;
};

}  // namespace assembly
