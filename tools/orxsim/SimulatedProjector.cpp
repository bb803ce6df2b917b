#include "orxsim/SimulatedProjector.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orx::orxsim {
namespace {

/// The faults that draw from a generator, in no particular order but never renumbered: a seed is to
/// give the same run tomorrow.
enum class Fault : std::uint8_t { zoomLoss = 1, focusLoss, noise, garbage };

Chance chanceOf(Fault fault, Ratio ratio, const Behaviour& behaviour) {
    return {ratio, behaviour.seed, static_cast<std::uint64_t>(fault)};
}

std::string withTerminator(std::string_view text, std::optional<char> terminator) {
    std::string answer(text);
    answer += terminator.value_or('\r');
    return answer;
}

Instant pace(const Behaviour& behaviour, const orxdef::ModelDefinition& model) {
    return behaviour.realTime ? characterTime(model.line) : Instant(0);
}

/// The earlier of two instants, either of which may never come.
std::optional<Instant> earlier(std::optional<Instant> left, std::optional<Instant> right) {
    if (!left || !right) return left ? left : right;
    return std::min(*left, *right);
}

AxisReading readingOf(const LensMotor& motor) {
    return {
        motor.motor(),
        motor.lens(),
        motor.travel(),
        motor.lost(),
        {motor.contacts(Drive::step), motor.contacts(Drive::jog), motor.contacts(Drive::reset)}};
}

}  // namespace

SimulatedProjector::SimulatedProjector(const orxdef::CommandTable& commands,
                                       const orxdef::ModelDefinition& model, Behaviour wanted)
    : behaviour(std::move(wanted)),
      recognizer(commands, model),
      acknowledgement(
          behaviour.acknowledgement.value_or(withTerminator("OK", recognizer.terminator()))),
      error(behaviour.error.value_or(withTerminator("ERR", recognizer.terminator()))),
      noise(chanceOf(Fault::noise, behaviour.lineNoise, behaviour), recognizer.lineMask()),
      garbageSource(chanceOf(Fault::garbage, {}, behaviour)),
      motors{makeMotor(Axis::zoom), makeMotor(Axis::focus)},
      incoming(pace(behaviour, model)),
      outgoing(pace(behaviour, model)) {}

LensMotor SimulatedProjector::makeMotor(Axis axis) const {
    const auto index = static_cast<std::size_t>(axis);
    const auto fault = axis == Axis::zoom ? Fault::zoomLoss : Fault::focusLoss;
    return {{behaviour.travel[index], behaviour.start[index], behaviour.backlash},
            chanceOf(fault, behaviour.lostSteps, behaviour)};
}

void SimulatedProjector::receive(std::string_view bytes, Instant now) {
    incoming.send(bytes, now);
}

void SimulatedProjector::advance(Instant now) {
    while (!unplugged) {
        const auto due = nextEvent();
        if (!due || *due > now) break;
        happen(*due);
    }
}

std::optional<Instant> SimulatedProjector::nextDue() const {
    if (unplugged) return std::nullopt;
    return earlier(nextEvent(), outgoing.nextArrival());
}

std::optional<Instant> SimulatedProjector::nextEvent() const {
    auto next = earlier(incoming.nextArrival(), endOfSilence());
    if (motion) next = earlier(next, motion->due);
    return earlier(next, behaviour.unplugging.time);
}

/// Bytes that are still on their way are no silence.
std::optional<Instant> SimulatedProjector::endOfSilence() const {
    if (incoming.nextArrival() || !recognizer.awaitsSilence()) return std::nullopt;
    return incoming.lastArrival() + silenceGap;
}

void SimulatedProjector::happen(Instant now) {
    if (behaviour.unplugging.time && *behaviour.unplugging.time <= now) {
        unplugged = true;
    } else if (motion && motion->due <= now) {
        moveOn(now);
    } else {
        hearWhatIsDue(now);
    }
    carryOut(now);
}

void SimulatedProjector::hearWhatIsDue(Instant now) {
    const auto arrived = noise.pass(incoming.take(now));
    const auto silenceIsOver = endOfSilence();
    auto heard = arrived.empty() && silenceIsOver && *silenceIsOver <= now
                     ? recognizer.silence()
                     : recognizer.hear(arrived);
    std::ranges::move(heard, std::back_inserter(waiting));
}

/// A projector does one thing after the other.
void SimulatedProjector::carryOut(Instant now) {
    while (!motion && !waiting.empty() && !unplugged) {
        auto heard = std::move(waiting.front());
        waiting.pop_front();
        begin(std::move(heard), now);
    }
}

void SimulatedProjector::begin(Heard heard, Instant now) {
    const auto* const lensCommand = heard.isCommand() ? findLensCommand(heard.command) : nullptr;
    if (lensCommand == nullptr) {
        const bool changed = heard.isCommand() && otherState.apply(heard.command, heard.arguments);
        finish(std::move(heard), false, now);
        if (changed) reports.back().changedState = otherState;
        return;
    }
    motion = {std::move(heard), lensCommand, stepsOf(*lensCommand), now + behaviour.stepTime};
    while (motion && motion->due <= now)
        moveOn(now);
}

int SimulatedProjector::stepsOf(const LensCommand& command) const {
    switch (command.drive) {
        case Drive::step:
            return 1;
        case Drive::jog:
            return behaviour.jogSteps.at(static_cast<std::size_t>(command.speed) - 1);
        case Drive::reset:
            break;
    }
    return std::numeric_limits<int>::max();
}

void SimulatedProjector::moveOn(Instant now) {
    const auto& command = *motion->command;
    auto& motor = motors[static_cast<std::size_t>(command.axis)];
    const bool moved = motor.step(command.direction, command.drive);
    motion->due += behaviour.stepTime;
    if (moved && --motion->remaining > 0) return;
    auto heard = std::move(motion->heard);
    motion.reset();
    finish(std::move(heard), !moved, now);
}

void SimulatedProjector::finish(Heard heard, bool metEndStop, Instant now) {
    ++(heard.isCommand() ? counts.commands : counts.unknown);
    unplugged = behaviour.unplugging.commands == counts.commands;
    auto answer = answerTo(heard);
    if (answer) outgoing.send(*answer, now + behaviour.answerDelay);
    reports.push_back({std::move(heard), metEndStop, axes(), std::move(answer)});
}

std::optional<std::string> SimulatedProjector::answerTo(const Heard& heard) {
    if (unplugged || behaviour.answers == AnswerFault::silent) return std::nullopt;
    if (behaviour.answers == AnswerFault::garbage) return garbage();
    return heard.isCommand() ? acknowledgement : error;
}

std::string SimulatedProjector::garbage() {
    constexpr std::uint64_t greatestLength = 8;
    constexpr std::uint64_t byteValues = 256;
    std::string bytes(garbageSource.draw(greatestLength) + 1, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(garbageSource.draw(byteValues));
    return bytes;
}

std::vector<Report> SimulatedProjector::takeReports() {
    return std::exchange(reports, {});
}

AxisReadings SimulatedProjector::axes() const {
    return {readingOf(motors[0]), readingOf(motors[1])};
}

}  // namespace orx::orxsim
