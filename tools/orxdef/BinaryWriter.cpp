#include "orxdef/BinaryWriter.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "orxdef/Layout.h"
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

std::string commandList(const DefinitionSet& set) {
    namespace entry = format::command_entry;
    std::string list;
    for (const auto& command : set.commandList) {
        list += Record(entry::fixedSize)
                    .put(entry::id, command.id)
                    .put(entry::nameLength, command.name.size())
                    .take();
        list += command.name;
    }
    return list;
}

std::string projectorEntry(const std::string& name, const BlockExtent& block) {
    namespace entry = format::projector_entry;
    return Record(entry::fixedSize)
               .put(entry::blockOffset, block.offset)
               .put(entry::blockLength, block.length)
               .put(entry::nameLength, name.size())
               .take() +
           name;
}

/// Pieces of a file, each at a place of its own choice. Where two of them meet they must agree.
class Canvas {
  public:
    /// Whether all bytes that stood there before are the same.
    bool put(std::size_t offset, std::string_view piece) {
        const auto end = offset + piece.size();
        if (bytes.size() < end) bytes.resize(end);
        if (written.size() < end) written.resize(end);
        bool agrees = true;
        for (std::size_t index = 0; index < piece.size(); ++index) {
            const auto place = offset + index;
            agrees = agrees && (!written[place] || bytes[place] == piece[index]);
            bytes[place] = piece[index];
            written[place] = true;
        }
        return agrees;
    }

    std::string take() { return std::move(bytes); }

  private:
    std::string bytes;
    std::vector<bool> written;
};

/// One image in the making: the regions, and whether they keep within the limits of the format.
class Image {
  public:
    explicit Image(const DefinitionSet& set)
        : definitions(set), models(set.models), layout(layOut(set)), commands(commandList(set)) {}

    void check(Mistakes& mistakes) const {
        checkCommandList(mistakes);
        checkProjectorList(mistakes);
        checkBlocks(mistakes);
        checkBlockEnds(mistakes);
    }

    /// Where explicit places make two parts overlap and disagree, that is reported.
    [[nodiscard]] std::string bytes(Mistakes& mistakes) const {
        Canvas canvas;
        canvas.put(0, header());
        canvas.put(format::header::size, commands);
        const auto put = [&](const Place& place, std::size_t offset, std::string_view piece,
                             const std::string& title) {
            if (!canvas.put(offset, piece))
                mistakes.add(place, title + " overlaps with other bytes and differs from them");
        };
        const auto list = projectorList();
        if (!models.empty())
            put(models.front().place, layout.projectorListOffset, list, "the projector list");
        for (std::size_t index = 0; index < models.size(); ++index)
            put(models[index].place, layout.blocks[index].offset, projectorBlock(models[index]),
                "the block of " + quoted(models[index].name));
        for (const auto& filler : definitions.fillers)
            put(filler.place, filler.offset, filler.bytes, "a filler");
        return canvas.take();
    }

  private:
    [[nodiscard]] std::string header() const {
        namespace header = format::header;
        return Record(header::size)
            .putBytes(header::magic, definitions.magic)
            .put(header::endianCheck, definitions.endianCheck)
            .put(header::revision, format::acceptedRevision)
            .putSigned(header::compileDate, definitions.compileDate)
            .put(header::commandListLength, layout.commandListLength)
            .put(header::commandCount, definitions.commandList.size())
            .put(header::projectorListLength, layout.projectorListLength)
            .put(header::projectorCount, models.size())
            .take();
    }

    [[nodiscard]] std::string projectorList() const {
        std::string list;
        for (std::size_t index = 0; index < models.size(); ++index)
            list += projectorEntry(models[index].name, layout.blocks[index]);
        return list;
    }

    /// The list is shared by all models, so the first one answers for it.
    void checkCommandList(Mistakes& mistakes) const {
        if (commands.size() <= greatestWord) return;
        mistakes.add(models.empty() ? Place() : models.front().place,
                     "the command list takes " + std::to_string(commands.size()) +
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
        for (const auto& model : models) {
            const auto add = [&](std::size_t count, std::string_view text) {
                mistakes.add(model.place, quoted(model.name) + " has " + std::to_string(count) +
                                              std::string(text));
            };
            if (const auto count = model.descriptors.size(); count > greatestDescriptorCount)
                add(count, " arguments in all, at most 255 are possible");
            if (const auto size = blockSize(model); size > greatestWord)
                add(size, " bytes of commands and arguments, at most 65535 are possible");
        }
    }

    /// All models behind the first one that does not fit lie even further out: one line says it.
    void checkBlockEnds(Mistakes& mistakes) const {
        for (std::size_t index = 0; index < models.size(); ++index) {
            if (models[index].blockOffset) continue;
            const auto end = layout.blocks[index].offset + blockSize(models[index]);
            if (end <= greatestBlockEnd) continue;
            return mistakes.add(models[index].place,
                                quoted(models[index].name) + " would end at byte " +
                                    std::to_string(end) +
                                    " of the file, at most 65536 are possible");
        }
    }

    const DefinitionSet& definitions;
    const std::vector<ModelDefinition>& models;
    Layout layout;
    std::string commands;
};

}  // namespace

std::optional<std::string> binaryImage(const DefinitionSet& definitions, Mistakes& mistakes) {
    const Image image(definitions);
    const auto before = mistakes.count();
    image.check(mistakes);
    if (mistakes.count() > before) return std::nullopt;
    auto bytes = image.bytes(mistakes);
    return mistakes.count() == before ? std::optional(std::move(bytes)) : std::nullopt;
}

}  // namespace orx::orxdef
