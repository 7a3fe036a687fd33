#include "tree/TreeDropTest.h"

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;

using DropTreeEntryTest = TreeDropTest;

TEST_F(DropTreeEntryTest, AnEntryThatIsMovedDownTakesTheTargetsPlace) {
    FillDense();
    const DropOutcome outcome = DropEntry("file102pos2", "file105pos5");
    EXPECT_THAT(
        statements,
        ElementsAre("Select Category_id from FileCategories where FileName = 'j5' and [Position] = 5 and "
                    "Parent = 'Jazz'",
                    "Select Category_id, FileCategory_id from FileCategories where FileName = 'j2' and "
                    "[Position] = 2 and Parent = 'Jazz'",
                    "Update FileCategories set [Position] = 0 where [Position] = 2 and Parent = 'Jazz' and "
                    "FileCategory_id = 102",
                    "Update FileCategories set [Position] = [Position] - 1 where ([Position] > 2 and "
                    "[Position] <= 5 and Parent = 'Jazz') and [Position] <> 0",
                    "Update FileCategories set [Position] = 5 where [Position] = 0 and Parent = 'Jazz' and "
                    "Filecategory_id = 102"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j3", "3 j4", "4 j5", "5 j2", "6 j6"));
    EXPECT_TRUE(outcome.Rebuild);
    EXPECT_TRUE(outcome.HadFileTarget);
    EXPECT_FALSE(outcome.FileAdded);
    EXPECT_EQ(outcome.SelectKey, "file102pos5");
}

TEST_F(DropTreeEntryTest, AnEntryThatIsMovedUpTakesTheTargetsPlace) {
    FillDense();
    const DropOutcome outcome = DropEntry("file105pos5", "file102pos2");
    EXPECT_THAT(
        statements,
        ElementsAre("Select Category_id from FileCategories where FileName = 'j2' and [Position] = 2 and "
                    "Parent = 'Jazz'",
                    "Select Category_id, FileCategory_id from FileCategories where FileName = 'j5' and "
                    "[Position] = 5 and Parent = 'Jazz'",
                    "Update FileCategories set [Position] = 0 where [Position] = 5 and Parent = 'Jazz' and "
                    "FileCategory_id = 105",
                    "Update FileCategories set [Position] = [Position] + 1 where ([Position] >= 2 and "
                    "[Position] < 5 and Parent = 'Jazz') and [Position] <> 0",
                    "Update FileCategories set [Position] = 2 where [Position] = 0 and Parent = 'Jazz' and "
                    "Filecategory_id = 105"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j5", "3 j2", "4 j3", "5 j4", "6 j6"));
    EXPECT_EQ(outcome.SelectKey, "file105pos2");
}

TEST_F(DropTreeEntryTest, AMoveInACategoryWithGapsShiftsWhatIsBetween) {
    FillGapped();
    DropEntry("file102pos3", "file105pos20");
    EXPECT_THAT(Entries("Jazz"), ElementsAre("2 j1", "6 j3", "7 j4", "19 j5", "20 j2", "21 j6"));
    LoadTree(tree);
    DropEntry("file105pos19", "file101pos2");
    EXPECT_THAT(Entries("Jazz"), ElementsAre("2 j5", "3 j1", "7 j3", "8 j4", "20 j2", "21 j6"));
}

TEST_F(DropTreeEntryTest, ACopyInsideACategoryMakesRoomAtTheTarget) {
    FillDense();
    const DropOutcome outcome = DropEntry("file102pos2", "file105pos5", true);
    EXPECT_THAT(
        statements,
        ElementsAre("Select Category_id from FileCategories where FileName = 'j5' and [Position] = 5 and "
                    "Parent = 'Jazz'",
                    "Select Category_id, FileCategory_id from FileCategories where FileName = 'j2' and "
                    "[Position] = 2 and Parent = 'Jazz'",
                    "Select File_id from FileCategories where FileName = 'j2' and [Position] = 2 and Parent "
                    "= 'Jazz'",
                    "Update FileCategories set [Position] = [Position] + 1 where [Position] >= 5 and Parent "
                    "= 'Jazz'",
                    "Insert Into FileCategories (File_id, Category_id, [Position], Parent, FileName) values "
                    "(102, 1, 5, 'Jazz', 'j2')"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "3 j3", "4 j4", "5 j2", "6 j5", "7 j6"));
    EXPECT_EQ(outcome.SelectKey, "file102pos5") << "the copy has another id, so no node of this key";
}

TEST_F(DropTreeEntryTest, ACopyInsideACategoryWithGapsMakesRoomAtTheTarget) {
    FillGapped();
    DropEntry("file105pos20", "file103pos7", true);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("2 j1", "3 j2", "7 j5", "8 j3", "9 j4", "21 j5", "22 j6"));
}

TEST_F(DropTreeEntryTest, ACopyOfANameWithAnApostropheFailsInsideItsCategoryAfterRoomWasMade) {
    FillDense();
    AddEntry(110, 1, "Jazz", "it's", 7);
    LoadTree(tree);
    const DropOutcome outcome = DropEntry("file110pos7", "file105pos5", true);
    EXPECT_FALSE(outcome.Rebuild);
    EXPECT_FALSE(drag.DragFromTree);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "3 j3", "4 j4", "6 j5", "7 j6", "8 it's"));
    EXPECT_EQ(
        statements.back(),
        "Update FileCategories set [Position] = [Position] + 1 where [Position] >= 5 and Parent = 'Jazz'");
}

TEST_F(DropTreeEntryTest, AMoveToAnotherCategoryMakesRoomThereAndClosesTheGapHere) {
    FillDense();
    const DropOutcome outcome = DropEntry("file102pos2", "file202pos2");
    EXPECT_THAT(
        statements,
        ElementsAre("Select Category_id from FileCategories where FileName = 'b2' and [Position] = 2 and "
                    "Parent = 'Blues'",
                    "Select Category_id, FileCategory_id from FileCategories where FileName = 'j2' and "
                    "[Position] = 2 and Parent = 'Jazz'",
                    "Select File_id from FileCategories where FileName = 'j2' and [Position] = 2 and Parent "
                    "= 'Jazz'",
                    "Update FileCategories set [Position] = [Position] + 1 where [Position] >= 2 and Parent "
                    "= 'Blues'",
                    "Update FileCategories set [Position] = [Position] - 1 where [Position] > 2 and Parent "
                    "= 'Jazz'",
                    "Update FileCategories set [Position] = 2, Category_id = 2, Parent = 'Blues' where "
                    "[Position] = 2 and Parent = 'Jazz' and Filename = 'j2' and FileCategory_id = 102"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j3", "3 j4", "4 j5", "5 j6"));
    EXPECT_THAT(Entries("Blues"), ElementsAre("1 b1", "2 j2", "3 b2", "4 b3"));
    EXPECT_EQ(outcome.SelectKey, "file102pos2");
    EXPECT_EQ(Value("Select Category_id from FileCategories where FileCategory_id = 102"), "2");
}

TEST_F(DropTreeEntryTest, AMoveBetweenCategoriesWithGapsShiftsByOne) {
    FillGapped();
    DropEntry("file103pos7", "file202pos9");
    EXPECT_THAT(Entries("Jazz"), ElementsAre("2 j1", "3 j2", "7 j4", "19 j5", "20 j6"));
    EXPECT_THAT(Entries("Blues"), ElementsAre("4 b1", "9 j3", "10 b2", "11 b3"));
}

TEST_F(DropTreeEntryTest, ACopyToAnotherCategoryLeavesTheSourceUntouched) {
    FillDense();
    const DropOutcome outcome = DropEntry("file102pos2", "file203pos3", true);
    EXPECT_THAT(
        statements,
        ElementsAre("Select Category_id from FileCategories where FileName = 'b3' and [Position] = 3 and "
                    "Parent = 'Blues'",
                    "Select Category_id, FileCategory_id from FileCategories where FileName = 'j2' and "
                    "[Position] = 2 and Parent = 'Jazz'",
                    "Select File_id from FileCategories where FileName = 'j2' and [Position] = 2 and Parent "
                    "= 'Jazz'",
                    "Update FileCategories set [Position] = [Position] + 1 where [Position] >= 3 and Parent "
                    "= 'Blues'",
                    "Insert Into FileCategories (File_id, Category_id, [Position], Parent, FileName) values "
                    "(102, 2, 3, 'Blues', 'j2')"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "3 j3", "4 j4", "5 j5", "6 j6"));
    EXPECT_THAT(Entries("Blues"), ElementsAre("1 b1", "2 b2", "3 j2", "4 b3"));
    LoadTree(tree);
    EXPECT_FALSE(tree.Contains(outcome.SelectKey)) << "the copy has an id of its own";
}

TEST_F(DropTreeEntryTest, ACopyBetweenCategoriesWithGapsMakesRoomAtTheTarget) {
    FillGapped();
    DropEntry("file103pos7", "file202pos9", true);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("2 j1", "3 j2", "7 j3", "8 j4", "20 j5", "21 j6"));
    EXPECT_THAT(Entries("Blues"), ElementsAre("4 b1", "9 j3", "10 b2", "11 b3"));
}

TEST_F(DropTreeEntryTest, ACopyToAnotherCategoryStoresEachApostropheDoubled) {
    FillDense();
    AddEntry(110, 1, "Jazz", "it's", 7);
    LoadTree(tree);
    EXPECT_TRUE(DropEntry("file110pos7", "file201pos1", true).Rebuild);
    EXPECT_EQ(statements.back(),
              "Insert Into FileCategories (File_id, Category_id, [Position], Parent, FileName) values (110, "
              "2, 1, 'Blues', 'it''''s')");
    EXPECT_THAT(Entries("Blues"), ElementsAre("1 it''s", "2 b1", "3 b2", "4 b3"));
}

TEST_F(DropTreeEntryTest, AMoveTakesANameWithAnApostrophe) {
    FillDense();
    AddEntry(110, 1, "Jazz", "it's", 7);
    LoadTree(tree);
    EXPECT_TRUE(DropEntry("file110pos7", "file201pos1").Rebuild);
    EXPECT_THAT(Entries("Blues"), ElementsAre("1 it's", "2 b1", "3 b2", "4 b3"));
}

TEST_F(DropTreeEntryTest, AMoveToACategoryGoesAfterTheCountOfItsEntries) {
    FillDense();
    const DropOutcome outcome = DropEntry("file102pos2", "CAT_Blues");
    EXPECT_THAT(
        statements,
        ElementsAre("Select Category_id from Categories where Category = 'Blues'",
                    "Update FileCategories set [Position] = 4, Category_id = 2, Parent = 'Blues' where "
                    "[Position] = 2 and Parent = 'Jazz' and FileName = 'j2' and Filecategory_id = 102",
                    "Update FileCategories set [Position] = [Position] - 1 where [Position] > 2 and Parent "
                    "= 'Jazz'"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j3", "3 j4", "4 j5", "5 j6"));
    EXPECT_THAT(Entries("Blues"), ElementsAre("1 b1", "2 b2", "3 b3", "4 j2"));
    EXPECT_TRUE(outcome.Rebuild);
    EXPECT_FALSE(outcome.HadFileTarget);
}

TEST_F(DropTreeEntryTest, AMoveToACategoryWithGapsMayMeetATakenPosition) {
    FillGapped();
    DropEntry("file103pos7", "CAT_Blues");
    EXPECT_THAT(Entries("Jazz"), ElementsAre("2 j1", "3 j2", "7 j4", "19 j5", "20 j6"));
    EXPECT_THAT(Entries("Blues"), ElementsAre("4 j3", "4 b1", "9 b2", "10 b3"));
}

TEST_F(DropTreeEntryTest, AnEntryOnItsOwnCategoryGoesToItsLastPlace) {
    FillDense();
    DropEntry("file102pos2", "CAT_Jazz");
    EXPECT_EQ(statements[1],
              "Update FileCategories set [Position] = 7, Category_id = 1, Parent = 'Jazz' where [Position] = "
              "2 and Parent = 'Jazz' and FileName = 'j2' and Filecategory_id = 102");
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j3", "3 j4", "4 j5", "5 j6", "6 j2"));
}

TEST_F(DropTreeEntryTest, AMoveToAnEmptyCategoryTakesPositionOne) {
    FillDense();
    DropEntry("file106pos6", "CAT_Empty");
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 j6"));
}

TEST_F(DropTreeEntryTest, ACategoryThatShowsTheNameOfTheEntrysOwnEndsTheDrop) {
    AddCategory(1, "Jazz (01:00)", "j", {1});
    AddCategory(2, "Jazz", "b", {1});
    LoadTree(tree);
    ASSERT_EQ(tree.Node("CAT_Jazz").Text, "Jazz (01:00)");
    const DropOutcome outcome = DropEntry("file101pos1", "CAT_Jazz");
    EXPECT_FALSE(outcome.Rebuild);
    EXPECT_FALSE(drag.DragFromTree);
    EXPECT_THAT(statements, ElementsAre());
    EXPECT_TRUE(DropEntry("file101pos1", "CAT_Jazz", true).Rebuild) << "a copy is not held back";
}

TEST_F(DropTreeEntryTest, ACopyToACategoryGoesAfterItsHighestPosition) {
    FillGapped();
    const DropOutcome outcome = DropEntry("file103pos7", "CAT_Blues", true);
    EXPECT_THAT(
        statements,
        ElementsAre("Select File_id from FileCategories where [Position] = 7 and Parent = 'Jazz'",
                    "Select Category_id from Categories where Category = 'Blues'",
                    "Select Max([Position]) from FileCategories where Parent = 'Blues'",
                    "Insert Into FileCategories (File_id, Category_id, [Position], Parent, FileName) values "
                    "(103, 2, 11, 'Blues', 'j3')"));
    EXPECT_THAT(Entries("Blues"), ElementsAre("4 b1", "9 b2", "10 b3", "11 j3"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("2 j1", "3 j2", "7 j3", "8 j4", "20 j5", "21 j6"));
    EXPECT_TRUE(outcome.Rebuild);
    EXPECT_FALSE(outcome.HadFileTarget);
}

TEST_F(DropTreeEntryTest, ACopyToADenseCategoryGoesToItsEnd) {
    FillDense();
    DropEntry("file103pos3", "CAT_Blues", true);
    DropEntry("file103pos3", "CAT_Jazz", true);
    EXPECT_THAT(Entries("Blues"), ElementsAre("1 b1", "2 b2", "3 b3", "4 j3"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "3 j3", "4 j4", "5 j5", "6 j6", "7 j3"));
}

TEST_F(DropTreeEntryTest, ACopyToAnEmptyCategoryTakesPositionOne) {
    FillDense();
    DropEntry("file103pos3", "CAT_Empty", true);
    EXPECT_THAT(Entries("Empty"), ElementsAre("1 j3"));
}

TEST_F(DropTreeEntryTest, ACopyOfANameWithAnApostropheToACategoryFails) {
    FillDense();
    AddEntry(110, 1, "Jazz", "it's", 7);
    LoadTree(tree);
    const auto before = EveryEntry();
    EXPECT_FALSE(DropEntry("file110pos7", "CAT_Blues", true).Rebuild);
    EXPECT_EQ(EveryEntry(), before);
    AddEntry(111, 1, "Jazz", "it''s", 8);
    LoadTree(tree);
    EXPECT_FALSE(DropEntry("file111pos8", "CAT_Blues", true).Rebuild) << "two in a row are none either";
    EXPECT_THAT(statements.back(), ::testing::StartsWith("Select Max(")) << "the insert is not even sent";
}

TEST_F(DropTreeEntryTest, AnEntryOnAnEntryOfTheSameTextIsLeftAlone) {
    FillDense();
    AddEntry(210, 2, "Blues", "j2", 4);
    LoadTree(tree);
    const auto before = EveryEntry();
    const DropOutcome outcome = DropEntry("file102pos2", "file210pos4");
    EXPECT_FALSE(outcome.Rebuild);
    EXPECT_TRUE(drag.DragFromTree) << "left, and not ended";
    EXPECT_THAT(statements, ElementsAre());
    EXPECT_FALSE(DropEntry("file102pos2", "file102pos2").Rebuild);
    EXPECT_EQ(EveryEntry(), before);
    AddEntry(107, 2, "Jazz", "j2", 7);
    LoadTree(tree);
    EXPECT_FALSE(DropEntry("file102pos2", "file107pos7").Rebuild) << "two entries of one category";
    EXPECT_THAT(statements, ElementsAre());
}

TEST_F(DropTreeEntryTest, ADraggedCategoryMovesNowhere) {
    FillDense();
    const auto before = EveryEntry();
    for (const bool control : {false, true}) {
        for (const char* target : {"file202pos2", "CAT_Blues", "CAT_Empty", "file102pos2"}) {
            Press("CAT_Jazz");
            EXPECT_EQ(drag.DragPosition, "T_Jazz");
            const DropOutcome outcome = Drop({KnownPath("j1"), KnownPath("j2")}, target, control);
            EXPECT_FALSE(outcome.Rebuild) << target;
            EXPECT_FALSE(drag.DragFromTree) << "ended by a failure";
        }
    }
    EXPECT_EQ(EveryEntry(), before);
}

TEST_F(DropTreeEntryTest, ACategoryWhoseNameLooksLikeAKeyOrAConditionMovesNothingEither) {
    FillDense();
    AddCategory(5, "nt", "n", {1, 2, 3}); // What a category's parent is taken for.
    int id = 6;
    for (const char* name : {"1pos1 or 1 or 1", "1 or 1pos1", "12pos1", "101pos1"}) {
        AddCategory(id, name, "x" + std::to_string(id), {1});
        ++id;
        LoadTree(tree);
        const auto before = EveryEntry();
        for (const bool control : {false, true}) {
            for (const char* target : {"CAT_Blues", "CAT_Empty", "file202pos2", "file501pos1"}) {
                Press(CategoryKey(name));
                EXPECT_FALSE(Drop({KnownPath("x1")}, target, control).Rebuild) << name << " on " << target;
            }
        }
        EXPECT_EQ(EveryEntry(), before) << name;
    }
}

TEST_F(DropTreeEntryTest, WithoutASelectedEntryNothingMoves) {
    FillDense();
    const auto before = EveryEntry();
    for (const char* selected : {"CAT_Jazz", "Parent"}) {
        for (const char* target : {"file105pos5", "CAT_Blues"}) {
            Press("file102pos2");
            tree.Select(selected);
            EXPECT_FALSE(Drop({}, target).Rebuild) << selected << " on " << target;
        }
    }
    EXPECT_EQ(EveryEntry(), before);
    Press("file102pos2");
    tree.Select("CAT_Jazz");
    EXPECT_TRUE(Drop({}, "file202pos2", true).Rebuild) << "a copy does not ask for it";
}

TEST_F(DropTreeEntryTest, WithoutASelectedEntryRoomIsMadeInTheOtherCategoryBeforeTheMoveFails) {
    FillDense();
    const std::size_t all = EveryEntry().size();
    Press("file102pos2");
    tree.Select("CAT_Jazz");
    EXPECT_FALSE(Drop({}, "file202pos2").Rebuild);
    EXPECT_EQ(EveryEntry().size(), all);
    const auto position = [this](int id) {
        return Rows("Select [Position] from FileCategories where FileCategory_id = " + std::to_string(id))
            .at(0);
    };
    EXPECT_EQ(position(202), "3") << "room before the target";
    EXPECT_EQ(position(103), "2") << "the gap of the source is closed";
    EXPECT_EQ(position(102), "2") << "the entry itself stays";
}

TEST_F(DropTreeEntryTest, AnotherSelectedEntryThanThePressedOneIsNotMoved) {
    FillDense();
    Press("file102pos2");
    tree.Select("file104pos4");
    Drop({}, "CAT_Blues");
    EXPECT_EQ(
        statements[1],
        "Update FileCategories set [Position] = 4, Category_id = 2, Parent = 'Blues' where [Position] = "
        "2 and Parent = 'Jazz' and FileName = 'j2' and Filecategory_id = 104");
    EXPECT_THAT(Entries("Blues"), ElementsAre("1 b1", "2 b2", "3 b3"));
}

TEST_F(DropTreeEntryTest, AnEntryOnOneOfTheSamePositionMovesDownAndShiftsNothing) {
    FillDense();
    AddEntry(110, 1, "Jazz", "twin", 2);
    LoadTree(tree);
    EXPECT_TRUE(DropEntry("file110pos2", "file102pos2").Rebuild);
    EXPECT_EQ(statements[3],
              "Update FileCategories set [Position] = [Position] - 1 where ([Position] > 2 and [Position] <= "
              "2 and Parent = 'Jazz') and [Position] <> 0");
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "2 twin", "3 j3", "4 j4", "5 j5", "6 j6"));
}

TEST_F(DropTreeEntryTest, NamesWithApostrophesAreQuotedInEachMove) {
    FillDense();
    AddEntry(110, 1, "Jazz", "it's", 7);
    AddEntry(111, 1, "Jazz", "that's", 8);
    LoadTree(tree);
    EXPECT_TRUE(DropEntry("file110pos7", "file111pos8").Rebuild);
    EXPECT_THAT(statements[0], ::testing::HasSubstr("FileName = 'that''s'"));
    EXPECT_THAT(statements[1], ::testing::HasSubstr("FileName = 'it''s'"));
    EXPECT_EQ(Entries("Jazz").back(), "8 it's");
    LoadTree(tree);
    EXPECT_TRUE(DropEntry("file110pos8", "CAT_Blues").Rebuild);
    EXPECT_THAT(statements[1], ::testing::HasSubstr("FileName = 'it''s'"));
    EXPECT_EQ(Entries("Blues").back(), "4 it's");
}

TEST_F(DropTreeEntryTest, ACategoryWithAnApostropheIsNoTargetAndNoSource) {
    FillDense();
    Execute("Insert into Categories (Category_id, Category) values (9, 'it''s')");
    AddFile(901, "a");
    AddFile(902, "b");
    Execute(
        "Insert into FileCategories (FileCategory_id, File_id, Category_id, [Position], Parent, Filename) "
        "values (901, 901, 9, 1, 'it''s', 'a'), (902, 902, 9, 2, 'it''s', 'b')");
    LoadTree(tree);
    const auto before = EveryEntry();
    for (const bool control : {false, true}) {
        for (const char* target : {"file901pos1", "CAT_it's"}) {
            EXPECT_FALSE(DropEntry("file102pos2", target, control).Rebuild) << target;
        }
        for (const char* target : {"file901pos1", "file202pos2", "CAT_Blues"}) {
            EXPECT_FALSE(DropEntry("file902pos2", target, control).Rebuild) << target;
        }
    }
    EXPECT_EQ(EveryEntry(), before);
}

TEST_F(DropTreeEntryTest, ARenamedTargetOrSourceEndsTheDropBeforeAnyChange) {
    FillDense();
    Execute("Update Files Set Name = 'new' where File_id in (102, 105)");
    LoadTree(tree);
    const auto before = EveryEntry();
    EXPECT_FALSE(DropEntry("file103pos3", "file105pos5").Rebuild);
    EXPECT_FALSE(DropEntry("file102pos2", "file103pos3").Rebuild);
    EXPECT_EQ(EveryEntry(), before);
}

TEST_F(DropTreeEntryTest, AnEntryWhoseFileIsNotFoundIsDraggedWithoutFilesAndMoves) {
    FillDense();
    Execute("Update Files Set Path = 'gone' where File_id = 102");
    Press("file102pos2");
    EXPECT_TRUE(Drop({}, "file105pos5").Rebuild);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j3", "3 j4", "4 j5", "5 j2", "6 j6"));
}

TEST_F(DropTreeEntryTest, IdsBeyond16BitsEndMovesAndCopiesOntoEntriesBeforeAnyChange) {
    FillDense();
    AddEntry(32767, 1, "Jazz", "last", 7);
    AddEntry(32768, 1, "Jazz", "over", 8);
    LoadTree(tree);
    EXPECT_TRUE(DropEntry("file32767pos7", "file102pos2").Rebuild);
    LoadTree(tree);
    const auto before = EveryEntry();
    for (const bool control : {false, true}) {
        EXPECT_FALSE(DropEntry("file32768pos8", "file101pos1", control).Rebuild);
        EXPECT_FALSE(DropEntry("file32768pos8", "file202pos2", control).Rebuild);
    }
    EXPECT_EQ(EveryEntry(), before);
    EXPECT_TRUE(DropEntry("file32768pos8", "CAT_Blues").Rebuild) << "to a category it is not read";
}

} // namespace
} // namespace quavernet::test
