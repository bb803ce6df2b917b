#include "orxdef/ProjectorBlock.h"

#include "orxdef/Record.h"

namespace orx::orxdef {
namespace {

namespace format = definition_format;

std::string stringEntry(const CommandDefinition& command) {
    namespace entry = format::string_entry;
    return Record(entry::fixedSize)
               .put(entry::commandId, command.id)
               .put(entry::length, command.bytes.size())
               .take() +
           command.bytes;
}

std::string descriptorEntry(std::uint16_t commandId, std::size_t number,
                            const ArgumentDescriptor& argument) {
    namespace entry = format::descriptor;
    return Record(entry::size)
        .put(entry::commandId, commandId)
        .put(entry::number, number)
        .putSigned(entry::min, argument.min)
        .putSigned(entry::max, argument.max)
        .put(entry::pos, argument.pos)
        .put(entry::len, argument.len)
        .put(entry::type, static_cast<unsigned char>(argument.type))
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
        .put(block::stringCount, model.commands.size())
        .put(block::descriptorCount, countDescriptors(model))
        .put(block::bytesize, line.bytesize)
        .put(block::stopbitsAndParity, static_cast<std::uint64_t>(stopbitsAndParity))
        .put(block::checksum, static_cast<std::uint64_t>(model.checksum))
        .take();
}

}  // namespace

std::size_t countDescriptors(const ModelDefinition& model) {
    std::size_t count = 0;
    for (const auto& command : model.commands)
        count += command.arguments.size();
    return count;
}

std::string projectorBlock(const ModelDefinition& model) {
    auto block = blockHeader(model);
    for (const auto& command : model.commands)
        block += stringEntry(command);
    for (const auto& command : model.commands) {
        std::size_t number = 0;
        for (const auto& argument : command.arguments)
            block += descriptorEntry(command.id, ++number, argument);
    }
    return block;
}

}  // namespace orx::orxdef
