#include "core/Thread.h"

#include <thread>
#include <utility>

namespace orx {

void Thread::start() {
    std::promise<void> ended;
    auto end = ended.get_future();
    std::thread([this, ended = std::move(ended)]() mutable {
        run();
        ended.set_value();
    }).detach();
    stopped = std::move(end);
}

void Thread::startAndWait() {
    std::thread([this] { run(); }).join();
}

void Thread::waitUntilStopped() const {
    if (wasStarted()) stopped.wait();
}

}  // namespace orx
