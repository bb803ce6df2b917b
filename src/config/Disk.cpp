#include "config/Disk.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orx {

FileDescriptor Disk::open(const std::string& path, int flags, mode_t mode) {
    return FileDescriptor(::open(path.c_str(), flags | O_CLOEXEC, mode));
}

ssize_t Disk::write(int file, std::string_view bytes) {
    return ::write(file, bytes.data(), bytes.size());
}

int Disk::truncate(int file, off_t size) {
    return ::ftruncate(file, size);
}

int Disk::setOwner(int file, uid_t user, gid_t group) {
    return ::fchown(file, user, group);
}

int Disk::setMode(int file, mode_t mode) {
    return ::fchmod(file, mode);
}

int Disk::sync(int fileOrFolder) {
    return ::fsync(fileOrFolder);
}

int Disk::rename(const std::string& from, const std::string& to) {
    return ::rename(from.c_str(), to.c_str());
}

int Disk::remove(const std::string& path) {
    return ::unlink(path.c_str());
}

Disk& systemDisk() noexcept {
    static Disk disk;
    return disk;
}

}  // namespace orx
