// Models whose commands have no common end: silence decides what the bytes do not.
#include <gmock/gmock.h>

#include "unit/orxsim/Ears.h"

namespace orx::orxsim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(CommandRecognizerWithoutTerminator, takesTheLongestCommandOnceItIsClear) {
    Ears ears({{"Z+", "Z+", {}}, {"Z++", "Z++", {}}, {"ON", "PON", {}}});
    EXPECT_EQ(ears.terminator(), std::nullopt);
    EXPECT_THAT(ears.hear("Z+"), IsEmpty());
    EXPECT_TRUE(ears.awaitsSilence());
    EXPECT_THAT(ears.hear("+"), ElementsAre("Z++"));
    EXPECT_THAT(ears.hear("Z+Z++PON"), ElementsAre("Z+", "Z++", "ON"));
}

TEST(CommandRecognizerWithoutTerminator, takesTheShorterCommandAtSilence) {
    Ears ears({{"Z+", "Z+", {}}, {"Z++", "Z++", {}}, {"ON", "PON", {}}});
    EXPECT_THAT(ears.hear("Z+"), IsEmpty());
    EXPECT_THAT(ears.silence(), ElementsAre("Z+"));
    EXPECT_FALSE(ears.awaitsSilence());
    EXPECT_THAT(ears.hear("+"), IsEmpty());
    EXPECT_THAT(ears.silence(), ElementsAre("? +: no command of this model"));
}

TEST(CommandRecognizerWithoutTerminator, readsANumberUpToItsGreatestLength) {
    Ears ears({{"VOL", "VOL", {{'X', 3, 2, 0, 255}}}, {"INPUT", "IN", {{'A', 2, 1, 0, 15}}}});
    EXPECT_THAT(ears.hear("VOLc8"), ElementsAre("VOL 200"));
    EXPECT_THAT(ears.hear("IN7"), IsEmpty());
    EXPECT_THAT(ears.silence(), ElementsAre("INPUT 7"));
    EXPECT_THAT(ears.hear("IN7IN12"), ElementsAre("INPUT 7", "INPUT 12"));
}

TEST(CommandRecognizerWithoutTerminator, skipsGarbageUpToTheNextSilence) {
    Ears ears({{"Z+", "Z+", {}}, {"ON", "PON", {}}});
    EXPECT_THAT(ears.hear("PXN"), IsEmpty());
    EXPECT_TRUE(ears.awaitsSilence());
    EXPECT_THAT(ears.hear("PON"), IsEmpty());
    EXPECT_THAT(ears.silence(), ElementsAre("? PXNPON: no command of this model"));
    EXPECT_THAT(ears.hear("PON"), ElementsAre("ON"));
}

TEST(CommandRecognizerWithoutTerminator, givesUpAnIncompleteCommandAtSilence) {
    Ears ears({{"Z+", "Z+", {}}, {"ON", "PON", {}}});
    EXPECT_THAT(ears.hear("PO"), IsEmpty());
    EXPECT_TRUE(ears.awaitsSilence());
    EXPECT_THAT(ears.silence(), ElementsAre("? PO: incomplete command"));
    EXPECT_THAT(ears.hear("PON"), ElementsAre("ON"));
}

std::optional<char> terminatorOf(const std::vector<TestCommand>& commands) {
    return Ears(commands).terminator();
}

TEST(CommandRecognizerTerminator, isTheLastByteOfAllCommands) {
    EXPECT_EQ(terminatorOf(usualCommands()), '\r');
    EXPECT_EQ(terminatorOf({{"ON", "A;", {}}, {"OFF", "B;", {}}}), ';');
    EXPECT_EQ(terminatorOf({{"ON", "A;", {}}, {"OFF", "B:", {}}}), std::nullopt);
    EXPECT_EQ(terminatorOf({}), std::nullopt);
}

TEST(CommandRecognizerTerminator, isNoneWhereACommandEndsWithAnArgument) {
    EXPECT_EQ(terminatorOf({{"ON", "A;", {}}, {"INPUT", "B;", {{'A', 2, 1, 0, 9}}}}), std::nullopt);
}

TEST(CommandRecognizerTerminator, isNoLetterAndNoDigit) {
    EXPECT_EQ(terminatorOf({{"ON", "PWR ON", {}}, {"PIP", "PIP N", {}}}), std::nullopt);
    EXPECT_EQ(terminatorOf({{"ON", "P1", {}}, {"PIP", "Q1", {}}}), std::nullopt);
}

}  // namespace
}  // namespace orx::orxsim
