// What this process holds of the system: its descriptors and its threads.
#pragma once

#include <cstddef>
#include <filesystem>
#include <iterator>

namespace orx::test {

inline std::size_t entriesOf(const std::filesystem::path& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder),
                                                  std::filesystem::directory_iterator()));
}

/// Open descriptors; the one that counts them is always among them.
inline std::size_t openDescriptors() {
    return entriesOf("/proc/self/fd");
}

inline std::size_t runningThreads() {
    return entriesOf("/proc/self/task");
}

}  // namespace orx::test
