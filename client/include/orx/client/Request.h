// One command for a daemon, checked before it is sent: the daemon itself answers nothing and drops
// what it does not understand.
//
// Read by the daemon's own parser. A value; any thread may use it.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orx::client {

/// A word that is no keyword of the daemon.
class UnknownCommand : public std::invalid_argument {
  public:
    explicit UnknownCommand(std::string keyword);

    [[nodiscard]] const std::string& keyword() const noexcept { return word; }

  private:
    std::string word;
};

class Request {
  public:
    /// Reads "KEYWORD ARGUMENT...", with any white space between the words. Throws
    /// `UnknownCommand`, or `std::invalid_argument` for an argument that the daemon would drop and
    /// for more bytes than the daemon takes, each with a text for users.
    explicit Request(std::string_view source);

    /// What goes into the datagram: the words with one blank between them.
    [[nodiscard]] const std::string& text() const noexcept { return datagram; }

    [[nodiscard]] const std::string& keyword() const noexcept { return name; }

    /// As the daemon reads them; those of RAW are one.
    [[nodiscard]] const std::vector<std::string>& arguments() const noexcept {
        return argumentList;
    }

    /// Whether the daemon can do nothing with it in dumb mode, where it has no projector.
    [[nodiscard]] bool needsProjector() const noexcept;

  private:
    std::string name;
    std::vector<std::string> argumentList;
    std::string datagram;
};

}  // namespace orx::client
