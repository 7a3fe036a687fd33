#include "tree/ExchangeFile.h"

#include "tree/NewCategories.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace quavernet::test {

using namespace std::string_literals;

namespace {

constexpr auto NoData = ExchangeSection::None;
constexpr auto InCategories = ExchangeSection::Categories;
constexpr auto InFiles = ExchangeSection::Files;

} // namespace

TEST(ExchangeFileTest, NoLineCountsBeforeTheFirstSection) {
    ExchangeSections sections;
    EXPECT_EQ(sections.Of("Jazz"), NoData);
    EXPECT_EQ(sections.Of("#Categories"), NoData);
    EXPECT_EQ(sections.Of("Jazz"), InCategories);
    EXPECT_EQ(sections.Of("#Files"), NoData);
    EXPECT_EQ(sections.Of("1,Jazz,a.mp3,/m/a.mp3"), InFiles);
}

TEST(ExchangeFileTest, ASectionLineIsFoundAnywhereInALineAndInAnyCase) {
    ExchangeSections sections;
    EXPECT_EQ(sections.Of("x #cATEGORIES of mine"), NoData);
    EXPECT_EQ(sections.Of("Jazz"), InCategories);
    EXPECT_EQ(sections.Of("My #FILES, 1"), NoData);
    EXPECT_EQ(sections.Of("Jazz"), InFiles);
    EXPECT_EQ(sections.Of("#Files#Categories"), NoData) << "both: the files win";
    EXPECT_EQ(sections.Of("Jazz"), InFiles);
}

TEST(ExchangeFileTest, ALineWithThatSignOrWithoutTextIsNoData) {
    ExchangeSections sections;
    (void)sections.Of("#Categories");
    EXPECT_EQ(sections.Of("C# minor"), NoData);
    EXPECT_EQ(sections.Of(""), NoData);
    EXPECT_EQ(sections.Of(" "), InCategories);
}

TEST(ExchangeFileTest, TheFirstTwoCommasAndTheLastOneDivideALine) {
    for (const auto& [line, position, parent, filename, path] :
         {std::tuple{"1,Jazz,a.mp3,/m/a.mp3", "1", "Jazz", "a.mp3", "/m/a.mp3"},
          std::tuple{"1,Jazz,a, b,c.mp3,/m/x.mp3", "1", "Jazz", "a, b,c.mp3", "/m/x.mp3"},
          std::tuple{"1,Jazz,a.mp3,/m/a, b.mp3", "1", "Jazz", "a.mp3,/m/a", " b.mp3"},
          std::tuple{"-7,,,", "-7", "", "", ""}, std::tuple{" 3 ,,,/a", " 3 ", "", "", "/a"}}) {
        const auto entry = SplitEntry(line);
        ASSERT_TRUE(entry) << line;
        EXPECT_EQ(entry->Position, position);
        EXPECT_EQ(entry->Parent, parent);
        EXPECT_EQ(entry->Filename, filename);
        EXPECT_EQ(entry->Path, path);
    }
}

TEST(ExchangeFileTest, FewerCommasOrAPositionThatIsNoNumberMakeNoEntry) {
    for (const std::string& line :
         {""s, "Jazz"s, "1,Jazz"s, "1,Jazz,a.mp3"s, ",Jazz,a.mp3,/a"s, "x,Jazz,a.mp3,/a"s,
          "1.5,Jazz,a.mp3,/a"s, "1;2,Jazz,a.mp3,/a"s, "+1,Jazz,a.mp3,/a"s, "2147483648,Jazz,a.mp3,/a"s,
          "1 1,Jazz,a.mp3,/a"s, "1\0,Jazz,a.mp3,/a"s, "\t1,Jazz,a.mp3,/a"s, "1) --,Jazz,a.mp3,/a"s}) {
        EXPECT_FALSE(SplitEntry(line)) << line;
    }
    EXPECT_TRUE(SplitEntry("2147483647,Jazz,a.mp3,/a"));
}

