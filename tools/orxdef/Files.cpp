#include "orxdef/Files.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "core/FileDescriptor.h"

namespace orx::orxdef {
namespace {

namespace fs = std::filesystem;

constexpr mode_t readAndWriteForAll = 0666;
constexpr mode_t allPermissions = 07777;
constexpr std::size_t pieceSize = 65536;

/// Gives up for the reason that the failed system call left behind.
[[noreturn]] void fail() {
    throw std::runtime_error(std::generic_category().message(errno));
}

std::size_t checked(ssize_t count) {
    if (count < 0) fail();
    return static_cast<std::size_t>(count);
}

void writeAll(const FileDescriptor& file, std::string_view content) {
    while (!content.empty())
        content.remove_prefix(checked(::write(file.get(), content.data(), content.size())));
}

/// A file under a name of its own beside its target, removed again unless it took the target's
/// place.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& target)
        : path(target + ".XXXXXX"), file(::mkostemp(path.data(), O_CLOEXEC)) {
        if (!file.isOpen()) fail();
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!path.empty()) ::unlink(path.c_str());
    }

    void write(std::string_view content) { writeAll(file, content); }

    void allow(mode_t permissions) {
        if (::fchmod(file.get(), permissions) != 0) fail();
    }

    /// The content reaches the disk before the name does: a power cut in between leaves the old
    /// file and not an empty one.
    void takePlaceOf(const std::string& target) {
        if (::fsync(file.get()) != 0) fail();
        if (std::rename(path.c_str(), target.c_str()) != 0) fail();
        path.clear();
    }

  private:
    std::string path;
    FileDescriptor file;
};

mode_t permissionsOfNewFiles() {
    const auto mask = ::umask(0);
    ::umask(mask);
    return readAndWriteForAll & ~mask;
}

/// The permissions that the file at `path` has, or those it would be created with.
mode_t permissionsFor(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return permissionsOfNewFiles();
    if (!S_ISREG(status.st_mode)) throw std::runtime_error("Not a regular file");
    return status.st_mode & allPermissions;
}

/// `path`, or what it leads to where it is a symbolic link.
std::string resolved(const std::string& path) {
    std::error_code unresolvable;
    const auto target = fs::canonical(path, unresolvable);
    return unresolvable ? path : target.string();
}

}  // namespace

std::string readFile(const std::string& path) {
    const FileDescriptor file(path == "-" ? ::dup(STDIN_FILENO)
                                          : ::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) fail();
    std::string content;
    std::array<char, pieceSize> piece{};
    while (const auto count = checked(::read(file.get(), piece.data(), piece.size())))
        content.append(piece.data(), count);
    return content;
}

SeekableFile::SeekableFile(const std::string& path) : name(path) {
    std::error_code missing;
    const auto status = fs::status(path, missing);
    if (path != "-" && (!fs::exists(status) || fs::is_regular_file(status))) return;
    const auto content = readFile(path);
    copy = FileDescriptor(::memfd_create("copy", MFD_CLOEXEC));
    if (!copy.isOpen()) fail();
    writeAll(copy, content);
    name = "/proc/self/fd/" + std::to_string(copy.get());
}

void replaceFile(const std::string& path, std::string_view content) {
    const auto target = resolved(path);
    const auto permissions = permissionsFor(target);
    TemporaryFile file(target);
    file.write(content);
    file.allow(permissions);
    file.takePlaceOf(target);
}

bool isSameFile(const std::string& left, const std::string& right) {
    std::error_code missing;
    return fs::equivalent(left, right, missing);
}

}  // namespace orx::orxdef
