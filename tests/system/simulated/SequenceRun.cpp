#include "system/simulated/SequenceRun.h"

#include <exception>
#include <stdexcept>

namespace orx::test {
namespace {

void playAll(LensPlay& play, const LensSequence& sequence) {
    for (const auto& step : sequence.steps)
        play.give(step);
    play.compareAtRest();
    const auto ending = play.stage().quit();
    if (ending != "exit status 0") throw std::runtime_error("the daemon ends with " + ending);
}

}  // namespace

SequenceOutcome play(const LensSequence& sequence, int channel) {
    SequenceOutcome outcome;
    try {
        LensPlay play(sequence, channel);
        try {
            playAll(play, sequence);
        } catch (const std::exception& error) {
            outcome.violation = error.what();
        }
        outcome.figures = play.figures();
    } catch (const std::exception& error) {
        outcome.violation = error.what();
    }
    return outcome;
}

}  // namespace orx::test
