// The projector of a test, in software: `orxsim` in a process of its own, which never outlives the
// test. It says where the lens motors really stand.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "system/harness/ChildProcess.h"

namespace orx::test {

class Simulator {
  public:
    /// One axis after a command, in motor steps from the lower end stop.
    struct Axis {
        int motor = 0;
        int lens = 0;      ///< where the picture is; behind the motor by the backlash at most
        int lost = 0;      ///< motor steps lost so far
        int contacts = 0;  ///< single steps that met an end stop so far
    };

    struct Axes {
        Axis zoom;
        Axis focus;
    };

    /// What came in on the line and was carried out.
    struct Event {
        std::string command{};  ///< empty for bytes that are no command of the model
        std::vector<std::string> arguments{};
        std::size_t byteCount = 0;
        Axes axes{};
        bool endStop = false;  ///< this very command met an end stop
    };

    /// Starts the projector `model` of the definitions in this tree, with its line linked to
    /// `link`, and waits until it is ready. Throws where it never is.
    Simulator(const std::string& link, const std::string& model,
              const std::vector<std::string>& options = {});

    /// The path of its serial line, for the configuration.
    [[nodiscard]] const std::string& device() const noexcept { return linkPath; }

    /// The place behind all events up to now.
    [[nodiscard]] std::size_t place() const;

    /// The commands that were carried out from place `from` on; `from` is then behind them.
    [[nodiscard]] std::vector<Event> takeEvents(std::size_t& from) const;

    /// Forgets the events up to place `before`, which is then 0. All other places are void.
    void forget(std::size_t& before);

    /// How many events there are from place `from` on.
    [[nodiscard]] std::size_t countEvents(std::size_t from) const;

    /// Waits for the event of `command` with the one argument `argument`, from place `from` on.
    [[nodiscard]] Event waitForCommand(const std::string& command, const std::string& argument,
                                       std::size_t from) const;

    /// Waits until `command` has been carried out once more than up to place `from`.
    [[nodiscard]] Event waitForCommand(const std::string& command, std::size_t from) const;

    /// Waits for more events than there are up to `from`, but not long: for a look at something
    /// else in between.
    void waitForMore(std::size_t from) const;

  private:
    using Wanted = std::function<bool(const Event&)>;
    [[nodiscard]] Event waitForEvent(const Wanted& wanted, const std::string& what,
                                     std::size_t from) const;

    std::string linkPath;
    ChildProcess process;
};

}  // namespace orx::test
