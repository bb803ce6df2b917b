// The mistakes of one TOML file, placed by the nodes and keys that TOML made of it.
#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include <toml++/toml.h>

#include "orxdef/Mistakes.h"

namespace orx::orxdef {

class FileReport {
  public:
    /// `all` must outlive the report; `fileIndex` is an index in its list of files.
    FileReport(std::size_t fileIndex, Mistakes& all) : file(fileIndex), mistakes(all) {}

    [[nodiscard]] Place placeOf(const toml::source_region& region) const noexcept {
        return {file, region.begin.line, region.begin.column};
    }

    void add(const toml::source_region& region, std::string message) {
        mistakes.add(placeOf(region), std::move(message));
    }
    void add(const toml::node& node, std::string message) {
        add(node.source(), std::move(message));
    }

  private:
    std::size_t file;
    Mistakes& mistakes;
};

}  // namespace orx::orxdef
