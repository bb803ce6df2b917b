// What one command of a model looks like on the line: literal bytes, the arguments between them,
// and the checksum.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orxdef/CommandTable.h"
#include "orxsim/ArgumentDecoder.h"

namespace orx::orxsim {

/// How a model's line carries its commands.
struct LineFormat {
    unsigned char mask = 0xFF;  ///< the bits of a character
    bool hasSum = false;        ///< whether the sum of all its bytes follows each command
};

class CommandPattern {
  public:
    /// What the beginning of the received bytes is to this pattern.
    struct Match {
        std::size_t length = 0;  ///< of the longest complete command; 0 where there is none
        std::vector<std::string> arguments;
        std::size_t lengthWithWrongSum = 0;  ///< of a command but for its checksum; 0 for none
        bool isOpen = false;                 ///< more bytes could make a longer command
    };

    /// The command called `commandName`, of the first `arguments` of its arguments only: clients
    /// may leave the later ones out. `command` must outlive the pattern.
    CommandPattern(std::string commandName, const orxdef::ModelCommand& command,
                   std::size_t arguments, LineFormat lineFormat);

    [[nodiscard]] const std::string& name() const noexcept { return commandName; }
    /// The number of the first argument that is left out; nothing where all are there.
    [[nodiscard]] std::optional<unsigned> missingArgument() const noexcept { return missing; }
    /// The last byte ahead of the checksum where that is a literal; nothing where an argument is.
    [[nodiscard]] std::optional<char> lastByte() const noexcept;

    /// `received` has only bits of the mask.
    [[nodiscard]] Match match(std::string_view received) const;

    /// What is wrong with the arguments of `frame`, which is such a command in all else; nothing
    /// where it is something else. The checksum is not looked at.
    [[nodiscard]] std::optional<std::string> mistakeIn(std::string_view frame) const;

  private:
    class Search;

    /// A literal, then an argument; the last piece has none.
    struct Piece {
        std::string literal;
        std::optional<ArgumentDecoder> argument;
    };

    void addArgument(std::string_view base, const orxdef::ArgumentDescriptor& descriptor);
    void addLiteral(std::string_view literal, std::optional<ArgumentDecoder> argument);

    std::string commandName;
    LineFormat format;
    std::vector<Piece> pieces;
    std::optional<unsigned> missing;
    orxdef::NumberStyle style;
    std::size_t last = 0;  ///< how much of the command string has become literals
};

}  // namespace orx::orxsim
