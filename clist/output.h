// What a listing is written through: a buffer over a descriptor that remembers a failure.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace clist {

class output {
  public:
    // Writes to a descriptor, which stays the caller's to close.
    explicit output(int descriptor);

    void put(std::string_view text);
    void put(char c) { put(std::string_view(&c, 1)); }

    // What is put next, to be appended to until the next call of any of these functions.
    std::string& next();

    // Writes what is still in the buffer. False when this or any write before failed, and
    // errno tells why the first one did.
    bool flush();

  private:
    void write(std::string_view text);

    int descriptor_;
    int error_ = 0;  // of the first write that failed
    std::string buffer_;
};

}  // namespace clist
