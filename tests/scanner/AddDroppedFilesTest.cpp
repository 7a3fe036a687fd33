#include "scanner/AddDroppedFiles.h"

#include "scanner/ScanDriver.h"
#include "scanner/WaitForRead.h"
#include "support/OrdinaryUser.h"
#include "support/RealFiles.h"
#include "support/RecordingConnection.h"
#include "support/ScanDoubles.h"
#include "support/SlowDisk.h"
#include "support/SmallAudio.h"
#include "support/TemporaryFolder.h"
#include "support/TestLibrary.h"

#include "adapters/id3v2/TagLibComponent.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class AddDroppedFilesTest : public LibraryTest {
protected:
    AddDroppedFilesTest() : connection(RecordingConnection::Install()) {
        services.fileSystem = fileSystem.get();
        mainModule.TagComponent = CreateTagLibComponent(RealFiles());
    }

    std::string Mp3(const std::string& name, const std::string& title = "Song") {
        const std::string path = music / name;
        WriteBytes(path, Mp3Bytes(title, "Blue", "Best"));
        return path;
    }
    std::string Untagged(const std::string& name) {
        const std::string path = music / name;
        const std::string bytes = Mp3Bytes("", "", "");
        WriteBytes(path, bytes.substr(0, bytes.size() - 128));
        return path;
    }
    void Drop(const std::vector<std::string>& paths) {
        calls.clear();
        connection.statements.clear();
        AddDroppedFiles(paths, driver, view, work);
    }
    std::vector<std::string> Loads() {
        CallList loads;
        std::copy_if(calls.begin(), calls.end(), std::back_inserter(loads),
                     [](const std::string& call) { return call.starts_with("load"); });
        return loads;
    }
    std::vector<std::string> Names() { return Rows("Select Name from Files order by File_id"); }
    std::vector<std::string> Titles() {
        return Rows(
            "Select I.Interpret, T.Name from Files F, Interpret I, Titel T where F.Inter_id = I.Inter_id "
            "and F.Title_id = T.Title_id order by F.File_id");
    }

    RecordingConnection& connection;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
    TemporaryFolder music;
    NewFilesAhead ahead{[] { return std::vector<std::string>(); }};
    CallList calls;
    LongWorkDouble work{calls};
    RecordingScanView view{calls};
    RecordingScanLog log{calls};
    ScanDriver driver{work, view, log};
};

TEST_F(AddDroppedFilesTest, ADroppedFileJoinsTheLibraryAndTheListIsLoaded) {
    const std::string path = Mp3("song.mp3");
    Drop({path});
    EXPECT_THAT(Rows("Select F.Path, F.Length, Q.Quality, F.Hits from Files F, Quality Q where "
                     "F.Quality_id = Q.Quality_id"),
                ElementsAre(path + "|10|128|0"));
    EXPECT_THAT(Titles(), ElementsAre("Blue|Song"));
    EXPECT_THAT(Loads(), ElementsAre("load ''"));
    EXPECT_EQ(mainModule.CurrentFile.CurrentFileName, "song.mp3");
    EXPECT_EQ(mainModule.CurrentFile.DetailsPath, path);
}

TEST_F(AddDroppedFilesTest, TheStatementAsksForThePathBeforeAnythingIsStored) {
    const std::string path = Mp3("it's.mp3");
    Drop({path});
    EXPECT_EQ(connection.statements.front(),
              "Select Path from Files where Path = '" + std::string(music / "it''s.mp3") + "'");
    EXPECT_THAT(Names(), ElementsAre("it's.mp3"));
    EXPECT_EQ(mainModule.CurrentFile.CurrentPath, path);
}

TEST_F(AddDroppedFilesTest, AKnownFileAddsNothingAndLoadsNothing) {
    const std::string path = Mp3("song.mp3");
    Drop({path});
    Drop({path});
    EXPECT_THAT(connection.statements, ElementsAre(StartsWith("Select Path from Files")));
    EXPECT_THAT(Loads(), IsEmpty());
    EXPECT_THAT(Names(), ElementsAre("song.mp3"));
}

TEST_F(AddDroppedFilesTest, AKnownFileStillBecomesTheCurrentPath) {
    const std::string known = Mp3("known.mp3");
    Drop({known});
    mainModule.CurrentFile.CurrentPath.clear();
    mainModule.CurrentFile.DetailsPath.clear();
    Drop({known});
    EXPECT_EQ(mainModule.CurrentFile.CurrentPath, known);
    EXPECT_EQ(mainModule.CurrentFile.DetailsPath, known);
}

