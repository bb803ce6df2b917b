// The `check` subcommand: what a start of the daemon would meet, told without starting anything.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

namespace orx::orxctl {

enum class CheckFormat : std::uint8_t { text, json };

/// Checks what a daemon started with `configPath`, or with the default file where that is empty,
/// would meet: its configuration, definition file, serial device, log, lens memory and control
/// channels. Binds no port, opens no serial line and writes no file. Everything that is found goes
/// to `output` in the order of the start, one line each and the verdict last, or as one JSON
/// object:
///
///   { "findings": [ { "severity": "error", "place": P, "subject": S, "file": F, "line": N,
///                     "message": M } ],
///     "errors": N, "warnings": N, "notes": N, "wouldStart": true, "projector": "DEMO-1" }
///
/// where "file" is left out for what no file tells, "line" where there is none, or is "byte" in a
/// binary file, and "projector" is null for a daemon that would not start, or in dumb mode.
/// Returns the exit status: 0 where the daemon would start and drive its projector, else 1.
[[nodiscard]] int check(const std::string& configPath, CheckFormat format, std::ostream& output);

}  // namespace orx::orxctl
