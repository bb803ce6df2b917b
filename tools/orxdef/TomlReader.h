// Reads projector definitions from TOML files; definitions/demo.toml shows the form.
//
// One reader takes all files of a run, so that a model defined twice is found wherever it stands.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

#include "orxdef/Definition.h"
#include "orxdef/Mistakes.h"

namespace orx::orxdef {

class TomlReader {
  public:
    /// Mistakes go to `all`, which must outlive the reader and knows the files by name.
    explicit TomlReader(Mistakes& all) : mistakes(all) {}

    /// Adds the models of the file with that index in the list of mistakes. A file that cannot be
    /// read is a mistake like any other.
    void read(std::size_t file);

    /// As `read`, the content being `text`.
    void parse(std::string_view text, std::size_t file);

    /// The models in the order in which they were read. Complete only if there were no mistakes.
    [[nodiscard]] const DefinitionSet& definitions() const noexcept { return set; }

  private:
    void add(ModelDefinition model);

    Mistakes& mistakes;
    DefinitionSet set;
    std::map<std::string, Place> names;
};

}  // namespace orx::orxdef
