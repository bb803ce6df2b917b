// One request to the daemon, made from one line of text.
//
// Built on the thread that received the text, then only read; it never changes after construction,
// so it needs no lock. Threads pass it on as a shared `CommandPtr`.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "commands/Vocabulary.h"

namespace orx {

class Command {
  public:
    /// Parses a keyword and its argument words, separated by any white space. Words that the
    /// keyword's argument kind does not allow are dropped without a message; an unknown keyword
    /// keeps its name and loses its words. Never throws for bad input.
    explicit Command(std::string_view source);
    Command(const Command&) = default;
    Command(Command&&) noexcept = default;
    Command& operator=(const Command&) = delete;
    Command& operator=(Command&&) = delete;
    virtual ~Command() = default;

    /// With `display` the form for logs, "ZOOM (1200)"; without it the keyword as it was sent.
    [[nodiscard]] const std::string& text(bool display) const noexcept;

    /// The accepted argument words as they were sent; a number is checked, never reformatted.
    /// `RAW` has at most one, an even number of hexadecimal digits.
    [[nodiscard]] const std::vector<std::string>& arguments() const noexcept {
        return argumentList;
    }

    /// Whether this is the command `keyword`; case counts.
    [[nodiscard]] bool is(std::string_view keyword) const noexcept { return name == keyword; }

    /// Whether the keyword is in the vocabulary.
    [[nodiscard]] bool isValid() const noexcept { return entry != nullptr; }

    /// Whether the vocabulary gives the keyword an argument.
    [[nodiscard]] bool takesArgument() const noexcept;

  private:
    std::string name;
    const VocabularyEntry* entry;  ///< null for an unknown keyword
    std::string display;
    std::vector<std::string> argumentList;
};

using CommandPtr = std::shared_ptr<const Command>;

}  // namespace orx
