// The addresses of the control channel: what is bound, and what the console says about it.
#include <arpa/inet.h>
#include <array>
#include <cstdio>
#include <netinet/in.h>

#include "system/harness/Story.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::StartsWith;

/// The 32 bits of an address as they stand in memory, read as a number.
std::string hexadecimal(const std::string& address) {
    in_addr bits{};
    ::inet_pton(AF_INET, address.c_str(), &bits);
    std::array<char, 9> digits{};
    std::snprintf(digits.data(), digits.size(), "%08x", bits.s_addr);
    return digits.data();
}

/// A port that nobody uses at this moment.
int freePort() {
    const FileDescriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    socklen_t size = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    if (::bind(socket.get(), generic, size) != 0) return 0;
    ::getsockname(socket.get(), generic, &size);
    return ntohs(address.sin_port);
}

class Addresses : public Story {
  protected:
    void installWithChannel(const std::string& controlChannel) const {
        installation.writeDefinitions(define({fixedModel()}));
        installation.writeConfiguration("projector = FIXED\nserial.device = " + line.device() +
                                        "\ncontrolchannel = " + controlChannel + "\n");
    }
    [[nodiscard]] std::string createdLine(const std::string& address,
                                          const std::string& port) const {
        return "[LISTENER] created socket #" + daemon->socketNumbers().at(0) + " @ " + address +
               ":" + port + " (" + hexadecimal(address) + ")";
    }

    /// Starts a daemon on all addresses of the machine; gives its port.
    int startOnAllAddresses(const std::string& before, const std::string& after) {
        for (;;) {
            const int port = freePort();
            installWithChannel(before + std::to_string(port) + after);
            daemon = std::make_unique<Daemon>(installation.prefix());
            if (bindsItsPort()) return port;
        }
    }

  private:
    /// False where someone else has taken the port since it was found free.
    [[nodiscard]] bool bindsItsPort() const {
        const auto place = daemon->waitForText("[LENSMEM]");
        daemon->waitForText("\n", place);
        return !daemon->socketNumbers().empty();
    }
};

TEST_F(Addresses, AreShownAsTextAndAsBits) {
    installWithChannel(controlAddress());
    start();
    EXPECT_THAT(daemon->lines(), Contains(createdLine(ownAddress(), std::to_string(controlPort))));
    EXPECT_EQ(hexadecimal("127.0.0.1"), "0100007f");
}

TEST_F(Addresses, MayHaveBlanksAroundAddressAndPort) {
    installWithChannel("  " + ownAddress() + " \t: " + std::to_string(controlPort) + " ");
    start();
    EXPECT_THAT(daemon->lines(), Contains(createdLine(ownAddress(), std::to_string(controlPort))));
    EXPECT_THAT(installation.log(), Contains("listening on " + controlAddress()));
}

TEST_F(Addresses, ShowThePortAsConvertedAndBindItsLow16Bits) {
    const auto port = std::to_string(controlPort + 65536);
    installWithChannel(ownAddress() + ":" + port);
    start();
    EXPECT_THAT(daemon->lines(), Contains(createdLine(ownAddress(), port)));
    EXPECT_THAT(installation.log(), Contains("listening on " + ownAddress() + ":" + port));
    EXPECT_THAT(client.status(controlPort), StartsWith("IDLE;"));
}

TEST_F(Addresses, LogThePortAsItIsWritten) {
    installWithChannel(ownAddress() + ":+" + std::to_string(controlPort) + "x");
    start();
    EXPECT_THAT(daemon->lines(), Contains(createdLine(ownAddress(), std::to_string(controlPort))));
    EXPECT_THAT(installation.log(), Contains("listening on " + ownAddress() + ":+" +
                                             std::to_string(controlPort) + "x"));
}

TEST_F(Addresses, OfTheWholeMachineAreWrittenAsAStar) {
    const int port = startOnAllAddresses("*:", "");
    EXPECT_THAT(daemon->lines(), Contains(createdLine("0.0.0.0", std::to_string(port))));
    EXPECT_THAT(client.status(port), StartsWith("IDLE;"));
    client.send("QUIT", port);
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
}

TEST_F(Addresses, OfTheWholeMachineAreWrittenAsZeros) {
    const int port = startOnAllAddresses(" 0.0.0.0 : ", " ");
    EXPECT_THAT(daemon->lines(), Contains(createdLine("0.0.0.0", std::to_string(port))));
    EXPECT_THAT(client.status(port), StartsWith("IDLE;"));
    client.send("QUIT", port);
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
}

TEST_F(Addresses, ThatWereBoundAreClosedAheadOfTheErrorOfALaterOne) {
    installWithChannel(controlAddress(0) + ", " + controlAddress(1) + ", 7781");
    EXPECT_EQ(startAndWaitForEnd(), "exit status 1");
    const auto sockets = daemon->socketNumbers();
    ASSERT_EQ(sockets.size(), 2U);
    const auto lines = daemon->lines();
    ASSERT_GE(lines.size(), 3U);
    EXPECT_THAT(std::vector(lines.end() - 3, lines.end() - 1),
                testing::UnorderedElementsAre("[LISTENER] closing socket #" + sockets[0],
                                              "[LISTENER] closing socket #" + sockets[1]));
    EXPECT_EQ(lines.back(), "ERROR: [LISTENER] port missing in interface: 7781");
}

}  // namespace
}  // namespace orx::test
