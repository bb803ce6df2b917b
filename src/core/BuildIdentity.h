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

inline constexpr BuildIdentity buildIdentity{
    "orx", "v1.11.0", " \"Quietpangolin\"", "2393", "2019-06-13, 16:23:26",
};

/// For people: orx v1.11.0 "Quietpangolin" (build 2393 @ 2019-06-13, 16:23:26)
[[nodiscard]] std::string banner(const BuildIdentity& identity = buildIdentity);

/// For scripts: 1.11.0/Quietpangolin/2393/2019-06-13/16:23:26
[[nodiscard]] std::string internalVersion(const BuildIdentity& identity = buildIdentity);

}  // namespace orx
