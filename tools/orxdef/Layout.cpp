#include "orxdef/Layout.h"

#include "projector/DefinitionFormat.h"

namespace orx::orxdef {
namespace {

namespace format = definition_format;

std::size_t commandListSize(const DefinitionSet& definitions) {
    std::size_t size = 0;
    for (const auto& command : definitions.commandList)
        size += format::command_entry::fixedSize + command.name.size();
    return size;
}

std::size_t projectorListSize(const DefinitionSet& definitions) {
    std::size_t size = 0;
    for (const auto& model : definitions.models)
        size += projectorEntryLength(model);
    return size;
}

/// `usual` may be more than the field of the file can hold, which is for others to find.
std::size_t valueOr(std::optional<std::uint16_t> value, std::size_t usual) {
    return value ? *value : usual;
}

/// Forgets `value` where it is what would be there without it.
void forgetUsual(std::optional<std::uint16_t>& value, std::size_t usual) {
    if (value == usual) value.reset();
}

}  // namespace

std::size_t projectorEntryLength(const ModelDefinition& model) {
    return format::projector_entry::fixedSize + model.name.size();
}

std::size_t blockSize(const ModelDefinition& model) {
    auto size = format::block::headerSize + model.descriptors.size() * format::descriptor::size;
    for (const auto& string : model.strings)
        size += format::string_entry::fixedSize + string.bytes.size();
    return size;
}

Layout layOut(const DefinitionSet& definitions) {
    Layout layout{};
    layout.commandListLength = valueOr(definitions.commandListLength, commandListSize(definitions));
    layout.projectorListOffset = format::header::size + layout.commandListLength;
    layout.projectorListLength =
        valueOr(definitions.projectorListLength, projectorListSize(definitions));
    auto next = layout.projectorListOffset + layout.projectorListLength;
    for (const auto& model : definitions.models) {
        const auto offset = valueOr(model.blockOffset, next);
        const auto length = valueOr(model.blockLength, blockSize(model));
        layout.blocks.push_back({offset, length});
        next = offset + length;
    }
    return layout;
}

void removeUsualLayout(DefinitionSet& definitions) {
    forgetUsual(definitions.commandListLength, commandListSize(definitions));
    forgetUsual(definitions.projectorListLength, projectorListSize(definitions));
    const auto layout = layOut(definitions);
    auto next = layout.projectorListOffset + layout.projectorListLength;
    for (std::size_t index = 0; index < definitions.models.size(); ++index) {
        auto& model = definitions.models[index];
        const auto& block = layout.blocks[index];
        if (block.offset + blockSize(model) <= greatestBlockEnd)
            forgetUsual(model.blockOffset, next);
        forgetUsual(model.blockLength, blockSize(model));
        next = block.offset + block.length;
    }
}

}  // namespace orx::orxdef
