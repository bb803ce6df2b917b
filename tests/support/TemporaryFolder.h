// A folder of a test's own, removed with all that is in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace orx::test {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        auto name = (std::filesystem::temp_directory_path() / "orx-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
        folder = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return folder; }

    /// The path of `name` below the folder, as text.
    [[nodiscard]] std::string file(const std::string& name) const {
        return (folder / name).string();
    }

    /// Writes a file, and the folders on the way to it; gives its path.
    std::string write(const std::string& name, const std::string& content) const {
        std::filesystem::create_directories((folder / name).parent_path());
        std::ofstream(folder / name, std::ios::binary) << content;
        return file(name);
    }

  private:
    std::filesystem::path folder;
};

/// The content of a file; empty where it cannot be read.
inline std::string contentOf(const std::filesystem::path& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

}  // namespace orx::test
