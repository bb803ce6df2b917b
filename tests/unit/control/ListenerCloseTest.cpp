// How a listener lets go of its socket.
#include <array>
#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

#include "control/Listener.h"
#include "support/CapturedOutput.h"
#include "support/ProcessCounts.h"
#include "support/UdpPeer.h"
#include "support/WaitUntil.h"

namespace orx::test {
namespace {

std::unique_ptr<Listener> makeListener(const std::string& interface = "127.0.0.1:0") {
    std::unique_ptr<Listener> listener;
    outputOf([&] { listener = std::make_unique<Listener>(interface); });
    return listener;
}

std::string closingLine(const Listener& listener) {
    return "[LISTENER] closing socket #" + std::to_string(listener.socketFd()) + "\n";
}

/// A listener with a thread that receives, as the control channel has one.
class ReceivingListener final : public Listener {
  public:
    explicit ReceivingListener(const std::string& interface) : Listener(interface) {
        receiver = std::thread([this] {
            thread = thisThread();
            std::array<char, 16> buffer{};
            sockaddr_in sender{};
            while (const auto bytes = receive(buffer, sender)) {
                received.append("<").append(*bytes).append(">");
                ++count;
            }
            socketAtTheEnd = socketFd();
        });
    }
    ~ReceivingListener() override { close(); }
    ReceivingListener(const ReceivingListener&) = delete;
    ReceivingListener& operator=(const ReceivingListener&) = delete;

    [[nodiscard]] bool waitUntilBlocked() const {
        return waitUntil([this] { return thread != 0 && isAsleep(thread); });
    }

    std::string received;  ///< every datagram in angle brackets
    std::atomic<int> count = 0;
    int socketAtTheEnd = -1;  ///< the socket's number when the last receive returned

  protected:
    void waitForReceiver() override { receiver.join(); }

  private:
    std::atomic<pid_t> thread = 0;
    std::thread receiver;
};

TEST(ListenerClose, AnnouncesTheEndAndClosesTheSocket) {
    const auto before = openDescriptors();
    const auto listener = makeListener();
    EXPECT_EQ(openDescriptors(), before + 1);
    const auto line = closingLine(*listener);
    EXPECT_EQ(outputOf([&] { listener->close(); }), line);
    EXPECT_EQ(listener->socketFd(), -1);
    EXPECT_EQ(openDescriptors(), before);
}

TEST(ListenerClose, DoesNothingTheSecondTime) {
    const auto listener = makeListener();
    outputOf([&] { listener->close(); });
    const auto before = openDescriptors();
    EXPECT_EQ(outputOf([&] { listener->close(); }), "");
    EXPECT_EQ(openDescriptors(), before);
}

TEST(ListenerClose, HappensWhenTheListenerGoes) {
    const auto before = openDescriptors();
    auto listener = makeListener();
    const auto line = closingLine(*listener);
    EXPECT_EQ(outputOf([&] { listener.reset(); }), line);
    EXPECT_EQ(openDescriptors(), before);
}

TEST(ListenerClose, IsNotRepeatedWhenAClosedListenerGoes) {
    auto listener = makeListener();
    outputOf([&] { listener->close(); });
    EXPECT_EQ(outputOf([&] { listener.reset(); }), "");
}

TEST(ListenerClose, EndsAReceiveThatComesLater) {
    const auto listener = makeListener();
    outputOf([&] { listener->close(); });
    std::array<char, 16> buffer{};
    sockaddr_in sender{};
    EXPECT_EQ(listener->receive(buffer, sender), std::nullopt);
}

TEST(ListenerClose, WakesABlockedReceiveBeforeTheSocketIsClosed) {
    outputOf([] {
        ReceivingListener listener("127.0.0.1:0");
        const int number = listener.socketFd();
        ASSERT_TRUE(listener.waitUntilBlocked());
        listener.close();
        EXPECT_EQ(listener.received, "");
        EXPECT_EQ(listener.socketAtTheEnd, number);
    });
}

TEST(ListenerClose, AloneEndsTheReceivingNotAnEmptyDatagram) {
    outputOf([] {
        ReceivingListener listener("127.0.0.1:0");
        const UdpPeer client;
        const auto address = boundAddress(listener.socketFd());
        ASSERT_TRUE(listener.waitUntilBlocked());
        client.send(address, "");
        client.send(address, "a");
        client.send(address, "");
        client.send(address, "b");
        ASSERT_TRUE(waitUntil([&] { return listener.count == 4; }));
        ASSERT_TRUE(listener.waitUntilBlocked());
        listener.close();
        EXPECT_EQ(listener.received, "<><a><><b>");
    });
}

TEST(ListenerClose, FreesThePortThoughAReceiveWasBlocked) {
    const auto interface = privateAddress() + ":" + std::to_string(privatePort);
    outputOf([&] {
        for (int round = 0; round < 50; ++round) {
            SCOPED_TRACE(round);
            ReceivingListener listener(interface);
            ASSERT_TRUE(listener.waitUntilBlocked());
        }
    });
}

}  // namespace
}  // namespace orx::test
