#include "system/harness/LensStory.h"

#include "system/harness/Waiting.h"

namespace orx::test {

void LensStory::startLens(const Model& model, const std::string& more) {
    installation.writeLensMemory("zoommax = 2000\nfocusmax = 100\n");
    startWith(model, more);
}

void LensStory::startAnsweredLens(Model model, const std::string& more) {
    model.line.timeout = waitsForAnswer;
    startLens(model, more);
}

void LensStory::waitForPositions(const std::string& zoom, const std::string& focus) const {
    const auto expected = "IDLE; zoom: " + zoom + " focus: " + focus;
    std::string last;
    waitUntil(
        [&] {
            last = axes();
            return last == expected;
        },
        [&] { return expected + ", it is " + last; });
}

std::string LensStory::axes() const {
    const auto reply = status();
    return reply.substr(0, reply.rfind(';'));
}

std::vector<std::string> LensStory::lensLog() const {
    std::vector<std::string> messages;
    for (const auto& message : installation.log()) {
        if (message.starts_with("- ") || message.starts_with("  "))
            messages.insert(messages.begin(), message);
    }
    return messages;
}

}  // namespace orx::test
