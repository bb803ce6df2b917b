// The simulator as it is run: its line, its events, its end.
#include <algorithm>

#include <gmock/gmock.h>

#include "support/WaitUntil.h"
#include "unit/orxsim/RunningSimulator.h"
#include "unit/serial/PseudoTerminal.h"

namespace orx::orxsim {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST(OrxsimTool, linksItsLineAndSaysSoFirst) {
    RunningSimulator simulator({.options = {"--model", "DEMO-1", "--travel", "300,200"}});
    const auto ready = simulator.event();
    EXPECT_EQ(ready["event"], "ready");
    EXPECT_EQ(ready["link"], simulator.link());
    EXPECT_EQ(ready["model"], "DEMO-1");
    EXPECT_EQ(ready["device"], std::filesystem::read_symlink(simulator.link()).string());
    EXPECT_EQ(ready["axes"]["zoom"]["motor"], 150);
    EXPECT_EQ(ready["axes"]["focus"]["travel"], 200);
}

TEST(OrxsimTool, answersCommandsAndWritesAnEventForEach) {
    RunningSimulator simulator({.options = {"--model", "DEMO-1", "--json"}});
    simulator.event();
    const LineEnd line(simulator.link());
    line.send("SOURCE 07\r");
    EXPECT_EQ(line.receive(3), "OK\r");
    EXPECT_EQ(simulator.line(),
              R"({"event":"command","command":"INPUT","arguments":["7"],)"
              R"("bytes":"SOURCE 07\\x0d","axes":{)"
              R"("zoom":{"motor":1000,"lens":1000,"lost":0,"contacts":0,)"
              R"("jogcontacts":0,"resetcontacts":0,"travel":2000},)"
              R"("focus":{"motor":500,"lens":500,"lost":0,"contacts":0,)"
              R"("jogcontacts":0,"resetcontacts":0,"travel":1000}},)"
              R"("state":{"power":false,"shutter":false,"audio mute":false,"picture mute":false,)"
              R"("av mute":false,"freeze":false,"input":"7","values":{}},"answer":"OK\r"})"
              "\n");
}

TEST(OrxsimTool, writesItsStateWheneverThatHasChanged) {
    RunningSimulator simulator({.options = {"--model", "DEMO-1"}});
    EXPECT_EQ(simulator.event()["state"]["power"], false);
    LineEnd(simulator.link()).send("PWR ON\rPWR ON\rZOOM STEP +\rCONTRAST +007\rPWR OFF\r");
    EXPECT_EQ(simulator.event()["state"]["power"], true);
    for (int unchanged = 0; unchanged < 2; ++unchanged)
        EXPECT_FALSE(simulator.event().contains("state"));
    EXPECT_EQ(simulator.event()["state"]["values"]["CONTRAST"][0], "7");
    const auto last = simulator.event()["state"];
    EXPECT_EQ(last["power"], false);
    EXPECT_EQ(last["values"].size(), 1);
}

TEST(OrxsimTool, writesAnEventForBytesThatItRefuses) {
    RunningSimulator simulator({.options = {"--model", "DEMO-1", "--error", "NAK\\xe9"}});
    simulator.event();
    const LineEnd line(simulator.link());
    line.send("PWR\rSOURCE 100\r");
    auto event = simulator.event();
    EXPECT_EQ(event["event"], "unknown");
    EXPECT_EQ(event["bytes"], "PWR\\x0d");
    EXPECT_EQ(event["reason"], "no command of this model");
    EXPECT_EQ(event["answer"], "NAK\u00e9");
    EXPECT_FALSE(event.contains("command"));
    EXPECT_EQ(event["axes"]["zoom"]["contacts"], 0);
    event = simulator.event();
    EXPECT_EQ(event["command"], "INPUT");
    EXPECT_EQ(event["reason"], "argument 1 is 100, not within 00 to 99");
    EXPECT_EQ(line.receive(8), "NAK\xe9NAK\xe9");
}

TEST(OrxsimTool, countsContactsOfSingleStepsApart) {
    RunningSimulator simulator({.options = {"--model", "DEMO-1", "--start", "1", "--no-answer"}});
    simulator.event();
    const LineEnd line(simulator.link());
    line.send("ZOOM STEP -\rZOOM HOME\rZOOM STEP -\r");
    auto event = simulator.event();
    EXPECT_FALSE(event.contains("endstop"));
    EXPECT_TRUE(event["answer"].is_null());
    event = simulator.event();
    EXPECT_EQ(event["command"], "ZOOMRESET");
    EXPECT_EQ(event["endstop"], true);
    EXPECT_EQ(event["axes"]["zoom"]["contacts"], 0);
    EXPECT_EQ(event["axes"]["zoom"]["resetcontacts"], 1);
    event = simulator.event();
    EXPECT_EQ(event["endstop"], true);
    EXPECT_EQ(event["axes"]["zoom"]["contacts"], 1);
}

TEST(OrxsimTool, isEveryModelOfTheFile) {
    const std::vector<std::pair<std::string, std::string>> steps{
        {"DEMO-1", "ZOOM STEP +\r"}, {"DEMO-2", "\x02Z>\x03\x1d"}, {"DEMO-3", ":ZOOM=+1\r\n"}};
    for (const auto& [model, bytes] : steps) {
        RunningSimulator simulator({.options = {"--model", model}});
        simulator.event();
        LineEnd(simulator.link()).send(bytes);
        const auto event = simulator.event();
        EXPECT_EQ(event["command"], "AZ+") << model;
        EXPECT_EQ(event["axes"]["zoom"]["motor"], 1001) << model;
    }
}

TEST(OrxsimTool, staysWhenTheDaemonGoesAndComesBack) {
    RunningSimulator simulator({.options = {"--model", "DEMO-1"}});
    simulator.event();
    for (int round = 0; round < 3; ++round) {
        const LineEnd line(simulator.link());
        line.send("PWR ON\r");
        EXPECT_EQ(line.receive(3), "OK\r");
    }
}

class OrxsimToolEnds : public testing::TestWithParam<int> {};

TEST_P(OrxsimToolEnds, inGoodOrderByASignal) {
    RunningSimulator simulator({.options = {"--model", "DEMO-1"}});
    simulator.event();
    LineEnd(simulator.link()).send("PWR ON\rX\rPWR OFF\r");
    for (int number = 0; number < 3; ++number)
        simulator.event();
    simulator.signal(GetParam());
    EXPECT_EQ(simulator.rest(), "{\"event\":\"end\",\"commands\":2,\"unknown\":1}\n");
    EXPECT_EQ(simulator.wait(), 0);
    EXPECT_FALSE(simulator.hasLink());
    EXPECT_EQ(simulator.errors(), "");
}

INSTANTIATE_TEST_SUITE_P(Signals, OrxsimToolEnds, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST(OrxsimTool, cutsTheLineAfterSoManyCommands) {
    RunningSimulator simulator({.options = {"--model", "DEMO-1", "--unplug-after", "2"}});
    simulator.event();
    const LineEnd line(simulator.link());
    line.send("PWR ON\r");
    EXPECT_EQ(line.receive(3), "OK\r");
    line.send("PWR OFF\r");
    EXPECT_EQ(line.receive(1), "");
    simulator.event();
    EXPECT_EQ(simulator.event()["command"], "OFF");
    EXPECT_EQ(simulator.rest(), "{\"event\":\"unplugged\"}\n");
    EXPECT_EQ(simulator.wait(), 0);
    EXPECT_FALSE(simulator.hasLink());
}

TEST(OrxsimTool, cutsTheLineAfterSomeTime) {
    RunningSimulator simulator({.options = {"--model", "DEMO-1", "--unplug-after", "1ms"}});
    EXPECT_EQ(simulator.event()["event"], "ready");
    EXPECT_EQ(simulator.rest(), "{\"event\":\"unplugged\"}\n");
    EXPECT_EQ(simulator.wait(), 0);
}

/// All events of a run behind the first, which names the device.
std::string eventsOf(const std::string& seed) {
    RunningSimulator simulator(
        {.options = {"--model", "DEMO-1", "--lose", "1/7", "--line-noise", "1/50",
                     "--garbage-answer", "--seed", seed, "--unplug-after", "300"}});
    simulator.event();
    const LineEnd line(simulator.link());
    std::string commands;
    for (int number = 0; number < 100; ++number)
        commands += "ZOOM STEP +\rFOCUS ++\rSOURCE 07\rZOOM ---\r";
    std::string_view unsent = commands;
    const bool isSent = test::waitUntil([&] {
        unsent.remove_prefix(line.send(unsent));
        return unsent.empty() || !simulator.hasLink();
    });
    EXPECT_TRUE(isSent);
    return simulator.rest();
}

TEST(OrxsimTool, repeatsARunFromItsSeed) {
    const auto run = eventsOf("7");
    EXPECT_GT(std::ranges::count(run, '\n'), 300);
    EXPECT_EQ(eventsOf("7"), run);
    EXPECT_NE(eventsOf("8"), run);
}

TEST(OrxsimTool, endsWhenNobodyReadsItsEventsAnyMore) {
    RunningSimulator simulator({.options = {"--model", "DEMO-1"}});
    simulator.event();
    simulator.closeReader();
    EXPECT_EQ(simulator.wait(), 1);
    EXPECT_EQ(simulator.errors(), "orxsim: standard output: Broken pipe\n");
    EXPECT_FALSE(simulator.hasLink());
}

/// Where in its work the signal finds the simulator is chance, so there are several rounds.
TEST(OrxsimTool, endsByASignalWhileItsReaderIsSlow) {
    for (int round = 0; round < 10; ++round) {
        RunningSimulator simulator({.options = {"--model", "DEMO-1"}});
        ASSERT_TRUE(test::waitUntil([&] { return simulator.hasWritten(); }));
        simulator.fillPipe();
        const LineEnd line(simulator.link());
        line.send("PWR ON\r");  // whose event finds no room
        ASSERT_TRUE(simulator.waitUntilAsleep());
        simulator.signal(SIGTERM);
        EXPECT_EQ(simulator.wait(), 0);
        EXPECT_FALSE(simulator.hasLink());
    }
}

/// A line that took the number of the missing output would carry the events.
TEST(OrxsimTool, runsWithoutStandardOutput) {
    RunningSimulator simulator({.options = {"--model", "DEMO-1"}, .withoutOutput = true});
    ASSERT_TRUE(test::waitUntil([&] { return simulator.hasLink(); }));
    const LineEnd line(simulator.link());
    line.send("PWR ON\rPWR OFF\r");
    EXPECT_EQ(line.receive(6), "OK\rOK\r");
    simulator.signal(SIGTERM);
    EXPECT_EQ(simulator.wait(), 0);
    EXPECT_EQ(simulator.errors(), "");
}

TEST(OrxsimTool, drawsOnATerminalAndGivesItBack) {
    const test::PseudoTerminal terminal;
    const FileDescriptor output(::open(terminal.device().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    RunningSimulator simulator({.options = {"--model", "DEMO-1"}, .output = output.get()});
    std::string shown;
    const auto showsUntil = [&](std::string_view text) {
        return test::waitUntil([&] {
            shown += terminal.written(1);
            return shown.find(text) != std::string::npos;
        });
    };
    ASSERT_TRUE(showsUntil("0 commands"));
    EXPECT_THAT(shown, AllOf(StartsWith("\x1b[?1049h"), HasSubstr("DEMO-1")));
    const LineEnd line(simulator.link());
    line.send("SOURCE 07\r");
    EXPECT_EQ(line.receive(3), "OK\r");
    ASSERT_TRUE(showsUntil("input 7"));
    simulator.signal(SIGINT);
    ASSERT_TRUE(showsUntil("\x1b[?1049lorxsim: 1 commands, 0 unknown"));
    EXPECT_EQ(simulator.wait(), 0);
}

TEST(OrxsimTool, writesEventsToATerminalWhereThatIsWanted) {
    const test::PseudoTerminal terminal;
    const FileDescriptor output(::open(terminal.device().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    RunningSimulator simulator(
        {.options = {"--model", "DEMO-1", "--json"}, .output = output.get()});
    EXPECT_THAT(terminal.written(16), StartsWith("{\"event\":\"ready\""));
}

/// Exit status and standard error of a run that does not come to serve.
std::pair<int, std::string> failure(const std::vector<std::string>& options,
                                    const std::string& definitions = {},
                                    const std::string& link = {}) {
    RunningSimulator simulator({.options = options, .definitions = definitions, .link = link});
    const auto output = simulator.rest();
    EXPECT_THAT(output, IsEmpty());
    const auto status = simulator.wait();
    return {status, simulator.errors()};
}

TEST(OrxsimToolFails, forAModelThatIsNotInTheFile) {
    const auto [status, errors] = failure({"--model", "DEMO-9"});
    EXPECT_EQ(status, 1);
    EXPECT_THAT(errors,
                AllOf(StartsWith("orxsim: "),
                      HasSubstr("orx.ccd has no model DEMO-9; it has DEMO-1, DEMO-2, DEMO-3")));
}

TEST(OrxsimToolFails, forAWrongCommandLine) {
    const std::vector<std::vector<std::string>> wrong{
        {}, {"--model"}, {"--model", "DEMO-1", "--lose", "x"}, {"--model", "DEMO-1", "more"}};
    for (const auto& options : wrong) {
        const auto [status, errors] = failure(options);
        EXPECT_EQ(status, 1);
        EXPECT_THAT(errors, HasSubstr("Run with --help for more information."));
    }
}

TEST(OrxsimToolFails, forAFileThatIsMissingOrDamaged) {
    const test::TemporaryFolder folder;
    const auto damaged = folder.write("damaged.ccd", demoImage().substr(0, 500));
    const auto missing = failure({"--model", "DEMO-1"}, folder.file("missing.ccd"));
    EXPECT_EQ(missing.first, 1);
    EXPECT_EQ(missing.second,
              folder.file("missing.ccd") + ":1:1: cannot be read: No such file or directory\n");
    const auto [status, errors] = failure({"--model", "DEMO-1"}, damaged);
    EXPECT_EQ(status, 1);
    EXPECT_THAT(errors, StartsWith(damaged + ":"));
}

TEST(OrxsimToolFails, whereSomethingElseIsInPlaceOfTheLink) {
    const test::TemporaryFolder folder;
    const auto file = folder.write("file", "kept");
    const auto [status, errors] = failure({"--model", "DEMO-1"}, {}, file);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(errors, "orxsim: " + file + ": is there and no symbolic link\n");
    EXPECT_EQ(test::contentOf(file), "kept");
}

TEST(OrxsimTool, explainsItself) {
    for (const auto& [option, text] :
         {std::pair("--help", "--unplug-after"), std::pair("--version", "orxsim ")}) {
        RunningSimulator simulator({.options = {option}});
        EXPECT_THAT(simulator.rest(), HasSubstr(text));
        EXPECT_EQ(simulator.wait(), 0);
    }
}

}  // namespace
}  // namespace orx::orxsim
