#include "browser/SearchHistory.h"

#include "support/LogicTest.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quavernet::test {
namespace {

using Texts = std::vector<std::string>;

class SearchHistoryTest : public LogicTest {};

TEST_F(SearchHistoryTest, TheNewestSearchIsFirstAndAtMostTenAreKept) {
    EXPECT_EQ(LastSearches(), Texts{});
    for (int search = 1; search <= 11; ++search) {
        RememberSearch(std::to_string(search));
    }
    EXPECT_EQ(LastSearches(), (Texts{"11", "10", "9", "8", "7", "6", "5", "4", "3", "2"}));
}

TEST_F(SearchHistoryTest, ASearchThatComesAgainMovesToTheFrontAsItIsWrittenNow) {
    for (const char* search : {"abba", "Ärzte", "cure", "ÄRZTE"}) {
        RememberSearch(search);
    }
    EXPECT_EQ(LastSearches(), (Texts{"ÄRZTE", "cure", "abba"}));
}

TEST_F(SearchHistoryTest, TheSettingIsWrittenOnlyWhenItChanges) {
    RememberSearch("abba");
    settings.values["LastSearches"] = "abba";
    settings.values.erase("LastSearches");
    RememberSearch("cure");
    EXPECT_EQ(settings.values["LastSearches"], "cure");
    RememberSearch("");
    RememberSearch("two\nlines");
    EXPECT_EQ(settings.values["LastSearches"], "cure");
}

TEST_F(SearchHistoryTest, ASettingThatSomebodyEditedIsReadAsFarAsItMakesSense) {
    settings.values["LastSearches"] = "\n\na\n\nb\n";
    EXPECT_EQ(LastSearches(), (Texts{"a", "b"}));
    settings.values["LastSearches"] = "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12";
    EXPECT_EQ(LastSearches().size(), MostSearches);
}

} // namespace
} // namespace quavernet::test
