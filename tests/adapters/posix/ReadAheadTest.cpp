#include "adapters/posix/PosixReadAhead.h"

#include "platform/RuntimeError.h"
#include "support/OrdinaryUser.h"
#include "support/SlowDisk.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"
#include "support/WalkedFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <set>
#include <thread>

#include <sys/stat.h>

namespace quavernet::test {
namespace {

namespace fs = std::filesystem;
using posix::FileSystemKind;
using std::chrono::milliseconds;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAreArray;

constexpr milliseconds Long{60000};
constexpr milliseconds Short{1};

class ReadAheadTest : public ::testing::Test {
protected:
    ReadAheadTest() { fs::permissions(music.Path(), fs::perms(0755)); }

    std::string Write(const std::string& name, const std::string& bytes = "x") {
        fs::create_directories(fs::path(music / name).parent_path());
        WriteFile(music / name, bytes);
        return music / name;
    }
    std::vector<std::string> WriteMany(const std::string& folder, int count) {
        std::vector<std::string> paths;
        for (int i = 0; i < count; ++i) {
            paths.push_back(Write(folder + "/" + std::to_string(1000 + i) + ".mp3"));
        }
        return paths;
    }
    std::unique_ptr<FilesAhead> Walk(Ahead wanted = Ahead::Contents) {
        return parts.readAhead->Walk(
            {music.Path(), [](std::string_view) { return true; },
             [wanted](std::string_view name) { return name.ends_with(".mp3") ? wanted : Ahead::Nothing; }});
    }

    /// What a file holds for whoever opens it, or its failure.
    std::string Contents(const std::string& path) {
        try {
            const auto file = parts.files.Open(path, BinaryFile::Access::Read);
            std::string bytes(static_cast<std::size_t>(file->Size()) + 10, '\0');
            bytes.resize(file->ReadAt(0, std::as_writable_bytes(std::span(bytes))));
            return bytes;
        } catch (const OpenError& error) {
            return std::to_string(error.Number()) + " " + error.Reason();
        }
    }
    bool IsHeld(const std::string& path) { return parts.disk.Pool()->CurrentFile(path) != nullptr; }

