// A day of use without its pauses: power, shutter and inputs, moves of the lens, memory slots,
// resets and calibrations, as a seed has them. Wherever the lens comes to rest, STATUS must say
// where the motors stand; and nothing may grow.
#pragma once

#include <cstdint>

#include "system/simulated/LensPlay.h"

namespace orx::test {

struct DaySetup {
    long commands = 0;
    long settled = 0;  ///< behind how many the memory is looked at first
    std::uint64_t seed = 1;
    int shortestTravel = 300;  ///< of a lens, as calibrated at the start
    int longestTravel = 1000;
};

struct DayFigures {
    long commands = 0;
    long calibrations = 0;
    long moves = 0;  ///< of one axis, as the console tells of them
    PlayFigures play{};
    long ownSettled = 0;  ///< kilobytes
    long ownAtEnd = 0;
    Holdings atStart;
    Holdings atEnd;
};

class Day {
  public:
    explicit Day(const DaySetup& wanted, int channel = 0);

    /// Throws, saying what is wrong, where anything but the memory is.
    void run();

    /// Up to now.
    [[nodiscard]] DayFigures figures() const;

  private:
    void giveOne();
    [[nodiscard]] SequenceStep rollCalibration();
    [[nodiscard]] SequenceStep rollOther();
    void readConsole();

    const DaySetup setup;
    Dice dice;
    const LensSequence begin;
    LensPlay play;
    DayFigures seen;
};

}  // namespace orx::test
