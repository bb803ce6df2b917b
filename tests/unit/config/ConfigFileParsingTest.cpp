#include <map>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"
#include "unit/config/OpenConfigFile.h"

namespace orx::test {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Store = std::map<std::string, std::string, std::less<>>;

class ConfigFileParsing : public testing::Test {
  protected:
    Store parse(const std::string& content) const {
        return OpenConfigFile(folder.write("orx.cfg", content)).entries;
    }

    /// The text of the error that the content makes.
    std::string errorOf(const std::string& content) const {
        try {
            parse(content);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "no error";
    }

    std::string parseError(int line) const {
        return "[config] " + folder.file("orx.cfg") + ", line " + std::to_string(line) +
               ": parse error";
    }

    TemporaryFolder folder;
};

TEST_F(ConfigFileParsing, GivesNothingForAFileWithoutEntries) {
    for (const auto* content :
         {"", "\n", "\n\n\n", " \t \r\n", "# a comment\n", "; one more\n\n   # and more",
          "#key = value\n;key = value\n \t#key=value\r\n", "#", ";"}) {
        EXPECT_THAT(parse(content), IsEmpty()) << content;
    }
}

TEST_F(ConfigFileParsing, TrimsLinesKeysAndValues) {
    const Store expected{{"key", "some value"}};
    for (const auto* content :
         {"key=some value", "key = some value\n", "  key  =  some value  ",
          "\tkey\t=\tsome value\t\n", "key = some value\r\n", "\r key \r=\r some value \r\r\n"}) {
        EXPECT_EQ(parse(content), expected) << testing::PrintToString(content);
    }
}

TEST_F(ConfigFileParsing, TrimsNoOtherBlanks) {
    EXPECT_THAT(parse("\vkey\v=\fvalue\f\n\xa0odd\xa0=\xa0too\xa0\n"),
                ElementsAre(Pair("\vkey\v", "\fvalue\f"), Pair("\xa0odd\xa0", "\xa0too\xa0")));
}

TEST_F(ConfigFileParsing, SeparatesKeyAndValueAtTheFirstEqualsSign) {
    EXPECT_THAT(parse("a=b=c"), ElementsAre(Pair("a", "b=c")));
    EXPECT_THAT(parse("a==b="), ElementsAre(Pair("a", "=b=")));
    EXPECT_THAT(parse("a = b = c\n"), ElementsAre(Pair("a", "b = c")));
}

TEST_F(ConfigFileParsing, KeepsBlanksInsideKeysAndValues) {
    EXPECT_THAT(parse("my own  key = its \t value"),
                ElementsAre(Pair("my own  key", "its \t value")));
}

TEST_F(ConfigFileParsing, TakesACommentCharacterOnlyAtTheStartOfALine) {
    EXPECT_THAT(parse("zoom = 5 # note\nfocus = 6;\nke#y;=#;"),
                ElementsAre(Pair("focus", "6;"), Pair("ke#y;", "#;"), Pair("zoom", "5 # note")));
}

TEST_F(ConfigFileParsing, TakesEmptyKeysAndEmptyValues) {
    EXPECT_THAT(parse("= 5"), ElementsAre(Pair("", "5")));
    EXPECT_THAT(parse("key ="), ElementsAre(Pair("key", "")));
    EXPECT_THAT(parse(" = "), ElementsAre(Pair("", "")));
}

TEST_F(ConfigFileParsing, LetsTheLastOfTwoEntriesWin) {
    EXPECT_THAT(parse("key = 1\nother = 2\nkey = 3\n"),
                ElementsAre(Pair("key", "3"), Pair("other", "2")));
    EXPECT_THAT(parse("key = 1\nkey =\n"), ElementsAre(Pair("key", "")));
}

TEST_F(ConfigFileParsing, HasKeysWithCaseAndDots) {
    EXPECT_THAT(
        parse("serial.device = a\nSerial.Device = b\ncmd.x = c\n"),
        ElementsAre(Pair("Serial.Device", "b"), Pair("cmd.x", "c"), Pair("serial.device", "a")));
}

TEST_F(ConfigFileParsing, OrdersKeysByTheirBytes) {
    EXPECT_THAT(parse("b=\na.b=\na=\nB=\naa=\na-b=\n"),
                ElementsAre(Pair("B", ""), Pair("a", ""), Pair("a-b", ""), Pair("a.b", ""),
                            Pair("aa", ""), Pair("b", "")));
}

TEST_F(ConfigFileParsing, ReadsALastLineWithoutLineFeed) {
    EXPECT_THAT(parse("a = 1\nb = 2"), ElementsAre(Pair("a", "1"), Pair("b", "2")));
}

TEST_F(ConfigFileParsing, SplitsLinesAtLineFeedsOnly) {
    EXPECT_THAT(parse("a = 1\rb = 2\n"), ElementsAre(Pair("a", "1\rb = 2")));
}

TEST_F(ConfigFileParsing, KeepsBytesOfAnyValue) {
    EXPECT_THAT(parse("k\0y = v\0l\xff\n"s), ElementsAre(Pair("k\0y"s, "v\0l\xff"s)));
    const std::string longValue(100'000, 'v');
    EXPECT_THAT(parse("key = " + longValue), ElementsAre(Pair("key", longValue)));
}

TEST_F(ConfigFileParsing, FailsAtALineWithoutEqualsSign) {
    EXPECT_EQ(errorOf("garbage"), parseError(1));
    EXPECT_EQ(errorOf("  garbage  \r\n"), parseError(1));
    EXPECT_EQ(errorOf("a = 1\n[section]\nb = 2\n"), parseError(2));
}

TEST_F(ConfigFileParsing, CountsEveryLineOfTheFileInAnError) {
    EXPECT_EQ(errorOf("# comment\n\ngarbage\n"), parseError(3));
    EXPECT_EQ(errorOf(std::string(1233, '\n') + "garbage\n"), parseError(1234));
    EXPECT_EQ(errorOf("a=1\n;\r\n \t \n=\nno # sign ;\n"), parseError(5));
}

TEST_F(ConfigFileParsing, NamesTheFirstOfTwoWrongLines) {
    EXPECT_EQ(errorOf("a = 1\nwrong\nwrong too\n"), parseError(2));
}

TEST_F(ConfigFileParsing, KeepsTheEntriesAheadOfAWrongLine) {
    OpenConfigFile config(folder.write("orx.cfg", "a = 1\n"));
    folder.write("orx.cfg", "b = 2\ngarbage\nc = 3\n");
    EXPECT_THROW(config.load(), std::runtime_error);
    EXPECT_THAT(config.entries, ElementsAre(Pair("a", "1"), Pair("b", "2")));
}

}  // namespace
}  // namespace orx::test
