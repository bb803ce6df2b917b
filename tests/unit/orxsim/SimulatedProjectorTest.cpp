// The projector as a whole: what it does and answers, and when.
#include <gmock/gmock.h>

#include "unit/orxsim/ProjectorBench.h"

namespace orx::orxsim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Behaviour standingAt(int zoom, int focus) {
    Behaviour behaviour;
    behaviour.start = {zoom, focus};
    return behaviour;
}

TEST(SimulatedProjector, standsInTheMiddleAtFirst) {
    const ProjectorBench bench;
    EXPECT_EQ(bench.zoom().motor, 1000);
    EXPECT_EQ(bench.zoom().travel, 2000);
    EXPECT_EQ(bench.focus().motor, 500);
    EXPECT_EQ(bench.focus().travel, 1000);
}

TEST(SimulatedProjector, acknowledgesCommandsAndRefusesAllElse) {
    ProjectorBench bench;
    bench.send("PWR ON\rPWR UP\rZ STEP +\r");
    EXPECT_EQ(bench.answers(), "OK\rERR\rOK\r");
    EXPECT_THAT(bench.commands(), ElementsAre("ON", "?", "AZ+"));
    EXPECT_EQ(bench.projector().totals().commands, 2U);
    EXPECT_EQ(bench.projector().totals().unknown, 1U);
}

TEST(SimulatedProjector, answersWithTheTerminatorOfItsModel) {
    ProjectorBench framed({}, {{"ON", "\x02P1\x03", {}}});
    framed.send("\x02P1\x03");
    EXPECT_EQ(framed.answers(), "OK\x03");
    ProjectorBench without({}, {{"ON", "P1", {}}});
    without.send("P1");
    EXPECT_EQ(without.answers(), "OK\r");
}

TEST(SimulatedProjector, answersAsItIsTold) {
    Behaviour behaviour;
    behaviour.acknowledgement = "ACK";
    behaviour.error = "NAK\n";
    ProjectorBench bench(behaviour);
    bench.send("PWR ON\rX\r");
    EXPECT_EQ(bench.answers(), "ACKNAK\n");
}

TEST(SimulatedProjector, movesOneAxisByEachLensCommand) {
    ProjectorBench bench(standingAt(300, 300));
    const std::vector<std::pair<std::string, std::pair<int, int>>> moves{
        {"Z STEP +\r", {301, 300}}, {"Z STEP -\r", {300, 300}}, {"Z +\r", {305, 300}},
        {"Z +++\r", {405, 300}},    {"Z ---\r", {305, 300}},    {"F STEP -\r", {305, 299}},
        {"F --\r", {305, 279}},     {"Z HOME\r", {0, 279}}};
    for (const auto& [bytes, positions] : moves) {
        bench.send(bytes);
        EXPECT_EQ(bench.zoom().motor, positions.first) << bytes;
        EXPECT_EQ(bench.focus().motor, positions.second) << bytes;
    }
}

TEST(SimulatedProjector, jogsAsFarAsItIsTold) {
    Behaviour behaviour;
    behaviour.jogSteps = {1, 2, 7};
    ProjectorBench bench(behaviour);
    bench.send("Z +++\rF --\r");
    EXPECT_EQ(bench.zoom().motor, 1007);
    EXPECT_EQ(bench.focus().motor, 498);
}

TEST(SimulatedProjector, stopsAJogAtTheEndStop) {
    ProjectorBench bench(standingAt(1950, 0));
    bench.send("Z +++\r");
    const auto reports = bench.reports();
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_TRUE(reports[0].metEndStop);
    EXPECT_EQ(bench.zoom().motor, 2000);
    EXPECT_THAT(bench.zoom().contacts, ElementsAre(0, 1, 0));
}

TEST(SimulatedProjector, tellsContactsOfStepsFromThoseOfResets) {
    ProjectorBench bench(standingAt(2, 0));
    bench.send("Z HOME\rZ STEP -\rZ STEP +\rF STEP -\r");
    std::vector<bool> met;
    for (const auto& report : bench.reports())
        met.push_back(report.metEndStop);
    EXPECT_THAT(met, ElementsAre(true, true, false, true));
    EXPECT_THAT(bench.zoom().contacts, ElementsAre(1, 0, 1));
    EXPECT_THAT(bench.focus().contacts, ElementsAre(1, 0, 0));
}

