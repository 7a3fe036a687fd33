#include "library/CleanDatabase.h"

#include "adapters/posix/PosixFileSystem.h"
#include "app/LoadResString.h"
#include "platform/LibraryError.h"
#include "support/LongWorkDouble.h"
#include "support/TestLibrary.h"

#include <fstream>

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace quavernet::test {

namespace {

class CleanDatabaseTest : public LibraryTest {
protected:
    CleanDatabaseTest() {
        services.fileSystem = fileSystem.get();
        events.onDoEvents = [this] { calls.push_back("events"); };
    }

    /// A row of Files, with a file on disk only if `exists`.
    void AddFile(int id, const std::string& name, bool exists) {
        if (exists) {
            std::ofstream(music / name) << "x";
        }
        Execute("Insert into Files (File_id, Name, Path, Album_id) values (" + std::to_string(id) + ", '" +
                name + "', '" + (music / name) + "', 7)");
    }
    void AddEntry(int file, const std::string& category, int position) {
        Execute("Insert into FileCategories (File_id, Category_id, [Position], Parent) values (" +
                std::to_string(file) + ", 1, " + std::to_string(position) + ", '" + category + "')");
    }
    std::vector<std::string> Files() { return Rows("Select File_id from Files order by File_id"); }
    std::vector<std::string> Entries() {
        return Rows(
            "Select Parent, [Position], File_id from FileCategories order by Parent, [Position], File_id");
    }

    TemporaryFolder music;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
    CallList calls;
    LongWorkDouble work{calls};
    LibraryViewsDouble views{calls};
};

} // namespace

TEST_F(CleanDatabaseTest, TheQuestionWarnsOfUnreachableDrives) {
    mnuCleanDatabase_Click(work, views);
    EXPECT_THAT(
        msgBox.shown,
        ElementsAre(ShownBox{"Bitte beachten Sie, dass Dateien von inaktiven Netzlaufwerken\nebenfalls "
                             "aus der Datenbank entfernt werden!\n\nMöchten Sie fortfahren?",
                             "Datenbank säubern", MsgBox::Icon::Information, MsgBox::Buttons::NoByDefault}))
        << "Return alone must not let rows go";
}

TEST_F(CleanDatabaseTest, TheQuestionFollowsTheLanguage) {
    settings.values["Language"] = "ENG";
    mnuCleanDatabase_Click(work, views);
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].text,
              LoadResString(357) + "\n" + LoadResString(358) + "\n\n" + LoadResString(359));
    EXPECT_NE(msgBox.shown[0].title, "Datenbank säubern");
}

