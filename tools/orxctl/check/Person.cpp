#include "orxctl/check/Person.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace orx::orxctl {
namespace {

bool contains(const std::vector<gid_t>& groups, gid_t group) {
    return std::ranges::find(groups, group) != groups.end();
}

}  // namespace

std::string userName() {
    const auto* user = ::getpwuid(::geteuid());
    return user != nullptr ? user->pw_name : std::to_string(::geteuid());
}

std::string groupName(gid_t group) {
    const auto* entry = ::getgrgid(group);
    return entry != nullptr ? entry->gr_name : std::to_string(group);
}

bool isListedIn(gid_t group) {
    const auto* user = ::getpwuid(::geteuid());
    if (user == nullptr) return false;
    int count = 0;
    ::getgrouplist(user->pw_name, user->pw_gid, nullptr, &count);
    std::vector<gid_t> groups(static_cast<std::size_t>(count));
    if (::getgrouplist(user->pw_name, user->pw_gid, groups.data(), &count) < 0) return false;
    return contains(groups, group);
}

bool hasRightsOf(gid_t group) {
    if (::getegid() == group) return true;
    std::vector<gid_t> groups(static_cast<std::size_t>(std::max(0, ::getgroups(0, nullptr))));
    if (::getgroups(static_cast<int>(groups.size()), groups.data()) < 0) return false;
    return contains(groups, group);
}

int accessError(const std::string& path, int mode) noexcept {
    return ::faccessat(AT_FDCWD, path.c_str(), mode, AT_EACCESS) == 0 ? 0 : errno;
}

}  // namespace orx::orxctl
