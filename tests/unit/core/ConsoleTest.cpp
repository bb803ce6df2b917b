#include <csignal>
#include <fcntl.h>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>

#include "core/Console.h"
#include "support/CapturedOutput.h"
#include "unit/core/PipedOutput.h"

namespace orx::test {
namespace {

using namespace std::string_literals;

TEST(Console, EndsALineWithALineFeed) {
    EXPECT_EQ(outputOf([] { printLine("a line"); }), "a line\n");
    EXPECT_EQ(outputOf([] { printLine(""); }), "\n");
    EXPECT_EQ(outputOf([] { printLine("one\ntwo"); }), "one\ntwo\n");
}

TEST(Console, WritesATextAsItIs) {
    EXPECT_EQ(outputOf([] { printText("one\ntwo"); }), "one\ntwo");
    EXPECT_EQ(outputOf([] { printText(""); }), "");
}

TEST(Console, WritesBytesOfAnyValue) {
    const auto bytes = "\0\r\x01\xff\xc3"s;
    EXPECT_EQ(outputOf([&bytes] { printLine(bytes); }), bytes + "\n");
    EXPECT_EQ(outputOf([&bytes] { printText(bytes); }), bytes);
}

TEST(Console, WritesInTheOrderOfTheCalls) {
    EXPECT_EQ(outputOf([] {
                  printLine("1");
                  printText("2\n3\n");
                  printLine("4");
              }),
              "1\n2\n3\n4\n");
}

TEST(Console, ShowsALineAtOnceThroughAPipe) {
    const Pipe pipe;
    std::string first;
    std::string second;
    {
        const StandardOutputTo piped(pipe.input.get());
        printLine("at once");
        first = pipe.read();
        printText("this too\n");
        second = pipe.read();
    }
    EXPECT_EQ(first, "at once\n");
    EXPECT_EQ(second, "this too\n");
}

TEST(Console, SurvivesThatNobodyReads) {
    Pipe pipe;
    pipe.output.close();
    const auto former = std::signal(SIGPIPE, SIG_IGN);
    {
        const StandardOutputTo piped(pipe.input.get());
        printLine("lost");
        printText("lost too\n");
    }
    std::signal(SIGPIPE, former);
    EXPECT_EQ(outputOf([] { printLine("heard again"); }), "heard again\n");
}

TEST(Console, SurvivesAClosedStandardOutput) {
    {
        const StandardOutputTo any(STDERR_FILENO);
        ::close(STDOUT_FILENO);
        printLine("lost");
        printText("lost too\n");
    }
    EXPECT_EQ(outputOf([] { printLine("heard again"); }), "heard again\n");
}

TEST(Console, SurvivesAFullStandardOutput) {
    const FileDescriptor full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    ASSERT_TRUE(full.isOpen());
    {
        const StandardOutputTo nowhere(full.get());
        printLine("lost");
    }
    EXPECT_EQ(outputOf([] { printLine("heard again"); }), "heard again\n");
}

}  // namespace
}  // namespace orx::test
