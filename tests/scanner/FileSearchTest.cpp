#include "scanner/FileSearch.h"

#include "scanner/FolderOrder.h"
#include "support/ScanTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class FileSearchTest : public ScanTest {};

TEST_F(FileSearchTest, OnlyWantedExtensionsAreStoredWhateverTheirCase) {
    for (const char* name : {"a.mp3", "b.MP3", "c.Mp3", ".mp3", "d.mp4", "e.mp3x", "fmp3", "g.wav", "h.WAV",
                             "i.txt", "mp3", "j.mp3 "}) {
        WriteMp3(name);
    }

    Scan();

    EXPECT_THAT(StoredPaths(), UnorderedElementsAre("a.mp3", "b.MP3", "c.Mp3", ".mp3", "g.wav", "h.WAV"));
}

TEST_F(FileSearchTest, EachKindCanBeSwitchedOff) {
    WriteMp3("a.mp3");
    Write("b.wav", WaveBytes());
    Write("c.ogg");
    view.options.ScanMp3 = false;
    Scan();
    EXPECT_THAT(StoredPaths(), ElementsAre("b.wav"));
    EXPECT_EQ(ogg.runs, 1);

    view.options = ScanOptions();
    view.options.ScanWav = false;
    view.options.ScanOgg = false;
    connection.statements.clear();
    Scan();
    EXPECT_THAT(StoredPaths(), ElementsAre("b.wav", "a.mp3"));
    EXPECT_EQ(connection.StatementsOf("Select File_id").size(), 1u) << "an Ogg file is never inspected here";
    EXPECT_EQ(ogg.runs, 1);
}

TEST_F(FileSearchTest, EveryFileIsNamedAndMovesTheBar) {
    Write("a.txt");
    Write("sub/b.jpg");

    Scan();

    EXPECT_THAT(CallsOf("panel 1: Scanning"), ElementsAre("panel 1: Scanning... " + (music / "a.txt"),
                                                          "panel 1: Scanning... " + (music / "sub/b.jpg")));
    EXPECT_THAT(work.progressValues, ElementsAre(50.0F, 100.0F, 0.0F));
}

TEST_F(FileSearchTest, AFoldersFilesComeBeforeItsSubFolders) {
    WriteMp3("sub/deep/c.mp3");
    WriteMp3("sub/b.mp3");
    WriteMp3("z.mp3");

    Scan();

    EXPECT_THAT(StoredPaths(), ElementsAre("z.mp3", "sub/b.mp3", "sub/deep/c.mp3"));
}

TEST_F(FileSearchTest, FilesAndFoldersAreVisitedInTheOrderOfTheListing) {
    const std::vector<std::string> order{"m", "a", "z", "b"};
    for (const std::string& name : order) {
        WriteMp3(name + ".mp3");
        Write(name + ".ogg");
        WriteMp3(name + "/" + name + ".mp3");
    }
    bool reversed = false;
    const auto place = [&](const std::string& path) {
        const std::string name = path.substr(path.rfind('/') + 1, 1);
        const auto at = std::find(order.begin(), order.end(), name) - order.begin();
        return reversed ? -at : at;
    };
    volumes.onList = [&](FolderContents& contents) {
        std::stable_sort(contents.files.begin(), contents.files.end(),
                         [&](const auto& a, const auto& b) { return place(a.name) < place(b.name); });
        std::stable_sort(contents.subFolders.begin(), contents.subFolders.end(),
                         [&](const auto& a, const auto& b) { return place(a) < place(b); });
    };

    Scan();

    EXPECT_THAT(StoredPaths(),
                ElementsAre("m.mp3", "a.mp3", "z.mp3", "b.mp3", "m/m.mp3", "a/a.mp3", "z/z.mp3", "b/b.mp3"));
    EXPECT_THAT(ogg.paths, ElementsAre(music / "m.ogg", music / "a.ogg", music / "z.ogg", music / "b.ogg"));

    reversed = true;
    Execute("Delete from Files");
    Scan();

    EXPECT_THAT(StoredPaths(),
                ElementsAre("b.mp3", "z.mp3", "a.mp3", "m.mp3", "b/b.mp3", "z/z.mp3", "a/a.mp3", "m/m.mp3"));
}

