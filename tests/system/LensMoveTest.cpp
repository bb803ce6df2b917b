// Absolute positions: the axis is referenced, then walked to its target in single steps.
#include <ostream>

#include "system/harness/LensStory.h"

namespace orx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LensMove : public LensStory {};

TEST_F(LensMove, ReferencesTheAxisAndStepsToItsTarget) {
    startLens(motorModel());
    EXPECT_EQ(axes(), "IDLE; zoom: undefined focus: undefined");
    send("ZOOMX 3");
    waitForPositions("3/2000", "undefined");
    EXPECT_EQ(line.written(), "zrz+z+z+");
    EXPECT_THAT(lensLog(), ElementsAre("- absolute zoom: moving to position 3/2000 (+3 steps)"));
    EXPECT_THAT(daemon->lines(),
                testing::Contains("- absolute zoom: moving to position 3/2000 (+3 steps)"));
}

TEST_F(LensMove, DoesNotReferenceAnAxisAgain) {
    startLens(motorModel());
    send("FOCUSX 4");
    waitForPositions("undefined", "4/100");
    send("FOCUSX 1");
    waitForPositions("undefined", "1/100");
    EXPECT_EQ(line.written(), "frf+f+f+f+f-f-f-");
    EXPECT_THAT(lensLog(), ElementsAre("- absolute focus: moving to position 4/100 (+4 steps)",
                                       "- absolute focus: moving to position 1/100 (-3 steps)"));
}

TEST_F(LensMove, TakesAPositionInPartsOfTheRange) {
    installation.writeLensMemory("zoommax = 8\n");
    startWith(motorModel());
    send("ZOOM 65536");
    waitForPositions("8/8", "undefined");
    send("ZOOM 32768");
    waitForPositions("4/8", "undefined");
    send("ZOOM -1");
    waitForPositions("0/8", "undefined");
    EXPECT_EQ(line.written(), "zrz+z+z+z+z+z+z+z+z-z-z-z-z-z-z-z-");
}

TEST_F(LensMove, StaysWithinTheRange) {
    installation.writeLensMemory("zoommin = 2\nzoommax = 10\n");
    startWith(motorModel(), "abszoom.reducemax = 50%\n");
    send("ZOOMX 99");
    waitForPositions("5/5", "undefined");
    send("ZOOMX 0");
    waitForPositions("2/5", "undefined");
    EXPECT_EQ(line.written(), "zrz+z+z+z+z+z-z-z-");
}

TEST_F(LensMove, NeedsARange) {
    startWith(motorModel());
    send("ZOOMX 5\nFOCUS 65536\nOVERRIDEZOPOS 3");
    waitUntilExecuted();
    EXPECT_EQ(axes(), "IDLE; zoom: undefined focus: undefined");
    EXPECT_EQ(quit(), "exit status 0");
    EXPECT_EQ(line.written(), "");
}

TEST_F(LensMove, StepsTheTargetOfAReferencedAxis) {
    startLens(motorModel());
    send("OVERRIDEZOPOS 10\nOVERRIDEFOPOS 100\nAZ+\nAF+");
    waitUntilExecuted();
    line.waitFor("z+");
    waitForPositions("11/2000", "100/100");
    send("AF-");
    line.waitFor("z+f-");
    waitForPositions("11/2000", "99/100");
}

TEST_F(LensMove, PassesTheStepsOfAnUnreferencedAxisOn) {
    startLens(motorModel());
    send("AZ+\nAZ-\nAF-");
    waitUntilExecuted();
    EXPECT_EQ(line.written(), "z+z-f-");
    EXPECT_EQ(axes(), "IDLE; zoom: undefined focus: undefined");
    EXPECT_THAT(lensLog(), IsEmpty());
}

TEST_F(LensMove, IsShownInTheStatusStepByStep) {
    startAnsweredLens(motorModel());
    send("OVERRIDEZOPOS 0\nZOOMX 2");
    line.waitFor("z+");
    EXPECT_EQ(status(), "BUSY; zoom: 1/2000>2 focus: undefined;HELO \n");
    line.answer(1);
    line.waitFor("z+z+");
    EXPECT_EQ(status(), "BUSY; zoom: 2/2000 focus: undefined;HELO \n");
    line.answer(1);
    waitForPositions("2/2000", "undefined");
}

TEST_F(LensMove, TakesANewTargetAtItsNextStep) {
    startAnsweredLens(motorModel());
    send("OVERRIDEZOPOS 0\nZOOMX 1000");
    line.waitFor("z+");
    line.answer(1);
    line.waitFor("z+z+");
    send("ZOOMX 0");
    waitUntilExecuted();
    EXPECT_EQ(axes(), "BUSY; zoom: 2/2000>0 focus: undefined");
    line.answer(1);
    line.waitFor("z+z+z-");
    line.answer(1);
    line.waitFor("z+z+z-z-");
    line.answer(1);
    waitForPositions("0/2000", "undefined");
    EXPECT_EQ(line.written(), "z+z+z-z-");
    EXPECT_THAT(lensLog(),
                ElementsAre("- absolute zoom: moving to position 1000/2000 (+1000 steps)",
                            "- absolute zoom: moving to position 0/2000 (-2 steps)"));
}

