// The log file: where it lies, and how much of it is kept.
#include "system/harness/Story.h"

namespace orx::test {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::Not;

class LogFile : public Story {
  protected:
    /// The message of an unknown command with this number.
    static std::string unknown(int number) {
        return "src=" + ownAddress() + " unknown command (\"n" + std::to_string(number) + "\")";
    }
    /// Sends that many unknown commands in one datagram, numbered from 1.
    void sendUnknown(int count) const {
        std::string text;
        for (int number = 1; number <= count; ++number)
            text += "n" + std::to_string(number) + "\n";
        send(text);
    }
};

TEST_F(LogFile, HoldsTheNewest50LinesTheNewestFirst) {
    startWith(motorModel());
    sendUnknown(60);
    static_cast<void>(status());
    const auto log = installation.log();
    ASSERT_EQ(log.size(), 50U);
    for (int place = 0; place < 50; ++place)
        EXPECT_EQ(log.at(static_cast<std::size_t>(place)), unknown(60 - place));
}

TEST_F(LogFile, HoldsAllLinesUpToThe50th) {
    startWith(motorModel());
    sendUnknown(46);  // beside the four of the start
    static_cast<void>(status());
    EXPECT_EQ(installation.log().size(), 50U);
    EXPECT_EQ(installation.log().back(), "-- ORX logging start --");
    EXPECT_EQ(installation.log().front(), unknown(46));
}

TEST_F(LogFile, LiesWhereTheConfigurationSays) {
    startWith(motorModel(), "logfile = " + installation.file("other.log") + "\n");
    EXPECT_THAT(contentOf(installation.file("other.log")),
                testing::HasSubstr(" listening on " + controlAddress() + "\n"));
    EXPECT_FALSE(installation.has("var/run/orx.log"));
}

TEST_F(LogFile, ThatCannotBeWrittenIsDoneWithout) {
    for (const auto& path :
         {installation.file("missing/orx.log"), installation.prefix(), std::string()}) {
        startWith(motorModel(), "logfile = " + path + "\n");
        send("MEMLOAD 1");
        daemon->waitForLine("- could not load memory slot 1, no position data");
        EXPECT_EQ(quit(), "exit status 0") << path;
        EXPECT_FALSE(installation.has("missing"));
    }
}

TEST_F(LogFile, IsWrittenAgainAfterItWasTakenAway) {
    startWith(motorModel());
    installation.remove("var/run/orx.log");
    send("nonsense");
    static_cast<void>(status());
    EXPECT_EQ(installation.log().size(), 5U);
    EXPECT_EQ(installation.log().back(), "-- ORX logging start --");
}

}  // namespace
}  // namespace orx::test
