// The numbers that commands have within one definition file.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orxdef/Definition.h"

namespace orx::orxdef {

class CommandNumbering {
  public:
    /// The keywords of the vocabulary, each with its place there, counted from 1.
    CommandNumbering();

    /// The names of a command list. A number that stands twice belongs to the later name, and of
    /// several numbers with one name the lowest counts.
    explicit CommandNumbering(const std::vector<ListedCommand>& commandList);

    /// Nothing where there is no command of that name.
    [[nodiscard]] std::optional<std::uint16_t> find(std::string_view name) const;

  private:
    std::map<std::string, std::uint16_t, std::less<>> numbers;
};

/// The command list of a file that has none of its own: the keywords of the vocabulary that
/// `models` have entries for, numbered as above.
[[nodiscard]] std::vector<ListedCommand> usualCommandList(
    const std::vector<ModelDefinition>& models);

}  // namespace orx::orxdef
