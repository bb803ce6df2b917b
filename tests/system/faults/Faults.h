// What goes wrong in a daemon under test: the test's side of the fault shim. One fault is armed at
// a time, before the daemon starts or while it runs.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "support/FaultBoard.h"
#include "support/TemporaryFolder.h"

namespace orx::test {

struct Fault {
    static constexpr std::uint32_t always = std::numeric_limits<std::uint32_t>::max();

    std::string call{};   ///< the name of the function; empty: any of them
    std::string place{};  ///< a part of the path, or "socket:"; empty: anywhere
    int error = 0;        ///< the errno of `Deed::fail`
    Deed deed = Deed::fail;
    std::uint32_t first = 1;  ///< which call is the first to go wrong
    std::uint32_t times = 1;  ///< how many do in a row
};

class Faults {
  public:
    Faults();
    Faults(const Faults&) = delete;
    Faults& operator=(const Faults&) = delete;
    ~Faults();

    /// What the daemon is to find in its environment.
    [[nodiscard]] std::vector<std::string> environment() const;

    /// In force from now on, in place of the one before.
    void arm(const Fault& fault);
    void disarm() noexcept { board->current = 0; }

    /// How many calls went wrong through the armed fault.
    [[nodiscard]] std::uint32_t done() const noexcept { return current().done; }
    /// Waits until the armed fault has been met.
    void waitUntilDone() const;

    /// The calls that the armed fault meant, gone wrong or not, each as "NAME PLACE". Once they are
    /// all made.
    [[nodiscard]] std::vector<std::string> trace() const;

    /// How many calls the daemon has made so far, its sleeps left out.
    [[nodiscard]] std::uint32_t calls() const noexcept { return board->calls; }
    [[nodiscard]] std::uint32_t sleeps() const noexcept { return board->sleeps; }

    /// Sets the wall clock of the daemon, in seconds since the epoch.
    void setClock(std::int64_t seconds) noexcept;

  private:
    [[nodiscard]] const FaultPlan& current() const noexcept { return board->plans[board->current]; }

    TemporaryFolder folder;
    FaultBoard* board = nullptr;
    std::uint32_t plans = 0;
    std::uint32_t notedBefore = 0;  ///< how many calls were noted before the fault was armed
};

}  // namespace orx::test
