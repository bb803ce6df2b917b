#include "orxsim/CommandPattern.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace orx::orxsim {
namespace {

/// Longer texts are noise and no argument that went wrong.
constexpr std::size_t longestMistake = 300;

std::string masked(std::string_view bytes, unsigned char mask) {
    std::string result(bytes);
    for (char& byte : result)
        byte = static_cast<char>(static_cast<unsigned char>(byte) & mask);
    return result;
}

char sumOf(std::string_view bytes, unsigned char mask) {
    const auto sum = std::accumulate(bytes.begin(), bytes.end(), 0U, [](unsigned all, char byte) {
        return all + static_cast<unsigned char>(byte);
    });
    return static_cast<char>(sum & mask);
}

}  // namespace

/// One walk through the pieces of a pattern along received bytes. The end of a number is not always
/// visible, so every end is tried.
class CommandPattern::Search {
  public:
    /// A lenient search takes arguments with mistakes, as long as they could be meant as such.
    Search(const CommandPattern& wanted, std::string_view received, bool isLenient)
        : pattern(wanted), line(received), lenient(isLenient) {
        walk(0, 0);
    }

    [[nodiscard]] const Match& result() const noexcept { return best; }
    /// The mistake in an argument of the whole of the bytes.
    [[nodiscard]] const std::optional<std::string>& mistake() const noexcept { return found; }

  private:
    void walk(std::size_t piece, std::size_t at) {
        if (piece == pattern.pieces.size()) {
            finish(at);
            return;
        }
        const auto& [literal, argument] = pattern.pieces[piece];
        const auto there = line.substr(at, literal.size());
        if (!literal.starts_with(there)) return;
        if (there.size() < literal.size()) {
            best.isOpen = true;
        } else if (!argument) {
            walk(piece + 1, at + literal.size());
        } else if (argument->isRaw()) {
            walkRaw(*argument, piece, at + literal.size());
        } else {
            walkText(*argument, piece, at + literal.size());
        }
    }

    void walkRaw(const ArgumentDecoder& argument, std::size_t piece, std::size_t at) {
        const auto bytes = line.substr(at, argument.rawLength());
        if (bytes.size() < argument.rawLength()) {
            best.isOpen = true;
        } else {
            take(argument, bytes, piece, at + bytes.size());
        }
    }

    void walkText(const ArgumentDecoder& argument, std::size_t piece, std::size_t at) {
        const auto text = textAt(at, argument.characters());
        const auto greatest = argument.greatestLength();
        if (at + text.size() == line.size() && text.size() < greatest) best.isOpen = true;
        const auto longest = std::min(text.size(), lenient ? longestMistake : greatest);
        for (std::size_t size = 1; size <= longest; ++size)
            take(argument, {text.data(), size}, piece, at + size);
    }

    /// The longest text of `characters`, with the bits that the line does not carry restored.
    [[nodiscard]] std::string textAt(std::size_t at, std::string_view characters) const {
        std::string text;
        for (; at < line.size(); ++at) {
            const auto* const character =
                std::ranges::find_if(characters, [this, byte = line[at]](char candidate) {
                    return (static_cast<unsigned char>(candidate) & pattern.format.mask) ==
                           static_cast<unsigned char>(byte);
                });
            if (character == characters.end()) break;
            text += *character;
        }
        return text;
    }

    void take(const ArgumentDecoder& argument, std::string_view text, std::size_t piece,
              std::size_t end) {
        const auto reading = argument.read(text);
        if (!reading.mistake.empty() && !lenient) return;
        const auto former = mistakeOnTheWay;
        if (former.empty() && !reading.mistake.empty()) {
            mistakeOnTheWay = "argument " + std::to_string(argument.number()) + " ";
            mistakeOnTheWay += reading.mistake;
        }
        arguments.push_back(reading.value);
        walk(piece + 1, end);
        arguments.pop_back();
        mistakeOnTheWay = former;
    }

    void finish(std::size_t at) {
        const auto length = at + (pattern.format.hasSum ? 1 : 0);
        if (length > line.size()) {
            best.isOpen = true;
        } else if (lenient) {
            if (length == line.size() && !mistakeOnTheWay.empty()) found = mistakeOnTheWay;
        } else if (length > at && line[at] != sumOf(line.substr(0, at), pattern.format.mask)) {
            best.lengthWithWrongSum = std::max(best.lengthWithWrongSum, length);
        } else if (length > best.length) {
            best.length = length;
            best.arguments = arguments;
        }
    }

    const CommandPattern& pattern;
    std::string_view line;
    bool lenient;
    Match best;
    std::vector<std::string> arguments;  ///< of the walk so far
    std::string mistakeOnTheWay;         ///< the first one of the walk so far
    std::optional<std::string> found;
};

CommandPattern::CommandPattern(std::string name, const orxdef::ModelCommand& command,
                               std::size_t arguments, LineFormat lineFormat)
    : commandName(std::move(name)), format(lineFormat) {
    const std::string_view base = command.string->bytes;
    for (const auto& [number, descriptor] : command.arguments) {
        if (arguments-- == 0) {
            missing = number;
            break;
        }
        addArgument(base, *descriptor);
    }
    addLiteral(base.substr(last), std::nullopt);
}

/// A place ahead of the one before stands behind the whole rest: so such a command is sent.
void CommandPattern::addArgument(std::string_view base,
                                 const orxdef::ArgumentDescriptor& descriptor) {
    const std::size_t pos = descriptor.pos;
    const auto literal = base.substr(last, pos < last ? std::string_view::npos : pos - last);
    style = style.with(descriptor);
    addLiteral(literal, ArgumentDecoder(descriptor, style));
    last = pos;
}

void CommandPattern::addLiteral(std::string_view literal, std::optional<ArgumentDecoder> argument) {
    pieces.push_back({masked(literal, format.mask), argument});
}

std::optional<char> CommandPattern::lastByte() const noexcept {
    const auto& literal = pieces.back().literal;
    if (literal.empty()) return std::nullopt;
    return literal.back();
}

CommandPattern::Match CommandPattern::match(std::string_view received) const {
    return Search(*this, received, false).result();
}

std::optional<std::string> CommandPattern::mistakeIn(std::string_view frame) const {
    return Search(*this, frame, true).mistake();
}

}  // namespace orx::orxsim
