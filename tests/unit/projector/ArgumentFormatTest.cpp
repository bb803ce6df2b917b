// How one argument of each type is written.
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "projector/ArgumentInsertion.h"

namespace orx::test {
namespace {

constexpr int lowest = -2147483647 - 1;
constexpr int highest = 2147483647;

/// The text of an argument that stands alone in its command string.
std::string format(char type, int len, const std::string& argument, int min = lowest,
                   int max = highest) {
    ArgumentInsertion insertion("");
    insertion.insert(argument, {.min = min, .max = max, .pos = 0, .len = len, .type = type});
    return insertion.finish();
}

struct Case {
    int len;
    std::string argument;
    std::string text;
};

void expectTexts(char type, const std::vector<Case>& cases) {
    for (const auto& [len, argument, text] : cases)
        EXPECT_EQ(format(type, len, argument), text) << argument << " with len " << len;
}

std::string bytes(const std::vector<int>& values) {
    std::string text;
    for (const int value : values)
        text += static_cast<char>(value);
    return text;
}

TEST(ArgumentFormat, PadsTypeAWithZerosToTheWidth) {
    expectTexts('A', {{3, "42", "042"},
                      {3, "0", "000"},
                      {2, "300", "300"},
                      {0, "7", "7"},
                      {1, "-7", "-7"},
                      {10, "2147483647", "2147483647"},
                      {12, "-2147483648", "0-2147483648"}});
    EXPECT_EQ(format('A', 255, "1"), std::string(254, '0').append("1"));
}

TEST(ArgumentFormat, PutsTheZerosOfTypeAAheadOfTheSign) {
    expectTexts('A', {{4, "-5", "00-5"}, {3, "-42", "-42"}});
}

TEST(ArgumentFormat, WritesTypeBWithSignAndDigits) {
    expectTexts('B', {{3, "5", "+005"},
                      {3, "-7", "-007"},
                      {3, "0", "+000"},
                      {3, "1234", "+1234"},
                      {0, "5", "+5"},
                      {0, "-5", "-5"},
                      {10, "-2147483648", "-2147483648"}});
}

TEST(ArgumentFormat, WritesTypeIAsBytesTheHighestFirst) {
    expectTexts('I', {{0, "300", ""},
                      {1, "300", bytes({0x2C})},
                      {2, "300", bytes({0x01, 0x2C})},
                      {3, "300", bytes({0x00, 0x01, 0x2C})},
                      {4, "305419896", bytes({0x12, 0x34, 0x56, 0x78})},
                      {2, "305419896", bytes({0x56, 0x78})},
                      {4, "-2147483648", bytes({0x80, 0, 0, 0})},
                      {2, "-2", bytes({0xFF, 0xFE})},
                      {1, "-1", bytes({0xFF})}});
}

TEST(ArgumentFormat, RepeatsTheSignOfTypeIBeyondFourBytes) {
    expectTexts('I', {{5, "305419896", bytes({0x00, 0x12, 0x34, 0x56, 0x78})},
                      {6, "-2", bytes({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE})},
                      {5, "-2147483648", bytes({0xFF, 0x80, 0, 0, 0})},
                      {8, "2147483647", bytes({0, 0, 0, 0, 0x7F, 0xFF, 0xFF, 0xFF})}});
    EXPECT_EQ(format('I', 255, "-1"), std::string(255, '\xFF'));
    EXPECT_EQ(format('I', 255, "1"), std::string(254, '\0').append("\x01"));
}

TEST(ArgumentFormat, WritesTypeXInLowerCaseHexadecimal) {
    expectTexts('X', {{2, "200", "c8"},
                      {4, "200", "00c8"},
                      {0, "10", "a"},
                      {1, "255", "ff"},
                      {2, "0", "00"},
                      {8, "2147483647", "7fffffff"}});
}

TEST(ArgumentFormat, WritesANegativeTypeXAs32Bits) {
    expectTexts('X',
                {{2, "-1", "ffffffff"}, {10, "-2", "00fffffffe"}, {0, "-2147483648", "80000000"}});
}

TEST(ArgumentFormat, WritesAnyOtherTypeInPlainDecimal) {
    for (const char type : {'Z', 'a', 'd', 'x', '0', '\0', '\xFF'}) {
        EXPECT_EQ(format(type, 5, "42"), "42");
        EXPECT_EQ(format(type, 5, "-42"), "-42");
        EXPECT_EQ(format(type, 5, "42", 50, 60), "50");
    }
}

TEST(ArgumentFormat, WritesTypeDWithSignDigitsAndDecimals) {
    expectTexts('D', {{0x23, "1,256", "+001.26"},
                      {0x23, "1.256", "+001.26"},
                      {0x23, "-1.256", "-001.26"},
                      {0x23, "0", "+000.00"},
                      {0x23, "12345.678", "+12345.68"},
                      {0x11, "-9.96", "-10.0"},
                      {0x03, "5", "+0005"},
                      {0x01, "-12", "-12"},
                      {0x2F, "1", "+000000000000001.00"},
                      {0xF1, "0.000001", "+0.000001000000000"}});
}

TEST(ArgumentFormat, RoundsTypeDHalfAwayFromZero) {
    expectTexts('D', {{0x21, "0.125", "+0.13"},
                      {0x21, "-0.125", "-0.13"},
                      {0x21, "0.124999", "+0.12"},
                      {0x01, "0.5", "+01"},
                      {0x01, "1.5", "+02"},
                      {0x01, "2.5", "+03"},
                      {0x01, "-2.5", "-03"},
                      {0x21, "-0.004", "+0.00"}});
}

TEST(ArgumentFormat, WritesTypeDWithoutDigitsInGeneralNotation) {
    expectTexts('D', {{0x10, "2.25", "2"},
                      {0x20, "2.25", "2.2"},
                      {0x30, "2.25", "2.25"},
                      {0x30, "-2.25", "-2.25"},
                      {0x10, "25", "2e+01"},
                      {0x10, "26", "3e+01"},
                      {0x20, "1234.5", "1.2e+03"},
                      {0x00, "7.6", "8"},
                      {0x40, "0", "0"}});
}

TEST(ArgumentFormat, ReadsACommaOfTypeDAsAPoint) {
    expectTexts('D',
                {{0x23, "1,2,3", "+001.20"}, {0x23, ",5", "+000.50"}, {0x23, "1,5e1", "+015.00"}});
}

TEST(ArgumentFormat, SendsTheMinimumOfTypeDForWhatCannotBeRounded) {
    for (const std::string argument : {"inf", "-inf", "nan", "-nan", "INFINITY", "1e300", "-1e300",
                                       "9223372036854775808", "1e17"}) {
        EXPECT_EQ(format('D', 0x23, argument, -5000, 5000), "-050.00") << argument;
        EXPECT_EQ(format('D', 0x23, argument, 200, 5000), "+002.00") << argument;
    }
    EXPECT_EQ(format('D', 0x03, "9e18", 1, 999), "+0999");
    EXPECT_EQ(format('D', 0x03, "9223372036854774784", 1, 999), "+0999");
    EXPECT_EQ(format('D', 0x03, "9223372036854775808", 1, 999), "+0001");
}

TEST(ArgumentFormat, KeepsValuesBeyond32BitsUntilTheyAreBounded) {
    EXPECT_EQ(format('D', 0x23, "30000000", -5000, 5000), "+050.00");
    EXPECT_EQ(format('D', 0x23, "-30000000", -5000, 5000), "-050.00");
    EXPECT_EQ(format('D', 0x23, "5000000000", -5000, 5000), "+050.00");
}

TEST(ArgumentFormat, BoundsEveryTypeSilently) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"-4", "000"}, {"0", "000"}, {"255", "255"}, {"256", "255"}, {"300", "255"}};
    for (const auto& [argument, text] : cases)
        EXPECT_EQ(format('A', 3, argument, 0, 255), text) << argument;
    EXPECT_EQ(format('B', 2, "99", -10, 10), "+10");
    EXPECT_EQ(format('B', 2, "-99", -10, 10), "-10");
    EXPECT_EQ(format('I', 2, "70000", 0, 65535), bytes({0xFF, 0xFF}));
    EXPECT_EQ(format('X', 2, "-1", 0, 255), "00");
    EXPECT_EQ(format('D', 0x23, "99", -5000, 5000), "+050.00");
    EXPECT_EQ(format('D', 0x23, "-50.01", -5000, 5000), "-050.00");
    EXPECT_EQ(format('D', 0x23, "49.994", -5000, 5000), "+049.99");
    EXPECT_EQ(format('D', 0xF1, "1", 0, highest), "+0.000002147483647");
}

