// The user who runs the check: name, groups and rights.
#pragma once

#include <string>
#include <sys/types.h>

namespace orx::orxctl {

/// The name of the effective user; its number where it has none.
[[nodiscard]] std::string userName();

/// The name of a group; its number where it has none.
[[nodiscard]] std::string groupName(gid_t group);

/// Whether the machine lists the user as a member of `group`, which a session that is older than
/// the entry does not know yet.
[[nodiscard]] bool isListedIn(gid_t group);

/// Whether this process itself has the rights of `group`.
[[nodiscard]] bool hasRightsOf(gid_t group);

/// The system's error number where the user may not use the file at `path` in that mode, a
/// combination of R_OK, W_OK and X_OK; 0 where he may. Opens nothing.
[[nodiscard]] int accessError(const std::string& path, int mode) noexcept;

}  // namespace orx::orxctl
