#include "scanner/ScanDriver.h"

#include "support/LookupKeys.h"
#include "support/RecordingConnection.h"
#include "support/ScanDoubles.h"
#include "support/TestLibrary.h"

#include "scanner/SavedLog.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class StoreFileRecordTest : public LibraryTest {
protected:
    StoreFileRecordTest() : connection(RecordingConnection::Install()) { SetFile(); }

    // The record as the inspection leaves it.
    void SetFile() {
        file = CurrentFile();
        file.FileArtist = "Blue";
        file.FileTitle = "Song";
        file.FileAlbum = "Best";
        file.FileQuality = "128";
        file.FileGenre = "17";
        file.FileSize = "3145728";
        file.FileName = "song.mp3";
        file.FilePath = "/music/song.mp3";
        file.FileDate = "29.02.2024 13:04:05";
        file.FileDrive = "/";
        file.AudioInfo.Length = 200;
    }

    std::vector<std::string> Store() {
        connection.statements.clear();
        driver.StoreFileRecord(file);
        return connection.statements;
    }

    CurrentFile& File() { return file; }

    CurrentFile file;
    RecordingConnection& connection;
    CallList calls;
    LongWorkDouble work{calls};
    RecordingScanView view{calls};
    RecordingScanLog log{calls};
    ScanDriver driver{work, view, log};
};

TEST_F(StoreFileRecordTest, ANewFileSendsTheseStatementsInThisOrder) {
    EXPECT_THAT(
        Store(),
        ElementsAre(
            "Select Inter_id from Interpret where Interpret = 'Blue'",
            "Insert into Interpret (Interpret) values ('Blue')",
            "Select Inter_id from Interpret where Interpret = 'Blue'",
            "Select Album_id from Albums where Name = 'Best'", "Insert into Albums (Name) values ('Best')",
            "Select Album_id from Albums where Name = 'Best'",
            "Select Quality_id from Quality where Quality = 128",
            "Insert into Quality (Quality) values (128)",
            "Select Quality_id from Quality where Quality = 128",
            "Select Drive_id from Drive where Drive = '/'", "Insert into Drive (Drive) values ('/')",
            "Select Drive_id from Drive where Drive = '/'", "Select Title_id from Titel where Name = 'Song'",
            "Insert into Titel (Name) values ('Song')", "Select Title_id from Titel where Name = 'Song'",
            "Select Extension_Id from Extensions where Extension = 'mp3'",
            "Select File_id from Files where Path = '/music/song.mp3'",
            "Insert Into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, DateLastModified, Drive_id, "
            "Quality_id, Length, Extension_id, Genre_id, Album_id) values (1, 1,'song.mp3', "
            "'/music/song.mp3', 3145728, '29.02.2024', 1, 1, 200, 1, 17, 1)"));
    EXPECT_EQ(events.count, 5) << "events run once after each new lookup row";
    EXPECT_THAT(Rows("Select Name, Path, Sizeinbytes, DateLastModified, Length, Genre_id, Hits from Files"),
                ElementsAre("song.mp3|/music/song.mp3|3145728|29.02.2024|200|17|0"));
}

TEST_F(StoreFileRecordTest, AKnownFileIsUpdatedAndKeepsItsFileId) {
    Store();
    SetFile();
    File().FileTitle = "Other";
    File().AudioInfo.Length = 201;

    EXPECT_THAT(
        Store(),
        ElementsAre(
            "Select Inter_id from Interpret where Interpret = 'Blue'",
            "Select Album_id from Albums where Name = 'Best'",
            "Select Quality_id from Quality where Quality = 128",
            "Select Drive_id from Drive where Drive = '/'", "Select Title_id from Titel where Name = 'Other'",
            "Insert into Titel (Name) values ('Other')", "Select Title_id from Titel where Name = 'Other'",
            "Select Extension_Id from Extensions where Extension = 'mp3'",
            "Select File_id from Files where Path = '/music/song.mp3'",
            "Update Files Set Title_id = 2, Inter_id = 1, Name = 'song.mp3', Path = "
            "'/music/song.mp3', Sizeinbytes = 3145728, DateLastModified = '29.02.2024', Drive_id = 1, "
            "Quality_id = 1, Length = 201, Extension_id = 1, Genre_id = 17, Album_id = 1 where "
            "File_id = 1"));
    EXPECT_THAT(Rows("Select File_id, Title_id, Length from Files"), ElementsAre("1|2|201"));
}

