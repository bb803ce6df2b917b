// Judges texts that the daemon reads as whole numbers.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "config/ConfigFile.h"
#include "orxctl/check/ConfigText.h"
#include "orxctl/check/Report.h"

namespace orx::orxctl {

class NumberCheck {
  public:
    /// Whatever ends the daemon does so at `stage`. `report` must outlive the check.
    NumberCheck(Stage numberStage, Report& findings) : stage(numberStage), report(findings) {}

    /// The number that the daemon takes `text` for, or nothing where that ends it. Reports both
    /// that and characters that it passes over; `wanted` says what is to be given.
    [[nodiscard]] std::optional<int> read(const std::string& text, const Place& place,
                                          std::string_view wanted) const;

    /// The same for the value of `key` in `values`, whose lines are `lines`; nothing, too, where
    /// the key is absent or its value empty.
    [[nodiscard]] std::optional<int> read(const ConfigFile& values, const ConfigText& lines,
                                          std::string_view key, std::string_view wanted) const;

  private:
    Stage stage;
    Report& report;
};

/// Whether `text`, which stands behind a value, was meant as a comment.
[[nodiscard]] bool looksLikeComment(std::string_view text) noexcept;

/// What to say about that, behind a message.
inline constexpr std::string_view commentAdvice = "; a comment stands on a line of its own";

}  // namespace orx::orxctl
