#include "tree/TreeDropTest.h"

#include "tree/CategoryEditor.h"
#include "tree/PlaceNow.h"
#include "tree/TreeDelete.h"

#include <functional>
#include <memory>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Calls back when the facts of a dropped file are asked for.
class FileHook : public ChosenVolumes {
public:
    FileFacts GetFile(const std::string& path) override {
        onGet();
        return ChosenVolumes::GetFile(path);
    }
    std::function<void()> onGet;
};

/// The tree of one program, which another one changes without its knowledge.
class TwoTreesTest : public TreeDropTest {
protected:
    TwoTreesTest() : other(OpenLibrary(libraryPath)) {
        FillDense();
        Connection().Commit();
    }

    void Other(std::initializer_list<const char*> sent) {
        for (const char* statement : sent) {
            other->Execute(statement);
        }
        other->Commit();
    }
    void OtherDeletes(const std::string& id, const std::string& category, const std::string& position) {
        other->Execute("Delete from FileCategories where FileCategory_id = " + id);
        other->Execute("Update FileCategories set [Position] = [Position] - 1 where [Position] > " +
                       position + " and Parent = '" + category + "'");
        other->Commit();
    }
    void OtherMakesRoomAt(const std::string& category, const std::string& categoryId,
                          const std::string& position) {
        other->Execute("Update FileCategories set [Position] = [Position] + 1 where [Position] >= " +
                       position + " and Parent = '" + category + "'");
        other->Execute("Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) "
                       "values (101, " +
                       categoryId + ", " + position + ", '" + category + "', 'other')");
        other->Commit();
    }

    std::unique_ptr<ADODB::Connection> other;
};

TEST_F(TwoTreesTest, AnEntryGoesToAnotherCategoryFromWhereItIsNow) {
    Press("file104pos4");
    OtherDeletes("102", "Jazz", "2");
    EXPECT_TRUE(Drop({drag.DragFilePath}, "CAT_Blues").Rebuild);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j3", "3 j5", "4 j6"));
    EXPECT_THAT(Entries("Blues"), ElementsAre("1 b1", "2 b2", "3 b3", "4 j4"));
}

TEST_F(TwoTreesTest, AnEntryGoesToTheEndThatTheCategoryHasNow) {
    Press("file104pos4");
    OtherMakesRoomAt("Blues", "2", "2");
    Drop({drag.DragFilePath}, "CAT_Blues");
    EXPECT_THAT(Entries("Blues"), ElementsAre("1 b1", "2 other", "3 b2", "4 b3", "5 j4"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "3 j3", "4 j5", "5 j6"));
}

TEST_F(TwoTreesTest, AnEntryMovesInsideItsCategoryBetweenTheNewPlaces) {
    Press("file102pos2");
    OtherMakesRoomAt("Jazz", "1", "1");
    Drop({drag.DragFilePath}, "file105pos5");
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 other", "2 j1", "3 j3", "4 j4", "5 j5", "6 j2", "7 j6"));
}

TEST_F(TwoTreesTest, AnEntryIsCopiedAndMovedOntoAnEntryOfAnotherCategoryWhereThatIsNow) {
    Press("file102pos2");
    OtherMakesRoomAt("Blues", "2", "1");
    OtherMakesRoomAt("Jazz", "1", "1");
    Drop({drag.DragFilePath}, "file202pos2", true);
    EXPECT_THAT(Entries("Blues"), ElementsAre("1 other", "2 b1", "3 j2", "4 b2", "5 b3"));
    Drop({drag.DragFilePath}, "file202pos2");
    EXPECT_THAT(Entries("Blues"), ElementsAre("1 other", "2 b1", "3 j2", "4 j2", "5 b2", "6 b3"));
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 other", "2 j1", "3 j3", "4 j4", "5 j5", "6 j6"));
}

TEST_F(TwoTreesTest, RowsOfTheListGoWhereTheEntryIsNow) {
    SelectRows({"b1", "b2"});
    OtherDeletes("101", "Jazz", "1");
    Drop({KnownPath("b1"), KnownPath("b2")}, "file104pos4");
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j2", "2 j3", "3 b1", "4 b2", "5 j4", "6 j5", "7 j6"));
}

