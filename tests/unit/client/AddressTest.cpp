// What stands for a daemon on a command line.
#include <stdexcept>

#include <gmock/gmock.h>

#include "orx/client/Address.h"

namespace orx::client {
namespace {

TEST(Address, isHostAndPort) {
    EXPECT_EQ(Address::parse("hall.example:7782"), (Address{"hall.example", 7782}));
    EXPECT_EQ(Address::parse("10.0.0.5:1"), (Address{"10.0.0.5", 1}));
    EXPECT_EQ(Address::parse("10.0.0.5:65535"), (Address{"10.0.0.5", 65535}));
}

TEST(Address, hasTheUsualPortWhereNoneIsGiven) {
    EXPECT_EQ(Address::parse("hall"), (Address{"hall", 7781}));
    EXPECT_EQ(Address(), (Address{"127.0.0.1", 7781}));
}

TEST(Address, isShownAsItIsRead) {
    EXPECT_EQ(Address::parse("hall:1234").text(), "hall:1234");
    EXPECT_EQ(Address::parse("hall").text(), "hall:7781");
}

class WrongAddress : public testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(WrongAddress, isRefusedWithAReason) {
    const auto [text, reason] = GetParam();
    try {
        static_cast<void>(Address::parse(text));
        FAIL() << text << " is taken for an address";
    } catch (const std::invalid_argument& mistake) {
        EXPECT_EQ(mistake.what(), '"' + std::string(text) + "\" is no address: " + reason);
    }
}

constexpr auto* portRange = "a port is a number from 1 to 65535";
INSTANTIATE_TEST_SUITE_P(
    All, WrongAddress,
    testing::Values(std::pair{"", "the host is missing"}, std::pair{":7781", "the host is missing"},
                    std::pair{"hall:", portRange}, std::pair{"hall:0", portRange},
                    std::pair{"hall:65536", portRange}, std::pair{"hall:-1", portRange},
                    std::pair{"hall:77 ", "it holds blanks or commas"},
                    std::pair{"hall:77x", portRange}, std::pair{"a:b:1", portRange},
                    std::pair{"two words", "it holds blanks or commas"}));

}  // namespace
}  // namespace orx::client
