// A configuration file line by line, by the daemon's own rules for a line: what the daemon keeps of
// it, and where each key stands. Unlike the daemon it reads on behind a malformed line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "config/ConfigFile.h"
#include "config/ConfigLine.h"
#include "orxctl/check/Report.h"

namespace orx::orxctl {

class ConfigText {
  public:
    struct Line {
        std::size_t number;  ///< counted from 1
        ConfigLine content;
    };

    /// Reads the file at `path`; one that cannot be read has no lines.
    explicit ConfigText(std::string path);

    [[nodiscard]] const std::string& path() const noexcept { return filePath; }

    /// All lines but blank ones and comments.
    [[nodiscard]] const std::vector<Line>& lines() const noexcept { return contents; }

    /// The entries: of a repeated key the last value.
    [[nodiscard]] ConfigFile::Entries entries() const;

    /// The line whose value counts for `key`; the key alone where no line has it.
    [[nodiscard]] Place placeOf(std::string_view key) const;
    /// That line, which is an entry.
    [[nodiscard]] Place placeOf(const Line& line) const;

    /// The file as a whole, called `subject`.
    [[nodiscard]] Place whole(std::string subject) const;

  private:
    std::string filePath;
    std::vector<Line> contents;
};

/// Reports the lines that the daemon does not understand, and keys that stand twice.
void checkLines(const ConfigText& text, Stage stage, Report& report);

}  // namespace orx::orxctl
