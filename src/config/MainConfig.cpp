#include "config/MainConfig.h"

#include <stdexcept>
#include <utility>

#include "config/ConfigKeys.h"
#include "core/InstallPrefix.h"

namespace orx {

std::shared_ptr<MainConfig> MainConfig::create(const std::string& path) {
    if (path.empty()) return std::make_shared<MainConfig>(defaultPath());
    requireReadable(path);
    return std::make_shared<MainConfig>(path);
}

void MainConfig::requireReadable(const std::string& path) {
    if (!isReadable(path)) throw std::runtime_error("config file not found: " + path);
}

std::string MainConfig::defaultPath() {
    return INSTALL_PREFIX + "/etc/orx.cfg";
}

MainConfig::MainConfig(std::string path) : ConfigFile(std::move(path)) {
    applyDefaults();
    gatherAliases();
}

MainConfig::MainConfig(Entries given) : ConfigFile(std::move(given)) {
    applyDefaults();
    gatherAliases();
}

void MainConfig::reload() {
    ConfigFile::reload();
    applyDefaults();
    gatherAliases();
}

void MainConfig::applyDefaults() {
    entries.emplace(config_key::controlChannel, "127.0.0.1:7781");
    entries.emplace(config_key::definitionFile, INSTALL_PREFIX + "/lib/orx.ccd");
    entries.emplace(config_key::logFile, INSTALL_PREFIX + "/var/run/orx.log");
}

void MainConfig::gatherAliases() {
    constexpr auto prefix = config_key::aliasPrefix;
    aliasTable.clear();
    for (const auto& [key, value] : entries) {
        if (key.starts_with(prefix)) aliasTable[key.substr(prefix.size())] = value;
    }
}

std::vector<std::string> MainConfig::controlChannel() const {
    return getList(config_key::controlChannel);
}

std::string MainConfig::definitionFile() const {
    return getString(config_key::definitionFile);
}

std::string MainConfig::logFile() const {
    return getString(config_key::logFile);
}

std::string MainConfig::projector() const {
    return getString(config_key::projector);
}

std::string MainConfig::serialDevice() const {
    return getString(config_key::serialDevice);
}

bool MainConfig::hasAlias(std::string_view command) const {
    return aliasTable.contains(command);
}

}  // namespace orx
