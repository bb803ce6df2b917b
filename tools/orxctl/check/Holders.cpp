#include "orxctl/check/Holders.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <optional>
#include <string_view>
#include <sys/sysmacros.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "core/Text.h"
#include "orxctl/check/Files.h"

namespace orx::orxctl {
namespace {

namespace fs = std::filesystem;

std::optional<pid_t> processId(const std::string& name) {
    pid_t id = 0;
    const auto* const end = name.data() + name.size();
    const auto result = std::from_chars(name.data(), end, id);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return id;
}

Process describe(pid_t id, const fs::path& folder) {
    constexpr std::size_t longest = 60;
    const auto name = trim(contentOf(folder / "comm"));
    auto command = contentOf(folder / "cmdline");
    while (command.ends_with('\0'))
        command.pop_back();
    std::ranges::replace(command, '\0', ' ');
    if (command.empty()) command = name;
    if (command.size() > longest) command = command.substr(0, longest) + "...";
    return {id, name, escapeBytes(command)};
}

/// Whether one of the links of a process leads to a wanted file. The process may end meanwhile.
bool holds(fs::directory_iterator link, const FileTest& isWanted) {
    std::error_code error;
    for (; link != end(link); link.increment(error)) {
        struct stat status {};
        if (::stat(link->path().c_str(), &status) == 0 && isWanted(status)) return true;
    }
    return false;
}

/// Each mount of their file system, as a container has one, numbers these anew.
bool isPseudoTerminal(dev_t device) {
    constexpr unsigned first = 136;
    constexpr unsigned last = 143;
    return major(device) >= first && major(device) <= last;
}

void addHidden(Process process, Holders& holders) {
    ++holders.hidden;
    if (process.isDaemon()) holders.suspects.push_back(std::move(process));
}

}  // namespace

std::string listed(const std::vector<Process>& processes) {
    std::string text;
    for (const auto& process : processes)
        text.append(text.empty() ? "" : ", ")
            .append("process ")
            .append(std::to_string(process.id))
            .append(" (")
            .append(process.command)
            .append(")");
    return text;
}

std::string unseen(std::size_t hidden) {
    return "processes of other users that were not looked into: " + std::to_string(hidden) +
           "; check as root to see them, too";
}

Holders findHolders(const FileTest& isWanted) {
    Holders holders;
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error); entry != end(entry);
         entry.increment(error)) {
        const auto id = processId(entry->path().filename());
        if (!id || *id == ::getpid()) continue;
        std::error_code refusal;
        const fs::directory_iterator links(entry->path() / "fd", refusal);
        if (refusal == std::errc::permission_denied)
            addHidden(describe(*id, entry->path()), holders);
        else if (!refusal && holds(links, isWanted))
            holders.processes.push_back(describe(*id, entry->path()));
    }
    std::ranges::sort(holders.processes, {}, &Process::id);
    return holders;
}

Holders holdersOfDevice(const struct stat& device) {
    const bool isOfMount = isPseudoTerminal(device.st_rdev);
    return findHolders([&device, isOfMount](const struct stat& status) {
        return S_ISCHR(status.st_mode) && status.st_rdev == device.st_rdev &&
               (!isOfMount || status.st_dev == device.st_dev);
    });
}

Holders holdersOfSocket(ino_t socket) {
    return findHolders([socket](const struct stat& status) {
        return S_ISSOCK(status.st_mode) && status.st_ino == socket;
    });
}

}  // namespace orx::orxctl
