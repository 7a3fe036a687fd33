#include "adapters/sqlite/SqliteConnection.h"
#include "adapters/vorbis/OggInfoReader.h"
#include "library/CleanDatabase.h"
#include "library/DatabaseCheck.h"
#include "platform/LibraryError.h"
#include "scanner/FileSearch.h"
#include "scanner/OggBatches.h"
#include "scanner/OggStore.h"
#include "scanner/ReminderSettings.h"
#include "scanner/SavedLog.h"
#include "scanner/StoreFileRecord.h"
#include "support/OggFiles.h"
#include "support/RealFiles.h"
#include "support/ScanDoubles.h"
#include "support/SmallAudio.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include <chrono>
#include <csignal>
#include <functional>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quavernet::test {
namespace {

/// The program under test and another one on the same library.
class TwoProgramsTest : public LibraryTest {
protected:
    TwoProgramsTest() : other(OpenLibrary(libraryPath)) {
        // Each statement looks whether a commit is due, and it always is.
        mainModule.Connection = CreateConnection(services.regional, std::chrono::milliseconds(0));
        Connection().Open(ConnectionStart + libraryPath);
        other->Query("Pragma busy_timeout = 0");
        services.fileSystem = &volumes;
        mainModule.ScanLogEnabled = false;
        mainModule.ScanStartTime = clock.now;
    }

    /// What the other program does just before the first statement with this start goes out, if it can.
    void OtherBefore(const std::string& start, const std::string& statement) {
        Record().onStatement = [this, start, statement, done = false](const std::string& sent) mutable {
            if (!done && sent.starts_with(start)) {
                done = true;
                Other(statement);
            }
        };
    }
    void Other(const std::string& statement) {
        ++tried;
        IgnoreFailure([&] { other->Execute(statement); });
        other->Commit();
    }
    /// The other program stores a row, which must be possible at once.
    void OtherMayWrite() {
        ++tried;
        EXPECT_NO_THROW(other->Execute("Insert into Titel (Name) values ('of the other')")) << tried;
        other->Commit();
    }
    void SetFile(const std::string& path) {
        file = CurrentFile();
        file.FileArtist = "Blue";
        file.FileTitle = "Song";
        file.FileQuality = "128";
        file.FileGenre = "17";
        file.FileSize = "100";
        file.FileName = "song.mp3";
        file.FilePath = path;
        file.FileDate = "29.02.2024 13:04:05";
        file.FileDrive = "/";
    }

