// Confirmation by the status: whether a command has arrived.
#include "system/orxctl/OrxctlStory.h"

namespace orx::test {
namespace {

using testing::HasSubstr;

const std::vector<std::string> visibleCommands{"ZOOMX 20", "AZ+", "MEMSAVE 3", "CLEARFLAGS",
                                               "QUIT"};

class OrxctlConfirm : public OrxctlStory {
  protected:
    void SetUp() override {
        startLens(motorModel());
        send("OVERRIDEZOPOS 9\nAZ+");
        waitForPositions("10/2000", "undefined");
    }
};

TEST_F(OrxctlConfirm, TellsOfCommandsThatHaveArrived) {
    for (const auto& command : visibleCommands) {
        if (command == "QUIT") continue;
        EXPECT_EQ(call(command + " --confirm --timeout 60"), done("confirmed\n")) << command;
    }
    // That nobody listens any more the proxy does not pass on.
    EXPECT_EQ(resultOf("QUIT --confirm --timeout 60 -H " + controlAddress()), done("confirmed\n"));
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
}

TEST_F(OrxctlConfirm, DoesNotTakeSilenceForTheEnd) {
    EXPECT_THAT(call("QUIT --confirm").output, HasSubstr("does not answer any more, or late"));
    EXPECT_EQ(daemon->waitForEnd(), "exit status 0");
}

TEST_F(OrxctlConfirm, TakesADaemonForLostThatDoesNotComeBack) {
    EXPECT_THAT(call("RESTART --confirm").output, HasSubstr("cannot tell"));
    installation.writeConfiguration("no setting");
    const auto result = call("RESTART --confirm");
    EXPECT_EQ(result.ending, "exit status 2");
    EXPECT_THAT(result.errors, HasSubstr("orxctl check"));
    EXPECT_EQ(daemon->waitForEnd(), "exit status 1");
}

TEST_F(OrxctlConfirm, NeedsAnAnswerToCompareWith) {
    proxy.setRule(Proxy::dropReplies);
    const auto result = call("AZ+ --force --confirm --timeout 0.5");
    EXPECT_EQ(result.ending, "exit status 2");
    EXPECT_THAT(result.errors, HasSubstr("no answer before it to compare with"));
}

TEST_F(OrxctlConfirm, TellsOfCommandsThatWereLost) {
    proxy.setRule(Proxy::dropCommands);
    std::vector<std::unique_ptr<Orxctl>> calls;
    for (const auto& command : visibleCommands)
        calls.push_back(std::make_unique<Orxctl>(toDaemon(command + " --confirm --timeout 3")));
    for (std::size_t number = 0; number < calls.size(); ++number) {
        const auto result = calls[number]->waitForEnd();
        EXPECT_EQ(result.ending, "exit status 2") << visibleCommands[number];
        EXPECT_EQ(result.output, "") << visibleCommands[number];
        EXPECT_THAT(result.errors, HasSubstr("sent, but")) << visibleCommands[number];
        EXPECT_EQ(proxy.count(visibleCommands[number]), 1U);
    }
    EXPECT_EQ(status(), "IDLE; zoom: 10/2000 focus: undefined;HELO \n");
}

TEST_F(OrxctlConfirm, TellsWhereTheStatusCannot) {
    EXPECT_EQ(call("MEMSAVE 3"), done());
    waitForStatus("IDLE; zoom: 10/2000 focus: undefined;HELO LCU \n");
    for (const auto* const command : {"ON", "ZOOMX 10", "MEMSAVE 4", "MEMLOAD 9", "SETDELAY 0"}) {
        const auto result = call(std::string(command) + " --confirm");
        EXPECT_EQ(result.ending, "exit status 0") << command;
        EXPECT_THAT(result.output, HasSubstr("cannot tell")) << command;
    }
    EXPECT_EQ(call("CLEARFLAGS"), done());
    EXPECT_THAT(call("CLEARFLAGS --confirm").output, HasSubstr("cannot tell"));
}

TEST_F(OrxctlConfirm, HoldsForEveryLineOfAShow) {
    const auto file = installation.write("show", "AZ+\nAZ-\nON\n");
    EXPECT_EQ(call("run --confirm " + file).ending, "exit status 0");
    proxy.setRule(Proxy::dropCommands);
    const auto result = call("run --confirm --timeout 1 " + file);
    EXPECT_EQ(result.ending, "exit status 2");
    EXPECT_THAT(result.errors, HasSubstr("show:1: sent, but"));
    EXPECT_EQ(proxy.count("AZ+"), 2U);
    EXPECT_EQ(proxy.count("AZ-"), 1U);
}

}  // namespace
}  // namespace orx::test
