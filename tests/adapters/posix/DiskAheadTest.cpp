// Reading ahead on a disk of the machine, which is worth its cost only while the disk really gives something.
#include "support/ReadAheadTest.h"
#include "support/WalkedFiles.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <set>
#include <thread>

namespace quavernet::test {
namespace {

using posix::FileSystemKind;
using std::chrono::milliseconds;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class DiskAheadTest : public ReadAheadTest {
protected:
    DiskAheadTest() {
        for (const char* folder : {"one", "one/a", "one/b", "two", "two/c", "two/d/e", "three"}) {
            WriteMany(folder, 30);
        }
    }
    /// Visits every file of a walk as a scan does.
    static void VisitAll(FolderWalk& walk, FilesAhead& ahead,
                         const std::function<void(const std::string&)>& visit) {
        std::vector<std::string> waiting{walk.Path()};
        while (!waiting.empty()) {
            const std::string folder = waiting.back();
            waiting.pop_back();
            ASSERT_TRUE(ahead.IsListed(folder, Long));
            FolderContents contents = walk.List(folder);
            for (const FolderFile& file : contents.files) {
                visit(folder + "/" + file.name);
                ASSERT_TRUE(ahead.IsRead(folder + "/" + file.name, Ahead::Contents, Long));
            }
            waiting.insert(waiting.end(), contents.subFolders.rbegin(), contents.subFolders.rend());
        }
    }
    void Scan(const std::function<void(const std::string&)>& visit) {
        const auto ahead = disk.readAhead->Walk({music.Path(), [](std::string_view) { return true; },
                                                 [](std::string_view) { return Ahead::Contents; }});
        const auto walk = disk.fileSystem->GetFolder(music.Path());
        VisitAll(*walk, *ahead, [&](const std::string& path) {
            visited.push_back(path);
            visit(path);
        });
    }

    SlowServices disk{FileSystemKind::Disk};
    std::vector<std::string> visited;
};

TEST_F(DiskAheadTest, NothingIsReadAheadWhileAllComesFromMemory) {
    Scan([](const std::string&) {});
    EXPECT_THAT(visited, SizeIs(7 * 30));
    EXPECT_THAT(disk.disk.Reads(), IsEmpty());
    EXPECT_THAT(disk.disk.Listings(), IsEmpty());
    EXPECT_EQ(disk.disk.Pool()->Readers(), 0U);
}

TEST_F(DiskAheadTest, FromTheFirstFileThatComesFromTheDiskOnThoseToComeAreReadAhead) {
    Scan([&](const std::string&) {
        disk.disk.SetCold(visited.size() >= 70);
        if (visited.size() == 100) {
            disk.disk.AwaitReads(51); // Its user is faster than the readers, and waits for none.
        }
    });
    EXPECT_THAT(visited, SizeIs(7 * 30));
    const std::vector<std::string> reads = disk.disk.Reads();
    EXPECT_THAT(reads, SizeIs(::testing::Gt(50U)));
    for (const std::string& path : reads) {
        const auto place = std::find(visited.begin(), visited.end(), path) - visited.begin();
        EXPECT_GE(place, 60) << "files of folders that are over are not read again: " << path;
    }
    EXPECT_EQ(std::set<std::string>(reads.begin(), reads.end()).size(), reads.size()) << "each once";
}

TEST_F(DiskAheadTest, ReadingAheadEndsWhenAllComesFromMemoryAgain) {
    WriteMany("zero", 1000);
    Scan([&](const std::string&) {
        disk.disk.SetCold(visited.size() < 40);
        if (visited.size() == 39) {
            disk.disk.AwaitReads(1);
        }
    });
    EXPECT_THAT(disk.disk.Reads(), SizeIs(::testing::AllOf(::testing::Gt(0U), ::testing::Lt(600U))));
    EXPECT_THAT(visited, SizeIs(1000 + 7 * 30));
}

TEST_F(DiskAheadTest, NobodyWaitsForAReaderOnceAllElseComesFromMemory) {
    const std::vector<std::string> songs = WriteMany("songs", 300);
    for (const std::string& song : songs) {
        disk.disk.Hang(song);
    }
    disk.disk.SetCold(true);
    const auto ahead = disk.readAhead->Walk({music / "songs", [](std::string_view) { return true; },
                                             [](std::string_view) { return Ahead::Contents; }});
    for (int i = 0; i < 3; ++i) { // The disk gives something while the folder is listed.
        ASSERT_TRUE(ahead->IsListed(music / "songs", Long));
    }
    disk.disk.AwaitReads(1);
    disk.disk.SetCold(false);
    const std::string first = disk.disk.Reads().front();
    const std::jthread others([&] {
        std::this_thread::sleep_for(milliseconds(100)); // Its user waits by then.
        disk.disk.LetGoOthers(first);
    });
    EXPECT_TRUE(ahead->IsRead(first, Ahead::Contents, Long)) << "its reader hangs for ever";
}

TEST_F(DiskAheadTest, NobodyWaitsForAReaderThatHasNotBegun) {
    const std::vector<std::string> songs = WriteMany("songs", 300);
    disk.disk.SetCold(true);
    disk.disk.Hang(songs[0]);
    const auto ahead = disk.readAhead->Walk({music / "songs", [](std::string_view) { return true; },
                                             [](std::string_view) { return Ahead::Contents; }});
    for (int i = 0; i < 3; ++i) { // The disk gives something while the folder is listed.
        ASSERT_TRUE(ahead->IsListed(music / "songs", Long));
    }
    disk.disk.AwaitReads(1);
    const std::vector<std::string> reads = disk.disk.Reads();
    for (const std::string& song : songs) {
        if (std::find(reads.begin(), reads.end(), song) == reads.end() && song != songs[0]) {
            EXPECT_TRUE(ahead->IsRead(song, Ahead::Contents, Long));
        }
    }
}

} // namespace
} // namespace quavernet::test
