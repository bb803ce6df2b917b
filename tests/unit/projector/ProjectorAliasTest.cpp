// Aliases of the configuration: one command sends what another one would.
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "unit/projector/ModelBench.h"

namespace orx::test {
namespace {

using namespace std::string_literals;

constexpr ArgumentDescriptor digits(int count) {
    return {.min = 0, .max = 999, .pos = 1, .len = count, .type = 'A'};
}

Projector model(int checksum = 0) {
    return {"DEMO",
            {{"ZOOM", {{1, digits(3)}}}, {"FOCUS", {{1, digits(5)}}}},
            {{"ZOOM", "Z\r"}, {"FOCUS", "F\r"}, {"Z+", "zoom+"}, {"Z++", "zoom++"}},
            checksum};
}

TEST(ProjectorAliases, LetACommandSendTheStringOfAnother) {
    auto projector = model();
    projector.applyAliases({{"CMD_ZOOM_PLUS", "&CMD_ZOOM_PLUS2"}});
    EXPECT_EQ(bytesFor(projector, "Z+"), "zoom++");
    EXPECT_EQ(bytesFor(projector, "Z++"), "zoom++");
}

TEST(ProjectorAliases, AddACommandThatTheModelLacked) {
    auto projector = model();
    EXPECT_FALSE(projector.supports("Z+++"));
    projector.applyAliases({{"CMD_ZOOM_PLUS3", "&CMD_ZOOM_PLUS"}});
    EXPECT_TRUE(projector.supports("Z+++"));
    EXPECT_EQ(bytesFor(projector, "Z+++"), "zoom+");
}

TEST(ProjectorAliases, TakeOverTheArgumentsToo) {
    auto projector = model();
    projector.applyAliases(
        {{"CMD_ZOOM_ABS", "&CMD_FOCUS_ABS"}, {"CMD_ROTATION", "&CMD_FOCUS_ABS"}});
    EXPECT_EQ(bytesFor(projector, "ZOOM 7"), "F00007\r");
    EXPECT_EQ(bytesFor(projector, "ROTATION 7"), "F00007\r");
    EXPECT_EQ(bytesFor(projector, "FOCUS 7"), "F00007\r");
}

TEST(ProjectorAliases, KeepTheirOwnArgumentsWhereTheOtherCommandHasNone) {
    auto projector = model();
    projector.applyAliases({{"CMD_ZOOM_ABS", "&CMD_ZOOM_PLUS"}});
    EXPECT_EQ(bytesFor(projector, "ZOOM 7"), "z007oom+");
}

TEST(ProjectorAliases, ToACommandThatTheModelLacksAreEmpty) {
    auto projector = model(Projector::additiveChecksum);
    FakeLine line;
    FakeTime time;
    projector.setConnector(connectorTo(line, time, lineSettings()));
    projector.applyAliases({{"CMD_POWER_ON", "&CMD_POWER_OFF"}});
    EXPECT_TRUE(projector.supports("ON"));
    EXPECT_TRUE(projector.supports("OFF"));
    line.events.clear();
    projector.sendByName("ON");
    EXPECT_THAT(line.writes, testing::ElementsAre("\0"s));
    EXPECT_THAT(line.events, testing::ElementsAre("write", "drain", "read"));
    EXPECT_THAT(time.sleeps, testing::ElementsAre(20));
}

TEST(ProjectorAliases, ToANameThatIsNoneAreEmpty) {
    auto projector = model();
    EXPECT_FALSE(projector.supports(""));
    projector.applyAliases({{"CMD_ZOOM_PLUS", "&Z++"}, {"CMD_ZOOM_PLUS2", "&"}});
    EXPECT_EQ(bytesFor(projector, "Z+"), "");
    EXPECT_EQ(bytesFor(projector, "Z++"), "");
    EXPECT_TRUE(projector.supports("Z+"));
    EXPECT_TRUE(projector.supports(""));
}

TEST(ProjectorAliases, ToANameThatIsNoneTakeWhatIsFiledUnderTheEmptyName) {
    Projector projector("DEMO", {{"", {{1, digits(2)}}}}, {{"", "E!"}, {"ZOOM", "Z\r"}}, 0);
    projector.applyAliases({{"CMD_ZOOM_ABS", "&CMD_NOTHING"}});
    EXPECT_EQ(bytesFor(projector, "ZOOM 7"), "E07!");
}

TEST(ProjectorAliases, OfANameThatIsNoneChangeNothing) {
    auto projector = model();
    const auto before = dumpOf(projector);
    projector.applyAliases({{"ZOOM", "&CMD_FOCUS_ABS"},
                            {"cmd_zoom_abs", "&CMD_FOCUS_ABS"},
                            {"", "&CMD_FOCUS_ABS"},
                            {"CMD_NOTHING", "&CMD_POWER_ON"}});
    EXPECT_EQ(dumpOf(projector), before);
}

TEST(ProjectorAliases, AreAppliedInTheOrderOfTheirKeys) {
    auto projector = model();
    projector.applyAliases({{"CMD_ZOOM_PLUS2", "&CMD_FOCUS_ABS"},
                            {"CMD_ZOOM_PLUS", "&CMD_ZOOM_PLUS2"},
                            {"CMD_ZOOM_PLUS3", "&CMD_ZOOM_PLUS2"}});
    EXPECT_EQ(bytesFor(projector, "Z+"), "zoom++");  // taken before Z++ was changed
    EXPECT_EQ(bytesFor(projector, "Z++"), "F\r");
    EXPECT_EQ(bytesFor(projector, "Z+++"), "F\r");
}

TEST(ProjectorAliases, ToThemselvesChangeNothing) {
    auto projector = model();
    const auto before = dumpOf(projector);
    projector.applyAliases({{"CMD_ZOOM_ABS", "&CMD_ZOOM_ABS"}});
    EXPECT_EQ(dumpOf(projector), before);
}

TEST(ProjectorAliases, ThatDoNotPointToACommandChangeNothing) {
    auto projector = model();
    const auto before = dumpOf(projector);
    projector.applyAliases({{"CMD_ZOOM_ABS", "CMD_FOCUS_ABS"},
                            {"CMD_ZOOM_PLUS", "PON\\x0d"},
                            {"CMD_ZOOM_PLUS2", ""},
                            {"CMD_ZOOM_PLUS3", " &CMD_ZOOM_PLUS"},
                            {"warm", "\\x4"}});
    EXPECT_EQ(dumpOf(projector), before);
}

TEST(ProjectorAliases, WithAMalformedEscapeAreRefused) {
    for (const std::string key : {"CMD_ZOOM_ABS", "nothing"}) {
        try {
            model().applyAliases({{key, "PON\\xZZ"}});
            FAIL() << "accepted";
        } catch (const std::invalid_argument& error) {
            EXPECT_STREQ(error.what(), "stoi");
        }
    }
}

TEST(ProjectorAliases, HoldForTheCommandsThatAreAskedForByTheirKeyword) {
    auto projector = model();
    EXPECT_TRUE(projector.supports("ZOOM"));
    EXPECT_FALSE(projector.supports("zoom"));
    EXPECT_FALSE(projector.supports("CMD_ZOOM_ABS"));
}

}  // namespace
}  // namespace orx::test
