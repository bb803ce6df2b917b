// Checks what the user wants to be sent, beyond what the daemon's own parser tells.
#pragma once

#include <array>
#include <chrono>
#include <span>
#include <string>
#include <string_view>

#include "orx/client/Request.h"

namespace orx::orxctl {

/// The words of the command line that do something else than to send a command.
inline constexpr std::array<std::string_view, 7> errandNames{"status", "wait",  "commands",  "run",
                                                             "ping",   "check", "completion"};

/// The request that `text` stands for. Throws `std::invalid_argument`, whose text is one for users:
/// for what `client::Request` refuses, with what was probably meant, be it a keyword or one of
/// `otherWords`; for a number with something behind it, which the daemon would not see; for a
/// command that does nothing without the argument that is missing; and for a second argument where
/// the daemon takes the first alone.
[[nodiscard]] client::Request parseRequest(
    const std::string& text, std::span<const std::string_view> otherWords = errandNames);

/// A time limit or a pause: seconds, with decimals at will, up to a day. Throws
/// `std::invalid_argument`, whose text tells what is expected.
[[nodiscard]] std::chrono::milliseconds parseSeconds(const std::string& text);

}  // namespace orx::orxctl
