// A daemon with a simulated projector, and beside them what the lens must do. Compares the three
// whenever the lens has come to rest. Throws, saying what is wrong, where they do not agree.
#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <string>

#include "system/simulated/ExpectedLens.h"
#include "system/simulated/LensSequence.h"

namespace orx::test {

/// What a play has shown.
struct PlayFigures {
    int comparisons = 0;   ///< of one referenced axis at rest
    int lineCommands = 0;  ///< that the projector has carried out
    long lineBytes = 0;    ///< of these
    StepsInFlight inFlight{};
};

class LensPlay {
  public:
    /// Starts both, as `sequence` has them set up; its steps are the caller's to give.
    LensPlay(const LensSequence& sequence, int channel);

    /// Waits for the moment of the step and sends its command.
    void give(const SequenceStep& step);

    /// Waits until the lens rests: STATUS must then say where the motors stand, the lens memory
    /// file hold what was saved, and the line have seen what is not the lens's in its order.
    void compareAtRest();

    [[nodiscard]] Bench& stage() noexcept { return bench; }
    [[nodiscard]] const PlayFigures& figures() const noexcept { return seen; }

  private:
    using BothContacts = std::array<Contacts, 2>;

    [[nodiscard]] bool goesOnFor(std::size_t lineCommands);
    void send(const std::string& text) const;
    void compare(std::size_t axis, const AxisStatus& status, int motor, const Contacts& contacts);
    [[nodiscard]] BothContacts readTheLine();
    void countContact(const Simulator::Event& event, BothContacts& contacts);
    void checkOther(const std::string& command);

    Bench bench;
    ExpectedLens expected;
    std::deque<std::string> others;  ///< given, and not yet seen on the line
    std::size_t scanned;
    std::array<bool, 2> wasReset{};
    PlayFigures seen;
};

}  // namespace orx::test
