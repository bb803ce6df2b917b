// A private prefix: the folders and files that a daemon finds and leaves there.
#pragma once

#include <string>
#include <vector>

#include "support/DefinitionImage.h"
#include "support/TemporaryFolder.h"

namespace orx::test {

class Installation {
  public:
    /// Lays out etc/, lib/, var/ and var/run/.
    Installation();

    [[nodiscard]] std::string prefix() const { return folder.path().string(); }
    [[nodiscard]] std::string file(const std::string& name) const { return folder.file(name); }

    /// Writes a file below the prefix; gives its path.
    std::string write(const std::string& name, const std::string& content) const;
    void writeConfiguration(const std::string& text) const;
    void writeDefinitions(const DefinitionImage& image) const;
    void writeLensMemory(const std::string& text) const;

    void remove(const std::string& name) const;
    /// Puts a folder where a file is to be, so that nobody can write the file, root included.
    void block(const std::string& name) const;

    [[nodiscard]] bool has(const std::string& name) const;
    [[nodiscard]] std::string lensMemory() const;

    /// The lines of the log file, the newest first, time stamps and all.
    [[nodiscard]] std::vector<std::string> logLines() const;
    /// The messages of the log file, the newest first. Throws for a line without a time stamp.
    [[nodiscard]] std::vector<std::string> log() const;

    /// The seconds between the last two commands on the line, as the log has them.
    [[nodiscard]] double pace() const;

  private:
    TemporaryFolder folder;
};

}  // namespace orx::test
