// How a listener reads its interface text, where it binds and how it reports what is wrong.
#include <fcntl.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <sys/socket.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "control/Listener.h"
#include "support/CapturedOutput.h"
#include "support/ProcessCounts.h"
#include "support/ProcessLog.h"
#include "support/UdpPeer.h"

namespace orx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The error text of a listener that cannot be built; its type is `Error`, and nothing is printed.
template <typename Error>
std::string failureOf(const std::string& interface) {
    std::string text;
    const auto output = outputOf([&] {
        try {
            const Listener listener(interface);
            ADD_FAILURE() << "bound to " << interface;
        } catch (const Error& error) {
            text = error.what();
        }
    });
    EXPECT_EQ(output, "");
    return text;
}

struct Bound {
    std::string output;  ///< what the start printed, with N for the socket's number
    std::string address;
    int port;
};

Bound boundTo(const std::string& interface) {
    std::unique_ptr<Listener> listener;
    auto output = outputOf([&] { listener = std::make_unique<Listener>(interface); });
    const auto number = "#" + std::to_string(listener->socketFd()) + " ";
    const auto place = output.find(number);
    EXPECT_NE(place, std::string::npos) << output;
    if (place != std::string::npos) output.replace(place, number.size(), "#N ");
    const auto address = boundAddress(listener->socketFd());
    outputOf([&] { listener.reset(); });
    return {output, addressText(address), portOf(address)};
}

/// A port that is free on all addresses just now.
int freePort() {
    const UdpPeer probe("0.0.0.0");
    return portOf(probe.address());
}

/// Binds to a text made of a free port; another one where somebody was quicker.
template <typename MakeText>
std::pair<Bound, int> bindToFreePort(MakeText makeText) {
    for (;;) {
        const int port = freePort();
        try {
            return {boundTo(makeText(port)), port};
        } catch (const std::runtime_error& error) {
            if (std::string(error.what()).find("socket bind failed") == std::string::npos) throw;
        }
    }
}

TEST(ListenerInterface, BindsToTheAddressAndPort) {
    const auto address = privateAddress();
    const auto bound = boundTo(address + ":17781");
    EXPECT_EQ(bound.address, address);
    EXPECT_EQ(bound.port, 17781);
}

TEST(ListenerInterface, AnnouncesTheSocket) {
    EXPECT_EQ(boundTo("127.0.0.1:0").output,
              "[LISTENER] created socket #N @ 127.0.0.1:0 (0100007f)\n");
    EXPECT_EQ(boundTo("127.171.0.16:0").output,
              "[LISTENER] created socket #N @ 127.171.0.16:0 (1000ab7f)\n");
}

TEST(ListenerInterface, LogsWhereItListensWithoutEcho) {
    const ProcessLog log;
    EXPECT_EQ(boundTo("\t127.0.0.1 : 0 \r\n").output,
              "[LISTENER] created socket #N @ 127.0.0.1:0 (0100007f)\n");
    EXPECT_THAT(log.messages(), ElementsAre("listening on 127.0.0.1:0"));
}

TEST(ListenerInterface, TakesAStarForAllAddresses) {
    const ProcessLog log;
    const auto [bound, port] = bindToFreePort([](int free) { return "*:" + std::to_string(free); });
    EXPECT_EQ(bound.address, "0.0.0.0");
    EXPECT_EQ(bound.port, port);
    EXPECT_EQ(bound.output,
              "[LISTENER] created socket #N @ 0.0.0.0:" + std::to_string(port) + " (00000000)\n");
    EXPECT_EQ(log.messages().back(), "listening on 0.0.0.0:" + std::to_string(port));
}

TEST(ListenerInterface, PassesOverBlanksAroundAddressAndPort) {
    const auto [bound, port] =
        bindToFreePort([](int free) { return " 0.0.0.0 : " + std::to_string(free) + " "; });
    EXPECT_EQ(bound.address, "0.0.0.0");
    EXPECT_EQ(bound.port, port);
    EXPECT_EQ(boundTo(" * :0").address, "0.0.0.0");
}

TEST(ListenerInterface, CutsThePortTo16BitsButShowsItWhole) {
    const auto address = privateAddress();
    const ProcessLog log;
    const auto large = boundTo(address + ":83317");
    EXPECT_EQ(large.port, 17781);
    EXPECT_THAT(large.output, testing::HasSubstr(" @ " + address + ":83317 ("));
    const auto negative = boundTo(address + ":-47755");
    EXPECT_EQ(negative.port, 17781);
    EXPECT_THAT(negative.output, testing::HasSubstr(" @ " + address + ":-47755 ("));
    EXPECT_THAT(log.messages(), ElementsAre("listening on " + address + ":83317",
                                            "listening on " + address + ":-47755"));
}

TEST(ListenerInterface, ReadsThePortUpToTheFirstCharacterThatIsNoDigit) {
    const ProcessLog log;
    const auto address = privateAddress();
    const auto bound = boundTo(address + ":+17781:abc");
    EXPECT_EQ(bound.port, 17781);
    EXPECT_THAT(bound.output, testing::HasSubstr(" @ " + address + ":17781 ("));
    EXPECT_THAT(log.messages(), ElementsAre("listening on " + address + ":+17781:abc"));
}

