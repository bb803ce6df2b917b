// The time that measures.
#pragma once

#include <chrono>

namespace orx::bench {

/// Runs from its construction on.
class Stopwatch {
  public:
    [[nodiscard]] double microseconds() const {
        return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
    }
    [[nodiscard]] double seconds() const { return microseconds() / 1e6; }

  private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point start = Clock::now();
};

}  // namespace orx::bench