    TemporaryFolder music;
    SlowServices parts;
};

TEST_F(ReadAheadTest, AWalkHasItsFilesReadBeforeItComesToThem) {
    const std::string first = Write("a.mp3", "first");
    const std::string second = Write("below/b.mp3", "second");
    const auto ahead = Walk();
    ASSERT_TRUE(ahead->IsListed(music.Path(), Long));
    EXPECT_TRUE(ahead->IsRead(first, Ahead::Contents, Long));
    EXPECT_TRUE(IsHeld(first));
    EXPECT_EQ(Contents(first), "first");
    ASSERT_TRUE(ahead->IsListed(music / "below", Long));
    EXPECT_TRUE(ahead->IsRead(second, Ahead::Contents, Long));
    EXPECT_FALSE(IsHeld(first)) << "its turn is over";
    EXPECT_EQ(Contents(second), "second");
    EXPECT_EQ(Contents(first), "first");
}

TEST_F(ReadAheadTest, FilesThatAreNotWantedAreNotRead) {
    Write("cover.jpg");
    const std::string song = Write("z.mp3");
    const auto ahead = Walk();
    ASSERT_TRUE(ahead->IsListed(music.Path(), Long));
    EXPECT_TRUE(ahead->IsRead(song, Ahead::Contents, Long));
    EXPECT_THAT(parts.disk.Reads(), ElementsAre(song));
}

TEST_F(ReadAheadTest, AFolderThatIsNotEnteredIsNotListed) {
    Write("in/a.mp3");
    Write("out/b.mp3");
    const auto ahead =
        parts.readAhead->Walk({music.Path(), [](std::string_view path) { return path.ends_with("/in"); },
                               [](std::string_view) { return Ahead::Contents; }});
    ASSERT_TRUE(ahead->IsListed(music.Path(), Long));
    EXPECT_TRUE(ahead->IsListed(music / "in", Long));
    EXPECT_THAT(parts.disk.Listings(), ElementsAre(music.Path(), music / "in"));
}

TEST_F(ReadAheadTest, AWalkFindsTheSameInTheSameOrderWhetherItWasListedAheadOrNot) {
    WriteMany("many", 3000); // More than one piece of a listing.
    for (const char* name : {"b/a.mp3", "b/c/d/e.mp3", "b/c/f.mp3", "g/h.mp3"}) {
        Write(name);
    }
    fs::create_directory_symlink(music / "b/c", music / "g/link");
    fs::create_symlink(music / "g/h.mp3", music / "g/song.mp3");
    fs::create_symlink(music / "nowhere", music / "g/gone.mp3");
    const auto plain = CreatePosixFileSystem()->GetFolder(music.Path());
    const std::vector<std::string> files = AllFiles(*plain);
    ASSERT_THAT(files, SizeIs(3005));

    const auto ahead = Walk();
    const auto walk = parts.fileSystem->GetFolder(music.Path());
    class Waiting : public FolderWalk {
    public:
        Waiting(FolderWalk& walk, FilesAhead& ahead) : m_walk(walk), m_ahead(ahead) {}
        const std::string& Path() const override { return m_walk.Path(); }
        FolderContents List(const std::string& folder) override {
            EXPECT_TRUE(m_ahead.IsListed(folder, Long));
            return m_walk.List(folder);
        }
        std::optional<FileFacts> File(const std::string& path) override { return m_walk.File(path); }
        std::vector<SkippedEntry> TakeSkipped() override { return m_walk.TakeSkipped(); }

    private:
        FolderWalk& m_walk;
        FilesAhead& m_ahead;
    } waiting(*walk, *ahead);
    EXPECT_THAT(AllFiles(waiting), ElementsAreArray(files));
    const auto told = walk->TakeSkipped();
    const auto toldPlain = plain->TakeSkipped();
    ASSERT_THAT(told, SizeIs(1));
    ASSERT_THAT(toldPlain, SizeIs(1));
    EXPECT_EQ(told.front().path, toldPlain.front().path);
    EXPECT_EQ(told.front().reason, toldPlain.front().reason);
}

TEST_F(ReadAheadTest, AFolderThatVanishedAfterItWasListedStillHasItsNames) {
    Write("below/a.mp3");
    const auto ahead = Walk();
    const auto walk = parts.fileSystem->GetFolder(music.Path());
    ASSERT_TRUE(ahead->IsListed(music.Path(), Long));
    (void)walk->List(music.Path());
    ASSERT_TRUE(ahead->IsListed(music / "below", Long));
    fs::remove_all(music / "below");
    EXPECT_THAT(walk->List(music / "below").files, SizeIs(1));
    EXPECT_FALSE(walk->File(music / "below/a.mp3").has_value());
}

TEST_F(ReadAheadTest, AFileThatHangsHoldsUpNoOther) {
    const std::vector<std::string> songs = WriteMany("songs", 60);
    parts.disk.Hang(songs.front());
    const auto ahead = parts.readAhead->Files(songs, Ahead::Contents);
    EXPECT_FALSE(ahead->IsRead(songs.front(), Ahead::Contents, Short));
    parts.disk.AwaitReads(60);
    EXPECT_FALSE(ahead->IsRead(songs.front(), Ahead::Contents, Short));
    parts.disk.LetGo();
    EXPECT_TRUE(ahead->IsRead(songs.front(), Ahead::Contents, Long));
}

TEST_F(ReadAheadTest, TheEndOfAWalkDoesNotWaitForFilesThatHang) {
    const std::vector<std::string> songs = WriteMany("songs", 40);
    for (const std::string& song : songs) {
        parts.disk.Hang(song);
    }
    for (int i = 0; i < 3; ++i) {
        auto ahead = parts.readAhead->Files(songs, Ahead::Contents);
        while (parts.disk.Reads().size() <
               (static_cast<std::size_t>(i) + 1) * posix::ReaderPool::MostReaders) {
            EXPECT_FALSE(ahead->IsRead(songs.front(), Ahead::Contents, Short));
        }
        ahead.reset();
        EXPECT_EQ(parts.disk.Pool()->Readers(), 0U) << "all of them hang, and others will come";
    }
    const std::string other = Write("other.mp3", "plays");
    const auto ahead = parts.readAhead->Files({other}, Ahead::Contents);
    EXPECT_TRUE(ahead->IsRead(other, Ahead::Contents, Long));
    EXPECT_EQ(Contents(other), "plays");
}

TEST_F(ReadAheadTest, TheReadersGoWhenNothingIsLeftToRead) {
    const std::vector<std::string> songs = WriteMany("songs", 40);
    parts.readAhead->Files(songs, Ahead::Contents)->IsRead(songs.back(), Ahead::Contents, Long);
    while (parts.disk.Pool()->Readers() > 0) {
        std::this_thread::yield();
    }
    EXPECT_EQ(parts.disk.Pool()->Readers(), 0U);
}

TEST_F(ReadAheadTest, AFileThatChangedSinceItWasReadIsReadAgain) {
    const std::string path = Write("a.mp3", "old");
    const auto ahead = parts.readAhead->Files({path}, Ahead::Contents);
    ASSERT_TRUE(ahead->IsRead(path, Ahead::Contents, Long));
    ASSERT_TRUE(IsHeld(path));
    Write("a.mp3", "new and longer");
    EXPECT_EQ(Contents(path), "new and longer");
}

TEST_F(ReadAheadTest, AFileThatAnotherHasTakenThePlaceOfIsReadAgain) {
    const std::string path = Write("a.mp3", "old");
    const auto ahead = parts.readAhead->Files({path}, Ahead::Contents);
    ASSERT_TRUE(ahead->IsRead(path, Ahead::Contents, Long));
    fs::rename(Write("b.mp3", "new"), path);
    EXPECT_EQ(Contents(path), "new");
}

TEST_F(ReadAheadTest, AVanishedFileFailsAsItWouldWithoutBeingReadAhead) {
    const std::string path = Write("a.mp3", "old");
    const auto ahead = parts.readAhead->Files({path, music / "never.mp3"}, Ahead::Contents);
    ASSERT_TRUE(ahead->IsRead(path, Ahead::Contents, Long));
    fs::remove(path);
    EXPECT_EQ(Contents(path), "53 No such file or directory");
    ASSERT_TRUE(ahead->IsRead(music / "never.mp3", Ahead::Contents, Long));
    EXPECT_EQ(Contents(music / "never.mp3"), "53 No such file or directory");
}

TEST_F(ReadAheadTest, AFileThatMayNotBeReadFailsAsItWouldWithoutBeingReadAhead) {
    const std::string path = Write("a.mp3", "secret");
    fs::permissions(path, fs::perms(0));
    const OrdinaryUser user;
    const auto ahead = parts.readAhead->Files({path}, Ahead::Contents);
    ASSERT_TRUE(ahead->IsRead(path, Ahead::Contents, Long));
    ASSERT_TRUE(IsHeld(path));
    EXPECT_EQ(Contents(path), "75 Permission denied");
}

TEST_F(ReadAheadTest, APipeIsNoFileAndHangsNobody) {
    const std::string path = music / "pipe.mp3";
    ASSERT_EQ(::mkfifo(path.c_str(), 0644), 0);
    const auto ahead = parts.readAhead->Files({path}, Ahead::Contents);
    ASSERT_TRUE(ahead->IsRead(path, Ahead::Contents, Long));
    EXPECT_EQ(Contents(path), "75 Invalid argument");
}

TEST_F(ReadAheadTest, WhatIsNoPlainFileIsNotOpenedAheadOfItsUser) {
    const std::string path = music / "pipe.mp3";
    ASSERT_EQ(::mkfifo(path.c_str(), 0644), 0);
    const auto ahead = parts.readAhead->Files({path, Write("a.mp3")}, Ahead::Contents);
    EXPECT_TRUE(ahead->IsRead(path, Ahead::Contents, Long));
    EXPECT_TRUE(ahead->IsRead(music / "a.mp3", Ahead::Contents, Long));
    EXPECT_THAT(parts.disk.Reads(), ElementsAre(music / "a.mp3")) << "a writer at its other end goes on";
}

TEST_F(ReadAheadTest, AFileThatCameAfterItsReaderIsRead) {
    const std::string path = music / "a.mp3";
    const auto ahead = parts.readAhead->Files({path}, Ahead::Contents);
    ASSERT_TRUE(ahead->IsRead(path, Ahead::Contents, Long));
    Write("a.mp3", "new");
    EXPECT_EQ(Contents(path), "new");
}

TEST_F(ReadAheadTest, AFolderThatCameToBeReadableAfterItsReaderIsListed) {
    Write("closed/a.mp3");
    fs::permissions(music / "closed", fs::perms(0));
    const auto walk = parts.fileSystem->GetFolder(music.Path());
    const auto ahead = Walk();
    {
        const OrdinaryUser user;
        ASSERT_TRUE(ahead->IsListed(music.Path(), Long));
        ASSERT_TRUE(ahead->IsListed(music / "closed", Long));
    }
    fs::permissions(music / "closed", fs::perms(0755));
    EXPECT_THAT(walk->List(music / "closed").files, SizeIs(1));
}

TEST_F(ReadAheadTest, NoMoreThanAFixedNumberOfFilesIsReadAhead) {
    const std::vector<std::string> songs = WriteMany("songs", 300);
    parts.disk.Hang(songs[0]);
    const auto ahead = parts.readAhead->Files(songs, Ahead::Contents);
    EXPECT_FALSE(ahead->IsRead(songs[0], Ahead::Contents, Short));
    parts.disk.AwaitReads(128);
    EXPECT_FALSE(ahead->IsRead(songs[0], Ahead::Contents, milliseconds(50)));
    EXPECT_THAT(parts.disk.Reads(), SizeIs(128));
    parts.disk.LetGo();
    for (const std::string& song : songs) {
        ASSERT_TRUE(ahead->IsRead(song, Ahead::Contents, Long));
    }
    EXPECT_THAT(parts.disk.Reads(), SizeIs(300));
}

TEST_F(ReadAheadTest, WhatTurnsOutKnownIsNotRead) {
    const std::vector<std::string> songs = WriteMany("songs", 50);
    const auto ahead = Walk(Ahead::Unsure);
    ASSERT_TRUE(ahead->IsListed(music.Path(), Long));
    ASSERT_TRUE(ahead->IsListed(music / "songs", Long));
    for (const std::string& song : songs) {
        ASSERT_TRUE(ahead->IsRead(song, Ahead::Facts, Long));
    }
    EXPECT_THAT(parts.disk.Reads(), IsEmpty());
}

TEST_F(ReadAheadTest, OneNewFileAmongKnownOnesIsReadAlone) {
    std::vector<std::string> songs = WriteMany("songs", 50);
    const auto ahead = parts.readAhead->Files(songs, Ahead::Unsure);
    ASSERT_TRUE(ahead->IsRead(songs[20], Ahead::Contents, Long));
    ASSERT_TRUE(ahead->IsRead(songs[40], Ahead::Contents, Long));
    ASSERT_TRUE(ahead->IsRead(songs[49], Ahead::Contents, Long));
    EXPECT_THAT(parts.disk.Reads(), ElementsAre(songs[20], songs[40], songs[49]));
}

TEST_F(ReadAheadTest, NewFilesInARowHaveThoseAfterThemRead) {
    const std::vector<std::string> songs = WriteMany("songs", 50);
    const auto ahead = parts.readAhead->Files(songs, Ahead::Unsure);
    for (int i = 0; i < 8; ++i) {
        ASSERT_TRUE(ahead->IsRead(songs[static_cast<std::size_t>(i)], Ahead::Contents, Long));
    }
    parts.disk.AwaitReads(songs.size());
    EXPECT_THAT(parts.disk.Reads(), UnorderedElementsAreArray(songs));
}

TEST_F(ReadAheadTest, FilesInMemoryAreNotReadAhead) {
    SlowServices memory(FileSystemKind::Memory);
    Write("a.mp3");
    EXPECT_EQ(memory.readAhead->Walk({music.Path(), [](std::string_view) { return true; },
                                      [](std::string_view) { return Ahead::Contents; }}),
              nullptr);
    const std::vector<std::string> songs = WriteMany("songs", 200);
    const auto ahead = memory.readAhead->Files(songs, Ahead::Contents);
    for (const std::string& song : songs) {
        ASSERT_TRUE(ahead->IsRead(song, Ahead::Contents, Long));
    }
    EXPECT_THAT(memory.disk.Reads(), SizeIs(::testing::Le(posix::ReaderPool::MostReaders + 1)));
}

TEST_F(ReadAheadTest, FoldersOfTheKernelAreNotLookedInto) {
    Write("a.mp3");
    SlowServices kernel(FileSystemKind::Kernel);
    const auto ahead = kernel.readAhead->Walk({music.Path(), [](std::string_view) { return true; },
                                               [](std::string_view) { return Ahead::Contents; }});
    ASSERT_TRUE(ahead->IsListed(music.Path(), Long));
    ASSERT_TRUE(ahead->IsRead(music / "a.mp3", Ahead::Contents, Long));
    EXPECT_THAT(kernel.disk.Reads(), IsEmpty());
}

/// Visits every file of a walk as a scan does.
void VisitAll(FolderWalk& walk, FilesAhead& ahead, const std::function<void(const std::string&)>& visit) {
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

class DiskAheadTest : public ReadAheadTest {
protected:
    DiskAheadTest() {
        for (const char* folder : {"one", "one/a", "one/b", "two", "two/c", "two/d/e", "three"}) {
            WriteMany(folder, 30);
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
    WriteMany("zero", 3000);
    Scan([&](const std::string&) { disk.disk.SetCold(visited.size() < 40); });
    EXPECT_THAT(disk.disk.Reads(), SizeIs(::testing::AllOf(::testing::Gt(0U), ::testing::Lt(1500U))));
    EXPECT_THAT(visited, SizeIs(3000 + 7 * 30));
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
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(ahead->IsRead(first, Ahead::Contents, milliseconds(10000)));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, milliseconds(9000));
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

TEST_F(ReadAheadTest, APathThatNobodyToldOfIsReadToo) {
    const std::string told = Write("a.mp3", "told");
    const std::string other = Write("other/b.mp3", "not told");
    const auto ahead = parts.readAhead->Files({told}, Ahead::Contents);
    EXPECT_TRUE(ahead->IsRead(other, Ahead::Contents, Long));
    EXPECT_TRUE(IsHeld(other));
    EXPECT_EQ(Contents(other), "not told");
    EXPECT_TRUE(ahead->IsRead(told, Ahead::Contents, Long));
    EXPECT_EQ(Contents(told), "told");
}

TEST_F(ReadAheadTest, APathThatNobodyToldOfIsReadWhenAsManyFilesAsMayBeAreOpen) {
    const std::vector<std::string> songs = WriteMany("songs", 300);
    const std::string other = Write("other/b.mp3", "not told");
    parts.disk.Hang(songs[0]);
    const auto ahead = parts.readAhead->Files(songs, Ahead::Contents);
    EXPECT_FALSE(ahead->IsRead(songs[0], Ahead::Contents, Short));
    parts.disk.AwaitReads(128);
    EXPECT_TRUE(ahead->IsRead(other, Ahead::Contents, milliseconds(5000)));
    EXPECT_EQ(Contents(other), "not told");
}

TEST_F(ReadAheadTest, AFolderThatALinkLeadsToIsListedWhenAsManyOthersAsMayBeAre) {
    for (int i = 0; i < 60; ++i) {
        Write("c" + std::to_string(i) + "/c.mp3");
    }
    const auto ahead = Walk(Ahead::Nothing);
    ASSERT_TRUE(ahead->IsListed(music.Path(), Long));
    while (parts.disk.Listings().size() < 32) {
        std::this_thread::yield();
    }
    const TemporaryFolder outside;
    fs::create_directory_symlink(outside.Path(), music / "link");
    EXPECT_TRUE(ahead->IsListed(music / "link", milliseconds(5000)));
}

TEST_F(ReadAheadTest, AFolderThatIsListedLateIsReadThoughOthersAfterItHaveBeenReadToTheLimit) {
    WriteMany("a", 200);
    WriteMany("b", 200);
    const std::string first = fs::directory_iterator(music.Path())->path();
    parts.disk.Hang(first);
    const auto ahead = Walk();
    ASSERT_TRUE(ahead->IsListed(music.Path(), Long));
    EXPECT_FALSE(ahead->IsListed(first, Short));
    parts.disk.AwaitReads(128);
    parts.disk.LetGo();
    ASSERT_TRUE(ahead->IsListed(first, Long));
    EXPECT_TRUE(ahead->IsRead(fs::directory_iterator(first)->path(), Ahead::Contents, milliseconds(5000)));
}

TEST_F(ReadAheadTest, WhatIsWantedNowFindsAReaderThoughAllOfThemHang) {
    const std::vector<std::string> songs = WriteMany("songs", 60);
    for (const std::string& song : songs) {
        parts.disk.Hang(song);
    }
    const auto outside = parts.readAhead->Files(songs, Ahead::Contents);
    while (parts.disk.Reads().size() < posix::ReaderPool::MostReaders) {
        EXPECT_FALSE(outside->IsRead(songs.front(), Ahead::Contents, Short));
    }
    const std::string inner = Write("inner.mp3", "inner");
    const auto inside = parts.readAhead->Files({inner}, Ahead::Contents);
    bool isRead = false;
    for (int i = 0; i < 50 && !isRead; ++i) {
        isRead = inside->IsRead(inner, Ahead::Contents, milliseconds(100));
    }
    EXPECT_TRUE(isRead);
    EXPECT_TRUE(IsHeld(inner));
}

TEST_F(ReadAheadTest, ClosesThatHangKeepNobodyFromReading) {
    const std::vector<std::string> songs = WriteMany("songs", 400);
    parts.disk.HangCloses();
    for (int i = 0; i < 3; ++i) {
        const auto ahead = parts.readAhead->Files(songs, Ahead::Contents);
        for (const std::string& song : songs) {
            bool isRead = false;
            for (int j = 0; j < 50 && !isRead; ++j) {
                isRead = ahead->IsRead(song, Ahead::Contents, milliseconds(100));
            }
            ASSERT_TRUE(isRead) << song;
        }
    }
}

class FewThreadsTest : public ReadAheadTest {
protected:
    static constexpr std::size_t MostThreads = 4;

    /// As many readers as may be hang at the first files of the plan from now on.
    void HangAll(FilesAhead& ahead, std::size_t begun = 0) {
        few.disk.AwaitReads(begun + 1);
        while (few.disk.Reads().size() < begun + MostThreads) {
            EXPECT_FALSE(ahead.IsRead(songs[begun], Ahead::Contents, Short));
        }
    }

    SlowServices few{FileSystemKind::Share, MostThreads};
    std::vector<std::string> songs = WriteMany("songs", 20);
};

TEST_F(FewThreadsTest, WhatNobodyCanReadAheadIsReadByItsUser) {
    for (const std::string& song : songs) {
        few.disk.Hang(song);
    }
    auto ahead = few.readAhead->Files(songs, Ahead::Contents);
    HangAll(*ahead);
    EXPECT_EQ(few.disk.Pool()->Readers(), MostThreads);
    EXPECT_FALSE(ahead->IsRead(songs[3], Ahead::Contents, Short)) << "a reader is at it";
    EXPECT_TRUE(ahead->IsRead(songs[4], Ahead::Contents, Short));
    EXPECT_TRUE(ahead->IsRead(songs[5], Ahead::Contents, Short));
    EXPECT_THAT(few.disk.Reads(), SizeIs(MostThreads));
    ahead.reset();
    EXPECT_EQ(few.readAhead->Files(songs, Ahead::Contents), nullptr)
        << "all of them hang for one that has ended";
    few.disk.LetGo();
    while (few.disk.Pool()->Readers() > 0 || !(ahead = few.readAhead->Files(songs, Ahead::Contents))) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(ahead->IsRead(songs[0], Ahead::Contents, Long));
    EXPECT_NE(few.disk.Pool()->CurrentFile(songs[0]), nullptr);
}

TEST_F(FewThreadsTest, TheEndLeavesItsFilesToThoseThatHang) {
    for (std::size_t i = 1; i < songs.size(); ++i) {
        few.disk.Hang(songs[i]);
    }
    auto ahead = few.readAhead->Files(songs, Ahead::Contents);
    ASSERT_TRUE(ahead->IsRead(songs[0], Ahead::Contents, Long));
    HangAll(*ahead, 1);
    const std::weak_ptr<posix::FileAhead> open = few.disk.Pool()->CurrentFile(songs[0]);
    few.disk.HangCloses();
    ahead.reset(); // To close a file here would hang.
    EXPECT_EQ(few.disk.Pool()->Readers(), 0U);
    EXPECT_FALSE(open.expired());
    few.disk.LetGo();
    while (!open.expired()) {
        std::this_thread::yield();
    }
}

TEST_F(ReadAheadTest, ALinkToAFileOfTheKernelIsNotOpened) {
    const std::string link = music / "link.mp3";
    fs::create_symlink("/proc/self/status", link);
    {
        const auto ahead = Walk();
        ASSERT_TRUE(ahead->IsListed(music.Path(), Long));
        EXPECT_TRUE(ahead->IsRead(Write("a.mp3"), Ahead::Contents, Long));
    }
    const auto ahead = parts.readAhead->Files({link}, Ahead::Contents);
    EXPECT_TRUE(ahead->IsRead(link, Ahead::Contents, Long));
    EXPECT_THAT(parts.disk.Reads(), Not(Contains(link)));
}

TEST_F(ReadAheadTest, ABatchStaysOpenUntilTheNext) {
    const std::vector<std::string> songs = WriteMany("songs", 20);
    const auto ahead = parts.readAhead->Files(songs, Ahead::Contents, 10);
    for (std::size_t i = 0; i < 12; ++i) {
        ASSERT_TRUE(ahead->IsRead(songs[i], Ahead::Contents, Long));
    }
    EXPECT_FALSE(IsHeld(songs[1]));
    EXPECT_TRUE(IsHeld(songs[2]));
    EXPECT_TRUE(IsHeld(songs[11]));
}

TEST_F(ReadAheadTest, TwoPiecesOfWorkRunSideBySide) {
    const std::vector<std::string> songs = WriteMany("songs", 40);
    const std::string inner = Write("inner.mp3", "inner");
    parts.disk.Hang(songs[0]);
    const auto outside = parts.readAhead->Files(songs, Ahead::Contents);
    EXPECT_FALSE(outside->IsRead(songs[0], Ahead::Contents, Short));
    {
        const auto inside = parts.readAhead->Files({inner}, Ahead::Contents);
        EXPECT_TRUE(inside->IsRead(inner, Ahead::Contents, Long));
        EXPECT_EQ(Contents(inner), "inner");
    }
    parts.disk.LetGo();
    EXPECT_TRUE(outside->IsRead(songs[0], Ahead::Contents, Long));
    EXPECT_TRUE(IsHeld(songs[0]));
}

} // namespace
} // namespace quavernet::test
