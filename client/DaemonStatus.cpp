#include "orx/client/DaemonStatus.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace orx::client {
namespace {

/// A flag of the reply and where it goes.
struct Flag {
    std::string_view token;
    bool DaemonStatus::*member;
};

constexpr std::array<Flag, 4> flags{{{"HELO", &DaemonStatus::hello},
                                     {"LCU", &DaemonStatus::lensConfigLoaded},
                                     {"DUMB", &DaemonStatus::dumbMode},
                                     {"DEBUG", &DaemonStatus::debugMode}}};

/// Takes `prefix` off the beginning of `text`; false where it does not begin with it.
bool take(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix)) return false;
    text.remove_prefix(prefix.size());
    return true;
}

std::optional<int> takeNumber(std::string_view& text) {
    int number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    return number;
}

/// What stands before `end`, which is taken off too; nothing where there is no `end`.
std::optional<std::string_view> takeUntil(std::string_view& text, std::string_view end) {
    const auto place = text.find(end);
    if (place == std::string_view::npos) return std::nullopt;
    const auto before = text.substr(0, place);
    text.remove_prefix(place + end.size());
    return before;
}

/// Reads `prefix` and a number behind it, which may be left out together. False where only one of
/// the two is there.
bool takeOptional(std::string_view& text, std::string_view prefix, std::optional<int>& number) {
    if (!take(text, prefix)) return true;
    number = takeNumber(text);
    return number.has_value();
}

bool readPosition(std::string_view text, AxisStatus& axis) {
    if (text == "undefined") return true;
    axis.resetting = take(text, "resetting>");
    auto& number = axis.resetting ? axis.target : axis.position;
    number = takeNumber(text);
    if (!number) return false;
    if (!axis.resetting && !takeOptional(text, "/", axis.upperEnd)) return false;
    if (axis.upperEnd && !takeOptional(text, ">", axis.target)) return false;
    return text.empty();
}

/// " NAME: POSITION", as often as there are axes.
bool readAxes(std::string_view text, std::vector<AxisStatus>& axes) {
    while (take(text, " ")) {
        const auto name = takeUntil(text, ": ");
        if (!name || name->empty()) return false;
        const auto position = text.substr(0, text.find(' '));
        text.remove_prefix(position.size());
        if (!readPosition(position, axes.emplace_back(AxisStatus{std::string(*name)})))
            return false;
    }
    return text.empty();
}

void readFlags(std::string_view text, DaemonStatus& status) {
    while (!text.empty()) {
        const auto token = text.substr(0, text.find(' '));
        const auto* const flag = std::ranges::find(flags, token, &Flag::token);
        if (flag != flags.end()) status.*(flag->member) = true;
        text.remove_prefix(std::min(token.size() + 1, text.size()));
    }
}

}  // namespace

std::string AxisStatus::positionText() const {
    if (resetting) return "resetting>" + std::to_string(target.value_or(0));
    if (!position) return "undefined";
    auto text = std::to_string(*position);
    if (upperEnd) text.append("/").append(std::to_string(*upperEnd));
    if (target) text.append(">").append(std::to_string(*target));
    return text;
}

std::optional<DaemonStatus> DaemonStatus::parse(std::string_view reply) {
    DaemonStatus status;
    status.busy = take(reply, "BUSY;");
    if (!status.busy && !take(reply, "IDLE;")) return std::nullopt;
    const auto axesText = takeUntil(reply, ";");
    const auto flagsText = takeUntil(reply, "\n");
    if (!axesText || !flagsText || !reply.empty()) return std::nullopt;
    if (!readAxes(*axesText, status.axes)) return std::nullopt;
    readFlags(*flagsText, status);
    return status;
}

const AxisStatus* DaemonStatus::axis(std::string_view name) const noexcept {
    const auto found = std::ranges::find(axes, name, &AxisStatus::name);
    return found != axes.end() ? &*found : nullptr;
}

bool DaemonStatus::isAtRest() const noexcept {
    return !busy && std::ranges::all_of(axes, &AxisStatus::isAtRest);
}

std::string DaemonStatus::flagsText() const {
    std::string text;
    for (const auto& flag : flags)
        if (this->*(flag.member)) text.append(text.empty() ? "" : " ").append(flag.token);
    return text;
}

}  // namespace orx::client
