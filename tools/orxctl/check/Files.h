// What a file is, and what is in it. Never throws for what the file system says.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>

#include "config/ConfigFile.h"

namespace orx::orxctl {

/// Whether something is there, or is hidden from the user.
[[nodiscard]] inline bool exists(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(path, error) || error;
}

[[nodiscard]] inline bool isFolder(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

/// The content of the file at `path`; empty where it cannot be read.
[[nodiscard]] inline std::string contentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

}  // namespace orx::orxctl
