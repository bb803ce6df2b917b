#include "config/ConfigLine.h"

#include "core/Text.h"

namespace orx {
namespace {

bool isComment(std::string_view trimmedLine) {
    constexpr std::string_view commentCharacters = "#;";
    return commentCharacters.find(trimmedLine.front()) != std::string_view::npos;
}

}  // namespace

ConfigLine parseConfigLine(std::string_view line) {
    const auto text = trim(line);
    if (text.empty() || isComment(text)) return {};
    const auto separator = text.find('=');
    if (separator == std::string::npos) return {.kind = ConfigLine::Kind::malformed};
    return {ConfigLine::Kind::entry, trim(text.substr(0, separator)),
            trim(text.substr(separator + 1))};
}

}  // namespace orx
