#include "scanner/OggStore.h"

#include "support/LookupKeys.h"
#include "support/OggFiles.h"
#include "support/OggVolumes.h"
#include "support/RecordingConnection.h"
#include "support/TestLibrary.h"

#include "scanner/ScanDriver.h"
#include "scanner/Volumes.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class OggStoreTest : public LibraryTest {
protected:
    OggStoreTest() : connection(RecordingConnection::Install()) {
        services.fileSystem = &volumes;
        volumes.onFile = [](FileFacts& facts) {
            facts.drivePath = "/";
            facts.dateLastModified = {2024, 2, 29, 13, 4, 5};
            facts.dateCreated = {1999, 1, 1, 0, 0, 0};
        };
        WriteWhole(music / "song.ogg", "x");
    }

    OggRecord Song(const std::string& name = "song.ogg") {
        return {"Song", "Blue", "112", "206", name, music / name, "7840", "", "Rock", "", "Best"};
    }

    std::vector<std::string> Store(OggRecord& record) {
        connection.statements.clear();
        StoreOggRecord(record, saved);
        return connection.statements;
    }
    std::vector<std::string> Store() {
        OggRecord record = Song();
        return Store(record);
    }
    std::string Path() { return music / "song.ogg"; }

    RecordingConnection& connection;
    TemporaryFolder music;
    OggVolumes volumes;
    CallList calls;
    RecordingScanLog log{calls};
    SavedLog saved{log};
};

TEST_F(OggStoreTest, ANewFileSendsTheseStatementsInThisOrder) {
    EXPECT_THAT(
        Store(),
        ElementsAre(
            "Select Title_id from Titel where Name = 'Song'", "Insert Into Titel (Name) values ('Song')",
            "Select Max(Title_id) from Titel", "Select Inter_id from Interpret where Interpret = 'Blue'",
            "Insert Into Interpret (Interpret) values ('Blue')", "Select Max(Inter_id) from Interpret",
            "Select Drive_id from Drive where Drive = '/'", "Insert Into Drive (Drive) values ('/')",
            "Select Max(Drive_id) from Drive", "Select Quality_id from Quality where Quality = 112",
            "Insert Into Quality (Quality) values (112)", "Select Max(Quality_id) from Quality",
            "Select Album_id from Albums where Name = 'Best'", "Insert Into Albums (Name) values ('Best')",
            "Select Max(Album_id) from Albums", "Select Genre_id from Genres where Genre = 'Rock'",
            "Select File_id from Files where Path = '" + Path() + "'",
            "Insert into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, "
            "DateLastModified, Drive_id, Quality_id, Length, Extension_id, Genre_id, "
            "Album_id) values (1, 1, 'song.ogg', '" +
                Path() + "', 7840, '29.02.2024 13:04:05', 1, 1, 206, 3, 17, 1)"));
    EXPECT_EQ(events.count, 1);
    EXPECT_THAT(Rows("Select Name, Path, Sizeinbytes, DateLastModified, Length, Genre_id, Hits from Files"),
                ElementsAre("song.ogg|" + Path() + "|7840|29.02.2024 13:04:05|206|17|0"));
}

TEST_F(OggStoreTest, AKnownFileIsFoundAndUpdatedByItsPath) {
    Store();
    OggRecord record = Song();
    record.title = "Other";
    record.length = "207";
    EXPECT_THAT(Store(record),
                ElementsAre("Select Title_id from Titel where Name = 'Other'",
                            "Insert Into Titel (Name) values ('Other')", "Select Max(Title_id) from Titel",
                            "Select Inter_id from Interpret where Interpret = 'Blue'",
                            "Select Drive_id from Drive where Drive = '/'",
                            "Select Quality_id from Quality where Quality = 112",
                            "Select Album_id from Albums where Name = 'Best'",
                            "Select Genre_id from Genres where Genre = 'Rock'",
                            "Select File_id from Files where Path = '" + Path() + "'",
                            "Update Files set Title_id = 2, Inter_id = 1, Name = 'song.ogg',Path = '" +
                                Path() +
                                "',Sizeinbytes = 7840,DateLastModified = '29.02.2024 13:04:05', "
                                "Drive_id = 1,Quality_id = 1,Length = 207,Extension_id = 3,Genre_id = 17,"
                                "Album_id = 1 where Path = '" +
                                Path() + "'"));
    EXPECT_THAT(Rows("Select File_id, Title_id, Length from Files"), ElementsAre("1|2|207"));
}

