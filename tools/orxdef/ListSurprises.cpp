// What is odd about the numbers and names in a file.
#include <algorithm>
#include <cctype>
#include <functional>
#include <map>
#include <set>
#include <utility>

#include "commands/Vocabulary.h"
#include "core/Text.h"
#include "orxdef/Surprises.h"
#include "orxdef/Wording.h"
#include "projector/DefinitionFormat.h"

namespace orx::orxdef {
namespace {

std::string lowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char letter) {
        return static_cast<char>(std::tolower(letter));
    });
    return text;
}

/// Names one after the other: which of them stood before, and which with other letter case.
class Names {
  public:
    enum class Novelty { isNew, isRepeated, differsInCase };

    /// In the last case `other` becomes the name that differs.
    Novelty add(const std::string& name, std::string& other) {
        if (!seen.insert(name).second) return Novelty::isRepeated;
        const auto [first, isNew] = byLowerCase.emplace(lowerCase(name), name);
        other = first->second;
        return isNew ? Novelty::isNew : Novelty::differsInCase;
    }

  private:
    std::set<std::string> seen;
    std::map<std::string, std::string> byLowerCase;
};

class Finder {
  public:
    Finder(const DefinitionSet& set, Mistakes& all) : definitions(set), mistakes(all) {}

    void find() {
        findHeader();
        findCommandList();
        findModelNames();
        findSharedBlocks();
        for (const auto& model : definitions.models)
            findEntries(model);
    }

  private:
    void findHeader() {
        if (definitions.magic != definition_format::magic)
            mistakes.add(definitions.place, "the file does not begin with the usual six bytes",
                         Severity::note);
        if (!definitions.fillers.empty())
            mistakes.add(definitions.fillers.front().place, "bytes that belong to nothing",
                         Severity::note);
        if (definitions.models.empty()) warn(definitions.place, "there is no model");
    }

    void findCommandList() {
        Names names;
        std::set<std::uint16_t> numbers;
        for (const auto& command : definitions.commandList) {
            const auto name = quoted(command.name);
            if (!numbers.insert(command.id).second)
                warn(command.place, "number " + std::to_string(command.id) +
                                        " stands twice in the command list; " + name + " counts");
            std::string other;
            const auto novelty = names.add(command.name, other);
            if (novelty == Names::Novelty::isRepeated)
                warn(command.place, "command " + name + " stands twice in the command list");
            if (novelty == Names::Novelty::differsInCase)
                warn(command.place,
                     "commands " + quoted(other) + " and " + name + " differ in letter case only");
            if (!isKnownKeyword(command.name)) warnOfUnknown(command);
        }
    }

    void warnOfUnknown(const ListedCommand& command) {
        const auto nearest = nearestKeyword(command.name);
        warn(command.place, "no client can send " + quoted(command.name) +
                                ": it is not in the vocabulary" +
                                (nearest ? "; is it " + quoted(*nearest) + "?" : ""));
    }

    void findModelNames() {
        Names names;
        for (const auto& model : definitions.models) {
            std::string other;
            const auto name = quoted(model.name);
            const auto novelty = names.add(model.name, other);
            if (novelty == Names::Novelty::isRepeated)
                warn(model.place, "model " + name + " stands twice; the later one counts");
            if (novelty == Names::Novelty::differsInCase)
                warn(model.place,
                     "models " + quoted(other) + " and " + name + " differ in letter case only");
            if (!canBeConfigured(model.name))
                warn(model.place, "model " + name +
                                      " cannot be configured: its name is empty, begins or ends "
                                      "with a blank, or has a line feed");
        }
    }

    /// Whether a value in the configuration file can be `name`.
    static bool canBeConfigured(const std::string& name) {
        return !name.empty() && trim(name) == name && name.find('\n') == std::string::npos;
    }

    void findSharedBlocks() {
        std::map<std::uint16_t, std::string> models;
        for (const auto& model : definitions.models) {
            if (!model.blockOffset) continue;
            const auto [first, isNew] = models.emplace(*model.blockOffset, model.name);
            if (!isNew)
                mistakes.add(model.place,
                             quoted(model.name) + " has the same block as " + quoted(first->second),
                             Severity::note);
        }
    }

    void findEntries(const ModelDefinition& model) {
        const auto names = commandNames(definitions);
        const auto title = " of " + quoted(model.name);
        const auto check = [&](const Place& place, std::uint16_t id, bool isNew,
                               const std::string& what) {
            if (!names.contains(id))
                warn(place, what + title + " has number " + std::to_string(id) +
                                ", which is not in the command list; it is never used");
            if (!isNew) warn(place, what + title + " stands twice; the later one counts");
        };
        std::set<std::uint16_t> strings;
        for (const auto& string : model.strings)
            check(string.place, string.id, strings.insert(string.id).second,
                  "the string of command " + titleOf(names, string.id));
        std::set<std::pair<std::uint16_t, std::uint16_t>> arguments;
        for (const auto& argument : model.descriptors)
            check(argument.place, argument.id,
                  arguments.emplace(argument.id, argument.number).second,
                  "argument " + std::to_string(argument.number) + " of command " +
                      titleOf(names, argument.id));
        if (model.strings.empty()) warn(model.place, quoted(model.name) + " has no commands");
    }

    static std::string titleOf(const CommandNames& names, std::uint16_t id) {
        const auto name = names.find(id);
        return name != names.end() ? quoted(name->second) : "number " + std::to_string(id);
    }

    void warn(const Place& place, std::string message) {
        mistakes.add(place, std::move(message), Severity::warning);
    }

    const DefinitionSet& definitions;
    Mistakes& mistakes;
};

}  // namespace

void findListSurprises(const DefinitionSet& definitions, Mistakes& mistakes) {
    Finder(definitions, mistakes).find();
}

}  // namespace orx::orxdef
