#include "orxctl/check/ConfigText.h"

#include <algorithm>
#include <fstream>
#include <utility>

#include "orxdef/Wording.h"

namespace orx::orxctl {
namespace {

bool isEntryOf(const ConfigText::Line& line, std::string_view key) {
    return line.content.kind == ConfigLine::Kind::entry && line.content.key == key;
}

}  // namespace

ConfigText::ConfigText(std::string path) : filePath(std::move(path)) {
    std::ifstream file(filePath);
    std::size_t number = 0;
    for (std::string text; std::getline(file, text);) {
        ++number;
        auto content = parseConfigLine(text);
        if (content.kind != ConfigLine::Kind::nothing)
            contents.push_back({number, std::move(content)});
    }
}

ConfigFile::Entries ConfigText::entries() const {
    ConfigFile::Entries entries;
    for (const auto& [number, content] : contents)
        if (content.kind == ConfigLine::Kind::entry) entries[content.key] = content.value;
    return entries;
}

Place ConfigText::placeOf(std::string_view key) const {
    const auto line =
        std::find_if(contents.rbegin(), contents.rend(),
                     [key](const Line& candidate) { return isEntryOf(candidate, key); });
    return line != contents.rend() ? placeOf(*line) : Place{.subject = std::string(key)};
}

Place ConfigText::placeOf(const Line& line) const {
    return {.subject = line.content.key, .file = filePath, .line = line.number};
}

Place ConfigText::whole(std::string subject) const {
    return {.subject = std::move(subject), .file = filePath};
}

void checkLines(const ConfigText& text, Stage stage, Report& report) {
    for (auto line = text.lines().begin(); line != text.lines().end(); ++line) {
        const auto place = text.placeOf(*line);
        if (line->content.kind == ConfigLine::Kind::malformed) {
            report.ends(place, ConfigFile::parseError(text.path(), line->number),
                        R"(the line has no "="; write "key = value", or "#" ahead of a comment)",
                        stage);
            continue;
        }
        const auto again = std::find_if(
            line + 1, text.lines().end(),
            [&line](const ConfigText::Line& later) { return isEntryOf(later, line->content.key); });
        if (again != text.lines().end())
            report.warn(place, orxdef::quoted(line->content.key) + " stands again on line " +
                                   std::to_string(again->number) +
                                   ", and the later one counts; remove one of them");
    }
}

}  // namespace orx::orxctl
