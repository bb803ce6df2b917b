// A path within a command line that is proposed to the user.
#pragma once

#include <string>
#include <string_view>

namespace orx::orxctl {

/// `text` as one word for a shell: as it is, or in single quotes where it needs them.
[[nodiscard]] inline std::string shellWord(std::string_view text) {
    constexpr std::string_view plain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./:@%+=,-";
    if (!text.empty() && text.find_first_not_of(plain) == std::string_view::npos)
        return std::string(text);
    std::string word = "'";
    for (const char letter : text) {
        if (letter == '\'')
            word += R"('\'')";
        else
            word += letter;
    }
    return word + "'";
}

}  // namespace orx::orxctl
