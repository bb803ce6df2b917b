#include "orxdef/List.h"

#include <ostream>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Text.h"
#include "orxdef/BinaryReader.h"
#include "orxdef/CommandTable.h"
#include "orxdef/DecimalBound.h"
#include "orxdef/TextTable.h"

namespace orx::orxdef {
namespace {

/// 8N1 and the like; codes without a meaning show as they count.
std::string frameText(const LineSettings& line) {
    const std::string_view parity = line.parity == Parity::odd    ? "O"
                                    : line.parity == Parity::even ? "E"
                                                                  : "N";
    return std::to_string(line.bytesize).append(parity).append(std::to_string(line.stopbits));
}

std::string checksumText(Checksum checksum) {
    if (checksum == Checksum::none) return "none";
    if (checksum == Checksum::sum8) return "sum8";
    return "kind " + std::to_string(static_cast<int>(checksum));
}

Row modelRow(const DefinitionSet& set, const ModelDefinition& model) {
    return {escapeBytes(model.name),
            std::to_string(model.line.baudrate),
            frameText(model.line),
            std::to_string(model.line.timeout) + " ms",
            std::to_string(model.line.delay) + " ms",
            checksumText(model.checksum),
            std::to_string(commandTable(set, model).size())};
}

/// Type, bounds, and what its length says: "A 0..99 width 2".
std::string argumentText(const ArgumentDescriptor& argument) {
    const auto letter = static_cast<char>(argument.type);
    const auto bound = [&argument](std::int32_t value) {
        return unitsText(value, argument.type == 'D' ? argument.decimals() : 0);
    };
    const auto length = argument.type == 'D' ? std::to_string(argument.digits()) + "." +
                                                   std::to_string(argument.decimals())
                                             : std::to_string(argument.len);
    return escapeBytes({&letter, 1}) + " " + bound(argument.min) + ".." + bound(argument.max) +
           " len " + length;
}

/// The further arguments of a command stand on lines of their own.
void addCommandRows(const std::string& name, const ModelCommand& command, std::vector<Row>& rows) {
    Row row{escapeBytes(name), templateText(command), ""};
    for (const auto& [number, argument] : command.arguments) {
        row[2] = "{" + std::to_string(number) + "} " + argumentText(*argument);
        rows.push_back(std::exchange(row, {"", "", ""}));
    }
    if (command.arguments.empty()) rows.push_back(row);
}

}  // namespace

int list(const std::string& path, std::ostream& output, std::ostream& errors) {
    std::string image;
    const auto definitions = readSoundFile(path, image, errors);
    if (!definitions) return 1;
    std::vector<Row> models{
        {"MODEL", "BAUD RATE", "FRAME", "TIMEOUT", "DELAY", "CHECKSUM", "COMMANDS"}};
    for (const auto& model : definitions->models)
        models.push_back(modelRow(*definitions, model));
    output << tableText(models);
    for (const auto& model : definitions->models) {
        std::vector<Row> commands{{"COMMAND", "BYTES", "ARGUMENTS"}};
        for (const auto& [name, command] : commandTable(*definitions, model))
            addCommandRows(name, command, commands);
        output << '\n' << escapeBytes(model.name) << "\n\n" << tableText(commands);
    }
    return 0;
}

}  // namespace orx::orxdef
