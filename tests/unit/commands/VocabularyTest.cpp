#include <algorithm>
#include <cctype>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/Vocabulary.h"
#include "unit/commands/VocabularyTable.h"

namespace orx::test {
namespace {

ArgumentKind enumerator(std::string_view kind) {
    if (kind == "integer") return ArgumentKind::integer;
    if (kind == "decimal") return ArgumentKind::decimal;
    if (kind == "raw") return ArgumentKind::raw;
    return ArgumentKind::none;
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return lower;
}

const ExpectedCommand* expected(std::string_view keyword) {
    const auto* row = std::ranges::find(expectedCommands, keyword, &ExpectedCommand::keyword);
    return row != expectedCommands.end() ? row : nullptr;
}

TEST(Vocabulary, KnowsEveryKeyword) {
    for (const auto& command : expectedCommands)
        EXPECT_TRUE(isKnownKeyword(command.keyword)) << command.keyword;
}

TEST(Vocabulary, FindsTheKeywordOfEverySymbolicName) {
    for (const auto& command : expectedCommands)
        EXPECT_EQ(keywordFor(command.symbolicName), command.keyword) << command.symbolicName;
}

TEST(Vocabulary, GivesEveryKeywordAConstantOfItsSymbolicName) {
    for (const auto& command : expectedCommands)
        EXPECT_EQ(command.constant, command.keyword) << command.symbolicName;
}

TEST(Vocabulary, GivesEveryKeywordItsArgumentKind) {
    for (const auto& command : expectedCommands) {
        SCOPED_TRACE(command.keyword);
        EXPECT_EQ(argumentKind(command.keyword), enumerator(command.kind));
        if (command.kind.empty()) {
            EXPECT_EQ(argumentKindOf(command.keyword), std::nullopt);
        } else {
            EXPECT_EQ(argumentKindOf(command.keyword), command.kind);
        }
    }
}

TEST(Vocabulary, HoldsNoCommandBeyondTheKnownOnes) {
    EXPECT_EQ(vocabulary.size(), expectedCommands.size());
    for (const auto& entry : vocabulary) {
        SCOPED_TRACE(entry.keyword);
        const auto* command = expected(entry.keyword);
        ASSERT_NE(command, nullptr);
        EXPECT_EQ(entry.symbolicName, command->symbolicName);
        EXPECT_EQ(entry.argumentKind, enumerator(command->kind));
    }
}

TEST(Vocabulary, PairsNoSymbolicNameBeyondTheKnownOnes) {
    EXPECT_EQ(commandNames.size(), expectedCommands.size());
    for (const auto& entry : commandNames) {
        SCOPED_TRACE(entry.symbolicName);
        const auto* command = expected(entry.keyword);
        ASSERT_NE(command, nullptr);
        EXPECT_EQ(entry.symbolicName, command->symbolicName);
    }
}

TEST(Vocabulary, GivesFiftyNineKeywordsAnArgument) {
    const auto count = [](ArgumentKind kind) {
        return std::ranges::count(vocabulary, kind, &VocabularyEntry::argumentKind);
    };
    EXPECT_EQ(count(ArgumentKind::integer), 50);
    EXPECT_EQ(count(ArgumentKind::decimal), 8);
    EXPECT_EQ(count(ArgumentKind::raw), 1);
    EXPECT_EQ(count(ArgumentKind::none), 49);
}

TEST(Vocabulary, StandsInByteOrderOfTheKeywordsAndOfTheSymbolicNames) {
    EXPECT_TRUE(std::ranges::is_sorted(vocabulary, {}, &VocabularyEntry::keyword));
    EXPECT_TRUE(std::ranges::is_sorted(commandNames, {}, &VocabularyEntry::symbolicName));
}

TEST(Vocabulary, TakesNoKeywordInLowerCase) {
    EXPECT_FALSE(isKnownKeyword("zoom"));
    EXPECT_TRUE(isKnownKeyword("ZOOM"));
    for (const auto& command : expectedCommands)
        EXPECT_FALSE(isKnownKeyword(lowerCase(command.keyword))) << command.keyword;
}

TEST(Vocabulary, TakesNoSymbolicNameForAKeyword) {
    EXPECT_FALSE(isKnownKeyword("CMD_ZOOM_ABS"));
    for (const auto& command : expectedCommands) {
        SCOPED_TRACE(command.symbolicName);
        EXPECT_FALSE(isKnownKeyword(command.symbolicName));
        EXPECT_EQ(argumentKindOf(command.symbolicName), std::nullopt);
    }
}

TEST(Vocabulary, TakesNoKeywordForASymbolicName) {
    for (const auto& command : expectedCommands)
        EXPECT_EQ(keywordFor(command.keyword), "") << command.keyword;
}

TEST(Vocabulary, ComparesWholeTexts) {
    using namespace std::string_view_literals;
    for (const auto text : {""sv, " "sv, "ZOO"sv, "ZOOMXX"sv, " ZOOM"sv, "ZOOM "sv, "ZOOM\0"sv,
                            "\0ZOOM"sv, "F++++"sv, "Z"sv, "AF"sv, "A"sv, "ZZZ"sv, "\xff"sv}) {
        SCOPED_TRACE(testing::PrintToString(text));
        EXPECT_FALSE(isKnownKeyword(text));
        EXPECT_EQ(argumentKindOf(text), std::nullopt);
        EXPECT_EQ(argumentKind(text), ArgumentKind::none);
    }
}

TEST(Vocabulary, FindsNoKeywordForAnUnknownSymbolicName) {
    using namespace std::string_view_literals;
    for (const auto text : {""sv, "CMD_"sv, "CMD_ZOOM_AB"sv, "CMD_ZOOM_ABS "sv, "cmd_zoom_abs"sv,
                            "CMD_ZOOM_ABS\0"sv, "ZOOM_ABS"sv, "CMD_A"sv, "CMD_ZZZ"sv}) {
        EXPECT_EQ(keywordFor(text), "") << testing::PrintToString(text);
    }
}

TEST(Vocabulary, NamesTheArgumentKinds) {
    EXPECT_EQ(argumentKindOf("STATUS"), std::nullopt);
    EXPECT_EQ(argumentKindOf("RAW"), "raw");
    EXPECT_EQ(argumentKindOf("SETDELAY"), "integer");
    EXPECT_EQ(argumentKindOf("KEYSTONEVERT"), "decimal");
}

}  // namespace
}  // namespace orx::test
