// Where the parts of a binary definition file stand and how long they are: each straight behind the
// one before and as long as its entries, unless the definitions say otherwise.
#pragma once

#include <cstddef>
#include <vector>

#include "orxdef/Definition.h"

namespace orx::orxdef {

/// Blocks are found by 16-bit offsets; none that is given its place here reaches beyond the last
/// byte which these name.
inline constexpr std::size_t greatestBlockEnd = 65536;

/// What the projector list says of a block.
struct BlockExtent {
    std::size_t offset;
    std::size_t length;
};

/// All sizes in bytes, all offsets from the start of the file.
struct Layout {
    std::size_t commandListLength;
    std::size_t projectorListOffset;
    std::size_t projectorListLength;
    std::vector<BlockExtent> blocks;  ///< one for each model
};

/// Whether the results fit the fields of the file is the caller's to check.
[[nodiscard]] Layout layOut(const DefinitionSet& definitions);

/// What the entries of `model` take in the file.
[[nodiscard]] std::size_t projectorEntryLength(const ModelDefinition& model);
[[nodiscard]] std::size_t blockSize(const ModelDefinition& model);

/// Takes out of `definitions` every length and offset that `layOut` gives by itself.
void removeUsualLayout(DefinitionSet& definitions);

}  // namespace orx::orxdef
