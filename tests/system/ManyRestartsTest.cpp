// RESTART upon RESTART: nothing may be left over, and the same ports must be had again.
#include "system/harness/Story.h"
#include "system/harness/Waiting.h"

namespace orx::test {
namespace {

constexpr int channels = 3;
constexpr int mainQueueAndLens = 3;

class ManyRestarts : public Story {
  protected:
    void SetUp() override {
        installation.writeDefinitions(define({motorModel()}));
        configure("MOTOR");
        start();
        std::size_t place = 0;
        for (int channel = 0; channel < channels; ++channel)
            place = daemon->waitForText("start, waiting for commands", place);
        daemon->waitForLine("[PROJCTRL] start");
        // No thread is on its way out yet, and no file is open for a moment.
        atStart = daemon->holdings();
        ASSERT_GE(atStart.threads, std::size_t{mainQueueAndLens + channels});
    }
    void configure(const std::string& projector, const std::string& more = "") const {
        installation.writeConfiguration(configuration(
            projector, "controlchannel = " + controlAddress(0) + "," + controlAddress(1) + "," +
                           controlAddress(2) + "\n" + more));
    }
    void restartThrough(int channel) const {
        const auto place = daemon->place();
        client.send("RESTART", controlPort + channel);
        daemon->waitForLine("[CMDQ] start", place);
    }

    Holdings atStart;
};

TEST_F(ManyRestarts, LeaveAsManyThreadsAndDescriptorsAsOne) {
    restartThrough(0);
    daemon->waitForHoldings(atStart);
    for (int number = 1; number < 1000; ++number) {
        // A restart with a projector waits for the lens, so most do without.
        if (number % 20 == 1) configure("NONE");
        if (number % 20 == 19) configure("MOTOR", "serial.debug = 2\n");
        if (number % 20 == 0) configure("MOTOR");
        restartThrough(number % channels);
    }
    configure("MOTOR");
    restartThrough(0);
    daemon->waitForHoldings(atStart);
    for (int channel = 0; channel < channels; ++channel)
        EXPECT_THAT(client.status(controlPort + channel), testing::StartsWith("IDLE; zoom:"));
    send("ON");
    line.waitFor("ON\r");
}

TEST_F(ManyRestarts, AreTakenAsFastAsTheyCome) {
    configure("NONE");
    auto place = daemon->place();
    for (int round = 0; round < 50; ++round) {
        for (int channel = 0; channel < channels; ++channel)
            client.send("RESTART", controlPort + channel);
        place = daemon->waitForLine("[CMDQ] start", place);
    }
    configure("MOTOR");
    // Some of the many may still be waiting to be executed, so this one is sent until it is heard.
    waitUntil(
        [&] {
            restartThrough(0);
            return status().starts_with("IDLE; zoom:");
        },
        [] { return std::string("a restart with a projector"); });
    daemon->waitForHoldings(atStart);
    waitUntil(
        [&] {
            send("QUIT");
            return daemon->hasEnded();
        },
        [] { return std::string("the end"); });
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
}

}  // namespace
}  // namespace orx::test
