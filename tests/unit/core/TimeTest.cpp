#include <chrono>
#include <limits>
#include <sys/time.h>

#include <gtest/gtest.h>

#include "core/Time.h"

namespace orx::test {
namespace {

using std::chrono::milliseconds;

template <typename Action>
std::chrono::steady_clock::duration durationOf(Action action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::steady_clock::now() - start;
}

TEST(SystemTime, IsTheWallClock) {
    timeval before{};
    timeval after{};
    ::gettimeofday(&before, nullptr);
    const auto now = systemTime().now();
    ::gettimeofday(&after, nullptr);
    EXPECT_FALSE(timercmp(&now, &before, <));
    EXPECT_FALSE(timercmp(&now, &after, >));
}

TEST(SystemTime, IsOneForTheProcess) {
    EXPECT_EQ(&systemTime(), &systemTime());
}

TEST(Sleep, LastsAsLongAsAsked) {
    EXPECT_GE(durationOf([] { sleepMs(20); }), milliseconds(20));
    EXPECT_GE(durationOf([] { systemTime().sleepMs(20); }), milliseconds(20));
}

TEST(Sleep, MayLastLongerThanASecond) {
    EXPECT_GE(durationOf([] { sleepMs(1001); }), milliseconds(1001));
}

TEST(Sleep, DoesNotHappenForANegativeTime) {
    const auto patience = std::chrono::seconds(10);
    for (const int negative : {-1, -20, -999, -1000, -1001, std::numeric_limits<int>::min()})
        EXPECT_LT(durationOf([negative] { sleepMs(negative); }), patience) << negative;
}

TEST(Sleep, EndsAtOnceForNoTime) {
    EXPECT_LT(durationOf([] { sleepMs(0); }), std::chrono::seconds(10));
}

}  // namespace
}  // namespace orx::test
