// How the daemon learns the travel of an axis, and what it keeps of it.
#include "system/harness/LensStory.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;

class Calibration : public LensStory {};

TEST_F(Calibration, CountsTheStepsThatTheOperatorJogs) {
    startWith(motorModel(), "abszoom.reducemax = 10%\n");
    send("ZOCALSTART");
    waitUntilExecuted();
    EXPECT_EQ(axes(), "IDLE; zoom: 0 focus: undefined");
    send("AZ-\nAZ+\nAZ+\nAZ-\nAZ+");
    waitUntilExecuted();
    EXPECT_EQ(axes(), "IDLE; zoom: 2 focus: undefined");
    send("AZ+\nAZ+\nAZ+\nAZ+\nAZ+\nAZ+\nAZ+\nAZ+\nZOCALEND");
    waitForStatus("IDLE; zoom: 0/9 focus: undefined;HELO LCU \n");
    EXPECT_EQ(line.written(), "zrz-z+z+z-z+z+z+z+z+z+z+z+z+zr");
    EXPECT_THAT(lensLog(), ElementsAre("- entering zoom calibration mode",
                                       "- exiting zoom calibration mode, new max: 10 steps "
                                       "(determined by advancing)"));
    const auto place = daemon->waitForLine("- entering zoom calibration mode");
    daemon->waitForLine(
        "- exiting zoom calibration mode, new max: 10 steps (determined by advancing)", place);
}

TEST_F(Calibration, WritesTheNewRangeAtOnce) {
    startWith(motorModel(), "abszoom.reducemax = -10%\nabsfocus.reducemax = 3\n");
    send("ZOCALEND 2000");
    waitForPositions("0/1800", "undefined");
    EXPECT_EQ(installation.lensMemory(),
              "focusmax = 0\nfocusmaxreduced = 0\nfocusmin = 0\nfocusreducemaxparam = -3\nmem = \n"
              "zoommax = 2000\nzoommaxreduced = 1800\nzoommin = 0\nzoomreducemaxparam = 10\n\n");
    send("FOCALEND 100");
    waitForPositions("0/1800", "0/97");
    EXPECT_EQ(installation.lensMemory(),
              "focusmax = 100\nfocusmaxreduced = 97\nfocusmin = 0\nfocusreducemaxparam = -3\n"
              "mem = \n"
              "zoommax = 2000\nzoommaxreduced = 1800\nzoommin = 0\nzoomreducemaxparam = 10\n\n");
}

TEST_F(Calibration, TakesAnExplicitTravel) {
    startWith(motorModel());
    send("FOCALSTART\nAF+\nFOCALEND 40");
    waitForPositions("undefined", "0/40");
    EXPECT_EQ(line.written(), "frf+fr");
    EXPECT_THAT(
        lensLog(),
        ElementsAre("- entering focus calibration mode",
                    "- exiting focus calibration mode, new max: 40 steps (explicit input)"));
}

TEST_F(Calibration, TakesTheJoggedTravelWhereTheExplicitOneIsNone) {
    startWith(motorModel());
    send("FOCALSTART\nAF+\nAF+\nFOCALEND 0");
    waitForPositions("undefined", "0/2");
    send("FOCALSTART\nAF+\nFOCALEND -7");
    waitForPositions("undefined", "0/1");
    EXPECT_THAT(lensLog(), Contains("- exiting focus calibration mode, new max: 2 steps "
                                    "(determined by advancing)"));
    EXPECT_THAT(lensLog(), Contains("- exiting focus calibration mode, new max: 1 steps "
                                    "(determined by advancing)"));
}

TEST_F(Calibration, LetsTheAxisGoAnywhereInItsNewRange) {
    startWith(motorModel());
    send("ZOCALSTART\nZOCALEND 5\nZOOMX 4");
    waitForPositions("4/5", "undefined");
    EXPECT_EQ(line.written(), "zrzrz+z+z+z+");
}

TEST_F(Calibration, ForgetsTheOldRangeWhileItRuns) {
    startLens(motorModel());
    send("OVERRIDEZOPOS 300\nZOCALSTART\nOVERRIDEZOPOS 200");
    waitUntilExecuted();
    EXPECT_EQ(axes(), "IDLE; zoom: 0 focus: undefined");
    send("ZOCALEND 7");
    waitForPositions("0/7", "undefined");
}

TEST_F(Calibration, OutlivesARestart) {
    startWith(motorModel(), "abszoom.reducemax = 1\n");
    send("ZOCALEND 5");
    waitForPositions("0/4", "undefined");
    const auto place = daemon->place();
    restart();
    daemon->waitForLine(
        "[LENSMEM] load lens config :: zoom: 0-4 (reduced from 5) focus: 0-0 (reduced from 0)",
        place);
    send("ZOOMX 9");
    waitForPositions("4/4", "undefined");
}

TEST_F(Calibration, KeepsTheSettingsOfTheLensMemoryThatItDoesNotKnow) {
    installation.writeLensMemory("# comment\n\nowner = projection room\nzoommaxreduced = 7\n");
    startWith(motorModel());
    send("ZOCALEND 5");
    waitForPositions("0/5", "undefined");
    EXPECT_EQ(installation.lensMemory(),
              "focusmax = 0\nfocusmaxreduced = 0\nfocusmin = 0\nfocusreducemaxparam = 0\nmem = \n"
              "owner = projection room\n"
              "zoommax = 5\nzoommaxreduced = 5\nzoommin = 0\nzoomreducemaxparam = 0\n\n");
}

}  // namespace
}  // namespace orx::test