TEST_F(FileSearchTest, AFolderReachedByALinkIsStoredUnderItsOwnPathInEitherOrder) {
    WriteMp3("a/album/of a.mp3");
    WriteMp3("b/album/of b.mp3");
    std::filesystem::create_symlink("../b/album", music / "a/link");
    std::filesystem::create_symlink("../a/album", music / "b/link");

    Scan();
    EXPECT_THAT(StoredPaths(), UnorderedElementsAre("a/album/of a.mp3", "b/album/of b.mp3"));

    volumes.onList = [](FolderContents& contents) {
        std::reverse(contents.subFolders.begin(), contents.subFolders.end());
    };
    view.options.QuickScan = true;
    Scan();
    EXPECT_EQ(StoredPaths().size(), 2U) << "none is in the library twice";
}

TEST_F(FileSearchTest, ASubFolderIsDoneWithAllBelowItBeforeItsNeighbour) {
    WriteMp3("one/x/1.mp3");
    WriteMp3("two/y/2.mp3");
    WriteMp3("one/1.mp3");
    WriteMp3("two/2.mp3");

    Scan();

    const auto paths = StoredPaths();
    ASSERT_EQ(paths.size(), 4u);
    EXPECT_EQ(paths[0].substr(0, 3), paths[1].substr(0, 3));
    EXPECT_EQ(paths[2].substr(0, 3), paths[3].substr(0, 3));
}

TEST_F(FileSearchTest, WithoutSubfoldersOnlyTheFolderItselfIsSearched) {
    WriteMp3("a.mp3");
    WriteMp3("sub/b.mp3");
    view.options.Recursive = false;

    Scan();

    EXPECT_THAT(StoredPaths(), ElementsAre("a.mp3"));
}

TEST_F(FileSearchTest, TheRestoreDataOfAnotherSystemAndAllBelowItAreLeftOut) {
    WriteMp3("a.mp3");
    WriteMp3("System Volume Information/b.mp3");
    WriteMp3("old system volume information/sub/c.mp3");

    Scan();

    EXPECT_THAT(StoredPaths(), ElementsAre("a.mp3"));
}

TEST_F(FileSearchTest, ATickChangedInTheScanHoldsForTheKindsAtOnceAndForTheRestInTheNext) {
    WriteMp3("a.mp3");
    Write("sub/b.wav", WaveBytes());
    WriteMp3("sub/c.mp3");
    events.onDoEvents = [&] {
        if (work.panels[1].starts_with("Scanning... ")) {
            view.options.ScanWav = false;
            view.options.Recursive = false;
            view.options.QuickScan = true;
        }
    };

    Scan();

    EXPECT_THAT(StoredPaths(), ElementsAre("a.mp3", "sub/c.mp3"));
    EXPECT_THAT(connection.StatementsOf("Select Path from Files where"), IsEmpty());
}

TEST_F(FileSearchTest, ATickChangedInTheCountHoldsInTheNextScan) {
    Write("a.txt");
    Write("sub/b.txt");
    events.onDoEvents = [&] { view.options.Recursive = false; };

    Scan();

    EXPECT_THAT(work.progressValues, ElementsAre(50.0F, 100.0F, 0.0F));
}

TEST_F(FileSearchTest, EventsRunOnceAFileIsStoredAndItsSizeIsText) {
    Write("a.mp3", std::string(1600000, 'x'));
    ScanRun run(work, view, log);
    run.FilesTotal = 1;
    mainModule.ScanStartTime = clock.now;
    const auto walk = volumes.GetFolder(music.Path());
    int stored = 0;
    events.onDoEvents = [&] {
        if (!connection.StatementsOf("Insert Into Files").empty()) {
            ++stored;
            EXPECT_EQ(run.file.FileSize, "1,53");
        }
    };

    FileSearch(run, *walk);

    EXPECT_EQ(stored, 1);
}

TEST(FolderOrderTest, AFolderIsFollowedByWhatLiesBelowItAndThenByItsNeighbour) {
    FolderOrder order("/");
    std::vector<std::string> visited;
    while (!order.IsDone()) {
        visited.push_back(order.Next());
        if (visited.back() == "/") {
            order.AddSubFolders({"/b", "/a", "/c"});
        } else if (visited.back() == "/b") {
            order.AddSubFolders({"/b/2", "/b/1"});
        }
    }
    EXPECT_THAT(visited, ElementsAre("/", "/b", "/b/2", "/b/1", "/a", "/c")) << "no sorting is done";
}

