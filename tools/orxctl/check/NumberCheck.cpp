#include "orxctl/check/NumberCheck.h"

#include <stdexcept>

#include "core/Text.h"
#include "orxdef/Wording.h"

namespace orx::orxctl {

std::optional<int> NumberCheck::read(const std::string& text, const Place& place,
                                     std::string_view wanted) const {
    try {
        std::size_t length = 0;
        const int number = std::stoi(text, &length);
        const auto rest = trim(text.substr(length));
        if (!rest.empty())
            report.warn(place, orxdef::quoted(text) + " is read as " + std::to_string(number) +
                                   "; leave out " + orxdef::quoted(rest) +
                                   std::string(looksLikeComment(rest) ? commentAdvice : ""));
        return number;
    } catch (const std::out_of_range& error) {
        report.ends(place, error.what(),
                    orxdef::quoted(text) + " is too large a number; give " + std::string(wanted),
                    stage);
    } catch (const std::invalid_argument& error) {
        report.ends(place, error.what(),
                    orxdef::quoted(text) + " is no number; give " + std::string(wanted), stage);
    }
    return std::nullopt;
}

std::optional<int> NumberCheck::read(const ConfigFile& values, const ConfigText& lines,
                                     std::string_view key, std::string_view wanted) const {
    const auto text = values.getString(key);
    if (text.empty()) return std::nullopt;
    return read(text, lines.placeOf(key), wanted);
}

bool looksLikeComment(std::string_view text) noexcept {
    return text.starts_with('#') || text.starts_with(';') || text.starts_with("//");
}

}  // namespace orx::orxctl
