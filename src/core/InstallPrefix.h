// The folder below which the daemon finds and keeps its files.
#pragma once

#include <string>

namespace orx {

/// Begins every default path. The install prefix given when the build was configured; a constant of
/// the program, the same for its whole life. No slash at its end.
extern const std::string INSTALL_PREFIX;

}  // namespace orx
