#include "orxdef/TableReader.h"

#include <algorithm>
#include <utility>

#include "orxdef/Wording.h"

namespace orx::orxdef {

std::string_view kindOf(const toml::node& node) noexcept {
    switch (node.type()) {
        case toml::node_type::table:
            return "a table";
        case toml::node_type::array:
            return "an array";
        case toml::node_type::string:
            return "a string";
        case toml::node_type::integer:
            return "an integer";
        case toml::node_type::floating_point:
            return "a floating-point number";
        case toml::node_type::boolean:
            return "a boolean";
        case toml::node_type::date:
        case toml::node_type::time:
        case toml::node_type::date_time:
            return "a date or time";
        case toml::node_type::none:
            break;
    }
    return "nothing";
}

TableReader::TableReader(const toml::table& tomlTable, std::string tableTitle,
                         FileReport& fileReport)
    : table(tomlTable), title(std::move(tableTitle)), report(fileReport) {}

void TableReader::allowOnly(Names names) const {
    for (const auto& [key, value] : table)
        if (std::ranges::find(names, key.str()) == names.end())
            report.add(key.source(), "unknown key " + quoted(key.str()) + " in " + title +
                                         "; allowed: " + listed(names));
}

const toml::node* TableReader::find(std::string_view key) const {
    return table.get(key);
}

const toml::node* TableReader::require(std::string_view key) const {
    const auto* value = find(key);
    if (value == nullptr) report.add(table, title + " has no " + std::string(key));
    return value;
}

std::int64_t TableReader::integerOr(std::string_view key, Range range,
                                    std::int64_t fallback) const {
    const auto* value = find(key);
    return value != nullptr ? asInteger(*value, key, range).value_or(fallback) : fallback;
}

std::size_t TableReader::choiceOr(std::string_view key, Names names, std::size_t fallback) const {
    const auto* value = find(key);
    return value != nullptr ? asChoice(*value, key, names).value_or(fallback) : fallback;
}

std::optional<std::int64_t> TableReader::integer(std::string_view key, Range range) const {
    const auto* value = require(key);
    return value != nullptr ? asInteger(*value, key, range) : std::nullopt;
}

std::optional<double> TableReader::number(std::string_view key) const {
    const auto* value = require(key);
    if (value == nullptr) return std::nullopt;
    // Every whole number that a double cannot hold exactly lies beyond what a bound may be anyway.
    if (const auto* whole = value->as_integer()) return static_cast<double>(whole->get());
    if (const auto* fraction = value->as_floating_point()) return fraction->get();
    refuseKind(*value, key, "a number");
    return std::nullopt;
}

std::optional<std::string> TableReader::text(std::string_view key) const {
    const auto* value = require(key);
    if (value == nullptr) return std::nullopt;
    if (const auto* string = value->as_string()) return string->get();
    refuseKind(*value, key, "a string");
    return std::nullopt;
}

std::optional<std::size_t> TableReader::choice(std::string_view key, Names names) const {
    const auto* value = require(key);
    return value != nullptr ? asChoice(*value, key, names) : std::nullopt;
}

std::optional<std::int64_t> TableReader::asInteger(const toml::node& value, std::string_view key,
                                                   Range range) const {
    const auto* number = value.as_integer();
    if (number == nullptr)
        refuseKind(value, key, "an integer");
    else if (number->get() >= range.least && number->get() <= range.greatest)
        return number->get();
    else
        refuse(value, key,
               "must be from " + std::to_string(range.least) + " to " +
                   std::to_string(range.greatest) + ", not " + std::to_string(number->get()));
    return std::nullopt;
}

std::optional<std::size_t> TableReader::asChoice(const toml::node& value, std::string_view key,
                                                 Names names) const {
    const auto* text = value.as_string();
    const auto found = text != nullptr ? std::ranges::find(names, text->get()) : names.end();
    if (found != names.end()) return static_cast<std::size_t>(found - names.begin());
    const auto actual = text != nullptr ? quoted(text->get()) : std::string(kindOf(value));
    refuse(value, key, "must be " + alternatives(names) + ", not " + actual);
    return std::nullopt;
}

void TableReader::refuse(const toml::node& value, std::string_view key,
                         std::string_view message) const {
    report.add(value, std::string(key).append(" ").append(message));
}

void TableReader::refuseKind(const toml::node& value, std::string_view key,
                             std::string_view wanted) const {
    refuse(value, key, "must be " + std::string(wanted) + ", not " + std::string(kindOf(value)));
}

}  // namespace orx::orxdef
