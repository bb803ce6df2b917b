// Reads projector definitions from the binary form, as `DefinitionFormat.h` lays it out.
//
// Unlike the reader in the daemon, which trusts a file, this one reports every place where the
// file says more than it has. No file, however damaged, leads it outside of its bytes.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "orxdef/Definition.h"
#include "orxdef/Mistakes.h"

namespace orx::orxdef {

/// The content of `image`, which is called by the index `file` in the list of `mistakes`: every
/// entry with its place, every block with its offset and length, every list with its length.
/// Damage is in `mistakes`; the result then tells as much as could be read.
[[nodiscard]] DefinitionSet readBinary(std::string_view image, std::size_t file,
                                       Mistakes& mistakes);

/// The same for the first file of `mistakes`, whose bytes are then in `image`. A file that cannot
/// be read is a mistake like any other.
[[nodiscard]] DefinitionSet readBinaryFile(Mistakes& mistakes, std::string& image);

/// The same for the file at `path`, for whom only a file without any damage will do: otherwise all
/// that is wrong with it goes to `errors`, a line each, and there is no result.
[[nodiscard]] std::optional<DefinitionSet> readSoundFile(const std::string& path,
                                                         std::string& image, std::ostream& errors);

}  // namespace orx::orxdef
