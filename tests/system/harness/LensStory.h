// Stories of the lens: two axes with a known range.
#pragma once

#include <string>
#include <vector>

#include "system/harness/Story.h"

namespace orx::test {

class LensStory : public Story {
  protected:
    /// Starts `model` with a zoom of 0 to 2000 steps and a focus of 0 to 100.
    void startLens(const Model& model, const std::string& more = "");

    /// As `startLens`, on a line where every command waits for `Pty::answer`.
    void startAnsweredLens(Model model, const std::string& more = "");

    /// Waits until the axes stand still at these positions, "3/2000" and the like.
    void waitForPositions(const std::string& zoom, const std::string& focus) const;

    /// The status reply without its flags.
    [[nodiscard]] std::string axes() const;

    /// The log messages about the lens, the oldest first.
    [[nodiscard]] std::vector<std::string> lensLog() const;
};

}  // namespace orx::test
