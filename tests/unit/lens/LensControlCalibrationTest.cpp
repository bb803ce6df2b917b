// Learning the travel of an axis: into the end stop, then up by hand, counting the steps.
#include <functional>
#include <stdexcept>

#include "unit/lens/AxisBench.h"

namespace orx::test {
namespace {

class LensControlCalibration : public AxisBench {
  protected:
    LensControlCalibration() {
        axis->setCalibrationDone([this] { ++timesDone; });
    }

    /// Jogs the axis up by hand.
    void advance(int steps) {
        for (int step = 0; step < steps; ++step)
            give(names.stepUp);
    }

    [[nodiscard]] std::string entering() const {
        return "- entering " + names.axis + " calibration mode";
    }
    [[nodiscard]] std::string exiting(int max, const std::string& how) const {
        return "- exiting " + names.axis + " calibration mode, new max: " + std::to_string(max) +
               " steps (" + how + ")";
    }

    int timesDone = 0;
};
INSTANTIATE_TEST_SUITE_P(EitherAxis, LensControlCalibration, testing::Values(zoomNames, focusNames),
                         nameOfAxis);

TEST_P(LensControlCalibration, BeginsAtTheEndStop) {
    standAt(300);
    EXPECT_EQ(outputOf([&] { give(names.calibrationStart); }), entering() + "\n");
    EXPECT_THAT(logged(), testing::ElementsAre(entering()));
    EXPECT_EQ(sent(), Lines{names.reset});
    EXPECT_EQ(axis->positionText(), "0");
    EXPECT_EQ(axis->rangeMin(), 0);
    EXPECT_EQ(axis->rangeMaxReduced(), 0);
    EXPECT_EQ(axis->rangeMax(), 2000);
    EXPECT_EQ(timesDone, 0);
}

TEST_P(LensControlCalibration, BeginsAtTheEndStopByFastSteps) {
    buildOn({names.fastResets[1]});
    give(names.setResetSteps + " 2");
    EXPECT_EQ(outputOf([&] { give(names.calibrationStart); }),
              entering() + "\n- resetting absolute " + names.axis + " (2 fast steps)\n  " +
                  names.axis + " reset done.\n");
    EXPECT_EQ(sent(), times(2, names.fastResets[1]));
    EXPECT_EQ(axis->positionText(), "0");
}

TEST_P(LensControlCalibration, CountsStepsAndPassesThemOn) {
    give(names.calibrationStart);
    line.writes.clear();
    advance(3);
    EXPECT_EQ(axis->positionText(), "3");
    give(names.stepDown);
    EXPECT_EQ(axis->positionText(), "2");
    EXPECT_EQ(sent(), joined(times(3, names.stepUp), {names.stepDown}));
}

TEST_P(LensControlCalibration, CountsUpWithoutBound) {
    axis->setRange(0, 2);
    give(names.calibrationStart);
    advance(5);
    EXPECT_EQ(axis->positionText(), "5");
}

TEST_P(LensControlCalibration, NeverCountsBelowTheEndStopButPassesTheStepOn) {
    give(names.calibrationStart);
    advance(1);
    line.writes.clear();
    give(names.stepDown);
    give(names.stepDown);
    give(names.stepDown);
    EXPECT_EQ(axis->positionText(), "0");
    EXPECT_EQ(sent(), times(3, names.stepDown));
}

TEST_P(LensControlCalibration, CountsAStepBeforeItIsSent) {
    give(names.calibrationStart);
    std::string seen;
    line.onWrite = [&](const std::string&) { seen = axis->positionText(); };
    advance(1);
    EXPECT_EQ(seen, "1");
}

TEST_P(LensControlCalibration, LetsNothingMoveTheAxis) {
    standAt(300);
    give(names.calibrationStart);
    advance(3);
    line.writes.clear();
    give(names.absSteps + " 2");
    give(names.abs + " 65536");
    axis->moveStep();
    EXPECT_THAT(sent(), testing::IsEmpty());
    EXPECT_EQ(axis->positionText(), "3");
}

TEST_P(LensControlCalibration, StartsToCountAgainAfterAReset) {
    give(names.calibrationStart);
    advance(3);
    give(names.reset);
    EXPECT_EQ(axis->positionText(), "0");
    give(names.stepUp);  // still counted by hand: the reset has not referenced the axis
    EXPECT_EQ(axis->positionText(), "1");
    EXPECT_EQ(sent().back(), names.stepUp);
}

TEST_P(LensControlCalibration, EndsWithTheAdvancedPositionAsTravel) {
    give(names.calibrationStart);
    advance(3);
    line.writes.clear();
    clearLog();
    const auto exit = exiting(3, "determined by advancing");
    EXPECT_EQ(outputOf([&] { give(names.calibrationEnd); }), exit + "\n");
    EXPECT_THAT(logged(), testing::ElementsAre(exit));
    EXPECT_EQ(axis->rangeMin(), 0);
    EXPECT_EQ(axis->rangeMax(), 3);
    EXPECT_EQ(axis->rangeMaxReduced(), 3);
    EXPECT_EQ(sent(), Lines{names.reset});
    EXPECT_EQ(axis->positionText(), "0/3");
    EXPECT_EQ(timesDone, 1);
}

TEST_P(LensControlCalibration, EndsWithAGivenTravel) {
    give(names.calibrationStart);
    advance(3);
    clearLog();
    give(names.calibrationEnd + " 1500 7");
    EXPECT_THAT(logged(), testing::ElementsAre(exiting(1500, "explicit input")));
    EXPECT_EQ(axis->rangeMax(), 1500);
    EXPECT_EQ(axis->positionText(), "0/1500");
}

TEST_P(LensControlCalibration, KeepsTheAdvancedPositionWhereTheGivenTravelIsNotAboveZero) {
    for (const std::string given : {"0", "-5", "-2147483648", "abc"}) {
        SCOPED_TRACE(given);
        give(names.calibrationStart);
        advance(3);
        clearLog();
        give(names.calibrationEnd + " " + given);
        EXPECT_THAT(logged(), testing::ElementsAre(exiting(3, "determined by advancing")));
        EXPECT_EQ(axis->rangeMax(), 3);
    }
}

TEST_P(LensControlCalibration, TakesTheShortestTravelForOne) {
    give(names.calibrationStart);
    give(names.calibrationEnd + " 1");
    EXPECT_EQ(axis->rangeMax(), 1);
}

TEST_P(LensControlCalibration, ReducesTheNewTravel) {
    axis->setParameters({.reduceMaxParam = 10});
    give(names.calibrationStart);
    give(names.calibrationEnd + " 2000");
    EXPECT_EQ(axis->rangeMax(), 2000);
    EXPECT_EQ(axis->rangeMaxReduced(), 1800);

    axis->setParameters({.reduceMaxParam = -50});
    give(names.calibrationEnd + " 2000");
    EXPECT_EQ(axis->rangeMaxReduced(), 1950);
}

TEST_P(LensControlCalibration, ReferencesTheAxis) {
    give(names.calibrationStart);
    give(names.calibrationEnd + " 2000");
    line.writes.clear();
    give(names.absSteps + " 2");
    axis->moveStep();
    EXPECT_EQ(sent(), times(2, names.stepUp));
}

TEST_P(LensControlCalibration, ThatNeverAdvancedLeavesTheAxisUnconfigured) {
    give(names.calibrationStart);
    give(names.calibrationEnd);
    EXPECT_EQ(axis->positionText(), "0/0");
    give(names.stepUp);
    EXPECT_EQ(sent().back(), names.stepUp);
    EXPECT_EQ(axis->positionText(), "0/0");
}

TEST_P(LensControlCalibration, ReportsItsRangeBeforeTheAxisIsReset) {
    axis->setRange(0, 2000);
    give(names.calibrationStart);
    advance(3);
    line.writes.clear();
    Lines seen;
    axis->setCalibrationDone([&] {
        seen = logged();
        seen.push_back(axis->positionText());
        seen.push_back(std::to_string(axis->rangeMax()));
        EXPECT_THAT(sent(), testing::IsEmpty());
    });
    clearLog();
    give(names.calibrationEnd);
    EXPECT_EQ(seen, Lines({exiting(3, "determined by advancing"), "3/3>0", "3"}));
    EXPECT_EQ(sent(), Lines{names.reset});
}

TEST_P(LensControlCalibration, EndsAlsoWhereNoneHasStarted) {
    standAt(300);
    give(names.calibrationEnd);
    EXPECT_THAT(logged(), testing::ElementsAre(exiting(300, "determined by advancing")));
    EXPECT_EQ(axis->rangeMax(), 300);
    EXPECT_EQ(axis->positionText(), "0/300");
    EXPECT_EQ(timesDone, 1);
}

TEST_P(LensControlCalibration, EndsAlsoWhereThePositionIsUnknown) {
    give(names.calibrationEnd);
    EXPECT_THAT(logged(), testing::ElementsAre(exiting(-1, "determined by advancing")));
    EXPECT_EQ(axis->rangeMax(), -1);
    EXPECT_EQ(axis->rangeMaxReduced(), -1);
}

TEST_P(LensControlCalibration, ThatNobodyWaitsForThrowsBeforeTheReset) {
    axis->setCalibrationDone({});
    EXPECT_THROW(give(names.calibrationEnd + " 2000"), std::bad_function_call);
    EXPECT_THAT(logged(), testing::ElementsAre(exiting(2000, "explicit input")));
    EXPECT_EQ(axis->rangeMax(), 2000);
    EXPECT_THAT(sent(), testing::IsEmpty());
}

TEST_P(LensControlCalibration, WhoseReportFailsEndsBeforeTheReset) {
    axis->setCalibrationDone([] { throw std::runtime_error("disk full"); });
    EXPECT_THROW(give(names.calibrationEnd + " 2000"), std::runtime_error);
    EXPECT_THAT(sent(), testing::IsEmpty());
    EXPECT_EQ(axis->rangeMax(), 2000);
}

TEST_P(LensControlCalibration, GoesOnWhenTheGivenTravelIsNoNumber) {
    give(names.calibrationStart);
    advance(3);
    EXPECT_THAT([&] { axis->handleCommand(withUncheckedWord(names.calibrationEnd, "x")); },
                ThrowsStoi<std::invalid_argument>());
    EXPECT_EQ(axis->positionText(), "3");
    EXPECT_EQ(timesDone, 0);
}

TEST_P(LensControlCalibration, WithoutAnyResetStaysWhereTheAxisIs) {
    buildOn({names.stepUp, names.stepDown});
    standAt(300);
    give(names.calibrationStart);
    EXPECT_THAT(logged(),
                testing::ElementsAre(
                    entering(), "  " + names.axis + " reset not possible, no supported command?!"));
    EXPECT_EQ(axis->positionText(), "300");
    EXPECT_EQ(axis->rangeMin(), 300);
    EXPECT_EQ(axis->rangeMaxReduced(), 300);
    give(names.stepDown);
    EXPECT_EQ(axis->positionText(), "300");
    give(names.stepUp);
    EXPECT_EQ(axis->positionText(), "301");
}

TEST_P(LensControlCalibration, WithoutAnyResetMayStartAtAnUnknownPosition) {
    buildOn({});
    axis->setRange(0, 2000);
    give(names.calibrationStart);
    EXPECT_EQ(axis->positionText(), "undefined");
    EXPECT_EQ(axis->rangeMin(), -1);
    EXPECT_EQ(axis->rangeMaxReduced(), -1);
    give(names.stepUp);
    EXPECT_EQ(axis->positionText(), "0");
}

}  // namespace
}  // namespace orx::test
