// The lens memory on the bench, between a main configuration, a lens memory file and two axes.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "config/MainConfig.h"
#include "core/InstallPrefix.h"
#include "lens/LensConfig.h"
#include "unit/lens/LensBench.h"

namespace orx::test {

class LensConfigBench : public LensBench {
  protected:
    LensConfigBench() {
        std::filesystem::remove_all(variableFolder);
        std::filesystem::create_directories(variableFolder);
    }

    /// Puts a lens memory file in place.
    void writeMemory(const std::string& content) const {
        std::ofstream(memoryPath, std::ios::binary) << content;
    }

    [[nodiscard]] std::string memory() const { return contentOf(memoryPath); }

    /// Makes any writing of the lens memory file fail.
    void denyWriting() const { std::filesystem::remove_all(variableFolder); }

    [[nodiscard]] MainConfig mainConfigOf(const std::string& content) const {
        return MainConfig(folder.write("orx.cfg", content));
    }

    /// Builds the lens memory with `mainSettings` as main configuration.
    LensConfig& build(const std::string& mainSettings = "") {
        config =
            std::make_unique<LensConfig>(mainConfigOf(mainSettings), LensConfig::Axes{zoom, focus});
        return *config;
    }

    /// Lets both axes know where they are, without anything sent.
    void placeAt(int zoomPosition, int focusPosition) const {
        zoom->handleCommand(Command("OVERRIDEZOPOS " + std::to_string(zoomPosition)));
        focus->handleCommand(Command("OVERRIDEFOPOS " + std::to_string(focusPosition)));
    }

    const std::string variableFolder = INSTALL_PREFIX + "/var";
    const std::string memoryPath = variableFolder + "/lensmemory.cfg";
    std::shared_ptr<Projector> model = modelKnowing({"AZ+", "AZ-", "AF+", "AF-", "Z-", "F-"});
    std::shared_ptr<LensControl> zoom = std::make_shared<LensControl>(model, zoomCommands);
    std::shared_ptr<LensControl> focus = std::make_shared<LensControl>(model, focusCommands);
    std::unique_ptr<LensConfig> config;
};

}  // namespace orx::test
