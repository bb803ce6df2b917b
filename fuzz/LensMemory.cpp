// Any text as a lens memory file: ranges and slots must be what its rules give; what is saved must
// hold what was read, besides what the lens knows, and be read again alike.
//
// The input: the reducemax of the zoom axis in the first line, the file in the others.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "commands/Command.h"
#include "common/Check.h"
#include "common/Console.h"
#include "common/InputBytes.h"
#include "common/Numbers.h"
#include "common/RewrittenFile.h"
#include "config/MainConfig.h"
#include "control/Status.h"
#include "lens/LensConfig.h"
#include "projector/Projector.h"

namespace orx::fuzz {
namespace {

using Slots = std::map<int, LensPosition>;

/// A lens memory with its axes.
struct Lens {
    explicit Lens(const MainConfig& config) : memory(config, {zoom, focus}) {}

    std::shared_ptr<const Projector> model =
        std::make_shared<const Projector>("MODEL", ArgumentTable{}, CommandStrings{}, 0);
    std::shared_ptr<LensControl> zoom = std::make_shared<LensControl>(model, zoomCommands);
    std::shared_ptr<LensControl> focus = std::make_shared<LensControl>(model, focusCommands);
    LensConfig memory;
};

/// The number of an entry, which counts as 0 where it is missing or empty.
Outcome<int> numberOf(const ConfigFile& file, const std::string& key) {
    const auto text = file.getString(key);
    return text.empty() ? Outcome<int>{0, {}} : wholeNumber(text);
}

/// Adds the slot of a piece of the list, if it is one; the error where it is none that can be read.
std::string addSlot(Slots& slots, const std::string& piece) {
    const auto colon = piece.find(':');
    const auto semicolon = piece.find(';');
    if (colon == std::string::npos || semicolon == std::string::npos) return {};
    const auto number = wholeNumber(piece);
    const auto focus = wholeNumber(piece.substr(colon + 1));
    const auto zoom = wholeNumber(piece.substr(semicolon + 1));
    for (const auto& part : {number, focus, zoom})
        if (!part.error.empty()) return part.error;
    slots[*number.value] = {.focus = *focus.value, .zoom = *zoom.value};
    return {};
}

Outcome<Slots> slotsOf(const ConfigFile& file) {
    Slots slots;
    for (const auto& piece : file.getList("mem")) {
        const auto error = addSlot(slots, piece);
        if (!error.empty()) return {{}, error};
    }
    return {slots, {}};
}

/// The error with which a daemon on these texts does not start; empty where it does.
std::string expectedError(const MainConfig& config, const ConfigFile& file) {
    const auto reduction = config.getString("abszoom.reducemax");
    const auto number = wholeNumber(reduction.substr(0, reduction.find('%')));
    if (!reduction.empty() && !number.value) return number.error;
    for (const auto* key : {"zoommin", "zoommax", "focusmin", "focusmax"}) {
        const auto bound = numberOf(file, key);
        if (!bound.value) return bound.error;
    }
    return slotsOf(file).error;
}

std::string lineOf(const Slots& slots) {
    std::string text;
    for (const auto& [number, position] : slots)
        text += std::to_string(number) + ":" + std::to_string(position.focus) + ";" +
                std::to_string(position.zoom) + ",";
    return text;
}

void checkRange(const LensControl& axis, const ConfigFile& file) {
    const int min = *numberOf(file, axis.configKey("min")).value;
    const int max = *numberOf(file, axis.configKey("max")).value;
    expectEqual(axis.rangeMin(), min, "the lower end");
    expectEqual(axis.rangeMax(), max, "the travel");
    const double reduction = axis.reduceMaxParam();
    const double reduced =
        reduction < 1 ? max + reduction : std::round(max * (100.0 - reduction) / 100.0);
    constexpr double greatest = std::numeric_limits<int>::max();
    expectEqual(axis.rangeMaxReduced(),
                static_cast<int>(std::max<double>(std::min(reduced, greatest), min)),
                "the upper end");
}

void checkSlots(const LensConfig& memory, const Slots& slots) {
    for (const auto& [number, position] : slots) {
        expect(memory.hasSlot(number), "a slot is missing");
        const auto loaded = memory.loadSlot(number);
        expectEqual(loaded.focus, position.focus, "the focus of a slot");
        expectEqual(loaded.zoom, position.zoom, "the zoom of a slot");
    }
}

/// All entries of `before` but those that the lens writes itself must have been carried over.
void checkSaved(const LensConfig& memory, const ConfigFile& before, const Slots& slots,
                const RewrittenFile& file) {
    const ConfigFile saved(file.path());
    expectEqual(saved.getString("mem"), lineOf(slots), "the saved slots");
    expectEqual(saved.getString("zoommin"), std::to_string(*numberOf(before, "zoommin").value),
                "a saved range");
    for (const auto* key : {"note", "zoom", "focus.note"})
        expectEqual(saved.getString(key), before.getString(key), "an entry that is not ours");
    checkSlots(memory, slots);
}

void checkRecall(Lens& lens, const ConfigFile& before, const Slots& slots,
                 const RewrittenFile& file) {
    lens.memory.save();
    checkSaved(lens.memory, before, slots, file);
    const auto content = file.content();
    lens.memory.reload();
    checkRange(*lens.zoom, before);
    checkRange(*lens.focus, before);
    checkSlots(lens.memory, slots);
    lens.memory.save();
    expectEqual(file.content(), content, "the file once read and saved again");
    const int slot = slots.empty() ? 1 : slots.begin()->first;
    lens.memory.saveSlot(slot);
    expectEqual(lens.memory.loadSlot(slot).zoom, lens.zoom->currentPosition(), "a stored position");
    lens.memory.clearAllSlots();
    expect(!lens.memory.hasSlot(slot), "a slot was not forgotten");
}

void check(InputBytes input) {
    static const RewrittenFile file("var/lensmemory.cfg");
    clearConsole();
    const MainConfig config(ConfigFile::Entries{{"abszoom.reducemax", input.line()}});
    file.write(input.rest());
    const auto readable = outcomeOf([] { return std::make_shared<ConfigFile>(file.path()); });
    std::unique_ptr<Lens> lens;
    const auto error = errorOf([&] { lens = std::make_unique<Lens>(config); });
    if (!readable.value) return expectEqual(error, readable.error, "a file that cannot be read");
    const auto& before = **readable.value;
    expectEqual(error, expectedError(config, before), "reading the lens memory");
    if (lens == nullptr) return;
    checkRange(*lens->zoom, before);
    checkRange(*lens->focus, before);
    const auto slots = *slotsOf(before).value;
    checkSlots(lens->memory, slots);
    checkRecall(*lens, before, slots, file);
}

}  // namespace
}  // namespace orx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orx::fuzz::check({data, size});
    return 0;
}
