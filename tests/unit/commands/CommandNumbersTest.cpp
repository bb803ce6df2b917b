// Which words a command takes for a number: exactly those that the standard conversions take.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/Command.h"

namespace orx::test {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

void expectKept(const std::string& keyword, const std::vector<std::string>& words) {
    for (const auto& word : words) {
        EXPECT_THAT(Command(keyword + " " + word).arguments(), ElementsAre(word))
            << testing::PrintToString(word);
    }
}

void expectDropped(const std::string& keyword, const std::vector<std::string>& words) {
    for (const auto& word : words) {
        EXPECT_THAT(Command(keyword + " " + word).arguments(), IsEmpty())
            << testing::PrintToString(word);
    }
}

TEST(CommandIntegers, KeepTheWordAsItWasSent) {
    expectKept("ZOOM", {"0", "7", "+5", "-5", "007", "+0", "-0", "12abc", "0x10", "1.5", "1.5e2",
                        "1,5", "5;", "5-", "1e400", "5\xa0", "5\xff"});
}

TEST(CommandIntegers, ReachFromTheLowestToTheHighestOf32Bits) {
    expectKept("ZOOM", {"2147483647", "+2147483647", "-2147483648", "00000000002147483647"});
    expectDropped("ZOOM", {"2147483648", "-2147483649", "4294967296", "9223372036854775807",
                           "9223372036854775808", "99999999999999999999999999"});
}

TEST(CommandIntegers, AreDroppedWhereNoNumberBeginsTheWord) {
    expectDropped("ZOOM", {"abc", "x10", "+", "-", "--5", "++5", "+-5", ".5", "inf", "nan", "e5",
                           "(5)", "\"5\"", "\xa0"s + "5", "\xff"s + "5", "\xe2\x80\x89"s + "5"});
}

TEST(CommandIntegers, EndAtAZeroByte) {
    expectKept("ZOOM", {"5\0"s, "5\0abc"s});
    expectDropped("ZOOM", {"\0"s, "\0005"s});
}

TEST(CommandDecimals, KeepTheWordAsItWasSent) {
    expectKept("KEYSTONEVERT", {"0", "5", "+5", "-2.5", "1.5e2", "1.5E-2", ".5", "5.", "-.5",
                                "2.50", "12abc", "1.5e", "1,5", "0x10", "0x1.8p1", "5\xa0"});
}

TEST(CommandDecimals, MayBeInfiniteOrNoNumber) {
    expectKept("KEYSTONEVERT", {"inf", "-inf", "+inf", "INF", "infinity", "Infinity", "infx", "nan",
                                "-nan", "NAN", "nan(7)"});
    expectDropped("KEYSTONEVERT", {"in", "na", "-i"});
}

TEST(CommandDecimals, AreDroppedOutsideTheRangeOfADouble) {
    expectKept("KEYSTONEVERT", {"1e308", "-1e308", "1e-307", "0e999"});
    expectDropped("KEYSTONEVERT", {"1e400", "-1e400", "1e-400", "-1e-400"});
}

TEST(CommandDecimals, AreDroppedWhereNoNumberBeginsTheWord) {
    expectDropped("KEYSTONEVERT", {"abc", "e5", ".", "+", "-", "--5", "+-5", "x5", "-.", "$5",
                                   "\xa0"s + "5", "\xff"s + "5"});
}

TEST(CommandDecimals, EndAtAZeroByte) {
    expectKept("KEYSTONEVERT", {"2.5\0"s, "2.5\0abc"s});
    expectDropped("KEYSTONEVERT", {"\0"s, "\0002.5"s});
}

TEST(CommandNumbers, AreCheckedOneByOne) {
    const Command command("CURVEDHORIARC 1.5e2 abc nan 1e-400 +5");
    EXPECT_THAT(command.arguments(), ElementsAre("1.5e2", "nan", "+5"));
    EXPECT_EQ(command.text(true), "CURVEDHORIARC (1.5e2,nan,+5)");
}

}  // namespace
}  // namespace orx::test