TEST(ListenerInterface, MissesThePortWithoutAColon) {
    EXPECT_EQ(failureOf<std::runtime_error>("7781"), "[LISTENER] port missing in interface: 7781");
    EXPECT_EQ(failureOf<std::runtime_error>(" localhost "),
              "[LISTENER] port missing in interface:  localhost ");
    EXPECT_EQ(failureOf<std::runtime_error>(""), "[LISTENER] port missing in interface: ");
}

TEST(ListenerInterface, RefusesAPortThatIsNoNumber) {
    for (const std::string interface : {"127.0.0.1:", "127.0.0.1: \t", "127.0.0.1:x", ":::1"}) {
        SCOPED_TRACE(interface);
        EXPECT_EQ(failureOf<std::invalid_argument>(interface), "stoi");
    }
}

TEST(ListenerInterface, RefusesAPortBeyond32Bits) {
    EXPECT_EQ(failureOf<std::out_of_range>("127.0.0.1:2147483648"), "stoi");
    EXPECT_EQ(failureOf<std::out_of_range>("127.0.0.1:-99999999999"), "stoi");
}

TEST(ListenerInterface, ResolvesNoHostNames) {
    EXPECT_EQ(failureOf<std::runtime_error>("localhost:7781"),
              "[LISTENER] IP address localhost could not be converted: Success");
}

TEST(ListenerInterface, RefusesWhatIsNoAddress) {
    for (const std::string address : {"", "127.0.0", "127.0.0.256", "0x7f.0.0.1", "**", "* *"}) {
        SCOPED_TRACE(address);
        errno = EACCES;  // must not be told: the conversion leaves it as it was
        EXPECT_EQ(failureOf<std::runtime_error>(address + ":0"),
                  "[LISTENER] IP address " + address + " could not be converted: Success");
    }
}

TEST(ListenerInterface, RefusesAPortInUse) {
    const auto address = privateAddress();
    std::unique_ptr<Listener> first;
    outputOf([&] { first = std::make_unique<Listener>(address + ":17781"); });
    EXPECT_EQ(failureOf<std::runtime_error>(address + ":17781"),
              "[LISTENER] socket bind failed: Address already in use");
    outputOf([&] { first.reset(); });
    EXPECT_EQ(boundTo(address + ":17781").port, 17781);
}

TEST(ListenerInterface, RefusesAnAddressThatIsNotLocal) {
    EXPECT_EQ(failureOf<std::runtime_error>("192.0.2.1:0"),
              "[LISTENER] socket bind failed: Cannot assign requested address");
}

TEST(ListenerInterface, ReportsTheFirstOfSeveralMistakes) {
    EXPECT_EQ(failureOf<std::runtime_error>("localhost"),
              "[LISTENER] port missing in interface: localhost");
    EXPECT_EQ(failureOf<std::invalid_argument>("localhost:http"), "stoi");
    const UdpPeer occupied("0.0.0.0");
    EXPECT_EQ(
        failureOf<std::runtime_error>("localhost:" + std::to_string(portOf(occupied.address()))),
        "[LISTENER] IP address localhost could not be converted: Success");
}

TEST(ListenerInterface, LogsNothingAndKeepsNoDescriptorWhenItFails) {
    const ProcessLog log;
    const UdpPeer occupied;
    const auto interface = "127.0.0.1:" + std::to_string(portOf(occupied.address()));
    const auto before = openDescriptors();
    EXPECT_EQ(failureOf<std::runtime_error>(interface),
              "[LISTENER] socket bind failed: Address already in use");
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST(ListenerInterface, BindsABlockingDatagramSocketWithoutOptions) {
    std::unique_ptr<Listener> listener;
    outputOf([&] { listener = std::make_unique<Listener>("127.0.0.1:0"); });
    const auto option = [&listener](int name) {
        int value = -1;
        socklen_t size = sizeof value;
        EXPECT_EQ(::getsockopt(listener->socketFd(), SOL_SOCKET, name, &value, &size), 0);
        return value;
    };
    EXPECT_EQ(option(SO_TYPE), SOCK_DGRAM);
    EXPECT_EQ(option(SO_PROTOCOL), IPPROTO_UDP);
    EXPECT_EQ(option(SO_REUSEADDR), 0);
    EXPECT_EQ(option(SO_REUSEPORT), 0);
    EXPECT_EQ(option(SO_BROADCAST), 0);
    timeval patience{-1, -1};
    socklen_t size = sizeof patience;
    ASSERT_EQ(::getsockopt(listener->socketFd(), SOL_SOCKET, SO_RCVTIMEO, &patience, &size), 0);
    EXPECT_EQ(patience.tv_sec, 0);
    EXPECT_EQ(patience.tv_usec, 0);
    EXPECT_EQ(::fcntl(listener->socketFd(), F_GETFL) & O_NONBLOCK, 0);
    outputOf([&] { listener.reset(); });
}

}  // namespace
}  // namespace orx::test
