// The usable range of an axis: how it follows from the travel, and how targets are kept within it.
#include <limits>

#include "unit/lens/AxisBench.h"

namespace orx::test {
namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

class LensControlRange : public AxisBench {};
INSTANTIATE_TEST_SUITE_P(EitherAxis, LensControlRange, testing::Values(zoomNames, focusNames),
                         nameOfAxis);

TEST_P(LensControlRange, IsUnknownUntilItIsSet) {
    EXPECT_EQ(axis->rangeMin(), -1);
    EXPECT_EQ(axis->rangeMax(), -1);
    EXPECT_EQ(axis->rangeMaxReduced(), -1);
    EXPECT_EQ(axis->currentPosition(), -1);
    EXPECT_EQ(axis->reduceMaxParam(), 0);
}

TEST_P(LensControlRange, IsReducedAtTheTopByAPercentageOrBySteps) {
    struct Case {
        int reduceMaxParam;
        int min;
        int max;
        int maxReduced;
    };
    const std::vector<Case> cases{
        {0, 0, 2000, 2000},
        {10, 0, 2000, 1800},
        {1, 0, 2000, 1980},
        {100, 0, 2000, 0},
        {-1, 0, 2000, 1999},
        {-50, 0, 2000, 1950},
        {-2000, 0, 2000, 0},
        // A half goes away from zero.
        {1, 0, 50, 50},
        {1, 0, 150, 149},
        {50, 0, 1, 1},
        {50, -200, -1, -1},
        {33, 0, 10, 7},
        // The upper end never falls below the lower one.
        {99, 100, 2000, 100},
        {95, 100, 2000, 100},
        {94, 100, 2000, 120},
        {101, 0, 2000, 0},
        {-2001, 0, 2000, 0},
        {-1999, 1, 2000, 1},
        {0, 500, 200, 500},
        {0, 0, 0, 0},
        {0, -300, -100, -100},
        {50, -300, -100, -50},
        // Nothing wraps around at the ends of the numbers.
        {lowest, 0, 2000, 0},
        {lowest, -5, highest, -1},
        {-1, lowest, lowest, lowest},
        {0, lowest, highest, highest},
        {1, 0, highest, 2126008811},
        {highest, 0, highest, 0},
        {highest, 0, lowest, highest},
        {0, highest, lowest, highest},
    };
    for (const auto& [reduceMaxParam, min, max, maxReduced] : cases) {
        SCOPED_TRACE(testing::Message() << reduceMaxParam << " of " << min << " to " << max);
        axis->setParameters({.reduceMaxParam = reduceMaxParam});
        axis->setRange(min, max);
        EXPECT_EQ(axis->rangeMin(), min);
        EXPECT_EQ(axis->rangeMax(), max);
        EXPECT_EQ(axis->rangeMaxReduced(), maxReduced);
        EXPECT_EQ(axis->reduceMaxParam(), reduceMaxParam);
    }
}

TEST_P(LensControlRange, StaysAsItWasWhenOnlyTheParametersChange) {
    axis->setRange(0, 2000);
    axis->setParameters({.reduceMaxParam = 10});
    EXPECT_EQ(axis->rangeMaxReduced(), 2000);
    EXPECT_EQ(axis->reduceMaxParam(), 10);
}

TEST_P(LensControlRange, HoldsEveryTarget) {
    struct Case {
        int min;
        int max;
        int wanted;
        int clamped;
    };
    const std::vector<Case> cases{
        {100, 2000, 99, 100},
        {100, 2000, 100, 100},
        {100, 2000, 101, 101},
        {100, 2000, 1999, 1999},
        {100, 2000, 2000, 2000},
        {100, 2000, 2001, 2000},
        {100, 2000, -1, 100},
        {100, 2000, lowest, 100},
        {100, 2000, highest, 2000},
        {-300, -100, -301, -300},
        {-300, -100, -200, -200},
        {-300, -100, 0, -100},
        {lowest, highest, lowest, lowest},
        {lowest, highest, highest, highest},
        {lowest, highest, 0, 0},
    };
    for (const auto& [min, max, wanted, clamped] : cases) {
        SCOPED_TRACE(testing::Message() << wanted << " in " << min << " to " << max);
        axis->setRange(min, max);
        placeAt(wanted);
        EXPECT_EQ(axis->currentPosition(), clamped);
    }
}

TEST_P(LensControlRange, HoldsTargetsBelowTheReducedEnd) {
    axis->setParameters({.reduceMaxParam = 10});
    axis->setRange(0, 2000);
    placeAt(1801);
    EXPECT_EQ(axis->currentPosition(), 1800);
}

TEST_P(LensControlRange, OfASinglePlaceTurnsEveryTargetIntoThatPlace) {
    axis->setRange(500, 200);
    for (const int wanted : {lowest, 0, 200, 499, 500, 501, highest}) {
        axis->reset(wanted);
        EXPECT_EQ(axis->positionText(), "0/500>500") << wanted;
    }
}

TEST_P(LensControlRange, TakesResetTargetsWiderThanAPosition) {
    axis->setRange(-10, 2000);
    axis->reset(std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(axis->positionText(), "0/2000>2000");
    axis->reset(std::int64_t{1} << 32);
    EXPECT_EQ(axis->positionText(), "0/2000>2000");
    axis->reset(std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(axis->positionText(), "0/2000>-10");
}

TEST_P(LensControlRange, EndsStepsAtItsEnds) {
    axis->setRange(100, 102);
    placeAt(101);
    const auto textAfter = [this](const std::string& step) {
        give(step);
        return axis->positionText();
    };
    EXPECT_EQ(textAfter(names.stepUp), "101/102>102");
    EXPECT_EQ(textAfter(names.stepUp), "101/102>102");
    EXPECT_EQ(textAfter(names.stepDown), "101/102");
    EXPECT_EQ(textAfter(names.stepDown), "101/102>100");
    EXPECT_EQ(textAfter(names.stepDown), "101/102>100");
}

TEST_P(LensControlRange, EndsStepsAtTheEndsOfTheNumbers) {
    axis->setRange(lowest, highest);
    placeAt(highest);
    give(names.stepUp);
    EXPECT_EQ(axis->positionText(), "2147483647/2147483647");
    placeAt(lowest);
    give(names.stepDown);
    EXPECT_EQ(axis->positionText(), "-2147483648/2147483647");
}

TEST_P(LensControlRange, AndMotionHaveKeysOfTheirOwn) {
    for (const std::string key : {"min", "max", "maxreduced", "reducemaxparam"}) {
        EXPECT_EQ(axis->configKey(key), names.axis + key);
    }
    for (const std::string key : {"resetsteps", "reducemax", "resetonloadmem", "lockinmode",
                                  "minimum", "maxreduce", "Min", ""}) {
        EXPECT_EQ(axis->configKey(key), "abs" + names.axis + "." + key);
    }
}

}  // namespace
}  // namespace orx::test
