// Shows what daemons say of themselves, and how errands have ended.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "orxctl/Fleet.h"
#include "orxctl/Outcome.h"

namespace orx::orxctl {

/// A table with a line for each daemon: state, axes and flags, or why there is no status.
[[nodiscard]] std::string statusTable(const Fleet& fleet, const std::vector<Outcome>& outcomes);

/// The same as one JSON array with an object for each daemon; with line feeds and indentation, or
/// on one line.
enum class JsonForm : bool { indented, oneLine };
[[nodiscard]] std::string statusJson(const Fleet& fleet, const std::vector<Outcome>& outcomes,
                                     JsonForm form);

/// How an errand has ended: of one daemon what there is to say, on `errors` where it is a failure;
/// of several a table on `output`, with `done` for those of which there is nothing to say.
void printOutcomes(const Fleet& fleet, const std::vector<Outcome>& outcomes, std::string_view done,
                   std::ostream& output, std::ostream& errors);

}  // namespace orx::orxctl
