// Prints what the daemon sends for every command of every model of a definition file: without
// arguments, and with each argument at its least, a middle and its greatest value.
//
//   golden_bytes orx.ccd
#include <iostream>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "core/Text.h"
#include "orxdef/BinaryReader.h"
#include "orxdef/CommandTable.h"
#include "orxdef/DecimalBound.h"
#include "projector/ProjectorDefinitionFile.h"

namespace {

using namespace orx::orxdef;

/// A bound as a client says it.
std::string valueText(const orx::orxdef::ArgumentDescriptor& argument, std::int32_t value) {
    return unitsText(value, argument.type == 'D' ? argument.decimals() : 0);
}

/// The words for a command whose arguments are all at one place of their ranges.
template <typename Choose>
std::string words(const ModelCommand& command, Choose choose) {
    std::string text;
    for (const auto& [number, argument] : command.arguments)
        text.append(" ").append(valueText(*argument, choose(*argument)));
    return text;
}

std::vector<std::string> requests(const std::string& name, const ModelCommand& command) {
    if (command.arguments.empty()) return {name};
    using Descriptor = orx::orxdef::ArgumentDescriptor;
    return {name, name + words(command, [](const Descriptor& each) { return each.min; }),
            name + words(command,
                         [](const Descriptor& each) { return std::midpoint(each.min, each.max); }),
            name + words(command, [](const Descriptor& each) { return each.max; })};
}

void print(const std::string& path) {
    Mistakes mistakes({path});
    std::string image;
    const auto definitions = readBinaryFile(mistakes, image);
    if (!mistakes.empty()) throw std::runtime_error(mistakes.lines().front());
    orx::ProjectorDefinitionFile file(path);
    for (const auto& model : definitions.models) {
        std::cout << "== " << model.name << '\n';
        const auto projector = file.projector(model.name);
        for (const auto& [name, command] : commandTable(definitions, model))
            for (const auto& request : requests(name, command))
                std::cout << request << " -> "
                          << orx::escapeBytes(projector->commandString(orx::Command(request)))
                          << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        print(argc == 2 ? argv[1] : "orx.ccd");
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "golden_bytes: " << error.what() << '\n';
        return 1;
    }
}