TEST(SimulatedProjector, reportsTheAxesAsEachCommandLeavesThem) {
    ProjectorBench bench(standingAt(5, 5));
    bench.send("Z STEP +\rZ STEP +\rF STEP -\r");
    const auto reports = bench.reports();
    ASSERT_EQ(reports.size(), 3U);
    EXPECT_EQ(reports[0].axes[0].motor, 6);
    EXPECT_EQ(reports[1].axes[0].motor, 7);
    EXPECT_EQ(reports[1].axes[1].motor, 5);
    EXPECT_EQ(reports[2].axes[1].motor, 4);
}

TEST(SimulatedProjector, keepsStateAndValues) {
    ProjectorBench bench;
    bench.send("PWR ON\rSOURCE 07\rPATTERN 03,00ff00\r");
    const auto& state = bench.projector().state();
    EXPECT_TRUE(state.switches()[0].on);
    EXPECT_EQ(state.input(), "7");
    EXPECT_THAT(state.values().at("TEST"), ElementsAre("3", "65280"));
}

TEST(SimulatedProjector, changesNothingByWhatItRefuses) {
    ProjectorBench bench;
    bench.send("SOURCE 7\rSOURCE \r");
    EXPECT_EQ(bench.projector().state().input(), "");
    EXPECT_EQ(bench.answers(), "ERR\rERR\r");
}

TEST(SimulatedProjector, takesItsTimeForEachMotorStep) {
    Behaviour behaviour;
    behaviour.stepTime = milliseconds(10);
    ProjectorBench bench(behaviour);
    bench.send("Z +\r");
    EXPECT_EQ(bench.zoom().motor, 1000);
    bench.pass(milliseconds(10));
    EXPECT_EQ(bench.zoom().motor, 1001);
    bench.pass(milliseconds(39));
    EXPECT_EQ(bench.zoom().motor, 1004);
    EXPECT_EQ(bench.answers(), "");
    EXPECT_THAT(bench.commands(), IsEmpty());
    bench.pass(milliseconds(1));
    EXPECT_EQ(bench.zoom().motor, 1005);
    EXPECT_EQ(bench.answers(), "OK\r");
    EXPECT_THAT(bench.commands(), ElementsAre("Z+"));
}

TEST(SimulatedProjector, keepsWhatComesInWhileItMoves) {
    Behaviour behaviour;
    behaviour.stepTime = milliseconds(10);
    ProjectorBench bench(behaviour);
    bench.send("Z STEP +\r");
    bench.send("PWR ON\rF STEP -\r");
    EXPECT_FALSE(bench.projector().state().switches()[0].on);
    bench.pass(milliseconds(10));
    EXPECT_THAT(bench.commands(), ElementsAre("AZ+", "ON"));
    bench.pass(milliseconds(10));
    EXPECT_THAT(bench.commands(), ElementsAre("AF-"));
    EXPECT_EQ(bench.projector().nextDue(), milliseconds(10));  // answers not taken yet
}

/// However late it is called, everything happens at its own instant.
TEST(SimulatedProjector, doesTheSameWhenItIsCalledLate) {
    Behaviour behaviour;
    behaviour.stepTime = milliseconds(3);
    behaviour.answerDelay = milliseconds(5);
    ProjectorBench often(behaviour);
    ProjectorBench late(behaviour);
    for (auto* bench : {&often, &late})
        bench->send("Z +\rF --\rPWR ON\r");
    for (int ms = 0; ms < 200; ++ms)
        often.pass(milliseconds(1));
    late.pass(milliseconds(200));
    EXPECT_EQ(often.commands(), late.commands());
    EXPECT_EQ(often.answers(), late.answers());
    EXPECT_EQ(often.zoom().motor, late.zoom().motor);
}

TEST(SimulatedProjector, decidesByTwentyMillisecondsOfSilence) {
    ProjectorBench bench({}, {{"Z+", "Z+", {}}, {"Z++", "Z++", {}}});
    bench.send("Z+");
    EXPECT_EQ(bench.projector().nextDue(), milliseconds(20));
    bench.pass(milliseconds(19));
    EXPECT_THAT(bench.commands(), IsEmpty());
    bench.pass(milliseconds(1));
    EXPECT_THAT(bench.commands(), ElementsAre("Z+"));
    bench.send("Z+");
    bench.pass(milliseconds(19));
    bench.send("+");
    EXPECT_THAT(bench.commands(), ElementsAre("Z++"));
}

TEST(SimulatedProjector, hasNothingDueWhileItIsIdle) {
    ProjectorBench bench;
    EXPECT_EQ(bench.projector().nextDue(), std::nullopt);
    bench.send("PWR ON\rPWR");
    EXPECT_EQ(bench.answers(), "OK\r");
    EXPECT_EQ(bench.projector().nextDue(), std::nullopt);
}

}  // namespace
}  // namespace orx::orxsim
