// How results name times, and words in a row. Pure functions: any thread may call them.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace orx::orxctl {

/// "2 s", "0.5 s"
[[nodiscard]] std::string secondsText(std::chrono::milliseconds time);

/// "0.21 ms", "34.5 ms", "1200 ms": three digits that mean something
[[nodiscard]] std::string millisecondsText(double milliseconds);

/// The words in their order with `between` between them.
[[nodiscard]] std::string joined(const std::vector<std::string>& words, std::string_view between);

}  // namespace orx::orxctl
