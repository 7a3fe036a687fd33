#include "browser/TypedText.h"

#include "browser/ListRecord.h"

#include <memory>

#include <gtest/gtest.h>

namespace quavernet::test {
namespace {

ListRows RowsOf(const std::vector<std::string>& performers) {
    auto data = std::make_shared<ListData>();
    data->Block = ADODB::RowBlock(9);
    for (const std::string& performer : performers) {
        for (std::size_t field = 0; field < 9; ++field) {
            data->Block.AddText(field == ListField::Interpret ? performer : "x");
        }
        data->Listed.push_back(static_cast<std::uint32_t>(data->Listed.size()));
    }
    return ListRows(data);
}

TEST(TypedTextTest, KeysThatFollowEachOtherAreOneTextAndAPauseBeginsAnother) {
    TypedText typed;
    ASSERT_TRUE(typed.Type("b", 0));
    EXPECT_EQ(typed.Text(), "b");
    EXPECT_TRUE(typed.FromNext());
    ASSERT_TRUE(typed.Type("e", 999));
    EXPECT_EQ(typed.Text(), "be");
    EXPECT_FALSE(typed.FromNext()) << "the row that begins with b may be it";
    ASSERT_TRUE(typed.Type("a", 1999));
    EXPECT_EQ(typed.Text(), "a");
    EXPECT_TRUE(typed.FromNext());
}

TEST(TypedTextTest, OneCharacterAgainAndAgainGoesFromRowToRow) {
    TypedText typed;
    for (const char* key : {"ä", "Ä", "ä"}) {
        ASSERT_TRUE(typed.Type(key, 5));
        EXPECT_EQ(typed.Text(), key);
        EXPECT_TRUE(typed.FromNext());
    }
    ASSERT_TRUE(typed.Type("r", 5));
    EXPECT_EQ(typed.Text(), "äÄär");
}

TEST(TypedTextTest, ABlankIsAPartOfATextAndBeginsNone) {
    TypedText typed;
    EXPECT_FALSE(typed.Type(" ", 0));
    ASSERT_TRUE(typed.Type("a", 10));
    ASSERT_TRUE(typed.Type(" ", 20));
    EXPECT_EQ(typed.Text(), "a ");
    EXPECT_FALSE(typed.Type(" ", 2000));
}

TEST(TypedTextTest, TheNextRowIsFoundWhateverItsCaseAndAfterTheLastOneTheFirst) {
    const ListRows rows = RowsOf({"Abba", "ABC", "Ärzte", "Beatles", ""});
    const auto find = [&](const char* text, std::int32_t from) {
        return RowStartingWith(rows, ListColumn::Interpret, text, from);
    };
    EXPECT_EQ(find("ab", 1), 1);
    EXPECT_EQ(find("ab", 2), 2);
    EXPECT_EQ(find("ab", 3), 1);
    EXPECT_EQ(find("ab", 0), 1);
    EXPECT_EQ(find("ab", 6), 1) << "after the last row";
    EXPECT_EQ(find("ä", 1), 3);
    EXPECT_EQ(find("a", 3), 1) << "an umlaut is a letter of its own";
    EXPECT_EQ(find("beatles!", 1), 0);
    EXPECT_EQ(find("X", 1), 0);
    EXPECT_EQ(RowStartingWith(rows, ListColumn::Title, "X", 2), 2);
    EXPECT_EQ(RowStartingWith(RowsOf({}), ListColumn::Interpret, "a", 1), 0);
}

} // namespace
} // namespace quavernet::test
