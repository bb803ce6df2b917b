// Measurements that mostly wait, made several at a time.
#pragma once

#include <atomic>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace orx::test {

/// Calls `work(number, channel)` for every number below `count`. Calls at the same time differ in
/// their channel. Throws what the first failing call throws, once all calls have ended.
inline void workSideBySide(std::size_t count,
                           const std::function<void(std::size_t number, int channel)>& work) {
    constexpr int atATime = 8;
    std::atomic<std::size_t> next = 0;
    std::mutex mutex;
    std::exception_ptr failure;
    const auto workSome = [&](int channel) {
        try {
            for (auto number = next++; number < count; number = next++)
                work(number, channel);
        } catch (...) {
            const std::lock_guard lock(mutex);
            if (!failure) failure = std::current_exception();
        }
    };
    std::vector<std::thread> threads;
    for (int channel = 0; channel < atATime; ++channel)
        threads.emplace_back(workSome, channel);
    for (auto& thread : threads)
        thread.join();
    if (failure) std::rethrow_exception(failure);
}

}  // namespace orx::test
