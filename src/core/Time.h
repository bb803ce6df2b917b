// Sleeping and the wall clock, behind an interface so that a test can let time pass at will.
#pragma once

#include <sys/time.h>

namespace orx {

class Time {
  public:
    Time() = default;
    Time(const Time&) = delete;
    Time& operator=(const Time&) = delete;
    virtual ~Time() = default;

    /// Sleeps the calling thread by one sleep request. A negative time does not sleep.
    virtual void sleepMs(int milliseconds) = 0;

    /// The wall clock, in seconds and microseconds since the epoch.
    [[nodiscard]] virtual timeval now() = 0;
};

/// The real clock of the system. Any thread may use it.
[[nodiscard]] Time& systemTime() noexcept;

/// Sleeps on the real clock, as `Time::sleepMs`.
void sleepMs(int milliseconds);

}  // namespace orx
