#include "editing/FileNamesEditor.h"

#include "editing/FileNameTools.h"
#include "editing/ListedFilesTest.h"
#include "support/FailureNumber.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FileNamesEditorTest : public ListedFilesTest {
protected:
    static Texts Names(const FileNamesEditor& editor) {
        Texts names;
        for (const EditedName& item : editor.Items()) {
            names.push_back(std::to_string(item.Row) + " " + item.Name);
        }
        return names;
    }
    /// cmdChangeName with a text in the box: the number of the refusal, or 0.
    int Change(FileNamesEditor& editor, const std::string& text) {
        shown = text;
        return editor.cmdChangeName_Click(shown).value_or(0);
    }

    std::string shown;
};

TEST_F(FileNamesEditorTest, TheItemsAreTheNamesOfTheSelectedRowsInTheOrderOfTheSelection) {
    AddFile("a.mp3");
    AddFile("b.mp3");
    AddFile("c.mp3");
    Select({3, 1});
    const FileNamesEditor editor;
    EXPECT_EQ(Names(editor), (Texts{"3 c.mp3", "1 a.mp3"}));
    EXPECT_EQ(editor.ListIndex(), FileNamesEditor::None);
}

TEST_F(FileNamesEditorTest, ASaveRenamesEveryItemInItsOrder) {
    AddFile("a_1.mp3");
    AddFile("b_2.mp3");
    AddFile("c_3.mp3");
    Select({3, 1});
    FileNamesEditor editor;
    editor.CleanUpAll(ReplaceUnderscores);
    RecordingConnection& connection = Record();
    editor.cmdSave_Click(work);
    const std::string folder = music.Path() + "/";
    EXPECT_THAT(connection.statements,
                ElementsAre("Update Files set Path = '" + folder +
                                "c 3.mp3',  Name = 'c 3.mp3' where Path  = '" + folder + "c_3.mp3'",
                            "Update Files set Path = '" + folder +
                                "a 1.mp3',  Name = 'a 1.mp3' where Path  = '" + folder + "a_1.mp3'"));
    EXPECT_EQ(OnDisk(), (Texts{"a 1.mp3=a_1.mp3", "b_2.mp3=b_2.mp3", "c 3.mp3=c_3.mp3"}));
    EXPECT_EQ(InLibrary(), (Texts{"a 1.mp3|~/a 1.mp3", "b_2.mp3|~/b_2.mp3", "c 3.mp3|~/c 3.mp3"}));
    EXPECT_EQ(InList(), InLibrary());
}

TEST_F(FileNamesEditorTest, AnotherSaveStartsFromTheNewNames) {
    AddFile("a_(x).mp3");
    AddFile("b_(y).mp3");
    Select({1, 2});
    FileNamesEditor editor;
    editor.CleanUpAll(ReplaceUnderscores);
    editor.cmdSave_Click(work);
    editor.CleanUpAll([](const std::string& name) { return RemoveBrackets(name); });
    editor.cmdSave_Click(work);
    EXPECT_EQ(OnDisk(), (Texts{"a .mp3=a_(x).mp3", "b .mp3=b_(y).mp3"}));
    EXPECT_EQ(InLibrary(), (Texts{"a .mp3|~/a .mp3", "b .mp3|~/b .mp3"}));
}

TEST_F(FileNamesEditorTest, EachItemHasBracketsOfItsOwnAndTheOpenOneLosesItsExtension) {
    AddFile("a (live.mp3");
    AddFile("b (x).mp3");
    Select({1, 2});
    FileNamesEditor editor;
    editor.CleanUpAll([](const std::string& name) { return RemoveBrackets(name); });
    editor.cmdSave_Click(work);
    EXPECT_EQ(OnDisk(), (Texts{"a =a (live.mp3", "b .mp3=b (x).mp3"}));
    EXPECT_EQ(InLibrary(), (Texts{"a |~/a ", "b .mp3|~/b .mp3"}));
}

TEST_F(FileNamesEditorTest, UnchangedItemsAreRenamedToo) {
    AddFile("a.mp3");
    AddFile("b.mp3");
    Select({1, 2});
    RecordingConnection& connection = Record();
    FileNamesEditor().cmdSave_Click(work);
    EXPECT_EQ(connection.statements.size(), 2U);
    EXPECT_EQ(OnDisk(), (Texts{"a.mp3=a.mp3", "b.mp3=b.mp3"}));
    EXPECT_EQ(InLibrary(), (Texts{"a.mp3|~/a.mp3", "b.mp3|~/b.mp3"}));
}

TEST_F(FileNamesEditorTest, NamesThatAreEmptiedFailOnDiskAndAreRecorded) {
    AddFile("1");
    AddFile("2.ogg");
    Select({1, 2});
    FileNamesEditor editor;
    editor.CleanUpAll(RemoveNumbers);
    editor.cmdSave_Click(work);
    EXPECT_EQ(OnDisk(), (Texts{".ogg=2.ogg", "1=1"}));
    EXPECT_EQ(InLibrary(), (Texts{"|~/", ".ogg|~/.ogg"}));
    EXPECT_EQ(InList(), InLibrary());
}

TEST_F(FileNamesEditorTest, NamesThatBecomeTheSameGetNumbersOnDiskAndTheLibraryNotesTheWantedOnes) {
    AddFile("1 x.mp3");
    AddFile("2 x.mp3");
    AddFile("3 x.mp3");
    Select({1, 2, 3});
    FileNamesEditor editor;
    editor.CleanUpAll(RemoveNumbers);
    editor.cmdSave_Click(work);
    EXPECT_EQ(OnDisk(), (Texts{" x (2).mp3=2 x.mp3", " x (3).mp3=3 x.mp3", " x.mp3=1 x.mp3"}));
    EXPECT_EQ(InLibrary(), (Texts{" x.mp3|~/ x.mp3", " x.mp3|~/ x.mp3", " x.mp3|~/ x.mp3"}));
}