TEST_F(StoreFileRecordTest, EachKeyHasItsOwnPlaceInTheInsertAndInTheUpdate) {
    Execute({"Insert into Titel (Title_id, Name) values (101, 'Song')",
             "Insert into Interpret (Inter_id, Interpret) values (102, 'Blue')",
             "Insert into Drive (Drive_id, Drive) values (103, '/')",
             "Insert into Quality (Quality_id, Quality) values (104, 128)",
             "Insert into Albums (Album_id, Name) values (105, 'Best')"});
    File().FileName = "song.wav";
    File().FilePath = "/music/song.wav";
    EXPECT_EQ(Store().back(),
              "Insert Into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, DateLastModified, Drive_id, "
              "Quality_id, Length, Extension_id, Genre_id, Album_id) values (101, 102,'song.wav', "
              "'/music/song.wav', 3145728, '29.02.2024', 103, 104, 200, 2, 17, 105)");
    Execute("Update Files set File_id = 106");
    EXPECT_EQ(Store().back(),
              "Update Files Set Title_id = 101, Inter_id = 102, Name = 'song.wav', Path = '/music/song.wav', "
              "Sizeinbytes = 3145728, DateLastModified = '29.02.2024', Drive_id = 103, Quality_id = 104, "
              "Length = 200, Extension_id = 2, Genre_id = 17, Album_id = 105 where File_id = 106");
}

TEST_F(StoreFileRecordTest, EachNewRowGivesItsOwnKey) {
    SpreadLookupKeys();
    Store();
    EXPECT_THAT(KeysOfFiles(), ElementsAre("101|201|301|401|501"));
    EXPECT_THAT(TextsOfNewKeys(), ElementsAre("Song|Blue|/|128|Best"));
}

TEST_F(StoreFileRecordTest, EmptyNamesAreStoredAsUnknown) {
    File().FileArtist.clear();
    File().FileTitle.clear();
    Store();

    EXPECT_THAT(Rows("Select Interpret from Interpret"), ElementsAre("Unbekannt"));
    EXPECT_THAT(Rows("Select Name from Titel"), ElementsAre("Unbekannt"));
    EXPECT_EQ(File().FileArtist, "Unbekannt");
    EXPECT_EQ(File().FileTitle, "Unbekannt");
}

TEST_F(StoreFileRecordTest, AFileWithoutAnAlbumGoesUnderTheRowForNone) {
    File().FileAlbum = std::string("\0\0", 2);
    Store();

    EXPECT_THAT(Rows("Select Name from Albums"), ElementsAre("Kein Album..."));
    EXPECT_EQ(File().FileAlbum, "Kein Album...");
}

TEST_F(StoreFileRecordTest, TheAlbumLosesItsNulsAndNothingElse) {
    File().FileAlbum = std::string(" A\0B \0", 6);
    Store();

    EXPECT_THAT(Rows("Select Name from Albums"), ElementsAre(" AB "));
}

TEST_F(StoreFileRecordTest, AnEmptyQualityIsZero) {
    File().FileQuality.clear();
    Store();

    EXPECT_THAT(Rows("Select Quality from Quality"), ElementsAre("0"));
    EXPECT_EQ(File().FileQuality, "0");
}

TEST_F(StoreFileRecordTest, ADriveLosesItsFinalSeparatorButNeverItsLastCharacter) {
    File().FileDrive = "/media/disc/";
    Store();
    EXPECT_EQ(File().FileDrive, "/media/disc");

    File().FileDrive = "C:\\";
    Store();
    EXPECT_EQ(File().FileDrive, "C:");

    File().FileDrive = "/";
    Store();
    EXPECT_EQ(File().FileDrive, "/");

    EXPECT_THAT(Rows("Select Drive from Drive order by Drive_id"), ElementsAre("/media/disc", "C:", "/"));
}

TEST_F(StoreFileRecordTest, ADriveWithAnApostropheIsFoundAgain) {
    File().FileDrive = "/media/Bob's disc/";
    Store();
    File().FileDrive = "/media/Bob's disc/";
    Store();

    EXPECT_THAT(Rows("Select Drive from Drive"), ElementsAre("/media/Bob's disc"));
    EXPECT_EQ(File().FileDrive, "/media/Bob's disc");
}