TEST_F(OggStoreTest, EachKeyHasItsOwnPlaceInTheInsertAndInTheUpdate) {
    Execute({"Insert into Titel (Title_id, Name) values (101, 'Song')",
             "Insert into Interpret (Inter_id, Interpret) values (102, 'Blue')",
             "Insert into Drive (Drive_id, Drive) values (104, '/')",
             "Insert into Quality (Quality_id, Quality) values (105, 112)",
             "Insert into Albums (Album_id, Name) values (106, 'Best')"});
    EXPECT_EQ(Store().back(), "Insert into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, "
                              "DateLastModified, Drive_id, Quality_id, Length, Extension_id, Genre_id, "
                              "Album_id) values (101, 102, 'song.ogg', '" +
                                  Path() + "', 7840, '29.02.2024 13:04:05', 104, 105, 206, 3, 17, 106)");
    EXPECT_EQ(
        Store().back(),
        "Update Files set Title_id = 101, Inter_id = 102, Name = 'song.ogg',Path = '" + Path() +
            "',Sizeinbytes = 7840,DateLastModified = '29.02.2024 13:04:05', Drive_id = 104,"
            "Quality_id = 105,Length = 206,Extension_id = 3,Genre_id = 17,Album_id = 106 where Path = '" +
            Path() + "'");
}

TEST_F(OggStoreTest, EachNewRowGivesItsOwnKey) {
    SpreadLookupKeys();
    Store();
    EXPECT_THAT(KeysOfFiles(), ElementsAre("101|201|301|401|501"));
    EXPECT_THAT(TextsOfNewKeys(), ElementsAre("Song|Blue|/|112|Best"));
}

TEST_F(OggStoreTest, TheExtensionKeyIsTheConstantThree) {
    Store();
    EXPECT_THAT(connection.StatementsOf("Select Extension_id"), IsEmpty());
    EXPECT_EQ(Value("Select E.Extension from Files F, Extensions E where F.Extension_id = E.Extension_id"),
              "ogg");
}

TEST_F(OggStoreTest, TheDateIsThatOfTheLastChangeWithItsTime) {
    volumes.onFile = [](FileFacts& facts) {
        facts.drivePath = "/";
        facts.dateLastModified = {2024, 2, 29, 0, 0, 0};
    };
    Store();
    EXPECT_EQ(Value("Select DateLastModified from Files"), "29.02.2024");
}

TEST_F(OggStoreTest, AFileWithoutNamesTakesThemFromItsFileName) {
    WriteWhole(music / "Blue - Song.ogg", "x");
    OggRecord record = Song("Blue - Song.ogg");
    record.title = record.performer = "";
    Store(record);
    EXPECT_EQ(Value("Select Name from Titel"), "Song");
    EXPECT_EQ(Value("Select Interpret from Interpret"), "Blue");
}

TEST_F(OggStoreTest, AFileNameWithoutADashGivesTheTitleAlone) {
    OggRecord record = Song();
    record.title = record.performer = "";
    Store(record);
    EXPECT_EQ(record.title, "song");
    EXPECT_EQ(record.performer, "Unbekannt");
}

TEST_F(OggStoreTest, OneMissingNameIsUnknownAndTheFileNameIsNotAsked) {
    WriteWhole(music / "Blue - Song.ogg", "x");
    OggRecord record = Song("Blue - Song.ogg");
    record.performer = "";
    Store(record);
    EXPECT_EQ(record.performer, "Unbekannt");
    EXPECT_EQ(record.title, "Song");
    record = Song("Blue - Song.ogg");
    record.title = "";
    Store(record);
    EXPECT_EQ(record.title, "Unbekannt");
}

