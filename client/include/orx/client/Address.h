// Where a daemon listens. A value; any thread may use it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orx::client {

struct Address {
    /// Where a daemon listens unless its configuration says otherwise.
    static constexpr std::uint16_t usualPort = 7781;

    std::string host = "127.0.0.1";  ///< a name or a dotted quad; daemons have IPv4 alone
    std::uint16_t port = usualPort;

    /// Reads "HOST" or "HOST:PORT", the port from 1 to 65535. Throws `std::invalid_argument` with a
    /// text for users; whether there is such a host is not asked.
    [[nodiscard]] static Address parse(std::string_view text);

    /// "HOST:PORT"
    [[nodiscard]] std::string text() const;

    bool operator==(const Address&) const = default;
};

}  // namespace orx::client
