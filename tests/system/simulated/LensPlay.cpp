#include "system/simulated/LensPlay.h"

#include <algorithm>
#include <stdexcept>

namespace orx::test {
namespace {

/// The commands of one axis as the projector names them.
struct LineCommands {
    std::string stepUp;
    std::string stepDown;
    std::string reset;
    std::string fastStep;

    [[nodiscard]] bool references(const std::string& command) const {
        return command == reset || command == fastStep;
    }
    [[nodiscard]] bool have(const std::string& command) const {
        return references(command) || command == stepUp || command == stepDown;
    }
};

const std::array<LineCommands, 2> ofAxes{
    {{"AZ+", "AZ-", "ZOOMRESET", "Z---"}, {"AF+", "AF-", "FOCUSRESET", "F---"}}};

bool isOfTheLens(const std::string& command) {
    return std::ranges::any_of(ofAxes,
                               [&command](const LineCommands& axis) { return axis.have(command); });
}

void complain(const std::string& wrong) {
    if (!wrong.empty()) throw std::runtime_error(wrong);
}

}  // namespace

LensPlay::LensPlay(const LensSequence& sequence, int channel)
    : bench(sequence.bench(), channel),
      expected(sequence.axes),
      scanned(bench.projector().place()) {}

void LensPlay::give(const SequenceStep& step) {
    if (step.moment == Moment::atRest) compareAtRest();
    if (step.moment == Moment::underWay && !goesOnFor(step.lineCommands)) compareAtRest();
    send(step.command.text());
    expected.take(step.command);
    if (step.command.act == Act::other) others.push_back(step.command.word);
}

/// The daemon reads no more than this of a datagram; many commands take several.
void LensPlay::send(const std::string& text) const {
    constexpr std::size_t most = 2048;
    for (std::size_t from = 0; from < text.size();) {
        const auto rest = text.size() - from;
        const auto end = rest <= most ? text.size() : text.rfind('\n', from + most - 1) + 1;
        bench.send(text.substr(from, end - from));
        from = end;
    }
}

/// False where the lens comes to rest before. Without the first line it might be found at rest
/// before it has begun.
bool LensPlay::goesOnFor(std::size_t lineCommands) {
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

void LensPlay::compareAtRest() {
    const auto status = bench.waitForRest();
    const auto motors = bench.waitUntilExecuted();
    const auto contacts = readTheLine();
    compare(0, status.zoom, motors.zoom.motor, contacts[0]);
    compare(1, status.focus, motors.focus.motor, contacts[1]);
    complain(expected.learnSlots(bench.files().lensMemory()));
    if (!others.empty()) complain("never on the line: " + others.front());
}

void LensPlay::compare(std::size_t axis, const AxisStatus& status, int motor,
                       const Contacts& contacts) {
    if (status.position) ++seen.comparisons;
    const auto wrong = expected.axis(axis).rest(status, motor, contacts, seen.inFlight);
    complain(wrong.empty() ? wrong : (axis == 0 ? "zoom: " : "focus: ") + wrong);
}

/// All since the last rest, which is then forgotten. Gives the end stops that were met.
LensPlay::BothContacts LensPlay::readTheLine() {
    BothContacts contacts;
    for (const auto& event : bench.projector().takeEvents(scanned)) {
        ++seen.lineCommands;
        seen.lineBytes += static_cast<long>(event.byteCount);
        countContact(event, contacts);
        if (!isOfTheLens(event.command)) checkOther(event.command);
    }
    bench.projector().forget(scanned);
    return contacts;
}

/// A single step ahead of the first reset is the operator's own: the daemon passes it on.
void LensPlay::countContact(const Simulator::Event& event, BothContacts& contacts) {
    for (std::size_t axis = 0; axis < ofAxes.size(); ++axis) {
        const auto& named = ofAxes.at(axis);
        if (named.references(event.command)) wasReset.at(axis) = true;
        if (!event.endStop || !wasReset.at(axis)) continue;
        if (event.command == named.stepUp) ++contacts.at(axis).upper;
        if (event.command == named.stepDown) ++contacts.at(axis).lower;
    }
}

/// The bench's own command tells it that all before is done, and comes as often as it asks.
void LensPlay::checkOther(const std::string& command) {
    if (command == Bench::ticketCommand) return;
    if (command.empty()) complain("bytes on the line that are no command");
    if (others.empty() || others.front() != command) {
        complain("on the line out of its turn: " + command);
    }
    others.pop_front();
}

}  // namespace orx::test
