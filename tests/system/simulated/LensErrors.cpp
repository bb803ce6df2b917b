#include "system/simulated/LensErrors.h"

#include <array>
#include <optional>

#include "system/simulated/Bench.h"

namespace orx::test {
namespace {

constexpr int travel = 100;

LensStatus moveTo(Bench& bench, const std::string& command) {
    bench.send(command);
    return bench.waitForRest();
}

int zoomError(Bench& bench, int position) {
    static_cast<void>(moveTo(bench, "ZOOMX " + std::to_string(position)));
    return bench.waitUntilExecuted().zoom.lens - position;
}

std::string axisSettings(const std::string& key, int value) {
    std::string settings;
    for (const auto* axis : {"abszoom", "absfocus"})
        settings += std::string(axis) + "." + key + " = " + std::to_string(value) + "\n";
    return settings;
}

/// What one slot holds.
struct Slot {
    int zoom;
    int focus;
};

/// Near and far, up and down; here and there one axis stays where it is.
constexpr std::array<Slot, 4> slots{{{80, 40}, {20, 40}, {60, 90}, {60, 15}}};

std::string slotsInFile() {
    std::string text = "mem = ";
    int number = 0;
    for (const auto& slot : slots)
        text += std::to_string(++number) + ":" + std::to_string(slot.focus) + ";" +
                std::to_string(slot.zoom) + ",";
    return text + "\n";
}

/// The measurement of one axis: what it has lost up to a recall, and what the recall then does.
class AxisRecalls {
  public:
    using Reading = Simulator::Axis Simulator::Axes::*;

    AxisRecalls(Reading axisReading, std::string nativeReset, std::string fastReset)
        : reading(axisReading), native(std::move(nativeReset)), fast(std::move(fastReset)) {}

    void add(int target, const std::vector<Simulator::Event>& events) {
        Recall recall{.changesTarget = target != lastTarget};
        int lostAtReset = lost;
        for (const auto& event : events) {
            const bool isFast = event.command == fast;
            if (event.command != native && !isFast) continue;
            lostAtReset = (event.axes.*reading).lost;
            recall.resets += !(isFast && lastWasFast);  // many fast steps are one reset
            lastWasFast = isFast;
        }
        lastWasFast = false;
        const auto& now = events.back().axes.*reading;
        recall.error = now.lens - target;
        recall.lostSince = now.lost - lostAtReset;
        recall.lostInAll = lost = now.lost;
        lastTarget = target;
        recalls.push_back(recall);
    }

    [[nodiscard]] const std::vector<Recall>& all() const { return recalls; }

  private:
    Reading reading;
    std::string native;
    std::string fast;
    bool lastWasFast = false;
    int lastTarget = -1;
    int lost = 0;
    std::vector<Recall> recalls;
};

}  // namespace

LockInErrors measureLockIn(int mode, int backlash, int channel) {
    constexpr int low = 20;
    constexpr int middle = 50;
    constexpr int high = 80;
    Bench bench({.projector = {"--travel", std::to_string(travel + backlash), "--backlash",
                               std::to_string(backlash)},
                 .configuration = axisSettings("lockinmode", mode),
                 .lensMemory = "zoommax = " + std::to_string(travel) + "\n"},
                channel);
    static_cast<void>(zoomError(bench, low));
    const int afterUp = zoomError(bench, middle);
    static_cast<void>(zoomError(bench, high));
    return {.afterUp = afterUp, .afterDown = zoomError(bench, middle)};
}

LossyRecalls measureRecalls(const LossyCase& lossy, int channel) {
    constexpr std::size_t count = 40;
    const auto length = std::to_string(travel);
    Bench bench(
        {.model = lossy.model,
         .projector = {"--travel", length + "," + length, "--lose", lossy.loss, "--seed",
                       std::to_string(lossy.seed)},
         .configuration = axisSettings("resetonloadmem", lossy.resetOnLoad ? 1 : 0) +
                          axisSettings("resetsteps", 3),
         .lensMemory = "zoommax = " + length + "\nfocusmax = " + length + "\n" + slotsInFile()},
        channel);
    AxisRecalls zoom(&Simulator::Axes::zoom, "ZOOMRESET", "Z---");
    AxisRecalls focus(&Simulator::Axes::focus, "FOCUSRESET", "F---");
    auto place = bench.projector().place();
    for (std::size_t number = 0; number < count; ++number) {
        const auto slot = number % slots.size();
        static_cast<void>(moveTo(bench, "MEMLOAD " + std::to_string(slot + 1)));
        static_cast<void>(bench.waitUntilExecuted());
        const auto events = bench.projector().takeEvents(place);
        zoom.add(slots.at(slot).zoom, events);
        focus.add(slots.at(slot).focus, events);
    }
    return {.zoom = zoom.all(), .focus = focus.all()};
}

}  // namespace orx::test
