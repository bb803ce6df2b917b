// The daemon: builds everything that lives long, keeps the main thread in the command queue's loop,
// rebuilds it all on RESTART, and takes it down in a fixed order.
//
// One object a process, used by the main thread alone.
#pragma once

#include <memory>
#include <vector>

#include "commands/CommandQueue.h"
#include "config/MainConfig.h"
#include "control/ControlChannelListener.h"
#include "lens/ProjectorControl.h"
#include "projector/ProjectorDefinitionFile.h"

namespace orx {

class Orx {
  public:
    /// Builds the daemon as `config` says. Throws what stops a start: a definition file that does
    /// not load, a serial device that does not open, an address that cannot be bound, a value that
    /// is no number.
    explicit Orx(std::shared_ptr<MainConfig> config);
    Orx(const Orx&) = delete;
    Orx& operator=(const Orx&) = delete;
    /// Tears down what is still up.
    virtual ~Orx();

    /// Serves until QUIT; a RESTART on the way re-reads the configuration and builds all anew.
    /// Throws as the constructor where that fails.
    void run();

    /// Ends and releases all but the configuration. A second call does nothing.
    void shutdown();

  private:
    void init();
    void enterDumbMode();
    void buildProjectorControl(ProjectorDefinitionFile& definitions,
                               const std::shared_ptr<Projector>& projector);
    void startThreads();
    void restart();
    void waitForProjectorControl() const;

    std::shared_ptr<MainConfig> config;
    std::vector<std::shared_ptr<ControlChannelListener>> listeners;
    std::shared_ptr<ProjectorControl> projectorControl;  ///< empty in dumb mode
    std::shared_ptr<CommandQueue> commandQueue;
    bool shutDown = false;
    bool restartRequested = false;
};

}  // namespace orx
