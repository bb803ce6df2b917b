// Replaces the content of one file so that a power cut at any instant leaves all of the old content
// or all of the new.
//
// The new content goes to a file beside it, named as the file with "." and the process id behind,
// which is brought to the disk and then renamed over the old one. Mode and owner stay; a symbolic
// link stays too, and the file that it leads to is replaced. A cut ahead of the renaming may leave
// the file beside, which nobody reads.
//
// Where there can be no second file (a folder that may not be written, a file mounted by itself, a
// disk without room for both, an owner whom we may not give a file to, a link that fails to be
// read) and where it would not do (a device, a file with other names), the content is written in
// place: a write that fails is then taken back, but a power cut in the middle of it is not.
// Extended attributes, access control lists among them, do not go over to the new file.
//
// One object serves one replacement, on one thread.
#pragma once

#include <string>
#include <string_view>
#include <sys/stat.h>

#include "config/Disk.h"
#include "core/FileDescriptor.h"

namespace orx {

class FileReplacement {
  public:
    /// Looks at the file at `path`, which may be missing. Throws `std::runtime_error` with the text
    /// "could not write to file: PATH" where it cannot be opened for writing; it is then untouched.
    explicit FileReplacement(std::string path, Disk& disk = systemDisk());

    /// Makes `content` all that the file holds. Throws as the constructor where a missing file
    /// cannot be created. A disk that is full or fails leaves the old content, in silence.
    void replaceWith(std::string_view content);

  private:
    [[nodiscard]] bool replaceByRenaming(std::string_view content);
    [[nodiscard]] bool looksAsCurrent(const FileDescriptor& file);
    void syncFolder();
    void writeInPlace(std::string_view content);
    void createInPlace(std::string_view content);
    void overwrite(std::string_view content);
    bool rewrite(std::string_view content, off_t formerSize);
    [[nodiscard]] bool writeAll(const FileDescriptor& file, std::string_view content);

    const std::string path;
    const std::string target;  ///< where the links that begin at the path lead to, if known
    Disk& disk;
    FileDescriptor current;  ///< none where the file is missing
    struct stat status {};   ///< of `current`
};

}  // namespace orx
