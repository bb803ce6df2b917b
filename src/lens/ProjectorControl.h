// Carries out the commands: those of the daemon and of the lens itself, all others through the
// projector model.
//
// Owns the two lens axes and the lens memory. `execute` runs on the command queue's thread and
// returns when a command is done; the object's own thread does nothing but let the axes walk
// towards their targets, the zoom first, every 50 milliseconds.
#pragma once

#include <atomic>
#include <memory>

#include "commands/CommandExecutor.h"
#include "config/MainConfig.h"
#include "core/Thread.h"
#include "core/Time.h"
#include "lens/LensConfig.h"
#include "lens/LensControl.h"
#include "projector/Projector.h"

namespace orx {

class ProjectorControl : public Thread, public CommandExecutor {
  public:
    /// Builds the axes, reads the lens memory and shows the axes in the status. `projector` must
    /// have its serial connector. Throws as `LensConfig`.
    ProjectorControl(std::shared_ptr<const Projector> projector, const MainConfig& mainConfig,
                     Time& time = systemTime());
    ProjectorControl(const ProjectorControl&) = delete;
    ProjectorControl& operator=(const ProjectorControl&) = delete;
    ~ProjectorControl() override = default;

    /// The loop that steps the lens; ends after `stop`.
    void run() override;

    /// Carries out one command. A command without the argument that it needs does nothing. Throws
    /// the conversion errors "stoi" and "stod", and "could not write to file: ..." from the lens
    /// memory.
    void execute(const Command& command) override;

    /// Ends the loop after its current pass, and a running move at its next step.
    void stop() noexcept;

    /// True from construction until `run` returns.
    [[nodiscard]] bool isAlive() const noexcept { return alive; }

  private:
    void loadMemory(int slot);
    void resetLens();
    void passOn(const Command& command);

    std::shared_ptr<const Projector> projector;
    std::shared_ptr<LensControl> zoom;
    std::shared_ptr<LensControl> focus;
    LensConfig lensConfig;
    Time& time;
    std::atomic<bool> running = true;
    std::atomic<bool> alive = true;
};

}  // namespace orx
