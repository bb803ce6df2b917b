// A keyword that stands for two actions of an axis does the one that the axis looks for first.
#include "unit/lens/AxisBench.h"

namespace orx::test {
namespace {

using Action = std::string_view AxisCommands::*;

class LensControlPrecedence : public LensBench {
  protected:
    /// All that can be seen when an axis at 15 of 10 to 2000 is given "TEST 20".
    Lines outcomeWithTestFor(const std::vector<Action>& actions) {
        auto commands = zoomCommands;
        for (const auto action : actions)
            commands.*action = "TEST";
        LensControl axis(modelKnowing({"Z-", "TEST"}), commands);
        axis.setCalibrationDone([] {});
        axis.setParameters({.resetSteps = 1});
        axis.setRange(10, 2000);
        axis.reset(15);
        axis.moveStep();
        line.writes.clear();
        clearLog();

        EXPECT_TRUE(axis.handleCommand(Command("TEST 20")));
        return joined(joined({axis.positionText()}, logged()), sent());
    }
};

TEST_F(LensControlPrecedence, FollowsTheOrderOfTheActions) {
    const std::vector<std::pair<Action, Action>> neighbours{
        {&AxisCommands::absStepsCommand, &AxisCommands::stepUpCommand},
        {&AxisCommands::stepDownCommand, &AxisCommands::calibrationStartCommand},
        {&AxisCommands::calibrationStartCommand, &AxisCommands::calibrationEndCommand},
        {&AxisCommands::calibrationEndCommand, &AxisCommands::setResetStepsCommand},
        {&AxisCommands::setResetStepsCommand, &AxisCommands::resetCommand},
        {&AxisCommands::setResetStepsCommand, &AxisCommands::overrideCommand},
    };
    for (const auto& [earlier, later] : neighbours) {
        SCOPED_TRACE(
            std::string(zoomCommands.*earlier).append(" and ").append(zoomCommands.*later));
        const auto outcomeOfEarlier = outcomeWithTestFor({earlier});
        EXPECT_NE(outcomeOfEarlier, outcomeWithTestFor({later}));
        EXPECT_EQ(outcomeOfEarlier, outcomeWithTestFor({earlier, later}));
    }
}

}  // namespace
}  // namespace orx::test
