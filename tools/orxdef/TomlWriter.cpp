#include "orxdef/TomlWriter.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

#include "commands/Vocabulary.h"
#include "orxdef/CommandNumbering.h"
#include "orxdef/CommandTable.h"
#include "orxdef/CommandTemplate.h"
#include "orxdef/DecimalBound.h"
#include "orxdef/Layout.h"
#include "orxdef/TomlText.h"

namespace orx::orxdef {
namespace {

using Lines = std::vector<std::string>;

/// One command of a model as the plain form has it.
struct NamedCommand {
    std::string name;
    const CommandString* string = nullptr;
    std::vector<ArgumentDescriptor> arguments{};
};

std::string descriptorTable(const ArgumentDescriptor& argument, Lines pairs) {
    const bool isLetter = argument.type > ' ' && argument.type < 0x7F;
    pairs.push_back(pairText("number", argument.number));
    pairs.push_back(
        isLetter ? pairText("type", stringText(std::string(1, static_cast<char>(argument.type))))
                 : pairText("type", argument.type));
    pairs.push_back(pairText("len", argument.len));
    pairs.push_back(pairText("pos", argument.pos));
    pairs.push_back(pairText("min", argument.min));
    pairs.push_back(pairText("max", argument.max));
    return inlineTable(pairs);
}

std::string argumentTable(const ArgumentDescriptor& argument) {
    const auto type =
        pairText("type", stringText(std::string(1, static_cast<char>(argument.type))));
    if (argument.type != 'D')
        return inlineTable({type, pairText("len", argument.len), pairText("min", argument.min),
                            pairText("max", argument.max)});
    return inlineTable({type, pairText("digits", argument.digits()),
                        pairText("decimals", argument.decimals()),
                        pairText("min", unitsText(argument.min, argument.decimals())),
                        pairText("max", unitsText(argument.max, argument.decimals()))});
}

/// Whether the arguments can be said by placeholders and `args`.
bool isPlain(const NamedCommand& command) {
    if (command.arguments.empty()) return true;
    if (isKnownKeyword(command.name) && argumentKind(command.name) == ArgumentKind::none)
        return false;
    std::size_t number = 0;
    std::size_t pos = 0;
    for (const auto& argument : command.arguments) {
        if (argument.number != ++number || argument.pos < pos || argument.min > argument.max ||
            !argument.hasKnownType())
            return false;
        pos = argument.pos;
    }
    return pos <= command.string->bytes.size();
}

std::string commandLine(const NamedCommand& command) {
    const auto key = keyText(command.name);
    CommandTemplate send{command.string->bytes, {}, {}};
    if (command.arguments.empty()) return pairText(key, "'" + send.text() + "'");
    const bool plain = isPlain(command);
    Lines tables;
    for (const auto& argument : command.arguments) {
        if (plain) send.placeholders.push_back({argument.number, argument.pos});
        tables.push_back(plain ? argumentTable(argument) : descriptorTable(argument, {}));
    }
    return arrayLine(
        key + " = { send = '" + send.text() + (plain ? "', args = " : "', verbatim = "), tables,
        " }");
}

class Writer {
  public:
    explicit Writer(DefinitionSet definitions)
        : set(std::move(definitions)), names(commandNames(set)), hasOwnList(!hasUsualList()) {
        removeUsualLayout(set);
        if (hasOwnList) numbering = CommandNumbering(set.commandList);
    }

    std::string write() && {
        writeFileVerbatim();
        for (const auto& model : set.models)
            writeModel(model);
        return std::move(text);
    }

  private:
    [[nodiscard]] bool hasUsualList() const {
        const auto same = [](const ListedCommand& one, const ListedCommand& other) {
            return one.id == other.id && one.name == other.name;
        };
        return std::ranges::equal(set.commandList, usualCommandList(set.models), same);
    }

    void writeFileVerbatim() {
        const DefinitionSet usual;
        const std::string_view magic(reinterpret_cast<const char*>(set.magic.data()),
                                     set.magic.size());
        Lines lines;
        if (set.magic != usual.magic) lines.push_back(pairText("magic", bytesText(magic)));
        if (set.endianCheck != usual.endianCheck)
            lines.push_back(pairText("endiancheck", set.endianCheck));
        if (set.compileDate != usual.compileDate)
            lines.push_back(pairText("compiledate", set.compileDate));
        addOptional(lines, "commandlistlength", set.commandListLength);
        addOptional(lines, "projectorlistlength", set.projectorListLength);
        if (hasOwnList) lines.push_back(arrayLine("commands = ", listedCommands()));
        if (!set.fillers.empty()) lines.push_back(arrayLine("fillers = ", fillers()));
        // A file without models needs it too: the compiler takes no empty text.
        if (!lines.empty() || set.models.empty()) writeTable("[verbatim]", lines);
    }

    [[nodiscard]] Lines listedCommands() const {
        Lines tables;
        for (const auto& command : set.commandList)
            tables.push_back(inlineTable(
                {pairText("id", command.id), pairText("name", bytesText(command.name))}));
        return tables;
    }

