#include "config/ConfigFile.h"

#include <fstream>
#include <stdexcept>
#include <utility>

#include "core/Console.h"
#include "core/Text.h"

namespace orx {
namespace {

bool isComment(std::string_view trimmedLine) {
    constexpr std::string_view commentCharacters = "#;";
    return commentCharacters.find(trimmedLine.front()) != std::string_view::npos;
}

}  // namespace

ConfigFile::ConfigFile(std::string path) : fileName(std::move(path)) {
    load();
}

bool ConfigFile::isReadable(const std::string& path) {
    return std::ifstream(path).is_open();
}

void ConfigFile::load() {
    std::ifstream file(fileName);
    int lineNumber = 0;
    for (std::string line; std::getline(file, line);)
        parseLine(trim(line), ++lineNumber);
}

void ConfigFile::parseLine(std::string_view line, int lineNumber) {
    if (line.empty() || isComment(line)) return;
    const auto separator = line.find('=');
    if (separator == std::string_view::npos) {
        throw std::runtime_error("[config] " + fileName + ", line " + std::to_string(lineNumber) +
                                 ": parse error");
    }
    entries[trim(line.substr(0, separator))] = trim(line.substr(separator + 1));
}

void ConfigFile::reload() {
    entries.clear();
    load();
}

void ConfigFile::save() {
    std::ofstream file(fileName, std::ios::trunc);
    if (!file.is_open()) throw std::runtime_error("could not write to file: " + fileName);
    for (const auto& [key, value] : entries)
        file << key << " = " << value << std::endl;
    file << '\n';
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
