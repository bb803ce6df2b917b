#include "core/Time.h"

#include <ctime>

namespace orx {
namespace {

class SystemTime final : public Time {
  public:
    void sleepMs(int milliseconds) override {
        constexpr int msPerSecond = 1000;
        constexpr long nsPerMs = 1'000'000;
        const timespec duration{milliseconds / msPerSecond, milliseconds % msPerSecond * nsPerMs};
        ::nanosleep(&duration, nullptr);  // refuses a negative duration, which is then no sleep
    }

    timeval now() override {
        timeval moment{};
        ::gettimeofday(&moment, nullptr);
        return moment;
    }
};

}  // namespace

Time& systemTime() noexcept {
    static SystemTime time;
    return time;
}

void sleepMs(int milliseconds) {
    systemTime().sleepMs(milliseconds);
}

}  // namespace orx
