// A program that is measured: the daemon, or the limit that it is measured by. Its standard output
// goes into a file in memory, so that no reader of it takes time from what is measured.
#pragma once

#include <filesystem>
#include <string>
#include <sys/types.h>
#include <vector>

#include "core/FileDescriptor.h"

namespace orx::bench {

class Server {
  public:
    /// Starts the command on `core`, with `environment` ("NAME=value" each) added to that of this
    /// program. Throws where the system refuses.
    Server(const std::vector<std::string>& command, int core,
           const std::vector<std::string>& environment = {});
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    /// Ends it.
    ~Server();

    /// Waits until `text` is on its standard output. Throws, showing that, where it does not come.
    void waitFor(const std::string& text) const;

    [[nodiscard]] pid_t id() const noexcept { return process; }

    /// The processor time of all its threads, in seconds.
    [[nodiscard]] double cpuTime() const;

    /// Its share of the memory, in kB: what is its own, and its part of what it shares (PSS).
    [[nodiscard]] double memory() const;

    /// The memory that it has written to, in kB.
    [[nodiscard]] double ownMemory() const;

    /// How often its threads have been given a processor core.
    [[nodiscard]] long switches() const;

  private:
    [[nodiscard]] std::filesystem::path folder() const;

    FileDescriptor output;
    pid_t process;
};

}  // namespace orx::bench