TEST_F(StoreFileRecordTest, ApostrophesAreDoubledInStatementsAndSingleElsewhere) {
    File().FileArtist = "Guns N' Roses";
    File().FileTitle = "Don't Cry";
    File().FileAlbum = "It's";
    File().FileName = "don't.mp3";
    File().FilePath = "/m/it's/don't.mp3";
    const std::vector<std::string> statements = Store();

    EXPECT_THAT(statements, ::testing::Contains("Select Inter_id from Interpret where Interpret = 'Guns N'' "
                                                "Roses'"));
    EXPECT_THAT(statements,
                ::testing::Contains("Select File_id from Files where Path = '/m/it''s/don''t.mp3'"));
    EXPECT_THAT(Rows("Select I.Interpret, T.Name, A.Name, F.Name, F.Path from Files F, Interpret I, Titel T, "
                     "Albums A where F.Inter_id = I.Inter_id and F.Title_id = T.Title_id and A.Album_id = "
                     "F.Album_id"),
                ElementsAre("Guns N' Roses|Don't Cry|It's|don't.mp3|/m/it's/don't.mp3"));
    EXPECT_EQ(File().FileArtist, "Guns N' Roses");
    EXPECT_EQ(File().FileTitle, "Don't Cry");
    EXPECT_EQ(File().FileAlbum, "It's");
    EXPECT_EQ(File().FileName, "don't.mp3");
    EXPECT_EQ(File().FilePath, "/m/it's/don't.mp3");

    Store();
    EXPECT_EQ(Count("Select Inter_id from Interpret"), 1) << "found again by its quoted form";
    EXPECT_EQ(Count("Select File_id from Files"), 1);
}

TEST_F(StoreFileRecordTest, NamesThatDifferOnlyInCaseShareTheFirstRow) {
    Store();
    File().FileArtist = "BLUE";
    File().FileTitle = "sONG";
    Store();

    EXPECT_THAT(Rows("Select Interpret from Interpret"), ElementsAre("Blue"));
    EXPECT_THAT(Rows("Select Name from Titel"), ElementsAre("Song"));
}

TEST_F(StoreFileRecordTest, TheNewRowIsAskedForUntilItCanBeSeen) {
    connection.hide = "Select Inter_id";
    connection.hideRounds = 4; // The question before the insert, and three after it.
    Store();

    EXPECT_EQ(connection.StatementsOf("Select Inter_id").size(), 5u);
    EXPECT_EQ(connection.StatementsOf("Insert into Interpret").size(), 1u);
    EXPECT_EQ(events.count, 5) << "no events between the rounds";
    EXPECT_THAT(Rows("Select Inter_id from Files"), ElementsAre("1"));
}

TEST_F(StoreFileRecordTest, EventsRunBetweenTheInsertAndTheSecondQuestion) {
    std::vector<std::size_t> sent;
    events.onDoEvents = [&] { sent.push_back(connection.statements.size()); };
    Store();

    EXPECT_THAT(sent, ElementsAre(2u, 5u, 8u, 11u, 14u));
}

TEST_F(StoreFileRecordTest, TheExtensionIsLookedUpInLowerCase) {
    File().FilePath = "/music/SONG.WAV";

    EXPECT_THAT(Store(), ::testing::Contains("Select Extension_Id from Extensions where Extension = 'wav'"));
    EXPECT_THAT(Rows("Select Extension_id from Files"), ElementsAre("2"));
}

TEST_F(StoreFileRecordTest, AnUnknownExtensionFailsAndWritesNoFile) {
    File().FilePath = "/music/song.flac";

    EXPECT_THROW(Store(), RuntimeError);
    EXPECT_THAT(Rows("Select Path from Files"), IsEmpty());
    EXPECT_THAT(Rows("Select Name from Titel"), ElementsAre("Song")) << "what was written stays";
}

TEST_F(StoreFileRecordTest, TheDateLosesItsTimeAndTakesTheSystemsSeparator) {
    File().FileDate = "01.01.1900 00:00:00";
    Store();
    EXPECT_THAT(Rows("Select DateLastModified from Files"), ElementsAre("01.01.1900"));

    services.regional.dateSeparator = "/";
    SetFile();
    EXPECT_THAT(Store().back(), ::testing::HasSubstr("DateLastModified = '29/02/2024', "));
}

TEST_F(StoreFileRecordTest, ATextThatIsNoDateGoesIntoTheStatementAsItIs) {
    File().FileDate = "gestern";

    try {
        Store();
    } catch (const RuntimeError&) {
        // Whether the engine takes it is the engine's affair.
    }
    EXPECT_THAT(connection.statements.back(), ::testing::HasSubstr(", 'gestern', "));
}

