// Readers that hang or fail: they hold up nothing but what they are at, and their user finds what it would
// find without them.
#include "support/ReadAheadTest.h"
#include "support/RefusingDisk.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <thread>

#include <sys/syscall.h>

namespace quavernet::test {
namespace {

using posix::FileSystemKind;
using std::chrono::milliseconds;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using HangingAheadTest = ReadAheadTest;
using FailingAheadTest = ReadAheadTest;

/// Asks for a file that hangs until `all` files have been begun, each by a reader that hangs, after the
/// `before` ones. Nobody asks before a reader is at this one: that would bring one more.
void HangReaders(const SlowDisk& disk, FilesAhead& ahead, const std::string& path, std::size_t before,
                 std::size_t all) {
    disk.AwaitReads(before + 1);
    while (disk.Reads().size() < all) {
        ASSERT_FALSE(ahead.IsRead(path, Ahead::Contents, milliseconds(1)));
    }
}

TEST_F(HangingAheadTest, AFileThatHangsHoldsUpNoOther) {
    const std::vector<std::string> songs = WriteMany("songs", 60);
    parts.disk.Hang(songs.front());
    const auto ahead = parts.readAhead->Files(songs, Ahead::Contents);
    EXPECT_FALSE(ahead->IsRead(songs.front(), Ahead::Contents, Short));
    parts.disk.AwaitReads(60);
    EXPECT_FALSE(ahead->IsRead(songs.front(), Ahead::Contents, Short));
    parts.disk.LetGo();
    EXPECT_TRUE(ahead->IsRead(songs.front(), Ahead::Contents, Long));
}

TEST_F(HangingAheadTest, TheEndOfAWalkDoesNotWaitForFilesThatHang) {
    const std::vector<std::string> songs = WriteMany("songs", 40);
    for (const std::string& song : songs) {
        parts.disk.Hang(song);
    }
    constexpr std::size_t Readers = posix::ReaderPool::MostReaders;
    for (std::size_t i = 0; i < 3; ++i) {
        auto ahead = parts.readAhead->Files(songs, Ahead::Contents);
        HangReaders(parts.disk, *ahead, songs.front(), i * Readers, (i + 1) * Readers);
        ahead.reset();
        EXPECT_EQ(parts.disk.Pool()->Readers(), 0U) << "all of them hang, and others will come";
    }
    const std::string other = Write("other.mp3", "plays");
    const auto ahead = parts.readAhead->Files({other}, Ahead::Contents);
    EXPECT_TRUE(ahead->IsRead(other, Ahead::Contents, Long));
    EXPECT_EQ(Contents(other), "plays");
}

TEST_F(HangingAheadTest, WhatIsWantedNowFindsAReaderThoughAllOfThemHang) {
    const std::vector<std::string> songs = WriteMany("songs", 60);
    for (const std::string& song : songs) {
        parts.disk.Hang(song);
    }
    const auto outside = parts.readAhead->Files(songs, Ahead::Contents);
    HangReaders(parts.disk, *outside, songs.front(), 0, posix::ReaderPool::MostReaders);
    const std::string inner = Write("inner.mp3", "inner");
    const auto inside = parts.readAhead->Files({inner}, Ahead::Contents);
    EXPECT_TRUE(IsReadInSteps(*inside, inner));
    EXPECT_TRUE(IsHeld(inner));
}

TEST_F(HangingAheadTest, ClosesThatHangKeepNobodyFromReading) {
    const std::vector<std::string> songs = WriteMany("songs", 400);
    constexpr std::size_t Threads = 1000; // Each close may take one for itself.
    SlowServices closing(FileSystemKind::Share, Threads);
    closing.disk.HangCloses();
    for (int i = 0; i < 2; ++i) {
        const auto ahead = closing.readAhead->Files(songs, Ahead::Contents);
        ASSERT_NE(ahead, nullptr);
        for (const std::string& song : songs) {
            ASSERT_TRUE(IsReadInSteps(*ahead, song)) << song;
            ASSERT_NE(closing.disk.Pool()->CurrentFile(song), nullptr);
        }
    }
}

TEST_F(HangingAheadTest, TwoPiecesOfWorkRunSideBySide) {
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

TEST_F(HangingAheadTest, TheReadersGoWhenNothingIsLeftToRead) {
    const std::vector<std::string> songs = WriteMany("songs", 40);
    const std::weak_ptr<posix::ReaderPool> pool = parts.disk.Pool();
    const long holders = pool.use_count();
    auto ahead = parts.readAhead->Files(songs, Ahead::Contents);
    ASSERT_TRUE(ahead->IsRead(songs.back(), Ahead::Contents, Long));
    EXPECT_GT(pool.use_count(), holders);
    ahead.reset();
    EXPECT_TRUE(Comes([&] { return pool.use_count() == holders; })) << "each reader holds it";
    EXPECT_EQ(parts.disk.Pool()->Readers(), 0U);
}

TEST_F(FailingAheadTest, AFileThatItsReaderCouldNotReadIsReadByItsUser) {
    const std::string path = Write("a.mp3", "bytes");
    const auto pool = std::make_shared<posix::ReaderPool>(RefusingDisk(SYS_pread64, EIO));
    const auto ahead = CreatePosixReadAhead(pool)->Files({path}, Ahead::Contents);
    ASSERT_TRUE(ahead->IsRead(path, Ahead::Contents, Long));
    ASSERT_NE(pool->CurrentFile(path), nullptr);
    const auto file = PosixFiles(pool).Open(path, BinaryFile::Access::Read);
    std::string bytes(5, '\0');
    EXPECT_EQ(file->ReadAt(0, std::as_writable_bytes(std::span(bytes))), 5U);
    EXPECT_EQ(bytes, "bytes");
}

TEST_F(FailingAheadTest, AFolderThatItsReaderCouldNotListIsListedByItsUser) {
    Write("a.mp3");
    Write("below/b.mp3");
    for (const long call : {SYS_getdents64, SYS_openat}) {
        const auto pool = std::make_shared<posix::ReaderPool>(RefusingDisk(call, EIO));
        const auto ahead =
            CreatePosixReadAhead(pool)->Walk({music.Path(), [](std::string_view) { return true; },
                                              [](std::string_view) { return Ahead::Nothing; }});
        const auto walk = CreatePosixFileSystem(pool)->GetFolder(music.Path());
        for (const std::string& folder : {music.Path(), music / "below"}) {
            ASSERT_TRUE(ahead->IsListed(folder, Long));
            EXPECT_THAT(walk->List(folder).files, SizeIs(1));
        }
        EXPECT_THAT(walk->TakeSkipped(), IsEmpty());
    }
}

class FewThreadsAheadTest : public ReadAheadTest {
protected:
    static constexpr std::size_t MostThreads = 4;

    SlowServices few{FileSystemKind::Share, MostThreads};
    std::vector<std::string> songs = WriteMany("songs", 20);
};

TEST_F(FewThreadsAheadTest, WhatNobodyCanReadAheadIsReadByItsUser) {
    for (const std::string& song : songs) {
        few.disk.Hang(song);
    }
    auto ahead = few.readAhead->Files(songs, Ahead::Contents);
    HangReaders(few.disk, *ahead, songs[0], 0, MostThreads);
    EXPECT_EQ(few.disk.Pool()->Readers(), MostThreads);
    EXPECT_FALSE(ahead->IsRead(songs[3], Ahead::Contents, Short)) << "a reader is at it";
    EXPECT_TRUE(ahead->IsRead(songs[4], Ahead::Contents, Short));
    EXPECT_TRUE(ahead->IsRead(songs[5], Ahead::Contents, Short));
    EXPECT_THAT(few.disk.Reads(), SizeIs(MostThreads));
    ahead.reset();
    EXPECT_EQ(few.readAhead->Files(songs, Ahead::Contents), nullptr)
        << "all of them hang for one that has ended";
    few.disk.LetGo();
    ASSERT_TRUE(Comes([&] { return (ahead = few.readAhead->Files(songs, Ahead::Contents)) != nullptr; }));
    EXPECT_TRUE(ahead->IsRead(songs[0], Ahead::Contents, Long));
    EXPECT_NE(few.disk.Pool()->CurrentFile(songs[0]), nullptr);
}

TEST_F(FewThreadsAheadTest, TheEndLeavesItsFilesToThoseThatHang) {
    for (std::size_t i = 1; i < songs.size(); ++i) {
        few.disk.Hang(songs[i]);
    }
    auto ahead = few.readAhead->Files(songs, Ahead::Contents);
    ASSERT_TRUE(ahead->IsRead(songs[0], Ahead::Contents, Long));
    HangReaders(few.disk, *ahead, songs[1], 1, 1 + MostThreads);
    const std::weak_ptr<posix::FileAhead> open = few.disk.Pool()->CurrentFile(songs[0]);
    few.disk.HangCloses();
    ahead.reset(); // To close a file here would hang.
    EXPECT_EQ(few.disk.Pool()->Readers(), 0U);
    EXPECT_FALSE(open.expired());
    few.disk.LetGo();
    EXPECT_TRUE(Comes([&] { return open.expired(); }));
}

} // namespace
} // namespace quavernet::test
