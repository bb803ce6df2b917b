// The walk of an axis to its target, step by step.
#include <limits>

#include "unit/lens/AxisBench.h"

namespace orx::test {
namespace {

class LensControlMove : public AxisBench {
  protected:
    /// Gives the target and lets the axis walk; what was printed.
    std::string moveTo(int target) {
        give(names.absSteps + " " + std::to_string(target));
        return outputOf([this] { axis->moveStep(); });
    }

    /// The console line about a move to `target`, of `steps` with their sign.
    [[nodiscard]] std::string moving(const std::string& target, const std::string& steps) const {
        return absolute("moving to position " + target + "/2000 (" + steps + " steps)\n");
    }
};
INSTANTIATE_TEST_SUITE_P(EitherAxis, LensControlMove, testing::Values(zoomNames, focusNames),
                         nameOfAxis);

TEST_P(LensControlMove, UpSendsOneStepAfterTheOther) {
    standAt(100);
    EXPECT_EQ(moveTo(300), moving("300", "+200"));
    EXPECT_EQ(sent(), times(200, names.stepUp));
    EXPECT_EQ(axis->positionText(), "300/2000");
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlMove, DownSendsOneStepAfterTheOther) {
    standAt(300);
    EXPECT_EQ(moveTo(100), moving("100", "-200"));
    EXPECT_EQ(sent(), times(200, names.stepDown));
    EXPECT_EQ(axis->positionText(), "100/2000");
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlMove, IsLoggedOnceEachTime) {
    standAt(100);
    moveTo(102);
    moveTo(99);
    EXPECT_THAT(logged(), testing::ElementsAre(absolute("moving to position 102/2000 (+2 steps)"),
                                               absolute("moving to position 99/2000 (-3 steps)")));
}

TEST_P(LensControlMove, ToThePlaceOfTheMoveBeforeIsLoggedAgain) {
    standAt(100);
    EXPECT_EQ(moveTo(102), moving("102", "+2"));
    placeAt(101);
    EXPECT_EQ(moveTo(102), moving("102", "+1"));
}

TEST_P(LensControlMove, NamesTheReducedEndOfTheRange) {
    axis->setParameters({.reduceMaxParam = 10});
    standAt(100);
    EXPECT_EQ(moveTo(101), absolute("moving to position 101/1800 (+1 steps)\n"));
}

TEST_P(LensControlMove, DoesNotStartWithoutAReference) {
    EXPECT_EQ(outputOf([this] { axis->moveStep(); }), "");
    axis->setRange(0, 2000);
    EXPECT_EQ(outputOf([this] { axis->moveStep(); }), "");
    EXPECT_THAT(sent(), testing::IsEmpty());
}

TEST_P(LensControlMove, DoesNotStartAtTheTarget) {
    axis->setParameters({.lockInMode = 4});
    standAt(100);
    EXPECT_EQ(outputOf([this] { axis->moveStep(); }), "");
    EXPECT_THAT(sent(), testing::IsEmpty());
    EXPECT_FALSE(axis->isBusy());
    EXPECT_EQ(flags(), "");
}

TEST_P(LensControlMove, DoesNotStartDuringAReset) {
    axis->setParameters({.lockInMode = 4});
    standAt(100);
    give(names.absSteps + " 200");
    axis->beginReset();
    EXPECT_EQ(outputOf([this] { axis->moveStep(); }), "");
    EXPECT_THAT(sent(), testing::IsEmpty());
    EXPECT_EQ(axis->currentPosition(), 100);
}

TEST_P(LensControlMove, DoesNotStartAfterAStop) {
    standAt(100);
    axis->stop();
    EXPECT_EQ(moveTo(200), "");
    EXPECT_THAT(sent(), testing::IsEmpty());
    EXPECT_EQ(axis->positionText(), "100/2000>200");
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlMove, CountsAStepBeforeItIsSent) {
    standAt(100);
    Lines seen;
    line.onWrite = [&](const std::string&) {
        seen.push_back(axis->positionText());
        EXPECT_TRUE(axis->isBusy());
    };
    moveTo(103);
    EXPECT_EQ(seen, Lines({"101/2000>103", "102/2000>103", "103/2000"}));
}

TEST_P(LensControlMove, SaysHelloBeforeItsFirstStep) {
    standAt(100);
    std::string seen;
    atWrite(1, [&] { seen = flags(); });
    moveTo(103);
    EXPECT_EQ(seen, "HELO ");
}

TEST_P(LensControlMove, SaysHelloOnlyOnce) {
    standAt(100);
    atWrite(2, [] { Status::clearFlags(); });
    moveTo(104);
    EXPECT_EQ(flags(), "");
}

TEST_P(LensControlMove, TakesUpAFartherTargetOnTheWay) {
    standAt(0);
    atWrite(2, [&] { give(names.absSteps + " 5"); });
    EXPECT_EQ(moveTo(3), moving("3", "+3") + moving("5", "+3"));
    EXPECT_EQ(sent(), times(5, names.stepUp));
    EXPECT_EQ(axis->positionText(), "5/2000");
}

TEST_P(LensControlMove, TurnsRoundForATargetThatLiesBehind) {
    standAt(0);
    atWrite(4, [&] { give(names.absSteps + " 2"); });
    EXPECT_EQ(moveTo(10), moving("10", "+10") + moving("2", "-2"));
    EXPECT_EQ(sent(), joined(times(4, names.stepUp), times(2, names.stepDown)));
    EXPECT_EQ(axis->positionText(), "2/2000");
}

TEST_P(LensControlMove, EndsForATargetThatIsReachedAlready) {
    standAt(0);
    atWrite(4, [&] { give(names.absSteps + " 4"); });
    EXPECT_EQ(moveTo(10), moving("10", "+10"));
    EXPECT_EQ(sent(), times(4, names.stepUp));
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlMove, GoesOnInSilenceWhenTheTargetIsGivenAgain) {
    standAt(0);
    atWrite(2, [&] { give(names.absSteps + " 4"); });
    EXPECT_EQ(moveTo(4), moving("4", "+4"));
    EXPECT_EQ(sent(), times(4, names.stepUp));
}

TEST_P(LensControlMove, SaysHelloAgainForANewTarget) {
    standAt(0);
    atWrite(2, [&] {
        Status::clearFlags();
        give(names.absSteps + " 5");
    });
    moveTo(3);
    EXPECT_EQ(flags(), "HELO ");
}

TEST_P(LensControlMove, TakesUpStepCommandsOnTheWay) {
    standAt(0);
    atWrite(1, [&] { give(names.stepUp); });
    EXPECT_EQ(moveTo(3), moving("3", "+3") + moving("4", "+3"));
    EXPECT_EQ(sent(), times(4, names.stepUp));
}

TEST_P(LensControlMove, EndsAtTheNextStepAfterAStop) {
    axis->setParameters({.lockInMode = 4});
    standAt(0);
    atWrite(3, [&] { axis->stop(); });
    EXPECT_EQ(moveTo(10), moving("10", "+10"));
    EXPECT_EQ(sent(), times(3, names.stepUp));
    EXPECT_EQ(axis->positionText(), "3/2000>10");
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlMove, EndsWithoutLockingInWhenItIsStoppedAtItsLastStep) {
    axis->setParameters({.lockInMode = 4});
    standAt(0);
    atWrite(3, [&] { axis->stop(); });
    EXPECT_EQ(moveTo(3), moving("3", "+3"));
    EXPECT_EQ(sent(), times(3, names.stepUp));
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlMove, EndsWithoutLockingInWhenAResetBegins) {
    axis->setParameters({.lockInMode = 4});
    standAt(0);
    atWrite(3, [&] { axis->beginReset(); });
    EXPECT_EQ(moveTo(10), moving("10", "+10"));
    EXPECT_EQ(sent(), times(3, names.stepUp));

    axis->reset(0);
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlMove, EndsWithoutLockingInWhenAResetBeginsAtItsLastStep) {
    axis->setParameters({.lockInMode = 4});
    standAt(0);
    atWrite(3, [&] { axis->beginReset(); });
    EXPECT_EQ(moveTo(3), moving("3", "+3"));
    EXPECT_EQ(sent(), times(3, names.stepUp));
}

TEST_P(LensControlMove, CountsFromZeroAfterAResetOnTheWay) {
    standAt(500);
    atWrite(3, [&] { axis->reset(2); });
    EXPECT_EQ(moveTo(510), moving("510", "+10") + moving("2", "+2"));
    EXPECT_EQ(sent(),
              joined(joined(times(3, names.stepUp), {names.reset}), times(2, names.stepUp)));
    EXPECT_EQ(axis->positionText(), "2/2000");
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlMove, EndsWhenAResetOnTheWayLeavesTheAxisAtItsTarget) {
    standAt(500);
    atWrite(3, [&] { give(names.reset); });
    EXPECT_EQ(moveTo(490), moving("490", "-10"));
    EXPECT_EQ(sent(), joined(times(3, names.stepDown), {names.reset}));
    EXPECT_EQ(axis->positionText(), "0/2000");
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlMove, EndsWithoutLockingInWhenACalibrationStarts) {
    axis->setParameters({.lockInMode = 4});
    standAt(500);
    atWrite(3, [&] { give(names.calibrationStart); });
    EXPECT_EQ(moveTo(510),
              moving("510", "+10") + "- entering " + names.axis + " calibration mode\n");
    EXPECT_EQ(sent(), joined(times(3, names.stepUp), {names.reset}));
    EXPECT_EQ(axis->positionText(), "0");
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlMove, GoesOnToTheTargetThatAStartingCalibrationLeaves) {
    axis->setParameters({.lockInMode = 4});
    axis->setRange(2, 2000);
    placeAt(500);
    atWrite(3, [&] { give(names.calibrationStart); });
    EXPECT_EQ(moveTo(510), moving("510", "+10") + "- entering " + names.axis +
                               " calibration mode\n" +
                               absolute("moving to position 2/0 (+2 steps)\n"));
    EXPECT_EQ(sent(),
              joined(joined(times(3, names.stepUp), {names.reset}), times(2, names.stepUp)));
    EXPECT_EQ(axis->positionText(), "2");
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlMove, LocksInAfterANewTargetInTheDirectionOfTheLastStep) {
    axis->setParameters({.lockInMode = 2});
    standAt(0);
    atWrite(4, [&] { give(names.absSteps + " 3"); });
    moveTo(10);
    EXPECT_EQ(sent(),
              joined(times(4, names.stepUp), {names.stepDown, names.stepDown, names.stepUp}));
}

TEST_P(LensControlMove, CountsOnWhereTheModelLacksTheStep) {
    buildOn({names.stepDown, names.reset});
    standAt(0);
    EXPECT_EQ(moveTo(3), moving("3", "+3"));
    EXPECT_THAT(sent(), testing::IsEmpty());
    EXPECT_EQ(axis->positionText(), "3/2000");
}

TEST_P(LensControlMove, ReachesAnAxisThatStandsOutsideOfItsRange) {
    standAt(500);
    axis->setRange(0, 498);
    give(names.absSteps + " 600");
    axis->moveStep();
    EXPECT_EQ(sent(), times(2, names.stepDown));
    EXPECT_EQ(axis->positionText(), "498/498");
}

TEST_P(LensControlMove, OverTheWholeRangeOfNumbersKnowsItsLength) {
    axis->setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    line.onWrite = [&](const std::string&) { axis->stop(); };
    placeAt(std::numeric_limits<int>::min());
    EXPECT_EQ(moveTo(std::numeric_limits<int>::max()),
              absolute("moving to position 2147483647/2147483647 (+4294967295 steps)\n"));
    EXPECT_EQ(axis->currentPosition(), -2147483647);
    EXPECT_EQ(sent(), Lines{names.stepUp});
}

TEST_P(LensControlMove, DownOverTheWholeRangeOfNumbersKnowsItsLength) {
    axis->setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    line.onWrite = [&](const std::string&) { axis->stop(); };
    placeAt(std::numeric_limits<int>::max());
    EXPECT_EQ(moveTo(std::numeric_limits<int>::min()),
              absolute("moving to position -2147483648/2147483647 (-4294967295 steps)\n"));
    EXPECT_EQ(sent(), Lines{names.stepDown});
}

}  // namespace
}  // namespace orx::test
