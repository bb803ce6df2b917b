// A user without the rights of the administrator, for as long as the object lives.
#pragma once

#include <grp.h>
#include <stdexcept>
#include <unistd.h>
#include <vector>

namespace orx::orxctl {

class OrdinaryUser {
  public:
    OrdinaryUser() : wasAdministrator(::geteuid() == 0) {
        if (!wasAdministrator) return;
        groups.resize(static_cast<std::size_t>(::getgroups(0, nullptr)));
        static_cast<void>(::getgroups(static_cast<int>(groups.size()), groups.data()));
        constexpr uid_t nobody = 65534;
        if (::setgroups(0, nullptr) != 0 || ::setegid(nobody) != 0 || ::seteuid(nobody) != 0)
            throw std::runtime_error("the user cannot be changed");
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (!wasAdministrator) return;
        static_cast<void>(::seteuid(0) + ::setegid(0) + ::setgroups(groups.size(), groups.data()));
    }

  private:
    bool wasAdministrator;
    std::vector<gid_t> groups;
};

}  // namespace orx::orxctl
