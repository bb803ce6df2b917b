// A lens on the bench: made-up projector models on a serial line in memory, with a log and a status
// that are fresh for every test.
#pragma once

#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/Command.h"
#include "control/Status.h"
#include "core/Log.h"
#include "projector/Projector.h"
#include "serial/SerialConnector.h"
#include "support/CapturedOutput.h"
#include "support/FakeSerialPort.h"
#include "support/FakeTime.h"
#include "support/TemporaryFolder.h"

namespace orx::test {

using Lines = std::vector<std::string>;

/// `count` times `text`.
inline Lines times(std::size_t count, const std::string& text) {
    return Lines(count, text);
}

/// `first` and `second`, one after the other.
inline Lines joined(Lines first, const Lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// What a model sends for `keyword`; differs from the keyword, so that a keyword sent as it is
/// shows.
inline std::string wireText(const std::string& keyword) {
    return "<" + keyword + ">";
}

/// A command whose argument word no check has seen, as no client can send it.
inline Command withUncheckedWord(const std::string& keyword, const std::string& word) {
    Command command(keyword);
    const_cast<std::vector<std::string>&>(command.arguments()).assign({word});
    return command;
}

/// Matches what throws `Error` with the text of the standard integer conversion.
template <typename Error>
auto ThrowsStoi() {
    return testing::ThrowsMessage<Error>(testing::StrEq("stoi"));
}

class LensBench : public testing::Test {
  public:
    LensBench(const LensBench&) = delete;
    LensBench& operator=(const LensBench&) = delete;

  protected:
    LensBench() {
        Status::reset();
        Status::clearFlags();
        clearLog();
    }
    ~LensBench() override { Status::reset(); }

    /// A connected model with these command strings and argument descriptors.
    std::shared_ptr<Projector> connectedModel(CommandStrings strings, ArgumentTable arguments = {},
                                              int checksum = 0) {
        auto model = std::make_shared<Projector>("BENCH", std::move(arguments), std::move(strings),
                                                 checksum);
        outputOf([&] {
            model->setConnector(std::make_shared<SerialConnector>(
                settings, std::make_unique<FakeSerialPort>(line), lineTime));
        });
        clearLog();  // of the line about the opened device
        return model;
    }

    /// A connected model that knows these keywords.
    std::shared_ptr<Projector> modelKnowing(const Lines& keywords) {
        CommandStrings strings;
        for (const auto& keyword : keywords)
            strings[keyword] = wireText(keyword);
        return connectedModel(std::move(strings));
    }

    /// The keywords whose strings went out, in order; anything else as it went out.
    [[nodiscard]] Lines sent() const {
        Lines keywords;
        for (const auto& bytes : line.writes) {
            const bool isWireText = bytes.size() > 2 && bytes.front() == '<' && bytes.back() == '>';
            keywords.push_back(isWireText ? bytes.substr(1, bytes.size() - 2) : bytes);
        }
        return keywords;
    }

    /// The messages in the log file, oldest first, without those about sent bytes.
    [[nodiscard]] Lines logged() const {
        constexpr std::size_t stampLength = sizeof "HH:MM:SS.uuuuuu";
        std::istringstream file(contentOf(logPath()));
        Lines messages;
        for (std::string text; std::getline(file, text);) {
            const auto message = text.substr(stampLength);
            if (!message.starts_with("sending ")) messages.insert(messages.begin(), message);
        }
        return messages;
    }

    /// Forgets all that was logged so far.
    void clearLog() const {
        openLog(logPath());
        std::filesystem::remove(logPath());
    }

    /// Runs `action` just as the bytes number `count`, counted from 1, go out.
    template <typename Action>
    void atWrite(std::size_t count, Action action) {
        line.onWrite = [this, count, action](const std::string&) {
            if (line.writes.size() == count) action();
        };
    }

    [[nodiscard]] std::string logPath() const { return folder.file("orx.log"); }

    /// The flags of the status reply.
    [[nodiscard]] static std::string flags() {
        const auto reply = Status::statusReply();
        const auto begin = reply.rfind(';') + 1;
        return reply.substr(begin, reply.size() - begin - 1);
    }

    TemporaryFolder folder;
    FakeLine line;
    FakeTime lineTime;
    std::shared_ptr<SerialSettings> settings = std::make_shared<SerialSettings>(LineParameters{
        .bytesize = 8, .stopbits = 1, .parity = 0, .baudrate = 9600, .timeout = 100, .delay = 20});
};

}  // namespace orx::test
