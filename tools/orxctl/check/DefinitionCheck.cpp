#include "orxctl/check/DefinitionCheck.h"

#include <algorithm>
#include <exception>
#include <utility>
#include <vector>

#include "config/ConfigKeys.h"
#include "orxctl/check/Files.h"
#include "orxctl/check/ShellWord.h"
#include "orxdef/BinaryReader.h"
#include "orxdef/CommandTable.h"
#include "orxdef/Surprises.h"
#include "orxdef/Wording.h"
#include "projector/ProjectorDefinitionFile.h"

namespace orx::orxctl {
namespace {

/// "; the definition file has DEMO-1, DEMO-2", or those models that were probably meant by `name`.
std::string namesAdvice(const orxdef::DefinitionSet& definitions, std::string_view name) {
    constexpr std::size_t few = 8;
    std::vector<std::string_view> names;
    for (const auto& model : definitions.models)
        if (std::ranges::find(names, model.name) == names.end()) names.push_back(model.name);
    if (names.empty()) return "; the definition file has no model at all";
    if (const auto nearest = orxdef::nearest(name, names); !name.empty() && !nearest.empty())
        return "; is it " + orxdef::alternatives(nearest) + "?";
    if (names.size() <= few) return "; the definition file has " + orxdef::listed(names);
    return "; \"orxdef list\" shows the " + std::to_string(names.size()) +
           " models of the definition file";
}

class DefinitionCheck {
  public:
    DefinitionCheck(const CheckedConfig& checkedConfig, Report& findings)
        : config(checkedConfig),
          report(findings),
          path(config.values.definitionFile()),
          place(config.text.placeOf(config_key::definitionFile)) {}

    std::optional<ChosenModel> check() {
        try {
            ProjectorDefinitionFile file(path);
            orxdef::Mistakes damage({path});
            const auto definitions = orxdef::readBinary(contentOf(path), 0, damage);
            reportDamage(damage);
            return choose(file, definitions);
        } catch (const std::exception& error) {
            report.ends(place, error.what(), explanation());
        }
        return std::nullopt;
    }

  private:
    [[nodiscard]] std::string explanation() const {
        if (exists(path) && !ConfigFile::isReadable(path))
            return "the file is there, but cannot be read; let the user of the daemon read it";
        if (!ConfigFile::isReadable(path))
            return R"(set definitionfile to a file that exists; "orxdef compile" makes one)";
        return orxdef::quoted(path) + R"( is no definition file; "orxdef compile" makes one)";
    }

    /// The daemon trusts the file and takes what is missing for zeros.
    void reportDamage(const orxdef::Mistakes& damage) {
        constexpr std::size_t shown = 3;
        const auto mistakes = damage.sorted();
        for (std::size_t index = 0; index < std::min(shown, mistakes.size()); ++index) {
            const auto& mistake = mistakes[index];
            report.warn({.subject = std::string(config_key::definitionFile),
                         .file = path,
                         .byte = mistake.place.byte},
                        mistake.message + "; the daemon loads the file all the same: make it anew");
        }
        if (mistakes.size() > shown)
            report.warn({.subject = std::string(config_key::definitionFile), .file = path},
                        "\"orxdef check " + shellWord(path) + "\" shows " +
                            std::to_string(mistakes.size() - shown) + " more damaged places");
    }

    std::optional<ChosenModel> choose(ProjectorDefinitionFile& file,
                                      const orxdef::DefinitionSet& definitions) {
        auto name = config.values.projector();
        auto projector = file.projector(name);
        if (projector == nullptr) {
            reportMissing(name, definitions);
            return std::nullopt;
        }
        report.foundModel(name);
        countSurprises(definitions, name);
        const auto line = file.serialSettings(name)->parameters();
        return ChosenModel{std::move(name), std::move(projector), line};
    }

    void reportMissing(const std::string& name, const orxdef::DefinitionSet& definitions) {
        const auto problem = name.empty() ? "no projector is chosen"
                                          : "there is no projector model " + orxdef::quoted(name) +
                                                " in " + orxdef::quoted(path);
        report.error(config.text.placeOf(config_key::projector),
                     problem + ", so the daemon drives none; set projector to the name of a model" +
                         namesAdvice(definitions, name));
    }

    void countSurprises(const orxdef::DefinitionSet& definitions, const std::string& name) {
        const auto* const model = orxdef::findModel(definitions, name);
        if (model == nullptr) return;
        orxdef::Mistakes surprises({path});
        findLineSurprises(*model, surprises);
        const auto commands = commandTable(definitions, *model);
        for (const auto& [keyword, command] : commands)
            findCommandSurprises(*model, keyword, command, surprises);
        findLensSurprises(*model, commands, surprises);
        if (surprises.empty()) return;
        report.note({.subject = std::string(config_key::definitionFile), .file = path},
                    "\"orxdef check " + shellWord(path) + "\" shows " +
                        orxdef::counted(surprises.count(), "more point") + " about " +
                        orxdef::quoted(name));
    }

    const CheckedConfig& config;
    Report& report;
    const std::string path;
    const Place place;
};

}  // namespace

std::optional<ChosenModel> checkDefinition(const CheckedConfig& config, Report& report) {
    return DefinitionCheck(config, report).check();
}

}  // namespace orx::orxctl
