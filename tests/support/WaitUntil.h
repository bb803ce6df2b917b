// Waiting for a condition, never for time.
#pragma once

#include <chrono>
#include <fstream>
#include <string>
#include <thread>
#include <unistd.h>

namespace orx::test {

/// Asks `condition` until it holds. Gives up, with false, only where a test has gone wrong.
template <typename Condition>
[[nodiscard]] bool waitUntil(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::yield();
    }
    return true;
}

/// The system's number of the calling thread.
inline pid_t thisThread() {
    return ::gettid();
}

/// Whether a thread, or the first one of a process, sleeps in the system: on a lock, in a read or a
/// write, or waiting for another thread.
inline bool isAsleep(pid_t thread) {
    // By way of task/, because an emulator makes up the file of a process itself.
    const auto id = std::to_string(thread);
    std::ifstream file("/proc/" + id + "/task/" + id + "/stat");
    std::string stat;
    std::getline(file, stat);
    const auto state = stat.rfind(") ");
    return state != std::string::npos && stat.substr(state + 2, 1) == "S";
}

/// Waits until a thread of this process sleeps in the system.
[[nodiscard]] inline bool waitUntilAsleep(pid_t thread) {
    return waitUntil([thread] { return isAsleep(thread); });
}

}  // namespace orx::test