TEST_F(FileSearchTest, HiddenFilesAreScannedThoughTheyWereNotCounted) {
    Write("a.txt");
    WriteMp3(".b.mp3");
    WriteMp3(".c.mp3");

    Scan();

    EXPECT_THAT(StoredPaths(), UnorderedElementsAre(".b.mp3", ".c.mp3"));
    EXPECT_THAT(work.progressValues, ElementsAre(100.0F, 100.0F, 100.0F, 0.0F)) << "the bar stops there";
}

TEST_F(FileSearchTest, TheTimeLeftTurnsNegativeAfterTheCountedFiles) {
    Write("a.txt");
    Write(".b.txt");
    Write(".c.txt");
    const DateTime start = clock.now;
    events.onDoEvents = [&] {
        if (mainModule.ScanStartTime == start) {
            clock.now.second = start.second + 30;
        }
    };

    Scan();

    EXPECT_THAT(
        CallsOf("panel 3: verbl"),
        ElementsAre("panel 3: verbl.: 00:00:00", "panel 3: verbl.: 00:00:-15", "panel 3: verbl.: 00:00:-20"));
}

TEST_F(FileSearchTest, TheFieldsOfTheFileBeforeAreClearedAlsoForFilesThatAreNotStored) {
    for (const char* name : {"a.txt", "a.ogg"}) {
        const TemporaryFolder other;
        dialogs.folder = other.Path();
        WriteBytes(other / name, "x");
        CurrentFile& file = mainModule.CurrentFile;
        file.FileTitle = file.FileArtist = file.FileQuality = file.FileSize = file.FileName = file.FilePath =
            file.FileDate = file.FileDrive = file.FileGenre = file.FileAlbum = "before";
        file.CurrentPath = file.CurrentFileName = file.DetailsPath = "before";

        Scan();

        for (const std::string& text :
             {file.FileTitle, file.FileArtist, file.FileQuality, file.FileSize, file.FileName, file.FilePath,
              file.FileDate, file.FileDrive, file.FileGenre, file.FileAlbum}) {
            EXPECT_EQ(text, "");
        }
        EXPECT_EQ(file.CurrentPath, "before");
        EXPECT_EQ(file.CurrentFileName, "before");
        EXPECT_EQ(file.DetailsPath, "before");
    }
}

TEST_F(FileSearchTest, TheSizeOfAStoredFileBecomesItsMegabytes) {
    Write("a.mp3", std::string(1600000, 'x'));

    Scan();

    EXPECT_EQ(mainModule.CurrentFile.FileSize, "1,53");
    EXPECT_THAT(Rows("Select Sizeinbytes from Files"), ElementsAre("1600000"));
}

TEST_F(FileSearchTest, TheSumOfMegabytesTakesTheRoundedTexts) {
    for (int i = 0; i < 3; ++i) {
        Write(std::to_string(i) + ".mp3", std::string(1600000, 'x')); // 1.5259 MB each.
    }
    ScanRun run(work, view, log);
    run.FilesTotal = 3;
    mainModule.ScanStartTime = clock.now;
    const auto walk = volumes.GetFolder(music.Path());

    FileSearch(run, *walk);

    EXPECT_DOUBLE_EQ(run.ScannedMegabytes, 1.53 + 1.53 + 1.53);
    EXPECT_EQ(run.FilesDone, 3);
}

TEST_F(FileSearchTest, TheDateIsThatOfCreation) {
    WriteMp3("a.mp3");
    volumes.onFile = [](FileFacts& facts) {
        facts.dateCreated = {2020, 5, 17, 1, 2, 3};
        facts.dateLastModified = {2021, 6, 18, 1, 2, 3};
    };

    Scan();

    EXPECT_THAT(Rows("Select DateLastModified from Files"), ElementsAre("17.05.2020"));
    EXPECT_EQ(mainModule.CurrentFile.FileDate, "17.05.2020 01:02:03");
}

TEST_F(FileSearchTest, AFileWithoutADateIsDatedToTheFirstDayOf1900) {
    WriteMp3("a.mp3");
    volumes.onFile = [](FileFacts& facts) { facts.dateCreated = DateTime(); };

    Scan();

    EXPECT_THAT(Rows("Select DateLastModified from Files"), ElementsAre("01.01.1900"));
}

