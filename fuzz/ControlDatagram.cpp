// Any bytes as a datagram of the control channel, all the way: listener, queue, projector control,
// encoder, a line in memory. Every line must be answered, logged or queued as its command says;
// every queued command must be carried out in order and send exactly its bytes; and between two
// commands the lens must come to rest with a status that the client understands.
#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "commands/CommandQueue.h"
#include "commands/Vocabulary.h"
#include "common/Check.h"
#include "common/Console.h"
#include "common/ReferenceCommand.h"
#include "common/RewrittenFile.h"
#include "control/ControlChannelListener.h"
#include "control/Status.h"
#include "core/Log.h"
#include "lens/ProjectorControl.h"
#include "orx/client/DaemonStatus.h"
#include "support/FakeSerialPort.h"
#include "support/FakeTime.h"

namespace orx::fuzz {
namespace {

using Texts = std::vector<std::string>;

/// Leaves a daemon that has taken enough steps; a client may ask for two thousand million.
struct EnoughSteps {};
/// Leaves a daemon that an argument has ended, as the design has it.
struct DaemonEnded {};
/// Leaves the loop of the projector control after one pass.
struct PassDone {};

/// A listener whose replies come here instead of to its socket.
class Channel final : public ControlChannelListener {
  public:
    Channel() : ControlChannelListener("127.0.0.1:0", nullptr) {}

    void reply(const sockaddr_in&, std::string_view text) const override {
        replies.emplace_back(text);
    }

