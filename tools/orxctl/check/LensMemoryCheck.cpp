#include <exception>
#include <set>
#include <string>

#include "config/ConfigFile.h"
#include "config/ConfigKeys.h"
#include "lens/AxisCommands.h"
#include "lens/LensConfig.h"
#include "lens/LensControl.h"
#include "orxctl/check/Files.h"
#include "orxctl/check/LensCheck.h"
#include "orxctl/check/NumberCheck.h"
#include "orxctl/check/Writability.h"
#include "orxdef/Wording.h"

namespace orx::orxctl {
namespace {

/// As the daemon writes it, less the comma behind it.
std::string textOf(const MemorySlot& slot) {
    return std::to_string(slot.number) + ":" + std::to_string(slot.position.focus) + ";" +
           std::to_string(slot.position.zoom);
}

class LensMemoryCheck {
  public:
    LensMemoryCheck(const ConfigText& memory, Report& findings)
        : text(memory), values(text.entries()), report(findings) {}

    void check() {
        for (const auto& axis : {zoomCommands, focusCommands})
            checkRange(axis.axisName);
        for (const auto& piece : values.getList(config_key::memorySlots))
            if (!piece.empty()) checkSlot(piece);
    }

  private:
    void checkRange(std::string_view axis) {
        const auto number = [&](std::string_view key) {
            return NumberCheck(Stage::withProjector, report)
                .read(values, text, axisKey(axis, key), "a number of motor steps");
        };
        const int min = number(config_key::rangeMin).value_or(0);
        const int max = number(config_key::rangeMax).value_or(0);
        if (max < min)
            report.warn(text.placeOf(axisKey(axis, config_key::rangeMax)),
                        std::to_string(max) + " lies below the lower end " + std::to_string(min) +
                            ", so the " + std::string(axis) +
                            " cannot move to a position; calibrate it again");
    }

    void checkSlot(const std::string& piece) {
        const auto place = text.placeOf(config_key::memorySlots);
        try {
            const auto slot = parseMemorySlot(piece);
            if (!slot) {
                report.warn(place,
                            orxdef::quoted(piece) + " is passed over; a slot is NUMBER:FOCUS;ZOOM");
                return;
            }
            if (textOf(*slot) != piece)
                report.warn(place, orxdef::quoted(piece) + " is read as " + textOf(*slot) +
                                       "; a slot is NUMBER:FOCUS;ZOOM");
            if (!numbers.insert(slot->number).second)
                report.warn(place, "slot " + std::to_string(slot->number) +
                                       " stands twice, and the later one counts; remove one");
        } catch (const std::exception& error) {
            report.ends(
                place, error.what(),
                orxdef::quoted(piece) + " has a number that is none; a slot is NUMBER:FOCUS;ZOOM",
                Stage::withProjector);
        }
    }

    const ConfigText& text;
    const ConfigFile values;
    Report& report;
    std::set<int> numbers{};
};

}  // namespace

void checkLensMemory(const ConfigText& memory, Report& report) {
    const auto place = memory.whole("lens memory");
    if (exists(memory.path()) &&
        (isFolder(memory.path()) || !ConfigFile::isReadable(memory.path())))
        report.warn(place,
                    "the file cannot be read, so the lens has neither ranges nor slots; let the "
                    "user of the daemon read it");
    LensMemoryCheck(memory, report).check();
    if (const auto obstacle = obstacleToWriting(memory.path()))
        report.warn(place, obstacle->reason +
                               ", and the first calibration or MEMSAVE ends the daemon; " +
                               obstacle->cure);
}

}  // namespace orx::orxctl
