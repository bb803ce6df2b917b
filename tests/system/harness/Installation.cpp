#include "system/harness/Installation.h"

#include <cstdlib>
#include <regex>
#include <stdexcept>
#include <unistd.h>

namespace orx::test {
namespace {

/// The time stamp "HH:MM:SS.uuuuuu" at the head of a log line.
double secondsOfDay(const std::string& line) {
    return std::stoi(line.substr(0, 2)) * 3600.0 + std::stoi(line.substr(3, 2)) * 60.0 +
           std::stod(line.substr(6, 9));
}

/// The time from one line of the log file to a later one.
double secondsBetween(const std::string& earlier, const std::string& later) {
    constexpr double day = 24 * 60 * 60;
    const double seconds = secondsOfDay(later) - secondsOfDay(earlier);
    return seconds < 0 ? seconds + day : seconds;
}

/// The daemon rewrites its log with every message, which on a busy disk can take seconds a line; so
/// the files are kept in memory where the system has a place for that.
bool chooseMemory() {
    constexpr const char* inMemory = "/dev/shm";
    constexpr int unlessChosen = 0;
    return ::access(inMemory, W_OK) == 0 && ::setenv("TMPDIR", inMemory, unlessChosen) == 0;
}

TemporaryFolder folderInMemory() {
    // Once only: a test may lay out several installations on threads of its own.
    [[maybe_unused]] static const bool chosen = chooseMemory();
    return {};
}

}  // namespace

Installation::Installation() : folder(folderInMemory()) {
    for (const auto* name : {"etc", "lib", "var/run"})
        std::filesystem::create_directories(folder.path() / name);
}

std::string Installation::write(const std::string& name, const std::string& content) const {
    return folder.write(name, content);
}

void Installation::writeConfiguration(const std::string& text) const {
    write("etc/orx.cfg", text);
}

void Installation::writeDefinitions(const DefinitionImage& image) const {
    write("lib/orx.ccd", image.bytes());
}

void Installation::writeLensMemory(const std::string& text) const {
    write("var/lensmemory.cfg", text);
}

void Installation::remove(const std::string& name) const {
    std::filesystem::remove_all(folder.path() / name);
}

void Installation::block(const std::string& name) const {
    remove(name);
    std::filesystem::create_directories(folder.path() / name);
}

bool Installation::has(const std::string& name) const {
    return std::filesystem::exists(folder.path() / name);
}

std::string Installation::lensMemory() const {
    return contentOf(file("var/lensmemory.cfg"));
}

std::vector<std::string> Installation::logLines() const {
    std::vector<std::string> lines;
    std::ifstream text(file("var/run/orx.log"));
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> Installation::log() const {
    const std::regex stamped(R"(\d\d:\d\d:\d\d\.\d{6} ([^]*))");
    auto lines = logLines();
    for (auto& line : lines) {
        std::smatch match;
        if (!std::regex_match(line, match, stamped)) {
            throw std::runtime_error("no time stamp in the log line \"" + line + "\"");
        }
        line = std::string(match[1]);
    }
    return lines;
}

double Installation::pace() const {
    std::vector<std::string> sent;
    for (const auto& line : logLines())
        if (line.find(" sending ") != std::string::npos) sent.push_back(line);
    return secondsBetween(sent.at(1), sent.at(0));
}

}  // namespace orx::test
