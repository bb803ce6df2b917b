#include "system/harness/ByteRecorder.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <stdexcept>
#include <sys/eventfd.h>
#include <unistd.h>

#include "system/harness/Waiting.h"

namespace orx::test {

ByteRecorder::ByteRecorder(int recordedSource)
    : source(recordedSource),
      stopRequest(::eventfd(0, EFD_CLOEXEC)),
      thread([this] { record(); }) {}

ByteRecorder::~ByteRecorder() {
    ::eventfd_write(stopRequest.get(), 1);
    thread.join();
}

void ByteRecorder::record() {
    bool goesOn = true;
    while (goesOn && waitForBytes()) {
        const std::lock_guard lock(mutex);
        takeWhatIsThere();
        changed.notify_all();
        goesOn = !ended;
    }
}

/// False once the recorder is to stop.
bool ByteRecorder::waitForBytes() const {
    std::array<pollfd, 2> events{{{source, POLLIN, 0}, {stopRequest.get(), POLLIN, 0}}};
    while (::poll(events.data(), events.size(), -1) < 0) {
        if (errno != EINTR) return false;
    }
    return events[1].revents == 0;
}

/// With the mutex held.
void ByteRecorder::takeWhatIsThere() {
    std::array<char, 65536> buffer{};
    pollfd event{source, POLLIN, 0};
    while (!ended && ::poll(&event, 1, 0) > 0) {
        const auto count = ::read(source, buffer.data(), buffer.size());
        if (count > 0) {
            recorded.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
            ended = true;
        }
    }
}

std::string ByteRecorder::bytes() {
    const std::lock_guard lock(mutex);
    takeWhatIsThere();
    return recorded;
}

std::size_t ByteRecorder::size() {
    const std::lock_guard lock(mutex);
    takeWhatIsThere();
    return recorded.size();
}

void ByteRecorder::forget(std::size_t count) {
    const std::lock_guard lock(mutex);
    recorded.erase(0, count);
}

void ByteRecorder::waitUntil(const Condition& condition, const std::string& what) const {
    std::unique_lock lock(mutex);
    changed.wait_for(lock, patience, [&] { return ended || condition(recorded); });
    if (condition(recorded)) return;
    throw std::runtime_error("waited in vain for " + what + "; there was:\n" + recorded);
}

void ByteRecorder::waitForMore(std::size_t known, std::chrono::milliseconds atMost) const {
    std::unique_lock lock(mutex);
    changed.wait_for(lock, atMost, [&] { return ended || recorded.size() > known; });
}

void ByteRecorder::waitForEnd() const {
    std::unique_lock lock(mutex);
    changed.wait_for(lock, patience, [this] { return ended; });
    if (!ended) throw std::runtime_error("waited in vain for the end of:\n" + recorded);
}

}  // namespace orx::test
