#include "orxctl/check/KeyCheck.h"

#include <algorithm>
#include <array>

#include "commands/Vocabulary.h"
#include "config/ConfigKeys.h"
#include "lens/AxisCommands.h"
#include "lens/LensControl.h"
#include "orxctl/check/NumberCheck.h"
#include "orxdef/Wording.h"
#include "serial/SerialSettings.h"

namespace orx::orxctl {

using orxdef::alternatives;

namespace {

using config_key::aliasPrefix;
using config_key::texts;

std::vector<std::string> makeKnownKeys() {
    std::vector<std::string> keys(texts.begin(), texts.end());
    for (const auto& range : serial_range::all)
        keys.emplace_back(range.key);
    for (const auto& axis : {zoomCommands, focusCommands})
        for (const auto key : config_key::motion)
            keys.push_back(axisKey(axis.axisName, key));
    return keys;
}

/// Of a key that was cut, or lacks what stands ahead of it: "serial.baud" or "baudrate".
bool isPartOf(std::string_view key, std::string_view known) {
    constexpr std::size_t least = 4;
    return key.size() >= least && (known.starts_with(key) || known.ends_with(key));
}

bool isMeantAsAlias(std::string_view key) {
    const auto name = key.substr(0, aliasPrefix.size());
    const std::array<std::string_view, 1> prefix{aliasPrefix};
    return !keywordFor(key).empty() ||
           (name.ends_with('.') && !orxdef::nearest(name, prefix).empty());
}

std::string advice(std::string_view key) {
    if (isMeantAsAlias(key)) return R"(; an alias begins with "cmd.")";
    const auto likely = likelyKeys(key);
    return likely.empty() ? "; remove the line" : "; is it " + alternatives(likely) + "?";
}

void checkComment(const ConfigText& text, const ConfigText::Line& line, Report& report) {
    const std::string_view value = line.content.value;
    for (auto blank = value.find_first_of(" \t"); blank != std::string_view::npos;
         blank = value.find_first_of(" \t", blank + 1)) {
        const auto rest = value.substr(blank + 1);
        if (!looksLikeComment(rest)) continue;
        report.warn(text.placeOf(line), "the value is all of " + orxdef::quoted(value) + ", with " +
                                            orxdef::quoted(rest) + std::string(commentAdvice));
        return;
    }
}

}  // namespace

const std::vector<std::string>& knownKeys() {
    static const auto keys = makeKnownKeys();
    return keys;
}

std::vector<std::string_view> likelyKeys(std::string_view key) {
    const std::vector<std::string_view> keys(knownKeys().begin(), knownKeys().end());
    auto likely = orxdef::nearest(key, keys);
    if (!likely.empty()) return likely;
    std::ranges::copy_if(keys, std::back_inserter(likely),
                         [key](auto known) { return isPartOf(key, known); });
    return likely;
}

void checkKeys(const CheckedConfig& config, Report& report) {
    for (const auto& line : config.text.lines()) {
        if (line.content.kind != ConfigLine::Kind::entry) continue;
        const auto& key = line.content.key;
        if (std::ranges::find(texts, key) != texts.end())
            checkComment(config.text, line, report);
        else if (!key.starts_with(aliasPrefix) &&
                 std::ranges::find(knownKeys(), key) == knownKeys().end())
            report.warn(config.text.placeOf(line), "the daemon has no key " + orxdef::quoted(key) +
                                                       " and passes it over" + advice(key));
    }
}

}  // namespace orx::orxctl
