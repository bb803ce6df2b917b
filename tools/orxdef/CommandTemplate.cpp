#include "orxdef/CommandTemplate.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "core/Text.h"
#include "orxdef/Wording.h"

namespace orx::orxdef {
namespace {

/// The number that all of `text` says in `base`, if it does and if it fits.
std::optional<unsigned> parseUnsigned(std::string_view text, int base) {
    unsigned number = 0;
    const auto* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, base);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

class Parser {
  public:
    explicit Parser(std::string_view text) : rest(text) {}

    CommandTemplate parse() && {
        while (!rest.empty())
            parsePiece();
        return std::move(result);
    }

  private:
    void parsePiece() {
        switch (rest.front()) {
            case '\\':
                return parseEscape();
            case '{':
                return parseOpeningBrace();
            case '}':
                return parseClosingBrace();
            default:
                return emit(rest.front(), 1);
        }
    }

    void parseEscape() {
        if (rest.size() == 1) return refuse(1, R"(lone \ at the end; write \\ for the character)");
        switch (rest[1]) {
            case 'x':
                return parseHexEscape();
            case 'r':
                return emit('\r', 2);
            case 'n':
                return emit('\n', 2);
            case 't':
                return emit('\t', 2);
            case '\\':
                return emit('\\', 2);
            default:
                return refuse(2, "unknown escape " + quoted(rest.substr(0, 2)) +
                                     R"(; known are \xNN \r \n \t \\)");
        }
    }

    void parseHexEscape() {
        const auto digits = rest.substr(2, 2);
        const auto byte = parseUnsigned(digits, 16);
        if (digits.size() == 2 && byte) return emit(static_cast<char>(*byte), 4);
        refuse(2, quoted(rest.substr(0, 4)) + R"( is no byte; \x needs two hexadecimal digits)");
    }

    void parseOpeningBrace() {
        if (rest.starts_with("{{")) return emit('{', 2);
        const auto end = rest.find_first_of("{}", 1);
        if (end == std::string_view::npos || rest[end] == '{')
            return refuse(1, "lone {; write {{ for the character");
        parsePlaceholder(rest.substr(0, end + 1));
    }

    void parsePlaceholder(std::string_view braced) {
        const auto digits = braced.substr(1, braced.size() - 2);
        const auto number = parseUnsigned(digits, 10);
        if (!number || digits.starts_with('0'))
            return refuse(braced.size(),
                          quoted(braced) + " is no placeholder; these are {1}, {2} and so on");
        result.placeholders.push_back({*number, result.bytes.size()});
        rest.remove_prefix(braced.size());
    }

    void parseClosingBrace() {
        if (rest.starts_with("}}")) return emit('}', 2);
        refuse(1, "lone }; write }} for the character");
    }

    void emit(char byte, std::size_t length) {
        result.bytes += byte;
        rest.remove_prefix(length);
    }

    void refuse(std::size_t length, std::string message) {
        result.mistakes.push_back(std::move(message));
        rest.remove_prefix(length);
    }

    std::string_view rest;
    CommandTemplate result;
};

/// How one byte is written.
std::string byteText(char byte) {
    switch (byte) {
        case '\r':
            return R"(\r)";
        case '\n':
            return R"(\n)";
        case '\t':
            return R"(\t)";
        case '\\':
            return R"(\\)";
        case '\'':
            return R"(\x27)";
        case '{':
        case '}':
            return {byte, byte};
        default:
            return escapeBytes({&byte, 1});
    }
}

}  // namespace

CommandTemplate CommandTemplate::parse(std::string_view text) {
    return Parser(text).parse();
}

std::string CommandTemplate::text() const {
    auto sorted = placeholders;
    std::ranges::stable_sort(sorted, {}, &Placeholder::pos);
    auto next = sorted.begin();
    std::string result;
    for (std::size_t index = 0; index <= bytes.size(); ++index) {
        for (; next != sorted.end() && next->pos == index; ++next)
            result.append("{").append(std::to_string(next->number)).append("}");
        if (index < bytes.size()) result += byteText(bytes[index]);
    }
    return result;
}

}  // namespace orx::orxdef
