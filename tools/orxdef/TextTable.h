// Tables as text for terminals and pipes.
#pragma once

#include <string>
#include <vector>

namespace orx::orxdef {

using Row = std::vector<std::string>;

/// The rows as lines, each column as wide as its widest cell and two blanks from the next. A row
/// may have fewer cells than the first; its last cell then takes no part in the widths.
[[nodiscard]] std::string tableText(const std::vector<Row>& rows);

}  // namespace orx::orxdef
