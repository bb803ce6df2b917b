#include "orxctl/check/ChannelCheck.h"

#include <algorithm>
#include <cerrno>
#include <exception>
#include <string>
#include <vector>

#include "config/ConfigKeys.h"
#include "control/Interface.h"
#include "control/Listener.h"
#include "orxctl/check/Holders.h"
#include "orxctl/check/NumberCheck.h"
#include "orxctl/check/Person.h"
#include "orxdef/Wording.h"

namespace orx::orxctl {
namespace {

constexpr auto key = config_key::controlChannel;
constexpr std::string_view example = "such as 127.0.0.1:7781";

std::uint16_t boundPort(const Interface& interface) {
    return ntohs(interface.socketAddress.sin_port);
}

/// As the daemon understands it, for messages.
std::string nameOf(const Interface& interface) {
    return interface.address + ":" + std::to_string(boundPort(interface));
}

class ChannelCheck {
  public:
    ChannelCheck(const CheckedConfig& checkedConfig, const PortRights& portRights, Report& findings)
        : config(checkedConfig),
          rights(portRights),
          report(findings),
          place(config.text.placeOf(key)) {}

    void check() {
        for (const auto& text : config.values.controlChannel())
            checkItem(text);
    }

  private:
    void checkItem(const std::string& text) {
        try {
            const auto interface = parseInterface(text);
            checkPort(interface);
            checkBinding(interface);
            checkReach(interface);
            seen.push_back(interface);
        } catch (const std::exception& error) {
            report.ends(place, error.what(), explain(text));
        }
    }

    static std::string explain(const std::string& text) {
        const std::string wanted("an IPv4 address, a colon and a port, ");
        if (text.empty())
            return "the list has an empty item; remove the comma too many, or give " + wanted +
                   std::string(example);
        return orxdef::quoted(text) + " is no address to listen on; give " + wanted +
               std::string(example) + ", but no host name";
    }

    void checkPort(const Interface& interface) {
        static_cast<void>(NumberCheck(Stage::always, report).read(interface.port, place, "a port"));
        const auto port = std::to_string(boundPort(interface));
        if (interface.portNumber != boundPort(interface))
            report.warn(place, "port " + std::to_string(interface.portNumber) + " is cut to port " +
                                   port + "; give 1 to 65535");
        else if (boundPort(interface) == 0)
            report.warn(place,
                        "with port 0 the system chooses a port, which no client knows; give 1 to "
                        "65535");
    }

    /// In the order in which the system looks for reasons to refuse.
    void checkBinding(const Interface& interface) {
        if (!isOfThisMachine(interface.socketAddress.sin_addr))
            cannotBind(EADDRNOTAVAIL, "this machine does not have the address " +
                                          interface.address +
                                          "; give one of its own, or 127.0.0.1");
        else if (boundPort(interface) != 0 && boundPort(interface) < rights.firstForAll &&
                 !rights.hasAll)
            cannotBind(EACCES, "user " + orxdef::quoted(userName()) + " may not use ports below " +
                                   std::to_string(rights.firstForAll) + "; give a higher one");
        else
            checkFree(interface);
    }

    void checkFree(const Interface& interface) {
        if (boundPort(interface) == 0) return;
        const bool isTwice = std::ranges::any_of(seen, [&interface](const Interface& other) {
            return collide(other.socketAddress.sin_addr, boundPort(other),
                           interface.socketAddress.sin_addr, boundPort(interface));
        });
        if (isTwice) {
            cannotBind(EADDRINUSE, nameOf(interface) +
                                       " is already listened on by an item ahead of it; remove one "
                                       "of them");
            return;
        }
        for (const auto& socket : udpSockets())
            if (collide(socket.address, socket.port, interface.socketAddress.sin_addr,
                        boundPort(interface))) {
                explainTaken(interface, socket);
                return;
            }
    }

    void explainTaken(const Interface& interface, const UdpSocket& socket) {
        const auto reason = nameOf(interface) + owner(holdersOfSocket(socket.inode));
        if (socket.isIpv6)
            report.warn(place, reason +
                                   ", on all addresses of IPv6; unless that leaves out IPv4, the "
                                   "daemon ends with \"ERROR: " +
                                   Listener::bindFailure(EADDRINUSE) + "\"");
        else
            cannotBind(EADDRINUSE, reason);
    }

    static std::string owner(const Holders& holders) {
        const auto& [processes, hidden, suspects] = holders;
        const std::string daemonAdvice =
            "; send it RESTART to make it read this configuration, or QUIT to end it";
        if (processes.empty() && !suspects.empty())
            return " is taken, it seems by a daemon that already runs, " + listed(suspects) +
                   daemonAdvice;
        if (processes.empty())
            return " is taken by another process; end it, or give another port (" + unseen(hidden) +
                   ")";
        if (std::ranges::any_of(processes, &Process::isDaemon))
            return " is served by a daemon that already runs, " + listed(processes) + daemonAdvice;
        return " is taken by " + listed(processes) + "; end it, or give another port";
    }

    void cannotBind(int errorNumber, const std::string& reason) {
        report.ends(place, Listener::bindFailure(errorNumber), reason);
    }

    /// There is no password: whoever reaches the channel drives the projector.
    void checkReach(const Interface& interface) {
        if (isLoopback(interface.socketAddress.sin_addr)) return;
        report.warn(place, nameOf(interface) +
                               " is open to the network: anyone there can drive the projector, "
                               "without a password; use 127.0.0.1, or a firewall");
    }

    const CheckedConfig& config;
    const PortRights rights;
    Report& report;
    const Place place;
    std::vector<Interface> seen{};
};

}  // namespace

void checkChannels(const CheckedConfig& config, const PortRights& rights, Report& report) {
    ChannelCheck(config, rights, report).check();
}

}  // namespace orx::orxctl
