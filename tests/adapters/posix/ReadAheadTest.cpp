// Files and folders that are read ahead of the work that wants them: which ones, how many, and that the work
// finds what it would find without.
#include "support/ReadAheadTest.h"

#include "support/OrdinaryUser.h"
#include "support/WalkedFiles.h"

#include <gmock/gmock.h>

#include <filesystem>
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
    EXPECT_TRUE(ahead->IsRead(other, Ahead::Contents, Long));
    EXPECT_EQ(Contents(other), "not told");
}

TEST_F(ReadAheadTest, AFolderThatALinkLeadsToIsListedWhenAsManyOthersAsMayBeAre) {
    for (int i = 0; i < 60; ++i) {
        Write("c" + std::to_string(i) + "/c.mp3");
    }
    const auto ahead = Walk(Ahead::Nothing);
    ASSERT_TRUE(ahead->IsListed(music.Path(), Long));
    parts.disk.AwaitListings(32);
    const TemporaryFolder outside;
    fs::create_directory_symlink(outside.Path(), music / "link");
    EXPECT_TRUE(ahead->IsListed(music / "link", Long));
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
    EXPECT_TRUE(ahead->IsRead(fs::directory_iterator(first)->path(), Ahead::Contents, Long));
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

} // namespace
} // namespace quavernet::test