    mutable Texts replies;
};

/// A model with every type of descriptor, and a few commands that it does not have.
std::map<std::string, ModelledCommand, std::less<>> modelledCommands() {
    constexpr std::array<int, 6> types{'A', 'B', 'D', 'I', 'X', '?'};
    constexpr std::array<int, 6> codes{3, 4, 0x23, 2, 2, 0};
    constexpr std::size_t unsupported = 17;
    std::map<std::string, ModelledCommand, std::less<>> commands;
    for (std::size_t index = 0; index < vocabulary.size(); ++index) {
        const std::string keyword(vocabulary[index].keyword);
        // The zoom has no native reset, so that it is reset by steps.
        if (index % unsupported == 1 || keyword == CMD_ZOOM_RESET) continue;
        auto& command = commands[keyword] = {"<" + keyword + ">"};
        if (vocabulary[index].argumentKind == ArgumentKind::none) continue;
        const int end = static_cast<int>(keyword.size()) + 1;
        const auto type = index % types.size();
        command.descriptors[1] = {-5000, 99'999, end, codes[type], types[type]};
        command.descriptors[2] = {-9, 9, end + 1, codes[5 - type], types[5 - type]};
    }
    return commands;
}

/// The model on its line, the same for every datagram.
class Bench {
  public:
    Bench() {
        line.onWrite = [this](const std::string&) {
            constexpr std::size_t enough = 80;
            if (++steps > enough) throw EnoughSteps();
        };
        model->setConnector(std::make_shared<SerialConnector>(
            settings, std::make_unique<test::FakeSerialPort>(line), time));
    }

    void startOver() {
        steps = 0;
        time.sleeps.clear();
        forgetWrites();
        settings->setDelay(usual.delay);
    }
    void forgetWrites() {
        line.writes.clear();
        line.events.clear();
    }

    [[nodiscard]] int delay() const { return settings->delay(); }

    static constexpr LineParameters usual{8, 1, 0, 9600, 100, 20};
    const std::map<std::string, ModelledCommand, std::less<>> commands = modelledCommands();
    const std::shared_ptr<Projector> model = makeModel();
    test::FakeLine line;

  private:
    [[nodiscard]] std::shared_ptr<Projector> makeModel() const {
        ArgumentTable arguments;
        CommandStrings strings;
        for (const auto& [keyword, command] : commands) {
            strings[keyword] = command.commandString;
            if (!command.descriptors.empty()) arguments[keyword] = command.descriptors;
        }
        return std::make_shared<Projector>("MODEL", arguments, strings,
                                           Projector::additiveChecksum);
    }

    test::FakeTime time;
    std::shared_ptr<SerialSettings> settings = std::make_shared<SerialSettings>(usual);
    std::size_t steps = 0;
};

Bench& bench() {
    static Bench instance;
    return instance;
}

bool isOneOf(const Command& command, const auto& keywords) {
    return std::ranges::any_of(keywords, [&](auto keyword) { return command.is(keyword); });
}

/// Whether a lens axis acts on it; what is sent then depends on where the axis is.
bool movesLens(const Command& command) {
    const auto ofAxis = [&command](const AxisCommands& axis) {
        return isOneOf(command,
                       std::array{axis.absCommand, axis.absStepsCommand, axis.stepUpCommand,
                                  axis.stepDownCommand, axis.calibrationStartCommand,
                                  axis.calibrationEndCommand, axis.resetCommand});
    };
    return ofAxis(zoomCommands) || ofAxis(focusCommands) ||
           isOneOf(command, std::array{CMD_LENS_RESET, CMD_LOAD_MEMORY});
}

/// Whether it concerns nothing but the daemon.
bool sendsNothing(const Command& command) {
    return isOneOf(
        command, std::array{CMD_QUIT, CMD_RESTART, CMD_SET_DELAY, CMD_CLEAR_MEMORY, CMD_SAVE_MEMORY,
                            zoomCommands.overrideCommand, focusCommands.overrideCommand,
                            zoomCommands.setResetStepsCommand, focusCommands.setResetStepsCommand});
}

Texts rawBytes(const Command& command) {
    if (command.arguments().empty()) return {};
    const auto& digits = command.arguments().front();
    std::string bytes;
    for (std::size_t place = 0; place < digits.size(); place += 2)
        bytes += static_cast<char>(digitValue(digits[place]) * 16 + digitValue(digits[place + 1]));
    return {bytes};
}

/// What goes out for a command that moves no lens.
Outcome<Texts> expectedWrites(const Command& command) {
    if (sendsNothing(command)) return {Texts{}, {}};
    if (command.is(CMD_RAW)) return {rawBytes(command), {}};
    const auto known = bench().commands.find(command.text(false));
    if (known == bench().commands.end()) return {Texts{}, {}};
    const auto bytes = bytesFor(known->second, Projector::additiveChecksum, command);
    return bytes.value ? Outcome<Texts>{Texts{*bytes.value}, {}} : Outcome<Texts>{{}, bytes.error};
}

/// Everything that the axes may send by themselves.
bool isLensStep(const std::string& bytes) {
    static const Texts steps = [] {
        Texts all;
        for (const auto keyword : {CMD_ZOOM_ABS_PLUS, CMD_ZOOM_ABS_MINUS, CMD_FOCUS_ABS_PLUS,
                                   CMD_FOCUS_ABS_MINUS, CMD_FOCUS_RESET, CMD_ZOOM_MINUS3})
            all.push_back(bench().model->commandString(Command(keyword)));
        return all;
    }();
    return std::ranges::find(steps, bytes) != steps.end();
}

/// A projector control that is watched: what it sends for each command, and what the lens does
/// before the next one.
class WatchedControl final : public CommandExecutor {
  public:
    WatchedControl() : control(bench().model, config(), loopTime) {
        loopTime.onSleep = [this] {
            if (loopTime.sleeps.size() > 1) throw PassDone();
        };
    }

    void execute(const Command& command) override {
        executed.push_back(command.text(true));
        bench().forgetWrites();
        const auto error = errorOf([&] { control.execute(command); });
        if (movesLens(command)) {
            expectEqual(error, "", "a lens command ended");
            expect(std::ranges::all_of(bench().line.writes, isLensStep), "no step of the lens");
        } else {
            checkWrites(expectedWrites(command), error);
        }
        if (!error.empty()) throw DaemonEnded();
        if (command.is(CMD_SET_DELAY) && !command.arguments().empty())
            expectEqual(bench().delay(), *wholeNumber(command.arguments().front()).value,
                        "the delay");
        walk();
    }

    Texts executed;

  private:
    static const MainConfig& config() {
        static const MainConfig settings(ConfigFile::Entries{{"abszoom.resetsteps", "2"},
                                                             {"abszoom.lockinmode", "5"},
                                                             {"absfocus.reducemax", "9%"}});
        return settings;
    }

    static void checkWrites(const Outcome<Texts>& expected, const std::string& error) {
        expectEqual(error, expected.error, "a command ended");
        expectEqualLists(bench().line.writes, expected.value.value_or(Texts{}), "what is sent");
    }

    /// One pass of the loop that steps the lens.
    void walk() {
        bench().forgetWrites();
        loopTime.sleeps.clear();
        try {
            control.run();
        } catch (const PassDone&) {
        }
        expect(std::ranges::all_of(bench().line.writes, isLensStep), "the lens sends other bytes");
        const auto reply = Status::statusReply();
        const auto status = client::DaemonStatus::parse(reply);
        expect(status && status->axes.size() == 2, "the client does not understand " + reply);
        expect(!status->busy, "the lens is still busy: " + reply);
    }

    test::FakeTime loopTime;
    ProjectorControl control;
};

/// What the rules make of a datagram.
struct Expected {
    std::string console;
    Texts commands;  ///< display texts of what is queued
    std::size_t replies = 0;
    bool ends = false;  ///< with a QUIT or RESTART, behind which nothing counts
    std::size_t restarts = 0;
};

void expectLine(Expected& expected, const std::string& text, const std::string& tag) {
    const Command command(text);
    if (!command.isValid()) {
        expected.console += tag + "src=192.0.2.7 unknown command (\"" + text + "\")\n";
    } else if (command.is("STATUS")) {
        ++expected.replies;
    } else if (!command.is("CLEARFLAGS")) {
        expected.console += "src=192.0.2.7 cmd=" + command.text(true) + "\n";
        expected.commands.push_back(command.text(true));
        expected.restarts += command.is("RESTART") ? 1U : 0U;
        expected.ends = command.is("RESTART") || command.is("QUIT");
    }
}

Expected expectedOf(std::string_view datagram, const std::string& tag) {
    Expected expected;
    std::string line;
    for (const char character : datagram) {
        if (character != '\n') {
            line += character;
            continue;
        }
        expectLine(expected, std::exchange(line, {}), tag);
        if (expected.ends) return expected;
    }
    if (!line.empty()) expectLine(expected, line, tag);
    return expected;
}

/// Gives the datagram to the channel and compares what it does with it.
void receive(Channel& channel, std::string_view datagram, const Expected& expected) {
    sockaddr_in sender{};
    ::inet_pton(AF_INET, "192.0.2.7", &sender.sin_addr);
    clearConsole();
    channel.replies.clear();
    channel.handleDatagram(datagram, sender);
    expectEqual(takeConsole(), expected.console, "the lines of the channel");
    expectEqual(channel.replies.size(), expected.replies, "the number of replies");
    for (const auto& reply : channel.replies)
        expect(client::DaemonStatus::parse(reply).has_value(), "a reply is none: " + reply);
}

/// Carries out what is queued, and a QUIT behind it that lets the queue end.
void carryOut(CommandQueue& queue, WatchedControl& control, Expected expected) {
    std::size_t restarts = 0;
    queue.setRestartCallback([&restarts] { ++restarts; });
    queue.push(std::make_shared<const Command>("QUIT"));
    if (!expected.ends) expected.commands.emplace_back("QUIT");
    bool complete = false;
    try {
        queue.run();
        complete = true;
    } catch (const DaemonEnded&) {
    } catch (const EnoughSteps&) {
    }
    if (!complete) expected.commands.resize(control.executed.size());
    expectEqualLists(control.executed, expected.commands, "what is carried out");
    if (complete) expectEqual(restarts, expected.restarts, "the number of restarts");
}

void check(std::string_view datagram) {
    static const RewrittenFile memory("var/lensmemory.cfg");
    static auto channel = std::make_unique<Channel>();
    static const auto tag = [] {
        return "[CTRLCHAN|#" + std::to_string(channel->socketFd()) + "] ";
    };
    // A short way for the lens: each of its steps is a command and a line of the log.
    memory.write("zoommax = 9\nfocusmax = 7\nmem = 1:3;5,2:1;9,\n");
    openLog("");
    Status::reset();
    Status::setDumb(false);
    bench().startOver();
    const auto control = std::make_shared<WatchedControl>();
    const auto queue = std::make_shared<CommandQueue>(control);
    channel->setCommandQueue(queue);
    const auto expected = expectedOf(datagram, tag());
    receive(*channel, datagram, expected);
    carryOut(*queue, *control, expected);
    if (expected.ends) channel = std::make_unique<Channel>();
}

}  // namespace
}  // namespace orx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orx::fuzz::check({reinterpret_cast<const char*>(data), size});
    return 0;
}
