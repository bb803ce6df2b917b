// A file whose content is replaced for every input: opened once and written over, which is far
// cheaper than a new file each time.
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
        file = FileDescriptor(::open(filePath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    }

    void write(std::string_view content) const {
        const auto size = static_cast<off_t>(content.size());
        expect(::pwrite(file.get(), content.data(), content.size(), 0) == size &&
                   ::ftruncate(file.get(), size) == 0,
               "no room for a file");
    }

    [[nodiscard]] std::string content() const { return test::contentOf(filePath); }
    [[nodiscard]] const std::string& path() const noexcept { return filePath; }

  private:
    std::string filePath;
    FileDescriptor file;
};

}  // namespace orx::fuzz