TEST_F(AddDroppedFilesTest, AFileDroppedTwiceAtOnceIsStoredOnce) {
    const std::string path = Mp3("song.mp3");
    Drop({path, path});
    EXPECT_THAT(Names(), ElementsAre("song.mp3"));
}

TEST_F(AddDroppedFilesTest, OtherFilesArePassedOver) {
    const std::string text = music / "notes.txt";
    WriteBytes(text, "mp3");
    const std::string list = music / "list.m3u";
    WriteBytes(list, "#EXTM3U");
    const std::string noDot = music / "amp3";
    WriteBytes(noDot, "x");
    const std::string good = Mp3("song.mp3");
    Drop({text, list, noDot, "", "mp3", good});
    EXPECT_THAT(Names(), ElementsAre("song.mp3"));
    EXPECT_EQ(connection.StatementsOf("Select Path").size(), 1U);
}

TEST_F(AddDroppedFilesTest, OtherFilesAreNotReadAheadEither) {
    SlowServices share;
    services.fileSystem = share.fileSystem.get();
    services.readAhead = share.readAhead.get();
    std::vector<std::string> paths;
    for (int i = 10; i < 30; ++i) {
        paths.push_back(Mp3(std::to_string(i) + ".mp3"));
        paths.push_back(music / std::to_string(i) + ".mkv");
        WriteBytes(paths.back(), "film");
    }
    share.disk.Hang(music / "15.mp3");
    int steps = 0;
    events.onDoEvents = [&] {
        if (share.disk.Reads().size() >= 10 || ++steps == 1000) {
            share.disk.LetGo();
        }
    };
    Drop(paths);
    EXPECT_EQ(Count("Select * from Files"), 20);
    EXPECT_LT(steps, 1000) << "files after the one that hung are read";
    for (const std::string& path : share.disk.Reads()) {
        EXPECT_TRUE(path.ends_with(".mp3")) << path;
    }
}

TEST_F(AddDroppedFilesTest, TheExtensionCountsInAnyCase) {
    Drop({Mp3("LOUD.MP3")});
    EXPECT_THAT(Names(), ElementsAre("LOUD.MP3"));
    const std::string wave = music / "Tone.WaV";
    WriteBytes(wave, WaveBytes());
    Drop({wave});
    EXPECT_THAT(Names(), ElementsAre("LOUD.MP3", "Tone.WaV"));
    EXPECT_EQ(
        Value(
            "Select Extension from Extensions E, Files F where F.Extension_id = E.Extension_id and F.Name = "
            "'Tone.WaV'"),
        "wav");
}

TEST_F(AddDroppedFilesTest, ADroppedFolderAddsNothing) {
    std::filesystem::create_directory(music / "album");
    Drop({music / "album"});
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_THAT(Loads(), IsEmpty());
}

TEST_F(AddDroppedFilesTest, ADroppedOggFileGoesTheWayOfMpegAndHasNeitherRateNorLength) {
    mainModule.CurrentFile.CurrentFileName = "Blue - Song.ogg";
    const std::string path = music / "other.ogg";
    WriteBytes(path, "OggS" + std::string(300, '\0'));
    Drop({path});
    EXPECT_THAT(Rows("Select F.Length, Q.Quality, F.Extension_id from Files F, Quality Q where "
                     "F.Quality_id = Q.Quality_id"),
                ElementsAre("0|0|3"));
    EXPECT_THAT(Titles(), ElementsAre("Blue|Song"));
}

TEST_F(AddDroppedFilesTest, TheSecondOfTwoUntaggedFilesIsNamedAfterTheFirst) {
    Drop({Untagged("Adam - First.mp3"), Untagged("Eve - Second.mp3")});
    EXPECT_THAT(Names(), ElementsAre("Adam - First.mp3", "Eve - Second.mp3"));
    EXPECT_THAT(Titles(), ElementsAre("Adam|First", "Adam|First"));
}

TEST_F(AddDroppedFilesTest, AnUndatedFileGetsTheFallbackDate) {
    class Undated : public ChosenVolumes {
    public:
        FileFacts GetFile(const std::string& path) override {
            FileFacts facts = ChosenVolumes::GetFile(path);
            facts.dateCreated = DateTime();
            return facts;
        }
    } undated;
    services.fileSystem = &undated;
    Drop({Mp3("song.mp3")});
    EXPECT_THAT(Rows("Select DateLastModified from Files"), ElementsAre("01.01.1900"));
}

TEST_F(AddDroppedFilesTest, ALoadOverSearchOnlyKeepsTheListAsItIs) {
    mainModule.LoadOverSearch = true;
    Drop({Mp3("song.mp3")});
    EXPECT_THAT(Names(), ElementsAre("song.mp3"));
    EXPECT_THAT(Loads(), IsEmpty());
}

