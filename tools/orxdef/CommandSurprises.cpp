// What is odd about one command.
#include <algorithm>
#include <optional>
#include <utility>

#include "commands/Vocabulary.h"
#include "orxdef/DaemonCommands.h"
#include "orxdef/Surprises.h"
#include "orxdef/Wording.h"

namespace orx::orxdef {
namespace {

/// Whether all bits of `bytes` go over a line with characters of that size.
bool canCarry(const LineSettings& line, std::string_view bytes) {
    const auto fits = [&line](char byte) {
        return static_cast<unsigned char>(byte) >> line.characterSize() == 0;
    };
    return std::ranges::all_of(bytes, fits);
}

void addGap(unsigned expected, unsigned number, const Place& place, const std::string& title,
            Mistakes& mistakes) {
    const auto first = std::to_string(expected);
    const auto message = expected + 1 == number
                             ? " has no descriptor " + first + ": that argument is dropped"
                             : " has no descriptors " + first + " to " +
                                   std::to_string(number - 1) + ": those arguments are dropped";
    mistakes.add(place, title + message, Severity::warning);
}

void findArguments(const std::string& title, const ModelDefinition& model,
                   const ModelCommand& command, ArgumentKind kind, Mistakes& mistakes) {
    ArgumentSetting setting{.title = title,
                            .commandSize = command.string->bytes.size(),
                            .kind = kind,
                            .line = model.line};
    unsigned expected = 1;
    for (const auto& [number, argument] : command.arguments) {
        if (number == 0) {
            mistakes.add(argument->place, title + " has a descriptor number 0; they count from 1",
                         Severity::warning);
            continue;
        }
        if (number != expected) addGap(expected, number, argument->place, title, mistakes);
        findArgumentSurprises(*argument, setting, mistakes);
        setting.style = setting.style.with(*argument);
        setting.previous = argument;
        expected = number + 1;
    }
}

}  // namespace

void findCommandSurprises(const ModelDefinition& model, const std::string& name,
                          const ModelCommand& command, Mistakes& mistakes) {
    const auto title = quoted(name) + " of " + quoted(model.name);
    const auto add = [&](Severity severity, const Place& place, const std::string& message) {
        mistakes.add(place, title + message, severity);
    };
    if (command.string == nullptr)
        return add(Severity::warning, command.arguments.begin()->second->place,
                   " has arguments but no bytes to send: they are never used");
    const auto& string = *command.string;
    if (isForDaemon(name))
        return add(Severity::warning, string.place,
                   " is never sent: the daemon acts on that command by itself");
    // Of a name that no client can send all else is without effect.
    if (!isKnownKeyword(name)) return;
    if (string.bytes.empty() && command.arguments.empty())
        add(Severity::note, string.place, " has no bytes to send");
    if (!canCarry(model.line, string.bytes))
        add(Severity::warning, string.place,
            " has bytes that the line cannot carry: its characters have " +
                std::to_string(model.line.characterSize()) + " bits");
    if (command.arguments.empty()) return;
    if (argumentKind(name) == ArgumentKind::none)
        return add(Severity::warning, command.arguments.begin()->second->place,
                   " takes no argument: its descriptors are never used");
    findArguments(title, model, command, argumentKind(name), mistakes);
}

}  // namespace orx::orxdef
