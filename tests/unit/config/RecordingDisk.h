// The real disk, which remembers the steps that a power cut could undo, and of which a test can
// make single operations fail.
#pragma once

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "config/Disk.h"

namespace orx::test {

/// One change of the disk. A file is known by its number, names lead to files.
struct DiskStep {
    enum class Kind {
        create,
        write,
        truncate,
        setOwner,
        setMode,
        sync,
        syncFolder,
        rename,
        remove
    };

    Kind kind{};
    ino_t file = 0;
    std::string name{};     ///< the new name of a file
    std::string oldName{};  ///< the one that goes with a renaming or a removal
    off_t offset = 0;
    std::string bytes{};
    off_t size = 0;
    mode_t mode = 0;
    uid_t user = 0;
};

class RecordingDisk : public Disk {
  public:
    using Kind = DiskStep::Kind;

    /// Steps up to now, the oldest first.
    std::vector<DiskStep> steps;

    /// No write takes more than this.
    std::size_t mostBytesAtOnce = std::string::npos;

    /// Asked ahead of every operation with its name: the error number with which it is to fail, or
    /// 0. Its call number counts from 1.
    std::function<int(std::string_view operation, int call)> failure = [](auto, int) { return 0; };

    /// As `failure`, ahead of opening a path.
    std::function<int(const std::string& path)> failureToOpen = [](const auto&) { return 0; };

    [[nodiscard]] int calls() const { return callCount; }

    FileDescriptor open(const std::string& path, int flags, mode_t mode) override {
        if (fails("open") || failsWith(failureToOpen(path))) return {};
        const bool existed = ::access(path.c_str(), F_OK) == 0;
        auto file = Disk::open(path, flags, mode);
        const auto number = file.isOpen() ? numberOf(file.get()) : 0;
        if (file.isOpen() && !existed) {
            add({.kind = Kind::create, .file = number, .name = path});
            add({.kind = Kind::setMode,
                 .file = number,
                 .mode = statusOf(file.get()).st_mode & permissions});
        }
        if (file.isOpen() && existed && (flags & O_TRUNC) != 0)
            add({.kind = Kind::truncate, .file = number});
        return file;
    }
    ssize_t write(int file, std::string_view bytes) override {
        if (fails("write")) return -1;
        const auto offset = ::lseek(file, 0, SEEK_CUR);
        const auto written = Disk::write(file, bytes.substr(0, mostBytesAtOnce));
        if (written > 0) {
            add({.kind = Kind::write,
                 .file = numberOf(file),
                 .offset = offset,
                 .bytes = std::string(bytes.substr(0, static_cast<std::size_t>(written)))});
        }
        return written;
    }
    int truncate(int file, off_t size) override {
        if (fails("truncate")) return -1;
        add({.kind = Kind::truncate, .file = numberOf(file), .size = size});
        return Disk::truncate(file, size);
    }
    int setOwner(int file, uid_t user, gid_t group) override {
        if (fails("setOwner")) return -1;
        add({.kind = Kind::setOwner, .file = numberOf(file), .user = user});
        return Disk::setOwner(file, user, group);
    }
    int setMode(int file, mode_t mode) override {
        if (fails("setMode")) return -1;
        add({.kind = Kind::setMode, .file = numberOf(file), .mode = mode});
        return Disk::setMode(file, mode);
    }
    int sync(int fileOrFolder) override {
        if (fails("sync")) return -1;
        const bool isFolder = S_ISDIR(statusOf(fileOrFolder).st_mode);
        add({.kind = isFolder ? Kind::syncFolder : Kind::sync, .file = numberOf(fileOrFolder)});
        return Disk::sync(fileOrFolder);
    }
    int rename(const std::string& from, const std::string& to) override {
        if (fails("rename")) return -1;
        struct stat status {};
        if (::stat(from.c_str(), &status) == 0) {
            add({.kind = Kind::rename, .file = status.st_ino, .name = to, .oldName = from});
        }
        return Disk::rename(from, to);
    }
    int remove(const std::string& path) override {
        if (fails("remove")) return -1;
        add({.kind = Kind::remove, .oldName = path});
        return Disk::remove(path);
    }

  private:
    static constexpr mode_t permissions = 07777;

    static struct stat statusOf(int file) {
        struct stat status {};
        ::fstat(file, &status);
        return status;
    }
    static ino_t numberOf(int file) { return statusOf(file).st_ino; }

    void add(DiskStep step) { steps.push_back(std::move(step)); }

    bool fails(std::string_view operation) { return failsWith(failure(operation, ++callCount)); }
    static bool failsWith(int error) {
        if (error != 0) errno = error;
        return error != 0;
    }

    int callCount = 0;
};

}  // namespace orx::test