TEST_F(FileSearchTest, AQuickScanPassesKnownFilesOver) {
    WriteMp3("a.mp3");
    Scan();
    connection.statements.clear();
    events.count = 0;
    view.options.QuickScan = true;

    Scan();

    EXPECT_THAT(connection.statements,
                ElementsAre("(backup)", "Select Path from Files where Path = '" + (music / "a.mp3") + "'"));
    EXPECT_EQ(mainModule.CurrentFile.CurrentPath, music / "a.mp3");
    EXPECT_EQ(mainModule.CurrentFile.FileSize, "160128") << "nothing but the question is done";
    EXPECT_EQ(events.count, 4) << "before the count, once a folder and pass, once for the known file";
    EXPECT_EQ(work.progressValues[work.progressValues.size() - 2], 100.0F);
}

TEST_F(FileSearchTest, ABrokenFileCostsAQuickScanOneLookupLikeAGoodOne) {
    WriteMp3("good.mp3");
    Write("empty.mp3", "");
    Write("noise.mp3", std::string(6000, 'x'));
    Write("torn tag.mp3", "ID3\x03" + std::string(6, '\x7F'));
    Write("torn.wav", "RIFF");
    Scan();
    ASSERT_EQ(StoredPaths().size(), 5u);
    connection.statements.clear();
    view.options.QuickScan = true;
    Scan();
    EXPECT_EQ(connection.StatementsOf("Select Path from Files where Path = ").size(), 5u);
    EXPECT_EQ(std::erase(connection.statements, "(backup)"), 1u);
    EXPECT_EQ(connection.statements.size(), 5u);
}

TEST_F(FileSearchTest, AQuickScanStoresNewFiles) {
    WriteMp3("it's.mp3");
    view.options.QuickScan = true;

    Scan();

    EXPECT_EQ(connection.statements[1],
              "Select Path from Files where Path = '" + (music / "it''s.mp3") + "'");
    EXPECT_EQ(mainModule.CurrentFile.CurrentPath, music / "it's.mp3") << "quoted for the question only";
    EXPECT_THAT(StoredPaths(), ElementsAre("it's.mp3"));
}

TEST_F(FileSearchTest, AFullScanAsksNoSuchQuestion) {
    WriteMp3("a.mp3");
    Scan();

    EXPECT_THAT(connection.StatementsOf("Select Path"), IsEmpty());
}

TEST_F(FileSearchTest, AFullScanInspectsANetworkFileByItsDriveAndAQuickOneByItsNetworkName) {
    WriteMp3("a.mp3");
    TemporaryFolder server; // What is under the network name is another file.
    WriteBytes(server / "a.mp3", Mp3Bytes("Far", "Away", "Net"));
    volumes.networkRoots[music.Path()] = server.Path();
    volumes.onFile = [&](FileFacts& facts) { facts.drivePath = music.Path(); };

    Scan();
    EXPECT_EQ(mainModule.CurrentFile.CurrentPath, music / "a.mp3");
    EXPECT_THAT(Rows("Select F.Path, T.Name, D.Drive from Files F, Titel T, Drive D where T.Title_id = "
                     "F.Title_id and D.Drive_id = F.Drive_id"),
                ElementsAre((server / "a.mp3") + "|Song of a.mp3|" + server.Path()));

    Execute("Delete from Files");
    view.options.QuickScan = true;
    Scan();
    EXPECT_EQ(mainModule.CurrentFile.CurrentPath, server / "a.mp3");
    EXPECT_THAT(Rows("Select F.Path, T.Name from Files F, Titel T where T.Title_id = F.Title_id"),
                ElementsAre((server / "a.mp3") + "|Far"));
}

TEST_F(FileSearchTest, AFileScannedTwiceKeepsItsFileId) {
    const std::vector<std::string> names{"it's \"x\".mp3", "two\nlines.mp3", "bad\xFF\xFE.mp3", "\xE4.mp3",
                                         "%_[F.x].mp3"};
    for (const std::string& name : names) {
        WriteMp3(name);
    }

    Scan();
    const auto first = Rows("Select File_id, Path from Files order by File_id");
    Scan();

    EXPECT_EQ(first.size(), names.size());
    EXPECT_EQ(Rows("Select File_id, Path from Files order by File_id"), first);
    EXPECT_THAT(StoredPaths(), ::testing::UnorderedElementsAreArray(names));
}

