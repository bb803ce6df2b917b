// The base of the stories of faults: a daemon with the fault shim, and what must be true of it once
// a fault is over.
#pragma once

#include <string>

#include "system/faults/Faults.h"
#include "system/harness/LensStory.h"

namespace orx::test {

class FaultStory : public LensStory {
  protected:
    /// Installs a lens and its configuration, from which nothing is left to defaults: a daemon that
    /// cannot read it finds no definitions.
    void SetUp() override;

    /// Writes that configuration with the lines `more`.
    void configure(const std::string& more) const;

    /// What a daemon is started with so that `faults` reach it.
    [[nodiscard]] Launch underFaults() const;

    /// Puts more into the log file than the daemon will, so that there is something to cut off.
    void lengthenLog() const;

    /// Starts the daemon and remembers what it holds of the system.
    void startUnderFaults();

    /// Waits until the daemon rests: it holds what it held after its start, and while its lens axes
    /// are given time after time nobody makes a call or uses the processor.
    void waitUntilCalm();

    /// Waits until the daemon holds what one held that `startUnderFaults` has started.
    void waitUntilNothingIsLost() const { daemon->waitForHoldings(holdingsBefore); }

    /// Expects that the status is answered and that a command reaches the line.
    void expectToExecute();

    /// As `expectToExecute`, and that the log is up to date.
    void expectToServe();

    /// The lens memory file that the daemon has found.
    static constexpr const char* lensMemoryBefore = "zoommax = 2000\nfocusmax = 100\n";

    Faults faults;

  private:
    [[nodiscard]] bool restsForAWhile();

    Holdings holdingsBefore;
};

/// The system's text for an error.
[[nodiscard]] std::string reason(int error);

}  // namespace orx::test
