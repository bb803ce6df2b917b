// The whole daemon inside the test process: configuration, definition file, a plain file in place
// of the serial line, and channels on a loopback address of this process's own.
#pragma once

#include <exception>
#include <filesystem>
#include <future>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "config/MainConfig.h"
#include "control/Status.h"
#include "core/InstallPrefix.h"
#include "core/Log.h"
#include "core/Orx.h"
#include "support/CapturedOutput.h"
#include "support/DefinitionImage.h"
#include "support/TemporaryFolder.h"
#include "support/UdpPeer.h"
#include "unit/core/PipedOutput.h"

namespace orx::test {

class OrxBench : public testing::Test {
  protected:
    OrxBench() {
        folder.write("line", "");
        DefinitionImage definitions;
        definitions.commands = {{1, "ON"}, {2, "Z+"}, {3, "Z++"}};
        definitions.blocks = {{.name = "MODEL", .strings = {{1, "<on>"}, {2, "<1>"}, {3, "<2>"}}}};
        folder.write("orx.ccd", definitions.bytes());
        showNoFlagsBut([] {});
    }
    ~OrxBench() override {
        if (daemon) release();
        Status::reset();
        openLog("");
    }

    /// Puts the status back as it is when a process starts, and lets `setters` change it.
    template <typename Setters>
    static void showNoFlagsBut(Setters setters) {
        Status::reset();
        Status::setDumb(false);
        setters();
        Status::reset();
    }

    /// The address of a control channel; each number is another port.
    static std::string channel(int number = 0) {
        return privateAddress() + ":" + std::to_string(firstPort + number);
    }

    static void send(int channelNumber, const std::string& datagram) {
        const auto port = static_cast<std::uint16_t>(firstPort + channelNumber);
        UdpPeer().send(ipv4(privateAddress(), port), datagram);
    }

    /// Writes the configuration file from `settings`.
    void configure() const {
        std::string content;
        for (const auto& [key, value] : settings)
            content.append(key).append(" = ").append(value).append("\n");
        folder.write("orx.cfg", content);
    }

    [[nodiscard]] std::shared_ptr<MainConfig> configuration() const {
        configure();
        return MainConfig::create(folder.file("orx.cfg"));
    }

    /// Builds the daemon from `settings`; gives what that wrote.
    std::string build() {
        return outputOf([this] { daemon = std::make_unique<Orx>(configuration()); });
    }

    /// The text of the error that keeps the daemon from being built.
    [[nodiscard]] std::string buildError() const {
        std::string text = "no error";
        outputOf([this, &text] {
            try {
                const Orx failing(configuration());
            } catch (const std::exception& error) {
                text = error.what();
            }
        });
        return text;
    }

    /// What a client sends to which channel.
    using Request = std::pair<int, std::string>;

    /// Runs the daemon and sends one of `requests` whenever its command queue starts anew. Gives
    /// what it wrote, and an error that ended it as the last line.
    std::string serve(const std::vector<Request>& requests) {
        return serve(requests, [] {});
    }

    /// The same, and releases the daemon, so that all its threads have written their last line.
    std::string serveToTheEnd(const std::vector<Request>& requests) {
        return serve(requests, [this] { daemon.reset(); });
    }

    /// Ends and releases the daemon; gives what that wrote.
    std::string release() {
        return outputOf([this] { daemon.reset(); });
    }

    /// The messages in a log file without their time stamps, the newest first.
    [[nodiscard]] std::vector<std::string> logged(const std::string& name = "orx.log") const {
        std::vector<std::string> messages;
        std::istringstream lines(contentOf(folder.file(name)));
        for (std::string line; std::getline(lines, line);)
            messages.push_back(line.substr(sizeof "HH:MM:SS.uuuuuu"));
        return messages;
    }

    /// What has gone out on the serial line.
    [[nodiscard]] std::string sent() const { return contentOf(folder.file("line")); }

    TemporaryFolder folder;
    std::map<std::string, std::string> settings{
        {"controlchannel", channel()},          {"definitionfile", folder.file("orx.ccd")},
        {"logfile", folder.file("orx.log")},    {"projector", "MODEL"},
        {"serial.device", folder.file("line")}, {"serial.delay", "0"},
    };
    std::unique_ptr<Orx> daemon;

  private:
    /// Below the ports that the system hands out by itself.
    static constexpr int firstPort = 17900;

    template <typename Afterwards>
    std::string serve(const std::vector<Request>& requests, Afterwards afterwards) {
        Pipe pipe;
        auto output =
            std::async(std::launch::async, [&pipe, &requests] { return converse(pipe, requests); });
        std::string error;
        {
            const StandardOutputTo piped(pipe.input.get());
            try {
                daemon->run();
            } catch (const std::exception& failure) {
                error = std::string("ERROR: ") + failure.what() + "\n";
            }
            afterwards();
        }
        pipe.input.close();
        return output.get() + error;
    }

    static std::string converse(const Pipe& pipe, const std::vector<Request>& requests) {
        const std::string cue = "[CMDQ] start\n";
        std::string heard;
        std::string piece(4096, '\0');
        std::size_t place = 0;
        auto next = requests.begin();
        for (;;) {
            const auto count = ::read(pipe.output.get(), piece.data(), piece.size());
            if (count <= 0) return heard;
            heard.append(piece, 0, static_cast<std::size_t>(count));
            for (auto found = heard.find(cue, place);
                 found != std::string::npos && next != requests.end();
                 found = heard.find(cue, place), ++next) {
                place = found + cue.size();
                send(next->first, next->second);
            }
        }
    }
};

}  // namespace orx::test
