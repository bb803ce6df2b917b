// What an axis says about itself to the status reply.
#include "unit/lens/AxisBench.h"

namespace orx::test {
namespace {

class LensControlStatus : public AxisBench {};
INSTANTIATE_TEST_SUITE_P(EitherAxis, LensControlStatus, testing::Values(zoomNames, focusNames),
                         nameOfAxis);

TEST_P(LensControlStatus, NamesTheAxis) {
    EXPECT_EQ(axis->name(), names.axis);
}

TEST_P(LensControlStatus, OfAFreshAxisIsIdleAndUndefined) {
    EXPECT_FALSE(axis->isBusy());
    EXPECT_EQ(axis->positionText(), "undefined");
    axis->setRange(0, 2000);
    EXPECT_EQ(axis->positionText(), "undefined");
}

TEST_P(LensControlStatus, ShowsPositionUpperEndAndTarget) {
    standAt(800);
    EXPECT_EQ(axis->positionText(), "800/2000");
    give(names.absSteps + " 1200");
    EXPECT_EQ(axis->positionText(), "800/2000>1200");
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlStatus, ShowsTheReducedUpperEnd) {
    axis->setParameters({.reduceMaxParam = 10});
    standAt(800);
    EXPECT_EQ(axis->positionText(), "800/1800");
}

TEST_P(LensControlStatus, ShowsTheTargetOfARunningReset) {
    axis->setRange(0, 2000);
    std::string seen;
    line.onWrite = [&](const std::string&) { seen = axis->positionText(); };
    give(names.absSteps + " 1200");
    EXPECT_EQ(seen, "resetting>1200");
}

TEST_P(LensControlStatus, ShowsAResetAheadOfACalibration) {
    std::string seen;
    line.onWrite = [&](const std::string&) { seen = axis->positionText(); };
    axis->setRange(0, 2000);
    give(names.calibrationStart);
    EXPECT_EQ(seen, "resetting>0");
    EXPECT_EQ(axis->positionText(), "0");
}

TEST_P(LensControlStatus, ShowsTheBareCountDuringACalibration) {
    axis->setRange(0, 2000);
    give(names.calibrationStart);
    for (int step = 0; step < 17; ++step)
        give(names.stepUp);
    EXPECT_EQ(axis->positionText(), "17");
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlStatus, ShowsAnUnknownPositionAheadOfACalibration) {
    buildOn({});
    give(names.calibrationStart);
    EXPECT_EQ(axis->positionText(), "undefined");
}

TEST_P(LensControlStatus, StandsInTheReply) {
    const auto shared = std::make_shared<LensControl>(modelKnowing({names.stepUp, names.stepDown}),
                                                      *names.commands);
    Status::addAxis(shared);
    EXPECT_EQ(Status::statusReply(), "IDLE; " + names.axis + ": undefined;\n");
    shared->beginReset();
    EXPECT_EQ(Status::statusReply(), "BUSY; " + names.axis + ": resetting>0;HELO \n");
}

}  // namespace
}  // namespace orx::test
