// What the screen shows, line by line.
#include <algorithm>

#include <gmock/gmock.h>

#include "orxsim/Screen.h"
#include "unit/orxsim/ProjectorBench.h"

namespace orx::orxsim {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Le;
using testing::SizeIs;

class ScreenLines : public testing::Test {
  protected:
    explicit ScreenLines(const Behaviour& behaviour = {}) : bench(behaviour) {}

    void send(std::string_view bytes) {
        bench.send(bytes);
        for (const auto& report : bench.reports())
            screen.add(report);
    }

    std::vector<std::string> lines(ScreenSize size = {}) {
        return screen.lines(bench.projector(), size);
    }

    ProjectorBench bench;
    Screen screen{{"/dev/pts/7", "/run/projector", "BENCH"}};
};

TEST_F(ScreenLines, fitEightyColumns) {
    send("PWR ON\rSOURCE 07\rX\xff\rZ +\rPATTERN 03,00ff00\r");
    EXPECT_THAT(
        lines(),
        ElementsAre(
            "orxsim: BENCH at /run/projector -> /dev/pts/7", "",
            "zoom   |------------------------------#------------------------------| 1005/2000",
            "       lens at 1005, 0 lost steps, end stops met by 0 steps, 0 jogs, 0 resets",
            "focus  |------------------------------#------------------------------| 500/1000",
            "       lens at 500, 0 lost steps, end stops met by 0 steps, 0 jogs, 0 resets", "",
            "power on   shutter off   audio mute off   picture mute off   av mute off",
            "freeze off   input 7", "TEST 3 65280", "", "4 commands, 1 unknown. Ctrl-C ends.",
            "  TEST 3 65280                            OK\\x0d",
            "  Z+                                      OK\\x0d",
            "  X\\xff\\x0d  ? no command of this model   ERR\\x0d",
            "  INPUT 7                                 OK\\x0d",
            "  ON                                      OK\\x0d"));
}

TEST_F(ScreenLines, areNeverLongerThanTheTerminalIsWide) {
    send("PWR ON\r" + std::string(300, 'x') + "\rPATTERN 03,00ff00\r");
    for (const std::size_t columns : {1U, 10U, 40U, 79U, 80U, 200U}) {
        const auto shown = lines({columns, 24});
        EXPECT_THAT(shown, Each(SizeIs(Le(columns)))) << columns;
        EXPECT_GT(shown.size(), 8U) << columns;
    }
}

TEST_F(ScreenLines, useAWiderTerminal) {
    EXPECT_THAT(lines({120, 24})[2], SizeIs(120));
    EXPECT_THAT(lines({60, 24})[2], SizeIs(60));
}

TEST_F(ScreenLines, areNeverMoreThanTheTerminalIsHigh) {
    for (int number = 0; number < 50; ++number)
        send("PWR ON\r");
    EXPECT_THAT(lines({80, 24}), SizeIs(24));
    EXPECT_THAT(lines({80, 5}), SizeIs(5));
}

TEST_F(ScreenLines, keepTheLastCommandsOnASmallTerminal) {
    send("PWR ON\rSOURCE 07\rX\r");
    const auto shown = lines({40, 8});
    EXPECT_THAT(shown, ElementsAre(HasSubstr("orxsim"), HasSubstr("zoom"), HasSubstr("focus"),
                                   HasSubstr("power on"), HasSubstr("2 commands, 1 unknown"),
                                   HasSubstr("X"), HasSubstr("INPUT 7"), HasSubstr("ON")));
}

TEST_F(ScreenLines, putTheNewestCommandFirst) {
    for (int number = 0; number < 50; ++number)
        send("PWR ON\r");
    send("PWR OFF\r");
    const auto shown = lines();
    const auto footer = std::ranges::find_if(
        shown, [](const auto& line) { return line.starts_with("51 commands"); });
    ASSERT_NE(footer, shown.end());
    EXPECT_THAT(footer[1], HasSubstr("OFF"));
    EXPECT_THAT(footer[2], HasSubstr("ON"));
}

TEST_F(ScreenLines, showContactsWithEndStops) {
    send("Z HOME\rZ STEP -\rZ STEP -\r");
    const auto shown = lines();
    EXPECT_EQ(shown[2].substr(0, 10), "zoom   |#-");
    EXPECT_THAT(shown[3], HasSubstr("end stops met by 2 steps, 0 jogs, 1 reset"));
    EXPECT_THAT(shown.back(), HasSubstr("ZOOMRESET"));
    EXPECT_THAT(shown.back(), HasSubstr("end stop"));
}

Behaviour slack() {
    Behaviour behaviour;
    behaviour.travel = {100, 100};
    behaviour.start = {100, 0};
    behaviour.backlash = 50;
    behaviour.answers = AnswerFault::silent;
    return behaviour;
}

class ScreenLinesWithBacklash : public ScreenLines {
  protected:
    ScreenLinesWithBacklash() : ScreenLines(slack()) {}
};

TEST_F(ScreenLinesWithBacklash, showTheLensApartFromTheMotor) {
    bench.send("Z ---\rZ +\rZ +\rZ +\rZ +\rZ +\r");
    const auto zoom = lines()[2];
    EXPECT_EQ(zoom[8], 'o');
    EXPECT_GT(zoom.find('#'), 15U);
    EXPECT_THAT(lines()[3], HasSubstr("lens at 0,"));
}

TEST_F(ScreenLinesWithBacklash, keepTheMotorOnTheScaleBeyondTheTravel) {
    send("Z +\r");
    const auto zoom = lines()[2];
    EXPECT_THAT(zoom, HasSubstr("-#| 105/100"));
}

TEST_F(ScreenLinesWithBacklash, sayThatThereIsNoAnswer) {
    send("PWR ON\r");
    EXPECT_THAT(lines().back(), HasSubstr("no answer"));
}

}  // namespace
}  // namespace orx::orxsim
