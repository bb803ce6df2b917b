#include "orxdef/ProjectorBlock.h"

#include "orxdef/Record.h"

namespace orx::orxdef {
namespace {

namespace format = definition_format;

std::string stringEntry(const CommandString& string) {
    namespace entry = format::string_entry;
    return Record(entry::fixedSize)
               .put(entry::commandId, string.id)
               .put(entry::length, string.bytes.size())
               .take() +
           string.bytes;
}

std::string descriptorEntry(const ArgumentDescriptor& argument) {
    namespace entry = format::descriptor;
    return Record(entry::size)
        .put(entry::commandId, argument.id)
        .put(entry::number, argument.number)
        .putSigned(entry::min, argument.min)
        .putSigned(entry::max, argument.max)
        .put(entry::pos, argument.pos)
        .put(entry::len, argument.len)
        .put(entry::type, argument.type)
        .take();
}

std::string blockHeader(const ModelDefinition& model) {
    namespace block = format::block;
    const auto& line = model.line;
    const auto stopbitsAndParity = line.stopbits << 4 | static_cast<int>(line.parity);
    return Record(block::headerSize)
        .put(block::baudrate, line.baudrate)
        .put(block::timeout, line.timeout)
        .put(block::delay, line.delay)
        .put(block::stringCount, model.strings.size())
        .put(block::descriptorCount, model.descriptors.size())
        .put(block::bytesize, line.bytesize)
        .put(block::stopbitsAndParity, static_cast<std::uint64_t>(stopbitsAndParity))
        .put(block::checksum, static_cast<std::uint64_t>(model.checksum))
        .take();
}

}  // namespace

std::string projectorBlock(const ModelDefinition& model) {
    auto block = blockHeader(model);
    for (const auto& string : model.strings)
        block += stringEntry(string);
    for (const auto& descriptor : model.descriptors)
        block += descriptorEntry(descriptor);
    return block;
}

}  // namespace orx::orxdef
