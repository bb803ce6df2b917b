// What this build calls itself: the start-up banner and the line for `--internalversion`.
#pragma once

#include <string>
#include <string_view>

namespace orx {

/// The facts that are fixed when a release is built.
struct BuildIdentity {
    std::string_view product;
    std::string_view version;   ///< with its leading "v"
    std::string_view codeName;  ///< with a leading blank and in double quotes, or empty
    std::string_view buildNumber;
    std::string_view buildDateTime;  ///< "YYYY-MM-DD, HH:MM:SS"
};

/// This release. The version is the one that the build is configured for.
extern const BuildIdentity buildIdentity;

/// For people: orx vVERSION "Quietpangolin" (build 2393 @ 2019-06-13, 16:23:26)
[[nodiscard]] std::string banner(const BuildIdentity& identity = buildIdentity);

/// For scripts: VERSION/Quietpangolin/2393/2019-06-13/16:23:26
[[nodiscard]] std::string internalVersion(const BuildIdentity& identity = buildIdentity);

}  // namespace orx