TEST_F(TwoTreesTest, WhereTheNodeIsGoneNothingIsDropped) {
    Press("file104pos4");
    OtherDeletes("202", "Blues", "2");
    Other({"Delete from Categories where Category = 'Empty'"});
    const std::vector<std::string> before = EveryEntry();
    EXPECT_TRUE(Drop({drag.DragFilePath}, "file202pos2").Rebuild) << "the tree shows what there is";
    EXPECT_TRUE(Drop({drag.DragFilePath}, "CAT_Empty").Rebuild);
    EXPECT_EQ(EveryEntry(), before);
}

TEST_F(TwoTreesTest, AnEntryThatIsGoneOrInAnotherCategoryIsNotMoved) {
    Press("file104pos4");
    Other({"Update FileCategories set Category_id = 2, Parent = 'Blues', [Position] = 4 where "
           "FileCategory_id = 104",
           "Update FileCategories set [Position] = [Position] - 1 where [Position] > 4 and Parent = 'Jazz'"});
    const std::vector<std::string> before = EveryEntry();
    EXPECT_TRUE(Drop({drag.DragFilePath}, "CAT_Empty").Rebuild);
    EXPECT_TRUE(Drop({drag.DragFilePath}, "file102pos2").Rebuild);
    EXPECT_EQ(EveryEntry(), before);
}

TEST_F(TwoTreesTest, FilesGoBeforeTheirEntryWhereverItGoesWhileTheyAreRead) {
    WriteMp3("1.mp3");
    WriteMp3("2.mp3");
    FileHook disk;
    services.fileSystem = &disk;
    int reads = 0;
    disk.onGet = [&] {
        if (++reads == 1) {
            OtherMakesRoomAt("Jazz", "1", "1");
        } else {
            OtherDeletes("101", "Jazz", "2");
        }
    };
    Drop({music / "1.mp3", music / "2.mp3"}, "file103pos3");
    EXPECT_EQ(reads, 2);
    // Room for two is made twice, as ever: a gap of two remains.
    EXPECT_THAT(Entries("Jazz"),
                ElementsAre("1 other", "2 j2", "3 1.mp3", "4 2.mp3", "7 j3", "8 j4", "9 j5", "10 j6"));
}

TEST_F(TwoTreesTest, AFileTakesNoOtherEntrysPlaceWhenItsEntryIsMovedWhileItIsRead) {
    WriteMp3("1.mp3");
    FileHook disk;
    services.fileSystem = &disk;
    disk.onGet = [&] {
        Other(
            {"Update FileCategories set [Position] = 0 where FileCategory_id = 102",
             "Update FileCategories set [Position] = [Position] - 1 where [Position] > 3 and [Position] <= 6 "
             "and Parent = 'Jazz'",
             "Update FileCategories set [Position] = 6 where FileCategory_id = 102"});
    };
    Drop({music / "1.mp3"}, "file102pos2");
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "3 j3", "4 j4", "5 j5", "6 1.mp3", "7 j2", "8 j6"))
        << "where the room was there is a gap";
}

TEST_F(TwoTreesTest, TheOtherHasToWaitWhileKnownFilesAreDropped) {
    AddFile(5001, "x.mp3");
    Connection().Commit();
    other->Query("Pragma busy_timeout = 0");
    // Each statement looks whether a commit is due, and it always is.
    mainModule.Connection = CreateConnection(services.regional, std::chrono::milliseconds(0));
    Connection().Open(ConnectionStart + libraryPath);
    RecordingConnection& sent = Record();
    LoadTree(tree);
    int refused = 0;
    int statementsBefore = 0;
    sent.onStatement = [&](const std::string& statement) {
        if (statement.starts_with("Update FileCategories") || statementsBefore > 0) {
            ++statementsBefore;
        }
        if (statementsBefore > 1) {
            EXPECT_THROW(other->Execute("Update FileCategories set [Position] = 9"), RuntimeError);
            ++refused;
        }
    };
    TreeDrop({{KnownPath("x.mp3")}, "file102pos2", false}, drag, tree, driver, work);
    EXPECT_EQ(refused, 3) << "two looks and the insert";
}

