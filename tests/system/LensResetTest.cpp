// References at the end stop: by the model's own command, by fast steps, or not at all.
#include "system/harness/LensStory.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class LensReset : public LensStory {};

TEST_F(LensReset, IsOneCommandWhereTheModelHasIt) {
    startLens(motorModel());
    send("ZOOMRESET\nFOCUSRESET");
    waitForStatus("IDLE; zoom: 0/2000 focus: 0/100;HELO \n");
    EXPECT_EQ(line.written(), "zrfr");
    EXPECT_THAT(lensLog(), IsEmpty());
}

TEST_F(LensReset, IsDoneByTheFastestStepsOfAModelWithoutItsOwn) {
    startLens(stepperModel(), "abszoom.resetsteps = 3\nabsfocus.resetsteps = 2\n");
    send("ZOOMRESET\nFOCUSRESET");
    waitForStatus("IDLE; zoom: 0/2000 focus: 0/100;HELO \n");
    EXPECT_EQ(line.written(), "Z<Z<Z<F<F<");
    EXPECT_THAT(lensLog(), ElementsAre("- resetting absolute zoom (3 fast steps)",
                                       "- resetting absolute focus (2 fast steps)"));
    auto place = daemon->waitForLine("- resetting absolute zoom (3 fast steps)");
    place = daemon->waitForLine("  zoom reset done.", place);
    place = daemon->waitForLine("- resetting absolute focus (2 fast steps)", place);
    daemon->waitForLine("  focus reset done.", place);
}

TEST_F(LensReset, Takes50FastStepsUnlessToldOtherwise) {
    startLens(stepperModel());
    send("ZOOMRESET");
    waitForPositions("0/2000", "undefined");
    std::string fastSteps;
    for (int step = 0; step < 50; ++step)
        fastSteps += "Z<";
    EXPECT_EQ(line.written(), fastSteps);
}

TEST_F(LensReset, TakesTheNumberOfFastStepsThatWasSetLast) {
    startLens(stepperModel());
    send("SETZORSTSTEPS 2\nSETFORSTSTEPS 1\nSETZORSTSTEPS\nLENSRESET");
    waitForPositions("0/2000", "0/100");
    EXPECT_EQ(line.written(), "Z<Z<F<");
}

TEST_F(LensReset, IsDoneWithoutAnyStepToo) {
    startLens(stepperModel());
    send("SETZORSTSTEPS 0\nZOOMRESET");
    waitForPositions("0/2000", "undefined");
    EXPECT_EQ(line.written(), "");
    EXPECT_THAT(lensLog(), ElementsAre("- resetting absolute zoom (0 fast steps)"));
    EXPECT_THAT(daemon->lines(), Contains("  zoom reset done."));
}

TEST_F(LensReset, TellsWhereTheModelOffersNothingForIt) {
    startLens(fixedModel());
    send("LENSRESET\nZOOMX 7");
    waitUntilExecuted();
    EXPECT_EQ(status(), "IDLE; zoom: undefined focus: undefined;HELO \n");
    const std::string zoom = "  zoom reset not possible, no supported command?!";
    const std::string focus = "  focus reset not possible, no supported command?!";
    EXPECT_THAT(lensLog(), ElementsAre(zoom, focus, zoom));
    EXPECT_THAT(daemon->lines(), Contains(zoom).Times(2));
    EXPECT_THAT(daemon->lines(), Contains(focus).Times(1));
    EXPECT_EQ(line.written(), "");
}

TEST_F(LensReset, OfBothAxesShowsBothAtOnceAndDoesOneAfterTheOther) {
    startAnsweredLens(motorModel());
    send("LENSRESET");
    line.waitFor("zr");
    EXPECT_EQ(status(), "BUSY; zoom: resetting>0 focus: resetting>0;HELO \n");
    EXPECT_EQ(line.written(), "zr");
    line.answer(1);
    line.waitFor("zrfr");
    EXPECT_EQ(axes(), "BUSY; zoom: 0/2000 focus: resetting>0");
    line.answer(1);
    waitForPositions("0/2000", "0/100");
}

TEST_F(LensReset, ShowsThePositionThatFollows) {
    startAnsweredLens(motorModel());
    send("FOCUSX 9999");
    line.waitFor("fr");
    EXPECT_EQ(axes(), "BUSY; zoom: undefined focus: resetting>100");
    line.answer(1 + 100);  // the reset and the walk that follows
    waitForPositions("undefined", "100/100");
}

TEST_F(LensReset, ByFastStepsEndsAMove) {
    startAnsweredLens(stepperModel(), "abszoom.resetsteps = 2\n");
    send("OVERRIDEZOPOS 5\nZOOMX 1000");
    line.waitFor("z+");
    send("ZOOMRESET");
    line.waitFor("z+Z<");
    EXPECT_EQ(axes(), "BUSY; zoom: resetting>0 focus: undefined");
    line.answer(3);
    waitForPositions("0/2000", "undefined");
    EXPECT_EQ(line.written(), "z+Z<Z<");
}

TEST_F(LensReset, LeavesAnAxisWithoutRangeUnreferenced) {
    startWith(motorModel());
    send("ZOOMRESET");
    waitUntilExecuted();
    EXPECT_EQ(axes(), "IDLE; zoom: 0/0 focus: undefined");
    send("AZ+");
    waitUntilExecuted();
    EXPECT_EQ(line.written(), "zrz+");
    EXPECT_EQ(axes(), "IDLE; zoom: 0/0 focus: undefined");
}

}  // namespace
}  // namespace orx::test
