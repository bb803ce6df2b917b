#include "system/soak/DroppedDatagrams.h"

#include <arpa/inet.h>
#include <array>
#include <cstdio>
#include <fstream>
#include <netinet/in.h>
#include <stdexcept>

namespace orx::test {
namespace {

/// As the system's table has it: the address as the machine reads it, and the port.
std::string inTable(const std::string& address, int port) {
    in_addr binary{};
    ::inet_pton(AF_INET, address.c_str(), &binary);
    std::array<char, sizeof "7F000001:4575"> text{};
    std::snprintf(text.data(), text.size(), "%08X:%04X", binary.s_addr,
                  static_cast<unsigned>(port));
    return text.data();
}

}  // namespace

long droppedDatagrams(const std::string& address, int port) {
    const auto wanted = " " + inTable(address, port) + " ";
    std::ifstream table("/proc/net/udp");
    for (std::string line; std::getline(table, line);) {
        if (line.find(wanted) == std::string::npos) continue;
        const auto lastField = line.find_last_of(' ', line.find_last_not_of(' '));
        return std::stol(line.substr(lastField));
    }
    throw std::runtime_error("no socket at" + wanted);
}

}  // namespace orx::test
