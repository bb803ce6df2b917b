// The log of this process, in a file of a test's own.
#pragma once

#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/Log.h"
#include "support/TemporaryFolder.h"

namespace orx::test {

class ProcessLog {
  public:
    ProcessLog() { openLog(folder.file("log")); }
    ProcessLog(const ProcessLog&) = delete;
    ProcessLog& operator=(const ProcessLog&) = delete;
    /// Leaves a log without a file behind.
    ~ProcessLog() { openLog(""); }

    /// Forgets what was logged so far.
    void startOver() const {
        std::filesystem::remove(folder.path() / "log");
        openLog(folder.file("log"));
    }

    /// The messages of the file without their time stamps, the oldest first.
    [[nodiscard]] std::vector<std::string> messages() const {
        const std::regex stamp(R"(\d\d:\d\d:\d\d\.\d{6} )");
        constexpr std::size_t stampSize = sizeof "HH:MM:SS.uuuuuu " - 1;
        std::vector<std::string> texts;
        std::istringstream lines(contentOf(folder.path() / "log"));
        for (std::string line; std::getline(lines, line);) {
            EXPECT_TRUE(std::regex_match(line.substr(0, stampSize), stamp)) << line;
            texts.insert(texts.begin(), line.substr(stampSize));
        }
        return texts;
    }

  private:
    TemporaryFolder folder;
};

}  // namespace orx::test
