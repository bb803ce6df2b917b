// Standard output of what is fuzzed, kept in memory: linked ahead of the library, it takes the
// place of the real one. So millions of lines cost nothing, and a target can look at them.
#pragma once

#include <string>

namespace orx::fuzz {

/// What was printed since the last call. For the one thread of a target.
[[nodiscard]] std::string takeConsole();

/// Forgets what was printed.
inline void clearConsole() {
    static_cast<void>(takeConsole());
}

}  // namespace orx::fuzz
