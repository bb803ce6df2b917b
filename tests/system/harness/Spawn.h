// Starts a process for a test: nothing is inherited but what is said here, and it never outlives
// the test.
#pragma once

#include <array>
#include <string>
#include <sys/types.h>
#include <vector>

namespace orx::test {

struct Spawn {
    std::vector<std::string> command;      ///< the executable and its arguments
    std::vector<std::string> environment;  ///< added to that of the test, "NAME=value" each
    /// What the process gets as descriptors 0, 1 and 2; -1 for a closed one.
    std::array<int, 3> standardDescriptors;
    bool sessionLeader = false;
};

/// Gives the process id. Throws where the system refuses.
[[nodiscard]] pid_t spawn(const Spawn& wanted);

}  // namespace orx::test
