#include "control/ControlChannelListener.h"

#include <array>
#include <utility>

#include "commands/Keywords.h"
#include "control/Status.h"
#include "core/Console.h"
#include "core/Log.h"

namespace orx {
namespace {

/// A longer datagram is cut to its first bytes.
constexpr std::size_t maxDatagramSize = 2048;

std::string source(const sockaddr_in& address) {
    return "src=" + Listener::peerAddress(address);
}

}  // namespace

ControlChannelListener::ControlChannelListener(const std::string& interface,
                                               std::shared_ptr<CommandQueue> queue)
    : Listener(interface), commandQueue(std::move(queue)) {}

ControlChannelListener::~ControlChannelListener() {
    close();
}

void ControlChannelListener::setCommandQueue(std::shared_ptr<CommandQueue> queue) {
    commandQueue = std::move(queue);
}

std::string ControlChannelListener::channelTag() const {
    return "[CTRLCHAN|#" + std::to_string(socketFd()) + "] ";
}

void ControlChannelListener::run() {
    printLine(channelTag() + "start, waiting for commands");
    std::array<char, maxDatagramSize> buffer{};
    sockaddr_in sender{};
    while (running) {
        const auto text = receive(buffer, sender);
        if (!text) break;
        handleDatagram(*text, sender);
    }
    printLine(channelTag() + "stop.");
}

void ControlChannelListener::handleDatagram(std::string_view text, const sockaddr_in& sender) {
    while (running && !text.empty()) {
        const auto lineFeed = text.find('\n');
        handleLine(text.substr(0, lineFeed), sender);
        text.remove_prefix(lineFeed == std::string_view::npos ? text.size() : lineFeed + 1);
    }
}

void ControlChannelListener::handleLine(std::string_view line, const sockaddr_in& sender) {
    Command command(line);
    if (!command.isValid()) {
        log(source(sender).append(" unknown command (\"").append(line).append("\")"), Echo::yes,
            channelTag());
    } else if (command.is(CMD_STATUS)) {
        reply(sender, Status::statusReply());
    } else if (command.is(CMD_CLEAR_FLAGS)) {
        Status::clearFlags();
    } else {
        enqueue(std::make_shared<const Command>(std::move(command)), sender);
    }
}

void ControlChannelListener::enqueue(const CommandPtr& command, const sockaddr_in& sender) {
    log(source(sender) + " cmd=" + command->text(true), Echo::yes);
    commandQueue->push(command);
    if (command->is(CMD_QUIT) || command->is(CMD_RESTART)) running = false;
}

}  // namespace orx
