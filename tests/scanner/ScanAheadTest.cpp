// Scans, drops and the Ogg pass with files that are read ahead: they find what they find without, and a file
// that hangs holds up neither the window nor another program.
#include "scanner/WaitForRead.h"

#include "adapters/id3v2/TagLibComponent.h"
#include "adapters/vorbis/OggInfoReader.h"
#include "app/MayAct.h"
#include "scanner/AddDroppedFiles.h"
#include "scanner/OggBatches.h"
#include "scanner/ScanDriver.h"
#include "support/OggFiles.h"
#include "support/RefusingDisk.h"
#include "support/ScanDoubles.h"
#include "support/SlowDisk.h"
#include "support/SmallAudio.h"
#include "support/TestLibrary.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include <sys/syscall.h>

namespace quavernet::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

/// What a scan was seen to do.
struct Seen {
    CallList calls;
    std::vector<std::string> statements;
    std::vector<std::string> rows;
    std::vector<std::string> skipped;
};

/// Knows what its user waits for.
class WatchedReadAhead : public ReadAhead {
public:
    explicit WatchedReadAhead(ReadAhead& real) : m_real(real) {}

    std::unique_ptr<FilesAhead> Walk(WalkAhead walk) override {
        return Watched(m_real.Walk(std::move(walk)));
    }
    std::unique_ptr<FilesAhead> Files(std::vector<std::string> paths, Ahead wanted,
                                      std::size_t kept) override {
        return Watched(m_real.Files(std::move(paths), wanted, kept));
    }

    /// Asked in a call of DoEvents: whether that is a step of the wait for this file or folder.
    bool WaitsFor(const std::string& path) const { return m_awaited == path; }

private:
    class WatchedFiles : public FilesAhead {
    public:
        WatchedFiles(std::unique_ptr<FilesAhead> real, std::string& awaited)
            : m_real(std::move(real)), m_awaited(awaited) {}
        bool IsListed(const std::string& folder, std::chrono::milliseconds most) override {
            return Note(folder, m_real->IsListed(folder, most));
        }
        bool IsRead(const std::string& path, Ahead part, std::chrono::milliseconds most) override {
            return Note(path, m_real->IsRead(path, part, most));
        }

    private:
        bool Note(const std::string& path, bool isReady) {
            m_awaited = isReady ? "" : path;
            return isReady;
        }

        std::unique_ptr<FilesAhead> m_real;
        std::string& m_awaited;
    };

    std::unique_ptr<FilesAhead> Watched(std::unique_ptr<FilesAhead> real) {
        return real ? std::make_unique<WatchedFiles>(std::move(real), m_awaited) : nullptr;
    }

    ReadAhead& m_real;
    std::string m_awaited;
};

class ScanAheadTest : public LibraryTest {
protected:
    ScanAheadTest() {
        services.fileSystem = parts.fileSystem.get();
        services.files = &parts.files;
        services.oggInfo = &oggInfo;
        mainModule.TagComponent = CreateTagLibComponent(parts.files);
        mainModule.ScanLogEnabled = true;
        dialogs.folder = music.Path();
        StartOver();
    }

    void Write(const std::string& name, const std::string& bytes) {
        fs::create_directories(fs::path(music / name).parent_path());
        WriteBytes(music / name, bytes);
    }
    void WriteMusic() {
        for (int i = 0; i < 30; ++i) {
            const std::string number = std::to_string(10 + i);
            Write("album/" + number + ".mp3", Mp3Bytes("Song " + number, "Blue", "Best"));
            Write("deep/er/" + number + ".wav", WaveBytes());
        }
        Write("album/broken.mp3", "no frame");
        Write("album/empty.mp3", "");
        Write("album/cover.jpg", "picture");
        for (int i = 0; i < 12; ++i) {
            Write("ogg/" + std::to_string(10 + i) + ".ogg", EncodedOgg::Mono());
        }
        fs::create_symlink(music / "album/10.mp3", music / "deep/linked.mp3");
        fs::create_symlink(music / "nowhere", music / "deep/gone.mp3");
        fs::create_directory_symlink(music / "album", music / "again");
    }
    void ReadAheadOn() { services.readAhead = &watched; }

