// The projector control on the bench, with a lens memory file of its own.
#pragma once

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "commands/Vocabulary.h"
#include "config/MainConfig.h"
#include "core/InstallPrefix.h"
#include "lens/ProjectorControl.h"
#include "unit/lens/LensBench.h"

namespace orx::test {

/// Every keyword of the vocabulary.
inline Lines allKeywords() {
    Lines keywords;
    for (const auto& entry : vocabulary)
        keywords.emplace_back(entry.keyword);
    return keywords;
}

class ControlBench : public LensBench {
  protected:
    ControlBench() {
        std::filesystem::remove_all(INSTALL_PREFIX + "/var");
        std::filesystem::create_directories(INSTALL_PREFIX + "/var");
        writeMemory("zoommax = 2000\nfocusmax = 1000\n");
    }

    void writeMemory(const std::string& content) const {
        std::ofstream(memoryPath, std::ios::binary) << content;
    }

    /// Builds the control of a model that knows single steps and native resets.
    void build() { buildOn(modelKnowing({"AZ+", "AZ-", "AF+", "AF-", "ZOOMRESET", "FOCUSRESET"})); }

    void buildOn(std::shared_ptr<const Projector> model, const std::string& mainSettings = "") {
        const MainConfig mainConfig(folder.write("orx.cfg", mainSettings));
        control = std::make_unique<ProjectorControl>(std::move(model), mainConfig, loopTime);
        clearLog();
    }

    void execute(const std::string& text) { control->execute(Command(text)); }

    /// Lets both axes know where they are, without anything sent.
    void placeAt(int zoom, int focus) {
        execute("OVERRIDEZOPOS " + std::to_string(zoom));
        execute("OVERRIDEFOPOS " + std::to_string(focus));
    }

    /// Runs the loop in this thread, with `atSleep` called for every sleep with its number, counted
    /// from 1; what was printed.
    template <typename Action>
    std::string run(Action atSleep) {
        constexpr std::size_t farTooMany = 1000;
        loopTime.onSleep = [this, atSleep] {
            if (loopTime.sleeps.size() > farTooMany) throw std::logic_error("no end of the loop");
            atSleep(loopTime.sleeps.size());
        };
        return outputOf([this] { control->run(); });
    }
    std::string run() {
        return run([](std::size_t) {});
    }

    /// Runs the loop in this thread and quits when it goes to sleep for the `count`-th time; what
    /// was printed.
    std::string runUntilSleep(std::size_t count) {
        return run([this, count](std::size_t number) {
            if (number == count) execute("QUIT");
        });
    }

    /// The status reply up to the flags.
    [[nodiscard]] static std::string status() {
        const auto reply = Status::statusReply();
        return reply.substr(0, reply.rfind(';'));
    }

    const std::string memoryPath = INSTALL_PREFIX + "/var/lensmemory.cfg";
    FakeTime loopTime;
    std::unique_ptr<ProjectorControl> control;
};

}  // namespace orx::test
