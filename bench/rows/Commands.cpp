#include <array>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "harness/Clock.h"
#include "harness/Cores.h"
#include "harness/SerialLine.h"
#include "harness/UdpClient.h"
#include "rows/Rows.h"

namespace orx::bench {
namespace {

constexpr const char* command = "ON";

/// A server that brings datagrams to a serial line.
class Forwarding {
  public:
    Forwarding(const std::vector<std::string>& start, const SerialLine& serialLine, int port,
               int core, const std::string& readyText)
        : line(serialLine), server(start, core), client(port) {
        server.waitFor(readyText);
        constexpr int untilAtHome = 60;  // the log is full by then, too
        for (int sent = 0; sent < untilAtHome; ++sent)
            static_cast<void>(untilFirstByte());
    }

    /// The microseconds from the datagram to its first byte at the far side of the line.
    [[nodiscard]] double untilFirstByte() const {
        const Stopwatch stopwatch;
        client.send(command);
        static_cast<void>(line.receive());
        const auto taken = stopwatch.microseconds();
        // The server finishes what it has to do behind the first byte.
        constexpr std::chrono::microseconds rest(300);
        std::this_thread::sleep_for(rest);
        line.discard();
        return taken;
    }

  private:
    const SerialLine& line;
    Server server;
    UdpClient client;
};

/// The daemon and the limits beside each other, each on a line of its own.
class Rivals {
  public:
    Rivals(const Run& run, const Placement& placement, std::string logFile, bool truncating)
        : log(std::move(logFile)),
          daemon(
              run.setup.command({.ports = {daemonPort}, .device = lines[0].device(), .log = log}),
              lines[0], daemonPort, placement.server, "waiting for commands"),
          floor(Setup::limit("full_floor",
                             {std::to_string(floorPort), lines[1].device(), log + ".floor",
                              std::to_string(std::filesystem::file_size(log)),
                              truncating ? "truncate" : "keep"}),
                lines[1], floorPort, placement.server, "ready"),
          forwarder(Setup::limit("forwarder", {std::to_string(plainPort), lines[2].device()}),
                    lines[2], plainPort, placement.server, "ready"),
          handing(Setup::limit("handing_forwarder", {std::to_string(handPort), lines[3].device()}),
                  lines[3], handPort, placement.server, "ready") {}

    void measure(int count) {
        constexpr int turn = 10;
        for (int turns = count / turn; turns > 0; --turns) {
            take(daemon, ofFloor.ours, turn);
            take(floor, ofFloor.limit, turn);
            take(forwarder, plain, turn);
            take(handing, handedOn, turn);
        }
    }

    Pair ofFloor;
    Samples plain;
    Samples handedOn;

  private:
    static void take(const Forwarding& server, Samples& samples, int count) {
        for (int taken = 0; taken < count; ++taken)
            samples.add(server.untilFirstByte());
    }

    std::string log;
    std::array<SerialLine, 4> lines;
    int daemonPort = freePort();
    int floorPort = freePort();
    int plainPort = freePort();
    int handPort = freePort();
    Forwarding daemon;
    Forwarding floor;
    Forwarding forwarder;
    Forwarding handing;
};

}  // namespace

void measureCommands(const Run& run) {
    const int count = run.samples(3000);
    for (const auto& placement : placements()) {
        stayOn(placement.client);
        const auto name = std::string("ON to first byte, ").append(placement.name);
        Rivals inMemory(run, placement, run.setup.inMemory("command.log"), false);
        inMemory.measure(count);
        run.add(medianRow(name, "us", inMemory.ofFloor, atMost(1.15)));
        run.add(p99Row(name + ", p99", "us", inMemory.ofFloor, atMost(1.5)));
        run.add(
            medianRow("  of it a forwarder", "us", {inMemory.ofFloor.ours, inMemory.plain}, {}));
        run.add(medianRow("  of it one that hands on", "us",
                          {inMemory.ofFloor.ours, inMemory.handedOn}, {}));
        Rivals onDisk(run, placement, run.setup.onDisk("command.log"), true);
        onDisk.measure(count);
        run.add(medianRow(name + ", log on disk", "us", onDisk.ofFloor, atMost(0.5)));
    }
}

}  // namespace orx::bench