    Seen Scan() {
        calls.clear();
        connection->statements.clear();
        log.skipped.clear();
        driver->StartScan();
        Seen seen{calls, connection->statements, {}, {}};
        seen.rows = Rows("Select F.Path, F.Name, T.Name, I.Interpret, A.Name, F.Quality_id, F.Length, "
                         "F.Sizeinbytes, F.Genre_id from Files F, Titel T, Interpret I, Albums A where "
                         "F.Title_id = T.Title_id and F.Inter_id = I.Inter_id and F.Album_id = A.Album_id "
                         "order by F.File_id");
        for (const SkippedEntry& entry : log.skipped) {
            seen.skipped.push_back(entry.path + ": " + entry.reason);
        }
        return seen;
    }
    /// A library as it is at the first start, and a program that has scanned nothing.
    void StartOver() {
        mainModule.Connection.reset();
        for (const char* ending : {"", "-wal", "-shm"}) {
            fs::remove(libraryPath + ending);
        }
        CopyTemplate(libraryPath);
        mainModule.Connection = OpenLibrary(libraryPath, services.regional);
        connection = &RecordingConnection::Install();
        mainModule.CurrentFile = CurrentFile();
        settings.values.clear();
        driver = std::make_unique<ScanDriver>(work, view, log, &oggPass);
    }

    /// The audio file that a walk comes to last in a folder.
    std::string LastSong(const std::string& folder) {
        const auto files = parts.fileSystem->GetFolder(music / folder)->List(music / folder).files;
        const auto last = std::find_if(files.rbegin(), files.rend(),
                                       [](const FolderFile& file) { return file.name.ends_with(".mp3"); });
        return music / folder + "/" + last->name;
    }

    /// Whether another program could write at this moment.
    bool OthersMayWrite() {
        const auto other = OpenLibrary(libraryPath);
        other->Execute("Insert into Categories (Category) values ('another')");
        return true;
    }

    TemporaryFolder music;
    SlowServices parts;
    WatchedReadAhead watched{*parts.readAhead};
    OggInfoReader oggInfo{parts.files};
    RecordingConnection* connection = nullptr;
    CallList calls;
    LongWorkDouble work{calls};
    RecordingScanView view{calls};
    RecordingScanLog log{calls};
    OggBatches oggPass;
    std::unique_ptr<ScanDriver> driver;
};

TEST_F(ScanAheadTest, AScanFindsShowsAndSendsTheSameWhetherItsFilesAreReadAheadOrNot) {
    WriteMusic();
    for (const bool isQuick : {false, true}) {
        view.options.QuickScan = isQuick;
        services.readAhead = nullptr;
        StartOver();
        const Seen plain = Scan();
        const Seen plainAgain = Scan();
        StartOver();
        ReadAheadOn();
        const Seen ahead = Scan();
        const Seen aheadAgain = Scan();
        ASSERT_THAT(plain.rows, Not(IsEmpty()));
        for (const auto& [one, other] : {std::pair(plain, ahead), std::pair(plainAgain, aheadAgain)}) {
            EXPECT_THAT(other.calls, ElementsAreArray(one.calls));
            EXPECT_THAT(other.statements, ElementsAreArray(one.statements));
            EXPECT_THAT(other.rows, ElementsAreArray(one.rows));
            EXPECT_THAT(other.skipped, ElementsAreArray(one.skipped));
        }
    }
}

