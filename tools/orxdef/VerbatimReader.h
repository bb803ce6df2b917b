// Reads the tables called `verbatim` of a TOML definition: what stands there is taken over as it
// is, so that every definition file can be said in TOML, also one that the plain form would refuse.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orxdef/Definition.h"
#include "orxdef/FileReport.h"
#include "orxdef/TableReader.h"

namespace orx::orxdef {

/// What the table `verbatim` of a file says. Mistakes in it are in `report`.
struct FileVerbatim {
    Place place;
    DefinitionSet set;            ///< all but the models
    bool hasCommandList = false;  ///< otherwise that of `set` is empty and means nothing
};
[[nodiscard]] FileVerbatim readFileVerbatim(const toml::table& table, FileReport& report);

/// Puts what the table `verbatim` of a model says into `model`. Gives the order of its commands.
[[nodiscard]] std::vector<std::string> readModelVerbatim(const toml::table& table,
                                                         ModelDefinition& model,
                                                         FileReport& report);

/// The list `verbatim` of a command with that title and number.
[[nodiscard]] std::vector<ArgumentDescriptor> readCommandVerbatim(const toml::node& value,
                                                                  const std::string& title,
                                                                  std::uint16_t id,
                                                                  FileReport& report);

}  // namespace orx::orxdef
