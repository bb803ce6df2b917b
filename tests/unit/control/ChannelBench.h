// A control channel on the loopback network, its clients and the queue behind it.
#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "commands/CommandQueue.h"
#include "control/ControlChannelListener.h"
#include "control/Status.h"
#include "support/CapturedOutput.h"
#include "support/ProcessLog.h"
#include "support/UdpPeer.h"
#include "unit/commands/RecordingExecutor.h"

namespace orx::test {

/// Waits until a running channel has handled all that was sent to it before.
inline void waitUntilHandled(const ControlChannelListener& channel) {
    const UdpPeer last;
    last.send(boundAddress(channel.socketFd()), "STATUS");
    if (!last.receive()) throw std::runtime_error("the control channel does not answer");
}

class ChannelBench : public testing::Test {
  protected:
    ChannelBench() {
        Status::reset();
        Status::setDumb(false);
    }
    ~ChannelBench() override { Status::reset(); }

    /// Lets a channel handle the datagrams of `client`, in order, and closes it; gives what was
    /// printed in between, with N for the number of the socket.
    std::string serve(const std::vector<std::string>& datagrams) {
        std::string start;
        std::string tag;
        std::string end;
        auto output = outputOf([&] {
            ControlChannelListener channel("127.0.0.1:0", queue);
            start = "[LISTENER] created socket #" + std::to_string(channel.socketFd()) +
                    " @ 127.0.0.1:0 (0100007f)\n";
            tag = "[CTRLCHAN|#" + std::to_string(channel.socketFd()) + "] ";
            end = "[LISTENER] closing socket #" + std::to_string(channel.socketFd()) + "\n" + tag +
                  "stop.\n";
            channel.start();
            for (const auto& datagram : datagrams)
                client.send(boundAddress(channel.socketFd()), datagram);
            waitUntilHandled(channel);
        });
        start += tag + "start, waiting for commands\n";
        EXPECT_TRUE(output.starts_with(start)) << output;
        EXPECT_TRUE(output.ends_with(end)) << output;
        output = output.substr(start.size(), output.size() - start.size() - end.size());
        for (auto place = output.find(tag); place != std::string::npos; place = output.find(tag))
            output.replace(place, tag.size(), "[CTRLCHAN|#N] ");
        return output;
    }

    /// What has been sent back to `client`.
    [[nodiscard]] std::vector<std::string> replies() const {
        std::vector<std::string> texts;
        while (const auto reply = client.receiveArrived())
            texts.push_back(*reply);
        return texts;
    }

    /// The display texts of the commands in the queue, whose loop has ended then.
    std::vector<std::string> queued() {
        queue->push(std::make_shared<const Command>("QUIT"));
        outputOf([this] { queue->run(); });
        auto commands = std::exchange(executor->executed, {});
        commands.pop_back();
        return commands;
    }

    ProcessLog log;
    std::shared_ptr<RecordingExecutor> executor = std::make_shared<RecordingExecutor>();
    std::shared_ptr<CommandQueue> queue = std::make_shared<CommandQueue>(executor);
    UdpPeer client{"127.0.0.5"};
};

}  // namespace orx::test
