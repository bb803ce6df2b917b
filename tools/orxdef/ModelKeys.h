// The keys of a [[model]] in a TOML definition.
#pragma once

#include <array>
#include <string_view>

namespace orx::orxdef {

inline constexpr std::array<std::string_view, 10> modelKeys{
    "name",    "baudrate", "bytesize", "parity",   "stopbits",
    "timeout", "delay",    "checksum", "commands", "verbatim",
};

}  // namespace orx::orxdef