TEST_F(StoreFileRecordTest, TheGenreNumberIsStoredWithoutALookAtTheGenres) {
    File().FileGenre = "200";
    const std::vector<std::string> statements = Store();

    EXPECT_THAT(Rows("Select Genre_id from Files"), ElementsAre("200"));
    for (const std::string& statement : statements) {
        EXPECT_EQ(statement.find("Genres"), std::string::npos);
    }
}

TEST_F(StoreFileRecordTest, AFailingStatementGoesUpToTheCaller) {
    connection.failOn = "Insert into Quality";

    EXPECT_THROW(Store(), RuntimeError);
    EXPECT_EQ(connection.statements.back(), "Insert into Quality (Quality) values (128)");
    EXPECT_THAT(Rows("Select Name from Albums"), ElementsAre("Best")) << "nothing is taken back";
}

TEST_F(StoreFileRecordTest, NamesOfAnyBytesAreStoredAndFoundAgain) {
    const std::vector<std::string> names{"two\nlines.mp3", "bad\xFF\xFE.mp3", "\xE4'\".mp3",
                                         "a;--.mp3",       "[F.x].mp3",       "%_.mp3"};
    for (int round = 0; round < 2; ++round) {
        for (const std::string& name : names) {
            File().FileName = name;
            File().FilePath = "/music/" + name;
            Store();
        }
    }

    std::vector<std::string> paths;
    for (const std::string& name : names) {
        paths.push_back("/music/" + name);
    }
    EXPECT_EQ(Rows("Select Path from Files order by File_id"), paths);
}

TEST_F(StoreFileRecordTest, WithoutTheScanLogNothingIsLogged) {
    Store();

    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(StoreFileRecordTest, TheScanLogGetsALineAndThreeCounters) {
    mainModule.ScanLogEnabled = true;
    clock.now = {2026, 11, 20, 4, 3, 2};
    File().FilePath = "/music/it's.mp3";
    Store();

    EXPECT_THAT(calls, ElementsAre("log line: 04:03:02 - Saved... /music/it's.mp3", "log files: 1",
                                   "log megabytes: 3", "log minutes: 3", "log select"));
}

TEST_F(StoreFileRecordTest, TheLogCountersAreRoundedAfterEachFile) {
    mainModule.ScanLogEnabled = true;
    File().FileSize = "5000"; // 0.0048 MB: less than half a hundredth.
    File().AudioInfo.Length = 29;
    for (int i = 0; i < 100; ++i) {
        Store();
    }
    EXPECT_THAT(calls, ::testing::Not(::testing::Contains("log minutes: 1")));
    EXPECT_THAT(calls, ::testing::Contains("log megabytes: 0"));
    EXPECT_EQ(calls[calls.size() - 4], "log files: 100");

    calls.clear();
    File().FileSize = "1310720"; // 1.25 MB
    File().AudioInfo.Length = 30;
    Store();
    EXPECT_THAT(calls, ::testing::Contains("log megabytes: 1,25"));
    EXPECT_THAT(calls, ::testing::Contains("log minutes: 1"));
}

TEST_F(StoreFileRecordTest, HalfAMinuteIsTheFirstThatCountsAndNothingBelowIt) {
    mainModule.ScanLogEnabled = true;
    SavedLog saved(log);
    for (int i = 0; i < 50; ++i) {
        saved.Add("/a.mp3", "0", "29.9999");
        EXPECT_EQ(calls[calls.size() - 2], "log minutes: 0");
    }
    saved.Add("/a.mp3", "0", "30");
    EXPECT_EQ(calls[calls.size() - 2], "log minutes: 1");
    saved.Add("/a.mp3", "0", "89.9999");
    EXPECT_EQ(calls[calls.size() - 2], "log minutes: 2");
    saved.Add("/a.mp3", "0", "150");
    EXPECT_EQ(calls[calls.size() - 2], "log minutes: 5");
}

TEST_F(StoreFileRecordTest, AFailingLogChangesNothing) {
    mainModule.ScanLogEnabled = true;
    log.failing = true;

    EXPECT_NO_THROW(Store());

    EXPECT_EQ(calls.size(), 5u) << "each statement of the step runs though the one before it failed";
    EXPECT_EQ(Count("Select File_id from Files"), 1);
}

} // namespace
} // namespace quavernet::test
