#include "system/harness/Pty.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <unistd.h>

#include "system/harness/Waiting.h"

namespace orx::test {
namespace {

constexpr std::size_t bytesReadPerCommand = 200;

FileDescriptor openMaster() {
    FileDescriptor master(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (!master.isOpen() || ::grantpt(master.get()) != 0 || ::unlockpt(master.get()) != 0) {
        throw std::runtime_error("no pseudo-terminal to be had");
    }
    return master;
}

std::string slavePath(int master) {
    std::array<char, 64> name{};
    if (::ptsname_r(master, name.data(), name.size()) != 0) {
        throw std::runtime_error("a pseudo-terminal without a name");
    }
    return name.data();
}

/// No command of a test contains this byte.
std::string markText(int number) {
    return "\x1e" + std::to_string(number) + "\x1e";
}

}  // namespace

Pty::Pty()
    : master(openMaster()),
      path(slavePath(master.get())),
      slave(::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)),
      recorder(std::make_unique<ByteRecorder>(master.get())) {}

Pty::~Pty() {
    stopFlood();
}

void Pty::waitFor(const std::string& expected) const {
    recorder->waitUntil(
        [&](const std::string& bytes) { return withoutMarks(bytes).starts_with(expected); },
        "\"" + expected + "\" on the line");
}

/// A mark of the test's own, written behind the daemon's bytes, shows when all of them are here.
std::string Pty::written() {
    const auto last = markText(++marks);
    if (::write(slave.get(), last.data(), last.size()) < 0) {
        throw std::runtime_error("the line takes no mark");
    }
    const auto contains = [&last](const std::string& all) {
        return all.find(last) != std::string::npos;
    };
    recorder->waitUntil(contains, "the end of what is on the line");
    return withoutMarks(recorder->bytes());
}

std::string Pty::withoutMarks(std::string bytes) const {
    for (int number = 1; number <= marks; ++number) {
        const auto mark = markText(number);
        const auto place = bytes.find(mark);
        if (place != std::string::npos) bytes.erase(place, mark.size());
    }
    return bytes;
}

bool Pty::waitForRoom() const {
    pollfd room{master.get(), POLLOUT, 0};
    return ::poll(&room, 1, patienceMs) > 0;
}

void Pty::send(const std::string& bytes) const {
    std::string_view rest = bytes;
    while (!rest.empty()) {
        if (!waitForRoom()) throw std::runtime_error("the line takes no more");
        const auto count = ::write(master.get(), rest.data(), rest.size());
        if (count > 0) rest.remove_prefix(static_cast<std::size_t>(count));
    }
}

void Pty::answer(int commands) const {
    for (int number = 0; number < commands; ++number)
        send(std::string(bytesReadPerCommand, 'a'));
}

void Pty::flood(const std::string& noise) {
    flooding = true;
    flooder = std::thread([this, noise] {
        while (flooding) {
            if (::write(master.get(), noise.data(), noise.size()) < 0) std::this_thread::yield();
        }
    });
}

void Pty::stopFlood() {
    flooding = false;
    if (flooder.joinable()) flooder.join();
}

void Pty::hold() const {
    if (::tcflow(slave.get(), TCOOFF) != 0) throw std::runtime_error("the line cannot be held");
}

void Pty::resume() const {
    if (::tcflow(slave.get(), TCOON) != 0) throw std::runtime_error("the line cannot go on");
}

int Pty::waiting() const {
    int count = 0;
    ::ioctl(slave.get(), FIONREAD, &count);
    return count;
}

termios Pty::attributes() const {
    termios attributes{};
    ::tcgetattr(slave.get(), &attributes);
    return attributes;
}

void Pty::unplug() {
    stopFlood();
    recorder.reset();
    master.close();
}

}  // namespace orx::test
