#include "orxctl/CommandLine.h"

#include <algorithm>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "core/Text.h"
#include "orxctl/HiddenWords.h"
#include "orxctl/Outcome.h"
#include "orxctl/Requests.h"
#include "orxctl/Wording.h"
#include "orxctl/check/Check.h"

namespace orx::orxctl {
namespace {

/// An argument whose place tells what it is.
CLI::Option* addPositional(CLI::App& command, std::string& value, const std::string& name,
                           const std::string& text) {
    return command.add_option(name, value, text)->type_name("");
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
    const auto& name = argument.get_single_name();
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
    letBeAsWritten(app);
    app.require_subcommand(0, 1);
    app.footer(
        "orxctl ZOOM 32768 sends a command; \"orxctl commands\" lists them all.\n"
        "Exit status: 0 done, 1 usage or unknown command, 2 no answer, 3 timed out while\n"
        "busy, 4 refused by the daemon's state; of several daemons the worst.\n"
        "Without -H and $ORX_HOST it is the daemon at 127.0.0.1:7781. More: man orxctl");
}

void CommandLine::addSending() {
    app.add_option("command", commandWords, "The command to send, with its arguments");
    addTargets(app);
    addTimeout(app, "Longest time: 2 for an answer, with --wait 120");
    app.add_flag("--wait", call.policies.wait, "Return when the lens is at rest");
    addPolicies(app);
}

void CommandLine::addStatus() {
    auto* const command = addErrand("status", "Show state, lens and flags", [this] {
        return watch ? call.watchStatus() : call.showStatus();
    });
    addTargets(*command);
    addTimeout(*command, "Longest time for an answer, 2 if left out");
    command->add_flag("--json", call.asJson, "Print a JSON array");
    command->add_flag("--watch", watch, "Go on showing it until Ctrl-C");
}

void CommandLine::addWait() {
    auto* const command = addErrand("wait", "Wait until the lens is at rest",
                                    [this] { return call.waitUntilAtRest(); });
    addTargets(*command);
    addTimeout(*command, "Longest time to wait, 120 if left out");
}

void CommandLine::addCommands() {
    auto* const command =
        addErrand("commands", "List the commands", [this] { return call.listCommands(); });
    addPositional(*command, call.argument, "PATTERN",
                  "A text to look for; with * ? [ a pattern of keywords");
}

void CommandLine::addRun() {
    auto* const command = addErrand("run", "Do what a show file says, line by line",
                                    [this] { return call.runShow(); });
    addPositional(*command, call.argument, "FILE",
                  "A command a line, # comments, sleep, wait; or -")
        ->required();
    addTargets(*command);
    addTimeout(*command, "Longest time for each line, 120 if left out");
    addPolicies(*command);
}

void CommandLine::addPing() {
    auto* const command =
        addErrand("ping", "Show how long an answer takes", [this] { return call.ping(); });
    addTargets(*command);
    addTimeout(*command, "Longest time for an answer, 2 if left out");
}

void CommandLine::addCheck() {
    auto* const command =
        addErrand("check", "Say what a start of the daemon would say, without starting it", [this] {
            return check(call.argument, call.asJson ? CheckFormat::json : CheckFormat::text,
                         std::cout);
        });
    addPositional(*command, call.argument, "CONFIG",
                  "The configuration; the default one if left out");
    command->add_flag("--json", call.asJson, "Print one JSON object");
}

void CommandLine::addCompletion() {
    auto* const command = addErrand("completion", "Print a script that completes command lines",
                                    [this] { return printCompletion(); });
    addPositional(*command, call.argument, "SHELL", "bash, zsh or fish");
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
        for (const auto& host : hosts)
            call.hosts.push_back(trim(host));
    };
    command
        .add_option_function<std::vector<std::string>>("-H,--host", add,
                                                       "A daemon or a group; $ORX_HOST if left out")
        ->type_name("HOST[:PORT]")
        ->delimiter(',')
        ->allow_extra_args(false);
    command.add_option("--hosts", call.hostsFile, "The file with the names of daemons and groups")
        ->type_name("FILE");
    command.add_option("--config", call.configFile, "The daemon of this configuration")
        ->type_name("FILE");
}

void CommandLine::addTimeout(CLI::App& command, const std::string& text) {
    const auto read = [this](const std::string& seconds) {
        try {
            call.timeout = parseSeconds(seconds);
            if (call.timeout->count() == 0) throw std::invalid_argument("must be more than 0");
        } catch (const std::invalid_argument& mistake) {
            throw CLI::ValidationError("--timeout", mistake.what());
        }
    };
    command.add_option_function<std::string>("--timeout", read, text)->type_name("S");
}

void CommandLine::addPolicies(CLI::App& command) {
    command.add_flag("--confirm", call.policies.confirm, "See from STATUS that it was carried out");
    command.add_flag("--force", call.policies.force,
                     "Send without asking whether anybody can do it");
}

int CommandLine::run(int argc, const char* const* argv) {
    try {
        app.parse(hideFromParser({argv + 1, argv + argc}));
        refuseMixtures();
        if (errand) return errand();
        call.command = joined(commandWords, " ");
        if (!commandWords.empty()) return call.send();
        std::cerr << app.help();
        return asNumber(ExitStatus::usage);
    } catch (const CLI::ParseError& error) {
        std::ostringstream text;
        const bool isDone = app.exit(error, std::cout, text) == 0;
        if (!isDone) std::cerr << "orxctl: ";
        std::cerr << asWritten(text.str());
        return isDone ? 0 : asNumber(ExitStatus::usage);
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
        throw std::invalid_argument("one thing at a time: " + joined(commandWords, " ") + " or " +
                                    name);
    if (call.policies.wait) throw std::invalid_argument(name + " takes no --wait");
    if (name == "run") return;
    if (call.policies.confirm) throw std::invalid_argument(name + " takes no --confirm");
    if (call.policies.force) throw std::invalid_argument(name + " takes no --force");
}

int CommandLine::printCompletion() const {
    std::cout << completionScript(call.argument, words());
    return asNumber(ExitStatus::done);
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
