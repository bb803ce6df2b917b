// waker
//
// A thread that wakes 20 times a second and does nothing.
#include <ctime>

#include "limits/Floor.h"

int main() {
    constexpr timespec pause{0, 50'000'000};
    orx::bench::printLine("ready");
    for (;;)
        ::nanosleep(&pause, nullptr);
}
