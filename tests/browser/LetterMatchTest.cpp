#include "browser/ListQuery.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

namespace quavernet::test {

namespace {

struct LetterCase {
    const char* text;
    const char* letter;
    bool match;
};

int ErrorOf(const char* text, const char* letter) {
    try {
        LetterMatch(text, letter);
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

} // namespace

TEST(LetterMatchTest, FollowsItsTable) {
    const LetterCase cases[] = {
        {"Beatles", "B", true},
        {"beatles", "B", true},
        {"Abba", "B", false},
        {"B", "B", true},
        {"Zappa", "Z", true},
        {"Abba", "A", true},
        // Umlauts: the capital shows under its base letter and under "other", the small one under "other"
        // only.
        {"Ärzte", "A", true},
        {"ärzte", "A", false},
        {"Öl", "O", true},
        {"öl", "O", false},
        {"Über", "U", true},
        {"über", "U", false},
        {"Öl", "A", false},
        {"Ärzte", "O", false},
        {"Ärzte", "U", false},
        {"Ärzte", "B", false},
        {"Âme", "A", false},
        {"Ärzte", "other", true},
        {"ärzte", "other", true},
        {"Öl", "other", true},
        {"Über", "other", true},
        {"ßa", "other", true},
        {"Âme", "other", true},
        // "other" is everything but the plain letters, to the edges of their two ranges.
        {"A", "other", false},
        {"Z", "other", false},
        {"a", "other", false},
        {"z", "other", false},
        {"@", "other", true},
        {"[", "other", true},
        {"`", "other", true},
        {"{", "other", true},
        {"2 Unlimited", "other", true},
        {" Abba", "other", true},
        {" Abba", "A", false},
        {"'n Sync", "other", true},
        {"日本", "other", true},
        {"日本", "A", false},
        {"\xFF", "other", true},
        // A lone Latin-1 byte is its own code.
        {"\xC4rzte", "A", true},
        {"\xC4rzte", "other", true},
        // No label sets these, but the list of umlauts knows them.
        {"ärzte", "a", true},
        {"öl", "o", true},
        {"über", "u", true},
        {"Ärzte", "a", false},
        {"Abba", "a", true},
    };
    for (const auto& [text, letter, match] : cases) {
        EXPECT_EQ(LetterMatch(text, letter), match) << text << " under " << letter;
    }
}

TEST(LetterMatchTest, EveryLetterFindsItsOwnInBothCasesAndNoOther) {
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        for (char first = 'A'; first <= 'Z'; ++first) {
            const std::string label(1, letter);
            EXPECT_EQ(LetterMatch(std::string(1, first) + "x", label), first == letter);
            EXPECT_EQ(LetterMatch(std::string(1, static_cast<char>(first + 32)) + "x", label),
                      first == letter);
        }
    }
}

TEST(LetterMatchTest, AnEmptyTextFailsWhereItsCharacterCodeIsAsked) {
    for (const char* letter : {"other", "A", "O", "U"}) {
        EXPECT_EQ(ErrorOf("", letter), ErrorNumber::InvalidProcedureCall) << letter;
    }
    for (const char* letter : {"All", "B", "Z"}) {
        EXPECT_EQ(ErrorOf("", letter), 0) << letter;
        EXPECT_FALSE(LetterMatch("", letter)) << letter;
    }
}

} // namespace quavernet::test
