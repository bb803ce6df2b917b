// Any bytes through the small text utilities: each must give what its rule, written down here a
// second time, gives; what is escaped must be printable and come back as the same bytes.
#include <cstdint>
#include <string>
#include <string_view>

#include "common/Check.h"
#include "common/Numbers.h"
#include "common/Trimmed.h"
#include "core/Text.h"

namespace orx::fuzz {
namespace {

void appendHex(std::string& text, char byte) {
    for (const unsigned shift : {4U, 0U})
        text += "0123456789abcdef"[static_cast<unsigned char>(byte) >> shift & 15U];
}

std::string escaped(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        const bool printable = byte >= ' ' && byte <= '~';
        text += printable ? byte : '\\';
        if (printable) continue;
        text += 'x';
        appendHex(text, byte);
    }
    return text;
}

std::string listed(std::string_view bytes) {
    std::string text = "[";
    for (const char byte : bytes) {
        appendHex(text, byte);
        text += ' ';
    }
    if (!bytes.empty()) text.pop_back();
    return text + "]";
}

/// Whether four characters that begin with a backslash stand for a byte.
bool isEscape(std::string_view text) {
    return text.size() >= 4 && text[0] == '\\' && (text[1] == 'x' || text[1] == 'X');
}

Outcome<std::string> unescaped(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const bool escape = isEscape(text);
        if (escape) {
            const auto value = wholeNumber(text.substr(2, 2), 16);
            if (!value.value) return {{}, value.error};
            bytes += static_cast<char>(*value.value);
        } else {
            bytes += text.front();
        }
        text.remove_prefix(escape ? 4 : 1);
    }
    return {bytes, {}};
}

void check(const std::string& bytes) {
    expectEqual(trim(bytes), trimmed(bytes), "trimmed");
    expectEqual(listBytes(bytes), listed(bytes), "listed");
    const auto text = escapeBytes(bytes);
    expectEqual(text, escaped(bytes), "escaped");
    expectSame(outcomeOf([&] { return unescapeBytes(bytes); }), unescaped(bytes), "unescaped");
    // A backslash of the bytes' own stays as it is and can begin an escape that was none.
    if (bytes.find('\\') == std::string::npos)
        expectEqual(unescapeBytes(text), bytes, "escaped and unescaped");
}

}  // namespace
}  // namespace orx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orx::fuzz::check({reinterpret_cast<const char*>(data), size});
    return 0;
}