TEST_F(TwoTreesTest, FilesGoToTheEndThatTheCategoryHasWhenTheyHaveBeenRead) {
    WriteMp3("1.mp3");
    WriteMp3("2.mp3");
    FileHook disk;
    services.fileSystem = &disk;
    disk.onGet = [&] { OtherMakesRoomAt("Blues", "2", "1"); };
    Drop({music / "1.mp3", music / "2.mp3"}, "CAT_Blues");
    EXPECT_THAT(Entries("Blues"),
                ElementsAre("1 other", "2 other", "3 b1", "4 b2", "5 b3", "6 1.mp3", "7 2.mp3"));
}

TEST_F(TwoTreesTest, AFileWhoseCategoryGoesWhileItIsReadEndsTheDropWithoutAFailure) {
    WriteMp3("1.mp3");
    FileHook disk;
    services.fileSystem = &disk;
    disk.onGet = [&] { Other({"Delete from Categories where Category = 'Empty'"}); };
    EXPECT_TRUE(Drop({music / "1.mp3"}, "CAT_Empty").FileAdded);
    EXPECT_THAT(Entries("Empty"), IsEmpty());
}

TEST_F(TwoTreesTest, WhatIsLeftOfADropThatEndsEarlyIsTold) {
    WriteMp3("1.mp3");
    WriteMp3("2.mp3");
    FileHook disk;
    services.fileSystem = &disk;
    disk.onGet = [&] { Other({"Delete from Categories where Category = 'Empty'"}); };
    EXPECT_THAT(Drop({music / "1.mp3", music / "2.mp3"}, "CAT_Empty").Word,
                ::testing::HasSubstr("1 neu, 1 übergangen"));
}

TEST_F(TwoTreesTest, ACategoryThatIsMadeAgainWhileAFileIsReadTakesItByItsNewKey) {
    WriteMp3("1.mp3");
    FileHook disk;
    services.fileSystem = &disk;
    disk.onGet = [&] {
        Other({"Delete from Categories where Category = 'Empty'",
               "Insert into Categories (Category_id, Category) values (77, 'Empty')"});
    };
    Drop({music / "1.mp3"}, "CAT_Empty");
    EXPECT_EQ(Value("Select Category_id from FileCategories where Parent = 'Empty'"), "77");
}

TEST_F(TwoTreesTest, WhereNoPlaceIsLeftBeforeTheEntryTheDropEndsWithoutAFailure) {
    WriteMp3("1.mp3");
    WriteMp3("2.mp3");
    FileHook disk;
    services.fileSystem = &disk;
    disk.onGet = [&] {
        Other({"Update FileCategories set [Position] = 32767 where FileCategory_id = 102",
               "Update FileCategories set [Position] = 32765 where FileCategory_id = 106"});
    };
    EXPECT_NO_THROW(Drop({music / "1.mp3", music / "2.mp3"}, "file102pos2"));
    EXPECT_EQ(Value("Select Count(*) from FileCategories where Filename = '1.mp3'"), "0");
}

TEST_F(TwoTreesTest, AnEntryThatNamesAnotherParentKeepsItsPlaceForTheDrop) {
    // As a numbered category of a playlist has them: the places are made under another name.
    Execute("Update FileCategories set Parent = 'Blues' where FileCategory_id = 103");
    Connection().Commit();
    LoadTree(tree);
    WriteMp3("1.mp3");
    FileHook disk;
    services.fileSystem = &disk;
    disk.onGet = [&] { Other({"Insert into Categories (Category) values ('Rock')"}); };
    Drop({music / "1.mp3"}, "file103pos3");
    EXPECT_EQ(Value("Select [Position] from FileCategories where Filename = '1.mp3'"), "3");
}

