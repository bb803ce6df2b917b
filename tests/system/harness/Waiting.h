// How long a test waits for what must happen. The limit is met only where something is broken.
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace orx::test {

inline constexpr std::chrono::seconds patience{60};

/// Patience as poll counts it.
inline constexpr int patienceMs = std::chrono::milliseconds(patience).count();

/// Asks `condition` until it holds. Throws, with what `describe` gives in the end, when patience is
/// at its end.
void waitUntil(const std::function<bool()>& condition,
               const std::function<std::string()>& describe);

}  // namespace orx::test
