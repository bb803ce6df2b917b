// A main configuration under check: what the daemon makes of it, and the lines it comes from.
#pragma once

#include <string>

#include "config/MainConfig.h"
#include "orxctl/check/ConfigText.h"

namespace orx::orxctl {

struct CheckedConfig {
    /// Reads the file at `path`; one that cannot be read leaves the defaults.
    explicit CheckedConfig(const std::string& path) : text(path), values(text.entries()) {}

    ConfigText text;
    MainConfig values;
};

}  // namespace orx::orxctl
