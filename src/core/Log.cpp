#include "core/Log.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <numeric>
#include <unistd.h>
#include <utility>

#include "core/Console.h"
#include "core/FileDescriptor.h"

namespace orx {
namespace {

Log& processLog() {
    static Log instance;
    return instance;
}

/// Makes `text` the whole content of the file. The file is cut behind the new content, not emptied
/// ahead of it: file systems that fear for the content of an emptied file bring it to the disk at
/// once, and a busy disk would then hold up whoever logs. A full disk costs the log, not the
/// daemon.
void replaceContent(int descriptor, std::string_view text) {
    std::size_t size = 0;
    while (size < text.size()) {
        const auto written = ::write(descriptor, text.data() + size, text.size() - size);
        if (written <= 0) break;
        size += static_cast<std::size_t>(written);
    }
    if (::ftruncate(descriptor, static_cast<off_t>(size)) != 0) return;  // a device has no end
}

}  // namespace

void Log::open(std::string path) {
    const MutexLock lock(mutex);
    logPath = std::move(path);
    logLines.clear();
}

void Log::write(std::string_view message, Echo echo, std::string_view consoleTag) {
    if (echo == Echo::yes) printLine(std::string(consoleTag).append(message));
    const MutexLock lock(mutex);
    logLines.push_front(stamped(message));
    if (logLines.size() > maxLines) logLines.resize(maxLines);
    rewriteFile();
}

std::string Log::stamped(std::string_view message) const {
    const timeval moment = time.now();
    tm local{};
    ::localtime_r(&moment.tv_sec, &local);
    std::array<char, sizeof "HH:MM:SS"> clockTime{};
    std::strftime(clockTime.data(), clockTime.size(), "%H:%M:%S", &local);
    std::array<char, sizeof ".uuuuuu "> fraction{};
    std::snprintf(fraction.data(), fraction.size(), ".%06ld ", static_cast<long>(moment.tv_usec));
    return std::string(clockTime.data()).append(fraction.data()).append(message).append("\n");
}

void Log::rewriteFile() const {
    const auto content = std::accumulate(logLines.begin(), logLines.end(), std::string());
    constexpr mode_t readableByAll = 0666;  // less the umask, as for any file
    const FileDescriptor file(
        ::open(logPath.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, readableByAll));
    if (file.isOpen()) replaceContent(file.get(), content);
}

void openLog(std::string path) {
    processLog().open(std::move(path));
}

void log(std::string_view message, Echo echo, std::string_view consoleTag) {
    processLog().write(message, echo, consoleTag);
}

}  // namespace orx
