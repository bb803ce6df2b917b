// The time that a program takes from its start to its first answer.
#pragma once

#include <string>
#include <vector>

namespace orx::bench {

/// Starts `command` on `core`, reads its standard output until `readyText` is there, asks it for
/// the status and gives the microseconds up to the answer; then ends it.
[[nodiscard]] double timeToAnswer(const std::vector<std::string>& command, int core,
                                  const std::string& readyText, int port);

}  // namespace orx::bench
