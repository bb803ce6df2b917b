#include "core/BuildIdentity.h"

namespace orx {
namespace {

std::string bareCodeName(std::string_view stored) {
    constexpr std::size_t blankAndQuote = 2;
    if (stored.size() <= blankAndQuote) return {};
    return std::string(stored.substr(blankAndQuote, stored.size() - blankAndQuote - 1));
}

}  // namespace

constinit const BuildIdentity buildIdentity{
    "orx", "v" ORX_VERSION, " \"Quietpangolin\"", "2393", "2019-06-13, 16:23:26",
};

std::string banner(const BuildIdentity& identity) {
    std::string text(identity.product);
    text.append(" ").append(identity.version).append(identity.codeName);
    text.append(" (build ").append(identity.buildNumber);
    text.append(" @ ").append(identity.buildDateTime).append(")");
    return text;
}

std::string internalVersion(const BuildIdentity& identity) {
    constexpr std::size_t dateLength = 10;
    constexpr std::size_t timeStart = 12;
    std::string text(identity.version.substr(1));
    text.append("/").append(bareCodeName(identity.codeName));
    text.append("/").append(identity.buildNumber);
    text.append("/").append(identity.buildDateTime.substr(0, dateLength));
    text.append("/").append(identity.buildDateTime.substr(timeStart));
    return text;
}

}  // namespace orx
