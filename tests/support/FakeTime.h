// A clock that stands until it is moved, and sleeps that cost nothing and are remembered.
#pragma once

#include <functional>
#include <vector>

#include "core/Time.h"

namespace orx::test {

class FakeTime final : public Time {
  public:
    void sleepMs(int milliseconds) override {
        sleeps.push_back(milliseconds);
        if (onSleep) onSleep();
    }
    timeval now() override { return moment; }

    timeval moment{};
    std::vector<int> sleeps;        ///< every sleep asked for, in milliseconds
    std::function<void()> onSleep;  ///< called after each of them
};

}  // namespace orx::test
