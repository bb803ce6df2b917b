// Pieces of TOML as text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orx::orxdef {

/// `text` as a key: bare where that is allowed, else in double quotes.
[[nodiscard]] std::string keyText(std::string_view text);

/// `text` in double quotes.
[[nodiscard]] std::string stringText(std::string_view text);

/// `bytes` in single quotes, in the notation that commands are written in.
[[nodiscard]] std::string bytesText(std::string_view bytes);

/// Whether TOML can hold `text` at all, which must be UTF-8.
[[nodiscard]] bool isTomlText(std::string_view text);

/// KEY = VALUE
[[nodiscard]] std::string pairText(std::string_view key, std::string_view value);
[[nodiscard]] std::string pairText(std::string_view key, long long value);

/// { PAIR, PAIR }
[[nodiscard]] std::string inlineTable(const std::vector<std::string>& pairs);

/// `prefix`, then the array of `elements`, then `suffix`: on one line where that has room, else
/// with each element on a line of its own.
[[nodiscard]] std::string arrayLine(const std::string& prefix,
                                    const std::vector<std::string>& elements,
                                    const std::string& suffix = "");

}  // namespace orx::orxdef
