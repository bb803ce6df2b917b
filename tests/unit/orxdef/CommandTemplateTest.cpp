// The text of a command, taken apart into bytes and the places of its arguments.
#include <utility>

#include <gmock/gmock.h>

#include "orxdef/CommandTemplate.h"

namespace orx::orxdef {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

std::string bytesOf(std::string_view text) {
    const auto parsed = CommandTemplate::parse(text);
    EXPECT_THAT(parsed.mistakes, IsEmpty());
    return parsed.bytes;
}

std::vector<std::pair<unsigned, std::size_t>> placesIn(std::string_view text) {
    const auto parsed = CommandTemplate::parse(text);
    EXPECT_THAT(parsed.mistakes, IsEmpty());
    std::vector<std::pair<unsigned, std::size_t>> places;
    for (const auto& [number, pos] : parsed.placeholders)
        places.emplace_back(number, pos);
    return places;
}

std::vector<std::string> mistakesOf(std::string_view text) {
    return CommandTemplate::parse(text).mistakes;
}

TEST(CommandTemplate, plainTextStandsForItself) {
    EXPECT_EQ(bytesOf("PWR ON=1;"), "PWR ON=1;");
}

TEST(CommandTemplate, anEmptyTextSendsNothing) {
    EXPECT_EQ(bytesOf(""), "");
}

TEST(CommandTemplate, hexadecimalEscapesGiveAnyByteInEitherCase) {
    EXPECT_EQ(bytesOf(R"(\x00\x7f\xfF\x41)"), std::string("\x00\x7f\xff\x41", 4));
}

TEST(CommandTemplate, twoDigitsEndAHexadecimalEscape) {
    EXPECT_EQ(bytesOf(R"(\x41BC)"), "ABC");
}

TEST(CommandTemplate, namedEscapesGiveTheirControlCharacters) {
    EXPECT_EQ(bytesOf(R"(\r\n\t\\)"), "\r\n\t\\");
}

TEST(CommandTemplate, anEscapedBackslashBeginsNoOtherEscape) {
    EXPECT_EQ(bytesOf(R"(\\x41)"), R"(\x41)");
}

TEST(CommandTemplate, controlCharactersAndBytesAbove127AreTakenAsTheyAre) {
    const std::string raw("\x02\r\x00\xc3\xa9\x03", 6);
    EXPECT_EQ(bytesOf(raw), raw);
}

TEST(CommandTemplate, doubledBracesGiveOneBraceAndNoPlace) {
    EXPECT_EQ(bytesOf("a{{1}}b"), "a{1}b");
    EXPECT_THAT(placesIn("a{{1}}b"), IsEmpty());
}

TEST(CommandTemplate, anEscapedBraceIsAPlainByte) {
    EXPECT_EQ(bytesOf(R"(\x7b1\x7d)"), "{1}");
}

TEST(CommandTemplate, placeholdersLeaveNoBytesBehind) {
    EXPECT_EQ(bytesOf("P{1},{2}\\r"), "P,\r");
}

TEST(CommandTemplate, placesCountTheBytesBeforeThemWithoutEarlierPlaceholders) {
    EXPECT_THAT(placesIn("P{1},{2}\\r"), ElementsAre(Pair(1U, 1U), Pair(2U, 2U)));
}

TEST(CommandTemplate, anEscapeBeforeAPlaceCountsAsOneByte) {
    EXPECT_THAT(placesIn(R"(\x02\\{{{1}\x03)"), ElementsAre(Pair(1U, 3U)));
}

TEST(CommandTemplate, placesMayStandAtEitherEndAndSideBySide) {
    EXPECT_THAT(placesIn("{1}{2}A{10}"), ElementsAre(Pair(1U, 0U), Pair(2U, 0U), Pair(10U, 1U)));
}

TEST(CommandTemplate, anUnknownEscapeIsNamed) {
    EXPECT_THAT(mistakesOf(R"(a\qb)"),
                ElementsAre(R"(unknown escape "\q"; known are \xNN \r \n \t \\)"));
}

TEST(CommandTemplate, aBackslashNeedsSomethingBehindIt) {
    EXPECT_THAT(mistakesOf(R"(a\)"),
                ElementsAre(R"(lone \ at the end; write \\ for the character)"));
}

TEST(CommandTemplate, aHexadecimalEscapeNeedsTwoDigits) {
    EXPECT_THAT(mistakesOf(R"(\x4)"),
                ElementsAre(R"("\x4" is no byte; \x needs two hexadecimal digits)"));
    EXPECT_THAT(mistakesOf(R"(\x4g0)"),
                ElementsAre(R"("\x4g" is no byte; \x needs two hexadecimal digits)"));
    EXPECT_THAT(mistakesOf(R"(\x-1)"),
                ElementsAre(R"("\x-1" is no byte; \x needs two hexadecimal digits)"));
    EXPECT_THAT(mistakesOf(R"(\x)"),
                ElementsAre(R"("\x" is no byte; \x needs two hexadecimal digits)"));
}

TEST(CommandTemplate, loneBracesAreMistakes) {
    EXPECT_THAT(mistakesOf("a{"), ElementsAre("lone {; write {{ for the character"));
    EXPECT_THAT(mistakesOf("a}b"), ElementsAre("lone }; write }} for the character"));
    EXPECT_THAT(mistakesOf("a{b{1}"), ElementsAre("lone {; write {{ for the character"));
}

TEST(CommandTemplate, aPlaceholderIsANumberFromOne) {
    for (const auto* text : {"{}", "{0}", "{01}", "{a}", "{ 1}", "{-1}", "{99999999999}"})
        EXPECT_THAT(mistakesOf(text),
                    ElementsAre("\"" + std::string(text) +
                                "\" is no placeholder; these are {1}, {2} and so on"));
}

TEST(CommandTemplate, everyMistakeOfATextIsReportedInItsOrder) {
    EXPECT_THAT(mistakesOf(R"(\q}\xZZ{)"),
                ElementsAre(R"(unknown escape "\q"; known are \xNN \r \n \t \\)",
                            "lone }; write }} for the character",
                            R"("\xZZ" is no byte; \x needs two hexadecimal digits)",
                            "lone {; write {{ for the character"));
}

TEST(CommandTemplateText, isReadBackAsTheSameBytesWhateverTheyAre) {
    CommandTemplate all;
    for (int byte = 0; byte < 256; ++byte)
        all.bytes += static_cast<char>(byte);
    const auto again = CommandTemplate::parse(all.text());
    EXPECT_TRUE(again.mistakes.empty());
    EXPECT_EQ(again.bytes, all.bytes);
    EXPECT_TRUE(again.placeholders.empty());
}

TEST(CommandTemplateText, canStandInSingleQuotesOnOneLine) {
    EXPECT_EQ(CommandTemplate({"\r\n\t'\\{}\x7f\xff z", {}, {}}).text(),
              R"(\r\n\t\x27\\{{}}\x7f\xff z)");
}

TEST(CommandTemplateText, hasPlaceholdersWhereTheyWere) {
    for (const auto* text : {"{1}", "a{1}{2}b", "{1}{{{2}}}{3}", "ab{12}"})
        EXPECT_EQ(CommandTemplate::parse(text).text(), text);
}

TEST(CommandTemplateText, hasPlaceholdersInTheOrderOfTheirPlaces) {
    EXPECT_EQ(CommandTemplate({"abc", {{1, 3}, {2, 0}, {3, 3}}, {}}).text(), "{2}abc{1}{3}");
}

}  // namespace
}  // namespace orx::orxdef
