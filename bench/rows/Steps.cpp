#include <array>
#include <filesystem>
#include <string>

#include "harness/Clock.h"
#include "harness/Cores.h"
#include "harness/SerialLine.h"
#include "harness/UdpClient.h"
#include "rows/Rows.h"

namespace orx::bench {
namespace {

constexpr long stepBytes = 4;  ///< "AZ+" and a carriage return

/// The microseconds between so many steps on the line.
void watch(const SerialLine& line, int steps, Samples& samples) {
    long bytes = line.receive();
    Stopwatch sinceStep;
    while (bytes < steps * stepBytes) {
        bytes += line.receive();
        samples.add(sinceStep.microseconds());
        sinceStep = {};
    }
}

void measureStepsOn(const Run& run, const Placement& placement) {
    constexpr int delayMs = 5;
    constexpr int turns = 4;
    const int steps = run.samples(zoomSteps) / turns;
    stayOn(placement.client);
    const std::array<SerialLine, 2> lines;
    const std::array ports{freePort(), freePort()};
    const std::array<UdpClient, 2> clients{UdpClient(ports[0]), UdpClient(ports[1])};
    const auto log = run.setup.inMemory("steps.log");
    const Server daemon(
        run.setup.command(
            {.ports = {ports[0]}, .device = lines[0].device(), .log = log, .delay = delayMs}),
        placement.server);
    clients[0].waitForAnswer("STATUS");
    clients[0].send("ZOOMX 50");  // with the reset that comes first, the log is full
    Samples ignored;
    static_cast<void>(lines[0].receive());
    watch(lines[0], 50, ignored);
    const Server floor(
        Setup::limit("step_floor", {std::to_string(ports[1]), lines[1].device(), log + ".floor",
                                    std::to_string(std::filesystem::file_size(log)),
                                    std::to_string(steps), std::to_string(delayMs)}),
        placement.server);
    floor.waitFor("ready");
    Pair pair;
    for (int done = 0; done < turns; ++done) {
        const bool away = done % 2 == 0;
        clients[0].send("ZOOMX " + std::to_string(away ? 50 + steps : 50));
        watch(lines[0], steps, pair.ours);
        clients[1].send("go");
        watch(lines[1], steps, pair.limit);
    }
    run.add(medianRow(std::string("lens step, delay 5 ms, ").append(placement.name), "us", pair,
                      atMost(1.02)));
}

}  // namespace

void measureSteps(const Run& run) {
    for (const auto& placement : placements())
        measureStepsOn(run, placement);
}

}  // namespace orx::bench
