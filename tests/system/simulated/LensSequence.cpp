#include "system/simulated/LensSequence.h"

#include <limits>
#include <string_view>

namespace orx::test {
namespace {

constexpr int stepsOfFastReset = 100;

/// The words of one axis.
struct AxisWords {
    std::string_view name;
    std::string_view toPart;
    std::string_view toSteps;
    std::string_view stepUp;
    std::string_view stepDown;
    std::string_view reset;
    std::string_view calibrationStart;
    std::string_view calibrationEnd;
};

constexpr std::array<AxisWords, 2> words{
    {{"zoom", "ZOOM", "ZOOMX", "AZ+", "AZ-", "ZOOMRESET", "ZOCALSTART", "ZOCALEND"},
     {"focus", "FOCUS", "FOCUSX", "AF+", "AF-", "FOCUSRESET", "FOCALSTART", "FOCALEND"}}};

std::string_view keyword(const LensCommand& command) {
    const auto& ofAxis = words.at(static_cast<std::size_t>(command.axis));
    switch (command.act) {
        case Act::toPart:
            return ofAxis.toPart;
        case Act::toSteps:
            return ofAxis.toSteps;
        case Act::stepUp:
            return ofAxis.stepUp;
        case Act::stepDown:
            return ofAxis.stepDown;
        case Act::reset:
            return ofAxis.reset;
        case Act::resetLens:
            return "LENSRESET";
        case Act::save:
            return "MEMSAVE";
        case Act::load:
            return "MEMLOAD";
        case Act::clear:
            return "MEMCLEAR";
        case Act::calibrate:
            return ofAxis.calibrationStart;
        case Act::other:
            break;
    }
    return {};
}

std::optional<int> rollPart(Dice& dice) {
    constexpr int whole = 65536;
    switch (dice.below(8)) {
        case 0:
            return std::nullopt;
        case 1:
            return dice.between(-whole, -1);
        case 2:
            return dice.between(whole, 3 * whole);
        case 3:
            return dice.oneOf(2) ? std::numeric_limits<int>::min()
                                 : std::numeric_limits<int>::max();
        default:
            return dice.between(0, whole);
    }
}

std::optional<int> rollSteps(Dice& dice, const AxisSetup& axis) {
    switch (dice.below(10)) {
        case 0:
            return std::nullopt;
        case 1:
            return -dice.between(1, axis.max);
        case 2:
            return axis.max + dice.between(1, axis.max);
        case 3:
            return dice.oneOf(2) ? std::numeric_limits<int>::min()
                                 : std::numeric_limits<int>::max();
        default:
            return dice.between(0, axis.max);
    }
}

std::optional<int> rollSlot(Dice& dice) {
    if (dice.oneOf(10)) return std::nullopt;
    return dice.oneOf(10) ? dice.between(-2, 99) : dice.between(1, 3);
}

/// As often as it stands here.
constexpr std::array<Act, 20> acts{Act::toPart,  Act::toPart,  Act::toPart,   Act::toSteps,
                                   Act::toSteps, Act::toSteps, Act::toSteps,  Act::stepUp,
                                   Act::stepUp,  Act::stepUp,  Act::stepDown, Act::stepDown,
                                   Act::reset,   Act::reset,   Act::save,     Act::save,
                                   Act::load,    Act::load,    Act::load,     Act::resetLens};

LensCommand rollCommand(Dice& dice, const std::array<AxisSetup, 2>& axes) {
    LensCommand command{.act = dice.pick(acts), .axis = dice.below(2)};
    if (command.act == Act::toPart) command.argument = rollPart(dice);
    if (command.act == Act::toSteps) {
        command.argument = rollSteps(dice, axes.at(static_cast<std::size_t>(command.axis)));
    }
    if (command.act == Act::save || command.act == Act::load) command.argument = rollSlot(dice);
    return command;
}

std::string settings(const AxisSetup& axis, std::string_view name) {
    const auto key = std::string("abs").append(name).append(".");
    return key + "reducemax = " + std::to_string(axis.withheld) + "\n" + key +
           "resetsteps = " + std::to_string(axis.resetSteps) + "\n" + key +
           "lockinmode = " + std::to_string(axis.lockInMode) + "\n" + key +
           "resetonloadmem = " + (axis.resetOnLoad ? "1" : "0") + "\n";
}

std::string range(const AxisSetup& axis, std::string_view name) {
    return std::string(name).append("min = ") + std::to_string(axis.min) + "\n" +
           std::string(name).append("max = ") + std::to_string(axis.max) + "\n";
}

std::string both(int AxisSetup::*value, const std::array<AxisSetup, 2>& axes) {
    return std::to_string(axes[0].*value) + "," + std::to_string(axes[1].*value);
}

std::string momentText(const SequenceStep& step) {
    switch (step.moment) {
        case Moment::atRest:
            return "at rest";
        case Moment::atOnce:
            return "at once";
        case Moment::underWay:
            return "after " + std::to_string(step.lineCommands) + " more on the line";
    }
    return {};
}

/// All the way of an operator: to the end stop, up step by step, and that is the travel.
std::string calibration(const LensCommand& command) {
    const auto& ofAxis = words.at(static_cast<std::size_t>(command.axis));
    std::string text(ofAxis.calibrationStart);
    for (int step = 0; step < command.argument.value_or(0); ++step)
        text.append("\n").append(ofAxis.stepUp);
    return text.append("\n").append(ofAxis.calibrationEnd);
}

}  // namespace

std::string LensCommand::text() const {
    if (act == Act::other) return word;
    if (act == Act::calibrate) return calibration(*this);
    const std::string name(keyword(*this));
    return argument ? name + " " + std::to_string(*argument) : name;
}

BenchSetup LensSequence::bench() const {
    BenchSetup setup{.model = model,
                     .projector = {"--travel", both(&AxisSetup::travel, axes), "--start",
                                   both(&AxisSetup::start, axes)},
                     .lineDelay = lineDelay};
    for (std::size_t axis = 0; axis < axes.size(); ++axis) {
        setup.configuration += settings(axes.at(axis), words.at(axis).name);
        setup.lensMemory += range(axes.at(axis), words.at(axis).name);
    }
    return setup;
}

std::string LensSequence::text() const {
    const auto setup = bench();
    auto told = "seed " + std::to_string(seed) + ", orxsim --model " + model;
    for (const auto& option : setup.projector)
        told += " " + option;
    told += "\nserial.delay = " + std::to_string(lineDelay) + "\n" + setup.lensMemory +
            setup.configuration;
    for (const auto& step : steps)
        told += "  " + step.command.text() + "    (" + momentText(step) + ")\n";
    return told;
}

AxisSetup rollAxis(Dice& dice, int shortest, int longest) {
    AxisSetup axis;
    axis.max = dice.between(shortest, longest);
    axis.travel = axis.max + dice.between(0, 3);
    axis.start = dice.between(0, axis.travel);
    axis.min = dice.oneOf(4) ? dice.between(1, 5) : 0;
    axis.withheld = dice.oneOf(4) ? dice.between(1, 20) : 0;
    axis.resetSteps = axis.travel / stepsOfFastReset + dice.between(1, 2);
    axis.lockInMode = dice.between(0, 6);
    axis.resetOnLoad = !dice.oneOf(2);
    return axis;
}

SequenceStep rollStep(Dice& dice, const std::array<AxisSetup, 2>& axes) {
    constexpr std::array<Moment, 5> moments{Moment::atRest, Moment::atRest, Moment::atOnce,
                                            Moment::underWay, Moment::underWay};
    SequenceStep step{.moment = dice.pick(moments)};
    if (step.moment == Moment::underWay) {
        step.lineCommands = static_cast<std::size_t>(dice.between(1, 40));
    }
    step.command = rollCommand(dice, axes);
    return step;
}

LensSequence randomSequence(std::uint64_t seed) {
    constexpr int commands = 30;
    constexpr int shortest = 60;
    constexpr int longest = 200;
    Dice dice(seed);
    LensSequence sequence{
        .seed = seed,
        .model = seed % 2 == 0 ? "DEMO-1" : "DEMO-3",
        .lineDelay = dice.below(2),  // moves that last, or that soon end
        .axes = {rollAxis(dice, shortest, longest), rollAxis(dice, shortest, longest)}};
    for (int number = 0; number < commands; ++number)
        sequence.steps.push_back(rollStep(dice, sequence.axes));
    return sequence;
}

}  // namespace orx::test
