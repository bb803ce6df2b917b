// Checks the keys of the main configuration: whether the daemon knows them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "orxctl/check/CheckedConfig.h"
#include "orxctl/check/Report.h"

namespace orx::orxctl {

/// Every key that the daemon asks for, but not the aliases, which begin with "cmd.".
[[nodiscard]] const std::vector<std::string>& knownKeys();

/// The known keys that `key` may have been meant for, the likeliest first.
[[nodiscard]] std::vector<std::string_view> likelyKeys(std::string_view key);

/// Reports unknown keys, and values of text with what looks like a comment at their end.
void checkKeys(const CheckedConfig& config, Report& report);

}  // namespace orx::orxctl
