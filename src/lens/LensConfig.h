// What the daemon learns about the lens and keeps across restarts: the calibrated range of each
// axis and the memory slots, in the lens memory file INSTALL_PREFIX/var/lensmemory.cfg.
//
// Keys of the file: for each axis its min, max, maxreduced and reducemaxparam (the last two for
// information only), and `mem`, the slots in ascending order, each "SLOT:FOCUS;ZOOM,". Other keys
// are kept. Used on the command queue's thread, and while the daemon starts; takes no lock.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "config/ConfigFile.h"
#include "config/MainConfig.h"
#include "lens/LensControl.h"

namespace orx {

/// A stored lens position, in motor steps.
struct LensPosition {
    int focus;
    int zoom;
};

/// A slot of the lens memory as the file has it.
struct MemorySlot {
    int number;
    LensPosition position;
};

/// The slot that one piece of the list `mem` stands for, or nothing for a piece without ":" or ";",
/// which is passed over. Throws the conversion errors "stoi" for a number that is none.
[[nodiscard]] std::optional<MemorySlot> parseMemorySlot(const std::string& piece);

/// The reduction that a `reducemax` text asks for: "10%" withholds ten percent of the travel, "50"
/// fifty steps, which is -50 here; a sign means nothing. Throws as `parseMemorySlot`.
[[nodiscard]] int parseReduceMax(const std::string& text);

class LensConfig : public ConfigFile {
  public:
    /// The path of the lens memory file.
    [[nodiscard]] static std::string filePath();

    /// The axes in the order zoom, focus.
    using Axes = std::vector<std::shared_ptr<LensControl>>;

    /// Reads the lens memory file, which may be missing, gives each axis its motion parameters
    /// from `mainConfig` and its range, and saves whenever an axis has been calibrated. Throws the
    /// conversion errors "stoi" for a number that is none, in either file.
    LensConfig(const MainConfig& mainConfig, Axes axes);

    [[nodiscard]] bool hasSlot(int slot) const;

    /// The position in `slot`, which must exist.
    [[nodiscard]] LensPosition loadSlot(int slot) const;

    /// Stores the current position of the axes and saves the file; errors as `save`, the slot then
    /// stays changed in memory.
    void saveSlot(int slot);

    /// Forgets all slots and saves the file; errors as `save`.
    void clearAllSlots();

    /// Reads file, ranges and slots again, but not the motion parameters; errors as construction.
    void reload() override;

    /// Writes ranges and slots; errors as `ConfigFile::save`.
    void save() override;

    /// Logs the ranges and the slots.
    void dump() const override;

  private:
    void takeRangesAndSlots();
    void parseSlots();
    [[nodiscard]] std::string slotsText() const;

    Axes axes;
    std::map<int, LensPosition> slots;
};

}  // namespace orx
