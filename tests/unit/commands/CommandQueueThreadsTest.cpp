// The queue between the threads that push and the one that executes.
#include <atomic>
#include <csignal>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/CommandQueue.h"
#include "commands/Keywords.h"
#include "support/CapturedOutput.h"
#include "support/WaitUntil.h"
#include "unit/commands/RecordingExecutor.h"

namespace orx::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

CommandPtr command(const std::string& line) {
    return std::make_shared<const Command>(line);
}

class CommandQueueThreads : public testing::Test {
  protected:
    std::shared_ptr<RecordingExecutor> executor = std::make_shared<RecordingExecutor>();
    CommandQueue queue{executor};
};

TEST_F(CommandQueueThreads, ExecuteOnTheQueuesOwnThread) {
    pid_t executing = 0;
    executor->onExecute = [&executing](const Command&) { executing = thisThread(); };
    queue.push(command("QUIT"));
    outputOf([this] { queue.startAndWait(); });
    EXPECT_NE(executing, 0);
    EXPECT_NE(executing, thisThread());
}

TEST_F(CommandQueueThreads, SleepUntilACommandArrives) {
    pid_t waiting = 0;
    executor->onExecute = [&waiting](const Command&) { waiting = thisThread(); };
    const auto output = outputOf([this, &waiting] {
        queue.push(command("ON"));
        std::thread runner([this] { queue.run(); });
        EXPECT_TRUE(waitUntil([this] { return queue.handledCount() == 1; }));
        EXPECT_TRUE(waitUntilAsleep(waiting));
        queue.push(command("OFF"));
        EXPECT_TRUE(waitUntil([this] { return queue.handledCount() == 2; }));
        EXPECT_TRUE(waitUntilAsleep(waiting));
        queue.push(command("QUIT"));
        runner.join();
    });
    EXPECT_THAT(executor->executed, ElementsAre("ON", "OFF", "QUIT"));
    EXPECT_THAT(output, HasSubstr("[CMDQ] stop.\n"));
}

TEST_F(CommandQueueThreads, PushOnlyBetweenExecutions) {
    std::atomic<pid_t> pushing = 0;
    std::atomic<bool> pushed = false;
    bool pushedWhileExecuting = true;
    std::thread pusher;
    executor->onExecute = [&](const Command& executed) {
        if (!executed.is(CMD_POWER_ON)) return;
        pusher = std::thread([&] {
            const auto late = command("OFF");
            pushing = thisThread();
            queue.push(late);
            pushed = true;
            queue.push(command("QUIT"));
        });
        EXPECT_TRUE(waitUntil([&] { return pushed || (pushing != 0 && isAsleep(pushing)); }));
        pushedWhileExecuting = pushed;
    };
    queue.push(command("ON"));
    outputOf([&] {
        queue.startAndWait();
        pusher.join();
    });
    EXPECT_FALSE(pushedWhileExecuting);
    EXPECT_THAT(executor->executed, ElementsAre("ON", "OFF", "QUIT"));
}

TEST_F(CommandQueueThreads, LoseNoCommandAndKeepTheOrderOfEachPusher) {
    constexpr int pushers = 4;
    constexpr int commandsEach = 200;
    std::vector<std::vector<std::string>> arrived(pushers);
    executor->onExecute = [&arrived](const Command& executed) {
        if (executed.is(CMD_QUIT)) return;
        const auto& arguments = executed.arguments();
        arrived.at(std::stoul(arguments.at(0))).push_back(arguments.at(1));
    };
    outputOf([this] {
        std::thread runner([this] { queue.run(); });
        std::vector<std::thread> threads;
        for (int pusher = 0; pusher < pushers; ++pusher) {
            threads.emplace_back([this, pusher] {
                for (int number = 0; number < commandsEach; ++number)
                    queue.push(
                        command("ZOOM " + std::to_string(pusher) + " " + std::to_string(number)));
            });
        }
        for (auto& thread : threads)
            thread.join();
        queue.push(command("QUIT"));
        runner.join();
    });
    std::vector<std::string> expected;
    for (int number = 0; number < commandsEach; ++number)
        expected.push_back(std::to_string(number));
    for (const auto& numbers : arrived)
        EXPECT_EQ(numbers, expected);
    EXPECT_EQ(queue.receivedCount(), 1U + pushers * commandsEach);
    EXPECT_EQ(queue.handledCount(), 0U + pushers * commandsEach);
}

TEST(CommandQueueDeathTest, AnErrorWhileACommandExecutesEndsTheProcessAtOnce) {
    const auto executor = std::make_shared<RecordingExecutor>();
    executor->onExecute = [](const Command&) { throw std::invalid_argument("stoi"); };
    CommandQueue queue(executor);
    queue.push(command("ON"));
    queue.push(command("QUIT"));
    const auto runToTheEnd = [&queue] {
        ::dup2(STDERR_FILENO, STDOUT_FILENO);  // where the test looks
        queue.startAndWait();
    };
    EXPECT_EXIT(runToTheEnd(), testing::KilledBySignal(SIGABRT),
                AllOf(HasSubstr("[CMDQ] executing cmd: ON"), HasSubstr("stoi"),
                      Not(HasSubstr("[CMDQ] stop."))));
}

}  // namespace
}  // namespace orx::test
