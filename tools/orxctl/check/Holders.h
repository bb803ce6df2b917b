// The processes of this machine that hold something open, as far as the user may know.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>
#include <vector>

namespace orx::orxctl {

struct Process {
    pid_t id;
    std::string name;     ///< as the system calls it, without its folder
    std::string command;  ///< its command line, cut where it is long

    /// Whether it is a daemon such as the one whose start is checked.
    [[nodiscard]] bool isDaemon() const { return name == "orx"; }
};

/// "process 12 (agetty ttyS0), process 34 (cat /dev/ttyS0)"
[[nodiscard]] std::string listed(const std::vector<Process>& processes);

struct Holders {
    std::vector<Process> processes{};
    std::size_t hidden = 0;           ///< processes into which the user may not look
    std::vector<Process> suspects{};  ///< the daemons among those
};

/// What to say where nothing was found but `hidden` processes may be what was looked for.
[[nodiscard]] std::string unseen(std::size_t hidden);

/// What an open file of another process is, told without opening it.
using FileTest = std::function<bool(const struct stat&)>;

/// The other processes that have a file open which passes the test.
[[nodiscard]] Holders findHolders(const FileTest& isWanted);

/// Those of the device that a file of this `device` status leads to.
[[nodiscard]] Holders holdersOfDevice(const struct stat& device);
[[nodiscard]] Holders holdersOfSocket(ino_t socket);

}  // namespace orx::orxctl
