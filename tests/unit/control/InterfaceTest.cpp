// How an interface text is taken apart; that a listener reads it so is tested with the listener.
#include <stdexcept>

#include <gtest/gtest.h>

#include "control/Interface.h"
#include "support/UdpPeer.h"

namespace orx::test {
namespace {

TEST(Interface, HasAddressAndPort) {
    const auto interface = parseInterface(" 127.0.0.9 :\t7781 ");
    EXPECT_EQ(interface.address, "127.0.0.9");
    EXPECT_EQ(interface.port, "7781");
    EXPECT_EQ(interface.portNumber, 7781);
    EXPECT_EQ(addressText(interface.socketAddress), "127.0.0.9");
    EXPECT_EQ(portOf(interface.socketAddress), 7781);
}

TEST(Interface, StandsForAllAddressesAsAStar) {
    EXPECT_EQ(parseInterface("*:1").address, "0.0.0.0");
}

TEST(Interface, CutsThePortForTheSocketAlone) {
    const auto interface = parseInterface("127.0.0.1:65537x");
    EXPECT_EQ(interface.portNumber, 65537);
    EXPECT_EQ(interface.port, "65537x");
    EXPECT_EQ(portOf(interface.socketAddress), 1);
}

TEST(Interface, ThrowsForTheFirstOfItsMistakes) {
    EXPECT_THROW(static_cast<void>(parseInterface("x")), std::runtime_error);
    EXPECT_THROW(static_cast<void>(parseInterface("x:y")), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(parseInterface("x:1")), std::runtime_error);
}

}  // namespace
}  // namespace orx::test
