// How results name times. Pure functions: any thread may call them.
#pragma once

#include <chrono>
#include <string>

namespace orx::orxctl {

/// "2 s", "0.5 s"
[[nodiscard]] std::string secondsText(std::chrono::milliseconds time);

/// "0.21 ms", "34.5 ms", "1200 ms": three digits that mean something
[[nodiscard]] std::string millisecondsText(double milliseconds);

}  // namespace orx::orxctl
