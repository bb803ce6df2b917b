// Trimming a second time, to compare with: one character after the other.
#pragma once

#include <string>
#include <string_view>

namespace orx::fuzz {

inline std::string trimmed(std::string_view text) {
    const std::string_view blanks = " \t\r\n";
    while (!text.empty() && blanks.find(text.front()) != std::string_view::npos)
        text.remove_prefix(1);
    while (!text.empty() && blanks.find(text.back()) != std::string_view::npos)
        text.remove_suffix(1);
    return std::string(text);
}

}  // namespace orx::fuzz
