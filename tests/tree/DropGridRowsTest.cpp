#include "tree/TreeDropTest.h"

namespace quavernet::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Not;
using ::testing::StartsWith;

using DropGridRowsTest = TreeDropTest;

TEST_F(DropGridRowsTest, OneRowTakesTheEntrysPlace) {
    FillDense();
    SelectRows({"b1"});
    const DropOutcome outcome = Drop({KnownPath("b1")}, "file104pos4");
    EXPECT_THAT(
        statements,
        ElementsAre("Update FileCategories set [Position] = [Position] + 1 where ([Position] >= 4 and Parent "
                    "= 'Jazz')",
                    "Select File_id, Name from Files where Path = '/m/b1'",
                    "Select Category_id, Category from Categories where Category = 'Jazz'",
                    "Insert Into FileCategories (File_id, Category_id, [Position], Parent, FileName) values "
                    "(201, 1, 4, 'Jazz', 'b1')",
                    "Select Max(FileCategory_id) from FileCategories"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "3 j3", "4 b1", "5 j4", "6 j5", "7 j6"));
    EXPECT_TRUE(outcome.Rebuild);
    EXPECT_TRUE(outcome.HadFileTarget);
    EXPECT_FALSE(outcome.FileAdded);
    EXPECT_EQ(outcome.SelectKey, "file204pos4");
    LoadTree(tree);
    EXPECT_TRUE(tree.Contains(outcome.SelectKey)) << "the last row that came in";
}

TEST_F(DropGridRowsTest, SeveralRowsMoveTheEntriesOnceByTheirCount) {
    FillDense();
    SelectRows({"b1", "j1", "b3"});
    const DropOutcome outcome = Drop({KnownPath("b1"), KnownPath("j1"), KnownPath("b3")}, "file104pos4");
    ASSERT_EQ(statements.size(), 11U);
    EXPECT_EQ(statements[0],
              "Update FileCategories set [Position] = [Position] + 3 where ([Position] >= 4 and Parent = "
              "'Jazz')");
    EXPECT_EQ(statements[9],
              "Insert Into FileCategories (File_id, Category_id, [Position], Parent, FileName) "
              "values (203, 1, 6, 'Jazz', 'b3')");
    EXPECT_THAT(Entries("Jazz"),
                ElementsAre("1 j1", "2 j2", "3 j3", "4 b1", "5 j1", "6 b3", "7 j4", "8 j5", "9 j6"));
    EXPECT_EQ(outcome.SelectKey, "file206pos6");
}

TEST_F(DropGridRowsTest, RowsComeInTheOrderInWhichTheyWereSelected) {
    FillDense();
    SelectRows({"b1", "b2", "b3"});
    mainModule.SelectedRows.Clear();
    for (const int row : {3, 1}) {
        mainModule.SelectedRows.Add(row);
    }
    Drop({KnownPath("b3"), KnownPath("b1")}, "CAT_Empty");
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 b3", "2 b1"));
}

TEST_F(DropGridRowsTest, InACategoryWithGapsTheEntriesFromTheTargetOnMove) {
    FillGapped();
    SelectRows({"b1"});
    Drop({KnownPath("b1")}, "file103pos7");
    EXPECT_THAT(Entries("Jazz"), ElementsAre("2 j1", "3 j2", "7 b1", "8 j3", "9 j4", "21 j5", "22 j6"));
    LoadTree(tree);
    SelectRows({"b2", "b3"}); // Three rows are selected now.
    Drop({KnownPath("b1"), KnownPath("b2"), KnownPath("b3")}, "file105pos21");
    EXPECT_THAT(Entries("Jazz"), ElementsAre("2 j1", "3 j2", "7 b1", "8 j3", "9 j4", "21 b1", "22 b2",
                                             "23 b3", "24 j5", "25 j6"));
}

TEST_F(DropGridRowsTest, ACategoryTakesARowAfterTheCountOfItsEntries) {
    FillDense();
    SelectRows({"b1"});
    const DropOutcome outcome = Drop({KnownPath("b1")}, "CAT_Jazz");
    EXPECT_THAT(
        statements,
        ElementsAre("Select File_id, Name from Files where Path = '/m/b1'",
                    "Select Category_id, Category from Categories where Category = 'Jazz'",
                    "Insert Into FileCategories (File_id, Category_id, [Position], Parent, FileName) values "
                    "(201, 1, 7, 'Jazz', 'b1')"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "3 j3", "4 j4", "5 j5", "6 j6", "7 b1"));
    EXPECT_TRUE(outcome.Rebuild);
    EXPECT_FALSE(outcome.HadFileTarget);
}

TEST_F(DropGridRowsTest, ACategoryTakesSeveralRowsOneAfterTheOther) {
    FillDense();
    SelectRows({"j1", "j2", "j3"});
    Drop({KnownPath("j1"), KnownPath("j2"), KnownPath("j3")}, "CAT_Blues");
    EXPECT_EQ(statements.size(), 9U);
    EXPECT_THAT(Entries("Blues"), ElementsAre("1 b1", "2 b2", "3 b3", "4 j1", "5 j2", "6 j3"));
}

