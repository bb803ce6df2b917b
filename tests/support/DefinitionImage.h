// Builds the bytes of a projector definition file, well-formed or not, one field at a time.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace orx::test {

/// `value` as `size` bytes, the lowest first.
inline std::string littleEndian(std::uint32_t value, std::size_t size) {
    std::string bytes;
    for (std::size_t byte = 0; byte < size; ++byte) {
        bytes += static_cast<char>(value >> (8 * byte));
    }
    return bytes;
}

struct DescriptorImage {
    int commandId;
    int number;
    int min;
    int max;
    int pos;
    int len;
    char type;
};

struct BlockImage {
    std::string name;
    std::vector<std::pair<int, std::string>> strings{};  ///< command id -> command string
    std::vector<DescriptorImage> descriptors{};
    std::uint32_t baudrate = 9600;
    int timeout = 100;
    int delay = 20;
    int bytesize = 8;
    int stopbits = 1;
    int parity = 0;
    int checksum = 0;

    [[nodiscard]] std::string bytes() const {
        std::string image = littleEndian(baudrate, 4) +
                            littleEndian(static_cast<std::uint32_t>(timeout), 2) +
                            littleEndian(static_cast<std::uint32_t>(delay), 2) +
                            littleEndian(static_cast<std::uint32_t>(strings.size()), 2) +
                            static_cast<char>(descriptors.size()) + static_cast<char>(bytesize) +
                            static_cast<char>(stopbits << 4 | parity) + static_cast<char>(checksum);
        for (const auto& [id, text] : strings) {
            image += littleEndian(static_cast<std::uint32_t>(id), 2) +
                     static_cast<char>(text.size()) + text;
        }
        for (const auto& descriptor : descriptors) {
            image += littleEndian(static_cast<std::uint32_t>(descriptor.commandId), 2) +
                     littleEndian(static_cast<std::uint32_t>(descriptor.number), 2) +
                     littleEndian(static_cast<std::uint32_t>(descriptor.min), 4) +
                     littleEndian(static_cast<std::uint32_t>(descriptor.max), 4) +
                     static_cast<char>(descriptor.pos) + static_cast<char>(descriptor.len) +
                     descriptor.type;
        }
        return image;
    }
};

struct DefinitionImage {
    std::vector<std::pair<int, std::string>> commands{};  ///< command id -> keyword
    std::vector<BlockImage> blocks{};
    std::string magic = "\x77\x81\x6A\xCD\xCC\xDF";
    std::uint32_t endianCheck = 0xAB;
    std::uint32_t revision = 13;
    int compileDate = 20190613;

    [[nodiscard]] std::string bytes() const {
        constexpr std::size_t headerSize = 22;
        std::string commandList;
        for (const auto& [id, keyword] : commands) {
            commandList += littleEndian(static_cast<std::uint32_t>(id), 2) +
                           static_cast<char>(keyword.size()) + keyword;
        }
        std::size_t projectorListSize = 0;
        for (const auto& block : blocks)
            projectorListSize += 5 + block.name.size();
        auto offset = headerSize + commandList.size() + projectorListSize;
        std::string projectorList;
        std::string blockBytes;
        for (const auto& block : blocks) {
            const auto image = block.bytes();
            projectorList += littleEndian(static_cast<std::uint32_t>(offset), 2) +
                             littleEndian(static_cast<std::uint32_t>(image.size()), 2) +
                             static_cast<char>(block.name.size()) + block.name;
            blockBytes += image;
            offset += image.size();
        }
        return magic + littleEndian(endianCheck, 2) + littleEndian(revision, 2) +
               littleEndian(static_cast<std::uint32_t>(compileDate), 4) +
               littleEndian(static_cast<std::uint32_t>(commandList.size()), 2) +
               littleEndian(static_cast<std::uint32_t>(commands.size()), 2) +
               littleEndian(static_cast<std::uint32_t>(projectorList.size()), 2) +
               littleEndian(static_cast<std::uint32_t>(blocks.size()), 2) + commandList +
               projectorList + blockBytes;
    }
};

}  // namespace orx::test
