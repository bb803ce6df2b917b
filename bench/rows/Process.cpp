#include <array>
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
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

double memoryOf(const std::vector<std::string>& command, int port,
                const std::vector<std::string>& environment) {
    const Server server(command, placements().front().server, environment);
    UdpClient(port).waitForAnswer(question);
    return server.memory();
}

/// With the C++ runtime as it is, shared with all who have it loaded, or for each program its own.
void measureMemoryAfterStart(const Run& run, const std::string& measure,
                             const std::vector<std::string>& environment) {
    const SerialLine line;
    Pair pair;
    for (int starts = 5; starts > 0; --starts) {
        const std::array ports{freePort(), freePort()};
        pair.ours.add(memoryOf(run.setup.command(withFullDefinitions(ports[0], line)), ports[0],
                               environment));
        pair.limit.add(memoryOf(fourThreads(ports[1]), ports[1], environment));
    }
    run.add(medianRow(measure, "kB", pair, atMost(1.4)));
}

/// Sends so many datagrams: STATUS, and one in ten a command or a word that is none. Goes on once
/// the commands are on the line, so that nothing piles up.
void sendMixture(const UdpClient& client, const SerialLine& line, int datagrams) {
    constexpr int round = 100;
    constexpr int questions = 90;
    constexpr int commands = (round - questions) / 2;
    constexpr int inFlight = 45;
    for (int rounds = datagrams / round; rounds > 0; --rounds) {
        for (int sent = 0; sent < commands; ++sent) {
            client.send("ON");
            client.send("nonsense");
        }
        client.flood(question, questions, inFlight);
        constexpr long commandBytes = 3;
        for (long bytes = 0; bytes < commands * commandBytes;)
            bytes += line.receive();
    }
}

void measureGrowth(const Run& run) {
    const SerialLine line;
    const int port = freePort();
    const Server daemon(run.setup.command(withFullDefinitions(port, line)),
                        placements().front().server);
    const UdpClient client(port);
    client.waitForAnswer(question);
    sendMixture(client, line, 10'000);  // touches what the start has not
    const double before = daemon.ownMemory();
    const int datagrams = run.samples(1'000'000);
    sendMixture(client, line, datagrams);
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
    stayOn(placements().front().client);
    measureMemoryAfterStart(run, "memory after the start (PSS)", {});
    measureMemoryAfterStart(run, "  with a C++ runtime of its own", run.setup.ownRuntime());
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
    run.add(ratioRow("idle 20 s: context switches", "", since(daemon.switches(), switches[0]),
                     since(waker.switches(), switches[1]), atMost(1.01)));
    constexpr double microseconds = 1e6;
    run.add(ratioRow("idle 20 s: CPU time", "us",
                     since(daemon.cpuTime(), cpuTimes[0]) * microseconds,
                     since(waker.cpuTime(), cpuTimes[1]) * microseconds, {}));
}

}  // namespace orx::bench
