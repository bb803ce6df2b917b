// The base of the workers that run beside the main thread.
//
// A worker ends by its own loop condition; nothing here stops it. A detached worker must be given
// the time to end before its object goes: call `waitUntilStopped` first.
#pragma once

#include <future>

namespace orx {

class Thread {
  public:
    Thread() = default;
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;
    virtual ~Thread() = default;

    /// The body of the worker. An exception that leaves it ends the process.
    virtual void run() = 0;

    /// Calls `run` on a new, detached thread and returns at once. Call it at most once.
    /// Throws `std::system_error` where the system has no thread to give.
    void start();

    /// Calls `run` on a new thread and waits until it returns. Throws as `start`.
    void startAndWait();

    /// Whether `start` has begun a thread, running or ended.
    [[nodiscard]] bool wasStarted() const noexcept { return stopped.valid(); }

    /// Waits until the thread that `start` began has left `run` and will not touch this object
    /// again. Returns at once where none was begun.
    void waitUntilStopped() const;

  private:
    std::future<void> stopped;
};

}  // namespace orx
