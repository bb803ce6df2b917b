// How far the lens stands from where STATUS says it does, measured on a projector with faults.
// Everything is repeatable: seeds are fixed, and every command is given at rest.
#pragma once

#include <string>
#include <vector>

namespace orx::test {

/// Behind a move of the zoom, in motor steps; below 0 where the lens stands short of its count.
struct LockInErrors {
    int afterUp = 0;
    int afterDown = 0;

    [[nodiscard]] int spread() const noexcept {
        return afterUp < afterDown ? afterDown - afterUp : afterUp - afterDown;
    }
};

/// With `backlash` between motor and lens, and lock-in mode `mode`.
[[nodiscard]] LockInErrors measureLockIn(int mode, int backlash, int channel);

/// One axis after one recall of a memory slot.
struct Recall {
    bool changesTarget = false;
    int resets = 0;     ///< of this axis, by this recall
    int error = 0;      ///< of the lens against STATUS
    int lostSince = 0;  ///< steps lost since this recall's last reset, or since it was given
    int lostInAll = 0;  ///< since the first recall
};

struct LossyRecalls {
    std::vector<Recall> zoom;
    std::vector<Recall> focus;
};

/// A projector that loses steps, and whether a recall references the lens first.
struct LossyCase {
    std::string model{};
    std::string loss{};  ///< "1/50": one of fifty
    bool resetOnLoad = false;
    int seed = 1;  ///< of the losses
};

/// Recalls different slots forty times.
[[nodiscard]] LossyRecalls measureRecalls(const LossyCase& lossy, int channel);

}  // namespace orx::test
