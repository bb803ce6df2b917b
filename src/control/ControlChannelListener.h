// One address of the control channel: receives datagrams of text commands, one command a line, on a
// thread of its own.
//
// STATUS is answered and CLEARFLAGS carried out here, at once; every other valid command goes to
// the queue, and nothing is sent back for it. An unknown command is logged. The loop ends when
// QUIT or RESTART has been queued from here, or when the socket is closed.
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <string_view>

#include "commands/CommandQueue.h"
#include "control/Listener.h"
#include "core/Thread.h"

namespace orx {

class ControlChannelListener : public Listener, public Thread {
  public:
    /// Binds to `interface`; throws as `Listener`.
    ControlChannelListener(const std::string& interface, std::shared_ptr<CommandQueue> queue);
    /// Closes the socket, which ends the thread.
    ~ControlChannelListener() override;
    ControlChannelListener(const ControlChannelListener&) = delete;
    ControlChannelListener& operator=(const ControlChannelListener&) = delete;

    /// Commands go to `queue` from now on. Not while the thread runs.
    void setCommandQueue(std::shared_ptr<CommandQueue> queue);

    /// The receive loop.
    void run() override;

    /// What the loop does with each datagram: carries out the lines of `text`, up to a QUIT or
    /// RESTART, behind which nothing is taken any more. For the receiving thread, or for whoever
    /// stands in for it while no thread runs.
    void handleDatagram(std::string_view text, const sockaddr_in& sender);

  protected:
    void waitForReceiver() override { waitUntilStopped(); }

  private:
    /// What begins the lines on standard output.
    [[nodiscard]] std::string channelTag() const;
    void handleLine(std::string_view line, const sockaddr_in& sender);
    void enqueue(const CommandPtr& command, const sockaddr_in& sender);

    std::shared_ptr<CommandQueue> commandQueue;
    std::atomic<bool> running = true;
};

}  // namespace orx
