#include "harness/Server.h"

#include <array>
#include <chrono>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>

#include "harness/Cores.h"
#include "system/harness/Spawn.h"

namespace orx::bench {
namespace {

pid_t start(const std::vector<std::string>& command, int core,
            const std::vector<std::string>& environment, int output) {
    const auto here = placements().front().client;
    stayOn(core);
    const auto process = test::spawn(
        {.command = command, .environment = environment, .standardDescriptors = {0, output, 2}});
    stayOn(here);
    return process;
}

/// The number behind `name` in a file of the process.
long numberIn(const std::filesystem::path& file, const std::string& name) {
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(name)) return std::stol(line.substr(name.size()));
    }
    throw std::runtime_error("no " + name + " in " + file.string());
}

}  // namespace

Server::Server(const std::vector<std::string>& command, int core,
               const std::vector<std::string>& environment)
    : output(::memfd_create("output", MFD_CLOEXEC)),
      process(start(command, core, environment, output.get())) {}

Server::~Server() {
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
}

void Server::waitFor(const std::string& text) const {
    constexpr int attempts = 10'000;
    std::string console;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        std::array<char, 1 << 16> buffer{};
        const auto size = ::pread(output.get(), buffer.data(), buffer.size(), 0);
        console.assign(buffer.data(), static_cast<std::size_t>(size));
        if (console.find(text) != std::string::npos) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    throw std::runtime_error("no \"" + text + "\" in: " + console);
}

std::filesystem::path Server::folder() const {
    return "/proc/" + std::to_string(process);
}

double Server::cpuTime() const {
    clockid_t clock{};
    timespec time{};
    if (::clock_getcpuclockid(process, &clock) != 0 || ::clock_gettime(clock, &time) != 0) {
        throw std::runtime_error("a program under measurement has ended");
    }
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double Server::memory() const {
    return static_cast<double>(numberIn(folder() / "smaps_rollup", "Pss:"));
}

double Server::ownMemory() const {
    return static_cast<double>(numberIn(folder() / "smaps_rollup", "Anonymous:"));
}

long Server::switches() const {
    long sum = 0;
    for (const auto& thread : std::filesystem::directory_iterator(folder() / "task")) {
        sum += numberIn(thread.path() / "status", "voluntary_ctxt_switches:");
        sum += numberIn(thread.path() / "status", "nonvoluntary_ctxt_switches:");
    }
    return sum;
}

}  // namespace orx::bench
