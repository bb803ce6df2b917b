// Any text as a main configuration file: what it is taken for must be what its rules, written down
// here a second time, give; every getter must give it or end in the error that the design has for
// it; and a file that is saved must be read again alike.
#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/Check.h"
#include "common/Console.h"
#include "common/Numbers.h"
#include "common/RewrittenFile.h"
#include "common/Trimmed.h"
#include "config/MainConfig.h"
#include "control/Interface.h"
#include "projector/Projector.h"
#include "serial/SerialSettings.h"

namespace orx::fuzz {
namespace {

using Entries = std::map<std::string, std::string>;

std::vector<std::string> splitAt(char separator, const std::string& text) {
    std::vector<std::string> pieces(1);
    for (const char character : text) {
        if (character == separator) {
            pieces.emplace_back();
        } else {
            pieces.back() += character;
        }
    }
    return pieces;
}

Outcome<Entries> expectedEntries(const std::string& text, const std::string& path) {
    Entries entries;
    int number = 0;
    for (const auto& line : splitAt('\n', text)) {
        ++number;
        const auto content = trimmed(line);
        if (content.empty() || content.front() == '#' || content.front() == ';') continue;
        const auto equals = content.find('=');
        if (equals == std::string::npos)
            return {{}, "[config] " + path + ", line " + std::to_string(number) + ": parse error"};
        entries[trimmed(content.substr(0, equals))] = trimmed(content.substr(equals + 1));
    }
    entries.try_emplace("controlchannel", "127.0.0.1:7781");
    entries.try_emplace("definitionfile", INSTALL_PREFIX + "/lib/orx.ccd");
    entries.try_emplace("logfile", INSTALL_PREFIX + "/var/run/orx.log");
    return {entries, {}};
}

std::string dumpOf(const MainConfig& config) {
    clearConsole();
    config.dump();
    return takeConsole();
}

std::string expectedDump(const Entries& entries) {
    std::string lines;
    for (const auto& [key, value] : entries)
        lines.append("[config] ").append(key).append(" = ").append(value).append("\n");
    return lines;
}

void checkGetters(const MainConfig& config, const Entries& entries) {
    constexpr int fallback = -7;
    for (const auto& entry : entries) {
        const auto& key = entry.first;
        const auto& value = entry.second;
        expectEqual(config.getString(key), value, "a text");
        auto pieces = splitAt(',', value);
        std::ranges::transform(pieces, pieces.begin(), trimmed);
        expectEqualLists(config.getList(key), pieces, "a list");
        expectSame(outcomeOf([&] { return config.getInt(key, fallback); }),
                   value.empty() ? Outcome<int>{fallback, {}} : wholeNumber(value), "a number");
    }
    // No entry of a file has such a key: spaces around a key are taken off.
    const std::string missing = " ";
    expectEqual(config.getInt(missing, fallback), fallback, "the number of a missing key");
    expect(config.getList(missing).empty(), "a missing key has a list");
}

void checkAliases(const MainConfig& config, const Entries& entries) {
    std::size_t count = 0;
    for (const auto& [key, value] : entries) {
        if (!key.starts_with("cmd.")) continue;
        ++count;
        const auto name = key.substr(4);
        expect(config.hasAlias(name), "an alias is missing");
        expectEqual(config.aliases().at(name), value, "the value of an alias");
    }
    expectEqual(config.aliases().size(), count, "the number of aliases");
}

/// Aliases can end the start-up with a conversion error and else leave each command with a string.
void applyAliases(const MainConfig& config) {
    Projector projector("MODEL", {}, {{"Z++", "fast"}}, 0);
    const auto error = errorOf([&] { projector.applyAliases(config.aliases()); });
    expect(error.empty() || error == noNumber("stoi"), "aliases end with " + error);
    const auto& aliases = config.aliases();
    const auto alias = aliases.find("CMD_ZOOM_PLUS");
    if (!error.empty() || alias == aliases.end() || alias->second != "&CMD_ZOOM_PLUS2") return;
    expectEqual(projector.commandString(Command("Z+")), "fast", "the string of an alias");
}

/// The value that `range` takes of the entries; nothing where it has to leave the field alone.
Outcome<int> expectedField(const Entries& entries, const SerialRange& range, int usual) {
    const auto entry = entries.find(std::string(range.key));
    if (entry == entries.end() || entry->second.empty()) return {usual, {}};
    auto number = wholeNumber(entry->second);
    if (!number.value) return number;
    const bool taken = *number.value >= range.lowest && *number.value <= range.highest;
    return {taken ? *number.value : usual, {}};
}

void checkSerialSettings(const MainConfig& config, const Entries& entries) {
    constexpr LineParameters usual{7, 1, 1, 9600, 300, 20};
    SerialSettings settings(usual);
    std::map<std::string_view, Outcome<int>> expected;
    std::string expectedError;
    for (const auto& [range, value] : {std::pair{serial_range::debug, 0},
                                       {serial_range::baudrate, usual.baudrate},
                                       {serial_range::bytesize, usual.bytesize},
                                       {serial_range::delay, usual.delay},
                                       {serial_range::stopbits, usual.stopbits},
                                       {serial_range::timeout, usual.timeout}}) {
        const auto& field = expected[range.key] = expectedField(entries, range, value);
        if (expectedError.empty()) expectedError = field.error;
    }
    expectEqual(errorOf([&] { settings.readConfiguration(config); }), expectedError,
                "the serial settings");
    if (!expectedError.empty()) return;
    const auto line = settings.parameters();
    expectEqual(settings.debug(), *expected["serial.debug"].value, "serial.debug");
    expectEqual(line.baudrate, *expected["serial.baudrate"].value, "serial.baudrate");
    expectEqual(line.bytesize, *expected["serial.bytesize"].value, "serial.bytesize");
    expectEqual(line.delay, *expected["serial.delay"].value, "serial.delay");
    expectEqual(line.stopbits, *expected["serial.stopbits"].value, "serial.stopbits");
    expectEqual(line.timeout, *expected["serial.timeout"].value, "serial.timeout");
    const std::map<std::string, int> parities{{"none", 0}, {"odd", 1}, {"even", 2}};
    const auto parity = parities.find(config.getString("serial.parity"));
    expectEqual(line.parity, parity != parities.end() ? parity->second : usual.parity,
                "serial.parity");
    expectEqual(settings.terminalAttributes().c_cc[VTIME], static_cast<cc_t>(line.timeout / 100),
                "the timeout of the line");
}

/// The address of four numbers with a point between each two, the highest byte first.
std::optional<std::uint32_t> dottedQuad(const std::string& text) {
    const auto numbers = splitAt('.', text);
    if (numbers.size() != 4) return std::nullopt;
    std::uint32_t address = 0;
    for (const auto& number : numbers) {
        const bool isWritten = !number.empty() && number.size() <= 3 &&
                               number.find_first_not_of("0123456789") == std::string::npos &&
                               (number == "0" || number.front() != '0');
        if (!isWritten || std::stoi(number) > 255) return std::nullopt;
        address = address * 256 + static_cast<std::uint32_t>(std::stoi(number));
    }
    return address;
}

struct Place {
    std::uint32_t address;
    std::uint16_t port;

