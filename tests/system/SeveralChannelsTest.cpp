// Several control channels: every one of them can end or restart the daemon, and all end with it.
#include <map>
#include <set>

#include "system/harness/Story.h"
#include "system/harness/Waiting.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::StartsWith;

constexpr int channels = 3;

class SeveralChannels : public Story {
  protected:
    /// Starts the daemon with three channels and waits until all of them wait for commands.
    void startAll(const std::string& projector = "MOTOR", Model model = motorModel()) {
        installation.writeDefinitions(define({std::move(model)}));
        installation.writeConfiguration(
            configuration(projector, "controlchannel = " + controlAddress(0) + ", " +
                                         controlAddress(1) + "," + controlAddress(2) + "\n"));
        start();
        waitForChannels(0);
    }
    /// Waits for the start lines of all channels behind `place`.
    void waitForChannels(std::size_t place) const {
        for (int channel = 0; channel < channels; ++channel)
            place = daemon->waitForText("start, waiting for commands", place);
    }
    /// The lines of the end of all channels that started with these sockets.
    static std::vector<std::string> endOf(const std::vector<std::string>& sockets) {
        std::vector<std::string> lines;
        for (const auto& socket : sockets) {
            lines.push_back("[LISTENER] closing socket #" + socket);
            lines.push_back("[CTRLCHAN|#" + socket + "] stop.");
        }
        return lines;
    }
    /// Expects every line of `expected` exactly once among the console lines behind `place`.
    void expectOnce(const std::vector<std::string>& expected, std::size_t place = 0) const {
        for (const auto& text : expected)
            EXPECT_THAT(daemon->lines(place), Contains(text).Times(1));
    }
};

TEST_F(SeveralChannels, AreAllServed) {
    startAll();
    const auto sockets = daemon->socketNumbers();
    EXPECT_EQ(std::set(sockets.begin(), sockets.end()).size(), std::size_t{channels});
    for (int channel = 0; channel < channels; ++channel) {
        EXPECT_THAT(client.status(controlPort + channel), StartsWith("IDLE;"));
        client.send("nonsense", controlPort + channel);
        daemon->waitForLine("[CTRLCHAN|#" + sockets.at(static_cast<std::size_t>(channel)) +
                            "] src=" + ownAddress() + " unknown command (\"nonsense\")");
    }
}

class EitherChannel : public SeveralChannels, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(Number, EitherChannel, testing::Range(0, channels));

TEST_P(EitherChannel, EndsAllByQuit) {
    startAll();
    const auto sockets = daemon->socketNumbers();
    client.send("QUIT", controlPort + GetParam());
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
    expectOnce(endOf(sockets));
    expectOnce({"[CMDQ] stop.", "[PROJCTRL] stop."});
    EXPECT_EQ(installation.log().front(), "-- ORX logging end --");
}

TEST_P(EitherChannel, EndsAllByQuitInDumbMode) {
    startAll("NONE");
    const auto sockets = daemon->socketNumbers();
    client.send("QUIT", controlPort + GetParam());
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
    expectOnce(endOf(sockets));
}

TEST_P(EitherChannel, RestartsAll) {
    startAll();
    const auto sockets = daemon->socketNumbers();
    const auto place = daemon->place();
    client.send("RESTART", controlPort + GetParam());
    daemon->waitForLine("[CMDQ] start", place);
    waitForChannels(place);
    expectOnce(endOf(sockets), place);
    expectOnce({"ORX restarting...", "[CMDQ] stop.", "[PROJCTRL] stop."}, place);
    EXPECT_EQ(daemon->socketNumbers().size(), 2U * channels);
    for (int channel = 0; channel < channels; ++channel)
        EXPECT_THAT(client.status(controlPort + channel), StartsWith("IDLE;"));
}

TEST_P(EitherChannel, EndsAllWhileAnotherWaitsForTheQueue) {
    auto model = motorModel();
    model.line.timeout = waitsForAnswer;
    startAll("MOTOR", model);
    const int other = (GetParam() + 1) % channels;
    client.send("ON", controlPort + GetParam());
    line.waitFor("ON\r");
    client.send("QUIT", controlPort + GetParam());
    client.send("OFF", controlPort + other);
    daemon->waitForLine("src=" + ownAddress() + " cmd=QUIT");
    daemon->waitForLine("src=" + ownAddress() + " cmd=OFF");
    line.answer(2);  // OFF may come ahead of QUIT
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
    expectOnce(endOf(daemon->socketNumbers()));
}

TEST_F(SeveralChannels, ShareOneQueue) {
    startAll();
    client.send("ON", controlPort);
    line.waitFor("ON\r");
    client.send("OFF", controlPort + 1);
    line.waitFor("ON\rOFF\r");
    client.send("PICMUTE", controlPort + 2);
    line.waitFor("ON\rOFF\rPMUTE\r");
}

TEST_F(SeveralChannels, DoNotMixTheirLinesOnTheConsole) {
    startAll();
    daemon->waitForLine("[PROJCTRL] start");
    const auto place = daemon->place();
    constexpr int rounds = 100;
    for (int round = 0; round < rounds; ++round) {
        for (int channel = 0; channel < channels; ++channel)
            client.send("nonsense\nMEMLOAD 1", controlPort + channel);
    }
    std::map<std::string, int> counts;
    const auto allAreThere = [&] {
        counts.clear();
        const auto lines = daemon->lines(place);
        for (const auto& text : lines)
            ++counts[text];
        return lines.size() == rounds * channels * 4U;
    };
    waitUntil(allAreThere, [] { return std::string("all console lines"); });
    std::map<std::string, int> expected{
        {"src=" + ownAddress() + " cmd=MEMLOAD (1)", rounds * channels},
        {"[CMDQ] executing cmd: MEMLOAD (1) (rcvd from ctrlchan)", rounds * channels},
        {"- could not load memory slot 1, no position data", rounds * channels}};
    for (const auto& socket : daemon->socketNumbers()) {
        expected["[CTRLCHAN|#" + socket + "] src=" + ownAddress() +
                 " unknown command (\"nonsense\")"] = rounds;
    }
    EXPECT_EQ(counts, expected);
    waitUntilExecuted();
    EXPECT_EQ(installation.log().size(), 50U);
}

TEST_F(SeveralChannels, CanBecomeMoreAndFewerByARestart) {
    install(motorModel());
    start();
    installation.writeConfiguration(configuration(
        "MOTOR", "controlchannel = " + controlAddress(1) + "," + controlAddress(2) + "\n"));
    restart();
    EXPECT_THAT(client.status(controlPort + 1), StartsWith("IDLE;"));
    EXPECT_THAT(client.status(controlPort + 2), StartsWith("IDLE;"));
    EXPECT_TRUE(client.isFree(controlPort));
    installation.writeConfiguration(configuration("MOTOR"));
    const auto place = daemon->place();
    client.send("RESTART", controlPort + 2);
    daemon->waitForLine("[CMDQ] start", place);
    EXPECT_TRUE(client.isFree(controlPort + 1));
    EXPECT_TRUE(client.isFree(controlPort + 2));
    EXPECT_THAT(status(), StartsWith("IDLE;"));
}

}  // namespace
}  // namespace orx::test
