// Long work lets events run, and any handler may run inside another one there. Each handler is started inside
// each other one at every such point: the library must then hold what both would have stored alone.
#include "adapters/id3v2/TagLibComponent.h"
#include "adapters/vorbis/OggInfoReader.h"
#include "app/DragState.h"
#include "inspect/modMp3Info.h"
#include "scanner/AddDroppedFiles.h"
#include "scanner/OggBatches.h"
#include "scanner/ScanDriver.h"
#include "scanner/WaitForRead.h"
#include "support/OggFiles.h"
#include "support/RealFiles.h"
#include "support/ScanDoubles.h"
#include "support/SmallAudio.h"
#include "support/TestLibrary.h"
#include "tree/TreeDrop.h"
#include "tree/TreeModel.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <set>

namespace quavernet::test {
namespace {

using RowSet = std::set<std::string>;

class NestedHandlersTest : public LibraryTest {
protected:
    struct Handler {
        const char* name;
        std::function<void()> run;
        bool scans = false;
    };

    NestedHandlersTest() {
        services.fileSystem = fileSystem.get();
        services.oggInfo = &tool;
        mainModule.TagComponent = CreateTagLibComponent(RealFiles());
        WriteFiles();
    }

    void WriteFiles() {
        for (const char* name : {"scanned/sub", "dropped", "others", "taken", "treed", "listed"}) {
            std::filesystem::create_directories(music / name);
        }
        WriteBytes(music / "scanned/a.mp3", Mp3Bytes("Scan One", "Scanner", "Scan Best", 1, 1));
        WriteBytes(music / "scanned/o.ogg", EncodedOgg::Stereo());
        WriteBytes(music / "scanned/sub/Wer - Was.mp3", Untagged(2));
        WriteBytes(music / "scanned/sub/tone.wav", WaveBytes());
        WriteBytes(music / "dropped/Adam - First.mp3", Mp3Bytes("Drop One", "Dropper", "Drop Best", 2, 3));
        WriteBytes(music / "dropped/Eve - Second.mp3", Untagged(4));
        WriteBytes(music / "dropped/tone.wav", WaveBytes());
        WriteBytes(music / "others/Abel - Third.mp3", Mp3Bytes("Other One", "Other", "Other Best", 3, 5));
        WriteBytes(music / "others/Kain - Fourth.mp3", Untagged(6));
        WriteBytes(music / "taken/t.mp3", Mp3Bytes("Taken", "Taker", "Taken Best", 4, 7));
        WriteBytes(music / "treed/Noah - Fifth.mp3", Mp3Bytes("Tree One", "Tree", "Tree Best", 6, 9));
        WriteBytes(music / "treed/Sem - Sixth.mp3", Untagged(11));
        WriteBytes(music / "listed/l.mp3", Mp3Bytes("List One", "Lister", "List Best", 7, 12));
        WriteBytes(music / "listed/Ham - Seventh.mp3", Untagged(13));
        WriteBytes(music / "List.m3u",
                   (music / "listed/l.mp3") + "\n" + (music / "listed/Ham - Seventh.mp3"));
        WriteBytes(music / "bare.mp3", Mp3Bytes("Bare", "Barer", "Bare Best", 5, 8));
        dialogs.folder = music / "scanned";
    }

    static std::string Untagged(int seconds) {
        const std::string bytes = Mp3Bytes("", "", "", 0, seconds);
        return bytes.substr(0, bytes.size() - 128);
    }

    /// As the command of the menu, which keeps a second scan out.
    void Scan() {
        if (mainModule.ScanRunning) {
            return;
        }
        mainModule.ScanRunning = true;
        driver.StartScan();
        mainModule.ScanRunning = false;
    }

    void Drop(std::initializer_list<const char*> names) {
        std::vector<std::string> paths;
        for (const char* name : names) {
            paths.push_back(music / name);
        }
        AddDroppedFiles(paths, driver, view, work);
    }

    /// On the one category.
    void DropOnTree(std::initializer_list<const char*> names) {
        DropRequest request;
        for (const char* name : names) {
            request.Files.push_back(music / name);
        }
        request.NodeKey = "CAT_Jazz";
        DragState drag;
        TreeModel tree;
        TreeNode& root = tree.Add(nullptr, "Parent", "Bibliothek", "", "");
        tree.Add(&root, "CAT_Jazz", "Jazz", "", "");
        EXPECT_NE(TreeDrop(request, drag, tree, driver, work).Rebuild, mainModule.ScanRunning);
    }

