#include "orx/client/Address.h"

#include <charconv>
#include <stdexcept>

namespace orx::client {
namespace {

[[noreturn]] void refuse(std::string_view text, const std::string& reason) {
    throw std::invalid_argument(std::string("\"").append(text).append("\" is no address: ") +
                                reason);
}

std::uint16_t parsePort(std::string_view address, std::string_view text) {
    std::uint16_t port = 0;
    const auto* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, port);
    if (result.ec != std::errc() || result.ptr != end || port == 0)
        refuse(address, "a port is a number from 1 to 65535");
    return port;
}

}  // namespace

Address Address::parse(std::string_view text) {
    const auto colon = text.find(':');
    const auto host = text.substr(0, colon);
    if (host.empty()) refuse(text, "the host is missing");
    if (text.find_first_of(" \t\r\n,") != std::string_view::npos)
        refuse(text, "it holds blanks or commas");
    if (colon == std::string_view::npos) return {std::string(host), usualPort};
    return {std::string(host), parsePort(text, text.substr(colon + 1))};
}

std::string Address::text() const {
    return host + ":" + std::to_string(port);
}

}  // namespace orx::client
