#include "system/orxctl/ReadingThread.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <utility>

namespace orx::test {

ReadingThread::ReadingThread(Descriptors waitedFor, std::function<void()> readAll)
    : descriptors(std::move(waitedFor)),
      read(std::move(readAll)),
      stopRequest(::eventfd(0, EFD_CLOEXEC)),
      thread([this] { work(); }) {}

ReadingThread::~ReadingThread() {
    ::eventfd_write(stopRequest.get(), 1);
    thread.join();
}

void ReadingThread::work() const {
    for (;;) {
        std::vector<pollfd> events{{stopRequest.get(), POLLIN, 0}};
        for (const int descriptor : descriptors())
            events.push_back({descriptor, POLLIN, 0});
        if (::poll(events.data(), events.size(), -1) < 0) continue;
        if (events.front().revents != 0) return;
        read();
    }
}

}  // namespace orx::test