TEST(ArgumentFormat, LetsTheMinimumWinOverAMaximumBelowIt) {
    EXPECT_EQ(format('A', 2, "3", 10, 5), "10");
    EXPECT_EQ(format('A', 2, "7", 10, 5), "10");
    EXPECT_EQ(format('A', 2, "10", 10, 5), "05");
    EXPECT_EQ(format('A', 2, "12", 10, 5), "05");
    EXPECT_EQ(format('D', 0x12, "0.3", 10, 5), "+01.0");
    EXPECT_EQ(format('D', 0x12, "0.7", 10, 5), "+01.0");
    EXPECT_EQ(format('D', 0x12, "1.0", 10, 5), "+00.5");
    EXPECT_EQ(format('D', 0x12, "9", 10, 5), "+00.5");
}

TEST(ArgumentFormat, ReadsAWholeNumberUpToTheFirstOtherCharacter) {
    expectTexts('A', {{1, "12abc", "12"},
                      {1, "0x10", "0"},
                      {1, "+5", "5"},
                      {1, " 7", "7"},
                      {1, "1.9", "1"},
                      {1, "1e3", "1"},
                      {1, "007", "7"}});
    expectTexts('D', {{0x12, "2.5kg", "+02.5"}, {0x12, "+2", "+02.0"}, {0x12, "0x10", "+16.0"}});
}

