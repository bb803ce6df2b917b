// A show file: what several commands and pauses make together.
//
//     # comment               from "#" to the end of the line
//     ZOOM 32768              a command, any but STATUS
//     sleep 2.5               a pause, in seconds
//     wait                    until the lens is at rest; "wait 60" for so many seconds at most
//
// The whole file is checked before anything of it is done.
#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "orx/client/Client.h"
#include "orxctl/Errands.h"
#include "orxctl/Fleet.h"
#include "orxctl/Outcome.h"

namespace orx::orxctl {

class Show {
  public:
    /// Gives the observer of the waits for the daemon of that number.
    using Observers = std::function<client::Client::Observer(std::size_t number)>;

    /// Reads all of `input`, which messages call `name`. Throws `std::invalid_argument` with a line
    /// "NAME:LINE: what is wrong" for each mistake.
    Show(std::istream& input, const std::string& name);

    /// Does one line after the other, each with all daemons at once. A daemon with which a line
    /// fails gets none of the lines behind it; its outcome says which line it was. `options` hold
    /// for all commands; a "wait" without seconds, too, takes its limit from there.
    [[nodiscard]] std::vector<Outcome> run(Fleet& fleet, const SendOptions& options,
                                           const Observers& observers) const;

  private:
    struct Sleep {
        std::chrono::milliseconds time;
    };
    struct Wait {
        std::optional<std::chrono::milliseconds> limit;
    };
    using Action = std::variant<client::Request, Sleep, Wait>;
    struct Step {
        std::string place;  ///< "NAME:LINE"
        Action action;
    };

    [[nodiscard]] static std::optional<Action> parseLine(std::string line);
    [[nodiscard]] static std::vector<Outcome> reach(Fleet& fleet, const SendOptions& options);
    [[nodiscard]] static Outcome perform(const Action& action, const client::Client& daemon,
                                         const SendOptions& options,
                                         const client::Client::Observer& observer);

    std::vector<Step> steps;
};

}  // namespace orx::orxctl
