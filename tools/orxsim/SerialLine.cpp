#include "orxsim/SerialLine.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>

namespace orx::orxsim {
namespace {

constexpr std::size_t pieceSize = 4096;

[[noreturn]] void fail() {
    throw std::system_error(errno, std::generic_category(), "pseudo-terminal");
}

FileDescriptor openProjectorEnd() {
    FileDescriptor end(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (!end.isOpen() || ::grantpt(end.get()) != 0 || ::unlockpt(end.get()) != 0) fail();
    return end;
}

std::string pathOfOtherEnd(int projectorEnd) {
    std::array<char, 64> name{};
    if (::ptsname_r(projectorEnd, name.data(), name.size()) != 0) fail();
    return name.data();
}

/// Without echo from the start: an answer must not come back as a command.
FileDescriptor openRaw(const std::string& path) {
    FileDescriptor end(::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    termios attributes{};
    if (!end.isOpen() || ::tcgetattr(end.get(), &attributes) != 0) fail();
    ::cfmakeraw(&attributes);
    if (::tcsetattr(end.get(), TCSANOW, &attributes) != 0) fail();
    return end;
}

}  // namespace

SerialLine::SerialLine()
    : projectorEnd(openProjectorEnd()),
      path(pathOfOtherEnd(projectorEnd.get())),
      otherEnd(openRaw(path)) {}

std::string SerialLine::read() const {
    std::array<char, pieceSize> piece{};
    const auto count = ::read(projectorEnd.get(), piece.data(), piece.size());
    return count > 0 ? std::string(piece.data(), static_cast<std::size_t>(count)) : std::string();
}

void SerialLine::write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const auto count = ::write(projectorEnd.get(), bytes.data(), bytes.size());
        if (count <= 0) return;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void SerialLine::unplug() noexcept {
    projectorEnd.close();
    otherEnd.close();
}

}  // namespace orx::orxsim
