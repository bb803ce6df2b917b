#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/CommandQueue.h"
#include "commands/Keywords.h"
#include "core/Log.h"
#include "support/CapturedOutput.h"
#include "support/TemporaryFolder.h"
#include "unit/commands/RecordingExecutor.h"

namespace orx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

const std::string invalidLine = "[CMDQ] received invalid command from control channel!?\n";

std::string executingLine(const std::string& command) {
    return "[CMDQ] executing cmd: " + command + " (rcvd from ctrlchan)\n";
}

void pushAll(CommandQueue& queue, const std::vector<std::string>& lines) {
    for (const auto& line : lines)
        queue.push(std::make_shared<const Command>(line));
}

class CommandQueueTest : public testing::Test {
  protected:
    CommandQueueTest() { openLog(logPath); }

    /// Pushes the lines and runs the queue to its end; gives what it wrote.
    std::string run(const std::vector<std::string>& lines) {
        pushAll(queue, lines);
        return outputOf([this] { queue.run(); });
    }

    TemporaryFolder folder;
    std::string logPath = folder.file("log");
    std::shared_ptr<RecordingExecutor> executor = std::make_shared<RecordingExecutor>();
    CommandQueue queue{executor};
};

TEST_F(CommandQueueTest, CountsNothingAtFirst) {
    EXPECT_EQ(queue.receivedCount(), 0U);
    EXPECT_EQ(queue.handledCount(), 0U);
}

TEST_F(CommandQueueTest, ExecutesQuitAndThenEnds) {
    EXPECT_EQ(run({"QUIT"}), "[CMDQ] start\n" + executingLine("QUIT") + "[CMDQ] stop.\n");
    EXPECT_THAT(executor->executed, ElementsAre("QUIT"));
    EXPECT_EQ(queue.handledCount(), 0U);
    EXPECT_EQ(queue.receivedCount(), 1U);
}

TEST_F(CommandQueueTest, ExecutesCommandsInTheOrderOfTheirArrival) {
    EXPECT_EQ(run({"ON", "ZOOM 100 200", "ON", "F+++", "QUIT"}),
              "[CMDQ] start\n" + executingLine("ON") + executingLine("ZOOM (100,200)") +
                  executingLine("ON") + executingLine("F+++") + executingLine("QUIT") +
                  "[CMDQ] stop.\n");
    EXPECT_THAT(executor->executed, ElementsAre("ON", "ZOOM (100,200)", "ON", "F+++", "QUIT"));
    EXPECT_EQ(queue.handledCount(), 4U);
    EXPECT_EQ(queue.receivedCount(), 5U);
}

TEST_F(CommandQueueTest, DropsAnInvalidCommandBetweenValidOnes) {
    EXPECT_EQ(run({"ON", "zoom 5", "OFF", "QUIT"}), "[CMDQ] start\n" + executingLine("ON") +
                                                        invalidLine + executingLine("OFF") +
                                                        executingLine("QUIT") + "[CMDQ] stop.\n");
    EXPECT_THAT(executor->executed, ElementsAre("ON", "OFF", "QUIT"));
    EXPECT_EQ(queue.handledCount(), 2U);
    EXPECT_EQ(queue.receivedCount(), 4U);
}

TEST_F(CommandQueueTest, LogsNeitherValidNorInvalidCommands) {
    run({"ON", "zoom 5", "", "QUIT"});
    EXPECT_EQ(contentOf(logPath), "");
}

TEST_F(CommandQueueTest, ShowsACommandThatLostItsArguments) {
    EXPECT_THAT(run({"ZOOM abc", "QUIT"}), HasSubstr(executingLine("ZOOM")));
    EXPECT_THAT(executor->executed, ElementsAre("ZOOM", "QUIT"));
}

TEST_F(CommandQueueTest, CallsBackOnceOnRestartAndThenEnds) {
    int calls = 0;
    queue.setRestartCallback([&calls] { ++calls; });
    EXPECT_EQ(run({"ON", "RESTART"}),
              "[CMDQ] start\n" + executingLine("ON") + executingLine("RESTART") + "[CMDQ] stop.\n");
    EXPECT_EQ(calls, 1);
    EXPECT_THAT(executor->executed, ElementsAre("ON", "RESTART"));
    EXPECT_EQ(queue.handledCount(), 1U);
    EXPECT_EQ(queue.receivedCount(), 2U);
}

