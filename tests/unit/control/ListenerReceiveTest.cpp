// What a listener receives and replies.
#include <array>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <pthread.h>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "control/Listener.h"
#include "support/CapturedOutput.h"
#include "support/FakeTime.h"
#include "support/UdpPeer.h"
#include "support/WaitUntil.h"

namespace orx::test {
namespace {

using testing::Each;
using testing::IsEmpty;

class ListenerReceive : public testing::Test {
  protected:
    ListenerReceive() {
        outputOf([this] { listener = std::make_unique<Listener>("127.0.0.1:0", time); });
        address = boundAddress(listener->socketFd());
    }
    ~ListenerReceive() override {
        outputOf([this] { listener.reset(); });
    }

    /// The next datagram, as far as `size` bytes.
    std::optional<std::string> receive(std::size_t size = 64) {
        std::string buffer(size, '?');
        const auto bytes = listener->receive(buffer, sender);
        if (!bytes) return std::nullopt;
        return std::string(*bytes);
    }

    FakeTime time;
    std::unique_ptr<Listener> listener;
    sockaddr_in address{};
    sockaddr_in sender{};
    UdpPeer client;
};

TEST_F(ListenerReceive, GivesExactlyTheBytesSent) {
    const std::string bytes("a\0\r\n\xFF z", 7);
    client.send(address, bytes);
    EXPECT_EQ(receive(), bytes);
}

TEST_F(ListenerReceive, GivesOneDatagramAtATime) {
    client.send(address, "first");
    client.send(address, "2");
    EXPECT_EQ(receive(), "first");
    EXPECT_EQ(receive(), "2");
}

TEST_F(ListenerReceive, CutsADatagramToTheBufferAndDropsTheRest) {
    client.send(address, "0123456789");
    client.send(address, "next");
    EXPECT_EQ(receive(4), "0123");
    EXPECT_EQ(receive(4), "next");
}

TEST_F(ListenerReceive, GivesAnEmptyDatagramAsNoBytes) {
    client.send(address, "");
    EXPECT_EQ(receive(), "");
}

TEST_F(ListenerReceive, TellsTheSender) {
    const UdpPeer other("127.0.0.9");
    other.send(address, "x");
    ASSERT_EQ(receive(), "x");
    EXPECT_EQ(addressText(sender), "127.0.0.9");
    EXPECT_EQ(portOf(sender), portOf(other.address()));
    client.send(address, "y");
    ASSERT_EQ(receive(), "y");
    EXPECT_EQ(portOf(sender), portOf(client.address()));
}

TEST_F(ListenerReceive, TriesAgainAfterAPauseWhenReceivingFails) {
    const int number = listener->socketFd();
    const FileDescriptor socket(::dup(number));
    const FileDescriptor noSocket(::open("/dev/null", O_RDONLY));
    ASSERT_EQ(::dup2(noSocket.get(), number), number);
    time.onSleep = [&] {
        if (time.sleeps.size() == 3) ::dup2(socket.get(), number);
    };
    client.send(address, "late");
    EXPECT_EQ(receive(), "late");
    EXPECT_EQ(time.sleeps.size(), 3U);
    EXPECT_THAT(time.sleeps, Each(testing::Gt(0)));
}

TEST_F(ListenerReceive, GoesOnAtOnceAfterASignal) {
    static std::atomic<bool> signalled;
    signalled = false;
    struct sigaction action {};
    struct sigaction former {};
    action.sa_handler = [](int) { signalled = true; };  // without SA_RESTART: the receive fails
    ASSERT_EQ(::sigaction(SIGUSR1, &action, &former), 0);
    std::atomic<pid_t> receiving = 0;
    std::optional<std::string> received;
    std::thread receiver([&] {
        receiving = thisThread();
        received = receive();
    });
    EXPECT_TRUE(waitUntil([&] { return receiving != 0 && isAsleep(receiving); }));
    ::pthread_kill(receiver.native_handle(), SIGUSR1);
    EXPECT_TRUE(waitUntil([] { return signalled.load(); }));
    client.send(address, "after");
    receiver.join();
    EXPECT_EQ(received, "after");
    EXPECT_THAT(time.sleeps, IsEmpty());
    ::sigaction(SIGUSR1, &former, nullptr);
}

TEST_F(ListenerReceive, RepliesWithExactlyTheTextAsOneDatagram) {
    listener->reply(client.address(), std::string_view("one\0two\n", 8));
    EXPECT_EQ(client.receive(), std::string("one\0two\n", 8));
    listener->reply(client.address(), "");
    EXPECT_EQ(client.receive(), "");
    EXPECT_EQ(client.receiveArrived(), std::nullopt);
}

TEST_F(ListenerReceive, RepliesFromItsOwnAddress) {
    UdpPeer other("127.0.0.9");
    other.send(address, "?");
    ASSERT_EQ(receive(), "?");
    listener->reply(sender, "!");
    EXPECT_EQ(other.receive(), "!");
    EXPECT_EQ(client.receiveArrived(), std::nullopt);
}

TEST_F(ListenerReceive, PassesOverAReplyThatCannotBeSent) {
    listener->reply(ipv4("127.0.0.1", 0), "nobody has port 0");
    listener->reply(client.address(), std::string(70000, 'x'));
    listener->reply(client.address(), "still here");
    EXPECT_EQ(client.receive(), "still here");
}

TEST(PeerAddress, IsTheDottedQuadWithoutThePort) {
    for (const std::string text : {"0.0.0.0", "127.0.0.1", "192.168.1.20", "255.255.255.255"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Listener::peerAddress(ipv4(text, 7781)), text);
    }
}

}  // namespace
}  // namespace orx::test
