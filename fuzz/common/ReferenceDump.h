// What the daemon must print of a definition file of any bytes, made from the layout of the file by
// a reader of its own: counts and lengths are trusted, and every byte that is not there is zero.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "core/Text.h"

namespace orx::fuzz {

/// Bytes that zeros follow without an end.
class EndlessBytes {
  public:
    explicit EndlessBytes(std::string_view knownBytes) : known(knownBytes) {}

    [[nodiscard]] std::uint32_t number(std::size_t place, int size) const {
        std::uint32_t value = 0;
        for (int byte = 0; byte < size; ++byte)
            value |= std::uint32_t{at(place + static_cast<std::size_t>(byte))} << (8 * byte);
        return value;
    }
    [[nodiscard]] std::string text(std::size_t place, std::size_t size) const {
        std::string bytes;
        for (std::size_t index = 0; index < size; ++index)
            bytes += static_cast<char>(at(place + index));
        return bytes;
    }
    /// A part that ends, so that zeros follow it whatever the file goes on with.
    [[nodiscard]] EndlessBytes part(std::size_t place, std::size_t size) const {
        return EndlessBytes(place < known.size() ? known.substr(place, size) : "");
    }

  private:
    [[nodiscard]] std::uint8_t at(std::size_t place) const {
        return place < known.size() ? static_cast<std::uint8_t>(known[place]) : std::uint8_t{0};
    }

    std::string_view known;
};

class ReferenceDump {
  public:
    /// `image` must outlive the dump.
    explicit ReferenceDump(std::string_view image) : file(image) {}

    [[nodiscard]] std::string text() {
        printHeader();
        printCommands();
        output += "\n[PROJECTOR LIST]\n";
        const auto models = readModels();
        for (const auto& [name, place] : models)
            output += "  name: " + name + "  offset: " + std::to_string(place.first) +
                      " length: " + std::to_string(place.second) + "\n";
        for (const auto& [name, place] : models) {
            output += "\n[PROJECTOR: " + name + "]\n";
            printModel(file.part(place.first, place.second));
        }
        return std::move(output);
    }

  private:
    using Place = std::pair<std::uint32_t, std::uint32_t>;  ///< offset and length

    void printField(std::string_view title, std::int64_t value) {
        output.append(title).append(std::to_string(value)).append("\n");
    }

    void printHeader() {
        const auto magic = file.text(0, 8);
        output += "[HEADER]\n                  magic: ";
        output += listBytes(magic.substr(0, magic.find('\0'))) + "\n";
        printField("endiancheck 8bit random: ", file.number(6, 2));
        printField("               revision: ", file.number(8, 2));
        printField("           compile date: ", static_cast<std::int32_t>(file.number(10, 4)));
        printField("        cmd list length: ", file.number(14, 2));
        printField("                 # cmds: ", file.number(16, 2));
        printField("  projector list length: ", file.number(18, 2));
        printField("           # projectors: ", file.number(20, 2));
    }

    void printCommands() {
        const auto list = file.part(22, file.number(14, 2));
        std::size_t place = 0;
        for (auto count = file.number(16, 2); count > 0; --count) {
            const auto length = list.number(place + 2, 1);
            names[list.number(place, 2)] = list.text(place + 3, length);
            place += 3 + length;
        }
        output += "\n[COMMAND LIST]\n";
        for (const auto& [id, name] : names)
            output += (id < 10 ? "  id: 0" : "  id: ") + std::to_string(id) +
                      "  cmd string: " + name + "\n";
    }

    [[nodiscard]] std::map<std::string, Place> readModels() const {
        const auto list = file.part(22 + file.number(14, 2), file.number(18, 2));
        std::map<std::string, Place> models;
        std::size_t place = 0;
        for (auto count = file.number(20, 2); count > 0; --count) {
            const auto length = list.number(place + 4, 1);
            models[list.text(place + 5, length)] = {list.number(place, 2),
                                                    list.number(place + 2, 2)};
            place += 5 + length;
        }
        return models;
    }

    void printModel(const EndlessBytes& block) {
        printField("  baudrate: ", static_cast<std::int32_t>(block.number(0, 4)));
        printField("  bytesize: ", block.number(11, 1));
        printField("     delay: ", block.number(6, 2));
        printField("    parity: ", block.number(12, 1) % 16);
        printField("  stopbits: ", block.number(12, 1) / 16);
        printField("   timeout: ", block.number(4, 2));
        printField("  checksum: ", block.number(13, 1));
        output += "  commands: \n";
        std::size_t place = 14;
        std::map<std::string, std::string> strings;
        for (auto count = block.number(8, 2); count > 0; --count) {
            const auto length = block.number(place + 2, 1);
            strings[names[block.number(place, 2)]] = block.text(place + 3, length);
            place += 3 + length;
        }
        const auto arguments = readArguments(block, place);
        for (const auto& [name, string] : strings) {
            output += "    " + name + " -> " + escapeBytes(string) + "\n";
            const auto lines = arguments.find(name);
            if (lines == arguments.end()) continue;
            for (const auto& [number, line] : lines->second)
                output += line;
        }
    }

    using Arguments = std::map<std::string, std::map<std::uint32_t, std::string>>;

    [[nodiscard]] Arguments readArguments(const EndlessBytes& block, std::size_t place) {
        Arguments arguments;
        for (auto count = block.number(10, 1); count > 0; --count, place += 15) {
            const auto number = block.number(place + 2, 2);
            arguments[names[block.number(place, 2)]][number] =
                "                    arg: " + std::to_string(number) +
                " type: " + block.text(place + 14, 1) +
                " pos: " + std::to_string(block.number(place + 12, 1)) + bounds(block, place) +
                "\n";
        }
        return arguments;
    }

    [[nodiscard]] static std::string bounds(const EndlessBytes& block, std::size_t place) {
        const auto min = static_cast<std::int32_t>(block.number(place + 4, 4));
        const auto max = static_cast<std::int32_t>(block.number(place + 8, 4));
        const auto code = block.number(place + 13, 1);
        std::array<char, 120> text{};
        if (block.number(place + 14, 1) == 'D') {
            const double scale = std::pow(10.0, code / 16);
            std::snprintf(text.data(), text.size(), " min: %g max: %g len: %u.%u", min / scale,
                          max / scale, code % 16, code / 16);
        } else {
            std::snprintf(text.data(), text.size(), " min: %d max: %d len: %u", min, max, code);
        }
        return text.data();
    }

    EndlessBytes file;
    std::map<std::uint32_t, std::string> names;
    std::string output;
};

}  // namespace orx::fuzz
