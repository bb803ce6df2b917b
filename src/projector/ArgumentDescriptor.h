// How one argument of a command is written into the projector's command string.
#pragma once

#include <map>
#include <string>

namespace orx {

struct ArgumentDescriptor {
    int min;  ///< lower bound; for type 'D' in units of 10^-decimals()
    int max;  ///< upper bound, in the same units
    int pos;  ///< index in the command string ahead of which the argument goes, 0 to 255
    /// 'A' and 'X': field width; 'B': digits; 'I': bytes; 'D': digits after the point in the high
    /// nibble, digits ahead of it in the low one. 0 to 255.
    int len;
    int type;  ///< 'A', 'B', 'D', 'I' or 'X'; any other value is plain decimal

    /// Type 'D': digits after the decimal point.
    [[nodiscard]] int decimals() const noexcept { return len / 16; }
    /// Type 'D': digits ahead of the decimal point; 0 leaves the number without padding and sign.
    [[nodiscard]] int digits() const noexcept { return len % 16; }
    /// Type 'D': how many of its units make one.
    [[nodiscard]] double unitsPerOne() const noexcept;
};

/// Argument number, counted from 1 -> descriptor.
using ArgumentDescriptors = std::map<int, ArgumentDescriptor>;
/// Command name -> its argument descriptors.
using ArgumentTable = std::map<std::string, ArgumentDescriptors, std::less<>>;
/// Command name -> the projector's command string, any bytes.
using CommandStrings = std::map<std::string, std::string, std::less<>>;

}  // namespace orx
