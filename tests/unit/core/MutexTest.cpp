#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "core/Mutex.h"
#include "support/WaitUntil.h"

namespace orx::test {
namespace {

/// A number that only its mutex keeps whole.
struct Counter {
    Mutex mutex;
    Condition changed;
    int value ORX_GUARDED_BY(mutex) = 0;

    void add() {
        const MutexLock lock(mutex);
        ++value;
        changed.notifyAll();
    }
    int get() {
        const MutexLock lock(mutex);
        return value;
    }
    void waitFor(int wanted) {
        const MutexLock lock(mutex);
        while (value < wanted)
            changed.wait(mutex);
    }
};

TEST(MutexLock, LetsOneThreadInAtATime) {
    constexpr int threadCount = 4;
    constexpr int rounds = 5000;
    Counter counter;
    std::vector<std::thread> threads;
    for (int number = 0; number < threadCount; ++number) {
        threads.emplace_back([&counter] {
            for (int round = 0; round < rounds; ++round)
                counter.add();
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(counter.get(), threadCount * rounds);
}

TEST(MutexLock, HoldsTheMutexToTheEndOfItsScope) {
    Counter counter;
    std::atomic<pid_t> adder = 0;
    std::thread thread;
    {
        const MutexLock lock(counter.mutex);
        thread = std::thread([&] {
            adder = thisThread();
            counter.add();
        });
        EXPECT_TRUE(waitUntil([&] { return adder != 0 && isAsleep(adder); }));
        EXPECT_EQ(counter.value, 0);
    }
    thread.join();
    EXPECT_EQ(counter.get(), 1);
}

TEST(Condition, LetsOthersInWhileItWaits) {
    Counter counter;
    std::atomic<pid_t> waiter = 0;
    std::thread thread([&] {
        waiter = thisThread();
        counter.waitFor(2);
    });
    EXPECT_TRUE(waitUntil([&] { return waiter != 0 && isAsleep(waiter); }));
    counter.add();
    counter.add();
    thread.join();
    EXPECT_EQ(counter.get(), 2);
}

TEST(Condition, HoldsTheMutexAgainAfterTheWait) {
    Counter counter;
    std::thread waiter([&counter] {
        const MutexLock lock(counter.mutex);
        while (counter.value < 1)
            counter.changed.wait(counter.mutex);
        for (int round = 0; round < 5000; ++round)
            ++counter.value;
    });
    for (int round = 0; round < 5000; ++round)
        counter.add();
    waiter.join();
    EXPECT_EQ(counter.get(), 10'000);
}

TEST(Condition, WakesAllThatWait) {
    constexpr int waiterCount = 3;
    Counter counter;
    std::vector<std::atomic<pid_t>> waiters(waiterCount);
    std::vector<std::thread> threads;
    for (auto& waiter : waiters) {
        threads.emplace_back([&] {
            waiter = thisThread();
            counter.waitFor(1);
        });
    }
    for (const auto& waiter : waiters)
        EXPECT_TRUE(waitUntil([&waiter] { return waiter != 0 && isAsleep(waiter); }));
    counter.add();
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(counter.get(), 1);
}

}  // namespace
}  // namespace orx::test
