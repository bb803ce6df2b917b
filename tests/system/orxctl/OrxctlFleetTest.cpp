// Several daemons at once.
#include <sstream>

#include "system/orxctl/Crowd.h"
#include "system/orxctl/OrxctlStory.h"

namespace orx::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

auto row(const std::string& name, const std::string& text) {
    return AllOf(StartsWith(name + " "), HasSubstr(text));
}

/// A daemon with a lens behind the proxy, one without a projector, and nobody.
class OrxctlFleet : public OrxctlStory {
  protected:
    void SetUp() override {
        startLens(motorModel());
        other.writeConfiguration("controlchannel = " + controlAddress(1) + "\n");
        other.writeDefinitions(define({motorModel()}));
        dumb = std::make_unique<Daemon>(other.prefix());
        dumb->waitForLine("[CMDQ] start");
    }
    void TearDown() override {
        client.send("QUIT", controlPort + 1);
        EXPECT_EQ(dumb->waitForEnd(), "exit status 0");
        OrxctlStory::TearDown();
    }
    [[nodiscard]] std::string writeHosts() const {
        return installation.write("orx/hosts", "hall = " + proxy.address() +
                                                   "\nfoyer = " + controlAddress(1) +
                                                   "\nattic = " + silence.address() +
                                                   "\nlit = hall, foyer\nall = lit, attic\n");
    }

    Installation other;
    std::unique_ptr<Daemon> dumb;
    Proxy silence{nobodysPort};
};

TEST_F(OrxctlFleet, IsNamedByRepeatedAndByListedHosts) {
    const auto result = resultOf("status --timeout 1 -H " + silence.address() + " -H " +
                                 controlAddress(1) + "," + proxy.address());
    EXPECT_EQ(result.ending, "exit status 2");
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(
        linesOf(result.output),
        ElementsAre(row("DAEMON", "STATE"), row(silence.address(), "no answer within 1 s"),
                    row(controlAddress(1), "HELO DUMB"), row(proxy.address(), "undefined")));
}

TEST_F(OrxctlFleet, IsNamedByAHostsFile) {
    const auto hosts = " --hosts " + writeHosts();
    EXPECT_THAT(linesOf(resultOf("ping --timeout 1 -H all" + hosts).output),
                ElementsAre(row("DAEMON", "RESULT"), row("hall", "answered in"),
                            row("foyer", "answered in"), row("attic", "no answer")));
    EXPECT_THAT(
        linesOf(resultOf("status -H foyer,lit" + hosts).output),
        ElementsAre(row("DAEMON", "STATE"), row("foyer", "DUMB"), row("hall", "undefined")));
    EXPECT_EQ(resultOf("ON -H hall" + hosts), done());
}

TEST_F(OrxctlFleet, IsNamedByTheHostsFileOfTheUser) {
    static_cast<void>(writeHosts());
    const Surroundings home{.configurations = installation.prefix()};
    EXPECT_THAT(
        linesOf(resultOf("status -H lit", home).output),
        ElementsAre(row("DAEMON", "STATE"), row("hall", "undefined"), row("foyer", "DUMB")));
}

TEST_F(OrxctlFleet, HasTheWorstOfItsExitStatuses) {
    const auto hosts = " --hosts " + writeHosts() + " -H ";
    EXPECT_EQ(resultOf("CLEARFLAGS" + hosts + "lit").ending, "exit status 0");
    const auto result = resultOf("ZOOMX 1 --timeout 1" + hosts + "all");
    EXPECT_EQ(result.ending, "exit status 4");
    EXPECT_THAT(linesOf(result.output),
                ElementsAre(row("DAEMON", "RESULT"), row("hall", "sent"), row("foyer", "dumb mode"),
                            row("attic", "no answer within 1 s; nothing was sent")));
    EXPECT_EQ(resultOf("ON --timeout 0.3" + hosts + "hall,attic").ending, "exit status 2");
    EXPECT_EQ(resultOf("ON -H hall,nobody.invalid" + hosts + "hall").ending, "exit status 2");
}

/// The silent one is waited for as long as a test may take, so only a command that did not wait for
/// it can be executed.
TEST_F(OrxctlFleet, DoesNotWaitForTheOneThatDoesNotAnswer) {
    Orxctl orxctl("ON --timeout 600 -H " + silence.address() + " -H " + proxy.address());
    line.waitFor("ON\r");
    silence.waitForMore("STATUS", 1);
    EXPECT_FALSE(orxctl.hasEnded());
    EXPECT_THAT(silence.requests(), Each("STATUS"));
    orxctl.interrupt();
    EXPECT_EQ(orxctl.waitForEnd().ending, "signal 2");
}

constexpr std::size_t many = 200;

class OrxctlCrowd : public testing::Test {
  protected:
    [[nodiscard]] CallResult callAll(const std::string& line) const {
        std::string hosts;
        for (const auto& address : crowd.addresses())
            hosts.append(hosts.empty() ? "all = " : ",").append(address);
        return resultOf(line + " --timeout 60 -H all --hosts " + folder.write("hosts", hosts));
    }

    Crowd crowd{many};
    TemporaryFolder folder;
};

TEST_F(OrxctlCrowd, IsAskedSideBySide) {
    const auto result = callAll("status");
    EXPECT_EQ(result.ending, "exit status 0");
    const auto lines = linesOf(result.output);
    const auto addresses = crowd.addresses();
    ASSERT_THAT(lines, SizeIs(1 + many));
    for (std::size_t number = 0; number < many; ++number)
        EXPECT_THAT(lines[1 + number],
                    row(addresses[number], " " + std::to_string(number) + "/2000 "));
}

TEST_F(OrxctlCrowd, GetsACommandOnceEach) {
    const auto result = callAll("FREEZE");
    EXPECT_EQ(result.ending, "exit status 0");
    EXPECT_THAT(linesOf(result.output), AllOf(SizeIs(1 + many), Contains(HasSubstr("sent"))));
    EXPECT_EQ(crowd.countOfThoseWith("FREEZE"), many);
}

}  // namespace
}  // namespace orx::test
