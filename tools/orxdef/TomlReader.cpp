#include "orxdef/TomlReader.h"

#include <array>
#include <stdexcept>
#include <utility>
#include <vector>

#include "core/Text.h"
#include "orxdef/FileReport.h"
#include "orxdef/Files.h"
#include "orxdef/ModelReader.h"
#include "orxdef/TableReader.h"
#include "orxdef/Wording.h"

namespace orx::orxdef {
namespace {

constexpr std::array<std::string_view, 1> fileKeys{"model"};

std::vector<ModelDefinition> readModels(const toml::array& array, FileReport& report) {
    std::vector<ModelDefinition> models;
    for (const auto& element : array) {
        if (const auto* table = element.as_table())
            models.push_back(readModel(*table, report));
        else
            report.add(element, "a model must be a table, not " + std::string(kindOf(element)));
    }
    return models;
}

std::vector<ModelDefinition> readDocument(const toml::table& document, FileReport& report) {
    const TableReader reader(document, "the file", report);
    reader.allowOnly(fileKeys);
    const auto* value = reader.find("model");
    if (value == nullptr) {
        // With other keys it is these that are wrong, most likely a mistyped [[model]].
        if (document.empty()) report.add(document, "the file has no [[model]]");
        return {};
    }
    const auto* array = value->as_array();
    if (array != nullptr) {
        if (array->empty()) report.add(*value, "the file has no [[model]]");
        return readModels(*array, report);
    }
    report.add(*value, "model must be an array of tables, written [[model]], not " +
                           std::string(kindOf(*value)));
    return {};
}

}  // namespace

void TomlReader::read(std::size_t file) {
    try {
        parse(readFile(mistakes.fileName(file)), file);
    } catch (const std::runtime_error& error) {
        mistakes.add({file}, std::string("cannot be read: ") + error.what());
    }
}

void TomlReader::parse(std::string_view text, std::size_t file) {
    FileReport report(file, mistakes);
    try {
        for (auto& model : readDocument(toml::parse(text), report))
            add(std::move(model));
    } catch (const toml::parse_error& error) {
        report.add(error.source(), escapeBytes(error.description()));
    }
}

void TomlReader::add(ModelDefinition model) {
    const auto [first, isNew] = names.emplace(model.name, model.place);
    if (!isNew && !model.name.empty())
        return mistakes.add(model.place, "model " + quoted(model.name) + " is already defined at " +
                                             mistakes.describe(first->second));
    set.models.push_back(std::move(model));
}

}  // namespace orx::orxdef
