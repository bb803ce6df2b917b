// The system calls that change what is on the disk while a file is replaced, one operation each, so
// that a test can cut the power between any two of them or make any of them fail.
//
// The operations are those of the platform and report as it does: -1, or no descriptor, with errno
// set. The class itself is the real disk, which any thread may use; a test derives from it.
#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>

#include "core/FileDescriptor.h"

namespace orx {

class Disk {
  public:
    Disk() = default;
    Disk(const Disk&) = delete;
    Disk& operator=(const Disk&) = delete;
    virtual ~Disk() = default;

    /// Opens, or creates with `mode`; a program started by this one does not get the descriptor.
    [[nodiscard]] virtual FileDescriptor open(const std::string& path, int flags, mode_t mode);
    /// Writes all of `bytes` or, as the platform pleases, a beginning of them.
    virtual ssize_t write(int file, std::string_view bytes);
    virtual int truncate(int file, off_t size);
    virtual int setOwner(int file, uid_t user, gid_t group);
    virtual int setMode(int file, mode_t mode);
    /// Waits until all of the file, or the names in the folder, would outlive a power cut.
    virtual int sync(int fileOrFolder);
    virtual int rename(const std::string& from, const std::string& to);
    virtual int remove(const std::string& path);
};

/// The disk of the system.
[[nodiscard]] Disk& systemDisk() noexcept;

}  // namespace orx