TEST_F(FileSearchTest, AFileThatVanishedOnlyMovesTheBar) {
    Write("a.txt");
    volumes.onList = [](FolderContents& contents) {
        contents.files.insert(contents.files.begin(), {"x.mp3", false});
    };
    mainModule.ScanLogEnabled = true;

    Scan();

    EXPECT_THAT(CallsOf("panel 1: Scanning"), ElementsAre("panel 1: Scanning... " + (music / "a.txt")));
    EXPECT_THAT(work.progressValues, ElementsAre(50.0F, 100.0F, 0.0F));
    EXPECT_THAT(CallsOf("panel 3: verbl"),
                ElementsAre("panel 3: verbl.: 00:00:00", "panel 3: verbl.: 00:00:00"));
    ASSERT_EQ(log.skipped.size(), 1u);
    EXPECT_EQ(log.skipped[0].path, music / "x.mp3");
    EXPECT_EQ(log.skipped[0].reason, std::strerror(ENOENT));
}

TEST_F(FileSearchTest, WhatTheWalkPassedOverIsNamedOnceInTheScanLogAndNowhereElse) {
    WriteMp3("a.mp3");
    ASSERT_EQ(::mkfifo((music / "pipe.mp3").c_str(), 0644), 0);
    std::filesystem::create_symlink("nowhere", music / "dangling.mp3");
    std::filesystem::create_symlink(".", music / "circle");

    Scan();
    EXPECT_THAT(log.skipped, IsEmpty()) << "the log is off";

    mainModule.ScanLogEnabled = true;
    Scan();
    std::vector<std::string> paths;
    for (const SkippedEntry& entry : log.skipped) {
        paths.push_back(entry.path);
    }
    EXPECT_THAT(paths, UnorderedElementsAre(music / "pipe.mp3", music / "dangling.mp3"));
    EXPECT_THAT(StoredPaths(), ElementsAre("a.mp3"));
}

TEST_F(FileSearchTest, BrokenFilesAreStoredLikeOthers) {
    Write("empty.mp3", "");
    Write("short.mp3", "\xFF\xFB");
    Write("noise.wav", std::string(3000, '\xFF'));

    Scan();

    EXPECT_THAT(StoredPaths(), UnorderedElementsAre("empty.mp3", "short.mp3", "noise.wav"));
}

TEST_F(FileSearchTest, TheBarsStepIsASingle) {
    for (int i = 0; i < 3; ++i) {
        Write(std::to_string(i) + ".txt");
    }

    Scan();

    const auto step = static_cast<float>(100.0 / 3);
    EXPECT_THAT(work.progressValues, ElementsAre(step, step + step, step + step + step, 0.0F));
    EXPECT_THAT(CallsOf("title: Quavernet - "),
                ElementsAre("title: Quavernet - 33 %", "title: Quavernet - 67 %", "title: Quavernet - 100 %",
                            "title: Quavernet - letzter scan: 20.11.2026"));
}

TEST_F(FileSearchTest, ATreeTwoHundredLevelsDeepIsScannedToItsEnd) {
    std::string path;
    for (int i = 0; i < 200; ++i) {
        path += "folder/";
    }
    WriteMp3(path + "a.mp3");

    Scan();

    EXPECT_THAT(StoredPaths(), ElementsAre(path + "a.mp3"));
}

TEST_F(FileSearchTest, AFileWhosePathNoSingleCallCanNameIsStoredAllTheSame) {
    const std::string name(200, 'n');
    std::string path;
    int at = ::open(music.Path().c_str(), O_RDONLY | O_DIRECTORY);
    for (int i = 0; i < 200; ++i) {
        ASSERT_EQ(::mkdirat(at, name.c_str(), 0755), 0);
        const int next = ::openat(at, name.c_str(), O_RDONLY | O_DIRECTORY);
        ::close(at);
        at = next;
        path += name + "/";
    }
    ::close(::openat(at, "a.mp3", O_CREAT | O_WRONLY, 0644));
    ::close(at);

    Scan();

    EXPECT_THAT(StoredPaths(), ElementsAre(path + "a.mp3"));
}

} // namespace
} // namespace quavernet::test
