// The prefix of a unit test process: a folder of its own that goes when the process ends.
#include "core/InstallPrefix.h"
#include "support/TemporaryFolder.h"

namespace orx {
namespace {

const std::string& privateFolder() {
    static const test::TemporaryFolder folder;
    static const std::string path = folder.path().string();
    return path;
}

}  // namespace

const std::string INSTALL_PREFIX = privateFolder();

}  // namespace orx