TEST_F(OggStoreTest, NamesFromFileNamesFollowTheRuleOfDashes) {
    const auto names = [](const std::string& path) {
        const OggNames found = OggTagsFromFileName(path);
        return found.performer + "|" + found.title;
    };
    EXPECT_EQ(names("/m-m/Song.ogg"), "|Song");
    EXPECT_EQ(names("/m/Blue - Song.ogg"), "Blue|Song");
    EXPECT_EQ(names("/m/01 - Blue - Song.ogg"), "Blue|Song");
    EXPECT_EQ(names("/m/Blue - 01 - Song.ogg"), "Blue|Song");
    EXPECT_EQ(names("/m/a-b-c-d.ogg"), "b|c");
    EXPECT_EQ(names("/m/Blue - Song .ogg"), "Blue|Song ");
    EXPECT_EQ(names("/m/x-ogg"), "Unbekannt|Unbekannt");
    EXPECT_EQ(names("/m/.ogg"), "|");
    const std::string longName(60, 'x');
    EXPECT_EQ(names("/m/" + longName + ".ogg"), "|" + longName) << "the names are not cut";
}

TEST_F(OggStoreTest, AnEmptyTitleOutOfTheFileNameIsUnknown) {
    WriteWhole(music / ".ogg", "x");
    OggRecord record = Song(".ogg");
    record.title = record.performer = "";
    Store(record);
    EXPECT_EQ(record.title, "Unbekannt");
    EXPECT_EQ(record.performer, "Unbekannt");
}

TEST_F(OggStoreTest, ApostrophesPassQuotedAndComeBackSingle) {
    WriteWhole(music / "it's.ogg", "x");
    OggRecord record = Song("it's.ogg");
    record.title = "Don't";
    record.performer = "O'Neil";
    record.album = "It's";
    record.genre = "R'n'B";
    Store(record);
    EXPECT_EQ(record.path, music / "it's.ogg");
    EXPECT_EQ(record.name, "it's.ogg");
    EXPECT_THAT(Rows("Select F.Name, F.Path, T.Name, I.Interpret, A.Name from Files F, Titel T, Interpret I, "
                     "Albums A where F.Title_id = T.Title_id and F.Inter_id = I.Inter_id and "
                     "F.Album_id = A.Album_id"),
                ElementsAre("it's.ogg|" + (music / "it's.ogg") + "|Don't|O'Neil|It's"));
    EXPECT_THAT(connection.StatementsOf("Select Genre_id"),
                ElementsAre("Select Genre_id from Genres where Genre = 'R''n''B'"));
    record = Song("it's.ogg");
    Store(record);
    EXPECT_EQ(Count("Select * from Files"), 1);
}

TEST_F(OggStoreTest, AnUnknownGenreIsNoneAndMakesNoRow) {
    const long before = Count("Select * from Genres");
    OggRecord record = Song();
    record.genre = "Space Yodel";
    Store(record);
    EXPECT_EQ(Value("Select Genre_id from Files"), "255");
    record.genre = " Rock";
    Store(record);
    EXPECT_EQ(Value("Select Genre_id from Files"), "255") << "the text is looked up as it is";
    record.genre = "";
    Store(record);
    EXPECT_EQ(Value("Select Genre_id from Files"), "255");
    EXPECT_EQ(Count("Select * from Genres"), before);
}

TEST_F(OggStoreTest, AMissingAlbumIsTheRowOfNoAlbum) {
    OggRecord record = Song();
    record.album = "";
    Store(record);
    EXPECT_EQ(Value("Select Name from Albums"), "Kein Album...");
    EXPECT_EQ(record.album, "Kein Album...");
}

