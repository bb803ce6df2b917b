#include "orxdef/ModelReader.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "orxdef/CommandReader.h"
#include "orxdef/ModelKeys.h"
#include "orxdef/TableReader.h"
#include "orxdef/VerbatimReader.h"
#include "orxdef/Wording.h"

namespace orx::orxdef {
namespace {

/// In the order of the enumerators of `Checksum`.
constexpr std::array<std::string_view, 2> checksumNames{"none", "sum8"};

constexpr std::size_t greatestNameLength = 255;

constexpr Range byteSizeRange{5, 8};
constexpr Range stopBitsRange{1, 2};
constexpr Range wordRange{0, std::numeric_limits<std::uint16_t>::max()};
constexpr Range baudrateRange{0, std::numeric_limits<std::uint32_t>::max()};

LineSettings readLine(const TableReader& reader) {
    LineSettings line;
    const auto optional = [&reader](std::string_view key, Range range, auto& field) {
        field = static_cast<std::decay_t<decltype(field)>>(reader.integerOr(key, range, field));
    };
    line.baudrate =
        static_cast<std::uint32_t>(reader.integer("baudrate", baudrateRange).value_or(0));
    optional("bytesize", byteSizeRange, line.bytesize);
    optional("stopbits", stopBitsRange, line.stopbits);
    optional("timeout", wordRange, line.timeout);
    optional("delay", wordRange, line.delay);
    line.parity = static_cast<Parity>(reader.choiceOr("parity", parityNames, 0));
    return line;
}

std::string readName(const TableReader& reader) {
    const auto name = reader.text("name");
    if (!name) return {};
    const auto length = name->size();
    if (length >= 1 && length <= greatestNameLength) return *name;
    reader.refuse(*reader.find("name"), "name",
                  "must have 1 to 255 bytes, not " + std::to_string(length));
    return {};
}

std::vector<CommandEntries> readCommands(const TableReader& reader,
                                         const CommandNumbering& numbering, FileReport& report) {
    std::vector<CommandEntries> commands;
    const auto* value = reader.find("commands");
    if (value == nullptr) return commands;
    const auto* table = value->as_table();
    if (table == nullptr) {
        reader.refuse(*value, "commands", "must be a table, not " + std::string(kindOf(*value)));
        return commands;
    }
    for (const auto& [keyword, command] : *table)
        if (auto entries = readCommand(keyword, command, numbering, report))
            commands.push_back(std::move(*entries));
    std::ranges::sort(commands, {}, &CommandEntries::name);
    return commands;
}

/// Brings the commands that `order` names to the front, in that order; the rest stay in the order
/// of their keywords.
void reorder(std::vector<CommandEntries>& commands, const std::vector<std::string>& order) {
    const auto rank = [&order](const CommandEntries& command) {
        return std::ranges::find(order, command.name) - order.begin();
    };
    std::ranges::stable_sort(commands, {}, rank);
}

/// Every name in `order` is that of another one of `commands`.
void checkOrder(const std::vector<CommandEntries>& commands, const std::vector<std::string>& order,
                const toml::table& verbatim, FileReport& report) {
    std::set<std::string_view> named;
    for (const auto& name : order) {
        if (!named.insert(name).second)
            report.add(*verbatim.get("order"), quoted(name) + " stands twice in order");
        else if (std::ranges::find(commands, name, &CommandEntries::name) == commands.end())
            report.add(*verbatim.get("order"),
                       quoted(name) + " in order is not among the commands of the model");
    }
}

/// Puts the entries of `commands` ahead of those that `model` has.
void prepend(const std::vector<CommandEntries>& commands, ModelDefinition& model) {
    std::vector<CommandString> strings;
    std::vector<ArgumentDescriptor> descriptors;
    for (const auto& command : commands) {
        strings.push_back(command.string);
        std::ranges::copy(command.descriptors, std::back_inserter(descriptors));
    }
    model.strings.insert(model.strings.begin(), strings.begin(), strings.end());
    model.descriptors.insert(model.descriptors.begin(), descriptors.begin(), descriptors.end());
}

/// The table `verbatim` of the model, if it has one.
const toml::table* findVerbatim(const TableReader& reader) {
    const auto* value = reader.find("verbatim");
    if (value == nullptr || value->is_table())
        return value != nullptr ? value->as_table() : nullptr;
    reader.refuse(*value, "verbatim", "must be a table, not " + std::string(kindOf(*value)));
    return nullptr;
}

}  // namespace

ModelDefinition readModel(const toml::table& table, const CommandNumbering& numbering,
                          FileReport& report) {
    const TableReader reader(table, "the model", report);
    reader.allowOnly(modelKeys);
    const auto* verbatim = findVerbatim(reader);
    const auto* name = reader.find("name");
    ModelDefinition model;
    model.place = report.placeOf(name != nullptr ? name->source() : table.source());
    if (verbatim == nullptr || !verbatim->contains("name")) model.name = readName(reader);
    model.line = readLine(reader);
    model.checksum = static_cast<Checksum>(reader.choiceOr("checksum", checksumNames, 0));
    auto commands = readCommands(reader, numbering, report);
    if (verbatim != nullptr) {
        const auto order = readModelVerbatim(*verbatim, model, report);
        checkOrder(commands, order, *verbatim, report);
        reorder(commands, order);
    }
    prepend(commands, model);
    return model;
}

}  // namespace orx::orxdef
