// Plays a story of the lens on a bench, and compares what STATUS says with where the motors stand:
// at the end, and whenever a command waits for the lens to rest.
#pragma once

#include <string>

#include "system/simulated/LensPlay.h"
#include "system/simulated/LensSequence.h"

namespace orx::test {

struct SequenceOutcome {
    std::string violation{};  ///< empty where there is none
    PlayFigures figures{};
};

/// Plays `sequence` with a daemon on control channel `channel`. Throws nothing: a daemon that does
/// not do its part is a violation too.
[[nodiscard]] SequenceOutcome play(const LensSequence& sequence, int channel);

}  // namespace orx::test
