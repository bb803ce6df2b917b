// The projector models of the tests. What they send is short, so that the bytes on the line read as
// a story: "zr" resets the zoom natively, "z+" steps it up, "Z<" is a fast step down.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/DefinitionImage.h"

namespace orx::test {

struct Argument {
    std::string keyword{};
    int number = 1;
    int min = 0;
    int max = 0;
    int pos = 0;
    int len = 0;
    char type = 'A';
};

struct Model {
    std::string name{};
    std::vector<std::pair<std::string, std::string>> commands{};  ///< keyword and what it sends
    std::vector<Argument> arguments{};
    BlockImage line = fastLine();  ///< the line parameters and the checksum

    /// A line on which a command costs no time.
    [[nodiscard]] static BlockImage fastLine();
};

/// The reply timeout, in milliseconds, of a model whose commands wait for `Pty::answer`: longer
/// than any test.
inline constexpr int waitsForAnswer = 25500;

/// The definition file with these models.
[[nodiscard]] DefinitionImage define(const std::vector<Model>& models);

/// "MOTOR": power, picture and lens commands, native resets.
[[nodiscard]] Model motorModel();

/// "STEPPER": as "MOTOR", but reset by fast steps: "Z---" for the zoom, "F--" for the focus.
[[nodiscard]] Model stepperModel();

/// "FIXED": picture commands alone, no lens.
[[nodiscard]] Model fixedModel();

}  // namespace orx::test
