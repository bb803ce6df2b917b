// What a running process takes of the system, as the system itself counts it. Throws for a process
// that has ended.
#pragma once

#include <cstddef>
#include <string>
#include <sys/types.h>
#include <vector>

namespace orx::test {

struct ThreadFigures {
    pid_t id = 0;
    bool asleep = false;  ///< on a lock, in a read or a write, or waiting for another thread
    long cpuTime = 0;     ///< in clock ticks, since its start
    long pauses = 0;      ///< how often it has gone to sleep

    bool operator==(const ThreadFigures&) const = default;
};

[[nodiscard]] std::vector<ThreadFigures> threadsOf(pid_t process);

/// The clock ticks that all its threads have run, those included that have ended.
[[nodiscard]] long cpuTimeOf(pid_t process);

/// Whether all threads of a process are asleep; costs less than all of their figures.
[[nodiscard]] bool isProcessAsleep(pid_t process);

/// Whether the memory of a process says anything of what it has kept: a sanitizer keeps what has
/// been given back, an emulator what it has translated.
inline constexpr bool memoryIsTelling = ORX_MEMORY_IS_TELLING;

/// How much memory it has written to, in kilobytes: its files and libraries do not count.
[[nodiscard]] long ownKilobytes(pid_t process);

/// What a process must not have more of the longer it runs.
struct Holdings {
    std::size_t threads = 0;
    std::size_t descriptors = 0;

    bool operator==(const Holdings&) const = default;
    [[nodiscard]] std::string text() const;  ///< "4 threads and 7 descriptors"
};

[[nodiscard]] Holdings holdingsOf(pid_t process);

}  // namespace orx::test
