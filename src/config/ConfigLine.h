// One line of a configuration file and what it says. A value; used by the reader of the files and
// by tools that tell more about a file than the daemon does.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orx {

struct ConfigLine {
    enum class Kind : std::uint8_t {
        nothing,    ///< a blank line or a comment
        entry,      ///< "key = value"
        malformed,  ///< anything else
    };

    Kind kind = Kind::nothing;
    std::string key{};    ///< of an entry; may be empty
    std::string value{};  ///< of an entry; may be empty
};

/// What `line`, without its line feed, says.
[[nodiscard]] ConfigLine parseConfigLine(std::string_view line);

}  // namespace orx
