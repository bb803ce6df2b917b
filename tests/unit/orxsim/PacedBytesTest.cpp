// The time that bytes take on a line, and a projector that keeps to it.
#include <gmock/gmock.h>

#include "unit/orxsim/ProjectorBench.h"

namespace orx::orxsim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

orxdef::LineSettings line(std::uint32_t baudrate, std::uint8_t bytesize, orxdef::Parity parity,
                          std::uint8_t stopbits) {
    orxdef::LineSettings settings;
    settings.baudrate = baudrate;
    settings.bytesize = bytesize;
    settings.parity = parity;
    settings.stopbits = stopbits;
    return settings;
}

TEST(PacedBytes, takeTheTimeOfAllTheirBits) {
    using orxdef::Parity;
    EXPECT_EQ(characterTime(line(1000, 8, Parity::none, 1)), milliseconds(10));
    EXPECT_EQ(characterTime(line(1000, 7, Parity::even, 1)), milliseconds(10));
    EXPECT_EQ(characterTime(line(1000, 8, Parity::odd, 2)), milliseconds(12));
    EXPECT_EQ(characterTime(line(9600, 8, Parity::none, 1)).count(), 1'041'666);
    EXPECT_EQ(characterTime(line(0, 8, Parity::none, 1)).count(), 0);
}

TEST(PacedBytes, arriveOneAfterTheOther) {
    PacedBytes bytes{milliseconds(10)};
    bytes.send("ab", milliseconds(100));
    EXPECT_EQ(bytes.nextArrival(), milliseconds(110));
    EXPECT_EQ(bytes.take(milliseconds(109)), "");
    EXPECT_EQ(bytes.take(milliseconds(110)), "a");
    EXPECT_EQ(bytes.take(milliseconds(500)), "b");
    EXPECT_EQ(bytes.nextArrival(), std::nullopt);
}

TEST(PacedBytes, waitForTheLineToBeFree) {
    PacedBytes bytes{milliseconds(10)};
    bytes.send("abc", milliseconds(0));
    bytes.send("d", milliseconds(5));
    EXPECT_EQ(bytes.lastArrival(), milliseconds(40));
    EXPECT_EQ(bytes.take(milliseconds(30)), "abc");
    bytes.send("e", milliseconds(100));
    EXPECT_EQ(bytes.lastArrival(), milliseconds(110));
}

TEST(PacedBytes, arriveAtOnceWithoutATimeEach) {
    PacedBytes bytes{Instant(0)};
    bytes.send("abc", milliseconds(3));
    EXPECT_EQ(bytes.nextArrival(), milliseconds(3));
    EXPECT_EQ(bytes.take(milliseconds(3)), "abc");
}

/// At 9600 baud a byte takes a little more than a millisecond.
TEST(PacedBytes, makeAProjectorHearAndAnswerInRealTime) {
    Behaviour behaviour;
    behaviour.realTime = true;
    ProjectorBench bench(behaviour);
    bench.send("PWR ON\r");
    EXPECT_THAT(bench.commands(), IsEmpty());
    bench.pass(microseconds(7290));
    EXPECT_THAT(bench.commands(), IsEmpty());
    bench.pass(microseconds(2));
    EXPECT_THAT(bench.commands(), ElementsAre("ON"));
    EXPECT_EQ(bench.answers(), "");
    bench.pass(microseconds(1042));
    EXPECT_EQ(bench.answers(), "O");
    bench.pass(microseconds(2084));
    EXPECT_EQ(bench.answers(), "K\r");
}

TEST(PacedBytes, doNotMakeSilenceOfASlowLine) {
    Behaviour behaviour;
    behaviour.realTime = true;
    ModelBench model({{"Z+", "Z+", {}}, {"Z++", "Z++", {}}});
    model.model().line.baudrate = 100;
    SimulatedProjector projector(model.table(), model.model(), behaviour);
    projector.receive("Z++", Instant(0));
    projector.advance(milliseconds(1000));
    const auto reports = projector.takeReports();
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].heard.command, "Z++");
}

}  // namespace
}  // namespace orx::orxsim
