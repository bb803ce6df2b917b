// How a control channel begins and ends: by QUIT, by RESTART, or because its socket is closed.
#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/ProcessCounts.h"
#include "support/WaitUntil.h"
#include "unit/control/ChannelBench.h"

namespace orx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ControlChannelLife : public ChannelBench {
  protected:
    [[nodiscard]] std::unique_ptr<ControlChannelListener> makeChannel(
        const std::string& interface = "127.0.0.1:0") const {
        std::unique_ptr<ControlChannelListener> channel;
        outputOf([&] { channel = std::make_unique<ControlChannelListener>(interface, queue); });
        return channel;
    }

    /// Lets a channel of that socket number end by `datagram`; gives what was printed.
    std::string endBy(ControlChannelListener& channel, const std::string& datagram) const {
        return outputOf([&] {
            channel.start();
            client.send(boundAddress(channel.socketFd()), datagram);
            channel.waitUntilStopped();
        });
    }
};

std::string tagOf(const ControlChannelListener& channel) {
    return "[CTRLCHAN|#" + std::to_string(channel.socketFd()) + "] ";
}

std::string closingLine(const ControlChannelListener& channel) {
    return "[LISTENER] closing socket #" + std::to_string(channel.socketFd()) + "\n";
}

TEST_F(ControlChannelLife, EndsAfterQuitWhoseFurtherLinesAreIgnored) {
    const auto channel = makeChannel();
    const auto tag = tagOf(*channel);
    EXPECT_EQ(endBy(*channel, "ON\nQUIT\nOFF\nfoo\nSTATUS\n"), tag +
                                                                   "start, waiting for commands\n"
                                                                   "src=127.0.0.5 cmd=ON\n"
                                                                   "src=127.0.0.5 cmd=QUIT\n" +
                                                                   tag + "stop.\n");
    EXPECT_EQ(queue->receivedCount(), 2U);
    outputOf([this] { queue->run(); });
    EXPECT_THAT(executor->executed, ElementsAre("ON", "QUIT"));
    EXPECT_THAT(replies(), IsEmpty());
}

TEST_F(ControlChannelLife, EndsAfterRestart) {
    const auto channel = makeChannel();
    const auto tag = tagOf(*channel);
    EXPECT_EQ(endBy(*channel, "RESTART\nON"), tag +
                                                  "start, waiting for commands\n"
                                                  "src=127.0.0.5 cmd=RESTART\n" +
                                                  tag + "stop.\n");
    EXPECT_EQ(queue->receivedCount(), 1U);
}

TEST_F(ControlChannelLife, ReceivesNoMoreAfterQuit) {
    const auto channel = makeChannel();
    const auto address = boundAddress(channel->socketFd());
    const auto closing = closingLine(*channel);
    endBy(*channel, "QUIT");
    client.send(address, "STATUS\nON");
    EXPECT_EQ(outputOf([&] { channel->close(); }), closing);
    EXPECT_THAT(replies(), IsEmpty());
    EXPECT_EQ(queue->receivedCount(), 1U);
}

TEST_F(ControlChannelLife, KeepsTheSocketOpenAfterQuit) {
    const auto channel = makeChannel();
    const auto number = channel->socketFd();
    endBy(*channel, "QUIT");
    EXPECT_EQ(channel->socketFd(), number);
}

TEST_F(ControlChannelLife, EndsWhenTheSocketIsClosed) {
    const auto channel = makeChannel();
    const auto tag = tagOf(*channel);
    const auto closing = closingLine(*channel);
    EXPECT_EQ(outputOf([&] {
                  channel->start();
                  waitUntilHandled(*channel);
                  channel->close();
              }),
              tag + "start, waiting for commands\n" + closing + tag + "stop.\n");
    EXPECT_EQ(channel->socketFd(), -1);
    EXPECT_THAT(log.messages(), ElementsAre("listening on 127.0.0.1:0"));
    EXPECT_EQ(queue->receivedCount(), 0U);
}

TEST_F(ControlChannelLife, HandlesNothingThatWaitsWhenTheSocketIsClosed) {
    const auto channel = makeChannel();
    client.send(boundAddress(channel->socketFd()), "STATUS\nON");
    const auto closing = closingLine(*channel);
    EXPECT_EQ(outputOf([&] { channel->close(); }), closing);
    const std::string afterTheEnd = "[CTRLCHAN|#-1] ";
    EXPECT_EQ(outputOf([&] { channel->run(); }),
              afterTheEnd + "start, waiting for commands\n" + afterTheEnd + "stop.\n");
    EXPECT_THAT(replies(), IsEmpty());
    EXPECT_EQ(queue->receivedCount(), 0U);
}

