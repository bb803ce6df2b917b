#include "system/harness/Waiting.h"

#include <stdexcept>
#include <thread>

namespace orx::test {

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
