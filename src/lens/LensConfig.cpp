#include "lens/LensConfig.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <utility>

#include "config/ConfigKeys.h"
#include "control/Status.h"
#include "core/InstallPrefix.h"
#include "core/Log.h"

namespace orx {
namespace {

MotionParameters motionParameters(const MainConfig& config, const LensControl& axis) {
    const MotionParameters defaults;
    return {
        .reduceMaxParam = parseReduceMax(config.getString(axis.configKey(config_key::reduceMax))),
        .resetOnLoadMem = config.getInt(axis.configKey(config_key::resetOnLoadMem),
                                        defaults.resetOnLoadMem ? 1 : 0) != 0,
        .resetSteps = config.getInt(axis.configKey(config_key::resetSteps), defaults.resetSteps),
        .lockInMode = config.getInt(axis.configKey(config_key::lockInMode), defaults.lockInMode),
    };
}

/// "zoom=ZOOM focus=FOCUS", as the log has it.
std::string describe(const LensPosition& position) {
    return "zoom=" + std::to_string(position.zoom) + " focus=" + std::to_string(position.focus);
}

}  // namespace

int parseReduceMax(const std::string& text) {
    if (text.empty()) return 0;
    constexpr std::int64_t greatest = std::numeric_limits<int>::max();
    const auto percent = text.find('%');
    // The lowest integer has no positive twin of 32 bits.
    const auto magnitude = std::abs(std::int64_t{std::stoi(text.substr(0, percent))});
    return static_cast<int>(percent != std::string::npos ? std::min(magnitude, greatest)
                                                         : -magnitude);
}

std::optional<MemorySlot> parseMemorySlot(const std::string& piece) {
    const auto colon = piece.find(':');
    const auto semicolon = piece.find(';');
    if (colon == std::string::npos || semicolon == std::string::npos) return std::nullopt;
    const int number = std::stoi(piece.substr(0, colon));
    const int focus = std::stoi(piece.substr(colon + 1, semicolon - colon - 1));
    return MemorySlot{number, {.focus = focus, .zoom = std::stoi(piece.substr(semicolon + 1))}};
}

std::string LensConfig::filePath() {
    return INSTALL_PREFIX + "/var/lensmemory.cfg";
}

LensConfig::LensConfig(const MainConfig& mainConfig, Axes lensAxes)
    : ConfigFile(filePath()), axes(std::move(lensAxes)) {
    for (const auto& axis : axes) {
        axis->setCalibrationDone([this] { save(); });
        axis->setParameters(motionParameters(mainConfig, *axis));
    }
    takeRangesAndSlots();
}

void LensConfig::takeRangesAndSlots() {
    for (const auto& axis : axes) {
        axis->setRange(getInt(axis->configKey(config_key::rangeMin), 0),
                       getInt(axis->configKey(config_key::rangeMax), 0));
    }
    parseSlots();
    LensConfig::dump();
}

void LensConfig::parseSlots() {
    slots.clear();
    for (const auto& piece : getList(config_key::memorySlots)) {
        if (const auto slot = parseMemorySlot(piece)) slots[slot->number] = slot->position;
    }
}

bool LensConfig::hasSlot(int slot) const {
    return slots.contains(slot);
}

LensPosition LensConfig::loadSlot(int slot) const {
    const auto& position = slots.at(slot);
    log("- loading memory slot " + std::to_string(slot) + ": " + describe(position), Echo::yes);
    return position;
}

void LensConfig::saveSlot(int slot) {
    const LensPosition position{.focus = axes.at(1)->currentPosition(),
                                .zoom = axes.at(0)->currentPosition()};
    log("- saving memory slot " + std::to_string(slot) + ": " + describe(position), Echo::yes);
    slots[slot] = position;
    save();
}

void LensConfig::clearAllSlots() {
    log("- clearing all memory slots", Echo::yes);
    slots.clear();
    save();
}

void LensConfig::reload() {
    ConfigFile::reload();
    takeRangesAndSlots();
}

void LensConfig::save() {
    for (const auto& axis : axes) {
        entries[axis->configKey(config_key::rangeMin)] = std::to_string(axis->rangeMin());
        entries[axis->configKey(config_key::rangeMax)] = std::to_string(axis->rangeMax());
        entries[axis->configKey(config_key::rangeMaxReduced)] =
            std::to_string(axis->rangeMaxReduced());
        entries[axis->configKey(config_key::rangeReduceMaxParam)] =
            std::to_string(axis->reduceMaxParam());
    }
    entries[std::string(config_key::memorySlots)] = slotsText();
    ConfigFile::save();
    Status::setLensConfigLoaded();
}

std::string LensConfig::slotsText() const {
    std::string text;
    for (const auto& [slot, position] : slots) {
        text += std::to_string(slot) + ":" + std::to_string(position.focus) + ";" +
                std::to_string(position.zoom) + ",";
    }
    return text;
}

void LensConfig::dump() const {
    std::string ranges = "load lens config ::";
    for (const auto& axis : axes) {
        ranges += " " + axis->name() + ": " + std::to_string(axis->rangeMin()) + "-" +
                  std::to_string(axis->rangeMaxReduced()) + " (reduced from " +
                  std::to_string(axis->rangeMax()) + ")";
    }
    log(ranges, Echo::yes, "[LENSMEM] ");
    for (const auto& [slot, position] : slots) {
        log("    lensmem slot " + std::to_string(slot) + ": focus=" +
                std::to_string(position.focus) + " zoom=" + std::to_string(position.zoom),
            Echo::yes);
    }
}

}  // namespace orx
