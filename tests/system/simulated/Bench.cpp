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

/// Commands are executed in order, and so is what arrives on the line. All models take this one,
/// and nothing else here sends it; it does nothing to the lens.
Simulator::Axes Bench::waitUntilExecuted() {
    constexpr int inputs = 8;
    const auto ticket = std::to_string(1 + tickets++ % inputs);
    const auto place = simulator.place();
    send("INPUT " + ticket);
    return simulator.waitForCommand("INPUT", ticket, place).axes;
}

LensStatus Bench::waitForRest() {
    static_cast<void>(waitUntilExecuted());
    LensStatus last;
    waitUntil(
        [&] {
            const auto place = simulator.place();
            last = status();
            if (!last.atRest()) simulator.waitForMore(place);
            return last.atRest();
        },
        [&] { return "the lens to rest; zoom: " + last.zoom.text + " focus: " + last.focus.text; });
    return last;
}

}  // namespace orx::test
