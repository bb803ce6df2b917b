#include "config/MainConfig.h"

#include <stdexcept>
#include <utility>

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
    entries.try_emplace("controlchannel", "127.0.0.1:7781");
    entries.try_emplace("definitionfile", INSTALL_PREFIX + "/lib/orx.ccd");
    entries.try_emplace("logfile", INSTALL_PREFIX + "/var/run/orx.log");
}

void MainConfig::gatherAliases() {
    constexpr std::string_view prefix = "cmd.";
    aliasTable.clear();
    for (const auto& [key, value] : entries) {
        if (key.starts_with(prefix)) aliasTable[key.substr(prefix.size())] = value;
    }
}

std::vector<std::string> MainConfig::controlChannel() const {
    return getList("controlchannel");
}

std::string MainConfig::definitionFile() const {
    return getString("definitionfile");
}

std::string MainConfig::logFile() const {
    return getString("logfile");
}

std::string MainConfig::projector() const {
    return getString("projector");
}

std::string MainConfig::serialDevice() const {
    return getString("serial.device");
}

bool MainConfig::hasAlias(std::string_view command) const {
    return aliasTable.contains(command);
}

}  // namespace orx