TEST_F(TwoTreesTest, APlaylistWhoseCategoryGoesWhileAFileIsReadLeavesNoEntryWithoutOne) {
    WriteMp3("1.mp3");
    WriteMp3("2.mp3");
    Write("Party.m3u", (music / "1.mp3") + "\n" + (music / "2.mp3") + "\n");
    FileHook disk;
    services.fileSystem = &disk;
    disk.onGet = [&] { Other({"Delete from Categories where Category = 'Party'"}); };
    Drop({music / "Party.m3u"}, "");
    EXPECT_THAT(Entries("Party"), IsEmpty());
    EXPECT_NO_THROW(LoadTree(tree));
    EXPECT_EQ(Value("Select Count(*) from Files where Name = '2.mp3'"), "0") << "the second is not read";
}

TEST_F(TwoTreesTest, APlaylistGoesOnWhenAnotherCategoryGoes) {
    WriteMp3("1.mp3");
    Write("Party.m3u", (music / "1.mp3") + "\n");
    FileHook disk;
    services.fileSystem = &disk;
    disk.onGet = [&] { Other({"Delete from Categories where Category = 'Empty'"}); };
    Drop({music / "Party.m3u"}, "");
    EXPECT_EQ(Entries("Party").size(), 1U);
}

TEST_F(TwoTreesTest, ACategoryTakesEntriesWhileItsKeyAndTheNameOfTheirParentAreThere) {
    EXPECT_TRUE(TakesEntries("2", "Blues"));
    EXPECT_TRUE(TakesEntries("2", "Jazz"));
    EXPECT_FALSE(TakesEntries("9", "Blues"));
    EXPECT_FALSE(TakesEntries("2", "it's gone"));
}

TEST_F(TwoTreesTest, ACategoryThatTheOtherHasDeletedIsGoneFromTheTreeAndNoFailure) {
    LibraryViewsDouble views{calls};
    mainModule.TreeNodeData.Add("CAT_Blues");
    tree.Select("CAT_Blues");
    Other({"Delete from FileCategories where Parent = 'Blues'",
           "Delete from Categories where Category = 'Blues'"});
    mnuDelete_Click(tree, views);
    EXPECT_THAT(calls, ElementsAre("tree"));
    EXPECT_THAT(mainModule.TreeNodeData.Keys(), IsEmpty());
}

TEST_F(TwoTreesTest, AnEntryIsDeletedWhereItIsNow) {
    LibraryViewsDouble views{calls};
    tree.Select("file104pos4");
    OtherDeletes("101", "Jazz", "1");
    mnuDelete_Click(tree, views);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j2", "2 j3", "3 j5", "4 j6"));
    EXPECT_THAT(calls, ElementsAre("tree"));
}

TEST_F(TwoTreesTest, AnEntryThatTheOtherHasDeletedTakesNoFurtherOneWithIt) {
    // The same file comes next and has the place by now.
    Other({"Update FileCategories set File_id = 104, Filename = 'j4' where FileCategory_id = 105"});
    LibraryViewsDouble views{calls};
    tree.Select("file104pos4");
    OtherDeletes("104", "Jazz", "4");
    mnuDelete_Click(tree, views);
    EXPECT_THAT(Entries("Jazz"), ElementsAre("1 j1", "2 j2", "3 j3", "4 j4", "5 j6"));
    EXPECT_THAT(calls, ElementsAre("tree")) << "which shows that it is gone";
}

TEST_F(TwoTreesTest, OwnCommitsAreNoChangeByAnother) {
    Execute("Update FileCategories set Filename = 'j1' where FileCategory_id = 101");
    Connection().Commit();
    Press("file102pos2");
    Drop({drag.DragFilePath}, "CAT_Empty");
    EXPECT_THAT(statements, ElementsAre("Select Category_id from Categories where Category = 'Empty'",
                                        ::testing::StartsWith("Update FileCategories set [Position] = 1"),
                                        ::testing::StartsWith("Update FileCategories set [Position] = [Po")));
}

TEST_F(TwoTreesTest, AnUnfoldedCategoryThatTheOtherHasDeletedIsForgotten) {
    mainModule.TreeNodeData.Add("CAT_Blues");
    mainModule.TreeNodeData.Add("CAT_Jazz");
    Other({"Delete from FileCategories where Parent = 'Blues'",
           "Delete from Categories where Category = 'Blues'"});
    EXPECT_NO_THROW(LoadTree(tree));
    EXPECT_TRUE(tree.Node("CAT_Jazz").Expanded);
    EXPECT_THAT(mainModule.TreeNodeData.Keys(), ElementsAre("CAT_Jazz"));
}

