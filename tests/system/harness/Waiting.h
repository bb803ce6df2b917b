// How long a test waits for what must happen. The limit is met only where something is broken.
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace orx::test {

/// A minute, or the seconds in ORX_TEST_PATIENCE: a daemon in a wrapper can be very slow.
extern const std::chrono::seconds patience;

/// Patience as poll counts it.
extern const int patienceMs;

/// Asks `condition` until it holds. Throws, with what `describe` gives in the end, when patience is
/// at its end.
void waitUntil(const std::function<bool()>& condition,
               const std::function<std::string()>& describe);

}  // namespace orx::test