TEST_F(ControlChannelLife, ReportsABadInterfaceAsTheListenerDoes) {
    try {
        const ControlChannelListener channel("localhost", queue);
        FAIL() << "bound";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "[LISTENER] port missing in interface: localhost");
    }
}

TEST_F(ControlChannelLife, SharesTheQueueUntilItGoes) {
    auto channel = makeChannel();
    EXPECT_EQ(queue.use_count(), 2);
    outputOf([&] { channel.reset(); });
    EXPECT_EQ(queue.use_count(), 1);
}

TEST_F(ControlChannelLife, PushesToTheQueueThatReplacedTheFirst) {
    const auto channel = makeChannel();
    const auto other = std::make_shared<CommandQueue>(executor);
    channel->setCommandQueue(other);
    EXPECT_EQ(queue.use_count(), 1);
    endBy(*channel, "ON\nQUIT");
    EXPECT_EQ(queue->receivedCount(), 0U);
    EXPECT_EQ(other->receivedCount(), 2U);
}

TEST_F(ControlChannelLife, EndsEachOfSeveralChannelsWhicheverReceivedQuit) {
    for (std::size_t quitting = 0; quitting < 3; ++quitting) {
        SCOPED_TRACE(quitting);
        std::array channels{makeChannel(), makeChannel(), makeChannel()};
        std::vector<std::string> stopLines;
        for (const auto& channel : channels)
            stopLines.push_back(tagOf(*channel) + "stop.\n");
        const auto output = outputOf([&] {
            for (const auto& channel : channels)
                channel->start();
            client.send(boundAddress(channels[quitting]->socketFd()), "ON\nQUIT");
            channels[quitting]->waitUntilStopped();
            for (std::size_t other = 0; other < channels.size(); ++other) {
                if (other != quitting) waitUntilHandled(*channels[other]);  // still receives
            }
            for (const auto& channel : channels)
                channel->close();
        });
        for (const auto& line : stopLines)
            EXPECT_THAT(output, testing::HasSubstr(line));
        for (const auto& channel : channels)
            EXPECT_EQ(channel->socketFd(), -1);
    }
    EXPECT_EQ(queue->receivedCount(), 6U);
}

TEST_F(ControlChannelLife, TakesCommandsOfSeveralChannelsIntoOneQueue) {
    std::array channels{makeChannel(), makeChannel(), makeChannel()};
    outputOf([&] {
        for (const auto& channel : channels) {
            channel->start();
            client.send(boundAddress(channel->socketFd()), "ON\nSTATUS\nOFF");
        }
        for (const auto& channel : channels) {
            waitUntilHandled(*channel);
            channel->close();
        }
    });
    EXPECT_THAT(replies(), ElementsAre("IDLE;;HELO \n", "IDLE;;HELO \n", "IDLE;;HELO \n"));
    EXPECT_THAT(queued(), testing::UnorderedElementsAre("ON", "OFF", "ON", "OFF", "ON", "OFF"));
}

TEST_F(ControlChannelLife, BindsTheSamePortAThousandTimesAndLeavesNothingBehind) {
    const auto interface = privateAddress() + ":" + std::to_string(privatePort);
    const auto descriptors = openDescriptors();
    std::thread([] {}).join();  // a sanitizer starts a thread of its own with the first one
    const auto threads = runningThreads();
    outputOf([&] {
        for (int round = 0; round < 1000; ++round) {
            SCOPED_TRACE(round);
            ControlChannelListener channel(interface, queue);
            channel.start();
            switch (round % 3) {
                case 0:  // closed while the thread may not have come to its first receive
                    break;
                case 1:
                    waitUntilHandled(channel);
                    break;
                default:
                    client.send(boundAddress(channel.socketFd()), "QUIT");
                    channel.waitUntilStopped();
            }
        }
    });
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_TRUE(waitUntil([threads] { return runningThreads() <= threads; }));
    EXPECT_EQ(queue->receivedCount(), 333U);
}

}  // namespace
}  // namespace orx::test
