// The signals that end the simulator or concern its terminal, as something to poll for.
//
// While an object lives SIGINT, SIGTERM, SIGHUP and SIGWINCH are held back and collected here, and
// a reader that goes away is an error of the next write rather than a signal. They stay held back
// afterwards: the way out is not interrupted by a second one. A SIGHUP that is ignored, as under
// nohup, stays so.
#pragma once

#include "core/FileDescriptor.h"

namespace orx::orxsim {

class StopSignals {
  public:
    /// Throws where the system refuses. Before any other thread is started.
    StopSignals();

    /// Readable when a signal has come.
    [[nodiscard]] int descriptor() const noexcept { return signals.get(); }

    /// Whether the simulator is to end. Once it is true it stays so.
    [[nodiscard]] bool isStopRequested();

    /// Whether the terminal has changed its size since the last call.
    [[nodiscard]] bool takeResize();

  private:
    void collect();

    FileDescriptor signals;
    bool stop = false;
    bool resize = false;
};

}  // namespace orx::orxsim
