// Writes argument texts into a projector's command string.
//
// One insertion serves one command. The number format that an argument sets (sign, padding, fixed
// point) stays in force for the later arguments of the same command: the projectors' definition
// files are made for it.
#pragma once

#include <string>
#include <string_view>

#include "projector/ArgumentDescriptor.h"

namespace orx {

class ArgumentInsertion {
  public:
    /// `commandString` must outlive the insertion.
    explicit ArgumentInsertion(std::string_view commandString);

    /// Appends the command string up to the argument's place, then the argument, clamped to its
    /// bounds and formatted. A place ahead of the one before appends the whole rest. Throws
    /// "stoi" or "stod" conversion errors for a text that is no number, and `std::out_of_range`
    /// where the place before lies beyond the end of the command string.
    void insert(const std::string& argument, const ArgumentDescriptor& descriptor);

    /// Appends the rest of the command string and gives the whole. Throws `std::out_of_range` where
    /// the last place lies beyond the end of the command string.
    [[nodiscard]] std::string finish();

  private:
    void appendDecimal(std::string argument, const ArgumentDescriptor& descriptor);
    void appendInteger(int value, const ArgumentDescriptor& descriptor);
    void appendBytes(int value, int count);
    void appendNumber(double value, int decimals, int width);
    void appendNumber(int value, int width);
    void appendHexadecimal(int value, int width);
    void appendPadded(std::string_view number, int width);

    std::string_view base;
    std::size_t last = 0;  ///< how much of the base has been appended
    std::string output;
    bool showsPlus = false;  ///< a number that is not negative gets a sign, too
    bool padsBehindSign = false;
    bool hasFixedPoint = false;
};

}  // namespace orx
