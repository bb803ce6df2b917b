// A serial line that two threads may write to, with the lens motors at its far end.
#pragma once

#include <atomic>
#include <span>
#include <string>
#include <string_view>
#include <thread>

#include "core/Time.h"
#include "serial/SerialPort.h"

namespace orx::test {

/// Where the motor of an axis really is. It has no end stop: a step that should not have been sent
/// shows, wherever the motor is.
struct Motor {
    std::string_view stepUp;
    std::string_view stepDown;
    std::string_view reset;
    std::atomic<int> place = 0;
    std::atomic<unsigned> steps = 0;  ///< taken so far, up and down

    void take(std::string_view bytes) {
        if (bytes == reset) {
            place = 0;
        } else if (bytes == stepUp || bytes == stepDown) {
            place += bytes == stepUp ? 1 : -1;
            ++steps;
        }
    }
};

class ThreadedLine final : public SerialPort {
  public:
    ThreadedLine(Motor& zoomMotor, Motor& focusMotor) : zoom(zoomMotor), focus(focusMotor) {}

    int open(const std::string& /*device*/) override { return 3; }
    void setAttributes(const termios& /*attributes*/) override {}
    ssize_t write(std::string_view bytes) override {
        zoom.take(bytes);
        focus.take(bytes);
        return static_cast<ssize_t>(bytes.size());
    }
    void drain() override {}
    ssize_t read(std::span<char> /*buffer*/) override { return 0; }

  private:
    Motor& zoom;
    Motor& focus;
};

/// Sleeps that only let other threads have their turn.
class YieldingTime final : public Time {
  public:
    void sleepMs(int /*milliseconds*/) override { std::this_thread::yield(); }
    timeval now() override { return {}; }
};

}  // namespace orx::test
