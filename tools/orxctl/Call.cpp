#include "orxctl/Call.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <sys/ioctl.h>
#include <system_error>
#include <thread>
#include <unistd.h>

#include "commands/Keywords.h"
#include "orxctl/CommandList.h"
#include "orxctl/ConfiguredDaemon.h"
#include "orxctl/HostsFile.h"
#include "orxctl/Progress.h"
#include "orxctl/Requests.h"
#include "orxctl/Show.h"
#include "orxctl/StatusReport.h"

namespace orx::orxctl {
namespace {

using std::chrono::milliseconds;

/// How long the lens may take, unless the user says so: a slow one takes a minute from end to end.
constexpr milliseconds usualWaitTime{120'000};

bool isTerminal() {
    return ::isatty(STDOUT_FILENO) == 1;
}

std::size_t terminalWidth() {
    constexpr std::size_t usual = 80;
    winsize size{};
    const bool isKnown = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
    return isKnown ? size.ws_col : usual;
}

/// `text` with no line longer than `width`. One that went on in the next would be a line more to go
/// up than there are.
std::string cutLines(const std::string& text, std::size_t width) {
    std::istringstream lines(text);
    std::string result;
    for (std::string line; std::getline(lines, line);)
        result.append(line, 0, width).append("\n");
    return result;
}

/// Shows the moves of a fleet on a terminal, and nothing anywhere else.
class MaybeProgress {
  public:
    explicit MaybeProgress(std::size_t daemons) {
        if (isTerminal()) progress.emplace(std::cout, terminalWidth(), daemons);
    }
    [[nodiscard]] client::Client::Observer observer(std::size_t number) {
        if (!progress) return {};
        return [this, number](const auto& status) { progress->show(number, status); };
    }

  private:
    std::optional<Progress> progress;
};

/// What `work` gives, with the progress shown meanwhile; the line is gone before anything is told.
std::vector<Outcome> showingProgress(
    const Fleet& daemons, const std::function<std::vector<Outcome>(MaybeProgress&)>& work) {
    MaybeProgress progress(daemons.size());
    return work(progress);
}

/// Tells how the errands have ended, with `done` where there is nothing else to tell; gives the
/// exit status.
int tell(const Fleet& daemons, const std::vector<Outcome>& outcomes, std::string_view done) {
    printOutcomes(daemons, outcomes, done, std::cout, std::cerr);
    return asNumber(worstOf(outcomes));
}

std::vector<Outcome> statusOf(Fleet& daemons, milliseconds limit) {
    return daemons.doForAll(
        [limit](const client::Client& daemon, std::size_t) { return askStatus(daemon, limit); });
}

/// A show file, read and checked.
Show readShow(const std::string& path) {
    if (path == "-") return {std::cin, "standard input"};
    std::ifstream file(path);
    if (!file) throw std::invalid_argument(path + ": " + std::generic_category().message(errno));
    return {file, path};
}

}  // namespace

Fleet Call::fleet() const {
    if (!configFile.empty()) {
        if (!hosts.empty()) throw std::invalid_argument("either --host or --config");
        return Fleet({configuredDaemon(configFile)});
    }
    if (!hostsFile.empty() &&
        (!ConfigFile::isReadable(hostsFile) || std::filesystem::is_directory(hostsFile)))
        throw std::invalid_argument("no hosts file, or none that can be read: " + hostsFile);
    const HostsFile names(hostsFile.empty() ? usualHostsFile() : hostsFile);
    return Fleet(names.targets(hosts.empty() ? usualTargets() : hosts));
}

SendOptions Call::options() const {
    auto chosen = policies;
    chosen.answerTime = timeout.value_or(chosen.answerTime);
    chosen.waitTime = timeout.value_or(usualWaitTime);
    return chosen;
}

int Call::send() const {
    const auto request = parseRequest(command);
    if (policies.wait && (request.keyword() == CMD_QUIT || request.keyword() == CMD_STATUS))
        throw std::invalid_argument("there is nothing to wait for behind " + request.keyword());
    if (request.keyword() == CMD_STATUS) return showStatus();
    auto daemons = fleet();
    const auto outcomes = showingProgress(daemons, [&](MaybeProgress& progress) {
        return daemons.doForAll([&](const client::Client& daemon, std::size_t number) {
            return orxctl::send(daemon, request, options(), progress.observer(number));
        });
    });
    return tell(daemons, outcomes, policies.wait ? "at rest" : "sent");
}

int Call::showStatus() const {
    auto daemons = fleet();
    const auto outcomes = statusOf(daemons, options().answerTime);
    std::cout << (asJson ? statusJson(daemons, outcomes, JsonForm::indented)
                         : statusTable(daemons, outcomes));
    return asNumber(worstOf(outcomes));
}

int Call::watchStatus() const {
    constexpr milliseconds interval{250};
    auto daemons = fleet();
    std::string shown;
    while (std::cout) {
        const auto outcomes = statusOf(daemons, options().answerTime);
        const auto text = asJson ? statusJson(daemons, outcomes, JsonForm::oneLine)
                                 : statusTable(daemons, outcomes);
        if (text != shown) {
            const bool draws = isTerminal() && !asJson;
            if (draws && !shown.empty())
                std::cout << "\033[" << std::ranges::count(shown, '\n') << "A\033[J";
            std::cout << (draws ? cutLines(text, terminalWidth() - 1) : text) << std::flush;
            shown = text;
        }
        std::this_thread::sleep_for(interval);
    }
    return asNumber(ExitStatus::done);
}

int Call::waitUntilAtRest() const {
    auto daemons = fleet();
    const auto outcomes = showingProgress(daemons, [&](MaybeProgress& progress) {
        return daemons.doForAll([&](const client::Client& daemon, std::size_t number) {
            return orxctl::waitUntilAtRest(daemon, options().waitTime, progress.observer(number));
        });
    });
    return tell(daemons, outcomes, "at rest");
}

int Call::ping() const {
    auto daemons = fleet();
    return tell(daemons, daemons.doForAll([this](const client::Client& daemon, std::size_t) {
        return orxctl::ping(daemon, options().answerTime);
    }),
                "");
}

int Call::runShow() const {
    const auto show = readShow(argument);
    auto daemons = fleet();
    auto chosen = options();
    chosen.answerTime = chosen.waitTime;  // a line may have to wait for the one before
    const auto outcomes = showingProgress(daemons, [&](MaybeProgress& progress) {
        return show.run(daemons, chosen,
                        [&](std::size_t number) { return progress.observer(number); });
    });
    return tell(daemons, outcomes, "done");
}

int Call::listCommands() const {
    const auto list = commandList(argument);
    if (list.empty()) throw std::invalid_argument("no command is about \"" + argument + '"');
    std::cout << list;
    return asNumber(ExitStatus::done);
}

}  // namespace orx::orxctl
