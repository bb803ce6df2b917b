#include "system/soak/Load.h"

#include <cstdlib>
#include <stdexcept>

#include "system/soak/DroppedDatagrams.h"

namespace orx::test {
namespace {

constexpr int travel = 2000;

/// With a delay a move lasts for many rounds.
BenchSetup benchSetup() {
    return {.projector = {"--travel", std::to_string(travel)},
            .lineDelay = 1,
            .lensMemory = "zoommax = " + std::to_string(travel) + "\n"};
}

std::size_t index(Trace trace) {
    return static_cast<std::size_t>(trace);
}

void expect(bool holds, const std::string& wrong) {
    if (!holds) throw std::runtime_error(wrong);
}

void expectEqual(const char* what, long found, long wanted) {
    expect(found == wanted, std::string(what) + ": " + std::to_string(found) + " instead of " +
                                std::to_string(wanted));
}

}  // namespace

Load::Load(const LoadSetup& wanted, int channel)
    : setup(wanted),
      port(controlPort + channel),
      bench(benchSetup(), channel),
      clients(clientCount),
      mix(wanted.seed),
      dice(wanted.seed) {
    bench.send("ZOOMRESET");
    ++expected[index(Trace::command)];
    static_cast<void>(bench.waitForRest());
    ++expected[index(Trace::command)];
    scanned = bench.projector().place();
    seen.atStart = bench.process().holdings();
}

void Load::run() {
    constexpr int betweenTwoQuestions = 5;
    beginMove();
    while (seen.sent < setup.datagrams) {
        playRound(betweenTwoQuestions);
        if (arrived) {
            endMove();
            beginMove();
        }
        if (seen.ownSettled == 0 && seen.sent >= setup.settled) {
            seen.ownSettled = bench.process().ownKilobytes();
        }
    }
    while (!arrived)
        playRound(0);
    endMove();
    compareConsole();
    seen.ownAtEnd = bench.process().ownKilobytes();
    bench.process().waitForHoldings(seen.atStart);
    seen.atEnd = bench.process().holdings();
    seen.dropped = droppedDatagrams(ownAddress(), port);
    expectEqual("datagrams dropped", seen.dropped, 0);
    const auto ending = bench.quit();
    expect(ending == "exit status 0", "the daemon ends with " + ending);
}

/// The daemon reads in the order of the sending, and the answers are looked at in that order, too:
/// a later one must never show the lens further back.
void Load::playRound(int others) {
    for (const auto& client : clients)
        sendBurst(client, others);
    for (const auto& client : clients)
        take(client.receive());
    readConsole();
}

void Load::sendBurst(const Client& client, int others) {
    bool mayBeOversized = true;
    for (int number = 0; number < others; ++number) {
        const auto datagram = mix.next(mayBeOversized);
        mayBeOversized = mayBeOversized && datagram.kind != DatagramKind::oversized;
        sendOne(client, datagram);
    }
    client.send("STATUS", port);
    ++seen.sent;
}

void Load::sendOne(const Client& client, const Datagram& datagram) {
    client.send(datagram.bytes, port);
    ++seen.sent;
    ++seen.ofKind.at(static_cast<std::size_t>(datagram.kind));
    ++expected.at(index(datagram.trace));
    lineCommands += datagram.goesToTheLine ? 1 : 0;
}

void Load::take(const std::string& reply) {
    const auto status = readLensStatus(reply);
    ++seen.statusAnswers;
    const int here = status.zoom.position.value_or(-1);
    const bool onTheWay =
        from < target ? last <= here && here <= target : target <= here && here <= last;
    expect(onTheWay, "on the way from " + std::to_string(from) + " to " + std::to_string(target) +
                         ", behind " + std::to_string(last) + ": " + reply);
    last = here;
    arrived = status.atRest() && here == target;
}

void Load::readConsole() {
    for (const auto& line : bench.process().takeLines()) {
        if (line.find(" unknown command (\"") != std::string::npos) ++seen.unknown;
        if (line.starts_with("src=")) ++seen.taken;
        if (line.starts_with("[CMDQ] executing cmd: ")) ++seen.executed;
    }
}

void Load::beginMove() {
    constexpr int shortest = 500;
    from = last = target;
    while (std::abs(target - from) < shortest)
        target = dice.between(0, travel);
    arrived = false;
    bench.send("ZOOMX " + std::to_string(target));
    ++expected[index(Trace::command)];
}

/// The motor stands where the status says, and the line has seen as many steps as the move has.
void Load::endMove() {
    const auto motor = bench.waitUntilExecuted().zoom.motor;
    ++expected[index(Trace::command)];
    long steps = 0;
    for (const auto& event : bench.projector().takeEvents(scanned)) {
        if (event.command == (from < target ? "AZ+" : "AZ-")) {
            ++steps;
        } else if (event.command == DatagramMix::lineCommand) {
            --lineCommands;
        } else {
            expect(event.command == Bench::ticketCommand, "on the line: " + event.command);
        }
    }
    bench.projector().forget(scanned);
    expectEqual("the motor's place", motor, target);
    expectEqual("steps on the line", steps, std::abs(target - from));
    expectEqual("commands that are not on the line", lineCommands, 0);
    seen.steps += steps;
    ++seen.moves;
}

void Load::compareConsole() {
    readConsole();
    expectEqual("lines of unknown commands", seen.unknown, expected[index(Trace::unknown)]);
    expectEqual("commands taken", seen.taken, expected[index(Trace::command)]);
    expectEqual("commands executed", seen.executed, expected[index(Trace::command)]);
}

}  // namespace orx::test
