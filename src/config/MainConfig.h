// The daemon's main settings. Built and read by the main thread while the daemon starts; the
// getters hand out copies.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfigFile.h"

namespace orx {

class MainConfig : public ConfigFile {
  public:
    using Aliases = std::map<std::string, std::string, std::less<>>;

    /// Reads `path`, or the default file INSTALL_PREFIX/etc/orx.cfg where `path` is empty. A
    /// missing default file leaves the defaults alone. Throws as `requireReadable` for a given
    /// path, and as `ConfigFile::load`.
    [[nodiscard]] static std::shared_ptr<MainConfig> create(const std::string& path);

    /// The file that is read where no other is given.
    [[nodiscard]] static std::string defaultPath();

    /// Throws `std::runtime_error` "config file not found: PATH" where `path` cannot be read.
    static void requireReadable(const std::string& path);

    /// Reads `path`, fills in the defaults and gathers the aliases; errors as `ConfigFile::load`.
    explicit MainConfig(std::string path);

    /// The configuration that a file of the `given` entries makes.
    explicit MainConfig(Entries given);

    void reload() override;

    /// The addresses to listen on, each "ADDRESS:PORT".
    [[nodiscard]] std::vector<std::string> controlChannel() const;
    /// The path of the projector definition file.
    [[nodiscard]] std::string definitionFile() const;
    /// The path of the log file.
    [[nodiscard]] std::string logFile() const;
    /// The name of the projector model; may be empty.
    [[nodiscard]] std::string projector() const;
    /// The path of the serial device; may be empty.
    [[nodiscard]] std::string serialDevice() const;

    /// Every key that begins with "cmd.", without these four characters, and its value.
    [[nodiscard]] const Aliases& aliases() const noexcept { return aliasTable; }

    /// Whether there is an alias of that name.
    [[nodiscard]] bool hasAlias(std::string_view command) const;

  private:
    void applyDefaults();
    void gatherAliases();

    Aliases aliasTable;
};

}  // namespace orx
