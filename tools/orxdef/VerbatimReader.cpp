#include "orxdef/VerbatimReader.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "orxdef/CommandTemplate.h"

namespace orx::orxdef {
namespace {

constexpr std::array<std::string_view, 7> fileKeys{
    "magic",   "endiancheck",       "compiledate",        "commands",
    "fillers", "commandlistlength", "projectorlistlength"};
constexpr std::array<std::string_view, 10> modelKeys{
    "name",  "bytesize", "stopbits",    "parity", "checksum",
    "order", "strings",  "descriptors", "offset", "length"};
constexpr std::array<std::string_view, 2> listedKeys{"id", "name"};
constexpr std::array<std::string_view, 2> fillerKeys{"offset", "bytes"};
constexpr std::array<std::string_view, 2> stringKeys{"id", "bytes"};
constexpr std::array<std::string_view, 6> argumentKeys{"number", "type", "len",
                                                       "pos",    "min",  "max"};
constexpr std::array<std::string_view, 7> descriptorKeys{"id",  "number", "type", "len",
                                                         "pos", "min",    "max"};

constexpr Range nibbleRange{0, 15};
constexpr Range byteRange{0, 255};
constexpr Range wordRange{0, std::numeric_limits<std::uint16_t>::max()};
constexpr Range integerRange{std::numeric_limits<std::int32_t>::min(),
                             std::numeric_limits<std::int32_t>::max()};
/// Far beyond the last block that can be, and no invitation to make a file of gigabytes.
constexpr Range fillerRange{0, 1 << 20};
constexpr std::size_t greatestText = 255;
constexpr std::size_t anySize = std::numeric_limits<std::size_t>::max();

/// The bytes that the text under `key` stands for, written as those of a command.
std::string readBytes(const TableReader& reader, std::string_view key, std::size_t greatest,
                      FileReport& report) {
    const auto text = reader.text(key);
    if (!text) return {};
    const auto& node = *reader.find(key);
    auto parsed = CommandTemplate::parse(*text);
    for (auto& mistake : parsed.mistakes)
        report.add(node, std::move(mistake));
    if (!parsed.placeholders.empty())
        reader.refuse(node, key, "has no arguments; write {{ and }} for braces");
    if (parsed.bytes.size() > greatest)
        reader.refuse(node, key,
                      "must have at most " + std::to_string(greatest) + " bytes, not " +
                          std::to_string(parsed.bytes.size()));
    return parsed.bytes.substr(0, greatest);
}

/// Puts an integer into `field`, whatever the width of that, where the table has the key.
template <typename Field>
void take(const TableReader& reader, std::string_view key, Range range, Field& field) {
    if (reader.find(key) == nullptr) return;
    field = static_cast<Field>(reader.integer(key, range).value_or(0));
}
template <typename Field>
void take(const TableReader& reader, std::string_view key, Range range,
          std::optional<Field>& field) {
    if (reader.find(key) == nullptr) return;
    field = static_cast<Field>(reader.integer(key, range).value_or(0));
}

std::uint16_t requireWord(const TableReader& reader, std::string_view key) {
    return static_cast<std::uint16_t>(reader.integer(key, wordRange).value_or(0));
}

/// The array `value`, called `title`, whose elements are tables with `keys`: `each` gets a reader
/// of each table and its place.
template <typename Each>
void readTables(const toml::node& value, const std::string& title,
                std::span<const std::string_view> keys, FileReport& report, Each each) {
    const auto* array = value.as_array();
    if (array == nullptr)
        return report.add(value, title + " must be an array, not " + std::string(kindOf(value)));
    std::size_t number = 0;
    for (const auto& element : *array) {
        const auto name = "entry " + std::to_string(++number) + " of " + title;
        const auto* table = element.as_table();
        if (table == nullptr) {
            report.add(element, name + " must be a table, not " + std::string(kindOf(element)));
            continue;
        }
        const TableReader reader(*table, name, report);
        reader.allowOnly(keys);
        each(reader, report.placeOf(element.source()));
    }
}

/// A letter, or its code.
std::uint8_t readType(const TableReader& reader) {
    const auto* value = reader.require("type");
    if (value == nullptr) return 0;
    if (const auto* text = value->as_string(); text != nullptr && text->get().size() == 1)
        return static_cast<std::uint8_t>(text->get().front());
    if (value->as_integer() == nullptr) {
        reader.refuse(*value, "type", "must be one letter or its code");
        return 0;
    }
    return static_cast<std::uint8_t>(reader.integer("type", byteRange).value_or(0));
}

ArgumentDescriptor readDescriptor(const TableReader& reader, const Place& place, std::uint16_t id) {
    ArgumentDescriptor descriptor{
        .place = place, .id = id, .number = requireWord(reader, "number")};
    descriptor.type = readType(reader);
    descriptor.len = static_cast<std::uint8_t>(reader.integer("len", byteRange).value_or(0));
    descriptor.pos = static_cast<std::uint8_t>(reader.integer("pos", byteRange).value_or(0));
    descriptor.min = static_cast<std::int32_t>(reader.integer("min", integerRange).value_or(0));
    descriptor.max = static_cast<std::int32_t>(reader.integer("max", integerRange).value_or(0));
    return descriptor;
}

void readMagic(const TableReader& reader, FileReport& report, DefinitionSet& set) {
    const auto* value = reader.find("magic");
    if (value == nullptr) return;
    const auto bytes = readBytes(reader, "magic", set.magic.size(), report);
    if (bytes.size() == set.magic.size())
        std::ranges::copy(bytes, set.magic.begin());
    else
        reader.refuse(*value, "magic", "must have 6 bytes, not " + std::to_string(bytes.size()));
}

std::vector<std::string> readOrder(const TableReader& reader) {
    std::vector<std::string> order;
    const auto* value = reader.find("order");
    if (value == nullptr) return order;
    const auto* array = value->as_array();
    const auto isName = [](const toml::node& element) { return element.is_string(); };
    if (array == nullptr || !std::ranges::all_of(*array, isName)) {
        reader.refuse(*value, "order", "must be an array of names");
        return order;
    }
    for (const auto& element : *array)
        order.push_back(element.as_string()->get());
    return order;
}

}  // namespace

FileVerbatim readFileVerbatim(const toml::table& table, FileReport& report) {
    const TableReader reader(table, "verbatim", report);
    reader.allowOnly(fileKeys);
    FileVerbatim verbatim{.place = report.placeOf(table.source()), .set = {}};
    auto& set = verbatim.set;
    readMagic(reader, report, set);
    take(reader, "endiancheck", byteRange, set.endianCheck);
    take(reader, "compiledate", integerRange, set.compileDate);
    take(reader, "commandlistlength", wordRange, set.commandListLength);
    take(reader, "projectorlistlength", wordRange, set.projectorListLength);
    if (const auto* commands = reader.find("commands")) {
        verbatim.hasCommandList = true;
        readTables(*commands, "commands", listedKeys, report,
                   [&](const TableReader& entry, const Place& place) {
                       set.commandList.push_back({place, requireWord(entry, "id"),
                                                  readBytes(entry, "name", greatestText, report)});
                   });
    }
    if (const auto* fillers = reader.find("fillers"))
        readTables(*fillers, "fillers", fillerKeys, report,
                   [&](const TableReader& entry, const Place& place) {
                       const auto offset = entry.integer("offset", fillerRange).value_or(0);
                       set.fillers.push_back({place, static_cast<std::size_t>(offset),
                                              readBytes(entry, "bytes", anySize, report)});
                   });
    return verbatim;
}

std::vector<std::string> readModelVerbatim(const toml::table& table, ModelDefinition& model,
                                           FileReport& report) {
    const TableReader reader(table, "verbatim", report);
    reader.allowOnly(modelKeys);
    if (reader.find("name") != nullptr)
        model.name = readBytes(reader, "name", greatestText, report);
    take(reader, "bytesize", byteRange, model.line.bytesize);
    take(reader, "stopbits", nibbleRange, model.line.stopbits);
    take(reader, "parity", nibbleRange, model.line.parity);
    take(reader, "checksum", byteRange, model.checksum);
    take(reader, "offset", wordRange, model.blockOffset);
    take(reader, "length", wordRange, model.blockLength);
    if (const auto* strings = reader.find("strings"))
        readTables(*strings, "strings", stringKeys, report,
                   [&](const TableReader& entry, const Place& place) {
                       model.strings.push_back({place, requireWord(entry, "id"),
                                                readBytes(entry, "bytes", greatestText, report)});
                   });
    if (const auto* descriptors = reader.find("descriptors"))
        readTables(*descriptors, "descriptors", descriptorKeys, report,
                   [&](const TableReader& entry, const Place& place) {
                       const auto id = requireWord(entry, "id");
                       model.descriptors.push_back(readDescriptor(entry, place, id));
                   });
    return readOrder(reader);
}

std::vector<ArgumentDescriptor> readCommandVerbatim(const toml::node& value,
                                                    const std::string& title, std::uint16_t id,
                                                    FileReport& report) {
    std::vector<ArgumentDescriptor> descriptors;
    readTables(value, "verbatim of " + title, argumentKeys, report,
               [&](const TableReader& entry, const Place& place) {
                   descriptors.push_back(readDescriptor(entry, place, id));
               });
    return descriptors;
}

}  // namespace orx::orxdef