    /// One file on its way into a category: the step after a drop, with a record of its own.
    void Take() {
        CurrentFile own = mainModule.CurrentFile;
        own.DetailsPath = music / "taken/t.mp3";
        AddDroppedFileToLibrary(own.DetailsPath, own, ahead, driver);
    }

    void Inspect() {
        CurrentFile own;
        InspectFile(music / "bare.mp3", own);
        EXPECT_EQ(own.FileArtist + "|" + own.FileTitle + "|" + own.FileAlbum + "|" + own.FileGenre + "|" +
                      own.FileQuality + "|" + std::to_string(own.AudioInfo.Length),
                  "Barer|Bare|Bare Best|5|128|8");
        EXPECT_TRUE(own.HasTagV1);
    }

    std::vector<Handler> Handlers() {
        return {{"scan", [this] { Scan(); }, true},
                {"drop",
                 [this] {
                     Drop({"dropped/Adam - First.mp3", "dropped/Eve - Second.mp3", "dropped/tone.wav"});
                 }},
                {"other drop",
                 [this] {
                     Drop({"others/Abel - Third.mp3", "others/Kain - Fourth.mp3"});
                 }},
                {"drop on the tree",
                 [this] {
                     DropOnTree({"treed/Noah - Fifth.mp3", "treed/Sem - Sixth.mp3"});
                 }},
                {"playlist on the tree", [this] { DropOnTree({"List.m3u"}); }},
                {"take", [this] { Take(); }},
                {"inspect", [this] { Inspect(); }}};
    }

