// The executable itself, running, with its output and its serial line in the hands of a test.
#pragma once

#include <array>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "core/FileDescriptor.h"
#include "support/TemporaryFolder.h"
#include "unit/orxsim/DemoModels.h"

namespace orx::orxsim {

using Json = nlohmann::json;

/// Reads until `isEnough` holds of all that was read, or there is no more.
template <typename Condition>
std::string readUntil(int descriptor, Condition isEnough) {
    constexpr int patienceMs = 60'000;
    std::string bytes;
    while (!isEnough(bytes)) {
        pollfd readable{descriptor, POLLIN, 0};
        if (::poll(&readable, 1, patienceMs) <= 0) throw std::runtime_error("nothing comes");
        char byte = 0;
        if (::read(descriptor, &byte, 1) <= 0) break;
        bytes += byte;
    }
    return bytes;
}

/// The daemon's end of the line.
class LineEnd {
  public:
    explicit LineEnd(const std::string& path)
        : descriptor(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
        if (!descriptor.isOpen()) throw std::runtime_error("no device at " + path);
    }

    /// Gives how much the line has taken.
    std::size_t send(std::string_view bytes) const {
        const auto count = ::write(descriptor.get(), bytes.data(), bytes.size());
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }

    /// The next `size` bytes; fewer where the line is cut.
    [[nodiscard]] std::string receive(std::size_t size) const {
        return readUntil(descriptor.get(),
                         [size](const std::string& bytes) { return bytes.size() == size; });
    }

  private:
    FileDescriptor descriptor;
};

/// How the simulator is called.
struct Call {
    std::vector<std::string> options{};
    std::string definitions{};   ///< the demo models where it is empty
    std::string link{};          ///< in the test's folder where it is empty
    int output = -1;             ///< standard output; a pipe where there is none
    bool withoutOutput = false;  ///< standard output is closed
};

class RunningSimulator {
  public:
    explicit RunningSimulator(const Call& call)
        : linkPath(call.link.empty() ? folder.file("projector") : call.link) {
        std::array<int, 2> pipe{};
        if (::pipe2(pipe.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        readEnd = FileDescriptor(pipe[0]);
        writeEnd = FileDescriptor(pipe[1]);
        start(call);
    }
    RunningSimulator(const RunningSimulator&) = delete;
    RunningSimulator& operator=(const RunningSimulator&) = delete;
    ~RunningSimulator() {
        if (process == -1) return;
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
    }

    /// The next line of output, as it is.
    std::string line() {
        writeEnd.close();
        return readUntil(readEnd.get(),
                         [](const std::string& text) { return text.ends_with('\n'); });
    }
    Json event() { return Json::parse(line()); }

    /// All of the output from here on.
    std::string rest() {
        writeEnd.close();
        return readUntil(readEnd.get(), [](const std::string&) { return false; });
    }

    void closeReader() {
        writeEnd.close();
        readEnd.close();
    }
    /// Whether there is output that has not been read.
    [[nodiscard]] bool hasWritten() const {
        pollfd readable{readEnd.get(), POLLIN, 0};
        return ::poll(&readable, 1, 0) > 0;
    }
    /// Leaves no room for output. Only ahead of `line` and `rest`.
    void fillPipe() const {
        const auto hasRoom = [this] {
            pollfd writable{writeEnd.get(), POLLOUT, 0};
            return ::poll(&writable, 1, 0) > 0;
        };
        constexpr std::array<char, PIPE_BUF> piece{};
        while (hasRoom() && ::write(writeEnd.get(), piece.data(), piece.size()) > 0) {
        }
    }

    [[nodiscard]] bool waitUntilAsleep() const { return test::waitUntilAsleep(process); }

    void signal(int number) const { ::kill(process, number); }

    /// The exit status; -1 where a signal has ended the process, or nothing does.
    int wait() {
        int status = 0;
        if (!test::waitUntil([&] { return ::waitpid(process, &status, WNOHANG) == process; }))
            return -1;
        process = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    [[nodiscard]] const std::string& link() const { return linkPath; }
    [[nodiscard]] bool hasLink() const { return std::filesystem::is_symlink(linkPath); }
    [[nodiscard]] std::string errors() const { return test::contentOf(folder.file("errors")); }

  private:
    void start(const Call& call) {
        const auto definitions =
            call.definitions.empty() ? folder.write("orx.ccd", demoImage()) : call.definitions;
        std::vector<std::string> command{ORX_ORXSIM_EXECUTABLE, "--definitions", definitions,
                                         "--link", linkPath};
        command.insert(command.end(), call.options.begin(), call.options.end());
        std::vector<char*> pointers;
        for (auto& text : command)
            pointers.push_back(text.data());
        pointers.push_back(nullptr);
        const auto errorFile = folder.file("errors");
        process = ::fork();
        if (process != 0) return;
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::dup2(::open(errorFile.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600), STDERR_FILENO);
        ::dup2(call.output != -1 ? call.output : writeEnd.get(), STDOUT_FILENO);
        if (call.withoutOutput) ::close(STDOUT_FILENO);
        ::execv(pointers.front(), pointers.data());
        ::_exit(127);
    }

    test::TemporaryFolder folder;
    std::string linkPath;
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
    pid_t process = -1;
};

}  // namespace orx::orxsim