    [[nodiscard]] Lines fillers() const {
        Lines tables;
        for (const auto& filler : set.fillers)
            tables.push_back(inlineTable({pairText("offset", static_cast<long long>(filler.offset)),
                                          pairText("bytes", bytesText(filler.bytes))}));
        return tables;
    }

    void writeModel(const ModelDefinition& model) {
        Lines verbatim;
        writeTable("[[model]]", lineSettings(model, verbatim));
        if (const auto commands = namedCommands(model))
            writeCommands(*commands, verbatim);
        else
            addEntries(model, verbatim);
        addOptional(verbatim, "offset", model.blockOffset);
        addOptional(verbatim, "length", model.blockLength);
        if (!verbatim.empty()) writeTable("[model.verbatim]", verbatim);
    }

    /// The lines of the plain form; what does not go there is added to `verbatim`.
    Lines lineSettings(const ModelDefinition& model, Lines& verbatim) {
        const LineSettings usual;
        const auto& line = model.line;
        Lines lines;
        const auto add = [&](std::string_view key, unsigned value, unsigned usualValue,
                             bool plain) {
            if (value != usualValue) (plain ? lines : verbatim).push_back(pairText(key, value));
        };
        // A name that stands again counts in the daemon, and is a mistake in the plain form.
        const bool isNew = modelNames.insert(model.name).second;
        if (isNew && !model.name.empty() && isTomlText(model.name))
            lines.push_back(pairText("name", stringText(model.name)));
        else
            verbatim.push_back(pairText("name", bytesText(model.name)));
        lines.push_back(pairText("baudrate", line.baudrate));
        add("bytesize", line.bytesize, usual.bytesize, line.bytesize >= 5 && line.bytesize <= 8);
        const auto parity = static_cast<unsigned>(line.parity);
        if (parity == 1 || parity == 2)
            lines.push_back(pairText("parity", stringText(parityNames.at(parity))));
        else
            add("parity", parity, 0, false);
        add("stopbits", line.stopbits, usual.stopbits, line.stopbits == 2);
        add("timeout", line.timeout, usual.timeout, true);
        add("delay", line.delay, usual.delay, true);
        if (model.checksum == Checksum::sum8)
            lines.push_back(pairText("checksum", stringText("sum8")));
        else
            add("checksum", static_cast<unsigned>(model.checksum), 0, false);
        return lines;
    }

    /// The commands of `model` in the order of its strings; nothing where they cannot be told by
    /// their names, or where the arguments do not stand in the order of their commands.
    [[nodiscard]] std::optional<std::vector<NamedCommand>> namedCommands(
        const ModelDefinition& model) const {
        std::vector<NamedCommand> commands;
        std::set<std::uint16_t> seen;
        auto argument = model.descriptors.begin();
        for (const auto& string : model.strings) {
            const auto name = names.find(string.id);
            if (name == names.end() || name->second.empty() || !isTomlText(name->second) ||
                numbering.find(name->second) != string.id || !seen.insert(string.id).second)
                return std::nullopt;
            auto& command = commands.emplace_back(NamedCommand{name->second, &string});
            for (; argument != model.descriptors.end() && argument->id == string.id; ++argument)
                command.arguments.push_back(*argument);
        }
        if (argument != model.descriptors.end()) return std::nullopt;
        return commands;
    }

    void writeCommands(const std::vector<NamedCommand>& commands, Lines& verbatim) {
        Lines lines;
        Lines order;
        for (const auto& command : commands) {
            lines.push_back(commandLine(command));
            order.push_back(stringText(command.name));
        }
        if (!lines.empty()) writeTable("[model.commands]", lines);
        if (!std::ranges::is_sorted(commands, {}, &NamedCommand::name))
            verbatim.push_back(arrayLine("order = ", order));
    }

    static void addEntries(const ModelDefinition& model, Lines& verbatim) {
        Lines strings;
        for (const auto& string : model.strings)
            strings.push_back(inlineTable(
                {pairText("id", string.id), pairText("bytes", bytesText(string.bytes))}));
        Lines descriptors;
        for (const auto& descriptor : model.descriptors)
            descriptors.push_back(descriptorTable(descriptor, {pairText("id", descriptor.id)}));
        verbatim.push_back(arrayLine("strings = ", strings));
        if (!descriptors.empty()) verbatim.push_back(arrayLine("descriptors = ", descriptors));
    }

    static void addOptional(Lines& lines, std::string_view key,
                            const std::optional<std::uint16_t>& value) {
        if (value) lines.push_back(pairText(key, *value));
    }

    void writeTable(const std::string& header, const Lines& lines) {
        text.append(text.empty() ? "" : "\n").append(header).append("\n");
        for (const auto& line : lines)
            text.append(line).append("\n");
    }

    DefinitionSet set;
    CommandNames names;
    CommandNumbering numbering;
    bool hasOwnList;
    std::set<std::string> modelNames;
    std::string text;
};

}  // namespace

std::string tomlText(const DefinitionSet& definitions) {
    return Writer(definitions).write();
}

}  // namespace orx::orxdef
