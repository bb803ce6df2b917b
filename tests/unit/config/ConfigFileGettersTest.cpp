#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "unit/config/OpenConfigFile.h"

namespace orx::test {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// A store with `value` under "key".
class ConfigWith : public OpenConfigFile {
  public:
    explicit ConfigWith(const std::string& value) { entries["key"] = value; }
};

int intOf(const std::string& value) {
    return ConfigWith(value).getInt("key", -77);
}

std::vector<std::string> listOf(const std::string& value) {
    return ConfigWith(value).getList("key");
}

/// The text of the `Error` that reading `value` as a whole number raises.
template <typename Error>
std::string errorOf(const std::string& value) {
    try {
        return "read as " + std::to_string(intOf(value));
    } catch (const Error& error) {
        return error.what();
    }
}

TEST(ConfigString, IsTheValue) {
    EXPECT_EQ(ConfigWith("some value").getString("key"), "some value");
    EXPECT_EQ(ConfigWith("").getString("key"), "");
    EXPECT_EQ(ConfigWith("a\0b"s).getString("key"), "a\0b"s);
}

TEST(ConfigString, IsEmptyForAnAbsentKey) {
    const ConfigWith config("value");
    for (const auto* key : {"", "KEY", "ke", "keys", "key ", "other"})
        EXPECT_EQ(config.getString(key), "") << key;
}

TEST(ConfigInt, IsTheFallbackForAnAbsentKey) {
    const ConfigWith config("5");
    EXPECT_EQ(config.getInt("other", 3), 3);
    EXPECT_EQ(config.getInt("other", -1), -1);
    EXPECT_EQ(config.getInt("KEY", 3), 3);
}

TEST(ConfigInt, IsTheFallbackForAnEmptyValue) {
    EXPECT_EQ(ConfigWith("").getInt("key", 3), 3);
}

TEST(ConfigInt, IsTheValueWhateverTheFallback) {
    EXPECT_EQ(ConfigWith("0").getInt("key", 3), 0);
    EXPECT_EQ(ConfigWith("5").getInt("key", 3), 5);
}

TEST(ConfigInt, IsTheNumberThatBeginsTheValue) {
    EXPECT_EQ(intOf("12"), 12);
    EXPECT_EQ(intOf("+5"), 5);
    EXPECT_EQ(intOf("-5"), -5);
    EXPECT_EQ(intOf("007"), 7);
    EXPECT_EQ(intOf("12abc"), 12);
    EXPECT_EQ(intOf("0x10"), 0);
    EXPECT_EQ(intOf(" 5"), 5);
    EXPECT_EQ(intOf("\v\f\t\n\r 5"), 5);
    EXPECT_EQ(intOf("5 6"), 5);
    EXPECT_EQ(intOf("1.5e2"), 1);
    EXPECT_EQ(intOf("5\0009"s), 5);
    EXPECT_EQ(intOf("5\xa0"), 5);
}

TEST(ConfigInt, ReachesFromTheLowestToTheHighestOf32Bits) {
    EXPECT_EQ(intOf("2147483647"), std::numeric_limits<int>::max());
    EXPECT_EQ(intOf("-2147483648"), std::numeric_limits<int>::min());
}

TEST(ConfigInt, FailsWithoutANumber) {
    for (const auto& value : {"abc"s, "-"s, "+"s, "+-5"s, "--5"s, ".5"s, "x10"s, " "s, "inf"s,
                              "\xa0"s + "5", "\0005"s}) {
        EXPECT_EQ(errorOf<std::invalid_argument>(value), "stoi") << testing::PrintToString(value);
    }
}

TEST(ConfigInt, FailsBeyond32Bits) {
    for (const auto* value : {"2147483648", "-2147483649", "99999999999", "99999999999999999999999",
                              "-99999999999999999999999"}) {
        EXPECT_EQ(errorOf<std::out_of_range>(value), "stoi") << value;
    }
}

TEST(ConfigList, IsEmptyForAnAbsentKey) {
    EXPECT_THAT(OpenConfigFile().getList("key"), IsEmpty());
    EXPECT_THAT(ConfigWith("a,b").getList("other"), IsEmpty());
}

TEST(ConfigList, HasOneEmptyPieceForAnEmptyValue) {
    EXPECT_THAT(listOf(""), ElementsAre(""));
}

TEST(ConfigList, IsSplitAtEveryComma) {
    EXPECT_THAT(listOf("a"), ElementsAre("a"));
    EXPECT_THAT(listOf("a,b,c"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(listOf("a;b c"), ElementsAre("a;b c"));
}

TEST(ConfigList, TrimsItsPieces) {
    EXPECT_THAT(listOf(" 1 , 2,3"), ElementsAre("1", "2", "3"));
    EXPECT_THAT(listOf("\ta b\r,\n c \t"), ElementsAre("a b", "c"));
}

TEST(ConfigList, KeepsEmptyPieces) {
    EXPECT_THAT(listOf("a,,b"), ElementsAre("a", "", "b"));
    EXPECT_THAT(listOf("a,"), ElementsAre("a", ""));
    EXPECT_THAT(listOf(",a"), ElementsAre("", "a"));
    EXPECT_THAT(listOf(","), ElementsAre("", ""));
    EXPECT_THAT(listOf("a,,"), ElementsAre("a", "", ""));
    EXPECT_THAT(listOf(" , "), ElementsAre("", ""));
}

}  // namespace
}  // namespace orx::test
