#include "projector/Projector.h"

#include <array>
#include <cstdio>
#include <numeric>
#include <utility>

#include "commands/Vocabulary.h"
#include "core/Console.h"
#include "core/Text.h"
#include "projector/ArgumentInsertion.h"

namespace orx {
namespace {

std::string insertArguments(std::string_view base, const std::vector<std::string>& texts,
                            const ArgumentDescriptors& descriptors) {
    ArgumentInsertion insertion(base);
    int number = 0;
    for (const auto& text : texts) {
        const auto descriptor = descriptors.find(++number);
        if (descriptor != descriptors.end()) insertion.insert(text, descriptor->second);
    }
    return insertion.finish();
}

char sumOfBytes(std::string_view bytes) {
    return static_cast<char>(std::accumulate(
        bytes.begin(), bytes.end(), 0U,
        [](unsigned sum, char byte) { return sum + static_cast<unsigned char>(byte); }));
}

/// As the standard streams show a number.
std::string shown(double number) {
    std::array<char, sizeof "-2.14748e+09"> text{};
    std::snprintf(text.data(), text.size(), "%g", number);
    return text.data();
}

std::string describe(int number, const ArgumentDescriptor& descriptor) {
    std::string line = "                    arg: " + std::to_string(number) + " type: ";
    line += static_cast<char>(descriptor.type);
    line += " pos: " + std::to_string(descriptor.pos);
    if (descriptor.type == 'D') {
        const double units = descriptor.unitsPerOne();
        line += " min: " + shown(descriptor.min / units) + " max: " + shown(descriptor.max / units);
        line += " len: " + std::to_string(descriptor.digits()) + "." +
                std::to_string(descriptor.decimals());
    } else {
        line += " min: " + std::to_string(descriptor.min) +
                " max: " + std::to_string(descriptor.max) +
                " len: " + std::to_string(descriptor.len);
    }
    return line;
}

}  // namespace

Projector::Projector(std::string modelName, ArgumentTable argumentTable,
                     CommandStrings commandStrings, int checksumKind)
    : commands(std::move(commandStrings)),
      arguments(std::move(argumentTable)),
      name(std::move(modelName)),
      checksum(checksumKind) {}

Projector::Projector(const Projector& other)
    : Projector(other.name, other.arguments, other.commands, other.checksum) {}

void Projector::connect(std::shared_ptr<SerialSettings> settings) {
    setConnector(std::make_shared<SerialConnector>(std::move(settings)));
}

void Projector::setConnector(std::shared_ptr<SerialConnector> serialConnector) {
    connector = std::move(serialConnector);
}

void Projector::applyAliases(const MainConfig::Aliases& aliases) {
    for (const auto& [alias, value] : aliases) {
        if (!value.starts_with('&')) {
            // An alias cannot hold bytes; reading it all the same finds a malformed escape early.
            static_cast<void>(unescapeBytes(value));
            continue;
        }
        const std::string keyword(keywordFor(alias));
        if (keyword.empty()) continue;
        const std::string original(keywordFor(value.substr(1)));
        commands[keyword] = commands[original];
        const auto descriptors = arguments.find(original);
        if (descriptors != arguments.end()) arguments[keyword] = descriptors->second;
    }
}

bool Projector::supports(std::string_view keyword) const {
    return commands.contains(keyword);
}

std::string Projector::commandString(const Command& command) const {
    const auto base = commands.find(command.text(false));
    auto bytes = base != commands.end() ? base->second : std::string();
    const auto descriptors = arguments.find(command.text(false));
    if (command.takesArgument() && descriptors != arguments.end()) {
        bytes = insertArguments(bytes, command.arguments(), descriptors->second);
    }
    if (checksum == additiveChecksum) bytes += sumOfBytes(bytes);
    return bytes;
}

void Projector::send(const Command& command) const {
    if (supports(command.text(false))) connector->send(commandString(command));
}

void Projector::sendByName(std::string_view keyword) const {
    send(Command(keyword));
}

void Projector::sendRaw(std::string_view bytes) const {
    connector->send(bytes);
}

void Projector::setDelay(int milliseconds) const {
    connector->setDelay(milliseconds);
}

void Projector::dump() const {
    printLine("  checksum: " + std::to_string(checksum));
    printLine("  commands: ");
    for (const auto& [command, bytes] : commands) {
        printLine("    " + command + " -> " + escapeBytes(bytes));
        const auto descriptors = arguments.find(command);
        if (descriptors == arguments.end()) continue;
        for (const auto& [number, descriptor] : descriptors->second) {
            printLine(describe(number, descriptor));
        }
    }
}

}  // namespace orx
