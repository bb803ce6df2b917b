#include <gtest/gtest.h>

#include "lens/AxisCommands.h"
#include "unit/lens/AxisNames.h"

namespace orx::test {
namespace {

class AxisCommandTable : public testing::TestWithParam<AxisNames> {};

TEST_P(AxisCommandTable, GivesEveryActionOfAnAxisItsKeyword) {
    const auto& names = GetParam();
    const auto& commands = *names.commands;

    EXPECT_EQ(commands.axisName, names.axis);
    EXPECT_EQ(commands.absCommand, names.abs);
    EXPECT_EQ(commands.absStepsCommand, names.absSteps);
    EXPECT_EQ(commands.stepUpCommand, names.stepUp);
    EXPECT_EQ(commands.stepDownCommand, names.stepDown);
    EXPECT_EQ(commands.calibrationStartCommand, names.calibrationStart);
    EXPECT_EQ(commands.calibrationEndCommand, names.calibrationEnd);
    EXPECT_EQ(commands.overrideCommand, names.overridePosition);
    EXPECT_EQ(commands.setResetStepsCommand, names.setResetSteps);
    EXPECT_EQ(commands.resetCommand, names.reset);
    for (std::size_t place = 0; place < names.fastResets.size(); ++place) {
        EXPECT_EQ(commands.fastResetCommands.at(place), names.fastResets.at(place));
    }
}

INSTANTIATE_TEST_SUITE_P(EitherAxis, AxisCommandTable, testing::Values(zoomNames, focusNames),
                         nameOfAxis);

}  // namespace
}  // namespace orx::test
