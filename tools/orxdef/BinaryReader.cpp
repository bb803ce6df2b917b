#include "orxdef/BinaryReader.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "orxdef/Files.h"
#include "orxdef/Wording.h"
#include "projector/DefinitionFormat.h"
#include "projector/LittleEndianView.h"

namespace orx::orxdef {
namespace {

namespace format = definition_format;

/// The two sizes that a list or a block has: what the file says and where it really ends.
struct Region {
    std::size_t begin;
    std::size_t end;  ///< never behind the end of the file

    [[nodiscard]] bool holds(std::size_t offset, std::size_t size) const noexcept {
        return offset <= end && size <= end - offset;
    }
};

class Reader {
  public:
    Reader(std::string_view bytes, std::size_t fileIndex, Mistakes& all)
        : image(bytes), view(bytes), used(bytes.size()), file(fileIndex), mistakes(all) {}

    DefinitionSet read() && {
        if (!readHeader()) return std::move(set);
        const auto commands = region("the command list", format::header::size,
                                     view.number(0, format::header::commandListLength));
        readCommandList(commands);
        const auto listBegin = format::header::size + *set.commandListLength;
        readProjectorList(region("the projector list", listBegin,
                                 view.number(0, format::header::projectorListLength)));
        for (auto& model : set.models)
            readBlock(model);
        collectFillers();
        return std::move(set);
    }

  private:
    /// Whether the rest of the file can be read at all.
    bool readHeader() {
        namespace header = format::header;
        if (image.size() < header::size) {
            report(0, "the header is cut short: " + std::to_string(image.size()) + " bytes of " +
                          std::to_string(header::size));
            return false;
        }
        if (image.find('\0') == std::string_view::npos) {
            report(0, "this is text and no definition file; orxdef compile makes one of TOML");
            return false;
        }
        const auto before = mistakes.count();
        set.place = placeOf(0);
        std::ranges::copy(image.substr(0, header::magic.size), set.magic.begin());
        const auto check = view.number(0, header::endianCheck);
        if (check > format::greatestEndianCheck)
            report(header::endianCheck.offset, "wrong byte order: the check value is " +
                                                   std::to_string(check) + ", at most 255 can be");
        const auto revision = view.number(0, header::revision);
        if (revision != format::acceptedRevision)
            report(header::revision.offset, "revision " + std::to_string(revision) + "; only " +
                                                std::to_string(format::acceptedRevision) +
                                                " can be read");
        set.endianCheck = static_cast<std::uint16_t>(check);
        set.compileDate = view.integer(0, header::compileDate);
        set.commandListLength = word(0, header::commandListLength);
        set.projectorListLength = word(0, header::projectorListLength);
        use(0, header::size);
        return mistakes.count() == before;
    }

    void readCommandList(const Region& list) {
        namespace entry = format::command_entry;
        const auto count = view.number(0, format::header::commandCount);
        auto place = list.begin;
        for (std::uint32_t index = 0; index < count; ++index) {
            if (!fits(list, place, entry::fixedSize, entry::nameLength))
                return reportEntry(place, index, count, "of the command list");
            const auto length = view.number(place, entry::nameLength);
            set.commandList.push_back({placeOf(place), word(place, entry::id),
                                       view.text(place + entry::fixedSize, length)});
            place = use(place, entry::fixedSize + length);
        }
    }

    void readProjectorList(const Region& list) {
        namespace entry = format::projector_entry;
        const auto count = view.number(0, format::header::projectorCount);
        auto place = list.begin;
        for (std::uint32_t index = 0; index < count; ++index) {
            if (!fits(list, place, entry::fixedSize, entry::nameLength))
                return reportEntry(place, index, count, "of the projector list");
            const auto length = view.number(place, entry::nameLength);
            auto& model = set.models.emplace_back();
            model.place = placeOf(place);
            model.blockOffset = word(place, entry::blockOffset);
            model.blockLength = word(place, entry::blockLength);
            model.name = view.text(place + entry::fixedSize, length);
            place = use(place, entry::fixedSize + length);
        }
    }

    void readBlock(ModelDefinition& model) {
        const auto title = "the block of " + quoted(model.name);
        const auto block = region(title, *model.blockOffset, *model.blockLength);
        if (!block.holds(block.begin, format::block::headerSize))
            return report(block.begin, title + " has no room for its header");
        readBlockHeader(model, block.begin);
        auto place = use(block.begin, format::block::headerSize);
        if (readStrings(model, block, place)) readDescriptors(model, block, place);
    }

    void readBlockHeader(ModelDefinition& model, std::size_t begin) {
        namespace field = format::block;
        const auto stopbitsAndParity = byte(begin, field::stopbitsAndParity);
        model.line.baudrate = view.number(begin, field::baudrate);
        model.line.timeout = word(begin, field::timeout);
        model.line.delay = word(begin, field::delay);
        model.line.bytesize = byte(begin, field::bytesize);
        model.line.stopbits = static_cast<std::uint8_t>(stopbitsAndParity >> 4U);
        model.line.parity = static_cast<Parity>(stopbitsAndParity & 0x0FU);
        model.checksum = static_cast<Checksum>(byte(begin, field::checksum));
    }

