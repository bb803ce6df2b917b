#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <thread>

#include "harness/Cores.h"
#include "harness/Server.h"
#include "harness/UdpClient.h"
#include "rows/Rows.h"
#include "system/harness/Spawn.h"

namespace orx::bench {
namespace {

/// Whether all threads of a process are under a tracer.
bool isTraced(pid_t process) {
    const auto folder = "/proc/" + std::to_string(process) + "/task";
    const auto threads = std::filesystem::directory_iterator(folder);
    return std::all_of(begin(threads), end(threads), [](const auto& thread) {
        std::ifstream status(thread.path() / "status");
        for (std::string line; std::getline(status, line);) {
            if (line.starts_with("TracerPid:")) return line != "TracerPid:\t0";
        }
        return false;
    });
}

/// strace on a process; its records are complete once it is gone.
class Tracer {
  public:
    Tracer(pid_t traced, const std::string& records)
        : process(test::spawn({.command = {"/usr/bin/strace", "-f", "-q", "-o", records, "-p",
                                           std::to_string(traced)},
                               .environment = {},
                               .standardDescriptors = {0, 2, 2}})) {
        constexpr int attempts = 10'000;
        for (int attempt = 0; !isTraced(traced); ++attempt) {
            if (attempt == attempts) throw std::runtime_error("strace cannot trace the daemon");
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    Tracer(const Tracer&) = delete;
    Tracer& operator=(const Tracer&) = delete;
    ~Tracer() {
        ::kill(process, SIGTERM);
        ::waitpid(process, nullptr, 0);
    }

  private:
    pid_t process;
};

/// The system calls in the records, of all threads. The lens wakes now and then whatever is asked,
/// and its sleeps do not count.
long callsIn(const std::string& records) {
    long calls = 0;
    std::ifstream lines(records);
    for (std::string line; std::getline(lines, line);) {
        const bool isSeenBefore = line.find("<... ") != std::string::npos;
        const bool isSleep = line.find(" clock_nanosleep(") != std::string::npos;
        if (!isSeenBefore && !isSleep) ++calls;
    }
    return calls;
}

}  // namespace

void measureSystemCalls(const Run& run) {
    const int port = freePort();
    const auto placement = placements().front();
    stayOn(placement.client);
    const Server daemon(run.setup.command({.ports = {port}}), placement.server);
    const UdpClient client(port);
    client.waitForAnswer("STATUS");
    const auto records = run.setup.inMemory("strace");
    constexpr int questions = 1000;
    {
        const Tracer tracer(daemon.id(), records);
        for (int asked = 0; asked < questions; ++asked)
            static_cast<void>(client.ask("STATUS"));
    }
    const auto calls = static_cast<double>(callsIn(records)) / questions;
    if (calls < 1.99) throw std::runtime_error("strace has missed system calls");
    // Up to half a dozen calls go with attaching and detaching.
    run.add(figureRow("STATUS: system calls a question", "", calls,
                      {.kind = Bound::Kind::atMost, .value = 2.01, .exact = true}));
}

}  // namespace orx::bench
