// Disturbances of a serial line: now and then a byte arrives altered, or not at all.
#pragma once

#include <string>
#include <string_view>

#include "orxsim/Chance.h"

namespace orx::orxsim {

class LineNoise {
  public:
    /// `lineMask` has the bits of a character.
    LineNoise(Chance chance, unsigned char lineMask) : disturbance(chance), mask(lineMask) {}

    /// What of `bytes` comes through.
    [[nodiscard]] std::string pass(std::string_view bytes) {
        std::string rest;
        for (const char byte : bytes) {
            if (!disturbance.happens()) {
                rest += byte;
            } else if (disturbance.draw(2) == 0) {
                rest += withOneBitTurned(byte);
            }
        }
        return rest;
    }

  private:
    [[nodiscard]] char withOneBitTurned(char byte) {
        constexpr unsigned bitsPerByte = 8;
        unsigned bit = 0;
        do {
            bit = 1U << disturbance.draw(bitsPerByte);
        } while ((bit & mask) == 0);
        return static_cast<char>(static_cast<unsigned char>(byte) ^ bit);
    }

    Chance disturbance;
    unsigned char mask;
};

}  // namespace orx::orxsim
