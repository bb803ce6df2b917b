// A file whose content is replaced for every input. Its name stays, but what has been saved to it
// may have made it another file.
#pragma once

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <string_view>
#include <unistd.h>

#include "common/Check.h"
#include "core/FileDescriptor.h"
#include "core/InstallPrefix.h"
#include "support/TemporaryFolder.h"

namespace orx::fuzz {

class RewrittenFile {
  public:
    /// Below the folder of this process; makes the folders on the way.
    explicit RewrittenFile(const std::string& name) : filePath(INSTALL_PREFIX + "/" + name) {
        std::filesystem::create_directories(std::filesystem::path(filePath).parent_path());
    }

    void write(std::string_view content) const {
        const FileDescriptor file(
            ::open(filePath.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
        expect(::write(file.get(), content.data(), content.size()) ==
                   static_cast<ssize_t>(content.size()),
               "no room for a file");
    }

    [[nodiscard]] std::string content() const { return test::contentOf(filePath); }
    [[nodiscard]] const std::string& path() const noexcept { return filePath; }

  private:
    std::string filePath;
};

}  // namespace orx::fuzz
