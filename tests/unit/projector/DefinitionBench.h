// Definition files of a test's own, and what the reader prints of them.
#pragma once

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "projector/ProjectorDefinitionFile.h"
#include "support/CapturedOutput.h"
#include "support/DefinitionImage.h"
#include "support/TemporaryFolder.h"

namespace orx::test {

class DefinitionBench : public testing::Test {
  protected:
    /// Writes the bytes to a file and opens it.
    [[nodiscard]] ProjectorDefinitionFile open(const std::string& bytes) const {
        return ProjectorDefinitionFile(folder.write("orx.ccd", bytes));
    }

    /// The error text of a file that is refused; empty where it opens.
    [[nodiscard]] std::string refusal(const std::string& bytes) const {
        try {
            static_cast<void>(open(bytes));
            return "";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }

    static std::string fileDump(ProjectorDefinitionFile& file) {
        return outputOf([&file] { file.dump(); });
    }

    [[nodiscard]] std::string fileDump(const std::string& bytes) const {
        auto file = open(bytes);
        return fileDump(file);
    }

    /// What is dumped of one model, its settings first; empty where there is no such model.
    static std::string modelDump(ProjectorDefinitionFile& file, const std::string& name) {
        const auto settings = file.serialSettings(name);
        const auto projector = file.projector(name);
        if (settings == nullptr || projector == nullptr) return "";
        return outputOf([&] {
            settings->dump();
            projector->dump();
        });
    }

    TemporaryFolder folder;
};

}  // namespace orx::test