// Refused, not with a low limit of the process: the sanitizers need numbers of open files themselves.
TEST_F(ScanAheadTest, AScanFindsTheSameWhenItsReadersMayOpenNoMoreFiles) {
    WriteMusic();
    const Seen plain = Scan();
    StartOver();
    const auto pool = std::make_shared<posix::ReaderPool>(RefusingDisk(SYS_openat, EMFILE));
    PosixFiles files(pool);
    OggInfoReader ogg(files);
    const auto fileSystem = CreatePosixFileSystem(pool);
    const auto readAhead = CreatePosixReadAhead(pool);
    services.files = &files;
    services.fileSystem = fileSystem.get();
    services.oggInfo = &ogg;
    services.readAhead = readAhead.get();
    mainModule.TagComponent = CreateTagLibComponent(files);
    const Seen refused = Scan();
    mainModule.TagComponent.reset();
    ASSERT_THAT(plain.rows, SizeIs(30 + 30 + 2 + 1 + 12));
    EXPECT_THAT(refused.rows, ElementsAreArray(plain.rows));
    EXPECT_THAT(refused.skipped, ElementsAreArray(plain.skipped));
    EXPECT_THAT(refused.calls, ElementsAreArray(plain.calls));
}

TEST_F(ScanAheadTest, AFullScanTakesEachOfItsFilesFromAReader) {
    WriteMusic();
    ReadAheadOn();
    Scan();
    EXPECT_THAT(parts.disk.Reads(), SizeIs(30 + 30 + 2 + 1 + 12));
}

TEST_F(ScanAheadTest, AQuickScanOfKnownFilesOpensNone) {
    WriteMusic();
    Scan();
    ReadAheadOn();
    view.options.QuickScan = true;
    Scan();
    EXPECT_THAT(parts.disk.Reads(), IsEmpty());
    EXPECT_THAT(parts.disk.Listings(), Not(IsEmpty()));
}

TEST_F(ScanAheadTest, AScanCanBeCancelledWhileAFileHangs) {
    WriteMusic();
    ReadAheadOn();
    const std::string hanging = LastSong("album");
    parts.disk.Hang(hanging);
    bool othersMayWrite = false;
    events.onDoEvents = [&] {
        if (!othersMayWrite && watched.WaitsFor(hanging)) {
            othersMayWrite = OthersMayWrite();
            work.SetCancelled(true);
        }
    };
    const Seen seen = Scan();
    EXPECT_TRUE(othersMayWrite) << "what was stored before is committed, and no transaction is open";
    EXPECT_THAT(seen.rows, Not(IsEmpty())) << "those before it in the folder";
    EXPECT_EQ(Count("Select * from Files where Path = '" + hanging + "'"), 0);
    EXPECT_EQ(mainModule.SuppressComboClick, false) << "the scan came to its end";
}

TEST_F(ScanAheadTest, WhatAHandlerWritesDuringAWaitKeepsNoOtherProgramFromWriting) {
    WriteMusic();
    ReadAheadOn();
    const std::string hanging = LastSong("album");
    parts.disk.Hang(hanging);
    bool hasWritten = false;
    bool othersMayWrite = false;
    events.onDoEvents = [&] {
        if (hasWritten && !othersMayWrite) {
            othersMayWrite = OthersMayWrite();
            parts.disk.LetGo();
        } else if (!hasWritten && watched.WaitsFor(hanging)) {
            mainModule.Connection->Execute("Insert into Categories (Category) values ('mine')");
            hasWritten = true;
        }
    };
    Scan();
    EXPECT_TRUE(othersMayWrite);
    EXPECT_EQ(Count("Select * from Categories where Category in ('mine', 'another')"), 2);
}

TEST_F(ScanAheadTest, NothingIsReadBelowAFolderThatIsExcluded) {
    const std::string folder = "System Volume Information";
    Write(folder + "/a.mp3", Mp3Bytes("Song", "Blue", "Best"));
    dialogs.folder = music / folder;
    ReadAheadOn();
    Scan();
    EXPECT_THAT(parts.disk.Listings(), IsEmpty());
}

TEST_F(ScanAheadTest, AScanGoesOnWhenAFileThatHungIsThere) {
    WriteMusic();
    ReadAheadOn();
    parts.disk.Hang(music / "album/20.mp3");
    events.onDoEvents = [&] {
        if (watched.WaitsFor(music / "album/20.mp3")) {
            EXPECT_TRUE(work.PanelText(ScanPanel::Scanning).ends_with(music / "album/20.mp3"));
            parts.disk.LetGo();
        }
    };
    EXPECT_THAT(Scan().rows, SizeIs(30 + 30 + 2 + 1 + 12));
}

