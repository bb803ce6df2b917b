// What can be wrong with the projector and its line, and that it goes wrong alike in every run.
#include <gmock/gmock.h>

#include "unit/orxsim/ProjectorBench.h"

namespace orx::orxsim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string repeated(std::string_view bytes, int count) {
    std::string all;
    for (int number = 0; number < count; ++number)
        all += bytes;
    return all;
}

TEST(SimulatedFaults, anAnswerCanBeMissing) {
    Behaviour behaviour;
    behaviour.answers = AnswerFault::silent;
    ProjectorBench bench(behaviour);
    bench.send("PWR ON\rX\r");
    const auto reports = bench.reports();
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_EQ(reports[0].answer, std::nullopt);
    EXPECT_EQ(reports[1].answer, std::nullopt);
    EXPECT_EQ(bench.answers(), "");
}

TEST(SimulatedFaults, anAnswerCanBeLate) {
    Behaviour behaviour;
    behaviour.answerDelay = milliseconds(150);
    ProjectorBench bench(behaviour);
    bench.send("PWR ON\r");
    EXPECT_THAT(bench.commands(), ElementsAre("ON"));
    EXPECT_EQ(bench.projector().nextDue(), milliseconds(150));
    bench.pass(milliseconds(149));
    EXPECT_EQ(bench.answers(), "");
    bench.pass(milliseconds(1));
    EXPECT_EQ(bench.answers(), "OK\r");
}

std::string garbage(std::uint64_t seed) {
    Behaviour behaviour;
    behaviour.answers = AnswerFault::garbage;
    behaviour.seed = seed;
    ProjectorBench bench(behaviour);
    bench.send(repeated("PWR ON\r", 20));
    std::string reported;
    for (const auto& report : bench.reports())
        reported += report.answer.value_or("");
    const auto sent = bench.answers();
    EXPECT_EQ(sent, reported);
    return sent;
}

TEST(SimulatedFaults, anAnswerCanBeGarbage) {
    EXPECT_GT(garbage(1).size(), 20U);
    EXPECT_EQ(garbage(1).find("OK\r"), std::string::npos);
    EXPECT_EQ(garbage(1), garbage(1));
    EXPECT_NE(garbage(1), garbage(2));
}

Behaviour noisy(Ratio ratio, std::uint64_t seed = 1) {
    Behaviour behaviour;
    behaviour.lineNoise = ratio;
    behaviour.seed = seed;
    return behaviour;
}

TEST(SimulatedFaults, noiseAltersOrDropsWhatIsReceived) {
    ProjectorBench bench(noisy({1, 40}));
    bench.send(repeated("PWR ON\r", 500));
    const auto& totals = bench.projector().totals();
    EXPECT_GT(totals.commands, 350U);
    EXPECT_LT(totals.commands, 480U);
    EXPECT_GT(totals.unknown, 20U);
}

TEST(SimulatedFaults, noiseIsOneChanceAByte) {
    LineNoise none(Chance({0, 1}, 1, 1), 0xFF);
    EXPECT_EQ(none.pass("PWR ON\r"), "PWR ON\r");
    LineNoise always(Chance({1, 1}, 1, 1), 0x7F);
    const auto disturbed = always.pass(std::string(1000, 'A'));
    EXPECT_GT(disturbed.size(), 400U);
    EXPECT_LT(disturbed.size(), 600U);
    for (const char byte : disturbed) {
        const auto turned = static_cast<unsigned>(byte ^ 'A');
        EXPECT_TRUE(turned != 0 && turned < 0x80 && (turned & (turned - 1)) == 0) << turned;
    }
}

TEST(SimulatedFaults, noiseDoesNotDependOnHowBytesArrive) {
    ProjectorBench atOnce(noisy({1, 20}, 9));
    ProjectorBench slowly(noisy({1, 20}, 9));
    const auto stream = repeated("PWR ON\rSOURCE 07\rZ STEP +\r", 100);
    atOnce.send(stream);
    for (const char byte : stream)
        slowly.send(std::string_view(&byte, 1));
    EXPECT_EQ(atOnce.commands(), slowly.commands());
    EXPECT_EQ(atOnce.zoom().motor, slowly.zoom().motor);
}

TEST(SimulatedFaults, aMotorCanLoseSteps) {
    Behaviour behaviour;
    behaviour.lostSteps = {1, 10};
    ProjectorBench bench(behaviour);
    bench.send(repeated("Z +++\r", 5));
    EXPECT_GT(bench.zoom().lost, 20);
    EXPECT_EQ(bench.zoom().motor, 1500 - bench.zoom().lost);
    EXPECT_EQ(bench.focus().lost, 0);
}

/// The zoom motor's positions, one a command, while other faults come and go.
std::vector<int> zoomWith(AnswerFault answers, const std::string& otherCommands) {
    Behaviour behaviour;
    behaviour.lostSteps = {1, 10};
    behaviour.answers = answers;
    ProjectorBench bench(behaviour);
    std::vector<int> positions;
    for (int number = 0; number < 100; ++number) {
        bench.send("Z STEP +\r" + otherCommands);
        positions.push_back(bench.zoom().motor);
    }
    return positions;
}

TEST(SimulatedFaults, oneFaultDoesNotMoveAnother) {
    const auto alone = zoomWith(AnswerFault::none, "");
    EXPECT_EQ(zoomWith(AnswerFault::garbage, ""), alone);
    EXPECT_EQ(zoomWith(AnswerFault::none, "F --\r"), alone);
}

TEST(SimulatedFaults, theLensHasBacklash) {
    Behaviour behaviour;
    behaviour.backlash = 4;
    ProjectorBench bench(behaviour);
    bench.send("Z +\r");
    EXPECT_EQ(bench.zoom().motor, 1005);
    EXPECT_EQ(bench.zoom().lens, 1001);
}

TEST(SimulatedFaults, theLineCanBeCutAfterSoManyCommands) {
    Behaviour behaviour;
    behaviour.unplugging.commands = 2;
    ProjectorBench bench(behaviour);
    bench.send("PWR ON\rX\r");
    EXPECT_FALSE(bench.projector().isUnplugged());
    bench.send("PWR OFF\rPWR ON\r");
    EXPECT_TRUE(bench.projector().isUnplugged());
    const auto reports = bench.reports();
    ASSERT_EQ(reports.size(), 3U);
    EXPECT_EQ(reports[2].heard.command, "OFF");
    EXPECT_EQ(reports[2].answer, std::nullopt);
    EXPECT_EQ(bench.answers(), "OK\rERR\r");
    EXPECT_EQ(bench.projector().nextDue(), std::nullopt);
}

TEST(SimulatedFaults, theLineCanBeCutAfterSomeTime) {
    Behaviour behaviour;
    behaviour.unplugging.time = milliseconds(500);
    behaviour.stepTime = milliseconds(1);
    ProjectorBench bench(behaviour);
    EXPECT_EQ(bench.projector().nextDue(), milliseconds(500));
    bench.send("Z HOME\r");
    bench.pass(milliseconds(499));
    EXPECT_FALSE(bench.projector().isUnplugged());
    bench.pass(milliseconds(100));
    EXPECT_TRUE(bench.projector().isUnplugged());
    EXPECT_GE(bench.zoom().motor, 500);
    EXPECT_THAT(bench.commands(), IsEmpty());
}

}  // namespace
}  // namespace orx::orxsim
