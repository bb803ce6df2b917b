#include "system/harness/Story.h"

#include "system/harness/Waiting.h"

namespace orx::test {

void Story::TearDown() {
    if (!daemon || daemon->hasEnded() || HasFatalFailure()) return;
    EXPECT_EQ(quit(), "exit status 0");
}

std::string Story::configuration(const std::string& projector, const std::string& more) const {
    return "projector = " + projector + "\nserial.device = " + line.device() +
           "\ncontrolchannel = " + controlAddress() + "\n" + more;
}

void Story::install(const Model& model, const std::string& more) const {
    installation.writeDefinitions(define({model}));
    installation.writeConfiguration(configuration(model.name, more));
}

void Story::start(const Launch& launch) {
    daemon = std::make_unique<Daemon>(installation.prefix(), launch);
    daemon->waitForLine("[CMDQ] start");
}

void Story::startWith(const Model& model, const std::string& more) {
    install(model, more);
    start();
}

std::string Story::startAndWaitForEnd(const Launch& launch) {
    daemon = std::make_unique<Daemon>(installation.prefix(), launch);
    return daemon->waitForEnd();
}

void Story::restart() {
    const auto place = daemon->place();
    send("RESTART");
    daemon->waitForLine("[CMDQ] start", place);
}

/// Commands are executed in order, so the line of one that does nothing tells of all before it.
void Story::waitUntilExecuted() {
    const auto ticket = std::to_string(++tickets);
    send("NATMEMCLEAR " + ticket);
    daemon->waitForLine("[CMDQ] executing cmd: NATMEMCLEAR (" + ticket + ") (rcvd from ctrlchan)");
}

void Story::waitForStatus(const std::string& expected) const {
    std::string last;
    waitUntil(
        [&] {
            last = status();
            return last == expected;
        },
        [&] { return "the status " + expected + "it is " + last; });
}

void Story::waitForLog(const std::string& message) const {
    waitUntil(
        [&] {
            const auto lines = installation.logLines();
            return !lines.empty() && lines.front().ends_with(" " + message);
        },
        [&] { return "the log message \"" + message + "\""; });
}

std::string Story::quit() {
    send("QUIT");
    return daemon->waitForEnd();
}

}  // namespace orx::test
