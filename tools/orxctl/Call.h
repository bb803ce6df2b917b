// One call of the program: what the command line says, and what is done then.
//
// The operations print what there is to say on standard output and standard error, and give the
// exit status. They throw `std::invalid_argument` with a text for users where a word of the command
// line is wrong, before anything has been sent.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "orxctl/Errands.h"
#include "orxctl/Fleet.h"

namespace orx::orxctl {

struct Call {
    std::string command{};             ///< to be sent
    std::vector<std::string> hosts{};  ///< names and addresses of daemons
    std::string hostsFile{};           ///< empty for the usual one
    std::string configFile{};          ///< of the daemon, instead of `hosts`; empty for none
    std::optional<std::chrono::milliseconds> timeout{};
    SendOptions policies{};
    std::string argument{};  ///< of what is done else than to send
    bool asJson = false;

    [[nodiscard]] int send() const;
    [[nodiscard]] int showStatus() const;
    /// Draws the status over the one before on a terminal; elsewhere prints what has changed. Ends
    /// when nobody reads any more.
    [[nodiscard]] int watchStatus() const;
    [[nodiscard]] int waitUntilAtRest() const;
    [[nodiscard]] int ping() const;
    /// Does what the show file `argument` says.
    [[nodiscard]] int runShow() const;
    /// Lists the commands that `argument` is about.
    [[nodiscard]] int listCommands() const;

  private:
    [[nodiscard]] Fleet fleet() const;
    [[nodiscard]] SendOptions options() const;
};

}  // namespace orx::orxctl