    /// Runs a handler on an empty library and gives its rows; at the event point of that number, counted from
    /// 1, the other handler runs.
    RowSet Run(const Handler& outer, int point = 0, const std::function<void()>& inner = {}) {
        for (const char* table :
             {"Files", "Titel", "Interpret", "Albums", "Quality", "Drive", "Categories", "FileCategories"}) {
            Execute(std::string("Delete from ") + table);
        }
        Execute("Insert into Categories (Category) values ('Jazz')");
        mainModule.CurrentFile = CurrentFile();
        points = 0;
        bool inside = false;
        events.onDoEvents = [&] {
            if (!inside && ++points == point) {
                inside = true;
                inner();
                inside = false;
            }
        };
        outer.run();
        events.onDoEvents = nullptr;
        const auto rows =
            Rows("Select F.Path, F.Name, F.Sizeinbytes, F.Length, F.Genre_id, F.Extension_id, T.Name, "
                 "I.Interpret, A.Name, Q.Quality, D.Drive from Files F, Titel T, Interpret I, Albums A, "
                 "Quality Q, Drive D where F.Title_id = T.Title_id and F.Inter_id = I.Inter_id and "
                 "F.Album_id = A.Album_id and F.Quality_id = Q.Quality_id and F.Drive_id = D.Drive_id");
        EXPECT_EQ(rows.size(), static_cast<std::size_t>(Count("Select File_id from Files")));
        EXPECT_EQ(
            Count("Select FileCategory_id from FileCategories"),
            Count(
                "Select FC.FileCategory_id from FileCategories FC, Files F, Categories C where FC.File_id = "
                "F.File_id and FC.Category_id = C.Category_id and FC.Filename = F.Name"))
            << "an entry without its file or category, or of another file's name";
        RowSet result(rows.begin(), rows.end());
        EXPECT_EQ(result.size(), rows.size()) << "a file has two rows";
        return result;
    }

    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
    TemporaryFolder music;
    NewFilesAhead ahead{[] { return std::vector<std::string>(); }};
    OggInfoReader tool{RealFiles()};
    CallList calls;
    LongWorkDouble work{calls};
    RecordingScanView view{calls};
    RecordingScanLog log{calls};
    OggBatches ogg;
    ScanDriver driver{work, view, log, &ogg};
    int points = 0; ///< Event points that the outer handler has passed.
};

TEST_F(NestedHandlersTest, EachHandlerRunsInsideEachOtherAtEveryPointAndNoRowIsAnother) {
    int pairs = 0;
    for (const Handler& outer : Handlers()) {
        const RowSet outerAlone = Run(outer);
        const int allPoints = points;
        EXPECT_GE(allPoints, 2) << outer.name;
        for (const Handler& inner : Handlers()) {
            RowSet expected = outerAlone;
            // While a scan runs, a drop acts on nothing; what has a record of its own does.
            if (!outer.scans || inner.name == std::string("take")) {
                expected.merge(Run(inner));
            }
            for (int point = 1; point <= allPoints; ++point) {
                ASSERT_EQ(Run(outer, point, inner.run), expected)
                    << inner.name << " inside " << outer.name << " at point " << point << " of " << allPoints;
                ++pairs;
            }
        }
    }
    EXPECT_GT(pairs, 300);
}

TEST_F(NestedHandlersTest, TheHandlersStoreTheseRowsAlone) {
    const std::vector<Handler> handlers = Handlers();
    EXPECT_THAT(Run(handlers[0]),
                ::testing::UnorderedElementsAre(::testing::HasSubstr("|Scan One|Scanner|Scan Best|128|"),
                                                ::testing::HasSubstr("|Über den Wolken|Die Ärzte|Größe|112|"),
                                                ::testing::HasSubstr("|Was|Wer|Kein Album...|128|"),
                                                ::testing::HasSubstr("|tone|Unbekannt|Kein Album...|8|")));
    EXPECT_THAT(Run(handlers[1]),
                ::testing::UnorderedElementsAre(::testing::HasSubstr("|Drop One|Dropper|Drop Best|128|"),
                                                ::testing::HasSubstr("|First|Adam|Kein Album...|128|"),
                                                ::testing::HasSubstr("|Second|Eve|Kein Album...|8|")))
        << "a file without a tag is named after the one before it";
}

TEST_F(NestedHandlersTest, ACancelAtAnyPointLeavesEveryRowOfAScanAsItIs) {
    const Handler scan = Handlers().front();
    const RowSet whole = Run(scan);
    const int allPoints = points;
    std::set<std::size_t> sizes;
    for (int point = 1; point <= allPoints; ++point) {
        const RowSet rows = Run(scan, point, [this] { driver.Cancel(); });
        EXPECT_TRUE(std::includes(whole.begin(), whole.end(), rows.begin(), rows.end())) << point;
        sizes.insert(rows.size());
    }
    EXPECT_GE(sizes.size(), 3U) << "it must end the scan at different files";
    for (const Handler& outer : Handlers()) {
        if (!outer.scans) {
            const RowSet alone = Run(outer);
            for (int point = 1, last = points; point <= last; ++point) {
                EXPECT_EQ(Run(outer, point, [this] { driver.Cancel(); }), alone)
                    << outer.name << " " << point;
            }
        }
    }
}

TEST_F(NestedHandlersTest, WhatADropLeavesBehindIsItsOwnAlsoWhenAnotherRanInsideIt) {
    const Handler drop = Handlers()[1];
    const Handler other = Handlers()[2];
    Run(drop);
    const int allPoints = points;
    for (int point = 1; point <= allPoints; ++point) {
        Run(drop, point, other.run);
        EXPECT_EQ(mainModule.CurrentFile.CurrentFileName, "tone.wav") << point;
        EXPECT_EQ(mainModule.CurrentFile.FilePath, music / "dropped/tone.wav") << point;
        EXPECT_EQ(mainModule.CurrentFile.AudioInfo.BitRate, 8) << point;
    }
}

TEST_F(NestedHandlersTest, TheRecordOfARunningScanIsNobodyElsesUntilItsEnd) {
    mainModule.CurrentFile.CurrentFileName = "before";
    const Handler scan = Handlers().front();
    Run(scan);
    const int allPoints = points;
    const std::string last = mainModule.CurrentFile.CurrentFileName;
    EXPECT_NE(last, "");
    for (int point = 1; point < allPoints - 1; ++point) {
        Run(scan, point, [&] {
            EXPECT_EQ(mainModule.CurrentFile.CurrentFileName, "") << point;
            mainModule.CurrentFile.CurrentFileName = "of a handler";
        });
        EXPECT_EQ(mainModule.CurrentFile.CurrentFileName, last) << point;
    }
}

} // namespace
} // namespace quavernet::test
