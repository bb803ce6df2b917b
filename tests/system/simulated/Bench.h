// A daemon and the projector in software that it drives, on a line of their own. A test can have
// several side by side: each has its own installation, its own line and its own control channel.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "system/harness/Client.h"
#include "system/harness/Daemon.h"
#include "system/harness/Installation.h"
#include "system/simulated/LensStatus.h"
#include "system/simulated/Simulator.h"

namespace orx::test {

struct BenchSetup {
    std::string model = "DEMO-1";          ///< of the definitions in this tree
    std::vector<std::string> projector{};  ///< options of the simulator
    int lineDelay = 0;            ///< milliseconds that the daemon waits after each command
    std::string configuration{};  ///< more lines of the main configuration
    std::string lensMemory{};     ///< the lens memory file
};

class Bench {
  public:
    /// What the bench sends of its own accord. All models take it, and nothing else here may send
    /// it; it does nothing to the lens.
    static constexpr const char* ticketCommand = "INPUT";

    /// Starts both. Benches that run at the same time must differ in `channel`.
    explicit Bench(const BenchSetup& setup, int channel = 0);

    /// Starts the daemon and waits until its queue runs; the projector goes on all the time.
    void start();

    /// Sends RESTART and waits until the queue runs again.
    void restart();

    /// Kills the daemon at once and waits for its end.
    void kill();

    /// Sends QUIT; gives how the daemon ended.
    std::string quit();

    /// Sends `text` as one datagram.
    void send(const std::string& text) const { client.send(text, port); }

    [[nodiscard]] LensStatus status() const { return readLensStatus(client.status(port)); }

    /// Waits until all that was sent has been executed and all that the daemon has put on the line
    /// until then has been carried out; gives where the motors stand.
    Simulator::Axes waitUntilExecuted();

    /// Waits until all that was sent has been executed and the lens is at rest; gives the status
    /// that says so.
    LensStatus waitForRest();

    [[nodiscard]] Simulator& projector() noexcept { return simulator; }
    [[nodiscard]] const Simulator& projector() const noexcept { return simulator; }
    [[nodiscard]] Daemon& process() noexcept { return *daemon; }
    [[nodiscard]] const Installation& files() const noexcept { return installation; }

  private:
    [[nodiscard]] bool isDone(LensStatus& last) const;

    const int port;
    Installation installation;
    Simulator simulator;
    Client client;
    std::unique_ptr<Daemon> daemon;
    int tickets = 0;
};

}  // namespace orx::test
