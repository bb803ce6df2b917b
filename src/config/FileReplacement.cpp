#include "config/FileReplacement.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <unistd.h>
#include <utility>

#include "core/InputFile.h"

namespace orx {
namespace {

/// What a file is created with; the process takes from it what it withholds from everybody.
constexpr mode_t modeOfNewFiles = 0666;

/// Only its owner may see a file until it looks as the one that it replaces.
constexpr mode_t modeOfFilesInTheMaking = 0600;

/// Where the links that begin at `path` lead to; nowhere where that cannot be found out.
std::filesystem::path followLinks(std::filesystem::path path) {
    constexpr int maxLinks = 40;  // as many as the kernel follows
    for (int links = 0; links < maxLinks; ++links) {
        std::error_code error;
        const auto next = std::filesystem::read_symlink(path, error);
        if (error == std::errc::invalid_argument || error == std::errc::no_such_file_or_directory) {
            return path;  // no link
        }
        if (error) break;
        path = path.parent_path() / next;
    }
    return {};
}

std::runtime_error cannotWrite(const std::string& path) {
    return std::runtime_error("could not write to file: " + path);
}

}  // namespace

FileReplacement::FileReplacement(std::string filePath, Disk& usedDisk)
    : path(std::move(filePath)),
      target(followLinks(path)),
      disk(usedDisk),
      current(disk.open(path, O_WRONLY, 0)) {
    if (!current.isOpen() && errno != ENOENT) throw cannotWrite(path);
}

void FileReplacement::replaceWith(std::string_view content) {
    if (current.isOpen() && ::fstat(current.get(), &status) != 0) return;
    const bool isDevice = current.isOpen() && !S_ISREG(status.st_mode);
    const bool hasOtherNames = status.st_nlink > 1;
    // A link that cannot be followed must not be renamed over: the file behind it would stay old.
    const bool canBeRenamedOver = !isDevice && !hasOtherNames && !target.empty();
    if (canBeRenamedOver && replaceByRenaming(content)) return;
    writeInPlace(content);
}

bool FileReplacement::replaceByRenaming(std::string_view content) {
    const auto beside = target + "." + std::to_string(::getpid());
    disk.remove(beside);  // left by a process of the same number that was cut short
    const auto file = disk.open(beside, O_WRONLY | O_CREAT | O_EXCL,
                                current.isOpen() ? modeOfFilesInTheMaking : modeOfNewFiles);
    if (!file.isOpen()) return false;
    if (looksAsCurrent(file) && writeAll(file, content) && disk.sync(file.get()) == 0 &&
        disk.rename(beside, target) == 0) {
        syncFolder();
        return true;
    }
    const int reason = errno;
    disk.remove(beside);
    return reason == EIO;  // a disk that fails is not let near the content that it still has
}

bool FileReplacement::looksAsCurrent(const FileDescriptor& file) {
    constexpr mode_t permissions = 07777;
    if (!current.isOpen()) return true;
    return disk.setOwner(file.get(), status.st_uid, status.st_gid) == 0 &&
           disk.setMode(file.get(), status.st_mode & permissions) == 0;
}

void FileReplacement::syncFolder() {
    const auto folder = std::filesystem::path(target).parent_path();
    const auto names = disk.open(folder.empty() ? "." : folder.string(), O_RDONLY | O_DIRECTORY, 0);
    if (names.isOpen()) disk.sync(names.get());
}

void FileReplacement::writeInPlace(std::string_view content) {
    if (!current.isOpen()) {
        createInPlace(content);
    } else if (S_ISREG(status.st_mode)) {
        overwrite(content);
    } else {
        static_cast<void>(writeAll(current, content));
    }
}

void FileReplacement::createInPlace(std::string_view content) {
    current = disk.open(path, O_WRONLY | O_CREAT, modeOfNewFiles);
    if (!current.isOpen()) throw cannotWrite(path);
    if (!writeAll(current, content)) disk.remove(target);
    disk.sync(current.get());
}

void FileReplacement::overwrite(std::string_view content) {
    const auto old = InputFile(path).readAll();
    if (!rewrite(content, status.st_size) && std::cmp_equal(old.size(), status.st_size)) {
        rewrite(old, static_cast<off_t>(content.size()));
    }
    disk.sync(current.get());
}

bool FileReplacement::rewrite(std::string_view content, off_t formerSize) {
    const auto size = static_cast<off_t>(content.size());
    return ::lseek(current.get(), 0, SEEK_SET) == 0 && writeAll(current, content) &&
           (formerSize <= size || disk.truncate(current.get(), size) == 0);
}

bool FileReplacement::writeAll(const FileDescriptor& file, std::string_view content) {
    while (!content.empty()) {
        const auto written = disk.write(file.get(), content);
        if (written <= 0) return false;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace orx
