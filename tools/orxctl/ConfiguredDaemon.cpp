#include "orxctl/ConfiguredDaemon.h"

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <vector>

#include "config/MainConfig.h"
#include "control/Interface.h"
#include "orxctl/check/Network.h"

namespace orx::orxctl {
namespace {

[[noreturn]] void refuse(const std::string& path, const std::string& reason) {
    throw std::invalid_argument(path + ": " + reason);
}

std::vector<Interface> channelsOf(const std::string& path) {
    std::vector<Interface> channels;
    try {
        for (const auto& text : MainConfig::create(path)->controlChannel())
            channels.push_back(parseInterface(text));
    } catch (const std::exception& error) {
        refuse(path, error.what());
    }
    return channels;
}

bool isForAllAddresses(const Interface& channel) {
    return channel.socketAddress.sin_addr.s_addr == htonl(INADDR_ANY);
}

bool staysOnTheMachine(const Interface& channel) {
    return isForAllAddresses(channel) || isLoopback(channel.socketAddress.sin_addr);
}

}  // namespace

Target configuredDaemon(const std::string& path) {
    const auto channels = channelsOf(path);
    if (channels.empty()) refuse(path, "a daemon would listen nowhere");
    auto chosen = std::ranges::find_if(channels, staysOnTheMachine);
    if (chosen == channels.end()) chosen = channels.begin();
    const auto port = ntohs(chosen->socketAddress.sin_port);
    if (port == 0) refuse(path, "nobody knows the port that the system gives for port 0");
    const client::Address address{isForAllAddresses(*chosen) ? "127.0.0.1" : chosen->address, port};
    return {address.text(), address};
}

}  // namespace orx::orxctl
