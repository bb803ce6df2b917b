// Takes in all that comes out of a descriptor, on a thread of its own, so that the other side never
// has to wait for the test.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "core/FileDescriptor.h"

namespace orx::test {

class ByteRecorder {
  public:
    using Condition = std::function<bool(const std::string& bytes)>;

    /// Records from `source`, which stays the caller's and must outlive the recorder.
    explicit ByteRecorder(int source);
    ByteRecorder(const ByteRecorder&) = delete;
    ByteRecorder& operator=(const ByteRecorder&) = delete;
    ~ByteRecorder();

    /// All bytes up to now; those that the other side wrote before this call are among them.
    [[nodiscard]] std::string bytes();

    [[nodiscard]] std::size_t size();

    /// Forgets the first `count` bytes; what counts places must begin anew.
    void forget(std::size_t count);

    /// Waits until the bytes are as `condition` wants them. Throws, naming `what` and showing the
    /// bytes, when they end before or patience does.
    void waitUntil(const Condition& condition, const std::string& what) const;

    /// Waits until there are more than `known` bytes; `atMost` so long, which is no mistake.
    void waitForMore(std::size_t known, std::chrono::milliseconds atMost) const;

    /// Waits until the other side has closed and all bytes are here.
    void waitForEnd() const;

  private:
    void record();
    [[nodiscard]] bool waitForBytes() const;
    void takeWhatIsThere();

    const int source;
    const FileDescriptor stopRequest;
    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    std::string recorded;
    bool ended = false;
    std::thread thread;
};

}  // namespace orx::test
