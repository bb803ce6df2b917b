// What the client shows of a daemon: status, ping, and what changes while it watches.
#include <nlohmann/json.hpp>
#include <sstream>

#include "system/orxctl/OrxctlStory.h"

namespace orx::test {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using Json = nlohmann::json;

class OrxctlStatus : public OrxctlStory {
  protected:
    /// The lens with a zoom of a known position that is on its way.
    void startOnTheWay() {
        startAnsweredLens(motorModel());
        send("OVERRIDEZOPOS 10\nZOOMX 12");
        line.waitFor("z+");
    }
    void letArrive() {
        line.answer(2);
        waitForPositions("12/2000", "undefined");
    }
    [[nodiscard]] std::string statusText() { return call("status").output; }
};

/// `text` with one blank wherever it has several.
std::string narrow(const std::string& text) {
    std::string result;
    for (const char character : text)
        if (character != ' ' || !result.ends_with(' ')) result += character;
    return result;
}

TEST_F(OrxctlStatus, IsATable) {
    startOnTheWay();
    const auto expected =
        "DAEMON STATE ZOOM FOCUS FLAGS\n" + proxy.address() + " BUSY 11/2000>12 undefined HELO\n";
    for (const auto* const words : {"status", "STATUS"}) {
        const auto result = call(words);
        EXPECT_EQ(result.ending, "exit status 0") << words;
        EXPECT_EQ(narrow(result.output), expected) << words;
        EXPECT_EQ(result.errors, "") << words;
    }
    letArrive();
    send("MEMSAVE 1");
    waitUntilExecuted();
    EXPECT_EQ(narrow(call("status").output), "DAEMON STATE ZOOM FOCUS FLAGS\n" + proxy.address() +
                                                 " IDLE 12/2000 undefined HELO LCU\n");
}

TEST_F(OrxctlStatus, IsJsonForPrograms) {
    startOnTheWay();
    const auto result = call("status --json");
    EXPECT_EQ(result.ending, "exit status 0");
    const auto expected = Json::parse(R"([{
        "answered": true, "busy": true, "atRest": false,
        "axes": [{"name": "zoom", "position": 11, "upperEnd": 2000, "target": 12,
                  "resetting": false},
                 {"name": "focus", "position": null, "upperEnd": null, "target": null,
                  "resetting": false}],
        "flags": {"hello": true, "lensMemoryWritten": false, "dumbMode": false,
                  "debugMode": false}}])");
    auto shown = Json::parse(result.output);
    EXPECT_EQ(shown.at(0).at("daemon"), proxy.address());
    shown.at(0).erase("daemon");
    EXPECT_EQ(shown, expected);
    letArrive();
}

TEST(OrxctlStatusOfNobody, IsJsonToo) {
    Proxy silence{nobodysPort};
    const auto result = resultOf("status --json --timeout 0.1 -H " + silence.address());
    EXPECT_EQ(result.ending, "exit status 2");
    EXPECT_EQ(Json::parse(result.output),
              Json::parse(R"([{"answered": false, "daemon": ")" + silence.address() +
                          R"(", "error": "no answer within 0.1 s"}])"));
}

TEST_F(OrxctlStatus, IsWatchedInAPipeByItsChanges) {
    startOnTheWay();
    Orxctl orxctl(toDaemon("status --watch"));
    const auto first = orxctl.waitForOutput("11/2000>12  undefined  HELO\n");
    proxy.waitForMore("STATUS", 3);  // it looks again and again, and says nothing
    letArrive();
    const auto second = orxctl.waitForOutput("12/2000", first);
    send("CLEARFLAGS");
    waitForStatus("IDLE; zoom: 12/2000 focus: undefined;\n");
    const auto third = orxctl.waitForOutput("12/2000  undefined\n", second);
    proxy.waitForMore("STATUS", 3);
    orxctl.interrupt();
    const auto result = orxctl.waitForEnd();
    EXPECT_EQ(result.ending, "signal 2");
    EXPECT_EQ(result.output.size(), third);
    EXPECT_EQ(result.output.find('\033'), std::string::npos);
}

TEST_F(OrxctlStatus, IsWatchedAsALineOfJsonForEachChange) {
    startLens(motorModel());
    Orxctl orxctl(toDaemon("status --watch --json"));
    auto place = orxctl.waitForOutput("\n");
    for (const auto* const position : {"7", "8", "9"}) {
        send("OVERRIDEZOPOS " + std::string(position));
        place = orxctl.waitForOutput("\"position\":" + std::string(position), place);
    }
    orxctl.waitForOutput("\n", place);
    orxctl.interrupt();
    std::istringstream lines(orxctl.waitForEnd().output);
    std::size_t count = 0;
    for (std::string text; std::getline(lines, text); ++count)
        EXPECT_EQ(Json::parse(text).at(0).at("axes").size(), 2U) << text;
    EXPECT_EQ(count, 4U);
}

TEST_F(OrxctlStatus, IsWatchedBeyondTheEndOfTheDaemon) {
    startLens(motorModel());
    Orxctl orxctl(toDaemon("status --watch --timeout 0.2"));
    auto place = orxctl.waitForOutput("undefined");
    EXPECT_EQ(quit(), "exit status 0");
    place = orxctl.waitForOutput("no answer within 0.2 s", place);
    start();
    orxctl.waitForOutput("undefined", place);
}

TEST_F(OrxctlStatus, IsDrawnOverTheOneBeforeOnATerminal) {
    startLens(motorModel());
    Orxctl orxctl(toDaemon("status --watch"), {.onTerminal = true});
    const auto place = orxctl.waitForOutput("undefined");
    send("OVERRIDEZOPOS 7");
    const auto above = orxctl.waitForOutput("\033[2A\033[J", place);
    orxctl.waitForOutput("7/2000", above);
}

/// A line that went on in the next one would be one more to go up than there are.
TEST_F(OrxctlStatus, IsCutToTheWidthOfTheTerminalThatItIsDrawnOn) {
    startLens(motorModel());
    const std::string name(70, 'x');
    const auto hosts = installation.write("hosts", name + " = " + proxy.address() + "\n");
    Orxctl orxctl("status --watch -H " + name + " --hosts " + hosts, {.onTerminal = true});
    orxctl.waitForOutput(name + "  IDLE   \r\n");
}

TEST_F(OrxctlStatus, IsTimedByPing) {
    startWith(motorModel());
    const auto result = call("ping");
    EXPECT_EQ(result.ending, "exit status 0");
    EXPECT_THAT(result.output, MatchesRegex("answered in [0-9.]+ ms\n"));
    EXPECT_THAT(requests(), testing::ElementsAre("STATUS"));
}

}  // namespace
}  // namespace orx::test
