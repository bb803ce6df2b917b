#include "orxctl/CommandLine.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <sys/ioctl.h>
#include <thread>
#include <unistd.h>
#include <utility>

#include "commands/Keywords.h"
#include "orxctl/CommandList.h"
#include "orxctl/Progress.h"
#include "orxctl/Requests.h"
#include "orxctl/Show.h"
#include "orxctl/StatusReport.h"
#include "orxctl/check/Check.h"

namespace orx::orxctl {
namespace {

using std::chrono::milliseconds;

/// How long the lens may take, unless the user says so: a slow one takes a minute from end to end.
constexpr milliseconds usualWaitTime{120'000};

/// The parser takes what begins with "-" for an option. A negative number is hidden from it behind
/// a byte that no command line holds.
constexpr char hidden = '\x01';

bool isNegativeNumber(const std::string& word) {
    return word.size() > 1 && word[0] == '-' &&
           word.find_first_of("0123456789.iInN", 1) == 1;  // -5, -.5, -inf, -nan
}

/// The words from the last one to the first, as the parser wants them.
std::vector<std::string> hideNumbers(std::vector<std::string> words) {
    for (auto& word : words)
        if (isNegativeNumber(word)) word.insert(word.begin(), hidden);
    std::ranges::reverse(words);
    return words;
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const auto& word : words)
        text.append(text.empty() ? "" : " ").append(word, word.starts_with(hidden) ? 1 : 0);
    return text;
}

bool isTerminal() {
    return ::isatty(STDOUT_FILENO) == 1;
}

std::size_t terminalWidth() {
    constexpr std::size_t usual = 80;
    winsize size{};
    const bool isKnown = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
    return isKnown ? size.ws_col : usual;
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

int asNumber(ExitStatus status) {
    return static_cast<int>(status);
}

OptionWords wordsOf(const CLI::Option& option) {
    OptionWords words{{}, option.get_description()};
    for (const auto& name : option.get_snames())
        words.names.push_back("-" + name);
    for (const auto& name : option.get_lnames())
        words.names.push_back("--" + name);
    if (option.get_items_expected_max() > 0)
        words.value = option.get_type_name() == "FILE" ? ValueKind::file : ValueKind::text;
    return words;
}

ValueKind kindOf(const CLI::Option& argument) {
    const auto name = argument.get_single_name();
    if (name == "FILE" || name == "CONFIG") return ValueKind::file;
    return name == "SHELL" ? ValueKind::shell : ValueKind::text;
}

std::vector<OptionWords> optionsOf(const CLI::App& command) {
    std::vector<OptionWords> options;
    for (const auto* const option : command.get_options())
        if (option->nonpositional()) options.push_back(wordsOf(*option));
    return options;
}

}  // namespace

CommandLine::CommandLine() : app("Talks to the daemons that drive projectors", "orxctl") {
    app.set_version_flag("--version", "orxctl " ORXCTL_VERSION);
    addSending();
    addStatus();
    addWait();
    addCommands();
    addRun();
    addPing();
    addCheck();
    addCompletion();
    app.require_subcommand(0, 1);
    app.footer(
        "orxctl ZOOM 32768 sends a command; \"orxctl commands\" lists them all.\n"
        "Exit status: 0 done, 1 usage or unknown command, 2 no answer, 3 timed out while\n"
        "busy, 4 refused by the daemon's state; of several daemons the worst.");
}

void CommandLine::addSending() {
    app.add_option("command", commandWords, "The command to send, with its arguments");
    addTargets(app);
    addTimeout(app, "Longest time: 2 for an answer, with --wait 120");
    app.add_flag("--wait", policies.wait, "Return when the lens is at rest");
    addPolicies(app);
}

void CommandLine::addStatus() {
    auto* const command = addErrand("status", "Show state, lens and flags",
                                    [this] { return watch ? watchStatus() : showStatus(); });
    addTargets(*command);
    addTimeout(*command, "Longest time for an answer, 2 if left out");
    command->add_flag("--json", asJson, "Print a JSON array");
    command->add_flag("--watch", watch, "Go on showing it until Ctrl-C");
}

void CommandLine::addWait() {
    auto* const command =
        addErrand("wait", "Wait until the lens is at rest", [this] { return waitForRest(); });
    addTargets(*command);
    addTimeout(*command, "Longest time to wait, 120 if left out");
}

void CommandLine::addCommands() {
    auto* const command =
        addErrand("commands", "List the commands", [this] { return listCommands(); });
    addPositional(*command, argument, "PATTERN", "Those alone that it is about; Z* for keywords");
}

void CommandLine::addRun() {
    auto* const command =
        addErrand("run", "Do what a show file says, line by line", [this] { return runShow(); });
    addPositional(*command, argument, "FILE", "A command a line, # comments, sleep, wait; or -");
    command->get_option("FILE")->required();
    addTargets(*command);
    addTimeout(*command, "Longest time for each line, 120 if left out");
    addPolicies(*command);
}

void CommandLine::addPing() {
    auto* const command =
        addErrand("ping", "Show how long an answer takes", [this] { return pingAll(); });
    addTargets(*command);
    addTimeout(*command, "Longest time for an answer, 2 if left out");
}

void CommandLine::addCheck() {
    auto* const command =
        addErrand("check", "Say what a start of the daemon would say, without starting it", [this] {
            return check(argument, asJson ? CheckFormat::json : CheckFormat::text, std::cout);
        });
    addPositional(*command, argument, "CONFIG", "The configuration; the default one if left out");
    command->add_flag("--json", asJson, "Print one JSON object");
}

void CommandLine::addCompletion() {
    auto* const command = addErrand("completion", "Print a script that completes command lines",
                                    [this] { return printCompletion(); });
    addPositional(*command, argument, "SHELL", "bash, zsh or fish");
    command->get_option("SHELL")->required()->check(
        CLI::IsMember(std::vector<std::string>(completionShells.begin(), completionShells.end())));
}

CLI::App* CommandLine::addErrand(const std::string& name, const std::string& text,
                                 std::function<int()> chosen) {
    auto* const command = app.add_subcommand(name, text);
    command->callback([this, chosen = std::move(chosen)] { errand = chosen; });
    return command;
}

void CommandLine::addTargets(CLI::App& command) {
    const auto add = [this](const std::vector<std::string>& hosts) {
        hostWords.insert(hostWords.end(), hosts.begin(), hosts.end());
    };
    command
        .add_option_function<std::vector<std::string>>(
            "-H,--host", add, "A daemon or a group; 127.0.0.1:7781 if left out")
        ->type_name("HOST[:PORT]")
        ->delimiter(',')
        ->allow_extra_args(false);
    command.add_option("--hosts", hostsFile, "The file with the names of daemons and groups")
        ->type_name("FILE");
}

void CommandLine::addTimeout(CLI::App& command, const std::string& text) {
    const auto read = [this](const std::string& seconds) {
        try {
            timeout = parseSeconds(seconds);
        } catch (const std::invalid_argument& mistake) {
            throw CLI::ValidationError("--timeout", mistake.what());
        }
    };
    command.add_option_function<std::string>("--timeout", read, text)->type_name("S");
}

void CommandLine::addPolicies(CLI::App& command) {
    command.add_flag("--confirm", policies.confirm, "See from STATUS that it was carried out");
    command.add_flag("--force", policies.force, "Send without asking whether anybody can do it");
}

void CommandLine::addPositional(CLI::App& command, std::string& value, const std::string& name,
                                const std::string& text) {
    command.add_option(name, value, text)->type_name("");
}

int CommandLine::run(int argc, const char* const* argv) {
    try {
        app.parse(hideNumbers({argv + 1, argv + argc}));
        refuseMixtures();
        return errand ? errand() : sendCommand();
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : asNumber(ExitStatus::usage);
    } catch (const std::invalid_argument& mistake) {
        std::cerr << "orxctl: " << mistake.what() << '\n';
        return asNumber(ExitStatus::usage);
    }
}

/// What the parser would take side by side, and only one of which would be done.
void CommandLine::refuseMixtures() const {
    if (!errand) return;
    const auto name = app.get_subcommands().front()->get_name();
    if (!commandWords.empty())
        throw std::invalid_argument("one thing at a time: " + joined(commandWords) + " or " + name);
    if (policies.wait) throw std::invalid_argument(name + " takes no --wait");
}

Fleet CommandLine::fleet() const {
    const auto file = hostsFile.empty() ? usualHostsFile() : hostsFile;
    if (!hostsFile.empty() && !ConfigFile::isReadable(hostsFile))
        throw std::invalid_argument("hosts file not found: " + hostsFile);
    const HostsFile hosts(file);
    return Fleet(hosts.targets(hostWords.empty() ? usualTargets() : hostWords));
}

SendOptions CommandLine::sendOptions() const {
    auto options = policies;
    options.waitTime = timeout.value_or(usualWaitTime);
    if (timeout)
        options.answerTime = policies.wait ? std::min(*timeout, options.answerTime) : *timeout;
    return options;
}

int CommandLine::sendCommand() {
    if (commandWords.empty()) {
        std::cerr << app.help();
        return asNumber(ExitStatus::usage);
    }
    const auto request = parseRequest(joined(commandWords));
    if (policies.wait && request.keyword() == CMD_QUIT)
        throw std::invalid_argument("QUIT ends the daemon: there is nothing to wait for");
    if (request.keyword() == CMD_STATUS) return showStatus();
    auto daemons = fleet();
    std::vector<Outcome> outcomes;
    {
        MaybeProgress progress(daemons.size());
        outcomes = daemons.doForAll([&](const client::Client& daemon, std::size_t number) {
            return send(daemon, request, sendOptions(), progress.observer(number));
        });
    }
    return tell(daemons, outcomes);
}

int CommandLine::showStatus() {
    auto daemons = fleet();
    const auto outcomes = daemons.doForAll([this](const client::Client& daemon, std::size_t) {
        return askStatus(daemon, sendOptions().answerTime);
    });
    std::cout << (asJson ? statusJson(daemons, outcomes, JsonForm::indented)
                         : statusTable(daemons, outcomes));
    return asNumber(worstOf(outcomes));
}

/// Draws the table over the one before on a terminal; elsewhere prints what has changed.
int CommandLine::watchStatus() {
    constexpr milliseconds interval{250};
    auto daemons = fleet();
    std::string shown;
    while (std::cout) {
        const auto outcomes = daemons.doForAll([this](const client::Client& daemon, std::size_t) {
            return askStatus(daemon, sendOptions().answerTime);
        });
        const auto text = asJson ? statusJson(daemons, outcomes, JsonForm::oneLine)
                                 : statusTable(daemons, outcomes);
        if (text != shown) {
            if (isTerminal() && !asJson && !shown.empty())
                std::cout << "\033[" << std::ranges::count(shown, '\n') << "A\033[J";
            std::cout << text << std::flush;
            shown = text;
        }
        std::this_thread::sleep_for(interval);
    }
    return asNumber(ExitStatus::done);
}

int CommandLine::waitForRest() {
    auto daemons = fleet();
    std::vector<Outcome> outcomes;
    {
        MaybeProgress progress(daemons.size());
        outcomes = daemons.doForAll([&](const client::Client& daemon, std::size_t number) {
            return waitUntilAtRest(daemon, sendOptions().waitTime, progress.observer(number));
        });
    }
    return tell(daemons, outcomes);
}

int CommandLine::listCommands() const {
    const auto list = commandList(argument);
    if (list.empty()) throw std::invalid_argument("no command is about \"" + argument + '"');
    std::cout << list;
    return asNumber(ExitStatus::done);
}

int CommandLine::runShow() {
    std::ifstream file;
    if (argument != "-") file.open(argument);
    if (argument != "-" && !file) throw std::invalid_argument("show file not found: " + argument);
    const Show show(argument == "-" ? std::cin : file, argument == "-" ? "input" : argument);
    auto daemons = fleet();
    std::vector<Outcome> outcomes;
    {
        MaybeProgress progress(daemons.size());
        auto options = sendOptions();
        options.answerTime = options.waitTime;
        outcomes = show.run(daemons, options,
                            [&](std::size_t number) { return progress.observer(number); });
    }
    return tell(daemons, outcomes);
}

int CommandLine::pingAll() {
    auto daemons = fleet();
    return tell(daemons, daemons.doForAll([this](const client::Client& daemon, std::size_t) {
        return ping(daemon, sendOptions().answerTime);
    }));
}

int CommandLine::printCompletion() const {
    std::cout << completionScript(argument, words());
    return asNumber(ExitStatus::done);
}

int CommandLine::tell(Fleet& daemons, const std::vector<Outcome>& outcomes) const {
    printOutcomes(daemons, outcomes, std::cout, std::cerr);
    return asNumber(worstOf(outcomes));
}

CommandLineWords CommandLine::words() const {
    CommandLineWords words{optionsOf(app), {}};
    for (const auto* const command : app.get_subcommands({})) {
        ErrandWords errandWords{command->get_name(), command->get_description(), ValueKind::none,
                                optionsOf(*command)};
        for (const auto* const option : command->get_options())
            if (!option->nonpositional()) errandWords.argument = kindOf(*option);
        words.errands.push_back(std::move(errandWords));
    }
    return words;
}

}  // namespace orx::orxctl
