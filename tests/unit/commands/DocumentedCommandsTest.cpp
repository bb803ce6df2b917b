// docs/control-channel.md lists all commands in tables: keywords in `code` between bars, the kind
// of their argument in the last column.
#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/Vocabulary.h"
#include "support/TemporaryFolder.h"

namespace orx::test {
namespace {

using Kinds = std::vector<std::pair<std::string, std::string>>;

/// Adds the keywords of one row of a table, each with the kind that the row gives.
void addRow(const std::string& row, Kinds& kinds) {
    const auto lastColumn = row.rfind("| ", row.size() - 2) + 2;
    const auto kind = row.substr(lastColumn, row.find_first_of(" ,", lastColumn) - lastColumn);
    auto open = row.find('`');
    while (open != std::string::npos) {
        const auto close = row.find('`', open + 1);
        kinds.emplace_back(row.substr(open + 1, close - open - 1), kind);
        open = row.find('`', close + 1);
    }
}

Kinds documentedCommands() {
    std::istringstream document(contentOf(ORX_SOURCE_DIR "/docs/control-channel.md"));
    Kinds kinds;
    bool listing = false;
    for (std::string line; std::getline(document, line);) {
        if (line.starts_with("## ")) listing = line == "## All commands";
        if (listing && line.starts_with("| `")) addRow(line, kinds);
    }
    std::ranges::sort(kinds);
    return kinds;
}

Kinds commandsOfVocabulary() {
    Kinds kinds;
    for (const auto& entry : vocabulary)
        kinds.emplace_back(entry.keyword, argumentKindOf(entry.keyword).value_or("-"));
    std::ranges::sort(kinds);
    return kinds;
}

TEST(DocumentedCommands, AreThoseOfTheVocabularyOnceEachWithTheKindOfTheirArgument) {
    EXPECT_THAT(documentedCommands(), testing::ElementsAreArray(commandsOfVocabulary()));
}

}  // namespace
}  // namespace orx::test
