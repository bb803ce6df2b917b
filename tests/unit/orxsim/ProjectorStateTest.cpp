// What the projector remembers.
#include <gmock/gmock.h>

#include "orxsim/ProjectorState.h"

namespace orx::orxsim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The names of the switches that are on.
std::vector<std::string_view> switchedOn(const ProjectorState& state) {
    std::vector<std::string_view> names;
    for (const auto& [name, on] : state.switches()) {
        if (on) names.push_back(name);
    }
    return names;
}

TEST(ProjectorState, hasEverythingOffAtFirst) {
    const ProjectorState state;
    EXPECT_THAT(switchedOn(state), IsEmpty());
    EXPECT_EQ(state.input(), "");
    EXPECT_THAT(state.values(), IsEmpty());
}

TEST(ProjectorState, turnsEachSwitchOnAndOffByItsOwnCommands) {
    const std::vector<std::tuple<std::string, std::string, std::string>> switches{
        {"ON", "OFF", "power"},
        {"SHON", "SHOFF", "shutter"},
        {"MUTE", "UNMUTE", "audio mute"},
        {"PICMUTE", "PICUNMUTE", "picture mute"},
        {"AVMUTE", "AVUNMUTE", "av mute"},
        {"FREEZE", "UNFREEZE", "freeze"}};
    for (const auto& [on, off, name] : switches) {
        ProjectorState state;
        state.apply(on, {});
        EXPECT_THAT(switchedOn(state), ElementsAre(name)) << on;
        state.apply(on, {});
        EXPECT_THAT(switchedOn(state), ElementsAre(name)) << on;
        state.apply(off, {});
        EXPECT_THAT(switchedOn(state), IsEmpty()) << off;
    }
}

TEST(ProjectorState, keepsTheInputChosenLast) {
    ProjectorState state;
    EXPECT_TRUE(state.apply("INPUT", {"3"}));
    EXPECT_TRUE(state.apply("INPUT", {"7"}));
    EXPECT_FALSE(state.apply("INPUT", {"7"}));
    EXPECT_EQ(state.input(), "7");
    EXPECT_THAT(state.values(), IsEmpty());
}

TEST(ProjectorState, keepsTheLastArgumentsOfEveryOtherCommand) {
    ProjectorState state;
    state.apply("TEST", {"3", "255"});
    state.apply("CONTRAST", {"-5"});
    state.apply("TEST", {"4", "0"});
    state.apply("ARCRESET", {});
    ASSERT_EQ(state.values().size(), 2U);
    EXPECT_THAT(state.values().at("TEST"), ElementsAre("4", "0"));
    EXPECT_THAT(state.values().at("CONTRAST"), ElementsAre("-5"));
}

/// As a projector that has many functions before its lamp is lit.
TEST(ProjectorState, keepsWhatIsSetInStandby) {
    ProjectorState state;
    state.apply("INPUT", {"2"});
    state.apply("OFF", {});
    state.apply("PICMUTE", {});
    EXPECT_EQ(state.input(), "2");
    EXPECT_THAT(switchedOn(state), ElementsAre("picture mute"));
}

}  // namespace
}  // namespace orx::orxsim
