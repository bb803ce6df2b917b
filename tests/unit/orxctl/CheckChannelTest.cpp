// What is found about the control channels, and how the network of the machine is read.
#include <ifaddrs.h>
#include <net/if.h>

#include "CheckBench.h"
#include "CheckHoldingProcess.h"
#include "CheckOrdinaryUser.h"
#include "orxctl/check/ChannelCheck.h"
#include "orxctl/check/Network.h"
#include "orxctl/check/Person.h"

namespace orx::orxctl {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* wanted = "give an IPv4 address, a colon and a port, such as 127.0.0.1:7781";

std::string end(const std::string& daemonText, const std::string& reason) {
    return "orx.cfg:1: error: the daemon ends with \"ERROR: " + daemonText + "\": " + reason;
}

std::string noAddress(const std::string& daemonText, const std::string& item) {
    return end(daemonText,
               "\"" + item + "\" is no address to listen on; " + wanted + ", but no host name");
}

class CheckChannels : public CheckTable {};

TEST_P(CheckChannels, findsExactlyThat) {
    EXPECT_THAT(findings(GetParam().lines), ElementsAreArray(GetParam().findings));
}

INSTANTIATE_TEST_SUITE_P(
    Each, CheckChannels,
    testing::Values(
        Case{"noColon",
             "controlchannel = 7781",
             {noAddress("[LISTENER] port missing in interface: 7781", "7781")}},
        Case{"noPort", "controlchannel = 127.0.0.1:", {noAddress("stoi", "127.0.0.1:")}},
        Case{"portBeforeAddress",
             "controlchannel = localhost:http",
             {noAddress("stoi", "localhost:http")}},
        Case{"hostName",
             "controlchannel = localhost:7781",
             {noAddress("[LISTENER] IP address localhost could not be converted: Success",
                        "localhost:7781")}},
        Case{"emptyItem",
             "controlchannel = 127.0.0.1:17781,",
             {end("[LISTENER] port missing in interface: ",
                  std::string("the list has an empty item; remove the comma too many, or ") +
                      wanted)}},
        Case{"emptyList",
             "controlchannel =",
             {end("[LISTENER] port missing in interface: ",
                  std::string("the list has an empty item; remove the comma too many, or ") +
                      wanted)}},
        Case{"everyItemIsJudged",
             "controlchannel = 1, 2",
             {noAddress("[LISTENER] port missing in interface: 1", "1"),
              noAddress("[LISTENER] port missing in interface: 2", "2")}},
        Case{"cutPort",
             "controlchannel = 127.0.0.1:83317",
             {"orx.cfg:1: warning: port 83317 is cut to port 17781; give 1 to 65535"}},
        Case{"negativePort",
             "controlchannel = 127.0.0.1:-47755",
             {"orx.cfg:1: warning: port -47755 is cut to port 17781; give 1 to 65535"}},
        Case{"portWithATail",
             "controlchannel = 127.0.0.1:17781/udp",
             {R"(orx.cfg:1: warning: "17781/udp" is read as 17781; leave out "/udp")"}},
        Case{"anyPort",
             "controlchannel = 127.0.0.1:0, 127.0.0.1:0",
             {"orx.cfg:1: warning: with port 0 the system chooses a port, which no client knows; "
              "give 1 to 65535",
              "orx.cfg:1: warning: with port 0 the system chooses a port, which no client knows; "
              "give 1 to 65535"}},
        Case{"addressOfAnotherMachine",
             "controlchannel = 192.0.2.1:7781",
             {end("[LISTENER] socket bind failed: Cannot assign requested address",
                  "this machine does not have the address 192.0.2.1; give one of its own, or "
                  "127.0.0.1"),
              "orx.cfg:1: warning: 192.0.2.1:7781 is open to the network: anyone there can drive "
              "the projector, without a password; use 127.0.0.1, or a firewall"}}),
    nameOf);

class CheckChannel : public CheckBench {};

TEST_F(CheckChannel, isOpenToTheNetworkOnAllAddresses) {
    for (const std::string address : {"*", "0.0.0.0"}) {
        const test::UdpPeer probe("0.0.0.0");  // a port that nobody else has
        const auto port = std::to_string(test::portOf(probe.address()));
        EXPECT_THAT(findings("controlchannel = " + address + ":" + port),
                    Contains("orx.cfg:1: warning: 0.0.0.0:" + port +
                             " is open to the network: anyone there can drive the projector, "
                             "without a password; use 127.0.0.1, or a firewall"));
    }
}

TEST_F(CheckChannel, cannotBeListedTwice) {
    const auto again = end("[LISTENER] socket bind failed: Address already in use",
                           channel() +
                               " is already listened on by an item ahead of it; remove one "
                               "of them");
    EXPECT_THAT(findings("controlchannel = " + channel() + ", " + channel()), ElementsAre(again));
    EXPECT_THAT(
        findings("controlchannel = *:" + std::to_string(test::privatePort) + "," + channel()),
        Contains(again));
    EXPECT_THAT(findings("controlchannel = " + channel() + ", " + channel(1)), IsEmpty());
}

TEST_F(CheckChannel, canBeTakenByAnotherProcess) {
    const test::UdpPeer peer(test::privateAddress());
    const auto taken = test::privateAddress() + ":" + std::to_string(test::portOf(peer.address()));
    const HoldingProcess holder("dnsmasq");
    const auto lines = findings("controlchannel = " + taken);
    const auto failure = end("[LISTENER] socket bind failed: Address already in use",
                             taken + " is taken by process ");
    EXPECT_THAT(lines, Contains(testing::AllOf(
                           testing::StartsWith(failure + std::to_string(holder.id()) + " ("),
                           testing::EndsWith("); end it, or give another port"))));
    EXPECT_EQ(status, 1);
}

TEST_F(CheckChannel, canBeServedByADaemonThatAlreadyRuns) {
    const test::UdpPeer peer(test::privateAddress());
    const auto taken = test::privateAddress() + ":" + std::to_string(test::portOf(peer.address()));
    const HoldingProcess holder("orx");
    const auto lines = findings("controlchannel = " + taken);
    EXPECT_THAT(lines, Contains(testing::AllOf(
                           HasSubstr("\"ERROR: [LISTENER] socket bind failed: Address already in "
                                     "use\": " +
                                     taken + " is served by a daemon that already runs, process " +
                                     std::to_string(holder.id())),
                           testing::EndsWith("; send it RESTART to make it read this "
                                             "configuration, or QUIT to end it"))));
    EXPECT_THAT(lines, Contains(HasSubstr("\"LINE\" is held by a daemon that already runs")));
}

TEST_F(CheckChannel, canBeTakenWithoutThatItShowsByWhom) {
    const test::UdpPeer peer(test::privateAddress());
    const auto taken = test::privateAddress() + ":" + std::to_string(test::portOf(peer.address()));
    EXPECT_THAT(report("controlchannel = " + taken),
                testing::AnyOf(HasSubstr(taken + " is taken by another process; end it, or give "
                                                 "another port"),
                               HasSubstr(taken + " is taken, it seems by a daemon")))
        << "of another user";
}

TEST_F(CheckChannel, isTakenItSeemsByADaemonOfAnotherUser) {
    if (::geteuid() != 0) GTEST_SKIP() << "only the administrator has processes of other users";
    const test::UdpPeer peer(test::privateAddress());
    const auto taken = test::privateAddress() + ":" + std::to_string(test::portOf(peer.address()));
    const auto config = configure("controlchannel = " + taken);
    const HoldingProcess holder("orx");
    const OrdinaryUser user;
    EXPECT_THAT(reportOn(config),
                testing::ContainsRegex(taken +
                                       " is taken, it seems by a daemon that already runs, .*"
                                       "process " +
                                       std::to_string(holder.id()) + " "));
}

TEST_F(CheckChannel, mayBeTakenByASocketOfIpv6) {
    const FileDescriptor socket(::socket(AF_INET6, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    if (::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        GTEST_SKIP() << "this machine has no IPv6";
    socklen_t size = sizeof address;
    ASSERT_EQ(::getsockname(socket.get(), reinterpret_cast<sockaddr*>(&address), &size), 0);
    EXPECT_THAT(report("controlchannel = 127.0.0.1:" + std::to_string(ntohs(address.sin6_port))),
                HasSubstr(", on all addresses of IPv6; unless that leaves out IPv4, the daemon "
                          "ends with \"ERROR: [LISTENER] socket bind failed: Address already in "
                          "use\""));
}

TEST_F(CheckChannel, needsARightForALowPort) {
    const CheckedConfig config(configure("controlchannel = " + test::privateAddress() + ":99"));
    const auto countErrors = [&config](const PortRights& rights) {
        Report found;
        checkChannels(config, rights, found);
        return found.count(Severity::error);
    };
    EXPECT_EQ(countErrors({.firstForAll = 100, .hasAll = true}), 0U);
    EXPECT_EQ(countErrors({.firstForAll = 99, .hasAll = false}), 0U);
    Report found;
    checkChannels(config, {.firstForAll = 100, .hasAll = false}, found);
    ASSERT_EQ(found.findings().size(), 1U);
    EXPECT_EQ(found.findings().front().message,
              "the daemon ends with \"ERROR: [LISTENER] socket bind failed: Permission denied\": "
              "user \"" +
                  userName() + "\" may not use ports below 100; give a higher one");
    EXPECT_FALSE(found.wouldStart());
}

TEST(Network, anOrdinaryUserHasNoRightToLowPorts) {
    const OrdinaryUser user;
    EXPECT_FALSE(ownPortRights().hasAll);
}

TEST(Network, theAdministratorHasARightToLowPorts) {
    const FileDescriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    auto address = test::ipv4(test::privateAddress(), 99);
    const bool isBound =
        ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    const auto rights = ownPortRights();
    EXPECT_EQ(rights.hasAll || rights.firstForAll <= 99, isBound);
}

TEST(Network, knowsTheAddressesOfThisMachine) {
    const auto isOwn = [](const std::string& address) {
        return isOfThisMachine(test::ipv4(address, 0).sin_addr);
    };
    for (const auto* address : {"0.0.0.0", "127.0.0.1", "127.200.3.4", "224.0.0.251"})
        EXPECT_TRUE(isOwn(address)) << address;
    for (const auto* address : {"192.0.2.1", "198.51.100.7"})
        EXPECT_FALSE(isOwn(address)) << address;
    ifaddrs* first = nullptr;
    ASSERT_EQ(::getifaddrs(&first), 0);
    for (const auto* interface = first; interface != nullptr; interface = interface->ifa_next)
        if (interface->ifa_addr != nullptr && interface->ifa_addr->sa_family == AF_INET) {
            const auto& own = *reinterpret_cast<const sockaddr_in*>(interface->ifa_addr);
            EXPECT_TRUE(isOfThisMachine(own.sin_addr)) << test::addressText(own);
        }
    ::freeifaddrs(first);
}

TEST(Network, readsTheTablesOfOpenSockets) {
    const test::TemporaryFolder folder;
    const auto table = folder.write(
        "udp",
        "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  "
        "timeout inode ref pointer drops\n"
        " 3424: 0100007F:1E65 00000000:0000 07 00000000:00000000 00:00000000 00000000     0     "
        "   0 7041390 2 00000000a7be6acb 0\n"
        "odd\n");
    const std::string rest =
        " 00000000000000000000000000000000:0000 07 00000000:00000000 00:00000000 00000000     0 "
        "       0 7041393 2 000000005df8a247 0\n";
    const auto tableOfIpv6 =
        folder.write("udp6", "  sl  local_address\n 1: 00000000000000000000000000000000:C2F9" +
                                 rest + " 2: 00000000000000000000000001000000:C2FA" + rest +
                                 " 3: 0000000000000000FFFF00000200007F:C2FB" + rest);
    const auto sockets = udpSockets(table, tableOfIpv6);
    ASSERT_EQ(sockets.size(), 3U);
    EXPECT_EQ(sockets[0].address.s_addr, test::ipv4("127.0.0.1", 0).sin_addr.s_addr);
    EXPECT_EQ(sockets[0].port, 7781);
    EXPECT_EQ(sockets[0].inode, 7041390U);
    EXPECT_FALSE(sockets[0].isIpv6);
    EXPECT_EQ(sockets[1].address.s_addr, INADDR_ANY);
    EXPECT_TRUE(sockets[1].isIpv6);
    EXPECT_EQ(sockets[2].address.s_addr, test::ipv4("127.0.0.2", 0).sin_addr.s_addr);
    EXPECT_EQ(sockets[2].port, 0xC2FB);
    EXPECT_FALSE(sockets[2].isIpv6);
}

}  // namespace
}  // namespace orx::orxctl
