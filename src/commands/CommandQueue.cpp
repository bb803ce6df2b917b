#include "commands/CommandQueue.h"

#include <utility>

#include "commands/Keywords.h"
#include "core/Console.h"
#include "core/Log.h"

namespace orx {

CommandQueue::CommandQueue(std::shared_ptr<CommandExecutor> executor)
    : projectorControl(std::move(executor)) {}

void CommandQueue::setRestartCallback(std::function<void()> callback) {
    restartCallback = std::move(callback);
}

void CommandQueue::push(CommandPtr command) {
    {
        const MutexLock lock(mutex);
        ++received;
        pending.push_back(std::move(command));
    }
    notEmpty.notifyAll();  // a thread that is woken under the lock would wait for it at once
}

void CommandQueue::run() {
    if (!projectorControl) log("running in dumb mode (no valid projector)", Echo::yes, "[CMDQ] ");
    printLine("[CMDQ] start");
    const MutexLock lock(mutex);
    while (running) {
        const auto command = takeNext();
        if (command->isValid()) {
            passOn(*command);
        } else {
            printLine("[CMDQ] received invalid command from control channel!?");
        }
    }
    printLine("[CMDQ] stop.");
}

CommandPtr CommandQueue::takeNext() {
    while (pending.empty())
        notEmpty.wait(mutex);
    auto command = std::move(pending.front());
    pending.pop_front();
    return command;
}

void CommandQueue::passOn(const Command& command) {
    printLine("[CMDQ] executing cmd: " + command.text(true) + " (rcvd from ctrlchan)");
    if (projectorControl) projectorControl->execute(command);
    if (command.is(CMD_RESTART)) {
        restartCallback();
        running = false;
    } else if (command.is(CMD_QUIT)) {
        running = false;
    } else {
        ++handled;
    }
}

std::uint32_t CommandQueue::receivedCount() {
    const MutexLock lock(mutex);
    return received;
}

std::uint32_t CommandQueue::handledCount() {
    const MutexLock lock(mutex);
    return handled;
}

}  // namespace orx
