// The `encode` subcommand: the bytes that the daemon would send, without a daemon.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace orx::orxdef {

/// What a client would have sent to a daemon that is configured for `model`.
struct EncodeRequest {
    std::string definitionFile;
    std::string model;
    std::string keyword;
    std::vector<std::string> arguments;
};

/// Prints the bytes that go out on the serial line, on one line as text with \xNN for what is not
/// printable, on the next in hexadecimal.
/// Returns the exit status: 0, or 1 with the reason on `errors` where the daemon would send
/// something else than was asked for, nothing at all, or end.
[[nodiscard]] int encode(const EncodeRequest& request, std::ostream& output, std::ostream& errors);

}  // namespace orx::orxdef
