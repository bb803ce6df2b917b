#include "orxctl/check/AliasCheck.h"

#include <algorithm>
#include <array>
#include <exception>
#include <string>
#include <vector>

#include "commands/Vocabulary.h"
#include "core/Text.h"
#include "orxdef/DaemonCommands.h"
#include "orxdef/Wording.h"

namespace orx::orxctl {
namespace {

/// The symbolic name that is meant by `name`, which may be a keyword; the likeliest first.
std::vector<std::string_view> likelyNames(std::string_view name) {
    const auto* const command = std::ranges::find(vocabulary, name, &VocabularyEntry::keyword);
    if (command != vocabulary.end()) return {command->symbolicName};
    std::array<std::string_view, vocabulary.size()> names{};
    std::ranges::transform(vocabulary, names.begin(), &VocabularyEntry::symbolicName);
    return orxdef::nearest(name, names);
}

std::string advice(std::string_view name) {
    const auto likely = likelyNames(name);
    return likely.empty() ? "; symbolic names look like CMD_ZOOM_PLUS"
                          : "; is it " + orxdef::alternatives(likely) + "?";
}

class AliasCheck {
  public:
    AliasCheck(const CheckedConfig& checkedConfig, const std::optional<ChosenModel>& chosenModel,
               Report& findings)
        : config(checkedConfig), model(chosenModel), report(findings) {}

    void check() {
        for (const auto& [alias, value] : config.values.aliases()) {
            const auto place = config.text.placeOf("cmd." + alias);
            if (value.starts_with('&'))
                checkReference(alias, value.substr(1), place);
            else
                checkText(value, place);
        }
    }

  private:
    void checkText(const std::string& value, const Place& place) {
        const std::string wanted =
            R"(an alias is "&" and the symbolic name of another command, such as &CMD_ZOOM_PLUS2)";
        try {
            static_cast<void>(unescapeBytes(value));
            const auto likely = likelyNames(trim(value));
            report.warn(
                place,
                orxdef::quoted(value) + " does nothing: " + wanted +
                    (likely.empty()
                         ? ""
                         : "; is it " + orxdef::quoted("&" + std::string(likely.front())) + "?"));
        } catch (const std::exception& error) {
            report.ends(place, error.what(),
                        orxdef::quoted(value) +
                            R"( has a "\x" without two hexadecimal digits, and )" + wanted,
                        Stage::withProjector);
        }
    }

    void checkReference(const std::string& alias, const std::string& target, const Place& place) {
        const auto keyword = keywordFor(alias);
        if (keyword.empty()) {
            report.warn(place, orxdef::quoted(alias) +
                                   " is the symbolic name of no command, so the alias "
                                   "does nothing" +
                                   advice(alias));
            return;
        }
        const auto original = keywordFor(target);
        if (orxdef::isForDaemon(keyword))
            report.warn(place, "the daemon acts on " + orxdef::quoted(keyword) +
                                   " by itself, so the alias is never used; remove it");
        else if (original.empty())
            report.warn(place, orxdef::quoted(target) + " is the symbolic name of no command" +
                                   emptiness(keyword) + advice(trim(target)));
        else
            checkMeaning(keyword, original, place);
        if (model) model->projector->applyAliases({{alias, "&" + target}});
    }

    void checkMeaning(std::string_view keyword, std::string_view original, const Place& place) {
        if (keyword == original)
            report.warn(place, "the alias leads from " + orxdef::quoted(keyword) +
                                   " to itself and changes nothing; remove it");
        else if (model && !model->projector->supports(original))
            report.warn(place, "projector model " + orxdef::quoted(model->name) +
                                   " has no command " + orxdef::quoted(original) +
                                   emptiness(keyword) +
                                   "; remove the alias or choose a command of the model");
    }

    static std::string emptiness(std::string_view keyword) {
        return ", so that nothing but an empty string is sent for " + orxdef::quoted(keyword);
    }

    const CheckedConfig& config;
    const std::optional<ChosenModel>& model;
    Report& report;
};

}  // namespace

void checkAliases(const CheckedConfig& config, const std::optional<ChosenModel>& model,
                  Report& report) {
    AliasCheck(config, model, report).check();
}

}  // namespace orx::orxctl
