// Which commands an axis takes, and what absolute positions, steps and overrides do to it.
#include <algorithm>
#include <limits>
#include <stdexcept>

#include "commands/Vocabulary.h"
#include "unit/lens/AxisBench.h"

namespace orx::test {
namespace {

class LensControlCommands : public AxisBench {};
INSTANTIATE_TEST_SUITE_P(EitherAxis, LensControlCommands, testing::Values(zoomNames, focusNames),
                         nameOfAxis);

TEST_P(LensControlCommands, OfTheAxisAreTakenWithAndWithoutAnArgument) {
    axis->setCalibrationDone([] {});
    axis->setRange(0, 2000);
    for (const auto& keyword : names.taken()) {
        EXPECT_TRUE(give(keyword)) << keyword;
        EXPECT_TRUE(give(keyword + " 7")) << keyword;
    }
}

TEST_P(LensControlCommands, OfAnyOtherKindAreLeftToOthers) {
    standAt(300);
    const auto taken = names.taken();
    for (const auto& entry : vocabulary) {
        const std::string keyword(entry.keyword);
        if (std::ranges::find(taken, keyword) != taken.end()) continue;
        EXPECT_FALSE(give(keyword)) << keyword;
        EXPECT_FALSE(give(keyword + " 7")) << keyword;
    }
    EXPECT_FALSE(give(""));
    EXPECT_FALSE(give("zoomx 7"));
    EXPECT_EQ(axis->positionText(), "300/2000");
    EXPECT_THAT(sent(), testing::IsEmpty());
    EXPECT_THAT(logged(), testing::IsEmpty());
}

TEST_P(LensControlCommands, WithoutTheArgumentTheyNeedChangeNothing) {
    standAt(300);
    for (const auto& keyword : {names.abs, names.absSteps, names.overridePosition}) {
        EXPECT_TRUE(give(keyword)) << keyword;
        EXPECT_TRUE(give(keyword + " abc")) << keyword;
        EXPECT_EQ(axis->positionText(), "300/2000") << keyword;
    }
    EXPECT_THAT(sent(), testing::IsEmpty());
}

TEST_P(LensControlCommands, WithoutTheArgumentTheyNeedDoNotReferenceTheAxis) {
    axis->setRange(0, 2000);
    EXPECT_TRUE(give(names.abs));
    EXPECT_TRUE(give(names.absSteps));
    EXPECT_TRUE(give(names.overridePosition));
    EXPECT_EQ(axis->positionText(), "undefined");
    EXPECT_THAT(sent(), testing::IsEmpty());
}

TEST_P(LensControlCommands, ThrowForAWordThatIsNoNumber) {
    standAt(300);
    for (const auto& keyword : {names.abs, names.absSteps, names.overridePosition,
                                names.setResetSteps, names.calibrationEnd}) {
        SCOPED_TRACE(keyword);
        EXPECT_THAT([&] { axis->handleCommand(withUncheckedWord(keyword, "abc")); },
                    ThrowsStoi<std::invalid_argument>());
        EXPECT_THAT([&] { axis->handleCommand(withUncheckedWord(keyword, "2147483648")); },
                    ThrowsStoi<std::out_of_range>());
    }
    EXPECT_EQ(axis->positionText(), "300/2000");
    EXPECT_EQ(axis->rangeMax(), 2000);
    EXPECT_THAT(sent(), testing::IsEmpty());
    EXPECT_THAT(logged(), testing::IsEmpty());
}

TEST_P(LensControlCommands, UseTheirFirstArgumentOnly) {
    standAt(300);
    give(names.absSteps + " 400 500");
    EXPECT_EQ(axis->positionText(), "300/2000>400");
    give(names.overridePosition + " 600 700");
    EXPECT_EQ(axis->positionText(), "600/2000");
}

TEST_P(LensControlCommands, ReadTheNumberThatBeginsAWord) {
    standAt(300);
    give(names.absSteps + " 12abc");
    EXPECT_EQ(axis->positionText(), "300/2000>12");
    give(names.absSteps + " +45");
    EXPECT_EQ(axis->positionText(), "300/2000>45");
}

TEST_P(LensControlCommands, ScaleAnAbsolutePositionToTheUsableRange) {
    struct Case {
        int argument;
        int target;
    };
    const std::vector<Case> cases{
        {65536, 2000},
        {65537, 2000},
        {32768, 1000},
        {16384, 500},
        {1, 100},  // 0.03 steps, below the range
        {-1, 100},
        {-32768, 100},
        {0, 100},
        {3293, 100},    // 100.49 steps
        {3294, 101},    // 100.52 steps
        {65519, 1999},  // 1999.48 steps
        {65520, 2000},  // 1999.51 steps
        {std::numeric_limits<int>::max(), 2000},
        {std::numeric_limits<int>::min(), 100},
    };
    axis->setRange(100, 2000);
    placeAt(1234);
    for (const auto& [argument, target] : cases) {
        give(names.abs + " " + std::to_string(argument));
        EXPECT_EQ(axis->positionText(), "1234/2000>" + std::to_string(target)) << argument;
    }
}

TEST_P(LensControlCommands, RoundAScaledPositionHalfAwayFromZero) {
    axis->setRange(-2000, 1001);
    placeAt(5);
    give(names.abs + " 32768");
    EXPECT_EQ(axis->positionText(), "5/1001>501");
    give(names.abs + " -32768");
    EXPECT_EQ(axis->positionText(), "5/1001>-501");
}

TEST_P(LensControlCommands, ScaleToTheReducedTravel) {
    axis->setParameters({.reduceMaxParam = 10});
    standAt(0);
    give(names.abs + " 65536");
    EXPECT_EQ(axis->positionText(), "0/1800>1800");
    give(names.abs + " 32768");
    EXPECT_EQ(axis->positionText(), "0/1800>900");
}

TEST_P(LensControlCommands, ScaleTheGreatestNumbersWithoutWrappingAround) {
    constexpr int highest = std::numeric_limits<int>::max();
    axis->setRange(std::numeric_limits<int>::min(), highest);
    placeAt(0);
    give(names.abs + " 2147483647");
    EXPECT_EQ(axis->positionText(), "0/2147483647>2147483647");
    give(names.abs + " -2147483648");
    EXPECT_EQ(axis->positionText(), "0/2147483647>-2147483648");
    give(names.abs + " 1");
    EXPECT_EQ(axis->positionText(), "0/2147483647>32768");
}

TEST_P(LensControlCommands, TakeAPositionInStepsAsItIs) {
    axis->setRange(100, 2000);
    placeAt(500);
    const auto textAfter = [this](const std::string& steps) {
        give(names.absSteps + " " + steps);
        return axis->positionText();
    };
    EXPECT_EQ(textAfter("1200"), "500/2000>1200");
    EXPECT_EQ(textAfter("2001"), "500/2000>2000");
    EXPECT_EQ(textAfter("99"), "500/2000>100");
    EXPECT_EQ(textAfter("-7"), "500/2000>100");
    EXPECT_EQ(textAfter("500"), "500/2000");
    EXPECT_THAT(sent(), testing::IsEmpty());
}

TEST_P(LensControlCommands, ReferenceAConfiguredAxisAheadOfItsFirstAbsolutePosition) {
    axis->setRange(0, 2000);
    give(names.absSteps + " 3");
    EXPECT_EQ(sent(), Lines{names.reset});
    EXPECT_EQ(axis->positionText(), "0/2000>3");

    axis->moveStep();
    EXPECT_EQ(sent(), joined({names.reset}, times(3, names.stepUp)));
    EXPECT_EQ(axis->positionText(), "3/2000");

    give(names.absSteps + " 5");
    axis->moveStep();
    EXPECT_EQ(sent(), joined({names.reset}, times(5, names.stepUp)));
}

TEST_P(LensControlCommands, ReferenceAConfiguredAxisAheadOfItsFirstScaledPosition) {
    axis->setRange(100, 2000);
    give(names.abs + " 65536");
    EXPECT_EQ(sent(), Lines{names.reset});
    EXPECT_EQ(axis->positionText(), "0/2000>2000");
}

TEST_P(LensControlCommands, OnlySetTheTargetOfAnUnconfiguredAxis) {
    axis->setRange(7, 7);
    give(names.absSteps + " 3");
    // A recall that would change the target would reference the axis.
    axis->gotoMemoryPosition(9);
    EXPECT_EQ(axis->positionText(), "undefined");
    EXPECT_THAT(sent(), testing::IsEmpty());
    axis->moveStep();
    EXPECT_THAT(sent(), testing::IsEmpty());
}

TEST_P(LensControlCommands, ForStepsMoveTheTargetOfAReferencedAxis) {
    standAt(300);
    give(names.stepUp);
    give(names.stepUp);
    EXPECT_EQ(axis->positionText(), "300/2000>302");
    EXPECT_THAT(sent(), testing::IsEmpty());
    axis->moveStep();
    EXPECT_EQ(sent(), times(2, names.stepUp));

    give(names.stepDown);
    EXPECT_EQ(axis->positionText(), "302/2000>301");
    axis->moveStep();
    EXPECT_EQ(sent(), Lines({names.stepUp, names.stepUp, names.stepDown}));
}

TEST_P(LensControlCommands, ForStepsJogAnUnreferencedAxisByHand) {
    axis->setRange(0, 2000);
    give(names.stepUp);
    give(names.stepDown);
    give(names.stepDown);
    EXPECT_EQ(sent(), Lines({names.stepUp, names.stepDown, names.stepDown}));
    EXPECT_EQ(axis->currentPosition(), -1);
    EXPECT_EQ(axis->positionText(), "undefined");
}

TEST_P(LensControlCommands, ForStepsThatTheModelLacksAreTakenAllTheSame) {
    buildOn({names.reset});
    axis->setRange(0, 2000);
    EXPECT_TRUE(give(names.stepUp));
    EXPECT_TRUE(give(names.stepDown));
    EXPECT_THAT(sent(), testing::IsEmpty());
}

TEST_P(LensControlCommands, ForAnOverrideSetPositionAndTargetWithoutAMove) {
    axis->setRange(0, 2000);
    give(names.overridePosition + " 800");
    EXPECT_EQ(axis->positionText(), "800/2000");
    axis->moveStep();
    EXPECT_THAT(sent(), testing::IsEmpty());

    // The axis is referenced now.
    give(names.absSteps + " 801");
    axis->moveStep();
    EXPECT_EQ(sent(), Lines{names.stepUp});
    EXPECT_THAT(logged(), testing::ElementsAre(absolute("moving to position 801/2000 (+1 steps)")));
}

TEST_P(LensControlCommands, ForAnOverrideReplaceATargetThatIsNotReachedYet) {
    standAt(300);
    give(names.absSteps + " 1000");
    placeAt(400);
    EXPECT_EQ(axis->positionText(), "400/2000");
    axis->moveStep();
    EXPECT_THAT(sent(), testing::IsEmpty());
}

TEST_P(LensControlCommands, ForAnOverrideAreIgnoredOnAnUnconfiguredAxis) {
    for (const int place : {-1, 0, 5}) {
        axis->setRange(place, place);
        EXPECT_TRUE(give(names.overridePosition + " 5"));
        EXPECT_EQ(axis->positionText(), "undefined");
    }
    // Not even the word is read.
    EXPECT_NO_THROW(axis->handleCommand(withUncheckedWord(names.overridePosition, "abc")));
}

TEST_P(LensControlCommands, ForAnOverrideAreIgnoredDuringACalibration) {
    axis->setRange(0, 2000);
    give(names.calibrationStart);
    axis->setRange(0, 2000);
    EXPECT_TRUE(give(names.overridePosition + " 5"));
    EXPECT_EQ(axis->positionText(), "0");
    EXPECT_NO_THROW(axis->handleCommand(withUncheckedWord(names.overridePosition, "abc")));
}

}  // namespace
}  // namespace orx::test