TEST(ExchangeFileTest, ALineThatIsWrittenReadsBackUnlessItsPathHoldsAComma) {
    std::string line = EntryLine({"3", "Jazz", "ab.mp3", "/m/ab.mp3"});
    line.pop_back();
    const auto plain = SplitEntry(line);
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->Path, "/m/ab.mp3");
    EXPECT_EQ(EntryLine({"3", "Jazz", "a,b.mp3", "/m/a,b.mp3"}), "3,Jazz,a,b.mp3,/m/a,b.mp3\n");
    const auto comma = SplitEntry("3,Jazz,a,b.mp3,/m/a,b.mp3");
    ASSERT_TRUE(comma);
    EXPECT_NE(comma->Path, "/m/a,b.mp3");
}

class NewCategoriesTest : public ::testing::Test {
protected:
    NewCategoriesTest() {
        for (const char* name : {"Hard Rock", "Jazz1", "Rock", "Rock1"}) {
            categories.Add({std::to_string(categories.Count() + 11), name});
        }
    }
    NewCategories categories;
};

TEST_F(NewCategoriesTest, TheFirstNameThatContainsTheTextCounts) {
    EXPECT_EQ(categories.FirstWith("Rock"), 1U);
    EXPECT_EQ(categories.FirstWith("Jazz"), 2U);
    EXPECT_EQ(categories.FirstWith("rock1"), 4U);
    EXPECT_EQ(categories.FirstWith("D ROCK"), 1U);
    EXPECT_EQ(categories.FirstWith(""), 1U);
    EXPECT_EQ(categories.At(2).Id, "12");
    EXPECT_EQ(categories.At(2).Name, "Jazz1");
}

TEST_F(NewCategoriesTest, CaseIsIgnoredAsTheLibraryDoes) {
    categories.Add({"9", "Märchen"});
    EXPECT_EQ(categories.FirstWith("MÄRCHEN"), 5U);
    EXPECT_EQ(categories.FirstWith("Marchen"), 6U) << "an accent makes another letter";
}

TEST_F(NewCategoriesTest, WithoutAMatchTheNumberIsBehindTheLastOne) {
    EXPECT_EQ(categories.FirstWith("Pop"), 5U);
    EXPECT_EQ(categories.FirstWith("RockJazz"), 5U) << "not over two names";
    EXPECT_EQ(NewCategories().FirstWith("Pop"), 1U);
    EXPECT_EQ(NewCategories().FirstWith(""), 1U);
}

// Names over few letters hold each other's parts; long ones and many searches bring the index.
TEST_F(NewCategoriesTest, ManySearchesInLongNamesGiveWhatAPlainSearchDoes) {
    std::mt19937 random(7);
    const auto text = [&random](std::size_t longest) {
        std::string made(1 + random() % longest, 'a');
        for (char& c : made) {
            c = static_cast<char>('a' + random() % 3);
        }
        return made;
    };
    NewCategories many;
    std::vector<std::string> names;
    for (int round = 0; round < 2000; ++round) {
        if (random() % 8 == 0) {
            names.push_back(text(random() % 50 == 0 ? 6000 : 12));
            many.Add({"1", names.back()});
        }
        const std::string part = text(14);
        std::size_t expected = 1;
        while (expected <= names.size() && names[expected - 1].find(part) == std::string::npos) {
            ++expected;
        }
        ASSERT_EQ(many.FirstWith(part), expected) << part;
    }
}

TEST_F(NewCategoriesTest, ManyDifferentTextsAreSearchedInVeryLongNames) {
    NewCategories many;
    for (int i = 0; i < 4; ++i) {
        many.Add({"1", std::string(std::size_t{1} << 18, static_cast<char>('a' + i))});
    }
    for (int i = 0; i < 20'000; ++i) {
        ASSERT_EQ(many.FirstWith("c" + std::to_string(i)), 5U);
    }
    EXPECT_EQ(many.FirstWith(std::string(1000, 'C')), 3U);
}

TEST_F(NewCategoriesTest, ASearchIsRepeatedAfterACategoryWasAddedWhenACategoryHasCome) {
    EXPECT_EQ(categories.FirstWith("Pop"), 5U);
    EXPECT_EQ(categories.FirstWith("Funk"), 5U);
    categories.Add({"15", "Pop"});
    EXPECT_EQ(categories.FirstWith("Pop"), 5U);
    EXPECT_EQ(categories.Count(), 5U);
    EXPECT_EQ(categories.FirstWith("Funk"), 6U);
    EXPECT_EQ(categories.FirstWith("Funk"), 6U);
}

} // namespace quavernet::test
