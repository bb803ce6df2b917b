// What the system has thrown away of a socket's datagrams, for want of room.
#pragma once

#include <string>

namespace orx::test {

/// Since the socket that is bound to `address` and `port` was made. Throws where there is none.
[[nodiscard]] long droppedDatagrams(const std::string& address, int port);

}  // namespace orx::test
