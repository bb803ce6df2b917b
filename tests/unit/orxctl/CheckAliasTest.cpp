// What is found about command aliases.
#include "CheckBench.h"

namespace orx::orxctl {
namespace {

using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::Not;

constexpr const char* wanted =
    R"(an alias is "&" and the symbolic name of another command, such as &CMD_ZOOM_PLUS2)";

class CheckAliases : public CheckTable {};

TEST_P(CheckAliases, findsExactlyThat) {
    EXPECT_THAT(findings(GetParam().lines), ElementsAreArray(GetParam().findings));
}

INSTANTIATE_TEST_SUITE_P(
    Each, CheckAliases,
    testing::Values(
        Case{"sound", "cmd.CMD_POWER_OFF = &CMD_MUTE\ncmd.CMD_UNMUTE = &CMD_POWER_ON", {}},
        Case{"withoutAmpersand",
             "cmd.CMD_POWER_OFF = CMD_MUTE",
             {std::string(R"(orx.cfg:1: warning: "CMD_MUTE" does nothing: )") + wanted +
              R"(; is it "&CMD_MUTE"?)"}},
        Case{"bytes",
             R"(cmd.CMD_POWER_OFF = OFF\x0d)",
             {std::string(R"(orx.cfg:1: warning: "OFF\x0d" does nothing: )") + wanted}},
        Case{"malformedEscape",
             R"(cmd.CMD_POWER_OFF = \xZZ)",
             {std::string(R"(orx.cfg:1: error: the daemon ends with "ERROR: stoi": "\xZZ" has a )"
                          R"("\x" without two hexadecimal digits, and )") +
              wanted}},
        Case{"ofAKeyword",
             "cmd.OFF = &CMD_MUTE",
             {R"(orx.cfg:1: warning: "OFF" is the symbolic name of no command, so the alias does )"
              R"(nothing; is it "CMD_POWER_OFF"?)"}},
        Case{"ofAMistypedName",
             "cmd.CMD_POWEROFF = &CMD_MUTE",
             {R"(orx.cfg:1: warning: "CMD_POWEROFF" is the symbolic name of no command, so the )"
              R"(alias does nothing; is it "CMD_POWER_OFF"?)"}},
        Case{"ofNothing",
             "cmd.x = &CMD_MUTE",
             {R"(orx.cfg:1: warning: "x" is the symbolic name of no command, so the alias does )"
              R"(nothing; symbolic names look like CMD_ZOOM_PLUS)"}},
        Case{"toAKeyword",
             "cmd.CMD_POWER_OFF = &MUTE",
             {R"(orx.cfg:1: warning: "MUTE" is the symbolic name of no command, so that nothing )"
              R"(but an empty string is sent for "OFF"; is it "CMD_MUTE"?)"}},
        Case{"withABlank",
             "cmd.CMD_POWER_OFF = & CMD_MUTE",
             {R"(orx.cfg:1: warning: " CMD_MUTE" is the symbolic name of no command, so that )"
              R"(nothing but an empty string is sent for "OFF"; is it "CMD_MUTE"?)"}},
        Case{"toWhatTheModelLacks",
             "cmd.CMD_POWER_OFF = &CMD_FREEZE",
             {R"(orx.cfg:1: warning: projector model "M" has no command "FREEZE", so that nothing )"
              R"(but an empty string is sent for "OFF"; remove the alias or choose a command of )"
              "the model"}},
        Case{"toWhatAnotherAliasHasMade",
             "cmd.CMD_FREEZE = &CMD_MUTE\ncmd.CMD_POWER_OFF = &CMD_FREEZE",
             {}},
        Case{"toItself",
             "cmd.CMD_MUTE = &CMD_MUTE",
             {R"(orx.cfg:1: warning: the alias leads from "MUTE" to itself and changes nothing; )"
              "remove it"}},
        Case{"ofWhatTheDaemonDoes",
             "cmd.CMD_ZOOM_ABS = &CMD_MUTE",
             {R"(orx.cfg:1: warning: the daemon acts on "ZOOM" by itself, so the alias is never )"
              "used; remove it"}}),
    nameOf);

class CheckAliasesWithoutAModel : public CheckBench {};

TEST_F(CheckAliasesWithoutAModel, judgeTheNamesAlone) {
    const auto text = report(
        "projector =\ncmd.CMD_POWER_OFF = &CMD_FREEZE\ncmd.OFF = &CMD_MUTE\n"
        R"(cmd.CMD_MUTE = \xg0)");
    EXPECT_THAT(text, Not(HasSubstr("orx.cfg:2:")));
    EXPECT_THAT(text, HasSubstr("orx.cfg:3: warning: \"OFF\" is the symbolic name of no command"));
    EXPECT_THAT(text, HasSubstr("orx.cfg:4: error: as soon as it has a projector, the daemon ends "
                                "with \"ERROR: stoi\""));
}

}  // namespace
}  // namespace orx::orxctl
