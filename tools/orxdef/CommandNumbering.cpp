#include "orxdef/CommandNumbering.h"

#include <set>

#include "commands/Vocabulary.h"

namespace orx::orxdef {
namespace {

std::vector<ListedCommand> wholeVocabulary() {
    std::vector<ListedCommand> list;
    list.reserve(vocabulary.size());
    std::uint16_t number = 0;
    for (const auto& entry : vocabulary)
        list.push_back({{}, ++number, std::string(entry.keyword)});
    return list;
}

}  // namespace

CommandNumbering::CommandNumbering() : CommandNumbering(wholeVocabulary()) {}

CommandNumbering::CommandNumbering(const std::vector<ListedCommand>& commandList) {
    std::map<std::uint16_t, std::string> names;
    for (const auto& command : commandList)
        names[command.id] = command.name;
    for (const auto& [number, name] : names)
        numbers.emplace(name, number);
}

std::optional<std::uint16_t> CommandNumbering::find(std::string_view name) const {
    const auto found = numbers.find(name);
    return found != numbers.end() ? std::optional(found->second) : std::nullopt;
}

std::vector<ListedCommand> usualCommandList(const std::vector<ModelDefinition>& models) {
    std::set<std::uint16_t> used;
    for (const auto& model : models) {
        for (const auto& string : model.strings)
            used.insert(string.id);
        for (const auto& descriptor : model.descriptors)
            used.insert(descriptor.id);
    }
    auto list = wholeVocabulary();
    std::erase_if(list, [&used](const ListedCommand& each) { return !used.contains(each.id); });
    return list;
}

}  // namespace orx::orxdef
