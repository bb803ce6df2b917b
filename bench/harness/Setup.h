// What the daemons under measurement find: one installation below the prefix that is compiled into
// them, and a configuration for each.
#pragma once

#include <string>
#include <vector>

#include "harness/Server.h"
#include "support/TemporaryFolder.h"

namespace orx::bench {

/// How a daemon is to be started.
struct DaemonSetup {
    std::vector<int> ports;
    std::string device{};               ///< none: a daemon that shows what it would send
    std::string log{};                  ///< one in memory where it is empty
    std::string definitions = "small";  ///< "small", or "full" for a file of 64 KiB
    int delay = 0;                      ///< in milliseconds, behind each command
};

/// A folder in memory and one on the disk, both gone in the end.
class Setup {
  public:
    Setup();
    Setup(const Setup&) = delete;
    Setup& operator=(const Setup&) = delete;
    ~Setup();

    /// The path of a file in memory, where the system has such a place.
    [[nodiscard]] std::string inMemory(const std::string& name) const { return memory.file(name); }

    /// The path of a file on the disk that the build stands on.
    [[nodiscard]] std::string onDisk(const std::string& name) const;

    /// Writes the configuration; gives the command that starts a daemon with it.
    [[nodiscard]] std::vector<std::string> command(const DaemonSetup& daemon) const;

    /// The command that starts one of the limits.
    [[nodiscard]] static std::vector<std::string> limit(const std::string& name,
                                                        std::vector<std::string> arguments);

    /// The environment in which a program has the C++ runtime to itself, as on a board with no
    /// other program in C++: copies of its libraries, of which no other process has a part.
    [[nodiscard]] std::vector<std::string> ownRuntime() const;

  private:
    test::TemporaryFolder memory;
};

/// The steps of the zoom axis between its ends.
inline constexpr int zoomSteps = 2000;

}  // namespace orx::bench
