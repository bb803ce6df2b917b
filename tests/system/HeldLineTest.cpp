// A line that takes nothing any more: what waits for it waits without an effort, and nothing of it
// is lost once the line goes on.
#include <algorithm>

#include "system/harness/LensStory.h"
#include "system/harness/Waiting.h"

namespace orx::test {
namespace {

using Threads = std::vector<ThreadFigures>;

/// The main thread, the queue's and the lens's.
constexpr int allButTheListener = 3;
constexpr int allThreads = 4;

/// How many threads have neither run nor woken up between two looks, and sleep.
int countUntouched(const Threads& before, const Threads& after) {
    return static_cast<int>(std::ranges::count_if(before, [&after](const ThreadFigures& thread) {
        return thread.asleep && std::ranges::find(after, thread) != after.end();
    }));
}

/// What the queue has put on the line, once the steps of the lens are left out.
std::string withoutSteps(const std::string& bytes) {
    std::string others;
    for (std::size_t place = 0; place < bytes.size(); ++place) {
        if (bytes.compare(place, 2, "z+") == 0) {
            ++place;
        } else {
            others += bytes[place];
        }
    }
    return others;
}

class HeldLine : public LensStory {
  protected:
    /// The zoom is referenced, and stands at 0.
    void SetUp() override {
        startLens(motorModel());
        send("ZOOMRESET");
        waitForPositions("0/2000", "undefined");
        line.hold();
    }
    void waitUntilAsleep() const {
        waitUntil([this] { return daemon->isAsleep(); },
                  [] { return std::string("the daemon to wait"); });
    }
    /// The log tells of a command just ahead of its write, which then does not come back.
    void waitUntilBlockedIn(const std::string& command) const {
        waitForLog("sending " + command);
        waitUntilAsleep();
    }
    void moveAndSwitchOn() const {
        send("ZOOMX 3");
        waitUntilBlockedIn("z+ [7a 2b]");
        send("ON");
        waitUntilBlockedIn(R"(ON\x0d [4f 4e 0d])");
    }
};

TEST_F(HeldLine, LeavesTheStatusToBeAskedForAtNoCost) {
    constexpr int questions = 500;
    moveAndSwitchOn();
    const auto before = daemon->threads();
    for (int number = 0; number < questions; ++number)
        ASSERT_EQ(status(), "BUSY; zoom: 1/2000>3 focus: undefined;HELO \n");
    EXPECT_GE(countUntouched(before, daemon->threads()), allButTheListener);
    line.resume();
    waitForPositions("3/2000", "undefined");
    waitUntilExecuted();
}

TEST_F(HeldLine, CostsNothingEitherOnceTheListenerWaitsToo) {
    constexpr int looks = 500;
    moveAndSwitchOn();
    send("OFF\nSTATUS");
    waitForLog("src=" + ownAddress() + " cmd=OFF");
    waitUntilAsleep();
    const auto before = daemon->threads();
    int untouched = allThreads;
    for (int look = 0; look < looks; ++look)
        untouched = std::min(untouched, countUntouched(before, daemon->threads()));
    EXPECT_EQ(untouched, allThreads);
    EXPECT_FALSE(client.hasReply());  // the line ahead of it has not been handed over yet
    line.resume();
    EXPECT_THAT(client.receive(), testing::ContainsRegex("zoom: ./2000"));
    waitForPositions("3/2000", "undefined");
    waitUntilExecuted();
}

TEST_F(HeldLine, GoesOnInOrderAndLosesNothing) {
    constexpr int rounds = 100;
    moveAndSwitchOn();
    std::string expected = "zrON\r";
    for (int round = 0; round < rounds; ++round) {
        send("OFF\nPICMUTE\nON");
        expected += "OFF\rPMUTE\rON\r";
    }
    line.resume();
    waitForPositions("3/2000", "undefined");
    waitUntilExecuted();
    const auto written = line.written();
    EXPECT_EQ(withoutSteps(written), expected);
    EXPECT_EQ(written.size(), expected.size() + std::string("z+z+z+").size());
}

TEST_F(HeldLine, HeldTimeAndAgainLosesNothing) {
    constexpr int times = 100;
    line.resume();
    std::string expected = "zr";
    for (int number = 0; number < times; ++number) {
        line.hold();
        send("ON");
        waitUntilBlockedIn(R"(ON\x0d [4f 4e 0d])");
        send("OFF");
        line.resume();
        expected += "ON\rOFF\r";
        line.waitFor(expected);
    }
    waitUntilExecuted();
    EXPECT_EQ(line.written(), expected);
}

}  // namespace
}  // namespace orx::test
