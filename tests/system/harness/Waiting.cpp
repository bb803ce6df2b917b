#include "system/harness/Waiting.h"

#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace orx::test {
namespace {

std::chrono::seconds wantedPatience() {
    constexpr std::chrono::seconds aMinute{60};
    const char* wanted = std::getenv("ORX_TEST_PATIENCE");
    return wanted != nullptr ? std::chrono::seconds(std::stoi(wanted)) : aMinute;
}

}  // namespace

const std::chrono::seconds patience = wantedPatience();
const int patienceMs = static_cast<int>(std::chrono::milliseconds(patience).count());

void waitUntil(const std::function<bool()>& condition,
               const std::function<std::string()>& describe) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            throw std::runtime_error("waited in vain for " + describe());
        }
        std::this_thread::yield();
    }
}

}  // namespace orx::test
