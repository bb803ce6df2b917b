#include <atomic>
#include <csignal>
#include <functional>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/Thread.h"
#include "support/ProcessCounts.h"
#include "support/WaitUntil.h"

namespace orx::test {
namespace {

static_assert(std::has_virtual_destructor_v<Thread>);
static_assert(std::is_abstract_v<Thread>);

class Worker final : public Thread {
  public:
    explicit Worker(std::function<void()> work) : body(std::move(work)) {}

    void run() override {
        runner = thisThread();
        body();
    }

    std::atomic<pid_t> runner = 0;  ///< the thread that ran it last

  private:
    std::function<void()> body;
};

TEST(Thread, RunsOnAThreadOfItsOwn) {
    Worker worker([] {});
    worker.start();
    worker.waitUntilStopped();
    EXPECT_NE(worker.runner, 0);
    EXPECT_NE(worker.runner, thisThread());
}

TEST(Thread, IsNotWaitedForByStart) {
    std::atomic<bool> released = false;
    Worker worker([&released] { EXPECT_TRUE(waitUntil([&released] { return released.load(); })); });
    worker.start();
    released = true;
    worker.waitUntilStopped();
}

TEST(Thread, KnowsWhetherItWasStarted) {
    Worker worker([] {});
    EXPECT_FALSE(worker.wasStarted());
    worker.start();
    EXPECT_TRUE(worker.wasStarted());
    worker.waitUntilStopped();
    EXPECT_TRUE(worker.wasStarted());
}

TEST(Thread, NeedsNoWaitWhereItWasNeverStarted) {
    int runs = 0;
    const Worker worker([&runs] { ++runs; });
    worker.waitUntilStopped();
    EXPECT_EQ(runs, 0);
}

TEST(Thread, IsWaitedForUntilItHasLeftItsBody) {
    std::atomic<bool> finished = false;
    Worker worker([&finished, waiter = thisThread()] {
        EXPECT_TRUE(waitUntilAsleep(waiter));
        finished = true;
    });
    worker.start();
    worker.waitUntilStopped();
    EXPECT_TRUE(finished);
    EXPECT_TRUE(waitUntil([&finished] { return finished.load(); }));
}

TEST(Thread, MayBeWaitedForMoreThanOnce) {
    int runs = 0;
    Worker worker([&runs] { ++runs; });
    worker.start();
    worker.waitUntilStopped();
    worker.waitUntilStopped();
    EXPECT_EQ(runs, 1);
}

TEST(Thread, MayGoOnceItHasStopped) {
    Worker first([] {});
    first.startAndWait();
    const auto threads = runningThreads();
    for (int round = 0; round < 200; ++round) {
        auto worker = std::make_unique<Worker>([] {});
        worker->start();
        worker->waitUntilStopped();
        worker.reset();
    }
    EXPECT_TRUE(waitUntil([threads] { return runningThreads() <= threads; }))
        << "a thread is left over";
}

TEST(Thread, IsWaitedForByStartAndWait) {
    bool finished = false;
    Worker worker([&finished, starter = thisThread()] {
        EXPECT_TRUE(waitUntilAsleep(starter));
        finished = true;
    });
    worker.startAndWait();
    EXPECT_TRUE(finished);
    EXPECT_NE(worker.runner, thisThread());
    EXPECT_FALSE(worker.wasStarted());
}

TEST(Thread, IsReachedThroughItsBaseClass) {
    int runs = 0;
    std::unique_ptr<Thread> thread = std::make_unique<Worker>([&runs] { ++runs; });
    thread->startAndWait();
    EXPECT_EQ(runs, 1);
}

TEST(ThreadDeathTest, AnErrorThatLeavesTheBodyEndsTheProcess) {
    Worker worker([] { throw std::runtime_error("out of the worker"); });
    EXPECT_EXIT(worker.startAndWait(), testing::KilledBySignal(SIGABRT), "out of the worker");
    const auto startDetached = [&worker] {
        worker.start();
        worker.waitUntilStopped();
    };
    EXPECT_EXIT(startDetached(), testing::KilledBySignal(SIGABRT), "out of the worker");
}

}  // namespace
}  // namespace orx::test
