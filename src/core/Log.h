// The log: the newest 50 messages in one small file, newest first.
//
// The file is rewritten in full on every message, so that it is complete at any moment and never
// grows; a log that was deleted is back with the next message. Any thread may log; one mutex keeps
// the messages and the file together. There is one log per process, reached through `openLog` and
// `log`; the class stands by itself for tests.
#pragma once

#include <array>
#include <cstddef>
#include <ctime>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "core/Mutex.h"
#include "core/NewestFirst.h"
#include "core/Time.h"

namespace orx {

/// Whether a message goes to standard output too.
enum class Echo : bool { no, yes };

/// "HH:MM:SS.uuuuuu ", the local time ahead of a message.
using LogStamp = std::array<char, 16>;

class Log {
  public:
    static constexpr std::size_t maxLines = 50;

    /// `clock` gives the time stamps and must outlive the log.
    explicit Log(Time& clock = systemTime()) : time(clock) {}

    /// Writes to `path` from now on and forgets the messages kept so far. Nothing is written yet.
    void open(std::string path);

    /// Keeps the message and rewrites the file, where each message stands as its local time
    /// "HH:MM:SS.uuuuuu", a blank and the text. With `Echo::yes` the bare message goes to standard
    /// output first, `consoleTag` ahead of it on the same line. A file that cannot be opened is
    /// passed over in silence.
    void write(std::string_view message, Echo echo, std::string_view consoleTag = {});

  private:
    /// Valid until the next one.
    [[nodiscard]] std::string_view stampNow() ORX_REQUIRES(mutex);
    void rewriteFile() ORX_REQUIRES(mutex);

    Time& time;
    Mutex mutex;
    std::string logPath ORX_GUARDED_BY(mutex);
    LogStamp stamp ORX_GUARDED_BY(mutex){'H', 'H', ':', 'M', 'M', ':', 'S', 'S',
                                         '.', 'u', 'u', 'u', 'u', 'u', 'u', ' '};
    std::optional<std::time_t> stampedSecond ORX_GUARDED_BY(mutex);
    NewestFirst lines ORX_GUARDED_BY(mutex){maxLines};
    /// Nothing longer is known to be in the file; what was there before this log, nobody knows.
    std::size_t longestContent ORX_GUARDED_BY(mutex) = std::numeric_limits<std::size_t>::max();
};

/// `Log::open` on the log of the process.
void openLog(std::string path);

/// `Log::write` on the log of the process.
void log(std::string_view message, Echo echo, std::string_view consoleTag = {});

}  // namespace orx
