#include "core/Console.h"

#include <cerrno>
#include <poll.h>
#include <string>
#include <unistd.h>

#include "core/Mutex.h"

namespace orx {
namespace {

/// Keeps a text together that the system takes in several writes. Needs no destruction, so a line
/// may still be written while the process ends.
constinit Mutex consoleMutex;

/// Whether a failed write to standard output is worth another try: after a signal, or when someone
/// has made the terminal non-blocking, once it takes more.
bool canContinue() {
    if (errno == EINTR) return true;
    if (errno != EAGAIN) return false;
    pollfd output{STDOUT_FILENO, POLLOUT, 0};
    return ::poll(&output, 1, -1) > 0;
}

}  // namespace

void printLine(std::string_view line) {
    printLine({}, line);
}

void printLine(std::string_view tag, std::string_view line) {
    std::string text;
    text.reserve(tag.size() + line.size() + 1);
    printText(text.append(tag).append(line).append("\n"));
}

void printText(std::string_view text) {
    const MutexLock lock(consoleMutex);
    while (!text.empty()) {
        const auto written = ::write(STDOUT_FILENO, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (!canContinue()) {
            return;
        }
    }
}

}  // namespace orx