TEST_F(LensMove, RunsToItsEndBeforeTheOtherAxisMoves) {
    startAnsweredLens(motorModel());
    send("OVERRIDEZOPOS 0\nOVERRIDEFOPOS 7\nZOOMX 2");
    line.waitFor("z+");
    send("FOCUSX 5");
    waitUntilExecuted();
    EXPECT_EQ(axes(), "BUSY; zoom: 1/2000>2 focus: 7/100>5");
    line.answer(4);
    waitForPositions("2/2000", "5/100");
    EXPECT_EQ(line.written(), "z+z+f-f-");
}

TEST_F(LensMove, IsEndedByAReset) {
    startAnsweredLens(motorModel());
    send("OVERRIDEZOPOS 0\nZOOMX 1000");
    line.waitFor("z+");
    send("ZOOMRESET");
    line.waitFor("z+zr");
    EXPECT_EQ(axes(), "BUSY; zoom: resetting>0 focus: undefined");
    line.answer(2);
    waitForPositions("0/2000", "undefined");
    send("ZOOMX 2");
    line.waitFor("z+zrz+");
    line.answer(2);
    waitForPositions("2/2000", "undefined");
    EXPECT_EQ(line.written(), "z+zrz+z+");
}

TEST_F(LensMove, IsEndedByQuitAtItsNextStep) {
    startAnsweredLens(motorModel());
    send("OVERRIDEZOPOS 0\nZOOMX 1000");
    line.waitFor("z+");
    send("QUIT");
    daemon->waitForLine("[CMDQ] stop.");
    line.answer(1);
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
    EXPECT_EQ(line.written(), "z+");
    EXPECT_THAT(daemon->lines(), testing::Contains("[PROJCTRL] stop."));
    EXPECT_EQ(installation.log().front(), "-- ORX logging end --");
}

TEST_F(LensMove, IsEndedByRestartAtItsNextStep) {
    startAnsweredLens(motorModel(), "abszoom.lockinmode = 3\n");
    const auto place = daemon->place();
    send("OVERRIDEZOPOS 0\nZOOMX 1000");
    line.waitFor("z+");
    send("RESTART");
    daemon->waitForLine("[CMDQ] stop.", place);
    line.answer(1);
    daemon->waitForLine("[CMDQ] start", place);
    EXPECT_EQ(status(), "IDLE; zoom: undefined focus: undefined;HELO \n");
    EXPECT_EQ(line.written(), "z+");
}

struct LockIn {
    int mode;
    std::string afterUp;
    std::string afterDown;
};

/// Names the test in lists.
void PrintTo(const LockIn& lockIn, std::ostream* out) {
    *out << "mode " << lockIn.mode;
}

class LensLockIn : public LensStory, public testing::WithParamInterface<LockIn> {};

INSTANTIATE_TEST_SUITE_P(Modes, LensLockIn,
                         testing::Values(LockIn{1, "z+z-", ""}, LockIn{2, "", "z-z+"},
                                         LockIn{3, "z+z-", "z+z-"}, LockIn{4, "z-z+", "z-z+"},
                                         LockIn{5, "z+z-", "z-z+"}, LockIn{6, "z-z+", "z+z-"},
                                         LockIn{7, "", ""}),
                         [](const auto& test) { return std::to_string(test.param.mode); });

TEST_P(LensLockIn, FollowsTheMove) {
    const auto& [mode, afterUp, afterDown] = GetParam();
    startLens(motorModel(), "abszoom.lockinmode = " + std::to_string(mode) + "\n");
    send("OVERRIDEZOPOS 10\nZOOMX 12");
    waitForPositions("12/2000", "undefined");
    send("ZOOMX 10");
    waitForPositions("10/2000", "undefined");
    EXPECT_EQ(line.written(), "z+z+" + afterUp + "z-z-" + afterDown);
    const auto lockIn = "- absolute zoom: locking in (mode " + std::to_string(mode) + ")";
    EXPECT_THAT(lensLog(),
                ElementsAre("- absolute zoom: moving to position 12/2000 (+2 steps)", lockIn,
                            "- absolute zoom: moving to position 10/2000 (-2 steps)", lockIn));
}

TEST_F(LensMove, LocksInOnlyWithinTheRange) {
    startLens(motorModel(), "abszoom.lockinmode = 5\n");
    send("OVERRIDEZOPOS 1998\nZOOMX 2000");
    waitForPositions("2000/2000", "undefined");
    send("OVERRIDEZOPOS 2\nZOOMX 0");
    waitForPositions("0/2000", "undefined");
    EXPECT_EQ(line.written(), "z+z+z-z-");
}

}  // namespace
}  // namespace orx::test
