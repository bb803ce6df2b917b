// One TOML table being read: typed values by their keys, every mistake reported with its place.
//
// An operation that cannot give its value has reported why, unless it says otherwise.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "orxdef/FileReport.h"

namespace orx::orxdef {

/// The whole numbers that a key may have, both ends included.
struct Range {
    std::int64_t least;
    std::int64_t greatest;
};

/// What `node` is, with its article: "a string".
[[nodiscard]] std::string_view kindOf(const toml::node& node) noexcept;

class TableReader {
  public:
    using Names = std::span<const std::string_view>;

    /// `tableTitle` is what messages call the table. `tomlTable` and `fileReport` must outlive the
    /// reader.
    TableReader(const toml::table& tomlTable, std::string tableTitle, FileReport& fileReport);

    /// Reports every key that is not among `names`.
    void allowOnly(Names names) const;

    /// Null, without a report, where there is no such key.
    [[nodiscard]] const toml::node* find(std::string_view key) const;
    /// Null where there is no such key.
    [[nodiscard]] const toml::node* require(std::string_view key) const;

    /// A missing key gives `fallback`, and so does a mistaken value.
    [[nodiscard]] std::int64_t integerOr(std::string_view key, Range range,
                                         std::int64_t fallback) const;
    /// The index in `names` of the text that the key has, as `integerOr`.
    [[nodiscard]] std::size_t choiceOr(std::string_view key, Names names,
                                       std::size_t fallback) const;

    [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key, Range range) const;
    /// A whole number or one with a fraction, as near as a double comes to it.
    [[nodiscard]] std::optional<double> number(std::string_view key) const;
    [[nodiscard]] std::optional<std::string> text(std::string_view key) const;
    [[nodiscard]] std::optional<std::size_t> choice(std::string_view key, Names names) const;

    /// Reports that the value of `key` is not as it must be: "`key` `message`".
    void refuse(const toml::node& value, std::string_view key, std::string_view message) const;

  private:
    [[nodiscard]] std::optional<std::int64_t> asInteger(const toml::node& value,
                                                        std::string_view key, Range range) const;
    [[nodiscard]] std::optional<std::size_t> asChoice(const toml::node& value, std::string_view key,
                                                      Names names) const;
    void refuseKind(const toml::node& value, std::string_view key, std::string_view wanted) const;

    const toml::table& table;
    std::string title;
    FileReport& report;
};

}  // namespace orx::orxdef
