#include "orxsim/DeviceLink.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace orx::orxsim {

namespace fs = std::filesystem;

DeviceLink::DeviceLink(std::string linkPath, std::string devicePath)
    : link(std::move(linkPath)), device(std::move(devicePath)) {
    std::error_code error;
    const auto present = fs::symlink_status(link, error);
    if (fs::exists(present) && !fs::is_symlink(present)) {
        throw std::runtime_error(link + ": is there and no symbolic link");
    }
    if (fs::exists(link, error)) {
        throw std::runtime_error(link + ": leads to " + fs::read_symlink(link, error).string() +
                                 ", which is in use; remove it first");
    }
    fs::remove(link, error);
    fs::create_symlink(device, link, error);
    if (error) throw std::runtime_error(link + ": " + error.message());
}

void DeviceLink::remove() noexcept {
    std::error_code error;
    if (fs::read_symlink(link, error) == device) fs::remove(link, error);
}

}  // namespace orx::orxsim
