// How far the moves of one lens have come, as a line of text with a bar for each axis on its way.
//
// STATUS does not say where a move began; this remembers it. One thread at a time.
#pragma once

#include <map>
#include <string>

#include "orx/client/DaemonStatus.h"

namespace orx::orxctl {

class MoveProgress {
  public:
    /// "zoom [#####-----] 1200/2000>1900  focus 300/1000", now that the lens is at `status`.
    [[nodiscard]] std::string line(const client::DaemonStatus& status);

  private:
    /// A move as it was first seen.
    struct Move {
        int start;
        int target;
    };

    [[nodiscard]] std::string bar(const client::AxisStatus& axis);

    std::map<std::string, Move> moves;  ///< by name of the axis
};

}  // namespace orx::orxctl
