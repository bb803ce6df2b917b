#include "orxsim/CommandRecognizer.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <tuple>
#include <utility>

#include "orxsim/LensCommands.h"

namespace orx::orxsim {
namespace {

/// No command is longer; what has no end within it is let go.
constexpr std::size_t longestFrame = 65536;

unsigned char maskOf(const orxdef::LineSettings& line) {
    return static_cast<unsigned char>((1U << line.characterSize()) - 1);
}

bool canBeSent(const orxdef::ModelCommand& command) {
    return command.string != nullptr &&
           std::ranges::all_of(command.arguments, [&command](const auto& argument) {
               return argument.second->pos <= command.string->bytes.size();
           });
}

/// Of commands that look the same, complete ones come first, then those that move the lens.
bool isPreferred(const CommandPattern& left, const CommandPattern& right) {
    const auto rank = [](const CommandPattern& pattern) {
        return std::make_tuple(pattern.missingArgument().has_value(),
                               findLensCommand(pattern.name()) == nullptr,
                               std::cref(pattern.name()));
    };
    return rank(left) < rank(right);
}

/// A wrong checksum is of interest only where there is no command at all.
bool isLonger(const CommandPattern::Match& left, const CommandPattern::Match& right) {
    if (left.length != right.length) return left.length > right.length;
    return left.length == 0 && left.lengthWithWrongSum > right.lengthWithWrongSum;
}

}  // namespace

CommandRecognizer::CommandRecognizer(const orxdef::CommandTable& commands,
                                     const orxdef::ModelDefinition& model)
    : format{maskOf(model.line), model.checksum == orxdef::Checksum::sum8} {
    addPatterns(commands);
    lastByte = commonLastByte();
}

void CommandRecognizer::addPatterns(const orxdef::CommandTable& commands) {
    for (const auto& [name, command] : commands) {
        if (!canBeSent(command)) continue;
        for (std::size_t count = 0; count <= command.arguments.size(); ++count)
            patterns.emplace_back(name, command, count, format);
    }
    std::ranges::stable_sort(patterns, isPreferred);
}

/// A letter or digit ends no commands, even where they all happen to end alike.
std::optional<char> CommandRecognizer::commonLastByte() const {
    std::optional<char> common;
    for (const auto& pattern : patterns) {
        if (pattern.missingArgument()) continue;
        const auto byte = pattern.lastByte();
        if (!byte || (common && *common != *byte)) return std::nullopt;
        common = byte;
    }
    if (common && std::isalnum(static_cast<unsigned char>(*common)) != 0) return std::nullopt;
    return common;
}

std::vector<Heard> CommandRecognizer::hear(std::string_view bytes) {
    for (const char byte : bytes)
        received += static_cast<char>(static_cast<unsigned char>(byte) & format.mask);
    return decide(false);
}

std::vector<Heard> CommandRecognizer::silence() {
    return decide(true);
}

std::vector<Heard> CommandRecognizer::decide(bool isSilent) {
    std::vector<Heard> all;
    while (auto heard = next(isSilent))
        all.push_back(std::move(*heard));
    return all;
}

std::optional<Heard> CommandRecognizer::next(bool isSilent) {
    silenceDecides = false;
    if (received.empty()) return std::nullopt;
    const auto best = bestMatch();
    const bool isComplete = best.match.length > 0;
    if (best.isOpen && !isSilent) {
        silenceDecides = isComplete || !lastByte || lacksSum();
        return std::nullopt;
    }
    if (isComplete) return takeCommand(best);
    if (best.isOpen && lastByte && !lacksSum()) return std::nullopt;
    if (best.isOpen) return Heard{{}, {}, take(received.size()), "incomplete command"};
    if (best.match.lengthWithWrongSum > 0) {
        return Heard{
            best.pattern->name(), {}, take(best.match.lengthWithWrongSum), "wrong checksum"};
    }
    return takeOther(isSilent);
}

/// Whether nothing but the checksum can be missing.
bool CommandRecognizer::lacksSum() const {
    return format.hasSum && lastByte && received.ends_with(*lastByte);
}

CommandRecognizer::Best CommandRecognizer::bestMatch() const {
    Best best;
    for (const auto& pattern : patterns) {
        auto match = pattern.match(received);
        best.isOpen = best.isOpen || match.isOpen;
        if (isLonger(match, best.match)) {
            best.pattern = &pattern;
            best.match = std::move(match);
        }
    }
    return best;
}

Heard CommandRecognizer::takeCommand(const Best& best) {
    Heard heard{best.pattern->name(), best.match.arguments, take(best.match.length), {}};
    if (const auto number = best.pattern->missingArgument()) {
        heard.reason = "argument " + std::to_string(*number) + " is missing";
    }
    return heard;
}

std::optional<Heard> CommandRecognizer::takeOther(bool isSilent) {
    const auto length = frameLength(isSilent);
    if (length > 0) return explained(take(length));
    silenceDecides = !isSilent && frameLength(true) > 0;
    return std::nullopt;
}

/// How many of the bytes are to be let go; 0 as long as their end is not here.
std::size_t CommandRecognizer::frameLength(bool isSilent) const {
    if (received.size() >= longestFrame) return longestFrame;
    if (!lastByte) return isSilent ? received.size() : 0;
    const auto end = received.find(*lastByte);
    if (end == std::string::npos) return 0;
    const auto length = end + (format.hasSum ? 2 : 1);
    if (length <= received.size()) return length;
    return isSilent ? received.size() : 0;
}

Heard CommandRecognizer::explained(std::string frame) const {
    for (const auto& pattern : patterns) {
        if (auto mistake = pattern.mistakeIn(frame)) {
            return {pattern.name(), {}, std::move(frame), std::move(*mistake)};
        }
    }
    return {{}, {}, std::move(frame), "no command of this model"};
}

std::string CommandRecognizer::take(std::size_t length) {
    auto bytes = received.substr(0, length);
    received.erase(0, length);
    return bytes;
}

}  // namespace orx::orxsim
