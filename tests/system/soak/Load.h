// Datagrams from many clients at once, as many as the daemon can read, while the lens moves: no
// step may be lost or sent twice, no status be wrong, and nothing grow.
//
// Every client asks for the status behind a few datagrams and waits for the answer, so that the
// daemon's socket never overflows: all that was sent is read, and the console tells of it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "system/simulated/Bench.h"
#include "system/soak/Datagrams.h"

namespace orx::test {

struct LoadSetup {
    long datagrams = 0;  ///< how many at least, the questions for the status among them
    long settled = 0;    ///< behind how many the memory is looked at first
    std::uint64_t seed = 1;
};

struct LoadFigures {
    long sent = 0;
    std::array<long, datagramKindNames.size()> ofKind{};
    long statusAnswers = 0;
    long unknown = 0;   ///< told of on the console
    long taken = 0;     ///< commands that the listener has handed over
    long executed = 0;  ///< commands that the queue has executed
    long dropped = 0;   ///< by the system, for want of room in the daemon's socket
    long moves = 0;
    long steps = 0;       ///< on the line, each of them wanted
    long ownSettled = 0;  ///< kilobytes
    long ownAtEnd = 0;
    Holdings atStart;
    Holdings atEnd;
};

class Load {
  public:
    explicit Load(const LoadSetup& wanted, int channel = 0);

    /// Throws, saying what is wrong, where anything but the memory is.
    void run();

    /// Up to now.
    [[nodiscard]] const LoadFigures& figures() const noexcept { return seen; }

  private:
    static constexpr std::size_t clientCount = 8;

    void playRound(int others);
    void sendBurst(const Client& client, int others);
    void sendOne(const Client& client, const Datagram& datagram);
    void take(const std::string& reply);
    void readConsole();
    void beginMove();
    void endMove();
    void compareConsole();

    const LoadSetup setup;
    const int port;
    Bench bench;
    std::vector<Client> clients;
    DatagramMix mix;
    Dice dice;
    LoadFigures seen;
    std::array<long, 3> expected{};  ///< by trace
    long lineCommands = 0;           ///< sent since the last rest
    std::size_t scanned = 0;
    int from = 0;
    int last = 0;
    int target = 0;
    bool arrived = false;
};

}  // namespace orx::test
