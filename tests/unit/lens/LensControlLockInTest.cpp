// The manoeuvre at the end of a move that takes up the motor's backlash.
#include <limits>

#include "unit/lens/AxisBench.h"

namespace orx::test {
namespace {

enum class End { inside, atMin, atMax };

class LensControlLockIn : public AxisBench {
  protected:
    /// Builds an axis with that mode and moves it up by two steps, inside of its range or up to an
    /// end of it; what the manoeuvre sends.
    Lines sentAfterMoveUp(int mode, End end) {
        buildWith(mode);
        if (end == End::atMin) {
            axis->setRange(2, 2000);
            axis->reset(0);  // leaves the axis at 0, below its range
            return sentAfterMoveTo(2);
        }
        standAt(298);
        axis->setRange(0, end == End::atMax ? 300 : 2000);
        return sentAfterMoveTo(300);
    }

    /// As `sentAfterMoveUp`, for a move down by two steps.
    Lines sentAfterMoveDown(int mode, End end) {
        buildWith(mode);
        standAt(302);
        axis->setRange(end == End::atMin ? 300 : 0, end == End::atMax ? 300 : 2000);
        return sentAfterMoveTo(300);
    }

    void buildWith(int mode) {
        buildOn({names.stepUp, names.stepDown, names.reset});
        axis->setParameters({.lockInMode = mode});
    }

    Lines sentAfterMoveTo(int target) {
        give(names.absSteps + " " + std::to_string(target));
        line.writes.clear();
        axis->moveStep();
        EXPECT_EQ(axis->currentPosition(), target);
        EXPECT_FALSE(axis->isBusy());
        auto all = sent();
        EXPECT_GE(all.size(), 2U);
        return {all.begin() + 2, all.end()};
    }

    const Lines upDown{names.stepUp, names.stepDown};
    const Lines downUp{names.stepDown, names.stepUp};
    const Lines nothing{};
};
INSTANTIATE_TEST_SUITE_P(EitherAxis, LensControlLockIn, testing::Values(zoomNames, focusNames),
                         nameOfAxis);

struct ModeCase {
    int mode;
    Lines afterUp;
    Lines afterDown;
};

TEST_P(LensControlLockIn, SendsTwoStepsThatCancelOut) {
    const std::vector<ModeCase> cases{
        {0, nothing, nothing},
        {1, upDown, nothing},
        {2, nothing, downUp},
        {3, upDown, upDown},
        {4, downUp, downUp},
        {5, upDown, downUp},
        {6, downUp, upDown},
        {7, nothing, nothing},
        {-1, nothing, nothing},
        {std::numeric_limits<int>::max(), nothing, nothing},
        {std::numeric_limits<int>::min(), nothing, nothing},
    };
    for (const auto& [mode, afterUp, afterDown] : cases) {
        SCOPED_TRACE(testing::Message() << "mode " << mode);
        EXPECT_EQ(sentAfterMoveUp(mode, End::inside), afterUp);
        EXPECT_EQ(sentAfterMoveDown(mode, End::inside), afterDown);
    }
}

TEST_P(LensControlLockIn, NeverStepsAboveTheUpperEnd) {
    const std::vector<ModeCase> cases{
        {0, nothing, nothing}, {1, nothing, nothing}, {2, nothing, downUp}, {3, nothing, nothing},
        {4, downUp, downUp},   {5, nothing, downUp},  {6, downUp, nothing}, {7, nothing, nothing},
    };
    for (const auto& [mode, afterUp, afterDown] : cases) {
        SCOPED_TRACE(testing::Message() << "mode " << mode);
        EXPECT_EQ(sentAfterMoveUp(mode, End::atMax), afterUp);
        EXPECT_EQ(sentAfterMoveDown(mode, End::atMax), afterDown);
    }
}

TEST_P(LensControlLockIn, NeverStepsBelowTheLowerEnd) {
    const std::vector<ModeCase> cases{
        {0, nothing, nothing}, {1, upDown, nothing}, {2, nothing, nothing}, {3, upDown, upDown},
        {4, nothing, nothing}, {5, upDown, nothing}, {6, nothing, upDown},  {7, nothing, nothing},
    };
    for (const auto& [mode, afterUp, afterDown] : cases) {
        SCOPED_TRACE(testing::Message() << "mode " << mode);
        EXPECT_EQ(sentAfterMoveUp(mode, End::atMin), afterUp);
        EXPECT_EQ(sentAfterMoveDown(mode, End::atMin), afterDown);
    }
}

TEST_P(LensControlLockIn, StopsAtTheReducedEnd) {
    axis->setParameters({.reduceMaxParam = 10, .lockInMode = 3});
    axis->setRange(0, 2000);
    placeAt(1798);
    EXPECT_EQ(sentAfterMoveTo(1800), nothing);
}

TEST_P(LensControlLockIn, IsLoggedInAnyModeButNone) {
    for (const int mode : {0, 1, 2, 6, 7, -1}) {
        SCOPED_TRACE(mode);
        clearLog();
        buildWith(mode);
        standAt(298);
        give(names.absSteps + " 300");
        const auto moving = absolute("moving to position 300/2000 (+2 steps)");
        const auto locking = absolute("locking in (mode " + std::to_string(mode) + ")");
        const auto expected = mode == 0 ? Lines{moving} : Lines{moving, locking};
        const auto printed = outputOf([this] { axis->moveStep(); });
        EXPECT_EQ(logged(), expected);
        EXPECT_EQ(printed, moving + "\n" + (mode == 0 ? "" : locking + "\n"));
    }
}

TEST_P(LensControlLockIn, IsLoggedWhereItIsSkipped) {
    axis->setParameters({.lockInMode = 3});
    axis->setRange(0, 300);
    placeAt(299);
    give(names.absSteps + " 300");
    axis->moveStep();
    EXPECT_EQ(sent(), Lines{names.stepUp});
    EXPECT_THAT(logged(), testing::ElementsAre(absolute("moving to position 300/300 (+1 steps)"),
                                               absolute("locking in (mode 3)")));
}

TEST_P(LensControlLockIn, KeepsTheAxisBusyAtItsPlace) {
    axis->setParameters({.lockInMode = 4});
    standAt(299);
    Lines seen;
    line.onWrite = [&](const std::string&) {
        seen.push_back(axis->positionText());
        EXPECT_TRUE(axis->isBusy());
    };
    give(names.absSteps + " 300");
    axis->moveStep();
    EXPECT_EQ(sent(), Lines({names.stepUp, names.stepDown, names.stepUp}));
    EXPECT_EQ(seen, times(3, "300/2000"));
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlLockIn, IsDoneOnceAMove) {
    axis->setParameters({.lockInMode = 4});
    standAt(298);
    EXPECT_EQ(sentAfterMoveTo(300), downUp);
    line.writes.clear();
    axis->moveStep();
    EXPECT_THAT(sent(), testing::IsEmpty());
}

}  // namespace
}  // namespace orx::test
