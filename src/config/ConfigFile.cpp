#include "config/ConfigFile.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "config/FileReplacement.h"
#include "core/Console.h"
#include "core/InputFile.h"
#include "core/Text.h"

namespace orx {

ConfigFile::ConfigFile(std::string path) : fileName(std::move(path)) {
    load();
}

ConfigFile::ConfigFile(Entries given) : entries(std::move(given)) {}

bool ConfigFile::isReadable(const std::string& path) {
    return InputFile(path).isOpen();
}

void ConfigFile::load() {
    InputFile file(fileName);
    auto content = file.readAll();
    // What is left of a line that a failing disk has cut would say something else.
    if (file.isCutOff()) content.resize(content.rfind('\n') + 1);
    std::size_t lineNumber = 0;
    for (std::string_view rest = content; !rest.empty();) {
        const auto line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        take(parseConfigLine(line), ++lineNumber);
    }
}

void ConfigFile::take(ConfigLine line, std::size_t lineNumber) {
    if (line.kind == ConfigLine::Kind::malformed) {
        throw std::runtime_error(parseError(fileName, lineNumber));
    }
    if (line.kind == ConfigLine::Kind::entry) entries[line.key] = std::move(line.value);
}

std::string ConfigFile::parseError(const std::string& path, std::size_t lineNumber) {
    return "[config] " + path + ", line " + std::to_string(lineNumber) + ": parse error";
}

void ConfigFile::reload() {
    entries.clear();
    load();
}

void ConfigFile::save() {
    std::string text;
    for (const auto& [key, value] : entries)
        text.append(key).append(" = ").append(value).append("\n");
    FileReplacement(fileName).replaceWith(text.append("\n"));
}

void ConfigFile::dump() const {
    for (const auto& [key, value] : entries) {
        printLine(std::string("[config] ").append(key).append(" = ").append(value));
    }
}

std::string ConfigFile::getString(std::string_view key) const {
    const auto entry = entries.find(key);
    return entry != entries.end() ? entry->second : std::string();
}

int ConfigFile::getInt(std::string_view key, int fallback) const {
    const auto value = getString(key);
    return value.empty() ? fallback : std::stoi(value);
}

std::vector<std::string> ConfigFile::getList(std::string_view key) const {
    const auto entry = entries.find(key);
    if (entry == entries.end()) return {};
    std::vector<std::string> pieces;
    std::string_view rest = entry->second;
    for (auto comma = rest.find(','); comma != std::string_view::npos; comma = rest.find(',')) {
        pieces.push_back(trim(rest.substr(0, comma)));
        rest.remove_prefix(comma + 1);
    }
    pieces.push_back(trim(rest));
    return pieces;
}

}  // namespace orx
