// What an operation comes to: its result, or the error that it is documented to end with. An
// exception of any other kind is not caught here and so becomes a finding.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "common/Check.h"

namespace orx::fuzz {

template <typename Value>
struct Outcome {
    std::optional<Value> value{};
    std::string error{};  ///< empty where there is a value

    bool operator==(const Outcome&) const = default;
};

/// Of the standard conversion called `conversion`, for a text that begins with no number.
inline std::string noNumber(const std::string& conversion) {
    return "invalid argument: " + conversion;
}

/// Of the same, for a number that does not fit.
inline std::string tooGreat(const std::string& conversion) {
    return "out of range: " + conversion;
}

/// Of a place beyond the end of a text. Its message is the standard library's own.
inline const std::string& beyondTheEnd() {
    static const std::string text = "out of range: a place";
    return text;
}

inline std::string describe(const std::out_of_range& error) {
    const std::string text = error.what();
    return text == "stoi" || text == "stod" ? tooGreat(text) : beyondTheEnd();
}

/// Conversion errors, places beyond the end and errors with a text of our own.
template <typename Action>
auto outcomeOf(Action action) -> Outcome<decltype(action())> {
    try {
        return {action(), {}};
    } catch (const std::invalid_argument& error) {
        return {{}, noNumber(error.what())};
    } catch (const std::out_of_range& error) {
        return {{}, describe(error)};
    } catch (const std::runtime_error& error) {
        return {{}, error.what()};
    }
}

/// The error alone; empty where there was none.
template <typename Action>
std::string errorOf(Action action) {
    return outcomeOf([&action] {
               action();
               return true;
           })
        .error;
}

template <typename Value>
void expectSame(const Outcome<Value>& actual, const Outcome<Value>& expected,
                std::string_view what) {
    expectEqual(actual.error, expected.error, what);
    if (actual.value) expectEqual(*actual.value, *expected.value, what);
}

}  // namespace orx::fuzz
