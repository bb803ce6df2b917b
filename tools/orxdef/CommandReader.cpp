#include "orxdef/CommandReader.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "commands/Vocabulary.h"
#include "orxdef/ArgumentReader.h"
#include "orxdef/CommandTemplate.h"
#include "orxdef/ModelKeys.h"
#include "orxdef/TableReader.h"
#include "orxdef/VerbatimReader.h"
#include "orxdef/Wording.h"

namespace orx::orxdef {
namespace {

constexpr std::array<std::string_view, 3> commandKeys{"send", "args", "verbatim"};
constexpr std::size_t greatestLength = 255;

/// A key that was meant for the model but came after the header of its commands.
bool isModelKey(std::string_view name) {
    return std::ranges::find(modelKeys, name) != modelKeys.end();
}

std::string unknownCommand(std::string_view name) {
    const auto message = "unknown command " + quoted(name);
    if (isModelKey(name))
        return message + "; as a key of the model it stands above [model.commands]";
    if (isKnownKeyword(name)) return message + ": it is not among the commands of [verbatim]";
    const auto nearest = nearestKeyword(name);
    return nearest ? message + "; did you mean " + quoted(*nearest) + "?" : message;
}

/// Reads one command; the two halves, `send` and `args`, are brought together at the end.
class Reader {
  public:
    Reader(const toml::key& key, std::uint16_t id, FileReport& fileReport)
        : keyword(key.str()),
          title(isKnownKeyword(keyword) ? std::string(keyword) : quoted(keyword)),
          takesNoArgument(isKnownKeyword(keyword) && argumentKind(keyword) == ArgumentKind::none),
          report(fileReport) {
        command.name = keyword;
        command.string.place = report.placeOf(key.source());
        command.string.id = id;
    }

    CommandEntries read(const toml::node& value) && {
        if (const auto* text = value.as_string())
            readText(*text);
        else if (const auto* table = value.as_table())
            readTable(*table);
        else
            report.add(value, title + " must be a string or a table of send and args, not " +
                                  std::string(kindOf(value)));
        return std::move(command);
    }

  private:
    void readText(const toml::value<std::string>& text) {
        if (const auto parsed = readSend(text)) placeArguments(*parsed, text);
    }

    void readTable(const toml::table& table) {
        const TableReader reader(table, title, report);
        reader.allowOnly(commandKeys);
        const auto* list = reader.find("args");
        if (list != nullptr) readArguments(*list);
        if (!reader.text("send")) return;
        const auto& send = *reader.find("send")->as_string();
        const auto parsed = readSend(send);
        const bool argumentsAreKnown = list == nullptr || args != nullptr;
        if (parsed && argumentsAreKnown) placeArguments(*parsed, send);
        if (const auto* entries = reader.find("verbatim")) readVerbatim(*entries);
    }

    /// Entries of the binary file take the place of `args`.
    void readVerbatim(const toml::node& entries) {
        if (args != nullptr)
            report.add(entries, title + " must have only one of args and verbatim");
        command.descriptors = readCommandVerbatim(entries, title, command.string.id, report);
    }

    /// Nothing where the text could not be read to its end, so that its placeholders are not known.
    std::optional<CommandTemplate> readSend(const toml::value<std::string>& text) {
        auto parsed = CommandTemplate::parse(text.get());
        for (auto& mistake : parsed.mistakes)
            report.add(text, std::move(mistake));
        if (parsed.bytes.size() > greatestLength)
            report.add(text, title + " is " + std::to_string(parsed.bytes.size()) +
                                 " bytes long, at most 255 are possible");
        command.string.bytes = parsed.bytes.substr(0, greatestLength);
        return parsed.mistakes.empty() ? std::optional(std::move(parsed)) : std::nullopt;
    }

    void readArguments(const toml::node& value) {
        args = value.as_array();
        if (args == nullptr)
            return report.add(value, "args must be an array, not " + std::string(kindOf(value)));
        if (takesNoArgument && !args->empty())
            report.add(value, title + " takes no argument, so its args would never be sent");
        for (const auto& element : *args)
            readArgumentOf(element);
    }

    void readArgumentOf(const toml::node& element) {
        const auto name = argumentName(command.descriptors.size() + 1);
        const auto* table = element.as_table();
        if (table == nullptr)
            report.add(element, name + " must be a table, not " + std::string(kindOf(element)));
        auto& argument = command.descriptors.emplace_back();
        if (table != nullptr) argument = readArgument(*table, name, report);
        argument.place = report.placeOf(element.source());
        argument.id = command.string.id;
        argument.number = static_cast<std::uint16_t>(command.descriptors.size());
    }

    /// Gives each argument the place of its placeholder.
    void placeArguments(const CommandTemplate& parsed, const toml::node& send) {
        checkPlaceholders(parsed, send);
        std::vector<bool> placed(command.descriptors.size());
        for (const auto& [number, pos] : parsed.placeholders) {
            if (number > placed.size()) continue;
            placed[number - 1] = true;
            command.descriptors[number - 1].pos = static_cast<std::uint8_t>(pos);
        }
        for (std::size_t index = 0; index < placed.size(); ++index)
            if (!placed[index])
                report.add(*args->get(index), argumentName(index + 1) + " has no placeholder {" +
                                                  std::to_string(index + 1) + "} in send");
    }

    /// Arguments are inserted one after the other from left to right, so placeholders must ascend.
    void checkPlaceholders(const CommandTemplate& parsed, const toml::node& send) {
        std::set<unsigned> earlier;
        for (const auto& placeholder : parsed.placeholders) {
            const auto number = placeholder.number;
            const auto name = "placeholder {" + std::to_string(number) + "}";
            if (number > command.descriptors.size())
                report.add(send, name + " has no argument in args");
            if (earlier.contains(number))
                report.add(send, name + " stands twice");
            else if (!earlier.empty() && number < *earlier.rbegin())
                report.add(send, name + " stands behind {" + std::to_string(*earlier.rbegin()) +
                                     "}; placeholders must ascend");
            earlier.insert(number);
        }
    }

    [[nodiscard]] std::string argumentName(std::size_t number) const {
        return "argument " + std::to_string(number) + " of " + title;
    }

    std::string_view keyword;
    CommandEntries command;
    const toml::array* args = nullptr;
    std::string title;
    bool takesNoArgument;
    FileReport& report;
};

}  // namespace

std::optional<CommandEntries> readCommand(const toml::key& keyword, const toml::node& value,
                                          const CommandNumbering& numbering, FileReport& report) {
    const auto name = keyword.str();
    const auto id = numbering.find(name);
    if (id) return Reader(keyword, *id, report).read(value);
    report.add(keyword.source(), unknownCommand(name));
    // What else is wrong with it is worth knowing, unless it never was meant as a command.
    if (!isModelKey(name)) static_cast<void>(Reader(keyword, 0, report).read(value));
    return std::nullopt;
}

}  // namespace orx::orxdef
