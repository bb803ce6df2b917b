#include "orxsim/Output.h"

#include <array>
#include <cerrno>
#include <climits>
#include <poll.h>
#include <system_error>
#include <unistd.h>

namespace orx::orxsim {
namespace {

[[noreturn]] void fail() {
    throw std::system_error(errno, std::generic_category(), "standard output");
}

}  // namespace

/// A pipe that has room has it for a piece of this size, so no write blocks.
void Output::write(std::string_view text) {
    while (!text.empty() && waitForRoom()) {
        const auto piece = text.substr(0, PIPE_BUF);
        const auto count = ::write(descriptor, piece.data(), piece.size());
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR && errno != EAGAIN) {
            fail();
        }
    }
}

/// A simulator that is to end writes what it still can.
bool Output::waitForRoom() {
    while (true) {
        const int patience = signals.isStopRequested() ? 0 : -1;
        std::array<pollfd, 2> waiting{
            {{descriptor, POLLOUT, 0}, {signals.descriptor(), POLLIN, 0}}};
        if (::poll(waiting.data(), waiting.size(), patience) < 0 && errno != EINTR) fail();
        if (waiting[0].revents != 0) return true;
        if (patience == 0) return false;
    }
}

}  // namespace orx::orxsim
