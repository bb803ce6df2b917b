// A serial line without hardware: the daemon opens one side by its path, the test holds the other.
#pragma once

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include "core/FileDescriptor.h"
#include "support/WaitUntil.h"

namespace orx::test {

class PseudoTerminal {
  public:
    PseudoTerminal() : projector(::posix_openpt(O_RDWR | O_NOCTTY)) {
        std::array<char, 64> name{};
        if (::grantpt(projector.get()) != 0 || ::unlockpt(projector.get()) != 0 ||
            ::ptsname_r(projector.get(), name.data(), name.size()) != 0) {
            throw std::runtime_error("no pseudo-terminal");
        }
        path = name.data();
        observer = FileDescriptor(::open(name.data(), O_RDWR | O_NOCTTY));
        // A test process that leads a session gets the opened line as its terminal, and this when
        // the other side goes.
        formerHandler = std::signal(SIGHUP, SIG_IGN);
    }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;
    ~PseudoTerminal() {
        hangUp();
        std::signal(SIGHUP, formerHandler);
    }

    /// The path of the side that is opened by the daemon.
    [[nodiscard]] const std::string& device() const { return path; }

    /// The attributes that were set on the line.
    [[nodiscard]] termios attributes() const {
        termios result{};
        if (::tcgetattr(observer.get(), &result) != 0) throw std::runtime_error("no terminal");
        return result;
    }

    /// Answers with `bytes`, piece by piece where somebody reads meanwhile.
    void feed(std::string_view bytes) const {
        if (::write(projector.get(), bytes.data(), bytes.size()) !=
            static_cast<ssize_t>(bytes.size())) {
            throw std::runtime_error("the line is full");
        }
    }

    /// Answers with `bytes` while nobody reads and returns once they can be read.
    void answer(std::string_view bytes) const {
        feed(bytes);
        const bool arrived = waitUntil([this, &bytes] {
            int waiting = 0;
            ::ioctl(observer.get(), FIONREAD, &waiting);
            return waiting >= static_cast<int>(bytes.size());
        });
        if (!arrived) throw std::runtime_error("the answer is lost");
    }

    /// The next `size` bytes that were written to the line; fewer where they do not come.
    [[nodiscard]] std::string written(std::size_t size) const {
        std::string bytes;
        while (bytes.size() < size && hasWritten(60'000)) {
            std::array<char, 4096> buffer{};
            const auto count = ::read(projector.get(), buffer.data(), buffer.size());
            if (count <= 0) break;
            bytes.append(buffer.data(), static_cast<std::size_t>(count));
        }
        return bytes;
    }

    /// Whether there is more to read than `written` has given.
    [[nodiscard]] bool hasMore() const { return hasWritten(0); }

    /// The adapter is pulled.
    void hangUp() { projector.close(); }

  private:
    [[nodiscard]] bool hasWritten(int patienceMs) const {
        pollfd line{projector.get(), POLLIN, 0};
        return ::poll(&line, 1, patienceMs) == 1;
    }

    FileDescriptor projector;
    FileDescriptor observer;
    std::string path;
    void (*formerHandler)(int) = nullptr;
};

/// The attributes of a raw line at 9600 baud whose reads return what is there, or nothing.
inline termios rawAttributes() {
    termios attributes{};
    attributes.c_cflag = CREAD | CLOCAL | CS8;
    ::cfsetispeed(&attributes, B9600);
    ::cfsetospeed(&attributes, B9600);
    return attributes;
}

}  // namespace orx::test
