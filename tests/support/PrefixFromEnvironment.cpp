// The prefix of a daemon under test: what its test says.
#include <cstdlib>

#include "core/InstallPrefix.h"

namespace orx {
namespace {

std::string prefixFromEnvironment() {
    const char* prefix = std::getenv("ORX_TEST_PREFIX");
    return prefix != nullptr ? prefix : "/nonexistent/orx-test-prefix";
}

}  // namespace

const std::string INSTALL_PREFIX = prefixFromEnvironment();

}  // namespace orx
