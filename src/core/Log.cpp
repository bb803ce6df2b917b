#include "core/Log.h"

#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
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

/// Cuts a file of `size` bytes where it is longer than `end`; one whose size nobody knows, -1, too.
void cut(int descriptor, off_t size, std::size_t end) {
    const auto newSize = static_cast<off_t>(end);
    if (size >= 0 && size <= newSize) return;
    if (::ftruncate(descriptor, newSize) != 0) return;  // a device has no end
}

/// What would stay behind a shorter content is cut off ahead of it, so that who sees the newest
/// line finds no more than 50.
void makeRoomFor(std::string_view text, int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) == 0) cut(descriptor, status.st_size, text.size());
}

/// Makes `text` the whole content of the file, which somebody else may have lengthened. The file is
/// never emptied: file systems that fear for the content of an emptied file bring it to the disk at
/// once, and a busy disk would then hold up whoever logs. Its size is asked for, as cutting costs
/// more than asking, even where there is nothing to cut. A full disk costs the log, not the daemon.
void replaceContent(int descriptor, std::string_view text) {
    std::size_t size = 0;
    while (size < text.size()) {
        const auto written = ::write(descriptor, text.data() + size, text.size() - size);
        if (written <= 0) break;
        size += static_cast<std::size_t>(written);
    }
    cut(descriptor, ::lseek(descriptor, 0, SEEK_END), size);
}

/// Puts the last `count` digits of `number` at `place`.
void writeDigits(LogStamp& stamp, std::size_t place, std::size_t count, long number) {
    constexpr long ten = 10;
    for (auto digit = place + count; digit-- > place; number /= ten)
        stamp[digit] = static_cast<char>('0' + number % ten);
}

void writeTimeOfDay(LogStamp& stamp, std::time_t second) {
    tm local{};
    ::localtime_r(&second, &local);
    writeDigits(stamp, 0, 2, local.tm_hour);
    writeDigits(stamp, 3, 2, local.tm_min);
    writeDigits(stamp, 6, 2, local.tm_sec);
}

}  // namespace

void Log::open(std::string path) {
    const MutexLock lock(mutex);
    logPath = std::move(path);
    lines.clear();
    longestContent = std::numeric_limits<std::size_t>::max();
}

void Log::write(std::string_view message, Echo echo, std::string_view consoleTag) {
    if (echo == Echo::yes) printLine(consoleTag, message);
    const MutexLock lock(mutex);
    lines.add(stampNow(), message);
    rewriteFile();
}

std::string_view Log::stampNow() {
    const timeval moment = time.now();
    // A second has one local time: the system reads the time zone once, ahead of the first.
    if (stampedSecond != moment.tv_sec) writeTimeOfDay(stamp, moment.tv_sec);
    stampedSecond = moment.tv_sec;
    writeDigits(stamp, 9, 6, moment.tv_usec);
    return {stamp.data(), stamp.size()};
}

void Log::rewriteFile() {
    constexpr mode_t readableByAll = 0666;  // less the umask, as for any file
    const FileDescriptor file(
        ::open(logPath.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, readableByAll));
    if (!file.isOpen()) return;
    const auto text = lines.text();
    if (text.size() < longestContent) makeRoomFor(text, file.get());
    replaceContent(file.get(), text);
    longestContent = text.size();
}

void openLog(std::string path) {
    processLog().open(std::move(path));
}

void log(std::string_view message, Echo echo, std::string_view consoleTag) {
    processLog().write(message, echo, consoleTag);
}

}  // namespace orx
