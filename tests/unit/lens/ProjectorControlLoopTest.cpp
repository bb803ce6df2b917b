// The life of the projector control: its axes in the status, its loop, and the ways to end it.
#include <stdexcept>

#include "unit/lens/ControlBench.h"

namespace orx::test {
namespace {

class ProjectorControlLoop : public ControlBench {
  protected:
    /// Two axes, both with a way to go.
    void buildWithTargets(int zoom, int focus) {
        build();
        placeAt(0, 0);
        execute("ZOOMX " + std::to_string(zoom));
        execute("FOCUSX " + std::to_string(focus));
    }
};

TEST_F(ProjectorControlLoop, HasItsAxesInTheStatusFromTheBeginning) {
    build();
    EXPECT_EQ(Status::statusReply(), "IDLE; zoom: undefined focus: undefined;\n");
    EXPECT_TRUE(control->isAlive());
}

TEST_F(ProjectorControlLoop, LeavesAxesInTheStatusThatOutliveIt) {
    build();
    placeAt(100, 200);
    control.reset();
    EXPECT_EQ(Status::statusReply(), "IDLE; zoom: 100/2000 focus: 200/1000;\n");
}

TEST_F(ProjectorControlLoop, LoadsTheLensMemoryBeforeItBegins) {
    const auto model = modelKnowing({});
    writeMemory("zoommax = 2000\nmem = 1:2;3,\n");
    EXPECT_EQ(outputOf([&] { buildOn(model, "abszoom.reducemax = 10%\n"); }),
              "[LENSMEM] load lens config :: zoom: 0-1800 (reduced from 2000) "
              "focus: 0-0 (reduced from 0)\n"
              "    lensmem slot 1: focus=2 zoom=3\n");
}

TEST_F(ProjectorControlLoop, IsNotBuiltOnAMalformedLensMemory) {
    writeMemory("zoommax = wide\n");
    EXPECT_THAT([this] { build(); }, ThrowsStoi<std::invalid_argument>());
    EXPECT_EQ(Status::statusReply(), "IDLE;;\n") << "no axis in the status";
}

TEST_F(ProjectorControlLoop, IsNotBuiltOnMalformedMotionParameters) {
    const auto model = modelKnowing({});
    EXPECT_THAT([&] { buildOn(model, "absfocus.lockinmode = x\n"); },
                ThrowsStoi<std::invalid_argument>());
}

TEST_F(ProjectorControlLoop, SaysWhenItStartsAndStops) {
    build();
    EXPECT_EQ(runUntilSleep(1), "[PROJCTRL] start\n[PROJCTRL] stop.\n");
    EXPECT_THAT(logged(), testing::IsEmpty());
}

TEST_F(ProjectorControlLoop, SleepsAheadOfEveryPass) {
    build();
    runUntilSleep(4);
    EXPECT_EQ(loopTime.sleeps, std::vector<int>({50, 50, 50, 50}));
}

TEST_F(ProjectorControlLoop, LivesUntilItHasStopped) {
    build();
    std::vector<bool> seen;
    run([&](std::size_t number) {
        seen.push_back(control->isAlive());
        if (number == 2) control->stop();
        seen.push_back(control->isAlive());
    });
    EXPECT_THAT(seen, testing::SizeIs(4));
    EXPECT_THAT(seen, testing::Each(true));
    EXPECT_FALSE(control->isAlive());
}

TEST_F(ProjectorControlLoop, DoesNotBeginAPassAfterAStop) {
    buildWithTargets(3, 2);
    for (const std::string command : {"QUIT", "RESTART"}) {
        SCOPED_TRACE(command);
        execute(command);
        EXPECT_TRUE(control->isAlive());
        EXPECT_EQ(run(), "[PROJCTRL] start\n[PROJCTRL] stop.\n");
        EXPECT_THAT(loopTime.sleeps, testing::IsEmpty());
        EXPECT_THAT(sent(), testing::IsEmpty());
        buildWithTargets(3, 2);
    }
    control->stop();
    run();
    EXPECT_THAT(loopTime.sleeps, testing::IsEmpty());
    EXPECT_THAT(sent(), testing::IsEmpty());
}

TEST_F(ProjectorControlLoop, MovesNothingBeforeItsFirstSleep) {
    buildWithTargets(3, 2);
    std::size_t sentBefore = line.writes.size() + 1;
    run([&](std::size_t number) {
        if (number == 1) sentBefore = line.writes.size();
        if (number == 2) control->stop();
    });
    EXPECT_EQ(sentBefore, 0U);
    EXPECT_THAT(sent(), testing::SizeIs(5));
}

TEST_F(ProjectorControlLoop, LetsTheZoomArriveBeforeTheFocusMoves) {
    buildWithTargets(3, 2);
    runUntilSleep(2);
    EXPECT_EQ(sent(), Lines({"AZ+", "AZ+", "AZ+", "AF+", "AF+"}));
    EXPECT_EQ(status(), "IDLE; zoom: 3/2000 focus: 2/1000");
}

TEST_F(ProjectorControlLoop, TakesUpNewTargetsInItsNextPass) {
    buildWithTargets(1, 1);
    run([this](std::size_t number) {
        if (number == 2) execute("ZOOMX 2");
        if (number == 3) execute("QUIT");
    });
    EXPECT_EQ(sent(), Lines({"AZ+", "AF+", "AZ+"}));
}

TEST_F(ProjectorControlLoop, IsBusyWhileAnAxisMoves) {
    buildWithTargets(2, 0);
    Lines seen;
    line.onWrite = [&](const std::string&) { seen.push_back(status()); };
    runUntilSleep(2);
    EXPECT_EQ(seen,
              Lines({"BUSY; zoom: 1/2000>2 focus: 0/1000", "BUSY; zoom: 2/2000 focus: 0/1000"}));
}

TEST_F(ProjectorControlLoop, SendsNoFurtherStepAfterAQuitInMidMove) {
    for (const std::string command : {"QUIT", "RESTART"}) {
        SCOPED_TRACE(command);
        buildWithTargets(10, 5);
        line.writes.clear();
        loopTime.sleeps.clear();
        atWrite(3, [&] { execute(command); });
        EXPECT_EQ(run(),
                  "[PROJCTRL] start\n"
                  "- absolute zoom: moving to position 10/2000 (+10 steps)\n"
                  "[PROJCTRL] stop.\n");
        EXPECT_EQ(sent(), times(3, "AZ+"));
        EXPECT_EQ(loopTime.sleeps, std::vector<int>{50}) << "ends within the pass";
        EXPECT_FALSE(control->isAlive());
    }
}

TEST_F(ProjectorControlLoop, StopsTheFocusInMidMoveAsWell) {
    buildWithTargets(1, 5);
    atWrite(3, [&] { execute("QUIT"); });
    run();
    EXPECT_EQ(sent(), Lines({"AZ+", "AF+", "AF+"}));
}

}  // namespace
}  // namespace orx::test
