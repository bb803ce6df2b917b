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

using Words = std::span<const std::string_view>;

std::string suggestion(const std::string& word, Words otherWords) {
    if (const auto keyword = keywordFor(word); !keyword.empty())
        return "; its keyword is " + orxdef::quoted(keyword);
    std::vector<std::string_view> names(otherWords.begin(), otherWords.end());
    for (const auto& entry : vocabulary)
        names.push_back(entry.keyword);
    const auto nearest = orxdef::nearest(word, names);
    if (nearest.empty()) return "; \"orxctl commands\" lists them all";
    return "; did you mean " + orxdef::alternatives(nearest) + "?";
}

client::Request read(const std::string& text, Words otherWords) {
    try {
        return client::Request(text);
    } catch (const client::UnknownCommand& unknown) {
        throw std::invalid_argument(unknown.what() + suggestion(unknown.keyword(), otherWords));
    }
}

/// Without an argument the end of a calibration takes the steps that were counted.
bool canDoWithout(std::string_view keyword) {
    return keyword == CMD_ZOOM_CALIBRATION_END || keyword == CMD_FOCUS_CALIBRATION_END;
}

/// Whether all of `word` is a number of its kind, and one that there is.
template <typename Number>
bool isNumber(std::string_view word) {
    if (word.starts_with('+')) word.remove_prefix(1);
    Number value{};
    const auto* const end = word.data() + word.size();
    const auto result = std::from_chars(word.data(), end, value);
    return result.ec == std::errc() && result.ptr == end &&
           std::isfinite(static_cast<double>(value));
}

/// The daemon reads a number as far as it goes: 1O0 as 1, and 50% as 50.
void checkNumbers(const client::Request& request) {
    const auto kind = argumentKind(request.keyword());
    for (const auto& word : request.arguments()) {
        if (kind == ArgumentKind::integer && !isNumber<int>(word))
            throw std::invalid_argument(request.keyword() + " takes whole numbers, not " +
                                        orxdef::quoted(word));
        if (kind == ArgumentKind::decimal && !isNumber<double>(word))
            throw std::invalid_argument(request.keyword() + " takes decimal numbers, not " +
                                        orxdef::quoted(word));
    }
}

}  // namespace

client::Request parseRequest(const std::string& text, Words otherWords) {
    auto request = read(text, otherWords);
    checkNumbers(request);
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
