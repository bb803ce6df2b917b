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
    std::vector<Target> found;
    std::vector<std::string> way;
    for (const auto& word : words)
        add(word, way, found);
    return found;
}

void HostsFile::add(const std::string& word, std::vector<std::string>& way,
                    std::vector<Target>& found) const {
    const auto listed = getList(word);
    if (word.empty() && !way.empty())
        throw std::invalid_argument("the hosts file has a comma too many at \"" + way.back() + '"');
    if (listed.empty()) {
        // A name for one daemon is shown in its place; a group only gathers.
        const bool hasName = !way.empty() && getList(way.back()).size() == 1;
        const auto address = client::Address::parse(word);
        if (std::ranges::find(found, address, &Target::address) == found.end())
            found.push_back({hasName ? way.back() : address.text(), address});
        return;
    }
    if (std::ranges::find(way, word) != way.end())
        throw std::invalid_argument("the hosts file leads from \"" + word + "\" back to it");
    way.push_back(word);
    for (const auto& next : listed)
        add(next, way, found);
    way.pop_back();
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
