#include "harness/SerialLine.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <termios.h>

namespace orx::bench {
namespace {

bool hasBytesWithin(const FileDescriptor& master, int milliseconds) {
    pollfd reader{master.get(), POLLIN, 0};
    return ::poll(&reader, 1, milliseconds) == 1;
}

long take(const FileDescriptor& master) {
    std::array<char, 1024> buffer;
    return ::read(master.get(), buffer.data(), buffer.size());
}

}  // namespace

SerialLine::SerialLine() : master(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    if (::grantpt(master.get()) != 0 || ::unlockpt(master.get()) != 0) {
        throw std::runtime_error("no pseudo-terminal to be had");
    }
    path = ::ptsname(master.get());
    slave = FileDescriptor(::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    termios raw{};
    ::tcgetattr(slave.get(), &raw);
    ::cfmakeraw(&raw);
    ::tcsetattr(slave.get(), TCSANOW, &raw);
}

long SerialLine::receive() const {
    constexpr int patienceMs = 10'000;
    if (!hasBytesWithin(master, patienceMs)) throw std::runtime_error("nothing on the line");
    return take(master);
}

void SerialLine::discard() const {
    while (hasBytesWithin(master, 0))
        static_cast<void>(take(master));
}

}  // namespace orx::bench
