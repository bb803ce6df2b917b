#include <array>
#include <cstdio>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "core/Text.h"

namespace orx::test {
namespace {

using namespace std::string_literals;

/// Every byte there is, in ascending order.
std::string allBytes() {
    std::string bytes;
    for (int value = 0; value < 256; ++value)
        bytes += static_cast<char>(value);
    return bytes;
}

std::string twoHexDigits(char byte) {
    std::array<char, 3> digits{};
    std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned char>(byte) + 0U);
    return digits.data();
}

TEST(Trim, RemovesTheFourBlanksAtBothEnds) {
    EXPECT_EQ(trim(" \tvalue\r\n"), "value");
    EXPECT_EQ(trim("\n\r\t value \t\r\n\n"), "value");
    EXPECT_EQ(trim("value\r"), "value");
    EXPECT_EQ(trim("\nvalue"), "value");
    EXPECT_EQ(trim("v"), "v");
}

TEST(Trim, KeepsBlanksWithin) {
    EXPECT_EQ(trim(" a \t b\r\nc "), "a \t b\r\nc");
}

TEST(Trim, LeavesNothingOfBlanksAlone) {
    EXPECT_EQ(trim(""), "");
    EXPECT_EQ(trim(" "), "");
    EXPECT_EQ(trim(" \t\r\n"), "");
    EXPECT_EQ(trim("\n\n\n\n"), "");
}

TEST(Trim, RemovesNoOtherCharacter) {
    for (const auto& text :
         {"\vvalue\v"s, "\fvalue\f"s, "\0value\0"s, "\xa0value\xa0"s, "_value_"s})
        EXPECT_EQ(trim(text), text) << testing::PrintToString(text);
}

TEST(EscapeBytes, KeepsPrintableCharacters) {
    EXPECT_EQ(escapeBytes("AB"), "AB");
    EXPECT_EQ(escapeBytes(" ~"), " ~");
    EXPECT_EQ(escapeBytes("a\\x41"), "a\\x41");
}

TEST(EscapeBytes, WritesAllOthersInHexadecimal) {
    EXPECT_EQ(escapeBytes("\r\n"), "\\x0d\\x0a");
    EXPECT_EQ(escapeBytes("\0\x1f\x7f\x80\xff"s), "\\x00\\x1f\\x7f\\x80\\xff");
    EXPECT_EQ(escapeBytes("A\nB"), "A\\x0aB");
}

TEST(EscapeBytes, GivesNothingForNothing) {
    EXPECT_EQ(escapeBytes(""), "");
}

TEST(EscapeBytes, TreatsEveryByteByItsValue) {
    for (const char byte : allBytes()) {
        const auto value = static_cast<unsigned char>(byte);
        const bool printable = value >= 0x20 && value <= 0x7e;
        EXPECT_EQ(escapeBytes(std::string(1, byte)),
                  printable ? std::string(1, byte) : "\\x" + twoHexDigits(byte));
    }
}

TEST(ListBytes, ListsThemInHexadecimal) {
    EXPECT_EQ(listBytes("\x02\x1b\xff"), "[02 1b ff]");
    EXPECT_EQ(listBytes("\0"s), "[00]");
    EXPECT_EQ(listBytes("AZ"), "[41 5a]");
}

TEST(ListBytes, IsEmptyForNoBytes) {
    EXPECT_EQ(listBytes(""), "[]");
}

TEST(ListBytes, ListsEveryByteByItsValue) {
    for (const char byte : allBytes())
        EXPECT_EQ(listBytes(std::string(1, byte)), "[" + twoHexDigits(byte) + "]");
}

TEST(UnescapeBytes, TurnsEscapesIntoBytes) {
    EXPECT_EQ(unescapeBytes("A\\x42C"), "ABC");
    EXPECT_EQ(unescapeBytes("A\\X42C"), "ABC");
    EXPECT_EQ(unescapeBytes("\\x0d\\x0A"), "\r\n");
    EXPECT_EQ(unescapeBytes("\\x00\\xff\\xFf\\x80"), "\0\xff\xff\x80"s);
    EXPECT_EQ(unescapeBytes("a\\x41b\\x42c"), "aAbBc");
    EXPECT_EQ(unescapeBytes("\\x5cx41"), "\\x41");
}

TEST(UnescapeBytes, LeavesTextWithoutEscapesAlone) {
    for (const auto& text : {""s, "abc"s, "x41"s, "a\0b\xff"s, "100%"s})
        EXPECT_EQ(unescapeBytes(text), text);
}

TEST(UnescapeBytes, LeavesOtherBackslashesAlone) {
    EXPECT_EQ(unescapeBytes("a\\nb"), "a\\nb");
    EXPECT_EQ(unescapeBytes("a\\nbcd"), "a\\nbcd");
    EXPECT_EQ(unescapeBytes("\\\\\\\\"), "\\\\\\\\");
    EXPECT_EQ(unescapeBytes("\\y41\\z42"), "\\y41\\z42");
}

TEST(UnescapeBytes, LooksAtTheCharacterBehindABackslashAnew) {
    EXPECT_EQ(unescapeBytes("\\\\x41"), "\\A");
    EXPECT_EQ(unescapeBytes("\\n\\x41"), "\\nA");
    EXPECT_EQ(unescapeBytes("\\\\\\x41z"), "\\\\Az");
}

TEST(UnescapeBytes, LeavesAnEscapeThatIsTooShortAlone) {
    EXPECT_EQ(unescapeBytes("\\x4"), "\\x4");
    EXPECT_EQ(unescapeBytes("abc\\x4"), "abc\\x4");
    EXPECT_EQ(unescapeBytes("\\x41\\x4"), "A\\x4");
    EXPECT_EQ(unescapeBytes("\\"), "\\");
    EXPECT_EQ(unescapeBytes("a\\x"), "a\\x");
    EXPECT_EQ(unescapeBytes("\\\\x4"), "\\\\x4");
}

TEST(UnescapeBytes, TakesABlankOrSignAndStopsBehindTheNumber) {
    EXPECT_EQ(unescapeBytes("\\x 9"), "\t");
    EXPECT_EQ(unescapeBytes("\\x\t9"), "\t");
    EXPECT_EQ(unescapeBytes("\\x+f"), "\x0f");
    EXPECT_EQ(unescapeBytes("\\x-1"), "\xff");
    EXPECT_EQ(unescapeBytes("\\x4z!"), "\x04!");
    EXPECT_EQ(unescapeBytes("\\x4\\x42"), "\x04x42");
    EXPECT_EQ(unescapeBytes("\\x0x41"), "\0"s + "41");
    EXPECT_EQ(unescapeBytes("\\x4\0!"s), "\x04!");
}

TEST(UnescapeBytes, FailsWithoutAHexadecimalDigit) {
    for (const auto& text :
         {"\\xzz"s, "\\x  "s, "\\x--"s, "\\x+-"s, "ok\\x41\\xg1"s, "\\x\0001"s, "\\x\xa0\x31"s}) {
        try {
            static_cast<void>(unescapeBytes(text));
            ADD_FAILURE() << "accepted " << testing::PrintToString(text);
        } catch (const std::invalid_argument& error) {
            EXPECT_STREQ(error.what(), "stoi");
        }
    }
}

TEST(UnescapeBytes, UndoesEscapeBytes) {
    const auto bytes = allBytes();
    EXPECT_EQ(unescapeBytes(escapeBytes(bytes)), bytes);
}

}  // namespace
}  // namespace orx::test
