// The bounds of a decimal argument, which the binary file keeps as whole numbers.
#pragma once

#include <cstdint>
#include <string>

namespace orx::orxdef {

/// `value` in units of 10^-`decimals`, `decimals` being 0 to 15: -12.5 with 2 decimals gives -1250.
/// A deviation as small as binary floating point makes by itself is rounded away.
/// Throws `std::range_error` where the result is no whole number or does not fit 32 bits; its text
/// goes on after the name of the value: "must be a multiple of 0.01, not 0.125".
[[nodiscard]] std::int32_t inUnits(double value, int decimals);

/// The way back: -1250 with 2 decimals gives "-12.5", which `inUnits` reads as exactly this value.
[[nodiscard]] std::string unitsText(std::int32_t units, int decimals);

}  // namespace orx::orxdef
