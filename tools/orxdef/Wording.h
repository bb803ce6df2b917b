// How messages name things. Pure functions: any thread may call them.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orx::orxdef {

/// The capital of an ASCII letter; any other byte as it is.
[[nodiscard]] char upper(char letter) noexcept;

/// `text` in double quotes on one line: what is not printable ASCII shows as \xNN.
[[nodiscard]] std::string quoted(std::string_view text);

/// a, b, c
[[nodiscard]] std::string listed(std::span<const std::string_view> names);

/// "a", "b" or "c"
[[nodiscard]] std::string alternatives(std::span<const std::string_view> names);

/// "1 WHAT", "2 WHATs"
[[nodiscard]] std::string counted(std::size_t count, std::string_view what);

/// The candidates that were probably meant by `name`, the nearest first, three at most: those that
/// differ in letter case and at most every third character, and hardly more than the nearest one.
/// Equally near ones keep their order.
[[nodiscard]] std::vector<std::string_view> nearest(std::string_view name,
                                                    std::span<const std::string_view> candidates);

/// The keyword of the vocabulary that was probably meant by `name`: the one paired with that
/// symbolic name, or the `nearest`.
[[nodiscard]] std::optional<std::string_view> nearestKeyword(std::string_view name);

}  // namespace orx::orxdef
