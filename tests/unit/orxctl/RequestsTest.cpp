// What the user wants to be sent is checked, and mistakes are answered with what was meant.
#include <chrono>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>

#include "orxctl/Requests.h"

namespace orx::orxctl {
namespace {

std::string mistakeOf(const std::string& text) {
    try {
        return "none: " + parseRequest(text).text();
    } catch (const std::invalid_argument& mistake) {
        return mistake.what();
    }
}

TEST(Requests, areTakenAsTheDaemonTakesThem) {
    EXPECT_EQ(mistakeOf("ZOOM 32768"), "none: ZOOM 32768");
    EXPECT_EQ(mistakeOf("INPUT 1 2 3"), "none: INPUT 1 2 3");
    EXPECT_EQ(mistakeOf("INPUT"), "none: INPUT");
    EXPECT_EQ(mistakeOf("RAW 0a 0d"), "none: RAW 0a0d");
}

TEST(Requests, haveWholeNumbersAndNothingBehindThem) {
    EXPECT_EQ(mistakeOf("ZOOM 1O0"), R"(ZOOM takes whole numbers, not "1O0")");
    EXPECT_EQ(mistakeOf("ZOOM 50%"), R"(ZOOM takes whole numbers, not "50%")");
    EXPECT_EQ(mistakeOf("INPUT 1 2.9"), R"(INPUT takes whole numbers, not "2.9")");
    EXPECT_EQ(mistakeOf("ZOOM +5"), "none: ZOOM +5");
    EXPECT_EQ(mistakeOf("ZOOM -5"), "none: ZOOM -5");
    EXPECT_EQ(mistakeOf("KEYSTONEVERT 2.5.1"),
              R"(KEYSTONEVERT takes decimal numbers, not "2.5.1")");
    EXPECT_EQ(mistakeOf("KEYSTONEVERT inf"), R"(KEYSTONEVERT takes decimal numbers, not "inf")");
    EXPECT_EQ(mistakeOf("KEYSTONEVERT -.5e1"), "none: KEYSTONEVERT -.5e1");
}

TEST(Requests, thatAreMistypedAreAnsweredWithTheNearestOnes) {
    EXPECT_EQ(mistakeOf("zoom 1"), R"(unknown command "zoom"; did you mean "ZOOM" or "ZOOMX"?)");
    EXPECT_EQ(mistakeOf("FOCUSRESETT"),
              R"(unknown command "FOCUSRESETT"; did you mean "FOCUSRESET"?)");
    EXPECT_EQ(mistakeOf("stauts"),
              R"(unknown command "stauts"; did you mean "status" or "STATUS"?)");
    EXPECT_EQ(mistakeOf("CMD_ZOOM_ABS 1"),
              R"(unknown command "CMD_ZOOM_ABS"; its keyword is "ZOOM")");
    EXPECT_EQ(mistakeOf("xyzzy"), R"(unknown command "xyzzy"; "orxctl commands" lists them all)");
}

TEST(Requests, thatDoNothingWithoutTheirArgumentAreRefused) {
    for (const std::string keyword : {"ZOOM", "FOCUSX", "MEMLOAD", "MEMSAVE", "SETDELAY", "RAW",
                                      "OVERRIDEZOPOS", "SETFORSTSTEPS"})
        EXPECT_EQ(mistakeOf(keyword), keyword + " does nothing without an argument");
    EXPECT_EQ(mistakeOf("ZOCALEND"), "none: ZOCALEND");
    EXPECT_EQ(mistakeOf("MEMCLEAR"), "none: MEMCLEAR");
}

TEST(Requests, ofWhichTheDaemonTakesOneArgumentAloneHaveNoMore) {
    EXPECT_EQ(mistakeOf("ZOOM 1 2"), "ZOOM takes one argument, not 2");
    EXPECT_EQ(mistakeOf("ZOCALEND 1 2 3"), "ZOCALEND takes one argument, not 3");
}

TEST(Seconds, areWholeOrDecimal) {
    using std::chrono::milliseconds;
    EXPECT_EQ(parseSeconds("2"), milliseconds(2000));
    EXPECT_EQ(parseSeconds("0.25"), milliseconds(250));
    EXPECT_EQ(parseSeconds("0"), milliseconds(0));
    EXPECT_EQ(parseSeconds("86400"), milliseconds(86'400'000));
}

TEST(Seconds, areRefusedWhereTheyAreNone) {
    for (const auto* const text : {"", "x", "1s", "-1", "86401", "inf", "nan", " 1", "1 "})
        EXPECT_THROW(static_cast<void>(parseSeconds(text)), std::invalid_argument) << text;
}

}  // namespace
}  // namespace orx::orxctl
