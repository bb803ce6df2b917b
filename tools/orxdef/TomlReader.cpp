#include "orxdef/TomlReader.h"

#include <array>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "core/Text.h"
#include "orxdef/CommandNumbering.h"
#include "orxdef/FileReport.h"
#include "orxdef/ModelReader.h"
#include "orxdef/TableReader.h"
#include "orxdef/VerbatimReader.h"
#include "orxdef/Wording.h"

namespace orx::orxdef {
namespace {

constexpr std::array<std::string_view, 2> fileKeys{"model", "verbatim"};

/// All documents of a run. What one of them says of the whole file has to be known before the
/// models of any are read, and a model defined twice is found wherever it stands.
class Documents {
  public:
    explicit Documents(Mistakes& all) : mistakes(all) {}

    void add(std::string_view text, std::size_t file) {
        FileReport report(file, mistakes);
        try {
            documents.push_back({toml::parse(text), report});
        } catch (const toml::parse_error& error) {
            report.add(error.source(), escapeBytes(error.description()));
        }
    }

    DefinitionSet read() && {
        for (auto& document : documents)
            readVerbatim(document);
        if (verbatim) set = std::move(verbatim->set);
        const bool hasList = verbatim && verbatim->hasCommandList;
        const auto numbering = hasList ? CommandNumbering(set.commandList) : CommandNumbering();
        for (auto& document : documents)
            readModels(document, numbering);
        if (!hasList) set.commandList = usualCommandList(set.models);
        return std::move(set);
    }

  private:
    struct Document {
        toml::table table;
        FileReport report;
    };

    void readVerbatim(Document& document) {
        const TableReader reader(document.table, "the file", document.report);
        reader.allowOnly(fileKeys);
        const auto* value = reader.find("verbatim");
        if (value == nullptr) return;
        const auto* table = value->as_table();
        if (table == nullptr)
            return reader.refuse(*value, "verbatim",
                                 "must be a table, not " + std::string(kindOf(*value)));
        auto found = readFileVerbatim(*table, document.report);
        if (verbatim)
            return document.report.add(
                *value, "verbatim already stands at " + mistakes.describe(verbatim->place));
        verbatim = std::move(found);
    }

    void readModels(Document& document, const CommandNumbering& numbering) {
        const auto& [table, report] = document;
        const auto* value = table.get("model");
        // With other keys it is these that are wrong, most likely a mistyped [[model]].
        if (value == nullptr && table.empty()) document.report.add(table, noModel);
        if (value == nullptr) return;
        const auto* array = value->as_array();
        if (array == nullptr)
            return document.report.add(*value,
                                       "model must be an array of tables, written [[model]], not " +
                                           std::string(kindOf(*value)));
        if (array->empty()) document.report.add(*value, noModel);
        for (const auto& element : *array) {
            if (const auto* model = element.as_table())
                add(readModel(*model, numbering, document.report),
                    (*model)["verbatim"]["name"].is_string());
            else
                document.report.add(element,
                                    "a model must be a table, not " + std::string(kindOf(element)));
        }
    }

    /// A name that is given verbatim may stand again: the daemon takes the later model.
    void add(ModelDefinition model, bool hasVerbatimName) {
        const auto [first, isNew] = names.emplace(model.name, model.place);
        if (!isNew && !model.name.empty() && !hasVerbatimName)
            return mistakes.add(model.place, "model " + quoted(model.name) +
                                                 " is already defined at " +
                                                 mistakes.describe(first->second));
        set.models.push_back(std::move(model));
    }

    static constexpr auto noModel = "the file has no [[model]]";

    Mistakes& mistakes;
    std::vector<Document> documents;
    std::optional<FileVerbatim> verbatim;
    DefinitionSet set;
    std::map<std::string, Place> names;
};

}  // namespace

DefinitionSet readToml(Mistakes& mistakes) {
    return parseToml(readFiles(mistakes), mistakes);
}

DefinitionSet parseToml(const FileContents& texts, Mistakes& mistakes) {
    Documents documents(mistakes);
    for (std::size_t file = 0; file < texts.size(); ++file)
        if (texts[file]) documents.add(*texts[file], file);
    return std::move(documents).read();
}

}  // namespace orx::orxdef
