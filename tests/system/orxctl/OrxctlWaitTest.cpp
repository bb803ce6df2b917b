// Waiting for the lens: when it ends, and how it is shown on a terminal.
#include <csignal>

#include "system/orxctl/OrxctlStory.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::HasSubstr;

class OrxctlWait : public OrxctlStory {
  protected:
    /// A lens at zoom 0 where every step waits for an answer.
    void startAtZero() {
        startAnsweredLens(motorModel());
        send("OVERRIDEZOPOS 0");
        waitForPositions("0/2000", "undefined");
    }
};

TEST_F(OrxctlWait, GoesOnUntilTheLastStepHasBeenMade) {
    startAtZero();
    Orxctl orxctl(toDaemon("ZOOMX 2 --wait"));
    line.waitFor("z+");
    expectGoesOn(orxctl);
    line.answer(1);
    line.waitFor("z+z+");
    EXPECT_EQ(status(), "BUSY; zoom: 2/2000 focus: undefined;HELO \n");
    expectGoesOn(orxctl);
    line.answer(1);
    EXPECT_EQ(orxctl.waitForEnd(), done());
}

TEST_F(OrxctlWait, GoesOnThroughTheResetsOfAMemorySlot) {
    installation.writeLensMemory("zoommax = 2000\nfocusmax = 100\nmem = 3:2;1,\n");
    auto model = motorModel();
    model.line.timeout = waitsForAnswer;
    startWith(model);
    Orxctl orxctl(toDaemon("MEMLOAD 3 --wait"));
    std::string bytes;
    for (const auto* const command : {"zr", "fr", "z+", "f+", "f+"}) {
        bytes += command;
        line.waitFor(bytes);
        expectGoesOn(orxctl);
        line.answer(1);
    }
    EXPECT_EQ(orxctl.waitForEnd(), done());
    EXPECT_EQ(axes(), "IDLE; zoom: 1/2000 focus: 2/100");
}

TEST_F(OrxctlWait, IsOverAtOnceWhereNothingMoves) {
    startWith(motorModel());
    EXPECT_EQ(call("wait"), done());
    EXPECT_EQ(call("ON --wait"), done());
}

TEST_F(OrxctlWait, LastsUntilTheDaemonIsBackFromARestart) {
    startWith(motorModel());
    const auto place = daemon->place();
    EXPECT_EQ(call("RESTART --wait"), done());
    EXPECT_THAT(daemon->lines(place), Contains(HasSubstr("start, waiting for commands")));
}

TEST_F(OrxctlWait, CanBeCalledForByItself) {
    startAtZero();
    send("ZOOMX 1");
    line.waitFor("z+");
    Orxctl orxctl(toDaemon("wait"));
    expectGoesOn(orxctl);
    line.answer(1);
    EXPECT_EQ(orxctl.waitForEnd(), done());
}

TEST_F(OrxctlWait, EndsAtItsTimeLimit) {
    startAtZero();
    EXPECT_EQ(call("ZOOMX 2 --wait --timeout 1"), failure(3, "not at rest within 1 s"));
    EXPECT_EQ(call("wait --timeout 0.5"), failure(3, "not at rest within 0.5 s"));
    line.waitFor("z+");
    line.answer(2);
}

/// Without a reset of its own the axis stays unreferenced behind its calibration, on its way to
/// where it was before, and never moves.
TEST_F(OrxctlWait, EndsThoughAnAxisIsOnItsWayForEver) {
    auto model = motorModel();
    std::erase_if(model.commands, [](const auto& entry) { return entry.first == "ZOOMRESET"; });
    startLens(model);
    send("OVERRIDEZOPOS 10\nZOCALSTART\nAZ+\nZOCALEND");
    waitForPositions("11/11>10", "undefined");
    EXPECT_EQ(call("wait --timeout 0.5"), failure(3, "not at rest within 0.5 s"));
    EXPECT_EQ(call("ON --wait --timeout 0.5"), failure(3, "not at rest within 0.5 s"));
}

TEST_F(OrxctlWait, EndsWhereTheDaemonDies) {
    startAtZero();
    Orxctl orxctl("ZOOMX 2 --wait -H " + controlAddress());
    line.waitFor("z+");
    daemon->signal(SIGKILL);
    EXPECT_EQ(daemon->waitForEnd(), "signal 9");
    const auto result = orxctl.waitForEnd();
    EXPECT_EQ(result.ending, "exit status 2");
    EXPECT_EQ(result.errors, "orxctl: " + controlAddress() + ": no answer\n");
}

class OrxctlTerminal : public OrxctlWait {
  protected:
    [[nodiscard]] Surroundings terminal() const { return {.onTerminal = true}; }
};

/// Takes the line away and leaves the cursor at its start.
const std::string cleared = "\r\033[K";

TEST_F(OrxctlTerminal, ShowsABarThatIsGoneInTheEnd) {
    startAtZero();
    Orxctl orxctl(toDaemon("ZOOMX 4 --wait"), terminal());
    line.waitFor("z+");
    const auto first = orxctl.waitForOutput("1/2000>4");
    line.answer(1);
    const auto bar = orxctl.waitForOutput("zoom [#", first);
    const auto second = orxctl.waitForOutput("] 2/2000>4  focus undefined", bar);
    line.answer(3);
    orxctl.waitForOutput("4/2000", second);
    const auto result = orxctl.waitForEnd();
    EXPECT_EQ(result.ending, "exit status 0");
    EXPECT_EQ(result.output.find('\n'), std::string::npos);
    EXPECT_TRUE(result.output.ends_with(cleared)) << result.output;
}

TEST_F(OrxctlTerminal, ShowsOfSeveralDaemonsHowManyAreAtRest) {
    startAtZero();
    Proxy idle{controlPort + 1};
    Installation other;
    other.writeDefinitions(define({motorModel()}));
    other.writeConfiguration("controlchannel = " + controlAddress(1) + "\n");
    const Daemon dumb(other.prefix());
    dumb.waitForLine("[CMDQ] start");
    send("ZOOMX 1");
    line.waitFor("z+");
    Orxctl orxctl(toDaemon("wait -H " + idle.address()), terminal());
    const auto place = orxctl.waitForOutput("1 of 2 at rest");
    line.answer(1);
    orxctl.waitForOutput("2 of 2 at rest", place);
    const auto result = orxctl.waitForEnd();
    EXPECT_EQ(result.ending, "exit status 0");
    EXPECT_NE(result.output.find(cleared + "DAEMON"), std::string::npos) << result.output;
}

TEST_F(OrxctlTerminal, IsLeftAloneWhereNothingIsWaitedFor) {
    startWith(motorModel());
    EXPECT_EQ(resultOf(toDaemon("ON"), terminal()), done());
}

TEST_F(OrxctlTerminal, ShowsAFailureOnALineOfItsOwn) {
    startAtZero();
    const auto result = resultOf(toDaemon("ZOOMX 2 --wait --timeout 1"), terminal());
    EXPECT_TRUE(result.output.ends_with(cleared)) << result.output;
    EXPECT_THAT(result.errors, HasSubstr("not at rest"));
    line.answer(2);
}

}  // namespace
}  // namespace orx::test
