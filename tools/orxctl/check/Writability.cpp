#include "orxctl/check/Writability.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include "orxctl/check/Person.h"
#include "orxctl/check/ShellWord.h"
#include "orxdef/Wording.h"

namespace orx::orxctl {
namespace {

Obstacle refused(int errorNumber, const std::string& what, const std::string& path) {
    return {what + ": " + std::strerror(errorNumber),
            errorNumber == EACCES ? "sudo chown " + userName() + " " + shellWord(path)
                                  : "name another file, or mend the disk"};
}

std::optional<Obstacle> obstacleToMaking(const std::string& path) {
    auto folder = std::filesystem::path(path).parent_path().string();
    if (folder.empty()) folder = ".";
    struct stat status {};
    if (::stat(folder.c_str(), &status) != 0) {
        if (errno == ENOENT)
            return Obstacle{"there is no folder " + orxdef::quoted(folder),
                            "sudo install -d -o " + userName() + " " + shellWord(folder)};
        return refused(errno, "the folder " + orxdef::quoted(folder) + " cannot be reached",
                       folder);
    }
    if (!S_ISDIR(status.st_mode))
        return Obstacle{orxdef::quoted(folder) + " is no folder", "name another file"};
    if (const int error = accessError(folder, W_OK | X_OK); error != 0)
        // Not the folder for the user: it may be one of the system's.
        return Obstacle{"user " + orxdef::quoted(userName()) + " cannot make files in the folder " +
                            orxdef::quoted(folder) + ": " + std::strerror(error),
                        "sudo install -o " + userName() + " /dev/null " + shellWord(path)};
    return std::nullopt;
}

}  // namespace

std::optional<Obstacle> obstacleToWriting(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        if (errno == ENOENT) return obstacleToMaking(path);
        return refused(errno, orxdef::quoted(path) + " cannot be reached", path);
    }
    if (S_ISDIR(status.st_mode))
        return Obstacle{orxdef::quoted(path) + " is a folder", "name a file"};
    if (S_ISFIFO(status.st_mode))
        return Obstacle{orxdef::quoted(path) + " is a pipe, on whose reader the daemon waits",
                        "name a file"};
    if (const int error = accessError(path, W_OK); error != 0)
        return refused(
            error, "user " + orxdef::quoted(userName()) + " cannot write " + orxdef::quoted(path),
            path);
    return std::nullopt;
}

}  // namespace orx::orxctl
