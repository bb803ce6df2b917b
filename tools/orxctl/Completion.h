// Completion of command lines by the shell, made of the vocabulary and of the options that the
// program really has.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace orx::orxctl {

inline constexpr std::array<std::string_view, 3> completionShells{"bash", "zsh", "fish"};

/// What an argument stands for, as far as a shell can complete it.
enum class ValueKind : std::uint8_t { none, text, file, shell };

struct OptionWords {
    std::vector<std::string> names;  ///< "-H", "--host"
    std::string text;
    ValueKind value = ValueKind::none;
};

/// Something else to do than to send a command.
struct ErrandWords {
    std::string name;
    std::string text;
    ValueKind argument = ValueKind::none;
    std::vector<OptionWords> options;
};

/// All words that a command line may have, besides keywords and their arguments.
struct CommandLineWords {
    std::vector<OptionWords> options;
    std::vector<ErrandWords> errands;
};

/// The script that teaches `shell`, one of `completionShells`, to complete calls of orxctl.
[[nodiscard]] std::string completionScript(std::string_view shell, const CommandLineWords& words);

}  // namespace orx::orxctl