TEST_F(ScanAheadTest, TheCountCanBeCancelledWhileAFolderHangs) {
    WriteMusic();
    ReadAheadOn();
    parts.disk.Hang(music / "deep");
    events.onDoEvents = [&] {
        if (watched.WaitsFor(music / "deep")) {
            work.SetCancelled(true);
        }
    };
    const Seen seen = Scan();
    EXPECT_THAT(seen.rows, IsEmpty());
    EXPECT_EQ(seen.calls.back(), "title: Quavernet - letzter scan: -");
}

TEST_F(ScanAheadTest, AQuickScanCanBeCancelledWhileANewFileHangs) {
    WriteMusic();
    ReadAheadOn();
    view.options.QuickScan = true;
    parts.disk.Hang(music / "album/20.mp3");
    bool hung = false;
    events.onDoEvents = [&] {
        if (!hung && watched.WaitsFor(music / "album/20.mp3")) {
            hung = OthersMayWrite();
            work.SetCancelled(true);
        }
    };
    Scan();
    EXPECT_TRUE(hung);
    EXPECT_EQ(Count("Select * from Files where Name = '20.mp3'"), 0);
}

TEST_F(ScanAheadTest, TheOggPassCanBeCancelledWhileAFileHangs) {
    for (int i = 0; i < 25; ++i) {
        Write(std::to_string(10 + i) + ".ogg", EncodedOgg::Mono());
    }
    ReadAheadOn();
    std::vector<std::string> paths;
    events.onDoEvents = [&] {
        if (!work.Cancelled() && watched.WaitsFor(paths.back())) {
            work.SetCancelled(OthersMayWrite());
        }
    };
    const auto walk = parts.fileSystem->GetFolder(music.Path());
    for (const FolderFile& file : walk->List(music.Path()).files) {
        paths.push_back(music / file.name);
    }
    parts.disk.Hang(paths.back());
    const Seen seen = Scan();
    EXPECT_THAT(seen.rows, SizeIs(20)) << "two batches";
}

TEST_F(ScanAheadTest, ADropWaitsForAFileThatHangsWithTheWindowAlive) {
    Write("a.mp3", Mp3Bytes("Song A", "Blue", "Best"));
    Write("b.mp3", Mp3Bytes("Song B", "Blue", "Best"));
    ReadAheadOn();
    parts.disk.Hang(music / "b.mp3");
    int waited = 0;
    events.onDoEvents = [&] {
        if (watched.WaitsFor(music / "b.mp3") && ++waited == 3) {
            EXPECT_TRUE(OthersMayWrite());
            EXPECT_FALSE(MayAct()) << "another drop, a scan, the window's end";
            parts.disk.LetGo();
        }
    };
    AddDroppedFiles({music / "a.mp3", music / "b.mp3"}, *driver, view, work);
    EXPECT_GE(waited, 3);
    EXPECT_THAT(Rows("Select Name from Files order by File_id"), ::testing::ElementsAre("a.mp3", "b.mp3"));
}

TEST_F(ScanAheadTest, ADropReadsKnownFilesNeitherNowNorAhead) {
    std::vector<std::string> paths;
    for (int i = 0; i < 20; ++i) {
        const std::string name = std::to_string(10 + i) + ".mp3";
        Write(name, Mp3Bytes("Song", "Blue", "Best"));
        paths.push_back(music / name);
    }
    Scan();
    Execute("Delete from Files where Name = '15.mp3'");
    ReadAheadOn();
    AddDroppedFiles(paths, *driver, view, work);
    EXPECT_THAT(parts.disk.Reads(), ::testing::ElementsAre(music / "15.mp3"));
    EXPECT_EQ(Count("Select * from Files"), 20);
}

} // namespace
} // namespace quavernet::test
