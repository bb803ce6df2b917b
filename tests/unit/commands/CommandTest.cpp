#include <algorithm>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/Command.h"
#include "unit/commands/VocabularyTable.h"

namespace orx::test {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

static_assert(std::has_virtual_destructor_v<Command>);
static_assert(!std::is_copy_assignable_v<Command>, "a command never changes");

struct Parsed {
    std::string source;
    std::string name;
    std::vector<std::string> arguments;
    std::string display;
    bool valid;
};

void expectParsed(const std::vector<Parsed>& lines) {
    for (const auto& line : lines) {
        SCOPED_TRACE(testing::PrintToString(line.source));
        const Command command(line.source);
        EXPECT_EQ(command.text(false), line.name);
        EXPECT_EQ(command.arguments(), line.arguments);
        EXPECT_EQ(command.text(true), line.display);
        EXPECT_EQ(command.isValid(), line.valid);
    }
}

TEST(CommandParsing, GivesAnEmptyNameWhereThereIsNoWord) {
    expectParsed({
        {"", "", {}, "", false},
        {"   ", "", {}, "", false},
        {" \t\r\n\v\f ", "", {}, "", false},
    });
}

TEST(CommandParsing, KeepsTheNameOfAnUnknownKeywordAndDropsItsWords) {
    expectParsed({
        {"zoom 100", "zoom", {}, "zoom", false},
        {"hello", "hello", {}, "hello", false},
        {"CMD_ZOOM_ABS 100", "CMD_ZOOM_ABS", {}, "CMD_ZOOM_ABS", false},
    });
}

TEST(CommandParsing, ShowsTheArgumentsInParenthesesBehindTheName) {
    expectParsed({
        {"ZOOM", "ZOOM", {}, "ZOOM", true},
        {"ZOOM 1200", "ZOOM", {"1200"}, "ZOOM (1200)", true},
        {"ZOOM 100 200", "ZOOM", {"100", "200"}, "ZOOM (100,200)", true},
        {"ZOOM 1 2 3 4", "ZOOM", {"1", "2", "3", "4"}, "ZOOM (1,2,3,4)", true},
        {"MEMSAVE 3", "MEMSAVE", {"3"}, "MEMSAVE (3)", true},
        {"KEYSTONEVERT -2.5", "KEYSTONEVERT", {"-2.5"}, "KEYSTONEVERT (-2.5)", true},
    });
}

TEST(CommandParsing, DropsWordsThatAreNoNumber) {
    expectParsed({
        {"ZOOM abc", "ZOOM", {}, "ZOOM", true},
        {"ZOOM abc 7 def 8", "ZOOM", {"7", "8"}, "ZOOM (7,8)", true},
        {"ZOOM 99999999999", "ZOOM", {}, "ZOOM", true},
    });
}

TEST(CommandParsing, DropsWordsAfterAKeywordWithoutArgument) {
    expectParsed({
        {"MEMCLEAR 3", "MEMCLEAR", {}, "MEMCLEAR", true},
        {"STATUS now please", "STATUS", {}, "STATUS", true},
        {"F+++ 1", "F+++", {}, "F+++", true},
    });
}

TEST(CommandParsing, SplitsAtAnyRunOfWhiteSpace) {
    expectParsed({
        {"  F+++  ", "F+++", {}, "F+++", true},
        {"ZOOM   1    2", "ZOOM", {"1", "2"}, "ZOOM (1,2)", true},
        {"\r\n\t ZOOM\v5\f6\r", "ZOOM", {"5", "6"}, "ZOOM (5,6)", true},
        {"ZOOM 5\nFOCUS 6", "ZOOM", {"5", "6"}, "ZOOM (5,6)", true},
    });
}

TEST(CommandParsing, SplitsAtNothingElse) {
    expectParsed({
        {"ZOOM,5", "ZOOM,5", {}, "ZOOM,5", false},
        {"ZOOM=5", "ZOOM=5", {}, "ZOOM=5", false},
        {"ZOOM\0 5"s, "ZOOM\0"s, {}, "ZOOM\0"s, false},
        {"ZOOM\xa0"s + "5", "ZOOM\xa0"s + "5", {}, "ZOOM\xa0"s + "5", false},
        {"Z\xc3\x96OM 5", "Z\xc3\x96OM", {}, "Z\xc3\x96OM", false},
        {"ZOOM 5\0x"s, "ZOOM", {"5\0x"s}, "ZOOM (5\0x)"s, true},
    });
}

TEST(RawCommand, JoinsItsWordsToOneArgument) {
    expectParsed({
        {"RAW 0A 0D", "RAW", {"0A0D"}, "RAW (0A0D)", true},
        {"RAW 0a 1B ff", "RAW", {"0a1Bff"}, "RAW (0a1Bff)", true},
        {"RAW 0 A 0 D", "RAW", {"0A0D"}, "RAW (0A0D)", true},
    });
}

TEST(RawCommand, TakesHexadecimalDigitsOfEitherCase) {
    const std::string digits = "0123456789abcdefABCDEF";
    expectParsed({{"RAW " + digits, "RAW", {digits}, "RAW (" + digits + ")", true}});
}

TEST(RawCommand, TakesBytesWithoutEnd) {
    const std::string digits(200'000, 'e');
    EXPECT_THAT(Command("RAW " + digits).arguments(), ElementsAre(digits));
    EXPECT_THAT(Command("RAW " + digits + "f").arguments(), IsEmpty());
}

TEST(RawCommand, HasNoArgumentWhereTheDigitsMakeNoWholeBytes) {
    for (const auto* line : {"RAW", "RAW  ", "RAW 0", "RAW 0A 0", "RAW 0a1", "RAW 0A 0D 1"})
        EXPECT_EQ(Command(line).text(true), "RAW") << line;
}

TEST(RawCommand, HasNoArgumentWhereOneCharacterIsNoHexadecimalDigit) {
    // Among them the neighbours of the digits and letters.
    for (const auto& words : {"0A zz 0D"s, "0x0A"s, "+1"s, "-1"s, "0A,0D"s, "0A\\x"s, "0A\0\0"s,
                              "\xa0\xa0"s, "/0"s, "0:"s, "@0"s, "0G"s, "`0"s, "0g"s, "0A.."s}) {
        const Command command("RAW " + words);
        EXPECT_THAT(command.arguments(), IsEmpty()) << testing::PrintToString(words);
        EXPECT_EQ(command.text(true), "RAW");
    }
}

TEST(RawCommand, IsNotMeantByOtherCase) {
    expectParsed({{"raw 0A", "raw", {}, "raw", false}});
}

TEST(Command, KeepsArgumentsOfEveryKeywordThatTakesOneAndDropsAllOthers) {
    for (const auto& expected : expectedCommands) {
        SCOPED_TRACE(expected.keyword);
        const Command command(std::string(expected.keyword) + " 12");
        EXPECT_TRUE(command.isValid());
        EXPECT_EQ(command.takesArgument(), !expected.kind.empty());
        if (expected.kind.empty()) {
            EXPECT_THAT(command.arguments(), IsEmpty());
            EXPECT_EQ(command.text(true), expected.keyword);
        } else {
            EXPECT_THAT(command.arguments(), ElementsAre("12"));
            EXPECT_EQ(command.text(true), std::string(expected.keyword) + " (12)");
        }
    }
}

TEST(Command, DistinguishesIntegersFromDecimals) {
    for (const auto& expected : expectedCommands) {
        SCOPED_TRACE(expected.keyword);
        const Command command(std::string(expected.keyword) + " .5");
        if (expected.kind == "decimal") {
            EXPECT_THAT(command.arguments(), ElementsAre(".5"));
        } else {
            EXPECT_THAT(command.arguments(), IsEmpty());
        }
    }
}

TEST(Command, TakesNoArgumentWithoutAKnownKeyword) {
    EXPECT_FALSE(Command("").takesArgument());
    EXPECT_FALSE(Command("zoom 5").takesArgument());
    EXPECT_FALSE(Command("CMD_ZOOM_ABS 5").takesArgument());
}

TEST(Command, IsTheCommandOfItsExactNameOnly) {
    const Command command("QUIT");
    EXPECT_TRUE(command.is(CMD_QUIT));
    EXPECT_TRUE(command.is("QUIT"));
    EXPECT_FALSE(command.is(CMD_RESTART));
    EXPECT_FALSE(command.is("quit"));
    EXPECT_FALSE(command.is("QUI"));
    EXPECT_FALSE(command.is("QUITS"));
    EXPECT_FALSE(command.is("QUIT "));
    EXPECT_FALSE(command.is(""));
    EXPECT_TRUE(Command("").is(""));
}

TEST(Command, IsComparedByNameAndNotByDisplay) {
    const Command command("ZOOM 5");
    EXPECT_TRUE(command.is(CMD_ZOOM_ABS));
    EXPECT_FALSE(command.is("ZOOM (5)"));
}

TEST(Command, IsCopiedAsAWhole) {
    const auto original = std::make_unique<Command>("ZOOM 1 2");
    const Command copy(*original);
    EXPECT_EQ(copy.text(false), "ZOOM");
    EXPECT_EQ(copy.text(true), "ZOOM (1,2)");
    EXPECT_THAT(copy.arguments(), ElementsAre("1", "2"));
}

}  // namespace
}  // namespace orx::test