TEST_F(FileNamesEditorTest, TheEndTellsHowManyGotAnotherNameAndHowManyTheDiskRefused) {
    AddFile("a_1.mp3");
    AddFile("b 2.mp3");
    AddFile("c_3.mp3");
    AddRow("gone_4.mp3", music.Path());
    Select({1, 2, 3, 4});
    FileNamesEditor editor;
    editor.CleanUpAll(ReplaceUnderscores);
    editor.cmdSave_Click(work);
    EXPECT_THAT(work.endWords,
                ElementsAre("Fertig: 2 Dateien umbenannt, 1 Datei auf der Platte nicht umbenannt, 0:00"));
    settings.values["Language"] = "ENG";
    Select({1, 2});
    FileNamesEditor again;
    again.CleanUpAll([](const std::string& name) { return name.starts_with('a') ? "x" + name : name; });
    again.cmdSave_Click(work);
    again.cmdSave_Click(work);
    EXPECT_EQ(work.endWords[1], "Done: 1 file renamed, 0:00");
    EXPECT_EQ(work.endWords[2], "Done: 0 files renamed, 0:00");
    Select({4});
    FileNamesEditor().cmdSave_Click(work);
    EXPECT_EQ(work.endWords[3], "Done: 0 files renamed, 0:00")
        << "a missing file that keeps its name is no refusal";
    EXPECT_THAT(calls, IsEmpty()) << "panels and pointer stay as they are";
}

TEST_F(FileNamesEditorTest, AMissingFileIsNoObstacleForTheRest) {
    AddRow("gone_1.mp3", music.Path());
    AddFile("b_2.mp3");
    AddFile("c_3.mp3", "it's");
    AddFile("d_4.mp3");
    Select({1, 2, 3, 4});
    FileNamesEditor editor;
    editor.CleanUpAll(ReplaceUnderscores);
    editor.cmdSave_Click(work);
    EXPECT_EQ(OnDisk(), (Texts{"b 2.mp3=b_2.mp3", "d 4.mp3=d_4.mp3"}));
    EXPECT_EQ(OnDisk("it's"), (Texts{"c 3.mp3=c_3.mp3"}));
    EXPECT_EQ(InLibrary(), (Texts{"gone 1.mp3|~/gone 1.mp3", "b 2.mp3|~/b 2.mp3", "c_3.mp3|~/it's/c_3.mp3",
                                  "d 4.mp3|~/d 4.mp3"}));
}

TEST_F(FileNamesEditorTest, AFailingStatementEndsTheSaveAndWhatIsDoneStays) {
    AddFile("a_1.mp3");
    AddFile("b_2.mp3");
    AddFile("c_3.mp3");
    Select({1, 2, 3});
    FileNamesEditor editor;
    editor.CleanUpAll(ReplaceUnderscores);
    Record().failOn = "Update Files set Path = '" + music.Path() + "/b";
    EXPECT_EQ(NumberOf([&] { editor.cmdSave_Click(work); }), 19);
    EXPECT_THAT(work.endWords, IsEmpty());
    EXPECT_EQ(OnDisk(), (Texts{"a 1.mp3=a_1.mp3", "b 2.mp3=b_2.mp3", "c_3.mp3=c_3.mp3"}));
    EXPECT_EQ(InList(), (Texts{"a 1.mp3|~/a 1.mp3", "b_2.mp3|~/b_2.mp3", "c_3.mp3|~/c_3.mp3"}));
}

TEST_F(FileNamesEditorTest, AChangedNameGetsTheExtensionThatTheItemHadWhenItWasSelected) {
    AddFile("a(.mp3");
    AddFile("b.ogg");
    Select({1, 2});
    FileNamesEditor editor;
    EXPECT_EQ(editor.ListClick(0), "a(.mp3");
    editor.CleanUpAll([](const std::string& name) { return RemoveBrackets(name); });
    EXPECT_EQ(Names(editor), (Texts{"1 a", "2 b.ogg"}));
    EXPECT_EQ(Change(editor, "new"), 0);
    EXPECT_EQ(shown, "new.mp3");
    EXPECT_EQ(Names(editor), (Texts{"1 new.mp3", "2 b.ogg"}));
    editor.ListClick(1);
    EXPECT_EQ(Change(editor, "x.OGG"), 0);
    EXPECT_EQ(Names(editor), (Texts{"1 new.mp3", "2 x.OGG.ogg"}));
    EXPECT_EQ(OnDisk(), (Texts{"a(.mp3=a(.mp3", "b.ogg=b.ogg"})) << "nothing is saved yet";
}

TEST_F(FileNamesEditorTest, AnEmptyTextIsNoNameAndTheExtensionAloneIsOne) {
    AddFile("a.mp3");
    AddFile("b.mp3");
    Select({1, 2});
    FileNamesEditor editor;
    EXPECT_EQ(Change(editor, ""), 0) << "no item is selected";
    EXPECT_EQ(Change(editor, "x"), 0);
    EXPECT_EQ(shown, "x");
    editor.ListClick(1);
    EXPECT_EQ(Change(editor, ""), 336);
    EXPECT_EQ(Names(editor), (Texts{"1 a.mp3", "2 b.mp3"}));
    EXPECT_EQ(Change(editor, ".mp3"), 0);
    EXPECT_EQ(Names(editor), (Texts{"1 a.mp3", "2 .mp3"}));
}

} // namespace
} // namespace quavernet::test
