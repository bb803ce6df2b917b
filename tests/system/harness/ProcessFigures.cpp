#include "system/harness/ProcessFigures.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "support/ProcessCounts.h"
#include "support/TemporaryFolder.h"
#include "support/WaitUntil.h"

namespace orx::test {
namespace {

std::filesystem::path folderOf(pid_t process) {
    return std::filesystem::path("/proc") / std::to_string(process);
}

/// The number behind "NAME:" in a status file; nothing where the file has none.
std::optional<long> numberIn(const std::string& status, const std::string& name) {
    const auto place = status.find("\n" + name + ":");
    if (place == std::string::npos) return std::nullopt;
    return std::stol(status.substr(place + name.size() + 2));
}

/// The fields behind the name, which may itself hold blanks and brackets.
std::vector<std::string> statFields(const std::string& stat) {
    std::istringstream text(stat.substr(stat.rfind(") ") + 2));
    std::vector<std::string> fields;
    for (std::string field; text >> field;)
        fields.push_back(field);
    return fields;
}

/// The clock ticks that a process or thread has run, of its fields.
long cpuTimeIn(const std::vector<std::string>& fields) {
    constexpr std::size_t userTime = 11;
    constexpr std::size_t systemTime = 12;
    return std::stol(fields.at(userTime)) + std::stol(fields.at(systemTime));
}

/// Nothing for a thread that ends meanwhile.
std::optional<ThreadFigures> figuresOf(const std::filesystem::path& thread) {
    constexpr std::size_t state = 0;
    const auto stat = contentOf(thread / "stat");
    const auto pauses = numberIn(contentOf(thread / "status"), "voluntary_ctxt_switches");
    if (stat.empty() || !pauses) return std::nullopt;
    const auto fields = statFields(stat);
    return ThreadFigures{.id = std::stoi(thread.filename()),
                         .asleep = fields.at(state) == "S",
                         .cpuTime = cpuTimeIn(fields),
                         .pauses = *pauses};
}

}  // namespace

std::vector<ThreadFigures> threadsOf(pid_t process) {
    std::vector<ThreadFigures> threads;
    for (const auto& entry : std::filesystem::directory_iterator(folderOf(process) / "task")) {
        if (const auto figures = figuresOf(entry.path())) threads.push_back(*figures);
    }
    return threads;
}

long cpuTimeOf(pid_t process) {
    return cpuTimeIn(statFields(contentOf(folderOf(process) / "stat")));
}

bool isProcessAsleep(pid_t process) {
    const auto threads = std::filesystem::directory_iterator(folderOf(process) / "task");
    return std::all_of(begin(threads), end(threads), [](const auto& thread) {
        return isAsleep(std::stoi(thread.path().filename()));
    });
}

long ownKilobytes(pid_t process) {
    const auto own = numberIn(contentOf(folderOf(process) / "smaps_rollup"), "Anonymous");
    if (!own) throw std::runtime_error("no figures of process " + std::to_string(process));
    return *own;
}

std::string Holdings::text() const {
    return std::to_string(threads) + " threads and " + std::to_string(descriptors) + " descriptors";
}

Holdings holdingsOf(pid_t process) {
    const auto folder = folderOf(process);
    return {.threads = entriesOf(folder / "task"), .descriptors = entriesOf(folder / "fd")};
}

}  // namespace orx::test
