// A recogniser for a model of the test's own, and what it hears in plain words.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orxsim/CommandRecognizer.h"
#include "unit/orxsim/ModelBench.h"

namespace orx::orxsim {

/// "NAME argument ..." for a command, "? bytes: reason" for anything else.
inline std::string described(const Heard& heard) {
    if (!heard.isCommand()) return "? " + heard.bytes + ": " + heard.reason;
    auto text = heard.command;
    for (const auto& argument : heard.arguments)
        text.append(" ").append(argument);
    return text;
}

using Texts = std::vector<std::string>;

/// A recogniser and all it has heard.
class Ears {
  public:
    explicit Ears(const std::vector<TestCommand>& commands,
                  orxdef::Checksum checksum = orxdef::Checksum::none, int bytesize = 8)
        : bench(commands, checksum), recognizer(made(bytesize)) {}

    Texts hear(std::string_view bytes) { return described(recognizer.hear(bytes)); }
    Texts silence() { return described(recognizer.silence()); }
    [[nodiscard]] bool awaitsSilence() const { return recognizer.awaitsSilence(); }
    [[nodiscard]] std::optional<char> terminator() const { return recognizer.terminator(); }

    /// Hears byte by byte.
    Texts hearSlowly(std::string_view bytes) {
        Texts all;
        for (const char byte : bytes) {
            const auto some = hear(std::string_view(&byte, 1));
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }

  private:
    static Texts described(const std::vector<Heard>& heard) {
        Texts texts;
        for (const auto& one : heard)
            texts.push_back(orxsim::described(one));
        return texts;
    }

    CommandRecognizer made(int bytesize) {
        bench.model().line.bytesize = static_cast<std::uint8_t>(bytesize);
        return {bench.table(), bench.model()};
    }

    ModelBench bench;
    CommandRecognizer recognizer;
};

}  // namespace orx::orxsim
