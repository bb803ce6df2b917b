// A file that is read, front to back or from a chosen place on.
//
// Used by the thread that has made it. What cannot be read counts as not there: a file that is cut
// short, a folder and a disk that fails all end where the last byte came from.
#pragma once

#include <cstddef>
#include <string>

#include "core/FileDescriptor.h"

namespace orx {

class InputFile {
  public:
    /// Opens `path`; waits for a writer where that is a named pipe.
    explicit InputFile(const std::string& path);

    [[nodiscard]] bool isOpen() const noexcept { return descriptor.isOpen(); }

    /// The next `size` bytes, or as many as there are.
    [[nodiscard]] std::string read(std::size_t size);

    /// All bytes from here on.
    [[nodiscard]] std::string readAll();

    /// Whether more may be in the file than could be read.
    [[nodiscard]] bool isCutOff() const noexcept { return cutOff; }

    /// Goes to the byte with that offset from the beginning. A file that has no places, as a pipe,
    /// counts as read to its end then.
    void seek(std::size_t offset);

  private:
    FileDescriptor descriptor;
    bool cutOff = false;
};

}  // namespace orx