TEST_F(CommandQueueTest, ExecutesRestartBeforeItCallsBack) {
    std::size_t executedBefore = 0;
    queue.setRestartCallback([&] { executedBefore = executor->executed.size(); });
    run({"RESTART"});
    EXPECT_EQ(executedBefore, 1U);
}

TEST_F(CommandQueueTest, DoesNotCallBackOnQuit) {
    int calls = 0;
    queue.setRestartCallback([&calls] { ++calls; });
    run({"ON", "QUIT"});
    EXPECT_EQ(calls, 0);
}

TEST_F(CommandQueueTest, CallsTheCallbackThatWasSetLast) {
    std::vector<std::string> calls;
    queue.setRestartCallback([&calls] { calls.emplace_back("first"); });
    queue.setRestartCallback([&calls] { calls.emplace_back("second"); });
    run({"RESTART"});
    EXPECT_THAT(calls, ElementsAre("second"));
}

TEST_F(CommandQueueTest, FailsOnRestartWithoutACallback) {
    pushAll(queue, {"RESTART"});
    EXPECT_THROW(outputOf([this] { queue.run(); }), std::bad_function_call);
    EXPECT_THAT(executor->executed, ElementsAre("RESTART"));
}

TEST_F(CommandQueueTest, DiscardsWhatStillWaitsAtTheEnd) {
    for (const std::string last : {"QUIT", "RESTART"}) {
        SCOPED_TRACE(last);
        CommandQueue ending(executor);
        ending.setRestartCallback([] {});
        executor->executed.clear();
        pushAll(ending, {"ON", last, "OFF", "QUIT"});
        EXPECT_THAT(outputOf([&ending] { ending.run(); }), Not(HasSubstr("OFF")));
        EXPECT_THAT(executor->executed, ElementsAre("ON", last));
        EXPECT_EQ(ending.receivedCount(), 4U);
    }
}

TEST_F(CommandQueueTest, LetsGoOfACommandThatItHasExecuted) {
    const auto command = std::make_shared<const Command>("ON");
    queue.push(command);
    EXPECT_EQ(command.use_count(), 2);
    run({"QUIT"});
    EXPECT_EQ(command.use_count(), 1);
}

TEST_F(CommandQueueTest, LetsAnErrorOfTheExecutorOut) {
    executor->onExecute = [](const Command& command) {
        if (command.is(CMD_SET_DELAY)) throw std::out_of_range("stoi");
    };
    pushAll(queue, {"ON", "SETDELAY 1", "OFF", "QUIT"});
    testing::internal::CaptureStdout();
    EXPECT_THROW(queue.run(), std::out_of_range);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "[CMDQ] start\n" + executingLine("ON") + executingLine("SETDELAY (1)"));
    EXPECT_THAT(executor->executed, ElementsAre("ON", "SETDELAY (1)"));
    EXPECT_EQ(queue.handledCount(), 1U);
}

TEST_F(CommandQueueTest, SaysThatItRunsInDumbModeBeforeItStarts) {
    CommandQueue dumb(nullptr);
    pushAll(dumb, {"QUIT"});
    EXPECT_EQ(outputOf([&dumb] { dumb.run(); }),
              "[CMDQ] running in dumb mode (no valid projector)\n[CMDQ] start\n" +
                  executingLine("QUIT") + "[CMDQ] stop.\n");
    EXPECT_THAT(contentOf(logPath),
                MatchesRegex("[0-9:.]{15} running in dumb mode \\(no valid projector\\)\n"));
}

TEST_F(CommandQueueTest, ChecksShowsAndCountsInDumbMode) {
    CommandQueue dumb(nullptr);
    int calls = 0;
    dumb.setRestartCallback([&calls] { ++calls; });
    pushAll(dumb, {"ZOOM 5", "zoom 5", "RESTART"});
    EXPECT_EQ(outputOf([&dumb] { dumb.run(); }),
              "[CMDQ] running in dumb mode (no valid projector)\n[CMDQ] start\n" +
                  executingLine("ZOOM (5)") + invalidLine + executingLine("RESTART") +
                  "[CMDQ] stop.\n");
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(dumb.handledCount(), 1U);
    EXPECT_EQ(dumb.receivedCount(), 3U);
}

}  // namespace
}  // namespace orx::test
