// Load and use in small, with all that they assert in large: see scripts/soak.
#include <gmock/gmock.h>

#include "system/soak/Day.h"
#include "system/soak/Growth.h"
#include "system/soak/Load.h"

namespace orx::test {
namespace {

/// A sanitizer takes many times as long, and its memory is not looked at.
constexpr long datagrams = memoryIsTelling ? 20'000 : 5'000;

TEST(Soak, DatagramsByTheThousandDuringALensMoveLoseNoStepAndLeaveNothing) {
    Load load({.datagrams = datagrams, .settled = datagrams / 4});
    load.run();
    const auto& seen = load.figures();
    EXPECT_GE(seen.sent, datagrams);
    EXPECT_GT(seen.steps, 0);
    EXPECT_EQ(seen.atEnd, seen.atStart);
    if (memoryIsTelling) {
        EXPECT_LT(seen.ownAtEnd, seen.ownSettled + mostGrowth);
    }
}

class SoakOf : public testing::TestWithParam<std::uint64_t> {};

INSTANTIATE_TEST_SUITE_P(Lenses, SoakOf, testing::Values(1, 2), [](const auto& test) {
    return test.param % 2 == 0 ? "NativeReset" : "FastSteps";
});

TEST_P(SoakOf, TenMinutesOfUseLeaveTheLensWhereTheStatusSays) {
    Day day({.commands = 60,
             .settled = 30,
             .seed = GetParam(),
             .shortestTravel = 60,
             .longestTravel = 200});
    day.run();
    const auto seen = day.figures();
    EXPECT_GT(seen.calibrations, 0);
    EXPECT_GT(seen.moves, 0);
    EXPECT_GT(seen.play.comparisons, 0);
    EXPECT_EQ(seen.atEnd, seen.atStart);
    if (memoryIsTelling) {
        EXPECT_LT(seen.ownAtEnd, seen.ownSettled + mostGrowth);
    }
}

}  // namespace
}  // namespace orx::test
