// The command line of the simulator.
#pragma once

#include <string>

#include "orxsim/Behaviour.h"

namespace CLI {
class App;
}

namespace orx::orxsim {

struct Options {
    std::string definitions;
    std::string model;
    std::string link;
    bool json = false;
    Behaviour behaviour;
};

/// Reads the command line by `app`, to which it adds the options. Throws `CLI::ParseError` for a
/// wrong one, and for one that only asks for help or the version.
[[nodiscard]] Options readOptions(CLI::App& app, int argc, const char* const* argv);

}  // namespace orx::orxsim
