// The reply to STATUS, taken apart.
#include <ostream>
#include <string>

#include <gmock/gmock.h>

#include "orx/client/DaemonStatus.h"

namespace orx::client {
namespace {

DaemonStatus parsed(const std::string& reply) {
    return DaemonStatus::parse(reply).value();
}

AxisStatus axisOf(const std::string& position) {
    return parsed("IDLE; zoom: " + position + ";\n").axes.at(0);
}

TEST(DaemonStatus, saysWhetherItIsBusy) {
    EXPECT_TRUE(parsed("BUSY; zoom: 1/2>2 focus: 0/3;HELO \n").busy);
    EXPECT_FALSE(parsed("IDLE; zoom: 1/2 focus: 0/3;HELO \n").busy);
}

TEST(DaemonStatus, hasTheAxesInTheOrderOfTheReply) {
    const auto status = parsed("IDLE; zoom: 1/2 focus: 0/3;\n");
    ASSERT_EQ(status.axes.size(), 2U);
    EXPECT_EQ(status.axes[0], (AxisStatus{"zoom", 1, 2}));
    EXPECT_EQ(status.axes[1], (AxisStatus{"focus", 0, 3}));
    EXPECT_EQ(status.axis("focus"), &status.axes[1]);
    EXPECT_EQ(status.axis("shift"), nullptr);
}

TEST(DaemonStatus, hasNoAxesWithoutAProjector) {
    const auto status = parsed("IDLE;;HELO DUMB \n");
    EXPECT_THAT(status.axes, testing::IsEmpty());
    EXPECT_FALSE(status.hasProjector());
    EXPECT_TRUE(parsed("IDLE; zoom: undefined;\n").hasProjector());
}

/// A position, what it means, and whether the axis then rests.
struct Position {
    std::string text;
    AxisStatus axis;
    bool isAtRest;
};

void PrintTo(const Position& position, std::ostream* output) {
    *output << position.text;
}

class AxisPosition : public testing::TestWithParam<Position> {};

TEST_P(AxisPosition, isTakenApartAndPutTogetherAgain) {
    const auto& [text, axis, isAtRest] = GetParam();
    EXPECT_EQ(axisOf(text), axis);
    EXPECT_EQ(axis.positionText(), text);
    EXPECT_EQ(axis.isAtRest(), isAtRest);
}

INSTANTIATE_TEST_SUITE_P(
    All, AxisPosition,
    testing::Values(Position{"undefined", {"zoom"}, true},
                    Position{"resetting>1200", {"zoom", {}, {}, 1200, true}, false},
                    Position{"resetting>-1", {"zoom", {}, {}, -1, true}, false},
                    Position{"317", {"zoom", 317}, true}, Position{"-5", {"zoom", -5}, true},
                    Position{"800/2000", {"zoom", 800, 2000}, true},
                    Position{"800/2000>1200", {"zoom", 800, 2000, 1200}, false},
                    Position{"0/0>-1", {"zoom", 0, 0, -1}, false},
                    Position{"2147483647/2147483647>-2147483648",
                             {"zoom", 2147483647, 2147483647, -2147483647 - 1},
                             false}));

/// The flags of a reply, and which of the four they are.
struct Flags {
    std::string text;
    bool hello;
    bool lensConfigLoaded;
    bool dumbMode;
    bool debugMode;
};

void PrintTo(const Flags& flags, std::ostream* output) {
    *output << '"' << flags.text << '"';
}

class StatusFlags : public testing::TestWithParam<Flags> {};

TEST_P(StatusFlags, areReadOneByOne) {
    const auto& flags = GetParam();
    const auto status = parsed("IDLE;;" + flags.text + "\n");
    EXPECT_EQ(status.hello, flags.hello);
    EXPECT_EQ(status.lensConfigLoaded, flags.lensConfigLoaded);
    EXPECT_EQ(status.dumbMode, flags.dumbMode);
    EXPECT_EQ(status.debugMode, flags.debugMode);
}

INSTANTIATE_TEST_SUITE_P(All, StatusFlags,
                         testing::Values(Flags{"", false, false, false, false},
                                         Flags{"HELO ", true, false, false, false},
                                         Flags{"LCU ", false, true, false, false},
                                         Flags{"DUMB ", false, false, true, false},
                                         Flags{"DEBUG", false, false, false, true},
                                         Flags{"HELO LCU DUMB DEBUG", true, true, true, true},
                                         Flags{"NEW HELO  LATER", true, false, false, false}));

TEST(DaemonStatus, showsItsFlagsWithoutABlankBehindThem) {
    EXPECT_EQ(parsed("IDLE;;HELO LCU DUMB DEBUG\n").flagsText(), "HELO LCU DUMB DEBUG");
    EXPECT_EQ(parsed("IDLE;;LCU \n").flagsText(), "LCU");
    EXPECT_EQ(parsed("IDLE;;\n").flagsText(), "");
}

TEST(DaemonStatus, isAtRestWhenItIsIdleAndNoAxisIsOnItsWay) {
    EXPECT_TRUE(parsed("IDLE; zoom: 1/2 focus: undefined;\n").isAtRest());
    EXPECT_TRUE(parsed("IDLE;;\n").isAtRest());
    EXPECT_FALSE(parsed("BUSY; zoom: 1/2 focus: 0/3;\n").isAtRest());
    EXPECT_FALSE(parsed("IDLE; zoom: 1/2 focus: 0/3>1;\n").isAtRest());
    EXPECT_FALSE(parsed("IDLE; zoom: resetting>0 focus: 0/3;\n").isAtRest());
}

class NoStatus : public testing::TestWithParam<const char*> {};

TEST_P(NoStatus, isNotTakenForOne) {
    EXPECT_EQ(DaemonStatus::parse(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    All, NoStatus,
    testing::Values("", "IDLE", "IDLE;", "IDLE;;", "idle;;\n", " IDLE;;\n", "IDLE;;\nIDLE;;\n",
                    "IDLE; ;\n", "IDLE; zoom;\n", "IDLE; zoom: ;\n", "IDLE; zoom: x;\n",
                    "IDLE;zoom: 1/2;\n", "IDLE; : 1/2;\n", "IDLE; zoom: 1/;\n",
                    "IDLE; zoom: 1/2>;\n", "IDLE; zoom: 1>2;\n", "IDLE; zoom: /2;\n",
                    "IDLE; zoom: 1/2x;\n", "IDLE; zoom: 1/2 ;\n", "IDLE; zoom: resetting;\n",
                    "IDLE; zoom: resetting>;\n", "IDLE; zoom: resetting>1/2;\n",
                    "IDLE; zoom: 99999999999;\n", "IDLE; zoom: undefinedx;\n"));

}  // namespace
}  // namespace orx::client
