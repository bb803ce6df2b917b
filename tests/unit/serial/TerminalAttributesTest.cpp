// The attributes for the terminal, field by field. A pseudo-terminal shows neither parity nor
// character size, so they are looked at here.
#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "serial/SerialSettings.h"

namespace orx::test {
namespace {

constexpr LineParameters plain{
    .bytesize = 8, .stopbits = 1, .parity = 0, .baudrate = 9600, .timeout = 0, .delay = 0};

termios attributesOf(const LineParameters& line) {
    return SerialSettings(line).terminalAttributes();
}

const std::vector<std::pair<int, speed_t>> speeds{
    {50, B50},           {75, B75},           {110, B110},         {134, B134},
    {150, B150},         {200, B200},         {300, B300},         {600, B600},
    {1200, B1200},       {1800, B1800},       {2400, B2400},       {4800, B4800},
    {9600, B9600},       {19200, B19200},     {38400, B38400},     {57600, B57600},
    {115200, B115200},   {230400, B230400},   {460800, B460800},   {500000, B500000},
    {576000, B576000},   {921600, B921600},   {1000000, B1000000}, {1152000, B1152000},
    {1500000, B1500000}, {2000000, B2000000}, {2500000, B2500000}, {3000000, B3000000},
    {3500000, B3500000}, {4000000, B4000000}};

TEST(TerminalAttributes, HaveTheConstantOfEachRateInBothDirections) {
    ASSERT_EQ(speeds.size(), 30U);
    for (const auto& [baudrate, constant] : speeds) {
        SCOPED_TRACE(baudrate);
        auto line = plain;
        line.baudrate = baudrate;
        const auto attributes = attributesOf(line);
        EXPECT_EQ(::cfgetispeed(&attributes), constant);
        EXPECT_EQ(::cfgetospeed(&attributes), constant);
    }
}

TEST(TerminalAttributes, HaveNoNearestRate) {
    for (const int baudrate : {-1, 0, 1, 49, 51, 135, 9599, 9601, 14400, 28800, 31250, 128000,
                               3999999, 4000001, 2147483647}) {
        SCOPED_TRACE(baudrate);
        auto line = plain;
        line.baudrate = baudrate;
        const auto attributes = attributesOf(line);
        EXPECT_EQ(::cfgetispeed(&attributes), static_cast<speed_t>(B0));
        EXPECT_EQ(::cfgetospeed(&attributes), static_cast<speed_t>(B0));
    }
}

TEST(TerminalAttributes, HaveTheControlFlagsOfEveryCombination) {
    const std::vector<std::pair<int, tcflag_t>> sizes{{5, CS5}, {6, CS6}, {7, CS7}, {8, CS8},
                                                      {4, CS8}, {9, CS8}, {0, CS8}, {255, CS8}};
    const std::vector<std::pair<int, tcflag_t>> parities{
        {0, 0}, {1, PARENB | PARODD}, {2, PARENB}, {3, 0}, {15, 0}};
    const std::vector<std::pair<int, tcflag_t>> stops{{1, 0}, {2, CSTOPB}, {0, 0}, {3, 0}};
    for (const auto& [baudrate, speed] : speeds) {
        for (const auto& [bytesize, sizeFlag] : sizes) {
            for (const auto& [parity, parityFlags] : parities) {
                for (const auto& [stopbits, stopFlag] : stops) {
                    const auto attributes = attributesOf({.bytesize = bytesize,
                                                          .stopbits = stopbits,
                                                          .parity = parity,
                                                          .baudrate = baudrate,
                                                          .timeout = 0,
                                                          .delay = 0});
                    EXPECT_EQ(attributes.c_cflag,
                              CREAD | CLOCAL | sizeFlag | parityFlags | stopFlag | speed)
                        << baudrate << " " << bytesize << " " << parity << " " << stopbits;
                }
            }
        }
    }
}

TEST(TerminalAttributes, AreThoseOfARawLine) {
    auto line = plain;
    line.timeout = 700;
    const auto attributes = attributesOf(line);
    EXPECT_EQ(attributes.c_iflag, 0U);
    EXPECT_EQ(attributes.c_oflag, 0U);
    EXPECT_EQ(attributes.c_lflag, 0U);
    EXPECT_EQ(attributes.c_line, 0);
    for (std::size_t place = 0; place < std::size(attributes.c_cc); ++place)
        EXPECT_EQ(attributes.c_cc[place], place == VTIME ? 7 : 0) << place;
}

TEST(TerminalAttributes, WaitForAReplyInWholeTenthsOfASecond) {
    const std::vector<std::pair<int, int>> cases{
        {0, 0},       {50, 0},      {99, 0},      {100, 1},   {199, 1},    {250, 2},    {1000, 10},
        {10000, 100}, {25500, 255}, {25599, 255}, {25600, 0}, {30000, 44}, {65535, 143}};
    for (const auto& [timeout, tenths] : cases) {
        auto line = plain;
        line.timeout = timeout;
        const auto attributes = attributesOf(line);
        EXPECT_EQ(attributes.c_cc[VTIME], tenths) << timeout;
        EXPECT_EQ(attributes.c_cc[VMIN], 0) << timeout;
    }
}

TEST(TerminalAttributes, FollowTheDelayInNothing) {
    SerialSettings settings(plain);
    const auto before = settings.terminalAttributes();
    settings.setDelay(5000);
    const auto after = settings.terminalAttributes();
    EXPECT_EQ(before.c_cflag, after.c_cflag);
    EXPECT_TRUE(std::ranges::equal(before.c_cc, after.c_cc));
}

}  // namespace
}  // namespace orx::test
