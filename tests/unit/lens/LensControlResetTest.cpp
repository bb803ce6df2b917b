// Referencing an axis at its end stop, by the projector's own command or by fast steps.
#include "unit/lens/AxisBench.h"

namespace orx::test {
namespace {

class LensControlReset : public AxisBench {
  protected:
    [[nodiscard]] std::string fastStepsLine(int steps) const {
        return "- resetting absolute " + names.axis + " (" + std::to_string(steps) + " fast steps)";
    }
    [[nodiscard]] std::string doneLine() const { return "  " + names.axis + " reset done."; }
    [[nodiscard]] std::string impossibleLine() const {
        return "  " + names.axis + " reset not possible, no supported command?!";
    }
    [[nodiscard]] const std::string& fastStep() const { return names.fastResets.back(); }
};
INSTANTIATE_TEST_SUITE_P(EitherAxis, LensControlReset, testing::Values(zoomNames, focusNames),
                         nameOfAxis);

TEST_P(LensControlReset, SendsTheNativeCommandOnceAndSaysNothing) {
    axis->setRange(0, 2000);
    EXPECT_EQ(outputOf([&] { give(names.reset); }), "");
    EXPECT_EQ(sent(), Lines{names.reset});
    EXPECT_THAT(logged(), testing::IsEmpty());
    EXPECT_EQ(axis->positionText(), "0/2000");
    EXPECT_EQ(flags(), "HELO ");
}

TEST_P(LensControlReset, PrefersTheNativeCommandToFastSteps) {
    buildOn({names.fastResets[0], names.fastResets[1], names.fastResets[2], names.reset});
    axis->setRange(0, 2000);
    axis->reset(0);
    EXPECT_EQ(sent(), Lines{names.reset});
}

TEST_P(LensControlReset, TakesANativeCommandWithAnEmptyStringForOne) {
    const auto model = connectedModel({{names.reset, ""}, {fastStep(), "fast"}});
    axis = std::make_unique<LensControl>(model, *names.commands);
    axis->setRange(0, 2000);
    axis->reset(0);
    EXPECT_EQ(sent(), Lines{""});
    EXPECT_EQ(axis->positionText(), "0/2000");
}

TEST_P(LensControlReset, PrefersTheFastestStepThatTheModelKnows) {
    const auto& [fastest, faster, fast] = names.fastResets;
    struct Case {
        Lines known;
        std::string chosen;
    };
    const std::vector<Case> cases{
        {{fastest, faster, fast}, fastest},
        {{fastest, faster}, fastest},
        {{fastest, fast}, fastest},
        {{faster, fast}, faster},
        {{fastest}, fastest},
        {{faster}, faster},
        {{fast}, fast},
    };
    for (const auto& [known, chosen] : cases) {
        SCOPED_TRACE(testing::PrintToString(known));
        line.writes.clear();
        buildOn(known);
        axis->reset(0);
        EXPECT_EQ(sent(), times(50, chosen));
    }
}

TEST_P(LensControlReset, KeepsToTheFastStepChosenWhenTheAxisWasBuilt) {
    const auto model = modelKnowing({names.fastResets[1], "ON"});
    axis = std::make_unique<LensControl>(model, *names.commands);
    const std::string fastest = names.axis == "zoom" ? "CMD_ZOOM_MINUS3" : "CMD_FOCUS_MINUS3";
    model->applyAliases({{fastest, "&CMD_POWER_ON"}});
    give(names.setResetSteps + " 1");
    axis->reset(0);
    EXPECT_EQ(sent(), Lines{names.fastResets[1]});
}

TEST_P(LensControlReset, ByFastStepsIsLoggedAndItsEndOnlyPrinted) {
    buildOn({fastStep()});
    axis->setRange(0, 2000);
    EXPECT_EQ(outputOf([&] { give(names.reset); }), fastStepsLine(50) + "\n" + doneLine() + "\n");
    EXPECT_THAT(contentOf(logPath()), testing::Not(testing::HasSubstr("reset done.")));
    EXPECT_EQ(axis->positionText(), "0/2000");
    EXPECT_EQ(flags(), "HELO ");

    give(names.setResetSteps + " 3");
    clearLog();
    give(names.reset);
    EXPECT_THAT(logged(), testing::ElementsAre(fastStepsLine(3)));
}

TEST_P(LensControlReset, SendsAsManyFastStepsAsTheParametersSay) {
    buildOn({fastStep()});
    axis->setParameters({.resetSteps = 4});
    axis->reset(0);
    EXPECT_EQ(sent(), times(4, fastStep()));
}

TEST_P(LensControlReset, SendsAsManyFastStepsAsTheLastCommandSaid) {
    buildOn({fastStep()});
    give(names.setResetSteps + " 2 9");
    axis->reset(0);
    EXPECT_EQ(sent(), times(2, fastStep()));

    give(names.setResetSteps);
    give(names.setResetSteps + " abc");
    line.writes.clear();
    axis->reset(0);
    EXPECT_EQ(sent(), times(2, fastStep()));
}

TEST_P(LensControlReset, WithoutAnyFastStepStillSetsThePositionToZero) {
    for (const int steps : {0, -3}) {
        SCOPED_TRACE(steps);
        buildOn({fastStep()});
        standAt(300);
        give(names.setResetSteps + " " + std::to_string(steps));
        EXPECT_EQ(outputOf([&] { axis->reset(0); }),
                  fastStepsLine(steps) + "\n" + doneLine() + "\n");
        EXPECT_THAT(sent(), testing::IsEmpty());
        EXPECT_EQ(axis->positionText(), "0/2000");
    }
}

TEST_P(LensControlReset, WithoutAnyCommandForItLeavesTheAxisUnreferenced) {
    buildOn({names.stepUp, names.stepDown});
    axis->setRange(0, 2000);
    EXPECT_EQ(outputOf([&] { EXPECT_TRUE(give(names.reset)); }), impossibleLine() + "\n");
    EXPECT_THAT(logged(), testing::ElementsAre(impossibleLine()));
    EXPECT_EQ(axis->positionText(), "undefined");
    EXPECT_FALSE(axis->isBusy());
    EXPECT_EQ(flags(), "");

    give(names.stepUp);  // still jogs by hand
    EXPECT_EQ(sent(), Lines{names.stepUp});
}

TEST_P(LensControlReset, WithoutAnyCommandForItKeepsPositionAndTargetOfAReferencedAxis) {
    buildOn({names.stepUp, names.stepDown});
    standAt(300);
    give(names.absSteps + " 302");
    axis->reset(1000);
    EXPECT_EQ(axis->positionText(), "300/2000>302");
    EXPECT_FALSE(axis->isBusy());
    axis->moveStep();
    EXPECT_EQ(sent(), times(2, names.stepUp));
}

TEST_P(LensControlReset, FailsForTheFirstAbsolutePositionWithoutAMove) {
    buildOn({names.stepUp, names.stepDown});
    axis->setRange(0, 2000);
    EXPECT_TRUE(give(names.absSteps + " 100"));
    EXPECT_THAT(logged(), testing::ElementsAre(impossibleLine()));
    axis->moveStep();
    EXPECT_THAT(sent(), testing::IsEmpty());
}

TEST_P(LensControlReset, MakesTheRequestedPositionTheTarget) {
    axis->setRange(100, 2000);
    axis->reset(1200);
    EXPECT_EQ(axis->positionText(), "0/2000>1200");
    axis->reset(5000);
    EXPECT_EQ(axis->positionText(), "0/2000>2000");
    axis->reset(-1);
    EXPECT_EQ(axis->positionText(), "0/2000>100");
    EXPECT_THAT(sent(), testing::SizeIs(3));
}

TEST_P(LensControlReset, ByCommandWalksUpToTheLowerEnd) {
    axis->setRange(3, 2000);
    give(names.reset);
    axis->moveStep();
    EXPECT_EQ(sent(), joined({names.reset}, times(3, names.stepUp)));
    EXPECT_EQ(axis->positionText(), "3/2000");
}

TEST_P(LensControlReset, ShowsUntilItIsDone) {
    buildOn({fastStep()});
    standAt(300);
    give(names.setResetSteps + " 3");
    Lines seen;
    line.onWrite = [&](const std::string&) {
        seen.push_back(axis->positionText());
        EXPECT_TRUE(axis->isBusy());
    };
    axis->reset(1200);
    EXPECT_EQ(seen, times(3, "resetting>1200"));
    EXPECT_FALSE(axis->isBusy());
    EXPECT_EQ(axis->positionText(), "0/2000>1200");
}

TEST_P(LensControlReset, ShowsUntilTheNativeCommandIsSent) {
    standAt(300);
    std::string seen;
    atWrite(1, [&] { seen = axis->positionText(); });
    axis->reset(9999);
    EXPECT_EQ(seen, "resetting>2000");
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlReset, SaysHelloBeforeAnythingIsSent) {
    for (const auto& known : {names.reset, fastStep()}) {
        buildOn({known});
        Status::clearFlags();
        std::string seen;
        line.writes.clear();
        atWrite(1, [&] { seen = flags(); });
        axis->reset(0);
        EXPECT_EQ(seen, "HELO ") << known;
    }
}

TEST_P(LensControlReset, OfAnUnconfiguredAxisDoesNotReferenceIt) {
    axis->setRange(5, 5);
    axis->reset(0);
    EXPECT_EQ(axis->positionText(), "0/5>5");
    axis->moveStep();
    EXPECT_EQ(sent(), Lines{names.reset});
    give(names.stepUp);
    EXPECT_EQ(sent(), Lines({names.reset, names.stepUp}));
}

TEST_P(LensControlReset, ThatIsAnnouncedShowsAtOnceAndSendsNothing) {
    standAt(300);
    axis->reset(700);
    line.writes.clear();
    Status::clearFlags();

    axis->beginReset();
    EXPECT_EQ(axis->positionText(), "resetting>0");
    EXPECT_TRUE(axis->isBusy());
    EXPECT_EQ(flags(), "HELO ");
    EXPECT_THAT(sent(), testing::IsEmpty());
    EXPECT_THAT(logged(), testing::IsEmpty());

    axis->reset(0);
    EXPECT_EQ(axis->positionText(), "0/2000");
    EXPECT_FALSE(axis->isBusy());
}

TEST_P(LensControlReset, ThatIsAnnouncedButImpossibleNoLongerShows) {
    buildOn({});
    axis->setRange(0, 2000);
    axis->beginReset();
    axis->reset(0);
    EXPECT_FALSE(axis->isBusy());
    EXPECT_EQ(axis->positionText(), "undefined");
}

}  // namespace
}  // namespace orx::test