TEST_F(AddDroppedFilesTest, AVanishedFileEndsTheDropAndKeepsWhatWasStored) {
    const std::string first = Mp3("first.mp3");
    const std::string last = Mp3("last.mp3", "Last");
    Drop({first, music / "gone.mp3", last});
    EXPECT_THAT(Names(), ElementsAre("first.mp3"));
    EXPECT_THAT(Loads(), IsEmpty()) << "the list is not loaded after a failure";
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(AddDroppedFilesTest, AFolderNamedLikeAFileEndsTheDrop) {
    std::filesystem::create_directory(music / "album.mp3");
    Drop({music / "album.mp3", Mp3("song.mp3")});
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(AddDroppedFilesTest, AFailingStatementEndsTheDropSilently) {
    connection.failOn = "Insert Into Files";
    Drop({Mp3("song.mp3"), Mp3("other.mp3")});
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_THAT(Loads(), IsEmpty());
    EXPECT_EQ(connection.StatementsOf("Insert Into Files").size(), 1U);
}

TEST_F(AddDroppedFilesTest, AFailingQuestionEndsTheDropBeforeThePathBecomesTheCurrentOne) {
    mainModule.CurrentFile.CurrentPath = mainModule.CurrentFile.DetailsPath = "/before.mp3";
    connection.failOn = "Select Path from Files";
    Drop({Mp3("song.mp3"), Mp3("other.mp3")});
    EXPECT_EQ(connection.statements.size(), 1U);
    EXPECT_EQ(mainModule.CurrentFile.CurrentPath, "/before.mp3");
    EXPECT_EQ(mainModule.CurrentFile.DetailsPath, "/before.mp3");
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(AddDroppedFilesTest, TheListIsCountedInSixteenBits) {
    std::vector<std::string> paths(32767, "/notes.txt");
    paths.back() = Mp3("last.mp3");
    Drop(paths);
    EXPECT_THAT(Names(), ElementsAre("last.mp3"));
    EXPECT_THAT(Loads(), ElementsAre("load ''"));
    paths.front() = Mp3("first.mp3");
    paths.push_back(Mp3("behind.mp3"));
    Drop(paths);
    EXPECT_THAT(Names(), ElementsAre("last.mp3", "first.mp3"));
    EXPECT_THAT(Loads(), IsEmpty()) << "an overflow ends the drop like any failure";
}

TEST_F(AddDroppedFilesTest, WhatWasStoredIsCommittedBeforeTheListIsLoaded) {
    Drop({Mp3("song.mp3")});
    EXPECT_EQ(connection.commits, 1);
}

TEST_F(AddDroppedFilesTest, EachFileIsCommittedBeforeTheNextOneCanFail) {
    connection.onStatement = [this](const std::string& statement) {
        if (statement.starts_with("Select Path from Files") && connection.commits == 1) {
            throw RuntimeError(13, "database or disk is full");
        }
    };
    Drop({Mp3("song.mp3"), Mp3("other.mp3")});
    EXPECT_EQ(connection.commits, 1);
    EXPECT_THAT(Names(), ElementsAre("song.mp3"));
}

TEST_F(AddDroppedFilesTest, ADroppedFileIsInspectedBeforeItsFactsAreAsked) {
    class Watched : public ChosenVolumes {
    public:
        FileFacts GetFile(const std::string& path) override {
            titleWhenAsked = file.FileTitle;
            return ChosenVolumes::GetFile(path);
        }
        CurrentFile file;
        std::string titleWhenAsked;
    } watched;
    services.fileSystem = &watched;
    AddDroppedFileToLibrary(Mp3("song.mp3"), watched.file, ahead, driver);
    EXPECT_EQ(watched.titleWhenAsked, "Song");
}

TEST_F(AddDroppedFilesTest, WhatIsNoPlainFileEndsTheDropWithoutBeingOpened) {
    const std::string pipe = music / "pipe.mp3";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0644), 0);
    const int watch = ::inotify_init1(IN_NONBLOCK);
    ASSERT_GE(::inotify_add_watch(watch, pipe.c_str(), IN_OPEN), 0);
    Drop({Mp3("before.mp3"), pipe, Mp3("behind.mp3")});
    EXPECT_THAT(Names(), ElementsAre("before.mp3"));
    char event[4096];
    EXPECT_EQ(::read(watch, event, sizeof event), -1) << "the pipe was opened";
    ::close(watch);
}

TEST_F(AddDroppedFilesTest, AFileOfTheKernelEndsTheDropLikeInAScanNoneIsTaken) {
    for (const char* target : {"/proc/self/mem", "/proc/cpuinfo"}) {
        const std::string link = music / "kernel.mp3";
        std::filesystem::remove(link);
        std::filesystem::create_symlink(target, link);
        Drop({link, Mp3("behind.mp3")});
        EXPECT_THAT(Names(), IsEmpty()) << target;
    }
}

// There it differs from a scan, which passes such a file over: what can't be opened is inspected as a file
// without a tag and without a frame.
TEST_F(AddDroppedFilesTest, AFileThatMayNotBeReadIsStoredUnderItsNameAlone) {
    const std::string closed = Mp3("closed.mp3", "Secret");
    std::filesystem::permissions(closed, std::filesystem::perms(0));
    std::filesystem::permissions(music.Path(), std::filesystem::perms(0755));
    {
        const OrdinaryUser user;
        Drop({closed});
    }
    EXPECT_THAT(Names(), ElementsAre("closed.mp3"));
    EXPECT_THAT(Rows("Select Q.Quality, F.Length from Files F, Quality Q where F.Quality_id = Q.Quality_id"),
                ElementsAre("0|0"));
    EXPECT_THAT(Titles(), ::testing::Not(::testing::Contains(::testing::HasSubstr("Secret"))));
}

TEST_F(AddDroppedFilesTest, ThePointerIsToldWhetherADropWouldAddAnything) {
    const std::string known = Mp3("known.mp3");
    Drop({known});
    EXPECT_FALSE(WouldAddFiles({}));
    EXPECT_FALSE(WouldAddFiles({music / "list.m3u", music / "picture.jpg", music.Path()}));
    EXPECT_FALSE(WouldAddFiles({known, music / "list.m3u"}));
    EXPECT_TRUE(WouldAddFiles({music / "list.m3u", known, music / "new.OGG"}));
}

TEST_F(AddDroppedFilesTest, OfAVeryLongDragTheFirstThousandFilesAreLookedUp) {
    const std::string known = Mp3("known.mp3");
    Drop({known});
    connection.statements.clear();
    EXPECT_FALSE(WouldAddFiles(std::vector<std::string>(1000, known)));
    EXPECT_EQ(connection.statements.size(), 1000U);
    EXPECT_TRUE(WouldAddFiles(std::vector<std::string>(1001, known)));
}

TEST_F(AddDroppedFilesTest, TheEndTellsHowManyFilesJoined) {
    const std::string known = Mp3("known.mp3");
    Drop({known});
    events.onDoEvents = [this] { clock.now.second = 26; };
    Drop({Mp3("one.mp3", "One"), known, music / "list.m3u", Mp3("two.mp3", "Two")});
    EXPECT_THAT(work.endWords,
                ElementsAre("Fertig: 1 neu, 0 übergangen, 0:00", "Fertig: 2 neu, 2 übergangen, 0:04"));
    EXPECT_EQ(work.PanelText(Panel::Scanning), "");
    EXPECT_THAT(calls, ElementsAre("load ''")) << "the panel is the load's own";
}

TEST_F(AddDroppedFilesTest, ADropThatFailsTellsWhatItLeftBehind) {
    Drop({Mp3("one.mp3"), music / "gone.mp3", Mp3("two.mp3")});
    EXPECT_THAT(work.endWords, ElementsAre("Vorzeitig beendet: 1 neu, 0:00"));
}

TEST_F(AddDroppedFilesTest, WhileAScanRunsADropActsOnNothing) {
    mainModule.CurrentFile.CurrentPath = mainModule.CurrentFile.DetailsPath = "/before.mp3";
    mainModule.ScanRunning = true;
    Drop({Mp3("song.mp3")});
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(mainModule.CurrentFile.CurrentPath, "/before.mp3");
    EXPECT_EQ(mainModule.CurrentFile.DetailsPath, "/before.mp3");

    mainModule.ScanRunning = false;
    Drop({Mp3("song.mp3")});
    EXPECT_THAT(Names(), ElementsAre("song.mp3"));
}

TEST_F(AddDroppedFilesTest, ADroppedFileIsNamedInTheScanLog) {
    mainModule.ScanLogEnabled = true;
    const std::string path = Mp3("song.mp3");
    Drop({path});
    EXPECT_THAT(calls, ::testing::Contains("log line: 14:03:22 - Saved... " + path));
}

TEST_F(AddDroppedFilesTest, TheSingleFileStepTellsItsFailures) {
    CurrentFile file;
    EXPECT_THROW(AddDroppedFileToLibrary(music / "gone.mp3", file, ahead, driver), RuntimeError);
}

} // namespace
} // namespace quavernet::test
