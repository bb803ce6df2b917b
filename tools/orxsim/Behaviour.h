// How the simulated projector is made and what is wrong with it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "orxsim/Chance.h"
#include "orxsim/Instant.h"
#include "orxsim/LensCommands.h"

namespace orx::orxsim {

enum class AnswerFault : std::uint8_t { none, silent, garbage };

/// When the line is cut: after so many commands were carried out, or after some time.
struct Unplugging {
    std::optional<std::uint64_t> commands;
    std::optional<Instant> time;
};

struct Behaviour {
    static constexpr int usualZoomTravel = 2000;
    static constexpr int usualFocusTravel = 1000;

    std::array<int, axisCount> travel{usualZoomTravel, usualFocusTravel};
    std::array<int, axisCount> start{usualZoomTravel / 2, usualFocusTravel / 2};
    std::array<int, 3> jogSteps{5, 20, 100};
    int backlash = 0;
    Instant stepTime{0};
    Ratio lostSteps;
    Ratio lineNoise;  ///< of the bytes received
    bool realTime = false;
    AnswerFault answers = AnswerFault::none;
    Instant answerDelay{0};
    std::optional<std::string> acknowledgement;
    std::optional<std::string> error;
    Unplugging unplugging;
    std::uint64_t seed = 1;
};

}  // namespace orx::orxsim
