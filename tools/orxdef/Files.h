// Whole files: read at once, replaced at once. What fails throws `std::runtime_error`, whose text
// is the reason without the name of the file.
#pragma once

#include <string>
#include <string_view>

#include "core/FileDescriptor.h"

namespace orx::orxdef {

/// The content of the file at `path`; that of standard input for the path "-".
[[nodiscard]] std::string readFile(const std::string& path);

/// The file at `path` under a name that leads to an ordinary file, which readers may go back and
/// forth in: for standard input, called "-", and for anything else that is no file on disk, that is
/// a copy, which goes with this object.
class SeekableFile {
  public:
    explicit SeekableFile(const std::string& path);

    [[nodiscard]] const std::string& path() const noexcept { return name; }

  private:
    FileDescriptor copy;
    std::string name;
};

/// Makes `content` the content of the file at `path`, through a temporary file beside it: a reader
/// sees the old content or the new one, never a part. An existing file keeps its permissions, a
/// symbolic link stays one. After a failure the file at `path` is as it was and the temporary file
/// is gone. Only a regular file is ever replaced.
void replaceFile(const std::string& path, std::string_view content);

/// Whether both paths lead to the same existing file.
[[nodiscard]] bool isSameFile(const std::string& left, const std::string& right);

}  // namespace orx::orxdef
