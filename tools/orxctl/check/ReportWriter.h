// Shows a report to people and to machines.
#pragma once

#include <iosfwd>

#include "orxctl/check/Report.h"

namespace orx::orxctl {

/// A line "PLACE: SEVERITY: MESSAGE" for each finding, their counts, and the verdict.
void printText(const Report& report, std::ostream& output);

/// One JSON object, as `Check.h` describes it.
void printJson(const Report& report, std::ostream& output);

}  // namespace orx::orxctl
