#include "editing/FileNameEditor.h"

#include "editing/FileNameTools.h"
#include "editing/ListedFilesTest.h"
#include "support/FailureNumber.h"
#include "tree/LoadTree.h"
#include "tree/TreeModel.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FileNameEditorTest : public ListedFilesTest {
protected:
    /// Opens the dialog on a row, saves, and gives the number of the refusal, or 0.
    int Save(std::int32_t row, const std::string& text) {
        Select({row});
        editor.emplace();
        return SaveAgain(text);
    }
    int SaveAgain(const std::string& text) {
        shown = text;
        return editor->cmsSave_Click(shown, work).value_or(0);
    }

    std::optional<FileNameEditor> editor;
    std::string shown; ///< In the text box.
};

TEST_F(FileNameEditorTest, ASaveChangesDiskLibraryListAndStatusBar) {
    AddFile("a.mp3");
    AddFile("b.mp3");
    AddFile("c.mp3");
    RecordingConnection& connection = Record();
    EXPECT_EQ(Save(2, "new.mp3"), 0);
    EXPECT_THAT(connection.statements,
                ElementsAre("Update Files set Path = '" + music.Path() +
                            "/new.mp3',  Name = 'new.mp3' where Path  = '" + music.Path() + "/b.mp3'"));
    EXPECT_EQ(OnDisk(), (Texts{"a.mp3=a.mp3", "c.mp3=c.mp3", "new.mp3=b.mp3"}));
    EXPECT_EQ(InLibrary(), (Texts{"a.mp3|~/a.mp3", "new.mp3|~/new.mp3", "c.mp3|~/c.mp3"}));
    EXPECT_EQ(InList(), InLibrary());
    EXPECT_EQ(Short(calls), (Texts{"panel 1: ~/new.mp3"}));
}

TEST_F(FileNameEditorTest, TheOnlyAndTheLastRowOfTheListAreReplacedLikeOthers) {
    AddFile("a.mp3");
    EXPECT_EQ(Save(1, "one.mp3"), 0);
    AddFile("b.mp3");
    EXPECT_EQ(Save(2, "two.mp3"), 0);
    EXPECT_EQ(InList(), (Texts{"one.mp3|~/one.mp3", "two.mp3|~/two.mp3"}));
}

TEST_F(FileNameEditorTest, TheFirstSelectedRowIsTakenNotTheHighest) {
    AddFile("a.mp3");
    AddFile("b.mp3");
    Select({2, 1});
    EXPECT_EQ(FileNameEditor().OldName(), "b.mp3");
}

TEST_F(FileNameEditorTest, FurtherSavesStartFromTheNewName) {
    AddFile("a.mp3");
    EXPECT_EQ(Save(1, "b.mp3"), 0);
    EXPECT_EQ(editor->OldName(), "b.mp3");
    EXPECT_EQ(SaveAgain("c.mp3"), 0);
    EXPECT_EQ(OnDisk(), (Texts{"c.mp3=a.mp3"}));
    EXPECT_EQ(InLibrary(), (Texts{"c.mp3|~/c.mp3"}));
}

TEST_F(FileNameEditorTest, AMissingExtensionIsPutBackIntoTheTextBoxInTheOldSpelling) {
    AddFile("a.MP3");
    EXPECT_EQ(Save(1, "b.mp3"), 0);
    EXPECT_EQ(shown, "b.mp3.MP3");
    EXPECT_EQ(SaveAgain("c"), 0);
    EXPECT_EQ(shown, "c.MP3");
    EXPECT_EQ(InLibrary(), (Texts{"c.MP3|~/c.MP3"}));
}

TEST_F(FileNameEditorTest, AnOpenBracketTakesTheExtensionAndTheSavePutsItBack) {
    AddFile("song (live.mp3");
    EXPECT_EQ(Save(1, RemoveBrackets("song (live.mp3")), 0);
    EXPECT_EQ(OnDisk(), (Texts{"song .mp3=song (live.mp3"}));
}

TEST_F(FileNameEditorTest, ANameWithoutAnExtensionOfFourCharactersKeepsItsLastFour) {
    AddFile("README");
    EXPECT_EQ(Save(1, "README"), 0);
    EXPECT_EQ(SaveAgain("LICENCE"), 0);
    EXPECT_EQ(shown, "LICENCEADME");
    AddFile("abc");
    EXPECT_EQ(Save(2, "abc"), 341) << "the name is its extension";
    EXPECT_EQ(SaveAgain("xabc"), 0);
    EXPECT_EQ(shown, "xabc");
}

