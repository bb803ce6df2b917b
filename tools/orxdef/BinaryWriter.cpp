#include "orxdef/BinaryWriter.h"

#include <limits>
#include <map>
#include <vector>

#include "orxdef/ProjectorBlock.h"
#include "orxdef/Record.h"
#include "orxdef/Wording.h"
#include "projector/DefinitionFormat.h"

namespace orx::orxdef {
namespace {

namespace format = definition_format;

/// The most that a 16-bit field can say.
constexpr std::size_t greatestWord = std::numeric_limits<std::uint16_t>::max();
constexpr std::size_t greatestDescriptorCount = std::numeric_limits<std::uint8_t>::max();
/// Blocks are found by 16-bit offsets, and none may reach beyond the last byte these name.
constexpr std::size_t greatestBlockEnd = greatestWord + 1;

using CommandIds = std::map<std::string, std::uint16_t>;

CommandIds usedCommands(const DefinitionSet& definitions) {
    CommandIds ids;
    for (const auto& model : definitions.models)
        for (const auto& command : model.commands)
            ids.emplace(command.keyword, command.id);
    return ids;
}

std::string commandList(const CommandIds& ids) {
    namespace entry = format::command_entry;
    std::string list;
    for (const auto& [keyword, id] : ids) {
        list += Record(entry::fixedSize)
                    .put(entry::id, id)
                    .put(entry::nameLength, keyword.size())
                    .take();
        list += keyword;
    }
    return list;
}

std::string projectorEntry(const std::string& name, std::size_t offset, std::size_t length) {
    namespace entry = format::projector_entry;
    return Record(entry::fixedSize)
               .put(entry::blockOffset, offset)
               .put(entry::blockLength, length)
               .put(entry::nameLength, name.size())
               .take() +
           name;
}

std::size_t projectorEntryLength(const ModelDefinition& model) {
    return format::projector_entry::fixedSize + model.name.size();
}

/// One image in the making: the regions, and whether they keep within the limits of the format.
class Image {
  public:
    explicit Image(const DefinitionSet& set)
        : definitions(set), models(set.models), ids(usedCommands(set)), commands(commandList(ids)) {
        for (const auto& model : models) {
            listLength += projectorEntryLength(model);
            blocks.push_back(projectorBlock(model));
        }
    }

    void check(Mistakes& mistakes) const {
        checkCommandList(mistakes);
        checkProjectorList(mistakes);
        checkBlocks(mistakes);
        checkBlockEnds(mistakes);
    }

    [[nodiscard]] std::string bytes() const {
        auto image = header() + commands + projectorList();
        for (const auto& block : blocks)
            image += block;
        return image;
    }

  private:
    [[nodiscard]] std::size_t firstBlockOffset() const {
        return format::header::size + commands.size() + listLength;
    }

    [[nodiscard]] std::string header() const {
        namespace header = format::header;
        return Record(header::size)
            .putBytes(header::magic, format::magic)
            .put(header::endianCheck, definitions.endianCheck)
            .put(header::revision, format::acceptedRevision)
            .putSigned(header::compileDate, definitions.compileDate)
            .put(header::commandListLength, commands.size())
            .put(header::commandCount, ids.size())
            .put(header::projectorListLength, listLength)
            .put(header::projectorCount, models.size())
            .take();
    }

    [[nodiscard]] std::string projectorList() const {
        std::string list;
        auto offset = firstBlockOffset();
        for (std::size_t index = 0; index < models.size(); ++index) {
            list += projectorEntry(models[index].name, offset, blocks[index].size());
            offset += blocks[index].size();
        }
        return list;
    }

    /// The list is shared by all models, so the first one answers for it.
    void checkCommandList(Mistakes& mistakes) const {
        if (commands.size() <= greatestWord) return;
        mistakes.add(models.front().place, "the command list takes " +
                                               std::to_string(commands.size()) +
                                               " bytes, at most 65535 can be said");
    }

    void checkProjectorList(Mistakes& mistakes) const {
        std::size_t length = 0;
        for (const auto& model : models) {
            length += projectorEntryLength(model);
            if (length <= greatestWord) continue;
            return mistakes.add(model.place, "the projector list grows beyond 65535 bytes with " +
                                                 quoted(model.name));
        }
    }

    void checkBlocks(Mistakes& mistakes) const {
        for (std::size_t index = 0; index < models.size(); ++index) {
            const auto& model = models[index];
            const auto add = [&](std::size_t count, std::string_view text) {
                mistakes.add(model.place, quoted(model.name) + " has " + std::to_string(count) +
                                              std::string(text));
            };
            if (const auto count = countDescriptors(model); count > greatestDescriptorCount)
                add(count, " arguments in all, at most 255 are possible");
            if (const auto size = blocks[index].size(); size > greatestWord)
                add(size, " bytes of commands and arguments, at most 65535 are possible");
        }
    }

    /// All models behind the first one that does not fit lie even further out: one line says it.
    void checkBlockEnds(Mistakes& mistakes) const {
        auto end = firstBlockOffset();
        for (std::size_t index = 0; index < models.size(); ++index) {
            end += blocks[index].size();
            if (end <= greatestBlockEnd) continue;
            return mistakes.add(models[index].place,
                                quoted(models[index].name) + " would end at byte " +
                                    std::to_string(end) +
                                    " of the file, at most 65536 are possible");
        }
    }

    const DefinitionSet& definitions;
    const std::vector<ModelDefinition>& models;
    CommandIds ids;
    std::string commands;
    std::size_t listLength = 0;
    std::vector<std::string> blocks;
};

}  // namespace

std::optional<std::string> binaryImage(const DefinitionSet& definitions, Mistakes& mistakes) {
    const Image image(definitions);
    const auto before = mistakes.count();
    image.check(mistakes);
    if (mistakes.count() > before) return std::nullopt;
    return image.bytes();
}

}  // namespace orx::orxdef
