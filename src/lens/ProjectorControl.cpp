#include "lens/ProjectorControl.h"

#include <utility>

#include "commands/Keywords.h"
#include "control/Status.h"
#include "core/Console.h"
#include "core/Log.h"

namespace orx {
namespace {

/// Two characters a byte, as the standard conversion reads them.
std::string bytesFromHex(const std::string& text) {
    constexpr std::size_t digitsPerByte = 2;
    constexpr int hexadecimal = 16;
    std::string bytes;
    for (std::size_t place = 0; place < text.size(); place += digitsPerByte) {
        const auto piece = text.substr(place, digitsPerByte);
        bytes += static_cast<char>(std::stoi(piece, nullptr, hexadecimal));
    }
    return bytes;
}

}  // namespace

ProjectorControl::ProjectorControl(std::shared_ptr<const Projector> lensProjector,
                                   const MainConfig& mainConfig, Time& loopTime)
    : projector(std::move(lensProjector)),
      zoom(std::make_shared<LensControl>(projector, zoomCommands)),
      focus(std::make_shared<LensControl>(projector, focusCommands)),
      lensConfig(mainConfig, {zoom, focus}),
      time(loopTime) {
    Status::addAxis(zoom);
    Status::addAxis(focus);
}

void ProjectorControl::run() {
    constexpr int passMs = 50;
    printLine("[PROJCTRL] start");
    while (running) {
        time.sleepMs(passMs);
        zoom->moveStep();
        focus->moveStep();
    }
    printLine("[PROJCTRL] stop.");
    alive = false;
}

void ProjectorControl::stop() noexcept {
    running = false;
    zoom->stop();
    focus->stop();
}

void ProjectorControl::execute(const Command& command) {
    const auto& arguments = command.arguments();
    const auto withInteger = [&arguments](auto action) {
        if (!arguments.empty()) action(std::stoi(arguments.front()));
    };
    if (command.is(CMD_QUIT) || command.is(CMD_RESTART)) {
        stop();
    } else if (command.is(CMD_SET_DELAY)) {
        withInteger([this](int milliseconds) { projector->setDelay(milliseconds); });
    } else if (command.is(CMD_RAW)) {
        if (!arguments.empty()) projector->sendRaw(bytesFromHex(arguments.front()));
    } else if (command.is(CMD_CLEAR_MEMORY)) {
        lensConfig.clearAllSlots();
    } else if (command.is(CMD_SAVE_MEMORY)) {
        withInteger([this](int slot) { lensConfig.saveSlot(slot); });
    } else if (command.is(CMD_LOAD_MEMORY)) {
        withInteger([this](int slot) { loadMemory(slot); });
    } else if (command.is(CMD_LENS_RESET)) {
        resetLens();
    } else {
        passOn(command);
    }
}

void ProjectorControl::loadMemory(int slot) {
    if (!lensConfig.hasSlot(slot)) {
        log("- could not load memory slot " + std::to_string(slot) + ", no position data",
            Echo::yes);
        return;
    }
    const auto position = lensConfig.loadSlot(slot);
    zoom->gotoMemoryPosition(position.zoom);
    focus->gotoMemoryPosition(position.focus);
}

void ProjectorControl::resetLens() {
    // Both axes show that they reset before the first, which may take long, begins.
    zoom->beginReset();
    focus->beginReset();
    zoom->reset(0);
    focus->reset(0);
}

void ProjectorControl::passOn(const Command& command) {
    if (zoom->handleCommand(command) || focus->handleCommand(command)) return;
    projector->send(command);
}

}  // namespace orx
