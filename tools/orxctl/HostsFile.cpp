#include "orxctl/HostsFile.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "core/InstallPrefix.h"

namespace orx::orxctl {
namespace {

/// The value of an environment variable; empty where there is none.
std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string personalHostsFile() {
    auto folder = environment("XDG_CONFIG_HOME");
    if (folder.empty()) folder = environment("HOME") + "/.config";
    return folder + "/orx/hosts";
}

}  // namespace

std::vector<Target> HostsFile::targets(const std::vector<std::string>& words) const {
    Search search;
    for (const auto& word : words)
        add(word, search);
    return search.found;
}

void HostsFile::add(const std::string& word, Search& search) const {
    constexpr std::size_t farEnough = 100;
    auto& way = search.way;
    if (word.empty() && !way.empty())
        throw std::invalid_argument("the hosts file has a comma too many at \"" + way.back() + '"');
    const auto listed = getList(word);
    if (listed.empty()) {
        // A name for one daemon is shown in its place; a group only gathers.
        addAddress(word, !way.empty() && getList(way.back()).size() == 1, search);
        return;
    }
    if (std::ranges::find(way, word) != way.end() || way.size() == farEnough)
        throw std::invalid_argument("the hosts file leads from \"" + way.front() +
                                    "\" in a circle, or too far");
    if (!search.seen.insert(word).second) return;
    way.push_back(word);
    for (const auto& next : listed)
        add(next, search);
    way.pop_back();
}

void HostsFile::addAddress(const std::string& word, bool hasName, Search& search) {
    const auto address = client::Address::parse(word);
    if (!search.seen.insert(address.text()).second) return;
    search.found.push_back({hasName ? search.way.back() : address.text(), address});
}

std::vector<std::string> usualTargets() {
    const auto given = environment("ORX_HOST");
    if (given.empty()) return {client::Address().text()};
    return ConfigFile({{"", given}}).getList("");
}

std::string usualHostsFile() {
    const auto personal = personalHostsFile();
    return ConfigFile::isReadable(personal) ? personal : INSTALL_PREFIX + "/etc/orx-hosts.cfg";
}

}  // namespace orx::orxctl
