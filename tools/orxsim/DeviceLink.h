// The name under which a device is found: a symbolic link that goes with its owner.
#pragma once

#include <string>

namespace orx::orxsim {

class DeviceLink {
  public:
    /// Makes `linkPath` lead to `devicePath`, in place of a link that leads nowhere any more.
    /// Throws `std::runtime_error` where anything else is there, a link to a device for instance,
    /// or where the system refuses.
    DeviceLink(std::string linkPath, std::string devicePath);
    DeviceLink(const DeviceLink&) = delete;
    DeviceLink& operator=(const DeviceLink&) = delete;
    ~DeviceLink() { remove(); }

    [[nodiscard]] const std::string& path() const noexcept { return link; }

    /// Removes the link, unless it leads elsewhere by now.
    void remove() noexcept;

  private:
    std::string link;
    std::string device;
};

}  // namespace orx::orxsim