TEST_F(CleanDatabaseTest, AnsweringNoLeavesEverythingAsItWas) {
    AddFile(1, "gone.mp3", false);
    AddEntry(1, "Rock", 1);
    RecordingConnection& recorder = Record();
    msgBox.answers = {MsgBox::Answer::No};
    mnuCleanDatabase_Click(work, views);
    EXPECT_THAT(recorder.statements, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(Files(), ElementsAre("1"));
}

TEST_F(CleanDatabaseTest, AnsweringYesCleans) {
    AddFile(1, "gone.mp3", false);
    AddFile(2, "kept.mp3", true);
    msgBox.answers = {MsgBox::Answer::Yes};
    mnuCleanDatabase_Click(work, views);
    EXPECT_THAT(Files(), ElementsAre("2"));
}

TEST_F(CleanDatabaseTest, TheWindowFollowsTheWorkInItsOrder) {
    AddFile(1, "gone.mp3", false);
    views.onLoadTree = [this] { EXPECT_THAT(Files(), IsEmpty()) << "the tree comes after the deletes"; };
    CleanDatabase(work, views);
    EXPECT_THAT(calls, ElementsAre("pointer 11", "panel 1: Datenbank säubern...", "events", "tree", "load ''",
                                   "panel 1: ", "pointer 0"));
}

TEST_F(CleanDatabaseTest, WithLoadOverSearchOnlyTheTreeIsRebuilt) {
    mainModule.LoadOverSearch = true;
    AddFile(1, "gone.mp3", false);
    CleanDatabase(work, views);
    EXPECT_THAT(calls, ElementsAre("pointer 11", "panel 1: Datenbank säubern...", "events", "tree",
                                   "panel 1: ", "pointer 0"));
    EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(CleanDatabaseTest, AnEmptyLibraryIsCleanedToo) {
    RecordingConnection& recorder = Record();
    CleanDatabase(work, views);
    EXPECT_THAT(recorder.statements, ElementsAre("(backup)", "Select Path, File_id from Files"));
}

TEST_F(CleanDatabaseTest, TheStatementsComeFileByFile) {
    AddFile(1, "gone.mp3", false);
    AddFile(2, "kept.mp3", true);
    AddFile(13, "lost.mp3", false);
    AddEntry(13, "Rock", 2);
    RecordingConnection& recorder = Record();
    CleanDatabase(work, views);
    EXPECT_THAT(
        recorder.statements,
        ElementsAre(
            "(backup)", "Select Path, File_id from Files", "Delete from Files where File_id = 1",
            "Select Parent, [Position] from FileCategories where File_id = 1",
            "Delete from Files where File_id = 13",
            "Select Parent, [Position] from FileCategories where File_id = 13",
            "Delete from FileCategories where ([Position] = 2 and File_id = 13 and Parent = 'Rock')",
            "Update FileCategories set [Position] = [Position] - 1 where ([Position] > 2 and Parent = "
            "'Rock')"));
}

TEST_F(CleanDatabaseTest, GapsCloseInTheFilesOwnCategoriesOnly) {
    AddFile(1, "gone.mp3", false);
    AddFile(2, "kept.mp3", true);
    AddEntry(2, "Rock", 1);
    AddEntry(1, "Rock", 2);
    AddEntry(2, "Rock", 3);
    AddEntry(1, "Jazz", 1);
    AddEntry(2, "Jazz", 2);
    AddEntry(2, "Pop", 5);
    CleanDatabase(work, views);
    EXPECT_THAT(Entries(), ElementsAre("Jazz|1|2", "Pop|5|2", "Rock|1|2", "Rock|2|2"));
}

TEST_F(CleanDatabaseTest, AFileListedTwiceInOneCategoryLosesBothEntriesAndBothGapsClose) {
    AddFile(1, "gone.mp3", false);
    AddFile(2, "kept.mp3", true);
    AddFile(3, "other.mp3", true);
    AddEntry(2, "Rock", 1);
    AddEntry(1, "Rock", 2);
    AddEntry(3, "Rock", 3);
    AddEntry(2, "Rock", 4);
    AddEntry(1, "Rock", 5);
    AddEntry(3, "Rock", 6);
    CleanDatabase(work, views);
    EXPECT_THAT(Entries(), ElementsAre("Rock|1|2", "Rock|2|3", "Rock|3|2", "Rock|4|3"));
}

TEST_F(CleanDatabaseTest, NeighbouringEntriesOfOneFileGoTogether) {
    AddFile(1, "gone.mp3", false);
    AddFile(2, "kept.mp3", true);
    AddEntry(1, "Rock", 1);
    AddEntry(1, "Rock", 2);
    AddEntry(2, "Rock", 3);
    CleanDatabase(work, views);
    EXPECT_THAT(Entries(), ElementsAre("Rock|1|2"));
}

TEST_F(CleanDatabaseTest, ACategoryWithAnApostropheStopsTheRunAfterTheFilesRowIsGone) {
    AddFile(1, "gone.mp3", false);
    AddFile(2, "lost.mp3", false);
    AddFile(3, "never reached.mp3", false);
    AddEntry(1, "Rock", 1);
    Execute(
        "Insert into FileCategories (File_id, Category_id, [Position], Parent) values (2, 1, 1, 'Rock ''n'' "
        "Roll')");
    EXPECT_THROW(CleanDatabase(work, views), RuntimeError);
    EXPECT_THAT(Files(), ElementsAre("3"));
    EXPECT_THAT(Entries(), ElementsAre("Rock 'n' Roll|1|2"));
    EXPECT_THAT(calls, ElementsAre("pointer 11", "panel 1: Datenbank säubern...", "events"));
}

TEST_F(CleanDatabaseTest, LookupsAndCoversKeepTheirRows) {
    AddFile(1, "gone.mp3", false);
    Execute("Insert into Albums (Album_id, Name) values (7, 'Lost')");
    Execute("Insert into Covers (Album_id, Front) values (7, 'front.jpg')");
    Execute("Insert into Interpret (Interpret) values ('Nobody')");
    CleanDatabase(work, views);
    EXPECT_THAT(Files(), IsEmpty());
    EXPECT_EQ(Value("Select Name from Albums"), "Lost");
    EXPECT_EQ(Value("Select Front from Covers"), "front.jpg");
    EXPECT_EQ(Value("Select Interpret from Interpret"), "Nobody");
}

TEST_F(CleanDatabaseTest, TheEndTellsHowManyFilesWent) {
    AddFile(1, "gone.mp3", false);
    AddFile(2, "lost.mp3", false);
    AddFile(3, "kept.mp3", true);
    views.onLoadTree = [this] { clock.now.second += 2; };
    CleanDatabase(work, views);
    AddFile(4, "away.mp3", false);
    CleanDatabase(work, views);
    CleanDatabase(work, views);
    EXPECT_THAT(work.endWords,
                ElementsAre("Fertig: 2 Dateien entfernt, 0:02", "Fertig: 1 Datei entfernt, 0:02",
                            "Fertig: keine Datei fehlt, 0:02"));
}

TEST_F(CleanDatabaseTest, WithoutRoomForTheCopyTheCleaningGoesOnAndSaysSo) {
    AddFile(1, "gone.mp3", false);
    Record().failBackup = true;
    CleanDatabase(work, views);
    EXPECT_THAT(Files(), IsEmpty());
    EXPECT_THAT(
        work.endWords,
        ElementsAre("Fertig: 1 Datei entfernt, 0:00 - Keine Sicherungskopie der Datenbank: no space"));
}

TEST_F(CleanDatabaseTest, ADamagedLibraryIsNotCleaned) {
    AddFile(1, "gone.mp3", false);
    Record().backupFault = LibraryFault::Damaged;
    EXPECT_THROW(CleanDatabase(work, views), LibraryError);
    EXPECT_THAT(Files(), ElementsAre("1"));
}

TEST_F(CleanDatabaseTest, AFolderInTheFilesPlaceIsNoFile) {
    AddFile(1, "song.mp3", false);
    std::filesystem::create_directory(music / "song.mp3");
    CleanDatabase(work, views);
    EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(CleanDatabaseTest, NamesWithApostrophesAndForeignBytesAreFoundOnDisk) {
    std::ofstream(music / "It's.mp3") << "x";
    std::ofstream(music / "m\xFCsic.mp3") << "x";
    Execute("Insert into Files (File_id, Path) values (1, '" + (music / "It''s.mp3") + "')");
    Execute("Insert into Files (File_id, Path) values (2, '" + (music / "m\xFCsic.mp3") + "')");
    CleanDatabase(work, views);
    EXPECT_THAT(Files(), ElementsAre("1", "2"));
}

} // namespace quavernet::test
