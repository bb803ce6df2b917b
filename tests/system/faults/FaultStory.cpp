#include "system/faults/FaultStory.h"

#include <cstring>

#include "system/harness/Waiting.h"

namespace orx::test {

std::string reason(int error) {
    return std::strerror(error);
}

void FaultStory::SetUp() {
    installation.write("lib/models.ccd", define({motorModel()}).bytes());
    installation.writeLensMemory(lensMemoryBefore);
    configure("");
}

void FaultStory::configure(const std::string& more) const {
    installation.writeConfiguration(configuration(
        "MOTOR", "definitionfile = " + installation.file("lib/models.ccd") + "\n" + more));
}

Launch FaultStory::underFaults() const {
    return {.environment = faults.environment()};
}

void FaultStory::lengthenLog() const {
    std::ofstream(installation.file("var/run/orx.log"), std::ios::app) << std::string(5000, '.');
}

void FaultStory::startUnderFaults() {
    start(underFaults());
    daemon->waitForLine("[PROJCTRL] start");
    daemon->waitForText(", waiting for commands");
    static_cast<void>(status());
    waitUntil([this] { return restsForAWhile(); }, [] { return "a daemon at rest"; });
    holdingsBefore = daemon->holdings();
}

bool FaultStory::restsForAWhile() {
    constexpr std::uint32_t times = 3;  // each with a pause of 50 milliseconds
    constexpr long fewTicks = 5;
    const auto calls = faults.calls();
    const auto begin = faults.sleeps();
    const auto cpuTime = daemon->cpuTime();
    waitUntil([&] { return faults.sleeps() - begin > times; },
              [] { return "the lens axes to be given time"; });
    return faults.calls() == calls && daemon->cpuTime() - cpuTime <= fewTicks;
}

void FaultStory::waitUntilCalm() {
    waitUntil([this] { return restsForAWhile() && daemon->holdings() == holdingsBefore; },
              [this] {
                  return "a daemon at rest with " + holdingsBefore.text() + ", it has " +
                         daemon->holdings().text();
              });
}

void FaultStory::expectToExecute() {
    const auto before = line.written().size();
    EXPECT_THAT(status(), testing::HasSubstr("; zoom: "));
    send("PICMUTE");
    waitUntilExecuted();
    EXPECT_EQ(line.written().substr(before), "PMUTE\r");
}

void FaultStory::expectToServe() {
    expectToExecute();
    auto newest = installation.log();
    newest.resize(2);
    EXPECT_THAT(newest, testing::UnorderedElementsAre(testing::HasSubstr(" cmd=NATMEMCLEAR ("),
                                                      testing::StartsWith("sending PMUTE")));
}

}  // namespace orx::test
