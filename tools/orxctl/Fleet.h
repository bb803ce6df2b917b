// The daemons that one call of the program is about, spoken to all at once.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "orx/client/Client.h"
#include "orxctl/HostsFile.h"
#include "orxctl/Outcome.h"

namespace orx::orxctl {

class Fleet {
  public:
    /// What is to be done with the daemon of that number, counted from 0.
    using Errand = std::function<Outcome(const client::Client& daemon, std::size_t number)>;

    explicit Fleet(std::vector<Target> daemons);

    [[nodiscard]] std::size_t size() const noexcept { return targets.size(); }
    [[nodiscard]] const std::string& name(std::size_t number) const {
        return targets.at(number).name;
    }

    /// Does the errand with all daemons at the same time, each on a thread of its own up to a great
    /// number of them; gives the outcomes in their order. A daemon whose host is not found or
    /// cannot be sent to has given no answer. One that is there under two names is dealt with once:
    /// both have the same outcome.
    [[nodiscard]] std::vector<Outcome> doForAll(const Errand& errand);

  private:
    void lookUp();
    [[nodiscard]] Outcome doFor(std::size_t number, const Errand& errand) const;
    /// The number of the first with the same peer.
    [[nodiscard]] std::size_t firstLike(std::size_t number) const;

    std::vector<Target> targets;
    std::vector<std::optional<client::Client>> clients;  ///< nothing where there is no such host
    std::vector<std::string> failures;                   ///< why, for those
    std::vector<std::size_t> firsts;                     ///< `firstLike`, once all are looked up
};

}  // namespace orx::orxctl
