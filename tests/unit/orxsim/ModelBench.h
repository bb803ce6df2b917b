// A model of a test's own, as the simulator gets it from a definition file.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "orxdef/CommandTable.h"
#include "orxdef/Definition.h"

namespace orx::orxsim {

/// One argument, without the number that its place in the list gives it.
struct TestArgument {
    char type;
    unsigned pos;
    unsigned len;
    int min;
    int max;
};

/// The length code of a decimal argument.
constexpr unsigned decimalLength(unsigned digits, unsigned decimals) {
    return decimals << 4U | digits;
}

struct TestCommand {
    std::string name;
    std::string bytes;
    std::vector<TestArgument> arguments;
};

class ModelBench {
  public:
    explicit ModelBench(const std::vector<TestCommand>& commands,
                        orxdef::Checksum checksum = orxdef::Checksum::none) {
        auto& model = definitions.models.emplace_back();
        model.name = "BENCH";
        model.line.baudrate = 9600;
        model.checksum = checksum;
        for (const auto& command : commands)
            add(command);
    }
    ModelBench(const ModelBench&) = delete;
    ModelBench& operator=(const ModelBench&) = delete;

    [[nodiscard]] orxdef::ModelDefinition& model() { return definitions.models.front(); }
    [[nodiscard]] orxdef::CommandTable table() {
        return orxdef::commandTable(definitions, model());
    }

  private:
    void add(const TestCommand& command) {
        const auto id = static_cast<std::uint16_t>(definitions.commandList.size() + 1);
        definitions.commandList.push_back({{}, id, command.name});
        model().strings.push_back({{}, id, command.bytes});
        std::uint16_t number = 0;
        for (const auto& argument : command.arguments) {
            model().descriptors.push_back({{},
                                           id,
                                           ++number,
                                           argument.min,
                                           argument.max,
                                           static_cast<std::uint8_t>(argument.pos),
                                           static_cast<std::uint8_t>(argument.len),
                                           static_cast<std::uint8_t>(argument.type)});
        }
    }

    orxdef::DefinitionSet definitions;
};

/// A model with a common terminator that has a lens and some values.
inline std::vector<TestCommand> usualCommands() {
    return {{"ON", "PWR ON\r", {}},
            {"OFF", "PWR OFF\r", {}},
            {"AZ+", "Z STEP +\r", {}},
            {"AZ-", "Z STEP -\r", {}},
            {"Z+", "Z +\r", {}},
            {"Z+++", "Z +++\r", {}},
            {"Z---", "Z ---\r", {}},
            {"ZOOMRESET", "Z HOME\r", {}},
            {"AF-", "F STEP -\r", {}},
            {"F--", "F --\r", {}},
            {"INPUT", "SOURCE \r", {{'A', 7, 2, 0, 99}}},
            {"TEST", "PATTERN ,\r", {{'A', 8, 2, 0, 15}, {'X', 9, 6, 0, 0xFFFFFF}}},
            {"NATMEMLOAD", "MEM \r", {{'I', 4, 2, 1, 1000}}}};
}

}  // namespace orx::orxsim
