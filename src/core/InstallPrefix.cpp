#include "core/InstallPrefix.h"

namespace orx {

const std::string INSTALL_PREFIX = ORX_INSTALL_PREFIX;

}  // namespace orx
