#include "orxctl/Wording.h"

#include <sstream>

namespace orx::orxctl {

std::string secondsText(std::chrono::milliseconds time) {
    std::ostringstream text;
    text << std::chrono::duration<double>(time).count() << " s";
    return text.str();
}

std::string millisecondsText(double milliseconds) {
    constexpr double ten = 10;
    constexpr double hundred = 100;
    std::ostringstream text;
    text.precision(milliseconds < ten ? 2 : milliseconds < hundred ? 1 : 0);
    text << std::fixed << milliseconds << " ms";
    return text.str();
}

std::string joined(const std::vector<std::string>& words, std::string_view between) {
    std::string text;
    for (const auto& word : words)
        text.append(text.empty() ? "" : between).append(word);
    return text;
}

}  // namespace orx::orxctl
