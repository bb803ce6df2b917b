// The ears of the projector: makes commands of the bytes that arrive, in whatever pieces.
//
// The longest command wins, so a command that could still become a longer one waits: for the next
// byte or, at the end of what is said, for silence, which only the caller can hear. Behind bytes
// that are no command it goes on after the byte that ends all commands of the model; where there is
// none, after the next silence.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orxdef/CommandTable.h"
#include "orxsim/CommandPattern.h"

namespace orx::orxsim {

/// A command, or bytes that are none.
struct Heard {
    std::string command;  ///< its name; empty where nothing can be said of it
    std::vector<std::string> arguments;
    std::string bytes;   ///< all that belong to it, with the checksum
    std::string reason;  ///< why it is no command that can be carried out; empty for one that can

    [[nodiscard]] bool isCommand() const noexcept { return reason.empty(); }
};

class CommandRecognizer {
  public:
    /// The model's definition must outlive this.
    CommandRecognizer(const orxdef::CommandTable& commands, const orxdef::ModelDefinition& model);

    /// What is decided by `bytes` and those before them, in the order of arrival.
    [[nodiscard]] std::vector<Heard> hear(std::string_view bytes);

    /// The same where no more bytes follow for now.
    [[nodiscard]] std::vector<Heard> silence();

    /// Whether silence would decide anything.
    [[nodiscard]] bool awaitsSilence() const noexcept { return silenceDecides; }

    /// The byte that ends all commands of the model ahead of their checksum, if there is one.
    [[nodiscard]] std::optional<char> terminator() const noexcept { return lastByte; }

    /// Which bits of a byte the line carries.
    [[nodiscard]] unsigned char lineMask() const noexcept { return format.mask; }

  private:
    struct Best {
        const CommandPattern* pattern = nullptr;
        CommandPattern::Match match;
        bool isOpen = false;
    };

    void addPatterns(const orxdef::CommandTable& commands);
    [[nodiscard]] std::optional<char> commonLastByte() const;
    [[nodiscard]] std::vector<Heard> decide(bool isSilent);
    [[nodiscard]] std::optional<Heard> next(bool isSilent);
    [[nodiscard]] bool lacksSum() const;
    [[nodiscard]] Best bestMatch() const;
    [[nodiscard]] Heard takeCommand(const Best& best);
    [[nodiscard]] std::optional<Heard> takeOther(bool isSilent);
    [[nodiscard]] std::size_t frameLength(bool isSilent) const;
    [[nodiscard]] Heard explained(std::string frame) const;
    [[nodiscard]] std::string take(std::size_t length);

    LineFormat format;
    std::vector<CommandPattern> patterns;  ///< the preferred ones of equal matches first
    std::optional<char> lastByte;
    std::string received;  ///< what is not decided yet
    bool silenceDecides = false;
};

}  // namespace orx::orxsim
