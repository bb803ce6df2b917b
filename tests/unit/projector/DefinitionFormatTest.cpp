// The layout of the definition file, against a table written out by hand.
#include <cstddef>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "projector/DefinitionFormat.h"

namespace orx::test {
namespace {

namespace format = definition_format;

struct Place {
    const char* name;
    format::Field field;
    std::size_t offset;
    std::size_t size;
};

void expectPlaces(const std::vector<Place>& places) {
    for (const auto& place : places) {
        EXPECT_EQ(place.field.offset, place.offset) << place.name;
        EXPECT_EQ(place.field.size, place.size) << place.name;
    }
}

TEST(DefinitionFormat, BeginsWithAHeaderOf22Bytes) {
    EXPECT_THAT(format::magic, testing::ElementsAre(0x77, 0x81, 0x6A, 0xCD, 0xCC, 0xDF));
    EXPECT_EQ(format::acceptedRevision, 13U);
    EXPECT_EQ(format::greatestEndianCheck, 0xFFU);
    EXPECT_EQ(format::header::size, 22U);
    expectPlaces({{"magic", format::header::magic, 0, 6},
                  {"endiancheck", format::header::endianCheck, 6, 2},
                  {"revision", format::header::revision, 8, 2},
                  {"compile date", format::header::compileDate, 10, 4},
                  {"command list length", format::header::commandListLength, 14, 2},
                  {"command count", format::header::commandCount, 16, 2},
                  {"projector list length", format::header::projectorListLength, 18, 2},
                  {"projector count", format::header::projectorCount, 20, 2}});
}

TEST(DefinitionFormat, HasListEntriesWithTheNameBehindTheFixedPart) {
    EXPECT_EQ(format::command_entry::fixedSize, 3U);
    EXPECT_EQ(format::projector_entry::fixedSize, 5U);
    expectPlaces({{"command id", format::command_entry::id, 0, 2},
                  {"command name length", format::command_entry::nameLength, 2, 1},
                  {"block offset", format::projector_entry::blockOffset, 0, 2},
                  {"block length", format::projector_entry::blockLength, 2, 2},
                  {"projector name length", format::projector_entry::nameLength, 4, 1}});
}

TEST(DefinitionFormat, HasBlocksWithAHeaderOf14Bytes) {
    EXPECT_EQ(format::block::headerSize, 14U);
    expectPlaces({{"baud rate", format::block::baudrate, 0, 4},
                  {"timeout", format::block::timeout, 4, 2},
                  {"delay", format::block::delay, 6, 2},
                  {"strings", format::block::stringCount, 8, 2},
                  {"descriptors", format::block::descriptorCount, 10, 1},
                  {"character size", format::block::bytesize, 11, 1},
                  {"stop bits and parity", format::block::stopbitsAndParity, 12, 1},
                  {"checksum", format::block::checksum, 13, 1}});
}

TEST(DefinitionFormat, HasStringsBehindAFixedPartAndDescriptorsOf15Bytes) {
    EXPECT_EQ(format::string_entry::fixedSize, 3U);
    EXPECT_EQ(format::descriptor::size, 15U);
    expectPlaces({{"string's command", format::string_entry::commandId, 0, 2},
                  {"string length", format::string_entry::length, 2, 1},
                  {"descriptor's command", format::descriptor::commandId, 0, 2},
                  {"argument number", format::descriptor::number, 2, 2},
                  {"min", format::descriptor::min, 4, 4},
                  {"max", format::descriptor::max, 8, 4},
                  {"pos", format::descriptor::pos, 12, 1},
                  {"len", format::descriptor::len, 13, 1},
                  {"type", format::descriptor::type, 14, 1}});
}

}  // namespace
}  // namespace orx::test
