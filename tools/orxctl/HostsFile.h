// Names for daemons and for groups of them, in a file of "NAME = WORD, WORD..." lines. A word is an
// address, HOST or HOST:PORT, or another name of the file. The rules of the daemon's configuration
// hold for lines and comments.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfigFile.h"
#include "orx/client/Address.h"

namespace orx::orxctl {

/// A daemon that the user has named.
struct Target {
    std::string name;  ///< as results show it: its name in the file, else its address
    client::Address address;

    bool operator==(const Target&) const = default;
};

class HostsFile : public ConfigFile {
  public:
    /// No names.
    HostsFile() = default;
    /// Reads `path`; errors as `ConfigFile::load`.
    explicit HostsFile(std::string path) : ConfigFile(std::move(path)) {}

    /// The daemons that `words` stand for, in that order and each once. Throws
    /// `std::invalid_argument` for a word that is neither name nor address, and for a name that
    /// leads back to itself or too far.
    [[nodiscard]] std::vector<Target> targets(const std::vector<std::string>& words) const;

  private:
    /// What has been found, and the names that lead to what is being looked at.
    struct Search {
        std::vector<Target> found;
        std::set<std::string> seen;  ///< names that have been followed, addresses that were found
        std::vector<std::string> way;
    };

    void add(const std::string& word, Search& search) const;
    static void addAddress(const std::string& word, bool hasName, Search& search);
};

/// The words that stand for the daemons where the user names none: those of $ORX_HOST between its
/// commas, else the address of a daemon on this machine.
[[nodiscard]] std::vector<std::string> usualTargets();

/// The file to be used where the user names none: orx/hosts below $XDG_CONFIG_HOME or ~/.config,
/// else etc/orx-hosts.cfg below the prefix. Need not be there.
[[nodiscard]] std::string usualHostsFile();

}  // namespace orx::orxctl
