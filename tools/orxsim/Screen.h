// What a person sees of the simulated projector: both axes, the state, the last commands, as lines
// of plain text that fit a terminal.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "orxsim/Display.h"

namespace orx::orxsim {

/// In characters.
struct ScreenSize {
    std::size_t columns = 80;
    std::size_t rows = 24;
};

class Screen {
  public:
    explicit Screen(const Setup& setup);

    /// Keeps what was heard for the list of last commands.
    void add(const Report& report);

    /// At most `size.rows` lines, none longer than `size.columns`. The newest command comes first.
    [[nodiscard]] std::vector<std::string> lines(const SimulatedProjector& projector,
                                                 ScreenSize size) const;

  private:
    std::string heading;
    std::deque<std::string> heard;  ///< the newest first
};

}  // namespace orx::orxsim
