#include "tree/TreeImport.h"

#include "adapters/id3v2/TagLibComponent.h"
#include "scanner/ScanDriver.h"
#include "support/FailureNumber.h"
#include "support/RecordingConnection.h"
#include "support/ScanDoubles.h"
#include "support/SlowDisk.h"
#include "support/SmallAudio.h"
#include "support/TestFiles.h"
#include "support/TestLibrary.h"
#include "tree/LoadTree.h"
#include "tree/TreeExport.h"

#include <gmock/gmock.h>

#include <filesystem>

#include <sys/stat.h>

namespace quavernet::test {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Takes its place among the calls.
class BoxInCalls : public ScriptedMsgBox {
public:
    explicit BoxInCalls(CallList& calls) : m_calls(calls) {}
    Answer ShowWithDetails(const std::string& text, const std::string& details, const std::string& title,
                           Icon icon, Buttons buttons) override {
        m_calls.push_back("box " + title);
        return ScriptedMsgBox::ShowWithDetails(text, details, title, icon, buttons);
    }

private:
    CallList& m_calls;
};

class TreeImportTest : public LibraryTest {
protected:
    TreeImportTest() : connection(RecordingConnection::Install()) {
        services.fileSystem = fileSystem.get();
        mainModule.TagComponent = CreateTagLibComponent(RealFiles());
        shell.documents = "/home/me/Documents";
        dialogs.file = path;
    }

    std::string Mp3(const std::string& name, const std::string& title = "Song") {
        WriteBytes(music / name, Mp3Bytes(title, "Blue", "Best"));
        return music / name;
    }
    void AddFile(int id, const std::string& filePath) {
        Execute("Insert into Files (File_id, Name, Path, Length) values (" + std::to_string(id) +
                ", 'known.mp3', '" + filePath + "', 1)");
    }
    void Import(const std::string& contents) {
        WriteFile(path, contents);
        ImportAgain();
    }
    void ImportAgain() {
        calls.clear();
        connection.statements.clear();
        ImportTree(work, views, driver);
    }
    std::vector<std::string> Categories() { return Rows("Select Category from Categories"); }
    std::vector<std::string> Entries() {
        return Rows("Select [Position], Parent, Filename, File_id, Category_id from FileCategories");
    }
    ShownBox MissingBox() const {
        return {"Nicht alle Dateien in der Bibliothekendatei konnten der Bibliothek hinzugefügt werden!\nDie "
                "Dateien "
                "konnten auf Ihrem ursprünglichen Platz nicht gefunden werden.",
                "Hinweis", MsgBox::Icon::Information, MsgBox::Buttons::Ok};
    }

