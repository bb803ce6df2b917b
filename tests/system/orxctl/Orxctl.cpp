#include "system/orxctl/Orxctl.h"

#include <csignal>
#include <sstream>

namespace orx::test {
namespace {

ChildStart startOf(const std::string& line, const Surroundings& surroundings) {
    ChildStart start{.command = {ORX_ORXCTL_EXECUTABLE},
                     .environment = {"XDG_CONFIG_HOME=" + surroundings.configurations},
                     .inputFile = surroundings.inputFile,
                     .onTerminal = surroundings.onTerminal};
    std::istringstream words(line);
    for (std::string word; words >> word;)
        start.command.push_back(word);
    return start;
}

}  // namespace

Orxctl::Orxctl(const std::string& line, const Surroundings& surroundings)
    : process(startOf(line, surroundings)) {
    process.expectErrorText();
}

CallResult Orxctl::waitForEnd() {
    const auto ending = process.waitForEnd();
    return {ending, process.output().bytes(), process.errorText()};
}

std::size_t Orxctl::waitForOutput(const std::string& text, std::size_t from) const {
    std::size_t place = std::string::npos;
    process.output().waitUntil(
        [&](const std::string& bytes) {
            place = bytes.find(text, from);
            return place != std::string::npos;
        },
        "the output \"" + text + "\"");
    return place + text.size();
}

void Orxctl::interrupt() const {
    process.signal(SIGINT);
}

CallResult resultOf(const std::string& line, const Surroundings& surroundings) {
    return Orxctl(line, surroundings).waitForEnd();
}

CallResult done(const std::string& output) {
    return {"exit status 0", output, ""};
}

}  // namespace orx::test
