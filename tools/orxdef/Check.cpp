#include "orxdef/Check.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string_view>

#include "orxdef/BinaryReader.h"
#include "orxdef/BinaryWriter.h"
#include "orxdef/FileContents.h"
#include "orxdef/Surprises.h"
#include "orxdef/TomlReader.h"
#include "orxdef/Wording.h"
#include "projector/DefinitionFormat.h"

namespace orx::orxdef {
namespace {

bool hasMagic(std::string_view content) {
    const auto& magic = definition_format::magic;
    return std::ranges::equal(magic, content.substr(0, magic.size()), {}, {},
                              [](char byte) { return static_cast<unsigned char>(byte); });
}

/// No TOML holds a zero byte, and no binary file is without one.
bool isBinary(const std::string& path, std::string_view content) {
    if (path.ends_with(".toml")) return false;
    return path.ends_with(".ccd") || hasMagic(content) ||
           content.find('\0') != std::string_view::npos;
}

/// Of a file that cannot be read at all there is nothing more to say.
void findSurprisesIf(bool isReadable, const DefinitionSet& definitions, Mistakes& mistakes) {
    if (isReadable || !definitions.models.empty()) findSurprises(definitions, mistakes);
}

/// Each binary file by itself, all files of TOML together.
void checkFiles(Mistakes& mistakes) {
    auto contents = readFiles(mistakes);
    bool hasText = false;
    for (std::size_t file = 0; file < contents.size(); ++file) {
        auto& content = contents[file];
        const bool isText = content && !isBinary(mistakes.fileName(file), *content);
        hasText = hasText || isText;
        if (!content || isText) continue;
        const auto before = mistakes.count();
        const auto definitions = readBinary(*content, file, mistakes);
        findSurprisesIf(mistakes.count() == before, definitions, mistakes);
        content.reset();
    }
    if (!hasText) return;
    const auto before = mistakes.count();
    const auto definitions = parseToml(contents, mistakes);
    static_cast<void>(binaryImage(definitions, mistakes));
    findSurprisesIf(mistakes.count() == before, definitions, mistakes);
}

nlohmann::ordered_json asJson(const Mistake& mistake, const Mistakes& mistakes) {
    nlohmann::ordered_json json{{"severity", nameOf(mistake.severity)},
                                {"file", mistakes.fileName(mistake.place.file)}};
    if (mistake.place.byte) {
        json["byte"] = *mistake.place.byte;
    } else {
        json["line"] = mistake.place.line;
        json["column"] = mistake.place.column;
    }
    json["message"] = mistake.message;
    return json;
}

void printJson(const Mistakes& mistakes, std::ostream& output) {
    auto findings = nlohmann::ordered_json::array();
    for (const auto& mistake : mistakes.sorted())
        findings.push_back(asJson(mistake, mistakes));
    const nlohmann::ordered_json report{{"findings", findings},
                                        {"errors", mistakes.count(Severity::error)},
                                        {"warnings", mistakes.count(Severity::warning)},
                                        {"notes", mistakes.count(Severity::note)}};
    // A file name may be any bytes; JSON is UTF-8.
    output << report.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

void printText(const Mistakes& mistakes, std::ostream& output) {
    for (const auto& mistake : mistakes.sorted())
        output << mistakes.describe(mistake.place) << ": " << nameOf(mistake.severity) << ": "
               << mistake.message << '\n';
    output << counted(mistakes.count(Severity::error), "error") << ", "
           << counted(mistakes.count(Severity::warning), "warning") << ", "
           << counted(mistakes.count(Severity::note), "note") << '\n';
}

}  // namespace

int check(const std::vector<std::string>& paths, CheckFormat format, std::ostream& output) {
    Mistakes mistakes(paths);
    checkFiles(mistakes);
    if (format == CheckFormat::json)
        printJson(mistakes, output);
    else
        printText(mistakes, output);
    return mistakes.count() == mistakes.count(Severity::note) ? 0 : 1;
}

}  // namespace orx::orxdef
