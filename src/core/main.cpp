// The process entry: orx [CONFIGURATION FILE]
#include <csignal>
#include <exception>
#include <string>

#include "config/MainConfig.h"
#include "core/BuildIdentity.h"
#include "core/Console.h"
#include "core/Orx.h"
#include "core/StandardDescriptors.h"

namespace {

/// A closed standard output or an adapter that was pulled must not end the daemon: a serial line
/// becomes the controlling terminal of a session leader, and its loss hangs that leader up.
void ignoreHangUps() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGHUP, SIG_IGN);
}

void serve(const std::string& configPath) {
    orx::Orx daemon(orx::MainConfig::create(configPath));
    daemon.run();
    daemon.shutdown();
}

}  // namespace

int main(int argc, char* argv[]) {
    orx::occupyStandardDescriptors();
    ignoreHangUps();
    const std::string argument = argc > 1 ? argv[1] : "";
    if (argument == "--internalversion") {
        orx::printLine(orx::internalVersion());
        return 0;
    }
    orx::printLine(orx::banner());
    try {
        serve(argument);
    } catch (const std::exception& error) {
        orx::printLine(std::string("ERROR: ") + error.what());
        return 1;
    }
    return 0;
}
