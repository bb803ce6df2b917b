// A thread that looks after sockets: it waits until some of them can be read, and calls for that.
#pragma once

#include <functional>
#include <thread>
#include <vector>

#include "core/FileDescriptor.h"

namespace orx::test {

class ReadingThread {
  public:
    /// Gives the descriptors to wait for; asked ahead of every wait, on the thread.
    using Descriptors = std::function<std::vector<int>()>;

    /// Calls `read` on the thread whenever any of the descriptors can be read. Both must not throw,
    /// and what they use must outlive this.
    ReadingThread(Descriptors waitedFor, std::function<void()> readAll);
    ReadingThread(const ReadingThread&) = delete;
    ReadingThread& operator=(const ReadingThread&) = delete;
    ~ReadingThread();

  private:
    void work() const;

    const Descriptors descriptors;
    const std::function<void()> read;
    const FileDescriptor stopRequest;
    std::thread thread;
};

}  // namespace orx::test