TEST_F(TwoTreesTest, AnUnfoldedCategoryThatThisProgramHasLostIsAFailureAsEver) {
    mainModule.TreeNodeData.Add("CAT_Empty");
    Execute("Delete from Categories where Category = 'Empty'");
    EXPECT_THROW(LoadTree(tree), RuntimeError);
}

TEST_F(TwoTreesTest, ANameThatTheOtherHasTakenIsRefusedAndListed) {
    CategoryEditor editor;
    editor.cmdNew_Click();
    Other({"Insert into Categories (Category) values ('Rock')"});
    EXPECT_EQ(editor.cmdSave_Click("Rock"), 338);
    EXPECT_EQ(editor.ListText(), "Rock");
    EXPECT_EQ(Value("Select Count(*) from Categories where Category = 'Rock'"), "1");
}

TEST_F(TwoTreesTest, TheLastCategoryThatWasListedIsRenamedAndNoneThatTheUserHasNotSeen) {
    CategoryEditor editor;
    editor.ListClick(0);
    editor.cmdEdit_Click();
    Other({"Insert into Categories (Category) values ('Unseen')"});
    EXPECT_EQ(editor.cmdSave_Click("Soul"), std::nullopt);
    EXPECT_THAT(editor.Categories(), ElementsAre("Jazz", "Blues", "Soul", "Unseen"));
}

TEST_F(TwoTreesTest, WhereTheCategoryToRenameIsGoneNothingIsRenamed) {
    CategoryEditor editor;
    editor.ListClick(0);
    editor.cmdEdit_Click();
    Other({"Delete from Categories where Category = 'Empty'"});
    EXPECT_EQ(editor.cmdSave_Click("Soul"), std::nullopt);
    EXPECT_THAT(editor.Categories(), ElementsAre("Jazz", "Blues"));
}

TEST_F(TwoTreesTest, ATakenNameIsRefusedWhileTheOtherWrites) {
    CategoryEditor editor;
    editor.cmdNew_Click();
    Connection().Query("Pragma busy_timeout = 0");
    other->LockWrites();
    EXPECT_EQ(editor.cmdSave_Click("Jazz"), 338);
    other->UnlockWrites();
    other->Commit();
}

TEST_F(TwoTreesTest, TheOtherHasToWaitBetweenTheLookForANameAndItsInsert) {
    CategoryEditor editor;
    editor.cmdNew_Click();
    other->Query("Pragma busy_timeout = 0");
    int tried = 0;
    connection.onStatement = [&](const std::string& statement) {
        if (statement.starts_with("Insert Into Categories")) {
            ++tried;
            EXPECT_THROW(other->Execute("Insert into Categories (Category) values ('Rock')"), RuntimeError);
        }
    };
    EXPECT_EQ(editor.cmdSave_Click("Rock"), std::nullopt);
    EXPECT_EQ(tried, 1);
}

TEST_F(TwoTreesTest, ACategoryThatTheOtherHasDeletedIsGoneFromTheListAndNoFailure) {
    CategoryEditor editor;
    editor.ListClick(1);
    ASSERT_EQ(editor.ListText(), "Blues");
    Other({"Delete from Categories where Category = 'Blues'"});
    EXPECT_NO_THROW(editor.cmdDelete_Click());
    EXPECT_THAT(editor.Categories(), ElementsAre("Jazz", "Empty"));
}

TEST_F(TwoTreesTest, TheChosenCategoryIsDeletedThoughItsPlaceInTheListIsAnother) {
    CategoryEditor editor;
    editor.ListClick(1);
    Other({"Delete from Categories where Category = 'Jazz'",
           "Delete from FileCategories where Parent = 'Jazz'"});
    editor.cmdDelete_Click();
    EXPECT_THAT(editor.Categories(), ElementsAre("Empty"));
    EXPECT_THAT(EveryEntry(), IsEmpty());
}

} // namespace
} // namespace quavernet::test
