#include "system/harness/Models.h"

#include <map>

namespace orx::test {
namespace {

const std::vector<std::pair<std::string, std::string>> pictureCommands{
    {"ON", "ON\r"}, {"OFF", "OFF\r"}, {"PICMUTE", "PMUTE\r"}, {"PICUNMUTE", "PUNMUTE\r"}};
const std::vector<std::pair<std::string, std::string>> singleSteps{
    {"AZ+", "z+"}, {"AZ-", "z-"}, {"AF+", "f+"}, {"AF-", "f-"}};

Model modelOf(const std::string& name,
              const std::vector<std::vector<std::pair<std::string, std::string>>>& commandGroups) {
    Model model{.name = name};
    for (const auto& group : commandGroups)
        model.commands.insert(model.commands.end(), group.begin(), group.end());
    return model;
}

/// Numbers the keywords in the order in which the models bring them up.
class CommandIds {
  public:
    int of(const std::string& keyword) {
        return ids.try_emplace(keyword, static_cast<int>(ids.size()) + 1).first->second;
    }
    [[nodiscard]] std::vector<std::pair<int, std::string>> list() const {
        std::vector<std::pair<int, std::string>> commands;
        for (const auto& [keyword, id] : ids)
            commands.emplace_back(id, keyword);
        return commands;
    }

  private:
    std::map<std::string, int> ids;
};

}  // namespace

BlockImage Model::fastLine() {
    BlockImage line{};
    line.timeout = 0;
    line.delay = 0;
    return line;
}

DefinitionImage define(const std::vector<Model>& models) {
    CommandIds ids;
    DefinitionImage image{};
    for (const auto& model : models) {
        auto block = model.line;
        block.name = model.name;
        for (const auto& [keyword, bytes] : model.commands)
            block.strings.emplace_back(ids.of(keyword), bytes);
        for (const auto& argument : model.arguments) {
            block.descriptors.push_back({ids.of(argument.keyword), argument.number, argument.min,
                                         argument.max, argument.pos, argument.len, argument.type});
        }
        image.blocks.push_back(block);
    }
    image.commands = ids.list();
    return image;
}

Model motorModel() {
    return modelOf("MOTOR",
                   {pictureCommands, singleSteps, {{"ZOOMRESET", "zr"}, {"FOCUSRESET", "fr"}}});
}

Model stepperModel() {
    return modelOf("STEPPER", {pictureCommands,
                               singleSteps,
                               {{"Z---", "Z<"}, {"Z-", "Z~"}, {"F--", "F<"}, {"F-", "F~"}}});
}

Model fixedModel() {
    return modelOf("FIXED", {pictureCommands});
}

}  // namespace orx::test
