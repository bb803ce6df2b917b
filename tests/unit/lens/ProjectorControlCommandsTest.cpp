// Where each command goes: to the daemon itself, to an axis, or to the projector.
#include <map>
#include <stdexcept>

#include "unit/lens/ControlBench.h"

namespace orx::test {
namespace {

class ProjectorControlCommands : public ControlBench {};

TEST_F(ProjectorControlCommands, GoToTheProjectorUnlessTheDaemonOrAnAxisTakesThem) {
    // Keyword -> what is sent for it instead of its own string.
    const std::map<std::string, Lines> taken{
        {"QUIT", {}},
        {"RESTART", {}},
        {"SETDELAY", {}},
        {"RAW", {}},
        {"MEMCLEAR", {}},
        {"MEMSAVE", {}},
        {"MEMLOAD", {}},
        {"LENSRESET", {"ZOOMRESET", "FOCUSRESET"}},
        {"ZOOM", {}},
        {"ZOOMX", {}},
        {"ZOCALSTART", {"ZOOMRESET"}},
        {"ZOCALEND", {"ZOOMRESET"}},
        {"OVERRIDEZOPOS", {}},
        {"SETZORSTSTEPS", {}},
        {"FOCUS", {}},
        {"FOCUSX", {}},
        {"FOCALSTART", {"FOCUSRESET"}},
        {"FOCALEND", {"FOCUSRESET"}},
        {"OVERRIDEFOPOS", {}},
        {"SETFORSTSTEPS", {}},
    };
    const auto keywords = allKeywords();
    ASSERT_THAT(keywords, testing::SizeIs(108));
    const auto model = modelKnowing(keywords);
    for (const auto& keyword : keywords) {
        buildOn(model);
        line.writes.clear();
        execute(keyword);
        const auto expected = taken.find(keyword);
        EXPECT_EQ(sent(), expected != taken.end() ? expected->second : Lines{keyword}) << keyword;
    }
}

TEST_F(ProjectorControlCommands, ReachTheirOwnAxisOnly) {
    build();
    placeAt(100, 200);
    execute("ZOOMX 101");
    EXPECT_EQ(status(), "IDLE; zoom: 100/2000>101 focus: 200/1000");
    execute("FOCUSX 300");
    EXPECT_EQ(status(), "IDLE; zoom: 100/2000>101 focus: 200/1000>300");
    execute("AZ+");
    execute("AF-");
    EXPECT_EQ(status(), "IDLE; zoom: 100/2000>102 focus: 200/1000>299");
    EXPECT_THAT(sent(), testing::IsEmpty());
}

TEST_F(ProjectorControlCommands, ForTheProjectorAreEncodedWithTheirArguments) {
    const ArgumentTable arguments{
        {"INPUT", {{1, {.min = 0, .max = 99, .pos = 3, .len = 2, .type = 'A'}}}}};
    buildOn(connectedModel({{"INPUT", "IN=\r"}, {"ON", "PWR1\r"}}, arguments,
                           Projector::additiveChecksum));
    execute("INPUT 7");
    execute("ON");
    EXPECT_EQ(line.writes, Lines({"IN=07\rH", "PWR1\r\x37"}));
    EXPECT_THAT(logged(), testing::IsEmpty());
}

TEST_F(ProjectorControlCommands, ThatTheModelLacksSendNothing) {
    build();
    EXPECT_EQ(outputOf([this] {
                  execute("ON");
                  execute("NATMEMSAVE 1");
                  execute("Z+");
              }),
              "");
    EXPECT_THAT(line.writes, testing::IsEmpty());
    EXPECT_THAT(logged(), testing::IsEmpty());
}

TEST_F(ProjectorControlCommands, ForTheNativeMemoryLeaveTheLensMemoryAlone) {
    buildOn(modelKnowing({"NATMEMSAVE", "NATMEMLOAD", "NATMEMCLEAR"}));
    const auto before = contentOf(memoryPath);
    execute("NATMEMSAVE 1");
    execute("NATMEMLOAD 1");
    execute("NATMEMCLEAR 1");
    EXPECT_EQ(sent(), Lines({"NATMEMSAVE", "NATMEMLOAD", "NATMEMCLEAR"}));
    EXPECT_EQ(contentOf(memoryPath), before);
}

TEST_F(ProjectorControlCommands, ChangeTheDelayOfTheLine) {
    buildOn(modelKnowing({"ON"}));
    execute("ON");
    execute("SETDELAY 350 9");
    EXPECT_EQ(settings->delay(), 350);
    execute("ON");
    execute("SETDELAY 0");
    execute("ON");
    EXPECT_EQ(lineTime.sleeps, std::vector<int>({20, 350, 0}));
}

TEST_F(ProjectorControlCommands, ChangeTheDelayOfTheLineToAnyNumber) {
    build();
    for (const int delay : {-5, 10001, 2147483647, -2147483647 - 1}) {
        execute("SETDELAY " + std::to_string(delay));
        EXPECT_EQ(settings->delay(), delay);
    }
}

TEST_F(ProjectorControlCommands, LeaveTheDelayWithoutAnArgument) {
    build();
    execute("SETDELAY");
    execute("SETDELAY fast");
    EXPECT_EQ(settings->delay(), 20);
}

TEST_F(ProjectorControlCommands, ThrowForAnArgumentThatIsNoNumber) {
    build();
    for (const std::string keyword : {"SETDELAY", "MEMSAVE", "MEMLOAD", "ZOOMX", "FOCUSX"}) {
        SCOPED_TRACE(keyword);
        EXPECT_THAT([&] { control->execute(withUncheckedWord(keyword, "abc")); },
                    ThrowsStoi<std::invalid_argument>());
        EXPECT_THAT([&] { control->execute(withUncheckedWord(keyword, "-2147483649")); },
                    ThrowsStoi<std::out_of_range>());
    }
    EXPECT_EQ(settings->delay(), 20);
    EXPECT_THAT(sent(), testing::IsEmpty());
    EXPECT_THAT(logged(), testing::IsEmpty());
}

TEST_F(ProjectorControlCommands, ThrowForAnArgumentThatTheEncodingCannotRead) {
    const ArgumentTable arguments{
        {"INPUT", {{1, {.min = 0, .max = 99, .pos = 0, .len = 2, .type = 'A'}}}}};
    buildOn(connectedModel({{"INPUT", "IN"}}, arguments));
    EXPECT_THAT([this] { control->execute(withUncheckedWord("INPUT", "x")); },
                ThrowsStoi<std::invalid_argument>());
    EXPECT_THAT(sent(), testing::IsEmpty());
}

class ProjectorControlRaw : public ControlBench {
  protected:
    /// A model that would add a checksum, and has a string for the keyword itself.
    ProjectorControlRaw() {
        buildOn(connectedModel({{"RAW", "<RAW>"}}, {}, Projector::additiveChecksum));
    }
};

TEST_F(ProjectorControlRaw, SendsTheBytesAsTheyAre) {
    execute("RAW 0D0a");
    execute("RAW 00 fF 7e41");
    EXPECT_EQ(line.writes, Lines({"\r\n", std::string("\0\xff~A", 4)}));
    EXPECT_EQ(line.events,
              Lines({"open", "attributes", "write", "drain", "read", "write", "drain", "read"}));
}

TEST_F(ProjectorControlRaw, ReadsTwoCharactersAByte) {
    struct Case {
        std::string word;
        std::string bytes;
    };
    const std::vector<Case> cases{
        {"ABC", "\xab\x0c"}, {"7", "\x07"},        {"+f", "\x0f"},       {"-1", "\xff"},
        {" a", "\x0a"},      {"4g42", "\x04\x42"}, {"0x41", {"\0A", 2}},
    };
    for (const auto& [word, bytes] : cases) {
        SCOPED_TRACE(word);
        line.writes.clear();
        control->execute(withUncheckedWord("RAW", word));
        EXPECT_EQ(line.writes, Lines{bytes});
    }
}

TEST_F(ProjectorControlRaw, SendsNothingWhereAPieceHoldsNoDigit) {
    for (const std::string word : {"ZZ", "41ZZ", "ZZ41", "41Z", "4142-"}) {
        EXPECT_THAT([&] { control->execute(withUncheckedWord("RAW", word)); },
                    ThrowsStoi<std::invalid_argument>());
    }
    EXPECT_THAT(line.writes, testing::IsEmpty());
}

TEST_F(ProjectorControlRaw, WithoutWholeBytesIsIgnored) {
    execute("RAW");
    execute("RAW ABC");
    execute("RAW ZZ");
    EXPECT_THAT(line.writes, testing::IsEmpty());
}

}  // namespace
}  // namespace orx::test