    RecordingConnection& connection;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
    CallList calls;
    LongWorkDouble work{calls};
    LibraryViewsDouble views{calls};
    RecordingScanView view{calls};
    RecordingScanLog log{calls};
    ScanDriver driver{work, view, log};
    TemporaryFolder music;
    TemporaryFolder folder;
    const std::string path = folder / "tree.qvn";
};

TEST_F(TreeImportTest, KnownFilesBecomeEntriesAtTheirPositions) {
    AddFile(5, "/m/five.mp3");
    AddFile(7, "/m/sev''en.mp3");
    Import("#Categories\nJazz\nRock\n#Files\n9,Rock,it's "
           "five.mp3,/m/five.mp3\n2,Jazz,seven.mp3,/m/sev'en.mp3\n");
    EXPECT_THAT(connection.statements,
                ElementsAre("Select * from Categories where Category = 'Jazz'",
                            "Insert into Categories (Category) values ('Jazz')",
                            "Select Category_id from Categories where Category = 'Jazz'",
                            "Select * from Categories where Category = 'Rock'",
                            "Insert into Categories (Category) values ('Rock')",
                            "Select Category_id from Categories where Category = 'Rock'",
                            "Select File_id from Files where Path = '/m/five.mp3'",
                            "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) "
                            "values (5, 2, 9, "
                            "'Rock', 'it''s five.mp3')",
                            "Select File_id from Files where Path = '/m/sev''en.mp3'",
                            "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) "
                            "values (7, 1, 2, "
                            "'Jazz', 'seven.mp3')"));
    EXPECT_THAT(calls, ElementsAre("pointer 11", "tree", "pointer 0"));
    EXPECT_THAT(dialogs.shown, ElementsAre("open Quavernet Biliothek (*.qvn)|*.qvn /home/me/Documents"));
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TreeImportTest, ACancelledDialogStillBuildsTheTreeAgain) {
    dialogs.file.reset();
    ImportAgain();
    EXPECT_THAT(calls, ElementsAre("pointer 11", "tree", "pointer 0"));
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(TreeImportTest, TheEndTellsWhatTheFileHasBroughtAndWhatItLacked) {
    AddFile(7, "/m/known.mp3");
    events.onDoEvents = [this] { clock.now.second = 25; };
    Import("#Categories\nRock\nJazz\n#Files\n1,Rock,a.mp3,/m/known.mp3\n2,Rock,b.mp3," + Mp3("new.mp3") +
           "\n3,Rock,c.mp3,/m/gone.mp3\nno entry\n");
    EXPECT_THAT(work.endWords, ElementsAre("Fertig: 2 Kategorien, 2 Einträge, 1 neu, 2 übergangen, 0:03"));
    EXPECT_EQ(work.PanelText(Panel::Scanning), "");
    dialogs.file = std::nullopt;
    ImportAgain();
    EXPECT_EQ(work.endWords.size(), 1U) << "a cancelled dialog is no job";
}

TEST_F(TreeImportTest, ADialogThatFailsCountsAsCancelled) {
    dialogs.fails = true;
    ImportAgain();
    EXPECT_THAT(calls, ElementsAre("pointer 11", "tree", "pointer 0"));
}

TEST_F(TreeImportTest, AnUnknownFileJoinsTheLibraryAndTheListIsLoaded) {
    const std::string song = Mp3("song.mp3");
    Import("#Categories\nJazz\n#Files\n3,Jazz,song.mp3," + song + "\n");
    EXPECT_THAT(Rows("Select Path, Name from Files"), ElementsAre(song + "|song.mp3"));
    EXPECT_THAT(Entries(), ElementsAre("3|Jazz|song.mp3|1|1"));
    EXPECT_THAT(calls, ElementsAre("pointer 11", "tree", "load ''", "pointer 0"));
    EXPECT_EQ(mainModule.CurrentFile.CurrentPath, song);
}

TEST_F(TreeImportTest, APathThatIsNotInItsNormalFormGetsItsEntryToo) {
    const std::string song = Mp3("song.mp3");
    const std::string odd = music.Path() + "//song.mp3";
    Import("#Categories\nJazz\n#Files\n3,Jazz,song.mp3," + odd + "\n4,Jazz,song.mp3," + odd + "\n");
    EXPECT_THAT(Rows("Select Path from Files"), ElementsAre(song));
    EXPECT_THAT(Entries(), ElementsAre("3|Jazz|song.mp3|1|1", "4|Jazz|song.mp3|1|1"));
}

TEST_F(TreeImportTest, NothingIsHeldBackWhileAFileIsRead) {
    int commitsBefore = 0;
    connection.onStatement = [&](const std::string& statement) {
        if (statement.starts_with("Insert Into Files (")) {
            commitsBefore = connection.commits;
        }
    };
    Import("#Categories\nJazz\n#Files\n3,Jazz,song.mp3," + Mp3("song.mp3") + "\n");
    EXPECT_GT(commitsBefore, 0);
}

TEST_F(TreeImportTest, AListThatLoadsBySearchIsNotLoaded) {
    mainModule.LoadOverSearch = true;
    Import("#Categories\nJazz\n#Files\n3,Jazz,song.mp3," + Mp3("song.mp3") + "\n");
    EXPECT_THAT(calls, ElementsAre("pointer 11", "tree", "pointer 0"));
}

TEST_F(TreeImportTest, ATreeGoesFromOneMachineToAnotherWithItsGaps) {
    const std::string one = Mp3("one.mp3");
    const std::string two = Mp3("zwei Märchen.mp3", "Other");
    Import("#Categories\nMärchen\nLeer\n#Files\n7,Märchen,one.mp3," + one + "\n2,Märchen,zwei Märchen.mp3," +
           two + "\n");
    TreeModel tree;
    LoadTree(tree);
    dialogs.file = folder / "copy.qvn";
    ExportTree(tree, work);
    EXPECT_EQ(ReadFile(folder / "copy.qvn"), ReadFile(path));
    Execute({"Delete from FileCategories", "Delete from Categories", "Delete from Files"});
    ImportAgain();
    EXPECT_THAT(Rows("Select [Position], Parent, Filename from FileCategories"),
                ElementsAre("7|Märchen|one.mp3", "2|Märchen|zwei Märchen.mp3"));
    EXPECT_THAT(Categories(), ElementsAre("Märchen", "Leer"));
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TreeImportTest, ASecondImportMakesASecondSetOfCategories) {
    AddFile(5, "/m/five.mp3");
    Import("#Categories\nJazz\nRock\n#Files\n1,Jazz,a.mp3,/m/five.mp3\n1,Rock,b.mp3,/m/five.mp3\n");
    ImportAgain();
    EXPECT_THAT(Categories(), ElementsAre("Jazz", "Rock", "Jazz1", "Rock1"));
    EXPECT_THAT(Entries(), ElementsAre("1|Jazz|a.mp3|5|1", "1|Rock|b.mp3|5|2", "1|Jazz1|a.mp3|5|3",
                                       "1|Rock1|b.mp3|5|4"));
    ImportAgain();
    EXPECT_THAT(Categories(), ElementsAre("Jazz", "Rock", "Jazz1", "Rock1", "Jazz2", "Rock2"));
}

TEST_F(TreeImportTest, AfterAClashEveryFollowingCategoryHasTheNumber) {
    Execute("Insert into Categories (Category) values ('Jazz')");
    Import("#Categories\nBlues\nJazz\nRock\n");
    EXPECT_THAT(connection.statements,
                ElementsAre("Select * from Categories where Category = 'Blues'",
                            "Insert into Categories (Category) values ('Blues')",
                            "Select Category_id from Categories where Category = 'Blues'",
                            "Select * from Categories where Category = 'Jazz'",
                            "Select * from Categories where Category = 'Jazz1'",
                            "Insert into Categories (Category) values ('Jazz1')",
                            "Select Category_id from Categories where Category = 'Jazz1'",
                            "Select * from Categories where Category = 'Rock1'",
                            "Insert into Categories (Category) values ('Rock1')",
                            "Select Category_id from Categories where Category = 'Rock1'"));
    EXPECT_THAT(Categories(), ElementsAre("Jazz", "Blues", "Jazz1", "Rock1"));
}

TEST_F(TreeImportTest, ANameThatDiffersInCaseAloneIsTaken) {
    Execute("Insert into Categories (Category) values ('JAZZ')");
    Import("#Categories\nJazz\n");
    EXPECT_THAT(Categories(), ElementsAre("JAZZ", "Jazz1"));
}

TEST_F(TreeImportTest, APartOfANameIsEnoughForAnEntry) {
    AddFile(5, "/m/five.mp3");
    Import("#Categories\nHard Rock\nRock\n#Files\n1,rock,a.mp3,/m/five.mp3\n");
    EXPECT_THAT(Entries(), ElementsAre("1|Hard Rock|a.mp3|5|1"));
}

TEST_F(TreeImportTest, WithoutAMatchTheLastCategoryTakesTheEntry) {
    AddFile(5, "/m/five.mp3");
    Import("#Categories\nC#\nJazz\nRock\n#Files\n1,C#,x.mp3,/m/five.mp3\n1,Pop,a.mp3,/m/five.mp3\n");
    EXPECT_THAT(Categories(), ElementsAre("Jazz", "Rock")) << "a name with that sign is lost";
    EXPECT_THAT(Entries(), ElementsAre("1|Rock|a.mp3|5|2"));
    EXPECT_THAT(msgBox.shown, IsEmpty()) << "without a word";
}

TEST_F(TreeImportTest, TheSearchForACategoryCountsInTheNumberOfTheNames) {
    AddFile(5, "/m/five.mp3");
    Import(
        "#Categories\nJazz\nRock\n#Files\n1,Rock,a.mp3,/m/five.mp3\n#Categories\nPop\n#Files\n1,Soul,a.mp3,"
        "/m/five.mp3\n#Categories\nFolk\n");
    EXPECT_THAT(Categories(), ElementsAre("Jazz", "Rock", "Pop2", "Folk4"))
        << "found at 2; without a match behind the third";
}

TEST_F(TreeImportTest, EntriesWithoutAnyCategoryAreAFailure) {
    AddFile(5, "/m/five.mp3");
    WriteFile(path, "#Files\n1,Jazz,a.mp3,/m/five.mp3\n");
    EXPECT_NE(NumberOf([&] { ImportTree(work, views, driver); }), 0);
    EXPECT_EQ(
        connection.statements.back(),
        "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (5, , 1, '', "
        "'a.mp3')");
    EXPECT_THAT(calls, ElementsAre("pointer 11"));
}

TEST_F(TreeImportTest, AFileWithoutTheFirstSectionLineImportsNothing) {
    Import("Jazz\n1,Jazz,a.mp3,/m/five.mp3\n");
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TreeImportTest, AMissingFileLosesItsEntryAndIsToldOnce) {
    AddFile(5, "/m/five.mp3");
    Import("#Categories\nJazz\n#Files\n1,Jazz,a.mp3,/m/gone.mp3\n2,Jazz,b.mp3,/m/gone too.mp3\n3,Jazz,c.mp3,"
           "/m/five.mp3\n");
    EXPECT_THAT(Entries(), ElementsAre("3|Jazz|c.mp3|5|1"));
    EXPECT_THAT(msgBox.shown, ElementsAre(MissingBox()));
    EXPECT_EQ(mainModule.CurrentFile.DetailsPath, "/m/gone too.mp3");
}

TEST_F(TreeImportTest, TheBoxComesWhenTheTreeHasBeenBuiltAndBeforeThePointerIsItself) {
    std::size_t boxesAtTree = 9;
    views.onLoadTree = [&] { boxesAtTree = msgBox.shown.size(); };
    Import("#Categories\nJazz\n#Files\n1,Jazz,a.mp3,\n");
    EXPECT_EQ(boxesAtTree, 0U);
    EXPECT_THAT(calls, ElementsAre("pointer 11", "tree", "pointer 0"));
    EXPECT_THAT(msgBox.shown, ElementsAre(MissingBox())) << "an empty path is no file";
}

TEST_F(TreeImportTest, PointerDialogTreeListBoxAndPointerComeInThisOrder) {
    BoxInCalls box(calls);
    services.msgBox = &box;
    dialogs.onShow = [this] { calls.emplace_back("dialog"); };
    Import("#Categories\nJazz\n#Files\n1,Jazz,song.mp3," + Mp3("song.mp3") + "\n2,Jazz,a.mp3,/m/gone.mp3\n");
    EXPECT_THAT(calls, ElementsAre("pointer 11", "dialog", "tree", "load ''", "box Hinweis", "pointer 0"));
    services.msgBox = &msgBox;
}

TEST_F(TreeImportTest, TheCategoryIsSearchedForAMissingFileToo) {
    Import("#Categories\nJazz\nRock\n#Files\n1,Rock,a.mp3,/m/gone.mp3\n#Categories\nPop\n");
    EXPECT_THAT(Categories(), ElementsAre("Jazz", "Rock", "Pop2")) << "the place of the one that was found";
}

TEST_F(TreeImportTest, ALineThatIsNoEntrySearchesForNoCategory) {
    for (const char* line : {"1,Rock,/m/gone.mp3", "x,Rock,a.mp3,/m/gone.mp3"}) {
        Execute("Delete from Categories");
        Import("#Categories\nJazz\nRock\n#Files\n" + std::string(line) + "\n#Categories\nPop\n");
        EXPECT_THAT(Categories(), ElementsAre("Jazz", "Rock", "Pop")) << line;
    }
}

TEST_F(TreeImportTest, ACategoryThatIsGoneAgainAtOnceTakesNoEntries) {
    AddFile(5, "/m/five.mp3");
    connection.onStatement = [this](const std::string& statement) {
        if (statement == "Select Category_id from Categories where Category = 'Jazz'") {
            Execute("Delete from Categories where Category = 'Jazz'");
        }
    };
    Import("#Categories\nJazz\nRock\n#Files\n1,Jazz,a.mp3,/m/five.mp3\n");
    connection.onStatement = nullptr;
    EXPECT_THAT(Rows("Select Parent from FileCategories"), ElementsAre("Rock"))
        << "the last one that was made";
}

TEST_F(TreeImportTest, LinesThatAreNoEntriesAreToldInTheSameBox) {
    AddFile(5, "/m/five.mp3");
    for (const char* line : {"1,Jazz,/m/five.mp3", "x,Jazz,a.mp3,/m/five.mp3", ",Jazz,a.mp3,/m/five.mp3"}) {
        msgBox.shown.clear();
        Import("#Categories\nJazz\n#Files\n" + std::string(line) + "\n");
        EXPECT_THAT(msgBox.shown, ElementsAre(MissingBox())) << line;
    }
    EXPECT_THAT(Entries(), IsEmpty());
}

TEST_F(TreeImportTest, OnlyAudioFilesOnFullPathsJoinTheLibrary) {
    WriteFile(music / "text.txt", "text");
    std::filesystem::create_directory(music / "folder.mp3");
    ASSERT_EQ(::mkfifo((music / "pipe.mp3").c_str(), 0600), 0);
    Mp3("song.mp3");
    std::filesystem::current_path(music.Path());
    for (const std::string& file :
         {music / "text.txt", music / "folder.mp3", music / "pipe.mp3", "song.mp3"s}) {
        msgBox.shown.clear();
        Import("#Categories\nJazz\n#Files\n1,Jazz,a.mp3," + file + "\n");
        EXPECT_THAT(msgBox.shown, ElementsAre(MissingBox())) << file;
    }
    std::filesystem::current_path("/");
    EXPECT_EQ(Count("Select File_id from Files"), 0);
}

TEST_F(TreeImportTest, AKnownFileOfAnotherKindBecomesAnEntry) {
    AddFile(5, "/m/five.flac");
    Import("#Categories\nJazz\n#Files\n1,Jazz,five.flac,/m/five.flac\n");
    EXPECT_THAT(Entries(), ElementsAre("1|Jazz|five.flac|5|1"));
}

TEST_F(TreeImportTest, BothLineEndsAreReadAndEmptyLinesSkipped) {
    AddFile(5, "/m/five.mp3");
    Import("\xEF\xBB\xBF#Categories\r\n\r\nJazz\r\n\n#Files\r\n\r\n1,Jazz,a.mp3,/m/five.mp3\r\n2,Jazz,b.mp3,/"
           "m/five.mp3");
    EXPECT_THAT(Categories(), ElementsAre("Jazz"));
    EXPECT_THAT(Entries(), ElementsAre("1|Jazz|a.mp3|5|1", "2|Jazz|b.mp3|5|1"));
}

TEST_F(TreeImportTest, TextsThatAreNotUtf8AreWindows1252) {
    AddFile(5, "/m/Märchen.mp3");
    Import("#Categories\nM\xE4rchen\n#Files\n1,M\xE4rchen,M\xE4rchen.mp3,/m/M\xE4rchen.mp3\n");
    EXPECT_THAT(Entries(), ElementsAre("1|Märchen|Märchen.mp3|5|1"));
}

TEST_F(TreeImportTest, ANameOnThisMachineThatIsNotUtf8IsTakenAsItIs) {
    const std::string song = Mp3("M\xE4rchen.mp3");
    Import("#Categories\nMärchen\n#Files\n1,Märchen,M\xE4rchen.mp3," + song + "\n");
    EXPECT_THAT(Rows("Select Path from Files"), ElementsAre(song));
    EXPECT_THAT(Entries(), ElementsAre("1|Märchen|M\xE4rchen.mp3|1|1"));
    std::filesystem::remove(song);
    Import("#Categories\nMärchen\n#Files\n1,Märchen,M\xE4rchen.mp3," + song + "\n");
    EXPECT_THAT(Entries(), ElementsAre("1|Märchen|M\xE4rchen.mp3|1|1", "1|Märchen1|M\xE4rchen.mp3|1|2"))
        << "the library knows it still";
}

TEST_F(TreeImportTest, AnApostropheInACategoryFailsAndWhatWasWrittenStays) {
    for (const char* name : {"it's", "it''s"}) {
        WriteFile(path, "#Categories\nJazz\n" + std::string(name) + "\nRock\n");
        connection.statements.clear();
        EXPECT_NE(NumberOf([&] { ImportTree(work, views, driver); }), 0) << name;
        EXPECT_THAT(connection.StatementsOf("Select * from Categories where Category = 'it"), IsEmpty());
    }
    EXPECT_THAT(Categories(), ElementsAre("Jazz", "Jazz1"));
}

TEST_F(TreeImportTest, AFileThatCanNotBeOpenedIsAFailureOfTheCaller) {
    dialogs.file = folder / "missing.qvn";
    EXPECT_EQ(NumberOf([&] { ImportTree(work, views, driver); }), ErrorNumber::FileNotFound);
    dialogs.file = folder.Path();
    EXPECT_EQ(NumberOf([&] { ImportTree(work, views, driver); }), ErrorNumber::PathFileAccess);
    EXPECT_THAT(calls, ElementsAre("pointer 11", "pointer 11"));
}

TEST_F(TreeImportTest, AFailingStatementKeepsWhatWasWritten) {
    AddFile(5, "/m/five.mp3");
    connection.failOn = "Insert into FileCategories";
    WriteFile(path, "#Categories\nJazz\n#Files\n1,Jazz,a.mp3,/m/five.mp3\n");
    EXPECT_EQ(NumberOf([&] { ImportTree(work, views, driver); }), 19);
    EXPECT_THAT(Categories(), ElementsAre("Jazz"));
    EXPECT_THAT(calls, ElementsAre("pointer 11")) << "the tree is not built again";
}

TEST_F(TreeImportTest, ValuesCarryOverFromFileToFileAsInADrop) {
    const std::string bytes = Mp3Bytes("", "", "");
    WriteBytes(music / "x.mp3", bytes.substr(0, bytes.size() - 128));
    mainModule.CurrentFile.CurrentFileName = "Blue - Before.mp3";
    Import("#Categories\nJazz\n#Files\n1,Jazz,x.mp3," + (music / "x.mp3") + "\n");
    EXPECT_THAT(Rows("Select T.Name from Files F, Titel T where F.Title_id = T.Title_id"),
                ElementsAre("Before"))
        << "a file without a tag is named after the one before it";
    EXPECT_EQ(mainModule.CurrentFile.CurrentFileName, "x.mp3");
}

TEST_F(TreeImportTest, NulBytesInANameFailAtTheStatement) {
    WriteFile(path, "#Categories\nJa\0zz\n"s);
    EXPECT_NE(NumberOf([&] { ImportTree(work, views, driver); }), 0);
    EXPECT_THAT(Categories(), IsEmpty());
}

TEST_F(TreeImportTest, ALineOfMegabytesIsALine) {
    const std::string name(3'000'000, 'x');
    Import("#Categories\n" + name + "\n#Files\n1," + name + ",a.mp3,/m/" + name + ".mp3\n");
    EXPECT_THAT(Rows("Select length(Category) from Categories"), ElementsAre("3000000"));
    EXPECT_THAT(msgBox.shown, ElementsAre(MissingBox()));
}

TEST_F(TreeImportTest, AnotherImportInTheMiddleDisturbsNeither) {
    const std::string one = Mp3("one.mp3");
    const std::string two = Mp3("two.mp3", "Other");
    WriteFile(folder / "inner.qvn", "#Categories\nInner\n#Files\n1,Inner,two.mp3," + two + "\n");
    bool isInside = false;
    events.onDoEvents = [&] {
        if (!std::exchange(isInside, true)) {
            dialogs.file = folder / "inner.qvn";
            ImportTree(work, views, driver);
        }
    };
    Import("#Categories\nOuter\n#Files\n1,Outer,one.mp3," + one + "\n2,Outer,two.mp3," + two + "\n");
    EXPECT_TRUE(isInside);
    EXPECT_THAT(Rows("Select [Position], Parent, Filename from FileCategories"),
                ElementsAre("1|Inner|two.mp3", "1|Outer|one.mp3", "2|Outer|two.mp3"));
    EXPECT_EQ(Count("Select File_id from Files"), 2);
}

TEST_F(TreeImportTest, AFileThatAShareDoesNotAnswerForLeavesTheWindowAliveAndTheLibraryFree) {
    const std::string song = Mp3("a.mp3");
    SlowServices share;
    services.fileSystem = share.fileSystem.get();
    services.readAhead = share.readAhead.get();
    share.disk.HangLooks(song);
    int waits = 0;
    events.onDoEvents = [&] {
        if (++waits == 3) {
            OpenLibrary(libraryPath)->Execute("Insert into Categories (Category) values ('another')");
            share.disk.LetGo();
        }
    };
    Import("#Categories\nJazz\n#Files\n1,Jazz,a.mp3," + song + "\n");
    EXPECT_GE(waits, 3);
    EXPECT_THAT(Entries(), ElementsAre("1|Jazz|a.mp3|1|1"));
}

} // namespace
} // namespace quavernet::test
