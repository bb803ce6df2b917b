#include "orxctl/check/Writability.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include "orxctl/check/Person.h"
#include "orxdef/Wording.h"

namespace orx::orxctl {
namespace {

bool mayUse(const std::string& path, int mode) {
    return ::faccessat(AT_FDCWD, path.c_str(), mode, AT_EACCESS) == 0;
}

Obstacle refused(const std::string& what, const std::string& path) {
    const auto error = errno;
    return {what + ": " + std::strerror(error), error == EACCES
                                                    ? "sudo chown " + userName() + " " + path
                                                    : "name another file, or mend the disk"};
}

std::optional<Obstacle> obstacleToMaking(const std::string& path) {
    auto folder = std::filesystem::path(path).parent_path().string();
    if (folder.empty()) folder = ".";
    struct stat status {};
    if (::stat(folder.c_str(), &status) != 0) {
        if (errno == ENOENT)
            return Obstacle{"there is no folder " + orxdef::quoted(folder),
                            "sudo install -d -o " + userName() + " " + folder};
        return refused("the folder " + orxdef::quoted(folder) + " cannot be reached", folder);
    }
    if (!S_ISDIR(status.st_mode))
        return Obstacle{orxdef::quoted(folder) + " is no folder", "name another file"};
    if (!mayUse(folder, W_OK | X_OK))
        return refused("user " + orxdef::quoted(userName()) + " cannot make files in the folder " +
                           orxdef::quoted(folder),
                       folder);
    return std::nullopt;
}

}  // namespace

std::optional<Obstacle> obstacleToWriting(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        if (errno == ENOENT) return obstacleToMaking(path);
        return refused(orxdef::quoted(path) + " cannot be reached", path);
    }
    if (S_ISDIR(status.st_mode))
        return Obstacle{orxdef::quoted(path) + " is a folder", "name a file"};
    if (!mayUse(path, W_OK))
        return refused(
            "user " + orxdef::quoted(userName()) + " cannot write " + orxdef::quoted(path), path);
    return std::nullopt;
}

}  // namespace orx::orxctl
