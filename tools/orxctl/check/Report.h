// Everything that one check of a start has found, in the order in which the daemon would meet it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "orxdef/Mistakes.h"

namespace orx::orxctl {

using orxdef::Severity;

/// Where a finding stands: in a file, or else the thing that it concerns.
struct Place {
    std::string subject;  ///< the key, or what else it is about
    std::string file{};   ///< empty where no file says anything about it
    std::optional<std::size_t> line{};
    std::optional<std::size_t> byte{};  ///< in a binary file, in place of the line
};

/// "FILE:LINE", "FILE:byte N", "FILE" or the subject.
[[nodiscard]] std::string describe(const Place& place);

struct Finding {
    Severity severity;
    Place place;
    std::string message;  ///< one line: what is wrong, and what cures it
};

/// When the daemon meets what ends it.
enum class Stage : std::uint8_t {
    always,
    withProjector,  ///< only where it has found its projector model; otherwise it goes on without
};

class Report {
  public:
    void error(const Place& place, const std::string& message);
    void warn(const Place& place, const std::string& message);
    void note(const Place& place, const std::string& message);

    /// An error that ends the daemon with that text behind "ERROR: "; `reason` says what is wrong
    /// and what cures it. Call it for `Stage::withProjector` after `foundModel`.
    void ends(const Place& place, std::string_view daemonText, const std::string& reason,
              Stage stage = Stage::always);

    /// That the daemon finds the projector model of that name.
    void foundModel(std::string name) { modelName = std::move(name); }

    [[nodiscard]] const std::vector<Finding>& findings() const noexcept { return all; }
    [[nodiscard]] std::size_t count(Severity severity) const noexcept;

    /// Whether the daemon would come to serve its control channels.
    [[nodiscard]] bool wouldStart() const noexcept { return !isEnded; }
    /// The model with which it would start, or nothing where it would not, or in dumb mode.
    [[nodiscard]] std::optional<std::string> projector() const;
    /// Whether a model was found, also where the start ends for another reason.
    [[nodiscard]] bool hasModel() const noexcept { return modelName.has_value(); }

  private:
    void add(Severity severity, const Place& place, const std::string& message);

    std::vector<Finding> all;
    std::optional<std::string> modelName;
    bool isEnded = false;
};

}  // namespace orx::orxctl