    bool operator==(const Place&) const = default;
};

Outcome<Place> expectedPlace(const std::string& text) {
    // A text ends at its first zero byte where it is an error or an address.
    const auto upToZero = [](const std::string& any) { return any.substr(0, any.find('\0')); };
    const auto colon = text.find(':');
    if (colon == std::string::npos)
        return {{}, upToZero("[LISTENER] port missing in interface: " + text)};
    const auto port = wholeNumber(trimmed(text.substr(colon + 1)));
    if (!port.value) return {{}, port.error};
    auto host = trimmed(text.substr(0, colon));
    if (host == "*") host = "0.0.0.0";
    const auto address = dottedQuad(upToZero(host));
    if (!address)
        return {{}, upToZero("[LISTENER] IP address " + host + " could not be converted: Success")};
    return {Place{*address, static_cast<std::uint16_t>(*port.value)}, {}};
}

void checkInterfaces(const MainConfig& config) {
    for (const auto& text : config.controlChannel()) {
        const auto place = outcomeOf([&text] {
            const auto address = parseInterface(text).socketAddress;
            return Place{ntohl(address.sin_addr.s_addr), ntohs(address.sin_port)};
        });
        expect(place == expectedPlace(text), "where a channel listens: " + text);
    }
}

void check(const std::string& text) {
    static const RewrittenFile file("orx.cfg");
    file.write(text);
    const auto expected = expectedEntries(text, file.path());
    std::shared_ptr<MainConfig> config;
    expectEqual(errorOf([&] { config = MainConfig::create(file.path()); }), expected.error,
                "reading the file");
    if (config == nullptr) return;
    const auto& entries = *expected.value;
    expectEqual(dumpOf(*config), expectedDump(entries), "the entries");
    checkGetters(*config, entries);
    checkAliases(*config, entries);
    applyAliases(*config);
    checkSerialSettings(*config, entries);
    checkInterfaces(*config);
    config->save();
    config->reload();
    expectEqual(dumpOf(*config), expectedDump(entries), "the entries once saved");
    checkAliases(*config, entries);
}

}  // namespace
}  // namespace orx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orx::fuzz::check({reinterpret_cast<const char*>(data), size});
    return 0;
}