TEST(ArgumentFormat, RefusesATextThatIsNoNumber) {
    for (const char type : {'A', 'B', 'I', 'X', 'Z', 'D'}) {
        const std::string name = type == 'D' ? "stod" : "stoi";
        for (const std::string argument : {"", "abc", "-", ".", "&"}) {
            try {
                ADD_FAILURE() << format(type, 1, argument);
            } catch (const std::invalid_argument& error) {
                EXPECT_EQ(error.what(), name) << type << argument;
            }
        }
    }
    EXPECT_THROW(format('A', 1, "nan"), std::invalid_argument);
    EXPECT_THROW(format('A', 1, ",5"), std::invalid_argument);
}

TEST(ArgumentFormat, RefusesANumberOutOfTheRangeOfItsConversion) {
    const auto errorOf = [](char type, const std::string& argument) -> std::string {
        try {
            return "sent " + format(type, 1, argument);
        } catch (const std::out_of_range& error) {
            return error.what();
        }
    };
    for (const char type : {'A', 'B', 'I', 'X', 'Z'}) {
        EXPECT_EQ(errorOf(type, "2147483648"), "stoi");
        EXPECT_EQ(errorOf(type, "-2147483649"), "stoi");
        EXPECT_EQ(errorOf(type, "99999999999999999999"), "stoi");
    }
    EXPECT_EQ(errorOf('D', "1e400"), "stod");
    EXPECT_EQ(errorOf('D', "-1e400"), "stod");
    EXPECT_EQ(errorOf('D', "1e-400"), "stod");
}

}  // namespace
}  // namespace orx::test
