// A file's text, mapped where the system can map it. Used for assembly and for sources,
// which may be large and are read once.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace assembly {

class text_file {
  public:
    // Takes all of a file, or the rest of standard input for "-". On failure nothing, and
    // errno tells why.
    static std::optional<text_file> open(const std::string& name);

    // The same for a source: a regular file of at most 256 MB. What is none fails with
    // EISDIR, EFBIG or ENODEV.
    static std::optional<text_file> open_source(const std::string& name);

    // A file of this text that is nowhere on disk.
    static text_file of(std::string text, std::int64_t modified = 0);

    // Stays where it is as long as the object that it was moved to last.
    std::string_view text() const { return text_; }

    // When the file was last changed, in nanoseconds since the epoch; 0 for what is no
    // regular file.
    std::int64_t modified() const { return modified_; }

    // Whether the text lies in this very file, and changes with it.
    bool is_mapped_from(const struct stat& file) const;

  private:
    bool load(int descriptor);
    bool map_rest(int descriptor, const struct stat& status);
    bool read_rest(int descriptor);

    std::shared_ptr<void> memory_;  // of the text: a mapping, or what was read
    std::string_view text_;
    std::int64_t modified_ = 0;
    std::optional<struct stat> mapped_from_;
};

}  // namespace assembly
