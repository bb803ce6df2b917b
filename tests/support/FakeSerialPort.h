// A serial line in memory: remembers what was done to it and answers as told.
#pragma once

#include <algorithm>
#include <cerrno>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "serial/SerialPort.h"

namespace orx::test {

/// What a fake line has seen and will answer; outlives the port that works on it.
struct FakeLine {
    int descriptor = 7;               ///< what `open` gives; -1 for a failure
    int error = 0;                    ///< errno of a failing `open` or `read`
    std::string device;               ///< what was opened
    termios attributes{};             ///< what was set last
    std::vector<std::string> events;  ///< "open", "attributes", "write", "drain", "read" in order
    std::vector<std::string> writes;  ///< the bytes of each write
    std::deque<std::string> replies;  ///< one a read; then silence
    bool readFails = false;           ///< reads fail once `replies` is empty
    std::function<void(const std::string&)> onWrite;  ///< called with the bytes of each write

    /// All bytes written so far.
    [[nodiscard]] std::string written() const {
        std::string all;
        for (const auto& bytes : writes)
            all += bytes;
        return all;
    }
};

class FakeSerialPort final : public SerialPort {
  public:
    explicit FakeSerialPort(FakeLine& fakeLine) : line(fakeLine) {}

    int open(const std::string& device) override {
        line.events.emplace_back("open");
        line.device = device;
        errno = line.error;
        return line.descriptor;
    }
    void setAttributes(const termios& attributes) override {
        line.events.emplace_back("attributes");
        line.attributes = attributes;
    }
    ssize_t write(std::string_view bytes) override {
        line.events.emplace_back("write");
        line.writes.emplace_back(bytes);
        if (line.onWrite) line.onWrite(line.writes.back());
        return static_cast<ssize_t>(bytes.size());
    }
    void drain() override { line.events.emplace_back("drain"); }
    ssize_t read(std::span<char> buffer) override {
        line.events.emplace_back("read");
        if (line.replies.empty()) {
            errno = line.error;
            return line.readFails ? -1 : 0;
        }
        auto& reply = line.replies.front();
        const auto count = std::min(buffer.size(), reply.size());
        std::copy_n(reply.begin(), count, buffer.begin());
        reply.erase(0, count);
        if (reply.empty()) line.replies.pop_front();
        return static_cast<ssize_t>(count);
    }

  private:
    FakeLine& line;
};

}  // namespace orx::test
