// The bytes of a command as the slower encoder of the tests makes them, errors and checksum
// included: what the daemon's own are compared with.
#pragma once

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string>
#include <vector>

#include "commands/Command.h"
#include "common/Numbers.h"
#include "projector/ArgumentDescriptor.h"
#include "unit/projector/ReferenceEncoding.h"

namespace orx::fuzz {

/// One command of a model.
struct ModelledCommand {
    std::string commandString;
    ArgumentDescriptors descriptors{};
};

/// What is wrong with an argument that is no number of its type; empty where nothing is.
inline std::string conversionError(std::string text, const ArgumentDescriptor& descriptor) {
    if (descriptor.type != 'D') return wholeNumber(text).error;
    std::ranges::replace(text, ',', '.');
    return decimalNumber(text).error;
}

/// `arguments` in the command string.
inline Outcome<std::string> withArguments(const ModelledCommand& model,
                                          const std::vector<std::string>& arguments) {
    test::ReferenceEncoding encoding(model.commandString);
    std::size_t last = 0;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const auto descriptor = model.descriptors.find(static_cast<int>(index) + 1);
        if (descriptor == model.descriptors.end()) continue;
        if (last > model.commandString.size()) return {{}, beyondTheEnd()};
        const auto error = conversionError(arguments[index], descriptor->second);
        if (!error.empty()) return {{}, error};
        encoding.insert(arguments[index], descriptor->second);
        last = static_cast<std::size_t>(descriptor->second.pos);
    }
    return outcomeOf([&encoding] { return encoding.finish(); });
}

/// All that is sent for `command`.
inline Outcome<std::string> bytesFor(const ModelledCommand& model, int checksum,
                                     const Command& command) {
    auto bytes = command.takesArgument() && !model.descriptors.empty()
                     ? withArguments(model, command.arguments())
                     : Outcome<std::string>{model.commandString, {}};
    if (bytes.value && checksum == 1)
        *bytes.value += std::accumulate(bytes.value->begin(), bytes.value->end(), '\0');
    return bytes;
}

}  // namespace orx::fuzz
