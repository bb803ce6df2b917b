// Small text utilities. Pure functions: any thread may call them.
#pragma once

#include <string>
#include <string_view>

namespace orx {

/// `text` without the blanks, tabs, carriage returns and line feeds at either end.
[[nodiscard]] std::string trim(std::string_view text);

/// Printable ASCII (0x20 to 0x7E) as it is, every other byte as "\x" and two lower-case
/// hexadecimal digits: the bytes 0x41 0x0a give A\x0a.
[[nodiscard]] std::string escapeBytes(std::string_view bytes);

/// Turns each "\x" escape back into its byte: A\x42C gives ABC. A backslash with any other
/// character after it, or with fewer than three characters after it, stays as it is.
/// Throws `std::invalid_argument` or `std::out_of_range` with the text "stoi" where the two
/// characters after "\x" hold no hexadecimal number.
[[nodiscard]] std::string unescapeBytes(std::string_view text);

/// The bytes as two lower-case hexadecimal digits each, blank-separated, in brackets: [02 1b ff].
[[nodiscard]] std::string listBytes(std::string_view bytes);

}  // namespace orx