    /// Moves `place` behind the strings. Whether they are all there.
    bool readStrings(ModelDefinition& model, const Region& block, std::size_t& place) {
        namespace entry = format::string_entry;
        const auto count = view.number(block.begin, format::block::stringCount);
        for (std::uint32_t index = 0; index < count; ++index) {
            if (!fits(block, place, entry::fixedSize, entry::length)) {
                reportEntry(place, index, count, "with the strings of " + quoted(model.name));
                return false;
            }
            const auto length = view.number(place, entry::length);
            model.strings.push_back({placeOf(place), word(place, entry::commandId),
                                     view.text(place + entry::fixedSize, length)});
            place = use(place, entry::fixedSize + length);
        }
        return true;
    }

    void readDescriptors(ModelDefinition& model, const Region& block, std::size_t place) {
        namespace entry = format::descriptor;
        const auto count = view.number(block.begin, format::block::descriptorCount);
        for (std::uint32_t index = 0; index < count; ++index) {
            if (!block.holds(place, entry::size))
                return reportEntry(place, index, count,
                                   "with the arguments of " + quoted(model.name));
            model.descriptors.push_back({.place = placeOf(place),
                                         .id = word(place, entry::commandId),
                                         .number = word(place, entry::number),
                                         .min = view.integer(place, entry::min),
                                         .max = view.integer(place, entry::max),
                                         .pos = byte(place, entry::pos),
                                         .len = byte(place, entry::len),
                                         .type = byte(place, entry::type)});
            place = use(place, entry::size);
        }
    }

    /// What belongs to nothing, but for zero bytes in the middle, which are there by themselves.
    void collectFillers() {
        for (auto begin = used.begin(); begin != used.end();) {
            begin = std::find(begin, used.end(), false);
            const auto end = std::find(begin, used.end(), true);
            const auto offset = static_cast<std::size_t>(begin - used.begin());
            const auto bytes = image.substr(offset, static_cast<std::size_t>(end - begin));
            const bool isLast = end == used.end();
            if (!bytes.empty() &&
                (isLast || bytes.find_first_not_of('\0') != std::string_view::npos))
                set.fillers.push_back({placeOf(offset), offset, std::string(bytes)});
            begin = end;
        }
    }

    Region region(const std::string& title, std::size_t begin, std::size_t length) {
        const auto end = begin + length;
        if (end > image.size())
            report(std::min(begin, image.size()),
                   title + " is cut short: bytes " + std::to_string(begin) + " to " +
                       std::to_string(end) + " of a file of " + std::to_string(image.size()));
        return {begin, std::min(end, image.size())};
    }

    /// Whether the entry at `place` lies in `region`, its fixed part and the text behind it.
    [[nodiscard]] bool fits(const Region& region, std::size_t place, std::size_t fixedSize,
                            format::Field length) const {
        return region.holds(place, fixedSize) &&
               region.holds(place, fixedSize + view.number(place, length));
    }

    void reportEntry(std::size_t place, std::uint32_t index, std::uint32_t count,
                     const std::string& where) {
        report(place, "entry " + std::to_string(index + 1) + " of " + std::to_string(count) + " " +
                          where + " is cut short");
    }

    void report(std::size_t place, std::string message) {
        mistakes.add(placeOf(place), std::move(message));
    }

    [[nodiscard]] Place placeOf(std::size_t offset) const { return {file, 1, 1, offset}; }

    /// Gives the place behind.
    std::size_t use(std::size_t begin, std::size_t size) {
        std::fill_n(used.begin() + static_cast<std::ptrdiff_t>(begin), size, true);
        return begin + size;
    }

    [[nodiscard]] std::uint16_t word(std::size_t record, format::Field field) const {
        return static_cast<std::uint16_t>(view.number(record, field));
    }
    [[nodiscard]] std::uint8_t byte(std::size_t record, format::Field field) const {
        return static_cast<std::uint8_t>(view.number(record, field));
    }

    std::string_view image;
    LittleEndianView view;
    std::vector<bool> used;  ///< for each byte of the image, whether an entry has been read there
    std::size_t file;
    Mistakes& mistakes;
    DefinitionSet set;
};

}  // namespace

DefinitionSet readBinary(std::string_view image, std::size_t file, Mistakes& mistakes) {
    return Reader(image, file, mistakes).read();
}

DefinitionSet readBinaryFile(Mistakes& mistakes, std::string& image) {
    try {
        image = readFile(mistakes.fileName(0));
        return readBinary(image, 0, mistakes);
    } catch (const std::runtime_error& error) {
        mistakes.addUnreadable(0, error.what());
        return {};
    }
}

std::optional<DefinitionSet> readSoundFile(const std::string& path, std::string& image,
                                           std::ostream& errors) {
    Mistakes mistakes({path});
    auto definitions = readBinaryFile(mistakes, image);
    mistakes.print(errors);
    return mistakes.empty() ? std::optional(std::move(definitions)) : std::nullopt;
}

}  // namespace orx::orxdef
