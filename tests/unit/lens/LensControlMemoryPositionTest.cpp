// Recalling a stored position.
#include "unit/lens/AxisBench.h"

namespace orx::test {
namespace {

class LensControlMemoryPosition : public AxisBench {};
INSTANTIATE_TEST_SUITE_P(EitherAxis, LensControlMemoryPosition,
                         testing::Values(zoomNames, focusNames), nameOfAxis);

TEST_P(LensControlMemoryPosition, ReferencesTheAxisFirst) {
    standAt(300);
    axis->gotoMemoryPosition(20);
    EXPECT_EQ(sent(), Lines{names.reset});
    EXPECT_EQ(axis->positionText(), "0/2000>20");
    axis->moveStep();
    EXPECT_EQ(sent(), joined({names.reset}, times(20, names.stepUp)));
}

TEST_P(LensControlMemoryPosition, ReferencesAnAxisThatNeverWas) {
    axis->setRange(0, 2000);
    axis->gotoMemoryPosition(20);
    EXPECT_EQ(axis->positionText(), "0/2000>20");
}

TEST_P(LensControlMemoryPosition, IsHeldWithinTheRange) {
    axis->setRange(100, 2000);
    axis->gotoMemoryPosition(5000);
    EXPECT_EQ(axis->positionText(), "0/2000>2000");
    axis->gotoMemoryPosition(7);
    EXPECT_EQ(axis->positionText(), "0/2000>100");
}

TEST_P(LensControlMemoryPosition, ThatIsTheTargetAlreadyChangesNothing) {
    standAt(300);
    axis->gotoMemoryPosition(300);
    EXPECT_EQ(axis->positionText(), "300/2000");

    give(names.absSteps + " 2000");
    axis->gotoMemoryPosition(2000);
    axis->gotoMemoryPosition(9999);  // ends at the same place
    EXPECT_EQ(axis->positionText(), "300/2000>2000");
    EXPECT_THAT(sent(), testing::IsEmpty());
}

TEST_P(LensControlMemoryPosition, OnTheWayElsewhereReferencesTheAxis) {
    standAt(300);
    give(names.absSteps + " 500");
    axis->gotoMemoryPosition(300);  // where the axis is, but not where it goes
    EXPECT_EQ(sent(), Lines{names.reset});
    EXPECT_EQ(axis->positionText(), "0/2000>300");
}

class LensControlMemoryPositionWithoutReset : public LensControlMemoryPosition {
  protected:
    LensControlMemoryPositionWithoutReset() { axis->setParameters({.resetOnLoadMem = false}); }
};
INSTANTIATE_TEST_SUITE_P(EitherAxis, LensControlMemoryPositionWithoutReset,
                         testing::Values(zoomNames, focusNames), nameOfAxis);

TEST_P(LensControlMemoryPositionWithoutReset, OnlyChangesTheTarget) {
    standAt(300);
    axis->gotoMemoryPosition(302);
    EXPECT_EQ(axis->positionText(), "300/2000>302");
    EXPECT_THAT(sent(), testing::IsEmpty());
    axis->moveStep();
    EXPECT_EQ(sent(), times(2, names.stepUp));
}

TEST_P(LensControlMemoryPositionWithoutReset, IsHeldWithinTheRange) {
    axis->setRange(100, 2000);
    placeAt(300);
    axis->gotoMemoryPosition(5000);
    EXPECT_EQ(axis->positionText(), "300/2000>2000");
    axis->gotoMemoryPosition(7);
    EXPECT_EQ(axis->positionText(), "300/2000>100");
}

TEST_P(LensControlMemoryPositionWithoutReset, ReferencesAnAxisThatNeverWas) {
    axis->setRange(0, 2000);
    axis->gotoMemoryPosition(20);
    EXPECT_EQ(sent(), Lines{names.reset});
    EXPECT_EQ(axis->positionText(), "0/2000>20");
}

TEST_P(LensControlMemoryPositionWithoutReset, ReferencesAnAxisOfUnknownPositionWithATarget) {
    axis->setRange(7, 7);
    give(names.absSteps + " 7");
    axis->gotoMemoryPosition(7);
    EXPECT_EQ(sent(), Lines{names.reset});
    EXPECT_EQ(axis->positionText(), "0/7>7");
}

TEST_P(LensControlMemoryPositionWithoutReset, ReferencesAnAxisOfKnownPositionWithoutATarget) {
    axis->reset(0);  // an axis without a range has no target to be sent to
    ASSERT_EQ(axis->positionText(), "0/-1>-1");
    axis->setRange(0, 2000);
    axis->gotoMemoryPosition(20);
    EXPECT_EQ(sent(), times(2, names.reset));
    EXPECT_EQ(axis->positionText(), "0/2000>20");
}

}  // namespace
}  // namespace orx::test