TEST_F(OggStoreTest, AMissingBitRateFailsAfterTheRowsBeforeIt) {
    OggRecord record = Song();
    record.quality = "";
    EXPECT_THROW(Store(record), RuntimeError);
    EXPECT_EQ(connection.statements.back(), "Select Quality_id from Quality where Quality = ");
    EXPECT_EQ(Count("Select * from Titel"), 1);
    EXPECT_EQ(Count("Select * from Drive"), 1);
    EXPECT_EQ(Count("Select * from Albums"), 0);
    EXPECT_EQ(Count("Select * from Files"), 0);
}

TEST_F(OggStoreTest, AMissingFileFailsAfterTitleAndPerformer) {
    OggRecord record = Song("gone.ogg");
    EXPECT_THROW(Store(record), RuntimeError);
    EXPECT_EQ(connection.statements.back(), "Select Max(Inter_id) from Interpret");
    EXPECT_EQ(Count("Select * from Drive"), 0);
}

TEST_F(OggStoreTest, TheDriveKeepsItsFinalSlash) {
    volumes.onFile = [this](FileFacts& facts) { facts.drivePath = music.Path(); };
    OggRecord record = Song();
    Store(record);
    EXPECT_EQ(record.drive, music.Path() + "/");
    EXPECT_EQ(record.path, Path());
    EXPECT_EQ(Value("Select Drive from Drive"), music.Path() + "/");
}

TEST_F(OggStoreTest, AnMp3AndAnOggFileOnOneVolumeUseTwoRowsOfDrive) {
    volumes.onFile = [](FileFacts& facts) { facts.drivePath = "/mnt/usb"; };
    Store();
    LongWorkDouble work(calls);
    RecordingScanView view(calls);
    ScanDriver driver(work, view, log);
    CurrentFile file;
    file.FileDrive = UNCPath("/mnt/usb", true);
    file.FilePath = "/mnt/usb/a.mp3";
    file.FileName = "a.mp3";
    file.FileSize = "1";
    file.FileGenre = "255";
    file.FileDate = "29.02.2024";
    driver.StoreFileRecord(file);
    EXPECT_THAT(Rows("Select Drive from Drive order by Drive_id"), ElementsAre("/mnt/usb/", "/mnt/usb"));
}

TEST_F(OggStoreTest, ANetworkFileIsStoredUnderItsNetworkName) {
    volumes.onFile = [this](FileFacts& facts) { facts.drivePath = music.Path(); };
    volumes.networkRoots[music.Path()] = "//server/share";
    OggRecord record = Song();
    Store(record);
    EXPECT_EQ(record.drive, "//server/share/");
    EXPECT_EQ(Value("Select Path from Files"), "//server/share/song.ogg");
    EXPECT_EQ(Value("Select Drive from Drive"), "//server/share/");
}

TEST_F(OggStoreTest, ANameThatDiffersInCaseSharesTheRow) {
    Store();
    OggRecord record = Song();
    record.performer = "BLUE";
    Store(record);
    EXPECT_THAT(Rows("Select Interpret from Interpret"), ElementsAre("Blue"));
}

TEST_F(OggStoreTest, TheLogCountsTheValuesOfTheRecord) {
    mainModule.ScanLogEnabled = true;
    OggRecord record = Song();
    record.size = "1572864";
    Store(record);
    EXPECT_THAT(calls, ElementsAre("log line: 14:03:22 - Saved... " + Path(), "log files: 1",
                                   "log megabytes: 1,5", "log minutes: 3", "log select"));
}

TEST_F(OggStoreTest, TheLogShowsThePathAsItWasGiven) {
    mainModule.ScanLogEnabled = true;
    WriteWhole(music / "it's.ogg", "x");
    OggRecord record = Song("it's.ogg");
    Store(record);
    EXPECT_EQ(calls.at(0), "log line: 14:03:22 - Saved... " + (music / "it's.ogg"));
}

TEST_F(OggStoreTest, WithoutTheScanLogNothingIsShown) {
    Store();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(OggStoreTest, EventsRunAfterTheLogLine) {
    mainModule.ScanLogEnabled = true;
    events.onDoEvents = [this] { calls.push_back("events"); };
    Store();
    EXPECT_EQ(calls.back(), "events");
}

} // namespace
} // namespace quavernet::test
