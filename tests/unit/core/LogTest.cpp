#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/Log.h"
#include "support/CapturedOutput.h"
#include "support/FakeTime.h"
#include "support/TemporaryFolder.h"

namespace orx::test {
namespace {

using namespace std::string_literals;
using testing::EndsWith;
using testing::MatchesRegex;
using testing::StartsWith;

const std::string stamp = "00:00:00.000000 ";  // of a clock that stands at the epoch

void useTimeZone(const char* name) {
    ::setenv("TZ", name, 1);
    ::tzset();
}

std::vector<std::string> linesOf(const std::string& path) {
    std::vector<std::string> lines;
    std::istringstream content(contentOf(path));
    for (std::string line; std::getline(content, line);)
        lines.push_back(line);
    return lines;
}

class LogTest : public testing::Test {
  protected:
    LogTest() {
        useTimeZone("UTC");
        log.open(path);
    }
    ~LogTest() override {
        ::unsetenv("TZ");
        ::tzset();
    }

    void write(const std::string& message) { log.write(message, Echo::no); }

    std::string lineAt(time_t seconds, suseconds_t microseconds) {
        time.moment = {seconds, microseconds};
        write("x");
        return linesOf(path).front();
    }

    TemporaryFolder folder;
    const std::string path = folder.file("orx.log");
    FakeTime time;
    Log log{time};
};

TEST_F(LogTest, WritesTheTimeAndTheMessage) {
    time.moment = {14 * 3600 + 3 * 60 + 7, 45112};
    write("-- ORX logging start --");
    EXPECT_EQ(contentOf(path), "14:03:07.045112 -- ORX logging start --\n");
}

TEST_F(LogTest, PadsTheMicrosecondsToSixDigits) {
    EXPECT_EQ(lineAt(0, 0), "00:00:00.000000 x");
    EXPECT_EQ(lineAt(0, 1), "00:00:00.000001 x");
    EXPECT_EQ(lineAt(86399, 999'999), "23:59:59.999999 x");
    EXPECT_EQ(lineAt(86400, 100'000), "00:00:00.100000 x");
}

TEST_F(LogTest, StampsEachMessageWithItsOwnTime) {
    lineAt(1, 0);
    lineAt(2, 0);
    EXPECT_EQ(contentOf(path), "00:00:02.000000 x\n00:00:01.000000 x\n");
}

TEST_F(LogTest, WritesTheLocalTime) {
    useTimeZone("HERE-05:30");
    EXPECT_EQ(lineAt(0, 0), "05:30:00.000000 x");
    useTimeZone("THERE+01");
    EXPECT_EQ(lineAt(1, 0), "23:00:01.000000 x");
    EXPECT_EQ(lineAt(1, 2), "23:00:01.000002 x");
    EXPECT_EQ(lineAt(0, 3), "23:00:00.000003 x");  // a clock that was set back
}

TEST_F(LogTest, PutsTheNewestMessageFirst) {
    write("one");
    write("two");
    write("three");
    EXPECT_EQ(contentOf(path), stamp + "three\n" + stamp + "two\n" + stamp + "one\n");
}

TEST_F(LogTest, KeepsTheNewestFiftyMessages) {
    for (int number = 1; number <= 50; ++number)
        write(std::to_string(number));
    EXPECT_EQ(linesOf(path).size(), 50U);
    EXPECT_EQ(linesOf(path).back(), stamp + "1");
    write("51");
    const auto lines = linesOf(path);
    ASSERT_EQ(lines.size(), 50U);
    for (int place = 0; place < 50; ++place)
        EXPECT_EQ(lines[static_cast<std::size_t>(place)], stamp + std::to_string(51 - place));
    for (int number = 52; number <= 200; ++number)
        write(std::to_string(number));
    EXPECT_EQ(linesOf(path).size(), 50U);
    EXPECT_EQ(linesOf(path).front(), stamp + "200");
    EXPECT_EQ(linesOf(path).back(), stamp + "151");
}

TEST_F(LogTest, WritesMessagesAsTheyAre) {
    write("");
    write("50% of \\x0d \"quoted\" \xff");
    write("a\0b"s);
    EXPECT_EQ(contentOf(path),
              stamp + "a\0b\n"s + stamp + "50% of \\x0d \"quoted\" \xff\n" + stamp + "\n");
}

TEST_F(LogTest, WritesLongMessages) {
    const std::string message(100'000, 'm');
    write(message);
    EXPECT_EQ(contentOf(path), stamp + message + "\n");
}

TEST_F(LogTest, ReplacesALongerFileOfBefore) {
    folder.write("orx.log", std::string(10'000, 'o'));
    write("new");
    EXPECT_EQ(contentOf(path), stamp + "new\n");
}

TEST_F(LogTest, CutsOffWhatSomebodyElseHasAdded) {
    write("one");
    folder.write("orx.log", contentOf(path) + std::string(10'000, 'o'));
    write("two");
    EXPECT_EQ(contentOf(path), stamp + "two\n" + stamp + "one\n");
}

TEST_F(LogTest, WritesNothingUntilTheFirstMessage) {
    EXPECT_FALSE(std::filesystem::exists(path));
    folder.write("other.log", "as it was");
    log.open(folder.file("other.log"));
    EXPECT_EQ(contentOf(folder.file("other.log")), "as it was");
}

TEST_F(LogTest, ForgetsItsMessagesWhenItIsOpenedAnew) {
    write("before");
    log.open(path);
    EXPECT_EQ(contentOf(path), stamp + "before\n");
    write("after");
    EXPECT_EQ(contentOf(path), stamp + "after\n");
}

TEST_F(LogTest, LeavesTheFormerFileAloneOnceAnotherIsOpened) {
    write("before");
    log.open(folder.file("other.log"));
    write("after");
    EXPECT_EQ(contentOf(path), stamp + "before\n");
    EXPECT_EQ(contentOf(folder.file("other.log")), stamp + "after\n");
}

TEST_F(LogTest, IsBackWithTheNextMessageAfterTheFileWasDeleted) {
    write("one");
    std::filesystem::remove(path);
    write("two");
    EXPECT_EQ(contentOf(path), stamp + "two\n" + stamp + "one\n");
}

TEST_F(LogTest, KeepsMessagesInSilenceWhileTheirFolderIsMissing) {
    log.open(folder.file("later/orx.log"));
    EXPECT_EQ(outputOf([this] { write("one"); }), "");
    write("two");
    EXPECT_FALSE(std::filesystem::exists(folder.file("later")));
    std::filesystem::create_directory(folder.file("later"));
    write("three");
    EXPECT_EQ(contentOf(folder.file("later/orx.log")),
              stamp + "three\n" + stamp + "two\n" + stamp + "one\n");
}

TEST_F(LogTest, EchoesWhereThereIsNoFile) {
    for (const auto& missing : {folder.file("no/such/folder/log"), folder.path().string(), ""s}) {
        log.open(missing);
        EXPECT_EQ(outputOf([this] { log.write("heard", Echo::yes); }), "heard\n") << missing;
    }
}

TEST_F(LogTest, SurvivesAFullDisk) {
    std::filesystem::create_symlink("/dev/full", path);
    EXPECT_EQ(outputOf([this] { log.write("heard", Echo::yes); }), "heard\n");
    std::filesystem::remove(path);
    write("two");
    EXPECT_EQ(contentOf(path), stamp + "two\n" + stamp + "heard\n");
}

TEST_F(LogTest, EchoesTheBareMessage) {
    EXPECT_EQ(outputOf([this] { log.write("heard", Echo::yes); }), "heard\n");
    EXPECT_EQ(contentOf(path), stamp + "heard\n");
}

TEST_F(LogTest, EchoesATagThatIsNotLogged) {
    EXPECT_EQ(outputOf([this] { log.write("heard", Echo::yes, "[TAG] "); }), "[TAG] heard\n");
    EXPECT_EQ(contentOf(path), stamp + "heard\n");
}

TEST_F(LogTest, EchoesNothingUnlessAsked) {
    EXPECT_EQ(outputOf([this] {
                  log.write("unheard", Echo::no);
                  log.write("unheard", Echo::no, "[TAG] ");
              }),
              "");
    EXPECT_EQ(linesOf(path).size(), 2U);
}

TEST_F(LogTest, KeepsTheMessagesOfSeveralThreadsWholeAndInOrder) {
    constexpr int threadCount = 4;
    constexpr int messagesEach = 30;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([this, thread] {
            for (int number = 0; number < messagesEach; ++number)
                write(std::to_string(thread) + " " + std::to_string(number));
        });
    }
    for (auto& thread : threads)
        thread.join();
    const auto lines = linesOf(path);
    EXPECT_EQ(lines.size(), 50U);
    std::vector<int> expected(threadCount, messagesEach - 1);  // newest first
    for (const auto& line : lines) {
        std::smatch parts;
        ASSERT_TRUE(std::regex_match(line, parts, std::regex(stamp + "([0-3]) ([0-9]+)"))) << line;
        EXPECT_EQ(std::stoi(parts[2]), expected.at(std::stoul(parts[1]))--) << line;
    }
}

TEST_F(LogTest, OfTheProcessIsReachedFromEverywhere) {
    openLog(path);
    EXPECT_EQ(outputOf([] {
                  orx::log("one", Echo::no);
                  orx::log("two", Echo::yes);
                  orx::log("three", Echo::yes, "[TAG] ");
              }),
              "two\n[TAG] three\n");
    const auto lines = linesOf(path);
    openLog("");
    ASSERT_EQ(lines.size(), 3U);
    for (const auto& line : lines)
        EXPECT_THAT(line, MatchesRegex("[0-2][0-9]:[0-5][0-9]:[0-5][0-9]\\.[0-9]{6} [a-z]+"));
    EXPECT_THAT(lines[0], EndsWith(" three"));
    EXPECT_THAT(lines[1], EndsWith(" two"));
    EXPECT_THAT(lines[2], EndsWith(" one"));
}

TEST_F(LogTest, OfTheProcessIsOpenedAnew) {
    openLog(path);
    orx::log("before", Echo::no);
    openLog(path);
    orx::log("after", Echo::no);
    const auto lines = linesOf(path);
    openLog("");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_THAT(lines[0], EndsWith(" after"));
}

TEST_F(LogTest, OfTheProcessShowsTheTimeOfDay) {
    openLog(path);
    const auto clockTime = [] {
        const auto now = std::time(nullptr);
        char text[sizeof "HH:MM:SS"] = "";
        std::strftime(text, sizeof text, "%H:%M:%S", std::gmtime(&now));
        return std::string(text);
    };
    const auto before = clockTime();
    orx::log("x", Echo::no);
    const auto after = clockTime();
    const auto line = contentOf(path);
    openLog("");
    EXPECT_THAT(line, testing::AnyOf(StartsWith(before + "."), StartsWith(after + ".")));
}

}  // namespace
}  // namespace orx::test
