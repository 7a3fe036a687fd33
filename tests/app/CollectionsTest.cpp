#include "app/Collections.h"

#include <gtest/gtest.h>

namespace quavernet::test {

namespace {

class TwoTexts : public RowTextSource {
public:
    std::size_t Count() const override { return 2; }
    std::string_view Text(std::size_t row) const override { return row == 1 ? "first" : "second"; }
};

int ErrorOfItem(const RowTexts& texts, long row) {
    try {
        texts.Item(row);
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

} // namespace

TEST(RowTextsTest, RowsCountFromOne) {
    RowTexts texts;
    texts.Add("a");
    texts.Add("");
    texts.Add("bcd");
    EXPECT_EQ(texts.Count(), 3u);
    EXPECT_EQ(texts.Item(1), "a");
    EXPECT_EQ(texts.Item(2), "");
    EXPECT_EQ(texts.Item(3), "bcd");
}

TEST(RowTextsTest, ARowThatIsNotThereFails) {
    RowTexts texts;
    EXPECT_EQ(ErrorOfItem(texts, 1), ErrorNumber::InvalidProcedureCall);
    texts.Add("a");
    EXPECT_EQ(ErrorOfItem(texts, 0), ErrorNumber::InvalidProcedureCall);
    EXPECT_EQ(ErrorOfItem(texts, -1), ErrorNumber::InvalidProcedureCall);
    EXPECT_EQ(ErrorOfItem(texts, 2), ErrorNumber::InvalidProcedureCall);
    EXPECT_EQ(ErrorOfItem(texts, 1), 0);
}

TEST(RowTextsTest, AShownSourceReplacesAllAndTakesAddedRowsAfterIt) {
    RowTexts texts;
    texts.Add("old");
    texts.Show(std::make_shared<TwoTexts>());
    EXPECT_EQ(texts.Count(), 2u);
    texts.Add("third");
    EXPECT_EQ(texts.Item(1), "first");
    EXPECT_EQ(texts.Item(2), "second");
    EXPECT_EQ(texts.Item(3), "third");
    EXPECT_EQ(ErrorOfItem(texts, 4), ErrorNumber::InvalidProcedureCall);
    texts.Clear();
    EXPECT_EQ(texts.Count(), 0u);
    EXPECT_EQ(ErrorOfItem(texts, 1), ErrorNumber::InvalidProcedureCall);
}

TEST(RowNumbersTest, KeepTheOrderOfTheirArrivalAndNoDoubles) {
    RowNumbers rows;
    rows.Add(5);
    rows.Add(2);
    rows.Add(5);
    EXPECT_EQ(rows.Rows(), (std::vector<std::int32_t>{5, 2}));
    EXPECT_TRUE(rows.Contains(2));
    rows.Remove(5);
    rows.Remove(7);
    EXPECT_EQ(rows.Rows(), (std::vector<std::int32_t>{2}));
    rows.Clear();
    EXPECT_EQ(rows.Count(), 0u);
    EXPECT_FALSE(rows.Contains(2));
}

TEST(RowTextsTest, AReplacedTextIsReadInTheRowsPlaceWhateverItCameFrom) {
    const auto source = std::make_shared<TwoTexts>();
    RowTexts texts;
    texts.Show(source);
    texts.Add("added");
    texts.Replace(2, "other");
    texts.Replace(3, "");
    texts.Replace(3, "longer than it was");
    EXPECT_EQ(texts.Item(1), "first");
    EXPECT_EQ(texts.Item(2), "other");
    EXPECT_EQ(texts.Item(3), "longer than it was");
    EXPECT_EQ(texts.Count(), 3U);
    EXPECT_EQ(source->Text(2), "second");

    texts.Show(source);
    EXPECT_EQ(texts.Item(2), "second") << "a new list knows nothing of it";
    for (const long row : {0L, 3L, -1L}) {
        EXPECT_THROW(texts.Replace(row, "x"), RuntimeError);
    }
}

TEST(KeyCollectionTest, ASecondAddOfTheSameKeyIsIgnored) {
    KeyCollection keys;
    keys.Add("CAT_Rock");
    keys.Add("Parent");
    keys.Add("CAT_Rock");
    EXPECT_EQ(keys.Keys(), (std::vector<std::string>{"CAT_Rock", "Parent"}));
    keys.Remove("CAT_Rock");
    EXPECT_EQ(keys.Keys(), (std::vector<std::string>{"Parent"}));
}

} // namespace quavernet::test
