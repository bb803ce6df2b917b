// The text of a command as a definition writes it, taken apart: the bytes to send and the places
// of the arguments between them.
//
// In the text \xNN, \r, \n, \t and \\ stand for one byte each, {{ and }} for a brace, and {1}, {2}
// and so on for the place of that argument. All other bytes stand for themselves.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orx::orxdef {

struct CommandTemplate {
    /// The place of one argument.
    struct Placeholder {
        unsigned number;  ///< counted from 1; whether there is such an argument is not known here
        std::size_t pos;  ///< index in `bytes` before which the argument is inserted
    };

    std::string bytes;
    std::vector<Placeholder> placeholders;  ///< as they stand in the text
    std::vector<std::string> mistakes;      ///< what is wrong with the text, one message each

    /// Never throws for a malformed text: what could not be read is in `mistakes` and missing from
    /// the rest.
    [[nodiscard]] static CommandTemplate parse(std::string_view text);

    /// The text of which `parse` makes these bytes and placeholders, the latter in ascending order
    /// of their places. It has no quotes, so that it can stand in single ones.
    [[nodiscard]] std::string text() const;
};

}  // namespace orx::orxdef
