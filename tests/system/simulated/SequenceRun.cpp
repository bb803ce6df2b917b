#include "system/simulated/SequenceRun.h"

#include <array>
#include <exception>
#include <stdexcept>

namespace orx::test {
namespace {

/// The commands of one axis as the projector names them.
struct LineCommands {
    std::string stepUp;
    std::string stepDown;
    std::string reset;
    std::string fastStep;
};

const std::array<LineCommands, 2> ofAxes{
    {{"AZ+", "AZ-", "ZOOMRESET", "Z---"}, {"AF+", "AF-", "FOCUSRESET", "F---"}}};

class SequenceRun {
  public:
    SequenceRun(const LensSequence& playedSequence, int channel)
        : sequence(playedSequence),
          bench(sequence.bench(), channel),
          expected(sequence.axes),
          scanned(bench.projector().place()) {}

    SequenceOutcome play() {
        for (const auto& step : sequence.steps) {
            await(step);
            bench.send(step.command.text());
            expected.take(step.command);
        }
        compareAtRest();
        const auto ending = bench.quit();
        if (ending != "exit status 0") throw std::runtime_error("the daemon ends with " + ending);
        return outcome;
    }

    [[nodiscard]] const SequenceOutcome& soFar() const { return outcome; }

  private:
    void await(const SequenceStep& step) {
        if (step.moment == Moment::atOnce) return;
        if (step.moment == Moment::underWay && goesOnFor(step.lineCommands)) return;
        compareAtRest();
    }

    /// False where the lens comes to rest before. Without the first line it might be found at rest
    /// before it has begun.
    [[nodiscard]] bool goesOnFor(std::size_t lineCommands) {
        static_cast<void>(bench.waitUntilExecuted());
        const auto& projector = bench.projector();
        const auto begin = projector.place();
        while (projector.countEvents(begin) < lineCommands) {
            const auto place = projector.place();
            if (bench.status().atRest()) return false;
            projector.waitForMore(place);
        }
        return true;
    }

    void compareAtRest() {
        const auto status = bench.waitForRest();
        const auto motors = bench.waitUntilExecuted();
        const auto contacts = contactsSinceTheLastRest();
        compare(0, status.zoom, motors.zoom.motor, contacts[0]);
        compare(1, status.focus, motors.focus.motor, contacts[1]);
        complain(expected.learnSlots(bench.files().lensMemory()));
    }

    void compare(std::size_t axis, const AxisStatus& status, int motor, const Contacts& contacts) {
        if (status.position) ++outcome.comparisons;
        const auto wrong = expected.axis(axis).rest(status, motor, contacts, outcome.inFlight);
        complain(wrong.empty() ? wrong : (axis == 0 ? "zoom: " : "focus: ") + wrong);
    }

    static void complain(const std::string& wrong) {
        if (!wrong.empty()) throw std::runtime_error(wrong);
    }

    /// A single step ahead of the first reset is the operator's own: the daemon passes it on.
    std::array<Contacts, 2> contactsSinceTheLastRest() {
        std::array<Contacts, 2> contacts;
        for (const auto& event : bench.projector().takeEvents(scanned)) {
            ++outcome.lineCommands;
            for (std::size_t axis = 0; axis < ofAxes.size(); ++axis) {
                const auto& named = ofAxes.at(axis);
                if (event.command == named.reset || event.command == named.fastStep) {
                    wasReset.at(axis) = true;
                }
                if (!event.endStop || !wasReset.at(axis)) continue;
                if (event.command == named.stepUp) ++contacts.at(axis).upper;
                if (event.command == named.stepDown) ++contacts.at(axis).lower;
            }
        }
        return contacts;
    }

    const LensSequence& sequence;
    Bench bench;
    ExpectedLens expected;
    std::size_t scanned;
    std::array<bool, 2> wasReset{};
    SequenceOutcome outcome;
};

}  // namespace

SequenceOutcome play(const LensSequence& sequence, int channel) {
    SequenceOutcome outcome;
    try {
        SequenceRun run(sequence, channel);
        try {
            return run.play();
        } catch (const std::exception& error) {
            outcome = run.soFar();
            outcome.violation = error.what();
        }
    } catch (const std::exception& error) {
        outcome.violation = error.what();
    }
    return outcome;
}

}  // namespace orx::test