TEST_F(FileNameEditorTest, AnEmptyNameAndTheExtensionAloneAreRefused) {
    AddFile("1234.ogg");
    RecordingConnection& connection = Record();
    EXPECT_EQ(Save(1, ""), 341);
    EXPECT_EQ(SaveAgain(RemoveNumbers("1234.ogg")), 341);
    EXPECT_EQ(shown, ".ogg");
    EXPECT_EQ(OnDisk(), (Texts{"1234.ogg=1234.ogg"}));
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(SaveAgain(" "), 0) << "blanks are a name";
    EXPECT_EQ(OnDisk(), (Texts{" .ogg=1234.ogg"}));
}

TEST_F(FileNameEditorTest, AVanishedFileIsToldBeforeAnEmptyName) {
    AddRow("gone.mp3", music.Path());
    AddRow("folder.mp3", music.Path());
    std::filesystem::create_directory(music / "folder.mp3");
    RecordingConnection& connection = Record();
    EXPECT_EQ(Save(1, ""), 339);
    EXPECT_EQ(SaveAgain("b.mp3"), 339);
    EXPECT_EQ(Save(2, "b.mp3"), 339);
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(FileNameEditorTest, WithoutASelectionThereIsNoNameAndNothingToSave) {
    AddFile("a.mp3");
    editor.emplace();
    EXPECT_EQ(editor->OldName(), "");
    RecordingConnection& connection = Record();
    EXPECT_EQ(SaveAgain(""), 339);
    EXPECT_EQ(SaveAgain("b.mp3"), 339);
    EXPECT_EQ(shown, "b.mp3");
    EXPECT_EQ(OnDisk(), (Texts{"a.mp3=a.mp3"}));
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(FileNameEditorTest, ASelectionThatWentWhileTheDialogWasOpenLeavesNothingToSave) {
    AddFile("a.mp3");
    Select({1});
    editor.emplace();
    Select({});
    EXPECT_EQ(SaveAgain("b.mp3"), 339);
    EXPECT_EQ(OnDisk(), (Texts{"a.mp3=a.mp3"}));
}

TEST_F(FileNameEditorTest, ATakenNameIsNotOverwrittenAndTheLibraryNotesTheWantedOne) {
    AddFile("a.mp3");
    AddFile("b.mp3");
    EXPECT_EQ(Save(1, "b.mp3"), 0);
    EXPECT_EQ(OnDisk(), (Texts{"b (2).mp3=a.mp3", "b.mp3=b.mp3"}));
    EXPECT_EQ(InLibrary(), (Texts{"b.mp3|~/b.mp3", "b.mp3|~/b.mp3"}));
    EXPECT_EQ(InList(), InLibrary());
}

TEST_F(FileNameEditorTest, ASecondSaveAfterATakenNameActsOnTheFileOfThatName) {
    AddFile("a.mp3");
    AddFile("b.mp3");
    EXPECT_EQ(Save(1, "b.mp3"), 0);
    EXPECT_EQ(SaveAgain("c.mp3"), 0);
    EXPECT_EQ(OnDisk(), (Texts{"b (2).mp3=a.mp3", "c.mp3=b.mp3"}));
    EXPECT_EQ(InLibrary(), (Texts{"c.mp3|~/c.mp3", "c.mp3|~/c.mp3"}));
    EXPECT_EQ(InList(), (Texts{"c.mp3|~/c.mp3", "b.mp3|~/b.mp3"}));
}

TEST_F(FileNameEditorTest, WhatFollowsARenameThatFailsRuns) {
    for (const std::string& name :
         {std::string("sub/b.mp3"), std::string("../b.mp3"), std::string(252, 'x') + ".mp3"}) {
        AddFile("a.mp3");
        const auto row = static_cast<std::int32_t>(mainModule.FilePaths.Count());
        std::filesystem::create_directory(music / "sub");
        EXPECT_EQ(Save(row, name), 0);
        EXPECT_EQ(OnDisk(), (Texts{"a.mp3=a.mp3"}));
        EXPECT_THAT(OnDisk("sub"), IsEmpty());
        EXPECT_EQ(InLibrary().back(), name + "|~/" + name);
        EXPECT_EQ(InList().back(), InLibrary().back());
        EXPECT_EQ(work.PanelText(Panel::Scanning), music / name);
    }
}

TEST_F(FileNameEditorTest, AFolderWithAnApostropheFindsNoRowAndSaysNothing) {
    for (const char* folder : {"it's", "it''s", "';--"}) {
        AddFile("a.mp3", folder);
        const auto row = static_cast<std::int32_t>(mainModule.FilePaths.Count());
        RecordingConnection& connection = Record();
        const Texts before = InLibrary();
        connection.statements.clear();
        EXPECT_EQ(Save(row, "b.mp3"), 0);
        EXPECT_THAT(connection.statements, IsEmpty());
        EXPECT_EQ(OnDisk(folder), (Texts{"b.mp3=a.mp3"}));
        EXPECT_EQ(InLibrary(), before);
        EXPECT_EQ(InList().back(), std::string("b.mp3|~/") + folder + "/b.mp3");
        EXPECT_EQ(work.PanelText(Panel::Scanning), music / (std::string(folder) + "/b.mp3"));
    }
}

// With two in a row the text would be a statement, of another folder.
TEST_F(FileNameEditorTest, AFolderWithTwoApostrophesDoesNotHitTheRowOfAnother) {
    AddFile("a.mp3", "it's");
    AddFile("a.mp3", "it''s");
    EXPECT_EQ(Save(2, "b.mp3"), 0);
    EXPECT_EQ(InLibrary(), (Texts{"a.mp3|~/it's/a.mp3", "a.mp3|~/it''s/a.mp3"}));
}

TEST_F(FileNameEditorTest, ApostrophesInNamesAreQuoted) {
    AddFile("it's.mp3");
    RecordingConnection& connection = Record();
    EXPECT_EQ(Save(1, "they're.mp3"), 0);
    EXPECT_THAT(connection.statements, ElementsAre("Update Files set Path = '" + music.Path() +
                                                   "/they''re.mp3',  Name = 'they''re.mp3' where Path  = '" +
                                                   music.Path() + "/it''s.mp3'"));
    EXPECT_EQ(InLibrary(), (Texts{"they're.mp3|~/they're.mp3"}));
}

TEST_F(FileNameEditorTest, ANameWithANulIsNoNameAndNoStatement) {
    AddFile("a.mp3");
    RecordingConnection& connection = Record();
    EXPECT_EQ(Save(1, std::string("b\0.mp3", 6)), 0);
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_EQ(OnDisk(), (Texts{"a.mp3=a.mp3"}));
    EXPECT_EQ(mainModule.FileNames.Item(1), std::string("b\0.mp3", 6));
}

TEST_F(FileNameEditorTest, NamesThatAreNotUtf8AreRenamedByteForByte) {
    AddFile("\xe4_1.mp3");
    EXPECT_EQ(Save(1, ReplaceUnderscores("\xe4_1.mp3")), 0);
    EXPECT_EQ(OnDisk(), (Texts{"\xe4 1.mp3=\xe4_1.mp3"}));
    EXPECT_EQ(InLibrary(), (Texts{"\xe4 1.mp3|~/\xe4 1.mp3"}));
}

TEST_F(FileNameEditorTest, TheCaseOfLettersAloneIsAnotherName) {
    AddFile("song.mp3");
    EXPECT_EQ(Save(1, "SONG.mp3"), 0);
    EXPECT_EQ(OnDisk(), (Texts{"SONG.mp3=song.mp3"}));
    EXPECT_EQ(InLibrary(), (Texts{"SONG.mp3|~/SONG.mp3"}));
}

TEST_F(FileNameEditorTest, TheRenameComesBeforeTheStatementAndTheListAfterIt) {
    AddFile("a.mp3");
    RecordingConnection& connection = Record();
    connection.failOn = "Update Files";
    Texts atStatement;
    connection.onStatement = [&](const std::string&) { atStatement = OnDisk(); };
    EXPECT_EQ(NumberOf([&] { Save(1, "b.mp3"); }), 19) << "a failing statement is the program's failure";
    EXPECT_EQ(atStatement, (Texts{"b.mp3=a.mp3"}));
    EXPECT_EQ(InList(), (Texts{"a.mp3|~/a.mp3"}));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(FileNameEditorTest, WhileAnotherProgramWritesToTheLibraryTheFileKeepsItsName) {
    AddFile("a.mp3");
    RecordingConnection& connection = Record();
    connection.failLock = true;
    EXPECT_EQ(NumberOf([&] { Save(1, "b.mp3"); }), 2);
    EXPECT_EQ(OnDisk(), (Texts{"a.mp3=a.mp3"}));
    EXPECT_EQ(InList(), (Texts{"a.mp3|~/a.mp3"}));
}

TEST_F(FileNameEditorTest, AnEntryOfTheTreeShowsTheNewNameAndKeepsTheOldOne) {
    AddFile("a.mp3");
    Execute(
        {"Insert into Categories (Category) values ('Jazz')",
         "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (1, 1, 1, "
         "'Jazz', 'a.mp3')",
         "Update Files set Length = 60"});
    EXPECT_EQ(Save(1, "b.mp3"), 0);
    EXPECT_EQ(Value("Select Filename from FileCategories"), "a.mp3");
    TreeModel tree;
    LoadTree(tree);
    tree.Select("file1pos1");
    EXPECT_EQ(tree.SelectedItem().Text, "b.mp3");
}

} // namespace
} // namespace quavernet::test
