// The base of the system tests: an installation, a serial line, a client, and the daemon once it is
// started. Every story ends with QUIT and exit status 0, unless the test has ended the daemon.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "system/harness/Client.h"
#include "system/harness/Daemon.h"
#include "system/harness/Installation.h"
#include "system/harness/Models.h"
#include "system/harness/Pty.h"

namespace orx::test {

class Story : public testing::Test {
  protected:
    void TearDown() override;

    /// A configuration for `projector` on the line, with one control channel and the lines `more`.
    [[nodiscard]] std::string configuration(const std::string& projector,
                                            const std::string& more = "") const;

    /// Installs `model` and a configuration that selects it, with the lines `more`.
    void install(const Model& model, const std::string& more = "") const;

    /// Starts the daemon on what is installed, and waits until its queue runs.
    void start(const Launch& launch = {});
    /// Installs `model` and starts the daemon.
    void startWith(const Model& model, const std::string& more = "");
    /// Starts a daemon that is to end by itself; gives how it ended.
    std::string startAndWaitForEnd(const Launch& launch = {});

    /// Sends `text` as one datagram to the first control channel.
    void send(const std::string& text) const { client.send(text); }

    /// Sends RESTART and waits until the queue runs again.
    void restart();

    /// Waits until all commands that were sent have been executed.
    void waitUntilExecuted();

    [[nodiscard]] std::string status() const { return client.status(); }
    /// Asks for the status until it is exactly `expected`.
    void waitForStatus(const std::string& expected) const;

    /// Waits until the newest message of the log file is `message`.
    void waitForLog(const std::string& message) const;

    /// Sends QUIT; gives how the daemon ended.
    std::string quit();

    Installation installation;
    Pty line;
    Client client;
    std::unique_ptr<Daemon> daemon;

  private:
    int tickets = 0;
};

}  // namespace orx::test
