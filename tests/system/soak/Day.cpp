#include "system/soak/Day.h"

#include <array>
#include <stdexcept>

namespace orx::test {
namespace {

/// On a line where a command costs no time.
LensSequence rollBegin(Dice& dice, const DaySetup& day) {
    const auto roll = [&] { return rollAxis(dice, day.shortestTravel, day.longestTravel); };
    return {.seed = day.seed,
            .model = day.seed % 2 == 0 ? "DEMO-1" : "DEMO-3",
            .axes = {roll(), roll()}};
}

}  // namespace

Day::Day(const DaySetup& wanted, int channel)
    : setup(wanted), dice(wanted.seed), begin(rollBegin(dice, wanted)), play(begin, channel) {
    play.compareAtRest();
    seen.atStart = play.stage().process().holdings();
}

void Day::run() {
    while (seen.commands < setup.commands) {
        giveOne();
        readConsole();
        if (++seen.commands == setup.settled) {
            seen.ownSettled = play.stage().process().ownKilobytes();
        }
    }
    play.compareAtRest();
    readConsole();
    seen.ownAtEnd = play.stage().process().ownKilobytes();
    play.stage().process().waitForHoldings(seen.atStart);
    seen.atEnd = play.stage().process().holdings();
    const auto ending = play.stage().quit();
    if (ending != "exit status 0") throw std::runtime_error("the daemon ends with " + ending);
}

DayFigures Day::figures() const {
    auto now = seen;
    now.play = play.figures();
    return now;
}

void Day::giveOne() {
    constexpr int kinds = 100;
    const int kind = dice.below(kinds);
    if (kind < 3) {
        play.give(rollCalibration());
        ++seen.calibrations;
    } else if (kind < 4) {
        play.give({.command = {.act = Act::clear}});
    } else if (kind < 20) {
        play.give(rollOther());
    } else if (kind < 30) {
        static_cast<void>(play.stage().waitUntilExecuted());  // chooses an input
    } else {
        play.give(rollStep(dice, begin.axes));
    }
}

SequenceStep Day::rollCalibration() {
    constexpr int mostLeftOut = 10;
    const int axis = dice.below(2);
    const int travel = begin.axes.at(static_cast<std::size_t>(axis)).travel;
    return {.command = {.act = Act::calibrate,
                        .axis = axis,
                        .argument = travel - dice.between(0, mostLeftOut)}};
}

SequenceStep Day::rollOther() {
    constexpr std::array<const char*, 4> words{"ON", "OFF", "SHON", "SHOFF"};
    return {.moment = dice.oneOf(2) ? Moment::atRest : Moment::atOnce,
            .command = {.act = Act::other, .word = dice.pick(words)}};
}

void Day::readConsole() {
    for (const auto& line : play.stage().process().takeLines()) {
        if (line.find(": moving to position ") != std::string::npos) ++seen.moves;
    }
}

}  // namespace orx::test