TEST_F(DropGridRowsTest, ACategoryWithGapsMayGiveATakenPosition) {
    FillGapped();
    SelectRows({"j1", "j2"});
    Drop({KnownPath("j1"), KnownPath("j2")}, "CAT_Blues");
    EXPECT_THAT(Entries("Blues"), ElementsAre("4 b1", "4 j1", "5 j2", "9 b2", "10 b3"));
}

TEST_F(DropGridRowsTest, TheControlKeyMakesNoDifference) {
    FillDense();
    SelectRows({"b1"});
    Drop({KnownPath("b1")}, "file104pos4", true);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "3 j3", "4 b1", "5 j4", "6 j5", "7 j6"));
}

TEST_F(DropGridRowsTest, PathsAndNamesWithApostrophesAreQuoted) {
    FillDense();
    AddFile(900, "it's");
    SelectRows({"it's"});
    Drop({KnownPath("it's")}, "CAT_Empty");
    EXPECT_EQ(statements.front(), "Select File_id, Name from Files where Path = '/m/it''s'");
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 it's"));
    drag.GridDragging = true;
    LoadTree(tree);
    Drop({KnownPath("it's")}, "file301pos1");
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 it's"))
        << "the entry's text: a press on the list has forgotten the drag text, so this one is no guard";
}

TEST_F(DropGridRowsTest, ARowThatTheLibraryHasForgottenEndsTheDropAndKeepsWhatWasWritten) {
    FillDense();
    SelectRows({"b1", "gone", "b2"});
    const DropOutcome outcome = Drop({KnownPath("b1"), "x", "y"}, "file101pos1");
    EXPECT_FALSE(outcome.Rebuild);
    EXPECT_FALSE(drag.GridDragging);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 b1", "4 j1", "5 j2", "6 j3", "7 j4", "8 j5", "9 j6"));
}

TEST_F(DropGridRowsTest, IdsBeyond16BitsEndADropOnAnEntryAfterItsInserts) {
    FillDense();
    AddEntry(32767, 2, "Blues", "last", 4);
    LoadTree(tree);
    SelectRows({"b1"});
    EXPECT_FALSE(Drop({KnownPath("b1")}, "file101pos1").Rebuild);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 b1", "2 j1", "3 j2", "4 j3", "5 j4", "6 j5", "7 j6"));
    drag.GridDragging = true;
    EXPECT_TRUE(Drop({KnownPath("b1")}, "CAT_Empty").Rebuild) << "the id is not read on a category";
}

TEST_F(DropGridRowsTest, TheLastPositionIs32767) {
    FillDense();
    AddEntry(110, 1, "Jazz", "far", 32766);
    LoadTree(tree);
    SelectRows({"b1", "b2"});
    EXPECT_TRUE(Drop({KnownPath("b1"), KnownPath("b2")}, "file110pos32766").Rebuild);
    LoadTree(tree);
    drag.GridDragging = true;
    EXPECT_FALSE(Drop({KnownPath("b1"), KnownPath("b2")}, "file208pos32767").Rebuild);
}

TEST_F(DropGridRowsTest, ACategoryWithAnApostropheTakesNoRow) {
    FillDense();
    Execute("Insert into Categories (Category_id, Category) values (9, 'it''s')");
    AddFile(901, "a");
    Execute(
        "Insert into FileCategories (FileCategory_id, File_id, Category_id, [Position], Parent, Filename) "
        "values (901, 901, 9, 1, 'it''s', 'a')");
    LoadTree(tree);
    SelectRows({"b1"});
    EXPECT_FALSE(Drop({KnownPath("b1")}, "CAT_it's").Rebuild);
    EXPECT_THAT(statements, Each(Not(StartsWith("Insert"))));
    drag.GridDragging = true;
    EXPECT_FALSE(Drop({KnownPath("b1")}, "file901pos1").Rebuild);
    EXPECT_THAT(statements, ElementsAre()) << "the shift is not sent either";
}

TEST_F(DropGridRowsTest, ARowWithoutAPathEndsTheDrop) {
    FillDense();
    SelectRows({"b1"});
    mainModule.SelectedRows.Add(99);
    EXPECT_FALSE(Drop({KnownPath("b1")}, "CAT_Empty").Rebuild);
    EXPECT_FALSE(drag.GridDragging);
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 b1"));
}

TEST_F(DropGridRowsTest, WithoutSelectedRowsNothingIsWrittenButTheTreeIsRebuilt) {
    FillDense();
    const auto before = EveryEntry();
    drag.GridDragging = true;
    EXPECT_TRUE(Drop({}, "CAT_Jazz").Rebuild);
    EXPECT_TRUE(Drop({}, "file101pos1").Rebuild);
    EXPECT_EQ(EveryEntry(), before);
}

} // namespace
} // namespace quavernet::test
