// The simulator's time: counted from its start, given to everything that needs it, so that a test
// can let time pass at will.
#pragma once

#include <chrono>

namespace orx::orxsim {

using Instant = std::chrono::nanoseconds;

}  // namespace orx::orxsim
