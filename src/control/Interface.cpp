#include "control/Interface.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "core/Text.h"

namespace orx {
namespace {

in_addr toAddress(const std::string& text) {
    in_addr address{};
    errno = 0;  // malformed text sets no error number, and a stale one would be told
    if (::inet_pton(AF_INET, text.c_str(), &address) != 1) {
        throw std::runtime_error("[LISTENER] IP address " + text +
                                 " could not be converted: " + std::strerror(errno));
    }
    return address;
}

}  // namespace

Interface parseInterface(const std::string& text) {
    const auto colon = text.find(':');
    if (colon == std::string::npos) {
        throw std::runtime_error("[LISTENER] port missing in interface: " + text);
    }
    Interface interface {
        trim(text.substr(0, colon)), trim(text.substr(colon + 1)), 0, {}
    };
    interface.portNumber = std::stoi(interface.port);
    if (interface.address == "*") interface.address = "0.0.0.0";
    interface.socketAddress.sin_family = AF_INET;
    interface.socketAddress.sin_port = htons(static_cast<std::uint16_t>(interface.portNumber));
    interface.socketAddress.sin_addr = toAddress(interface.address);
    return interface;
}

}  // namespace orx
