#include "harness/StartedProgram.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

#include "core/FileDescriptor.h"
#include "harness/Clock.h"
#include "harness/Cores.h"
#include "harness/UdpClient.h"
#include "system/harness/Spawn.h"

namespace orx::bench {
namespace {

void readUntil(const FileDescriptor& output, const std::string& text) {
    std::string console;
    std::array<char, 4096> buffer;
    while (console.find(text) == std::string::npos) {
        const auto size = ::read(output.get(), buffer.data(), buffer.size());
        if (size <= 0) throw std::runtime_error(std::string("not ready: ").append(console));
        console.append(buffer.data(), static_cast<std::size_t>(size));
    }
}

}  // namespace

double timeToAnswer(const std::vector<std::string>& command, int core, const std::string& readyText,
                    int port) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe to be had");
    const FileDescriptor output(ends[0]);
    FileDescriptor input(ends[1]);
    const UdpClient client(port);
    const auto here = placements().front().client;
    stayOn(core);
    const Stopwatch stopwatch;
    const auto process = test::spawn(
        {.command = command, .environment = {}, .standardDescriptors = {0, input.get(), 2}});
    stayOn(here);
    input.close();
    readUntil(output, readyText);
    static_cast<void>(client.ask("STATUS"));
    const auto taken = stopwatch.microseconds();
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
    return taken;
}

}  // namespace orx::bench
