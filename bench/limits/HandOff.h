// Datagrams that one thread hands to another, the queue of a daemon at its plainest.
#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <utility>

namespace orx::bench {

class HandOff {
  public:
    void give(std::string datagram) {
        {
            const std::lock_guard lock(mutex);
            waiting.push_back(std::move(datagram));
        }
        given.notify_one();
    }

    /// Blocks until there is one.
    [[nodiscard]] std::string take() {
        std::unique_lock lock(mutex);
        given.wait(lock, [this] { return !waiting.empty(); });
        auto datagram = std::move(waiting.front());
        waiting.pop_front();
        return datagram;
    }

  private:
    std::mutex mutex;
    std::condition_variable given;
    std::deque<std::string> waiting;
};

}  // namespace orx::bench