    TemporaryFolder music;
    std::unique_ptr<ADODB::Connection> other;
    int tried = 0;
    CurrentFile file;
    ChosenVolumes volumes;
    CallList calls;
    RecordingScanLog log{calls};
    SavedLog saved{log};
};

TEST_F(TwoProgramsTest, APerformerOrAFileIsNotInsertedByBoth) {
    SetFile("/music/song.mp3");
    OtherBefore("Insert into Interpret", "Insert into Interpret (Interpret) values ('Blue')");
    StoreFileRecord(file, saved);
    SetFile("/music/other.mp3");
    OtherBefore("Insert Into Files", "Insert into Files (Path) values ('/music/other.mp3')");
    StoreFileRecord(file, saved);
    EXPECT_EQ(tried, 2);
    EXPECT_EQ(Rows("Select Interpret from Interpret"), Texts{"Blue"});
    EXPECT_EQ(Rows("Select Path from Files order by File_id"),
              (Texts{"/music/song.mp3", "/music/other.mp3"}));
}

TEST_F(TwoProgramsTest, TheHighestKeyIsThatOfTheRowJustInserted) {
    WriteWhole(music / "song.ogg", "x");
    OggRecord record{"Song", "Blue", "112",  "206", "song.ogg", music / "song.ogg",
                     "7840", "",     "Rock", "",    "Best"};
    OtherBefore("Select Max(Inter_id)", "Insert into Interpret (Interpret) values ('another')");
    StoreOggRecord(record, saved);
    EXPECT_EQ(tried, 1);
    EXPECT_EQ(Rows("Select I.Interpret from Files F, Interpret I where F.Inter_id = I.Inter_id"),
              Texts{"Blue"});
}

TEST_F(TwoProgramsTest, APerformerOrAFileOfTheOggPassIsNotInsertedByBoth) {
    WriteWhole(music / "song.ogg", "x");
    const OggRecord record{"Song", "Blue", "112",  "206", "song.ogg", music / "song.ogg",
                           "7840", "",     "Rock", "",    "Best"};
    OggRecord first = record;
    OtherBefore("Insert Into Interpret", "Insert into Interpret (Interpret) values ('Blue')");
    StoreOggRecord(first, saved);
    Execute("Delete from Files");
    OggRecord second = record;
    OtherBefore("Insert into Files",
                "Insert into Files (Path) values ('" + std::string(music / "song.ogg") + "')");
    StoreOggRecord(second, saved);
    EXPECT_EQ(tried, 2);
    EXPECT_EQ(Rows("Select Interpret from Interpret"), Texts{"Blue"});
    EXPECT_EQ(Rows("Select Path from Files"), Texts{music / "song.ogg"});
}

TEST_F(TwoProgramsTest, TheReminderStaysOneRow) {
    OtherBefore("Insert Into Reminder", "Insert into Reminder (RemindFlag) values (1)");
    SaveReminderSettings({.chkRemind = true, .optDaily = true});
    EXPECT_EQ(tried, 1);
    EXPECT_EQ(Value("Select Count(RemindFlag) from Reminder"), "1");
}

TEST_F(TwoProgramsTest, ADoubledCategoryThatTheOtherHasRepairedKeepsItsLastRow) {
    Execute({"Insert into Categories (Category) values ('Rock')",
             "Insert into Categories (Category) values ('Rock')",
             "Insert into FileCategories (File_id, Category_id, Parent) values (1, 1, 'Rock')"});
    Connection().Commit();
    events.onDoEvents = [this] {
        if (events.count == 2) { // Between the look and the repair.
            Other("Delete from Categories where Category_id in (2)");
        }
    };
    LongWorkDouble work;
    CheckDatabase(work);
    EXPECT_EQ(tried, 1);
    EXPECT_EQ(Rows("Select Category_id, Category from Categories"), Texts{"1|Rock"});
    EXPECT_EQ(Value("Select Count(File_id) from FileCategories"), "1");
}

TEST_F(TwoProgramsTest, TheRepairOfDoubledCategoriesTakesNoRowThatTheOtherHasRenamedSince) {
    Execute({"Insert into Categories (Category) values ('Rock')",
             "Insert into Categories (Category) values ('Rock')"});
    Connection().Commit();
    int renamed = 0;
    Record().onStatement = [&](const std::string& sent) {
        if (tried == 0 && sent.starts_with("Delete from Categories")) {
            ++tried;
            IgnoreFailure([&] {
                other->Execute("Update Categories set Category = 'Jazz' where Category_id = 2");
                other->Commit();
                ++renamed;
            });
        }
    };
    LongWorkDouble work;
    CheckDatabase(work);
    EXPECT_EQ(tried, 1);
    EXPECT_EQ(Count("Select Category from Categories where Category = 'Rock'"), 1);
    EXPECT_EQ(Count("Select Category from Categories where Category = 'Jazz'"), renamed);
}

/// A file that comes to exist between two looks.
class AppearingFile : public ChosenVolumes {
public:
    bool FileExists(const std::string&) override { return looks++ > 0; }
    int looks = 0;
};

TEST_F(TwoProgramsTest, AFileThatTheOtherStoresDuringTheCleaningIsKept) {
    Execute("Insert into Files (Path) values ('/music/song.mp3')");
    AppearingFile disk;
    services.fileSystem = &disk;
    LongWorkDouble work;
    LibraryViewsDouble views;
    CleanDatabase(work, views);
    EXPECT_EQ(disk.looks, 2);
    EXPECT_EQ(Rows("Select Path from Files"), Texts{"/music/song.mp3"});
}

/// Calls back when it is asked for a certain file; some are gone.
class SlowVolume : public ChosenVolumes {
public:
    bool FileExists(const std::string& path) override {
        if (path == "/music/3.mp3") {
            onThird();
        }
        return path != "/music/1.mp3";
    }
    std::function<void()> onThird;
};

TEST_F(TwoProgramsTest, TheOtherMayWriteWhileTheCleaningLooksAtFilesThatAreThere) {
    for (const std::string name : {"1", "2", "3"}) {
        Execute("Insert into Files (Path) values ('/music/" + name + ".mp3')");
    }
    Connection().Commit();
    SlowVolume disk;
    disk.onThird = [&] { other->Execute("Insert into Titel (Name) values ('x')"); };
    services.fileSystem = &disk;
    LongWorkDouble work;
    LibraryViewsDouble views;
    EXPECT_NO_THROW(CleanDatabase(work, views));
    EXPECT_EQ(Rows("Select Path from Files"), (Texts{"/music/2.mp3", "/music/3.mp3"}));
}

TEST_F(TwoProgramsTest, TheOtherMayWriteWhileAScanReadsSlowFoldersAndFiles) {
    for (const char* name : {"1.mp3", "2.mp3", "sub/3.mp3", "sub/deep/none.txt", "sub/deep/deeper/4.mp3"}) {
        std::filesystem::create_directories(std::filesystem::path(music / name).parent_path());
        WriteBytes(music / name, Mp3Bytes(std::string("Song of ") + name, "Blue", "Best"));
    }
    volumes.onFile = [this](FileFacts&) { OtherMayWrite(); };
    volumes.onList = [this](FolderContents&) { OtherMayWrite(); };
    LongWorkDouble work{calls};
    RecordingScanView view{calls};
    ScanRun run(work, view, log);
    run.Recursive = true;
    run.FilesTotal = 5;

    FileSearch(run, *volumes.GetFolder(music.Path()));

    EXPECT_EQ(tried, 8) << "four folders and four wanted files";
    EXPECT_EQ(RowTextsOf(*other, "Select Count(File_id) from Files"), Texts{"3"}) << "all but the last one";
}

class InterruptedTool : public OggInfoReader {
public:
    explicit InterruptedTool(std::function<void()> action)
        : OggInfoReader(RealFiles()), m_action(std::move(action)) {}
    std::string Run(const std::vector<std::string>& paths) override {
        m_action();
        return OggInfoReader::Run(paths);
    }

private:
    std::function<void()> m_action;
};

class InterruptedVolume : public ChosenVolumes {
public:
    explicit InterruptedVolume(std::function<void()> action) : m_action(std::move(action)) {}
    bool FileExists(const std::string& path) override {
        m_action();
        return ChosenVolumes::FileExists(path);
    }

private:
    std::function<void()> m_action;
};

TEST_F(TwoProgramsTest, TheOtherMayWriteWhileTheOggPassReadsAndLooksForWhatVanished) {
    const auto otherMayWrite = [this] { OtherMayWrite(); };
    InterruptedTool tool(otherMayWrite);
    InterruptedVolume volume(otherMayWrite);
    services.oggInfo = &tool;
    services.fileSystem = &volume;
    LongWorkDouble work{calls};
    RecordingScanView view{calls};
    ScanRun run(work, view, log);
    for (int i = 0; i < 11; ++i) { // One batch more than ten files.
        run.OggPaths.push_back(music / (std::to_string(i) + ".ogg"));
        if (i != 5) {
            WriteWhole(run.OggPaths.back(), EncodedOgg::Stereo());
        }
    }

    OggBatches().ReadOggBatches(run);

    EXPECT_EQ(tried, 3) << "two batches and one file";
    Connection().Commit();
    EXPECT_EQ(RowTextsOf(*other, "Select Count(File_id) from Files"), Texts{"10"});
}

TEST_F(TwoProgramsTest, WhatOneHoldsTheOtherWaitsForAndACommitInTheMiddleDoesNotEndIt) {
    {
        const ADODB::WriteLock outer(Connection());
        const ADODB::WriteLock inner(Connection());
        Connection().Commit();
        Rows("Select Name from Titel");
        EXPECT_THROW(other->Execute("Insert into Titel (Name) values ('x')"), LibraryError);
    }
    Connection().Commit();
    EXPECT_NO_THROW(other->Execute("Insert into Titel (Name) values ('x')"));
}

TEST_F(TwoProgramsTest, AFailureInsideTakesBackNoEarlierStatement) {
    {
        const ADODB::WriteLock writeLock(Connection());
        Execute("Insert into Titel (Title_id, Name) values (1, 'first')");
        EXPECT_THROW(Execute("Insert into Titel (Title_id, Name) values (1, 'again')"), RuntimeError);
    }
    mainModule.Connection.reset();
    EXPECT_EQ(RowTextsOf(*other, "Select Name from Titel"), Texts{"first"});
}

TEST(WriteTurnTest, WhoWaitsForTheLibraryHoldsTheTurnAndGivesItUpThen) {
    const TemporaryFolder folder;
    const std::string path = folder / "Quavernet.db";
    CopyTemplate(path);
    const pid_t child = ::fork();
    if (child == 0) {
        ::raise(SIGSTOP); // Until the library is taken.
        try {
            OpenLibrary(path)->Execute("Insert into Titel (Name) values ('waited for')");
            ::_exit(0);
        } catch (...) {
            ::_exit(1);
        }
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, WUNTRACED), child);
    const int turn = ::open(folder.Path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const auto turnIsFree = [turn] {
        const bool isFree = ::flock(turn, LOCK_EX | LOCK_NB) == 0;
        ::flock(turn, LOCK_UN);
        return isFree;
    };
    const auto connection = OpenLibrary(path);
    connection->Execute("Insert into Titel (Name) values ('first')");
    EXPECT_TRUE(turnIsFree()) << "who has the library needs no turn any more";
    ::kill(child, SIGCONT);
    bool wasTaken = false;
    while (!wasTaken && ::waitpid(child, &status, WNOHANG) == 0) {
        wasTaken = !turnIsFree();
    }
    EXPECT_TRUE(wasTaken);
    connection->Commit();
    if (wasTaken) {
        ASSERT_EQ(::waitpid(child, &status, 0), child);
    }
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(turnIsFree());
    ::close(turn);
    EXPECT_EQ(RowTextsOf(*connection, "Select Name from Titel"), (Texts{"first", "waited for"}));
}

TEST(WriteTurnTest, OneThatWritesWithoutAPauseLetsTheOtherHaveItsTurn) {
    const TemporaryFolder folder;
    const std::string path = folder / "Quavernet.db";
    CopyTemplate(path);
    const pid_t child = ::fork();
    if (child == 0) {
        try {
            const auto connection = OpenLibrary(path);
            for (;;) {
                connection->Execute("Insert into Titel (Name) values ('x')");
            }
        } catch (...) {
            ::_exit(1);
        }
    }
    const auto connection = OpenLibrary(path);
    while (RowTextsOf(*connection, "Select Count(Title_id) from Titel") == Texts{"0"}) {
        ::usleep(1000);
    }
    for (int i = 0; i < 20; ++i) {
        EXPECT_NO_THROW(connection->Execute("Insert into Albums (Name) values ('mine')"));
        connection->Commit();
    }
    EXPECT_EQ(::waitpid(child, nullptr, WNOHANG), 0) << "the other one has failed";
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_EQ(RowTextsOf(*connection, "Select Count(Album_id) from Albums"), Texts{"20"});
}

} // namespace
} // namespace quavernet::test
