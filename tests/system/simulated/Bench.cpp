#include "system/simulated/Bench.h"

#include <csignal>
#include <stdexcept>

#include "system/harness/Waiting.h"

namespace orx::test {

Bench::Bench(const BenchSetup& setup, int channel)
    : port(controlPort + channel),
      simulator(installation.file("line"), setup.model, setup.projector) {
    // No wait for answers: moves then last as long as the line delay makes them.
    installation.writeConfiguration(
        "projector = " + setup.model +
        "\ndefinitionfile = " ORX_DEFINITION_FILE "\nserial.device = " + simulator.device() +
        "\nserial.timeout = 0\nserial.delay = " + std::to_string(setup.lineDelay) +
        "\ncontrolchannel = " + controlAddress(channel) + "\n" + setup.configuration);
    installation.writeLensMemory(setup.lensMemory);
    start();
}

void Bench::start() {
    daemon = std::make_unique<Daemon>(installation.prefix());
    daemon->waitForLine("[CMDQ] start");
}

void Bench::restart() {
    const auto place = daemon->place();
    send("RESTART");
    daemon->waitForLine("[CMDQ] start", place);
}

void Bench::kill() {
    daemon->signal(SIGKILL);
    daemon->waitForEnd();
}

std::string Bench::quit() {
    send("QUIT");
    return daemon->waitForEnd();
}

/// Commands are executed in order, and so is what arrives on the line.
Simulator::Axes Bench::waitUntilExecuted() {
    constexpr int inputs = 8;
    const auto ticket = std::to_string(1 + tickets++ % inputs);
    const auto place = simulator.place();
    send(std::string(ticketCommand).append(" ").append(ticket));
    return simulator.waitForCommand(ticketCommand, ticket, place).axes;
}

LensStatus Bench::waitForRest() {
    static_cast<void>(waitUntilExecuted());
    LensStatus last;
    waitUntil(
        [&] {
            const auto place = simulator.place();
            last = status();
            if (!last.atRest()) simulator.waitForMore(place);
            return last.atRest() && isDone(last);
        },
        [&] { return "the lens to rest; zoom: " + last.zoom.text + " focus: " + last.focus.text; });
    return last;
}

/// A step is counted before it is sent, and a move of a single step does not even count as one
/// before: for a moment the status then shows the lens where it is about to go. Once all threads
/// have gone to sleep that moment is over, and what they may wait for shows in the status.
bool Bench::isDone(LensStatus& last) const {
    waitUntil([this] { return daemon->isAsleep(); },
              [] { return std::string("the daemon to have done all it has to"); });
    last = status();
    return last.atRest();
}

}  // namespace orx::test
