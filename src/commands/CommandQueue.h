// The hand-over from the listeners, which receive commands on their threads, to the executor, which
// carries them out on the queue's own thread: one at a time, in the order of arrival.
//
// The daemon lives as long as the queue's loop runs. RESTART and QUIT end it; what still waits then
// is discarded with the queue.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>

#include "commands/Command.h"
#include "commands/CommandExecutor.h"
#include "core/Mutex.h"
#include "core/Thread.h"

namespace orx {

class CommandQueue : public Thread {
  public:
    /// `executor` is empty in dumb mode: commands are then checked and shown, and no more.
    explicit CommandQueue(std::shared_ptr<CommandExecutor> executor);

    /// What RESTART calls, on the queue's thread, before the loop ends. Set it before `run`.
    void setRestartCallback(std::function<void()> callback);

    /// Appends a command. Any thread; waits while the queue's thread passes a command on.
    void push(CommandPtr command);

    /// The loop; ends after RESTART or QUIT. The mutex is held while a command is executed: that is
    /// what keeps execution strictly one at a time. An exception of the executor leaves it.
    void run() override;

    /// Commands added since construction, for diagnosis.
    [[nodiscard]] std::uint32_t receivedCount();
    /// Commands passed on other than RESTART and QUIT, for diagnosis.
    [[nodiscard]] std::uint32_t handledCount();

  private:
    [[nodiscard]] CommandPtr takeNext() ORX_REQUIRES(mutex);
    void passOn(const Command& command) ORX_REQUIRES(mutex);

    std::shared_ptr<CommandExecutor> projectorControl;
    std::function<void()> restartCallback;

    Mutex mutex;
    Condition notEmpty;
    bool running ORX_GUARDED_BY(mutex) = true;
    std::deque<CommandPtr> pending ORX_GUARDED_BY(mutex);
    std::uint32_t received ORX_GUARDED_BY(mutex) = 0;
    std::uint32_t handled ORX_GUARDED_BY(mutex) = 0;
};

}  // namespace orx
