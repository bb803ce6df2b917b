// The adapter of the serial line pulled out and put in again, under the same name, as a USB adapter
// is that udev gives a link of its own. RESTART brings the line back, however often.
#include <filesystem>
#include <memory>

#include <gmock/gmock.h>

#include "system/harness/Client.h"
#include "system/harness/Daemon.h"
#include "system/harness/Installation.h"
#include "system/harness/Models.h"
#include "system/harness/Pty.h"
#include "system/harness/SideBySide.h"

namespace orx::test {
namespace {

/// A daemon whose line has a name that leads to the adapter that is in now.
class Replugged {
  public:
    explicit Replugged(int channel) : port(controlPort + channel) {
        plugIn();
        installation.writeDefinitions(define({motorModel()}));
        installation.writeConfiguration("projector = MOTOR\nserial.device = " + name() +
                                        "\ncontrolchannel = " + controlAddress(channel) + "\n");
        daemon = std::make_unique<Daemon>(installation.prefix());
        for (const auto* started : {"[CMDQ] start", "[PROJCTRL] start"})
            daemon->waitForLine(started);
        daemon->waitForText("start, waiting for commands");
        // No thread is on its way out yet, and no file is open for a moment.
        atStart = daemon->holdings();
    }

    /// Pulls the adapter out under the daemon's hands, puts another in, and has the daemon take it;
    /// so many times.
    void replug(int times) {
        for (int time = 0; time < times; ++time) {
            line->unplug();
            client.send("OFF", port);
            plugIn();
            restart();
            client.send("ON", port);
            line->waitFor("ON\r");
        }
    }

    void waitForHoldingsOfTheStart() const { daemon->waitForHoldings(atStart); }
    [[nodiscard]] long ownKilobytes() const { return daemon->ownKilobytes(); }

    [[nodiscard]] std::string quit() {
        client.send("QUIT", port);
        return daemon->waitForEnd();
    }

  private:
    [[nodiscard]] std::string name() const { return installation.file("adapter"); }

    void restart() const {
        const auto place = daemon->place();
        client.send("RESTART", port);
        daemon->waitForLine("[CMDQ] start", place);
    }

    void plugIn() {
        line = std::make_unique<Pty>();
        const auto aside = installation.file("adapter.new");
        std::filesystem::create_symlink(line->device(), aside);
        std::filesystem::rename(aside, name());
    }

    const int port;
    Installation installation;
    std::unique_ptr<Pty> line;
    Client client;
    std::unique_ptr<Daemon> daemon;
    Holdings atStart;
};

/// A restart waits for the lens most of the time, so several daemons go through theirs at once.
TEST(Replug, AThousandTimesLeavesNothingBehind) {
    constexpr std::size_t daemons = 8;
    constexpr int settled = 25;
    constexpr int more = 100;
    constexpr long kilobyteEach = 1;
    workSideBySide(daemons, [](std::size_t, int channel) {
        Replugged bench(channel);
        bench.replug(settled);
        const auto before = bench.ownKilobytes();
        bench.replug(more);
        bench.waitForHoldingsOfTheStart();
        if (memoryIsTelling) {
            EXPECT_LT(bench.ownKilobytes() - before, more * kilobyteEach);
        }
        EXPECT_EQ(bench.quit(), "exit status 0");
    });
}

}  // namespace
}  // namespace orx::test
