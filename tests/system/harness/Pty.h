// The serial line: a pseudo-terminal whose other side plays the projector.
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <termios.h>
#include <thread>

#include "core/FileDescriptor.h"
#include "system/harness/ByteRecorder.h"

namespace orx::test {

class Pty {
  public:
    Pty();
    Pty(const Pty&) = delete;
    Pty& operator=(const Pty&) = delete;
    ~Pty();

    /// The path of the device, for the configuration.
    [[nodiscard]] const std::string& device() const { return path; }

    /// Waits until the bytes on the line begin with `expected`. Throws, showing the bytes, where
    /// they do not.
    void waitFor(const std::string& expected) const;

    /// All bytes that the daemon has put on the line before this call. Once the daemon has set the
    /// line up.
    [[nodiscard]] std::string written();

    /// Sends `bytes` to the daemon.
    void send(const std::string& bytes) const;

    /// Answers with as many bytes as the daemon reads for one command, `commands` times over: with
    /// a long reply timeout, each command waits for this.
    void answer(int commands) const;

    /// Sends `noise` without end from now on.
    void flood(const std::string& noise);

    /// Takes nothing more from the daemon until `resume`, as a projector does that stops the line.
    void hold() const;
    void resume() const;

    /// How many bytes wait on the line to be read by the daemon.
    [[nodiscard]] int waiting() const;

    /// The parameters of the line as they stand.
    [[nodiscard]] termios attributes() const;

    /// Pulls the line out: it hangs up, and nothing is recorded any more.
    void unplug();

  private:
    [[nodiscard]] std::string withoutMarks(std::string bytes) const;
    void stopFlood();
    [[nodiscard]] bool waitForRoom() const;

    FileDescriptor master;
    std::string path;
    FileDescriptor slave;  ///< keeps the line up while no daemon has it open
    std::unique_ptr<ByteRecorder> recorder;
    int marks = 0;
    std::atomic<bool> flooding = false;
    std::thread flooder;
};

}  // namespace orx::test
