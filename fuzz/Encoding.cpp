// A made-up model and a command with arguments: the bytes that the daemon sends must be those that
// a slower encoder, which writes digit by digit, comes to. Where one of them ends in an error the
// other must end in the same.
//
// The input: keyword, checksum kind and number of descriptors in a byte each; the command string;
// the descriptors, each with a text for its argument; then arguments without a descriptor, one a
// line.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "commands/Command.h"
#include "common/Check.h"
#include "common/InputBytes.h"
#include "common/ReferenceCommand.h"
#include "projector/ArgumentInsertion.h"
#include "projector/Projector.h"

namespace orx::fuzz {
namespace {

using Arguments = std::vector<std::string>;

void checkInsertion(const ModelledCommand& model, const Arguments& arguments) {
    const auto inserted = outcomeOf([&] {
        ArgumentInsertion insertion(model.commandString);
        for (std::size_t index = 0; index < arguments.size(); ++index) {
            const auto descriptor = model.descriptors.find(static_cast<int>(index) + 1);
            if (descriptor != model.descriptors.end())
                insertion.insert(arguments[index], descriptor->second);
        }
        return insertion.finish();
    });
    expectSame(inserted, withArguments(model, arguments), "arguments in a command string");
}

void checkCommand(const ModelledCommand& model, const std::string& keyword, int checksum,
                  const Arguments& arguments) {
    ArgumentTable table;
    if (!model.descriptors.empty()) table[keyword] = model.descriptors;
    const Projector projector("MODEL", table, {{keyword, model.commandString}}, checksum);
    auto line = keyword;
    for (const auto& argument : arguments)
        line.append(" ").append(argument);
    const Command command(line);
    expectSame(outcomeOf([&] { return projector.commandString(command); }),
               bytesFor(model, checksum, command), "the bytes of a command");
}

ArgumentDescriptor takeDescriptor(InputBytes& input) {
    constexpr std::array<int, 8> types{'A', 'B', 'D', 'I', 'X', '?', 'D', 0};
    return {.min = input.integer(),
            .max = input.integer(),
            .pos = input.byte(),
            .len = input.byte(),
            .type = input.oneOf(types)};
}

void check(InputBytes input) {
    constexpr std::array<std::string_view, 4> keywords{"ZOOM", "KEYSTONEHORI", "RAW", "ON"};
    constexpr int mostDescriptors = 5;
    const std::string keyword(input.oneOf(keywords));
    const int checksum = input.byte();
    const int count = input.byte() % (mostDescriptors + 1);
    ModelledCommand model{.commandString = input.text()};
    Arguments arguments;
    for (int number = 1; number <= count; ++number) {
        const auto descriptor = takeDescriptor(input);
        // A gap among the numbers is an argument that has no place.
        if (descriptor.type != 0) model.descriptors[number] = descriptor;
        arguments.push_back(input.text());
    }
    while (!input.isEmpty())
        arguments.push_back(input.line());
    checkInsertion(model, arguments);
    checkCommand(model, keyword, checksum, arguments);
}

}  // namespace
}  // namespace orx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orx::fuzz::check({data, size});
    return 0;
}
