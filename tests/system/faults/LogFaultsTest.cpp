// A log that cannot be written costs the log and nothing else, and is whole again as soon as it
// can.
#include <algorithm>
#include <cerrno>

#include "system/faults/FaultStory.h"

namespace orx::test {
namespace {

using testing::EndsWith;

class LogFaults : public FaultStory {
  protected:
    /// An unknown command with this number, of about that many characters.
    static std::string unknown(int number, std::size_t size) {
        return "n" + std::to_string(number) + "-" + std::string(size, 'x');
    }
    [[nodiscard]] static std::string messageOf(const std::string& command) {
        return "src=" + ownAddress() + " unknown command (\"" + command + "\")";
    }
    /// Sends as many unknown commands as the log keeps and waits until they have been told of.
    void sendUnknown(std::size_t size) const {
        for (int number = 1; number <= linesKept; ++number) {
            send(unknown(number, size));
            daemon->waitForText(messageOf(unknown(number, size)), 0);
        }
        static_cast<void>(status());
    }

    static constexpr int linesKept = 50;
};

TEST_F(LogFaults, AFullDiskCostsTheLogAloneAndOnlyAsLongAsItIsFull) {
    startUnderFaults();
    faults.arm({.call = "write", .place = "orx.log", .error = ENOSPC, .times = Fault::always});
    send("lost");
    faults.waitUntilDone();
    expectToExecute();
    EXPECT_THAT(installation.log(), testing::IsEmpty());
    faults.disarm();
    expectToServe();
    EXPECT_THAT(installation.log(), testing::Contains(messageOf("lost")));
    EXPECT_EQ(installation.log().back(), "-- ORX logging start --");
    waitUntilCalm();
}

TEST_F(LogFaults, AFolderThatVanishesAndComesBackFindsTheWholeLogAgain) {
    startUnderFaults();
    installation.remove("var/run");
    send("lost");
    expectToExecute();
    EXPECT_FALSE(installation.has("var/run"));
    installation.block("var/run");
    expectToServe();
    EXPECT_THAT(installation.log(), testing::Contains(messageOf("lost")));
    EXPECT_EQ(installation.log().back(), "-- ORX logging start --");
    waitUntilCalm();
}

TEST_F(LogFaults, WritesThatTakeHalfOfTheBytesLoseNothing) {
    startUnderFaults();
    for (const auto* place : {"orx.log", "pipe:"}) {
        faults.arm(
            {.call = "write", .place = place, .deed = Deed::shorten, .times = Fault::always});
        const auto console = daemon->place();
        send("halved");
        static_cast<void>(status());
        faults.waitUntilDone();
        EXPECT_EQ(installation.log().front(), messageOf("halved"));
        EXPECT_EQ(installation.log().back(), "-- ORX logging start --");
        daemon->waitForText(messageOf("halved"), console);
    }
    faults.disarm();
    expectToServe();
}

/// A daemon whose log lies on a disk of its own, with room for a few pages.
class LogOnATinyDisk : public LogFaults {
  protected:
    /// What turns into `command` once the disk is there, in a namespace of its own.
    [[nodiscard]] std::vector<std::string> onTinyDisk() const {
        return {"/usr/bin/unshare",
                "--user",
                "--map-root-user",
                "--mount",
                "--",
                "/bin/sh",
                "-c",
                "mount -t tmpfs -o size=16k none \"$0\" &&"
                " exec setpriv --pdeathsig KILL -- \"$@\"",
                installation.file("var/run")};
    }
    /// Whether this system lets its users have such disks.
    [[nodiscard]] bool isPossible() const {
        auto command = onTinyDisk();
        command.emplace_back("/bin/true");
        ChildProcess probe(ChildStart{.command = command});
        probe.expectErrorText();
        return probe.waitForEnd() == "exit status 0";
    }
    /// What the daemon finds in its log file; nobody else does.
    [[nodiscard]] std::string log() const {
        return contentOf("/proc/" + std::to_string(daemon->id()) + "/root" +
                         installation.file("var/run/orx.log"));
    }
};

TEST_F(LogOnATinyDisk, IsCutShortAndWholeAgainOnceItFits) {
    if (!isPossible()) GTEST_SKIP() << "users may not mount a disk here";
    constexpr std::size_t tooLong = 1900;
    start({.through = onTinyDisk()});
    sendUnknown(tooLong);
    const auto cut = log();
    EXPECT_THAT(cut, EndsWith("x"));
    EXPECT_THAT(cut.substr(cut.find(' ') + 1),
                testing::StartsWith(messageOf(unknown(linesKept, tooLong)) + "\n"));
    expectToExecute();
    sendUnknown(1);
    const auto whole = log();
    EXPECT_EQ(std::ranges::count(whole, '\n'), linesKept);
    EXPECT_THAT(whole, EndsWith(messageOf(unknown(1, 1)) + "\n"));
}

}  // namespace
}  // namespace orx::test
