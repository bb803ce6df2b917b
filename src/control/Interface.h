// Where a listener listens, read from text as the main configuration has it.
#pragma once

#include <netinet/in.h>
#include <string>

namespace orx {

struct Interface {
    std::string address;  ///< dotted quad
    std::string port;     ///< as it is written
    int portNumber;       ///< as it is written; beyond 16 bits only the low ones count
    sockaddr_in socketAddress;
};

/// Reads an IPv4 address or "*", which stands for all addresses, a colon and a port, with blanks
/// around either. Throws `std::runtime_error` "[LISTENER] ..." for a missing colon and an address
/// that is none, and the standard conversion errors "stoi" for a port that is no number; of several
/// mistakes the colon counts first, then the port.
[[nodiscard]] Interface parseInterface(const std::string& text);

}  // namespace orx
