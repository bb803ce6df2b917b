// The binary layout of a projector definition file (`orx.ccd`).
//
// Shared by the reader in the daemon and by the compiler that writes such files, so that an offset
// or a size stands in one place only. All integers are little-endian. A text has no terminator: an
// unsigned 8-bit length precedes it. The file has four consecutive regions:
//
//   header (22 bytes) | command list | projector list | projector blocks
//
// The command list gives each command used in the file a number; the blocks refer to commands by
// that number. The projector list gives each model's name and the place of its block.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace orx::definition_format {

/// A field's place in its record, in bytes.
struct Field {
    std::size_t offset;
    std::size_t size;
};

/// The first six bytes of every file that the compiler writes.
inline constexpr std::array<std::uint8_t, 6> magic{0x77, 0x81, 0x6A, 0xCD, 0xCC, 0xDF};

/// The only revision there is a reader for.
inline constexpr unsigned acceptedRevision = 13;

/// The check value fits 8 bits but takes 16: a reader of the wrong byte order sees more than this.
inline constexpr unsigned greatestEndianCheck = 255;

/// The file header, at offset 0.
namespace header {
inline constexpr Field magic{0, 6};
inline constexpr Field endianCheck{6, 2};
inline constexpr Field revision{8, 2};
inline constexpr Field compileDate{10, 4};  ///< signed; printed, never interpreted
inline constexpr Field commandListLength{14, 2};
inline constexpr Field commandCount{16, 2};
inline constexpr Field projectorListLength{18, 2};
inline constexpr Field projectorCount{20, 2};
inline constexpr std::size_t size = 22;
}  // namespace header

/// An entry of the command list; the name follows the fixed part.
namespace command_entry {
inline constexpr Field id{0, 2};
inline constexpr Field nameLength{2, 1};
inline constexpr std::size_t fixedSize = 3;
}  // namespace command_entry

/// An entry of the projector list; the name follows the fixed part.
namespace projector_entry {
inline constexpr Field blockOffset{0, 2};  ///< from the start of the file
inline constexpr Field blockLength{2, 2};
inline constexpr Field nameLength{4, 1};
inline constexpr std::size_t fixedSize = 5;
}  // namespace projector_entry

/// The head of a projector block; the command strings follow it, then the argument descriptors.
namespace block {
inline constexpr Field baudrate{0, 4};  ///< bit/s
inline constexpr Field timeout{4, 2};   ///< milliseconds
inline constexpr Field delay{6, 2};     ///< milliseconds
inline constexpr Field stringCount{8, 2};
inline constexpr Field descriptorCount{10, 1};
inline constexpr Field bytesize{11, 1};
inline constexpr Field stopbitsAndParity{12, 1};  ///< high nibble stop bits, low nibble parity
inline constexpr Field checksum{13, 1};
inline constexpr std::size_t headerSize = 14;
}  // namespace block

/// A command string of a block; the bytes follow the fixed part.
namespace string_entry {
inline constexpr Field commandId{0, 2};
inline constexpr Field length{2, 1};
inline constexpr std::size_t fixedSize = 3;
}  // namespace string_entry

/// An argument descriptor of a block.
namespace descriptor {
inline constexpr Field commandId{0, 2};
inline constexpr Field number{2, 2};  ///< counted from 1
inline constexpr Field min{4, 4};     ///< signed
inline constexpr Field max{8, 4};     ///< signed
inline constexpr Field pos{12, 1};
inline constexpr Field len{13, 1};
inline constexpr Field type{14, 1};  ///< an ASCII letter
inline constexpr std::size_t size = 15;
}  // namespace descriptor

}  // namespace orx::definition_format
