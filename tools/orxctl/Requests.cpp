#include "orxctl/Requests.h"

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <vector>

#include "commands/Vocabulary.h"
#include "orxdef/DaemonCommands.h"
#include "orxdef/Wording.h"

namespace orx::orxctl {
namespace {

std::string suggestion(const std::string& word) {
    if (const auto keyword = keywordFor(word); !keyword.empty())
        return "; its keyword is " + orxdef::quoted(keyword);
    std::vector<std::string_view> names(errandNames.begin(), errandNames.end());
    for (const auto& entry : vocabulary)
        names.push_back(entry.keyword);
    const auto nearest = orxdef::nearest(word, names);
    if (nearest.empty()) return "; \"orxctl commands\" lists them all";
    return "; did you mean " + orxdef::alternatives(nearest) + "?";
}

client::Request read(const std::string& text) {
    try {
        return client::Request(text);
    } catch (const client::UnknownCommand& unknown) {
        throw std::invalid_argument(unknown.what() + suggestion(unknown.keyword()));
    }
}

/// Without an argument the end of a calibration takes the steps that were counted.
bool canDoWithout(std::string_view keyword) {
    return keyword == CMD_ZOOM_CALIBRATION_END || keyword == CMD_FOCUS_CALIBRATION_END;
}

}  // namespace

client::Request parseRequest(const std::string& text) {
    auto request = read(text);
    const auto& keyword = request.keyword();
    const auto given = request.arguments().size();
    const bool takesOne =
        orxdef::isForDaemon(keyword) && argumentKind(keyword) != ArgumentKind::none;
    if (takesOne && given == 0 && !canDoWithout(keyword))
        throw std::invalid_argument(keyword + " does nothing without an argument");
    if (takesOne && given > 1)
        throw std::invalid_argument(keyword + " takes one argument, not " + std::to_string(given));
    return request;
}

std::chrono::milliseconds parseSeconds(const std::string& text) {
    constexpr double day = 24 * 60 * 60;
    constexpr double msPerSecond = 1000;
    double seconds = 0;
    const auto* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, seconds);
    if (result.ec != std::errc() || result.ptr != end || !(seconds >= 0) || seconds > day)
        throw std::invalid_argument("must be seconds from 0 to 86400, not " + text);
    return std::chrono::milliseconds(std::llround(seconds * msPerSecond));
}

}  // namespace orx::orxctl
