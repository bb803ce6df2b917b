// Whether a file could be written, told without opening it.
#pragma once

#include <optional>
#include <string>

namespace orx::orxctl {

struct Obstacle {
    std::string reason;  ///< why the file cannot be written
    std::string cure;    ///< what to do about it
};

/// What keeps the user of this process from writing the file at `path`, or from making it where
/// there is none; nothing where nothing does.
[[nodiscard]] std::optional<Obstacle> obstacleToWriting(const std::string& path);

}  // namespace orx::orxctl
