#include <array>
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include "harness/Clock.h"
#include "harness/Cores.h"
#include "harness/SerialLine.h"
#include "harness/StartedProgram.h"
#include "harness/UdpClient.h"
#include "rows/Rows.h"

namespace orx::bench {
namespace {

constexpr const char* question = "STATUS";

/// The limit of a start and of memory.
std::vector<std::string> fourThreads(int port) {
    return Setup::limit("four_threads", {std::to_string(port)});
}

DaemonSetup withFullDefinitions(int port, const SerialLine& line) {
    return {.ports = {port}, .device = line.device(), .definitions = "full"};
}

double memoryOf(const Run& run, const std::vector<std::string>& command, int port) {
    const Server server(command, placements().front().server, run.setup.ownRuntime());
    UdpClient(port).waitForAnswer(question);
    return server.memory();
}

void measureGrowth(const Run& run) {
    const SerialLine line;
    const int port = freePort();
    const Server daemon(run.setup.command(withFullDefinitions(port, line)),
                        placements().front().server);
    const UdpClient client(port);
    client.waitForAnswer(question);
    constexpr int inFlight = 64;
    constexpr int first = 1000;  // touch what the start has not
    client.flood(question, first, inFlight);
    const double before = daemon.ownMemory();
    const int datagrams = run.samples(1'000'000);
    client.flood(question, datagrams, inFlight);
    run.add(figureRow("growth after " + std::to_string(datagrams) + " datagrams", "kB",
                      daemon.ownMemory() - before, atMost(0)));
}

}  // namespace

void measureStart(const Run& run) {
    for (const auto& placement : placements()) {
        stayOn(placement.client);
        const std::array ports{freePort(), freePort()};
        const SerialLine line;
        const auto daemon = run.setup.command(withFullDefinitions(ports[0], line));
        const auto limit = fourThreads(ports[1]);
        Pair pair;
        for (int starts = run.samples(300); starts > 0; --starts) {
            pair.ours.add(timeToAnswer(daemon, placement.server, "waiting for commands", ports[0]));
            pair.limit.add(timeToAnswer(limit, placement.server, "ready", ports[1]));
        }
        run.add(medianRow(std::string("exec to first STATUS, ").append(placement.name), "us", pair,
                          atMost(1.5)));
    }
}

void measureMemory(const Run& run) {
    const auto placement = placements().front();
    stayOn(placement.client);
    const SerialLine line;
    Pair pair;
    for (int starts = 5; starts > 0; --starts) {
        const std::array ports{freePort(), freePort()};
        pair.ours.add(
            memoryOf(run, run.setup.command(withFullDefinitions(ports[0], line)), ports[0]));
        pair.limit.add(memoryOf(run, fourThreads(ports[1]), ports[1]));
    }
    run.add(medianRow("memory after the start (PSS)", "kB", pair, atMost(1.4)));
    measureGrowth(run);
}

void measureSize(const Run& run) {
    const auto stripped = run.setup.inMemory("stripped");
    const std::string command = "strip -o " + stripped + " " + ORX_EXECUTABLE;
    if (std::system(command.c_str()) != 0) throw std::runtime_error("cannot run: " + command);
    constexpr double bytesPerKib = 1024;
    run.add(figureRow("size of orx, stripped", "KiB",
                      static_cast<double>(std::filesystem::file_size(stripped)) / bytesPerKib,
                      atMost(400)));
}

void measureIdle(const Run& run) {
    const auto placement = placements().back();
    stayOn(placement.client);
    const int port = freePort();
    const Server daemon(run.setup.command({.ports = {port}}), placement.server);
    const Server waker(Setup::limit("waker", {}), placement.server);
    UdpClient(port).waitForAnswer(question);
    waker.waitFor("ready");
    const std::array switches{daemon.switches(), waker.switches()};
    const std::array cpuTimes{daemon.cpuTime(), waker.cpuTime()};
    std::this_thread::sleep_for(std::chrono::seconds(run.samples(20)));
    const auto since = [](auto now, auto before) { return static_cast<double>(now - before); };
    // One more or less of each may fall into the time.
    run.add(ratioRow("idle 20 s: context switches", "", since(daemon.switches(), switches[0]) - 1,
                     since(waker.switches(), switches[1]) + 1, atMost(1)));
    constexpr double microseconds = 1e6;
    run.add(ratioRow("idle 20 s: CPU time", "us",
                     since(daemon.cpuTime(), cpuTimes[0]) * microseconds,
                     since(waker.cpuTime(), cpuTimes[1]) * microseconds, {}));
}

}  // namespace orx::bench
