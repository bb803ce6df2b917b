// A configuration file whose store is in plain sight, as a derived class has it.
#pragma once

#include "config/ConfigFile.h"

namespace orx::test {

class OpenConfigFile : public ConfigFile {
  public:
    using ConfigFile::ConfigFile;
    using ConfigFile::entries;
    using ConfigFile::path;
};

}  // namespace orx::test
