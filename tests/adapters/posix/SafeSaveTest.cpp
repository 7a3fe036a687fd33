#include "adapters/posix/SafeSave.h"

#include "adapters/posix/TemporaryCopy.h"
#include "platform/RuntimeError.h"
#include "support/FailureNumber.h"
#include "support/FileSizeLimit.h"
#include "support/OrdinaryUser.h"
#include "support/RefusedCalls.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quavernet::test {

namespace {

namespace fs = std::filesystem;
using posix::IsCopyName;
using posix::OpenedFile;
using posix::OverwriteBytes;
using posix::RewriteFile;
using posix::TemporaryCopy;

void ReplaceHead(const OpenedFile& file, std::uint64_t oldSize, std::string_view head) {
    RewriteFile(file, [&](FileCopy& copy) {
        copy.Append(AsBytes(head));
        copy.AppendOld(oldSize, file.Size());
    });
}

class SafeSaveTest : public ::testing::Test {
protected:
    SafeSaveTest() { WriteFile(path, old); }

    void Overwrite(std::size_t offset, const std::string& bytes, SaveTimes times = SaveTimes::Keep) {
        OpenedFile file(path, BinaryFile::Access::ReadWrite);
        OverwriteBytes(file, offset, AsBytes(std::string_view(old).substr(offset, bytes.size())),
                       AsBytes(bytes), times);
    }
    ino_t Inode() const {
        struct stat facts {};
        EXPECT_EQ(::stat(path.c_str(), &facts), 0);
        return facts.st_ino;
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.Path())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    TemporaryFolder folder;
    std::string path = folder / "a.mp3";
    const std::string old = std::string(5000, 'a') + std::string(5000, 'b');
};

} // namespace

TEST_F(SafeSaveTest, WhatLiesWithinAPageIsWrittenInPlace) {
    const ino_t inode = Inode();
    Overwrite(4096, std::string(4096, 'x'));
    EXPECT_EQ(ReadFile(path), Put(old, 4096, std::string(4096, 'x')));
    EXPECT_EQ(Inode(), inode);
}

TEST_F(SafeSaveTest, WhatLiesOverAPagesEndGoesByWayOfACopy) {
    const ino_t inode = Inode();
    Overwrite(4095, "xy");
    EXPECT_EQ(ReadFile(path), Put(old, 4095, "xy"));
    EXPECT_NE(Inode(), inode);
    EXPECT_EQ(Names(), std::vector<std::string>{"a.mp3"});
}

TEST_F(SafeSaveTest, OnlyWhatDiffersCounts) {
    const ino_t inode = Inode();
    Overwrite(4000, Put(old.substr(4000, 2000), 300, "xyz"));
    EXPECT_EQ(ReadFile(path), Put(old, 4300, "xyz"));
    EXPECT_EQ(Inode(), inode);
    const auto time = fs::last_write_time(path);
    Overwrite(0, old.substr(0, 100), SaveTimes::Renew);
    EXPECT_EQ(fs::last_write_time(path), time) << "nothing differs, nothing is written";
}

TEST_F(SafeSaveTest, TheTimesStayOrAreThoseOfTheSave) {
    const struct timespec times[2] = {{1000000000, 0}, {1100000000, 0}};
    for (const std::size_t offset : {100U, 4095U}) {
        WriteFile(path, old);
        ::utimensat(AT_FDCWD, path.c_str(), times, 0);
        Overwrite(offset, "xy", SaveTimes::Keep);
        struct stat facts {};
        ASSERT_EQ(::stat(path.c_str(), &facts), 0);
        EXPECT_EQ(facts.st_mtim.tv_sec, 1100000000) << offset;

        WriteFile(path, old);
        ::utimensat(AT_FDCWD, path.c_str(), times, 0);
        Overwrite(offset, "zz", SaveTimes::Renew);
        ASSERT_EQ(::stat(path.c_str(), &facts), 0);
        EXPECT_GT(facts.st_mtim.tv_sec, 1100000000) << offset;
    }
}

TEST_F(SafeSaveTest, ACopyIsWhatItWasComposedOfInPiecesOfAnySize) {
    const std::string large(3'000'000, 'l');
    const OpenedFile file(path, BinaryFile::Access::ReadWrite);
    RewriteFile(file, [&](FileCopy& copy) {
        copy.AppendOld(4999, 5001);
        copy.Append(AsBytes("x"));
        copy.AppendOld(7, 7);
        copy.Append(AsBytes(large));
        copy.Append({});
        copy.AppendOld(0, old.size());
    });
    EXPECT_EQ(ReadFile(path), "abx" + large + old);
    EXPECT_EQ(Names(), std::vector<std::string>{"a.mp3"});
}

TEST_F(SafeSaveTest, AWriterThatGivesUpInTheMiddleLeavesTheFileAndNoCopy) {
    const OpenedFile file(path, BinaryFile::Access::ReadWrite);
    EXPECT_EQ(NumberOf([&] {
                  RewriteFile(file, [&](FileCopy& copy) {
                      copy.Append(AsBytes("x"));
                      throw RuntimeError(ErrorNumber::PathFileAccess, "no");
                  });
              }),
              ErrorNumber::PathFileAccess);
    EXPECT_EQ(ReadFile(path), old);
    EXPECT_EQ(Names(), std::vector<std::string>{"a.mp3"});
}

TEST_F(SafeSaveTest, AFileThatAnotherProgramReplacedMeanwhileStays) {
    const OpenedFile file(path, BinaryFile::Access::Read);
    WriteFile(folder / "new", "somebody else's");
    fs::rename(folder / "new", path);
    EXPECT_THROW(ReplaceHead(file, 10, "head"), RuntimeError);
    EXPECT_EQ(ReadFile(path), "somebody else's");
    EXPECT_EQ(Names(), std::vector<std::string>{"a.mp3"});
}

TEST_F(SafeSaveTest, AFileThatWasCutMeanwhileStays) {
    const OpenedFile file(path, BinaryFile::Access::Read);
    fs::resize_file(path, 100);
    EXPECT_THROW(ReplaceHead(file, 10, "head"), RuntimeError);
    EXPECT_EQ(ReadFile(path), std::string(100, 'a'));
    EXPECT_EQ(Names(), std::vector<std::string>{"a.mp3"});
}

TEST_F(SafeSaveTest, AFileThatGrewSinceItWasOpenedStays) {
    OpenedFile file(path, BinaryFile::Access::ReadWrite);
    WriteFile(path, old + "more");
    EXPECT_THROW(ReplaceHead(file, 10, "head"), RuntimeError);
    for (const std::size_t offset : {100U, 4095U}) {
        EXPECT_THROW(OverwriteBytes(file, offset, AsBytes(std::string_view(old).substr(offset, 2)),
                                    AsBytes("xy"), SaveTimes::Keep, WithoutCopy::InPlace),
                     RuntimeError)
            << offset;
    }
    EXPECT_EQ(ReadFile(path), old + "more");
}

TEST_F(SafeSaveTest, AFileThatAnotherProgramChangedToTheSameLengthSinceItWasOpenedStays) {
    const std::string theirs(old.size(), 't');
    const struct timespec longAgo[2] = {{1000000000, 0}, {1100000000, 0}};
    struct stat before {};
    for (const bool keepsItsTime : {false, true}) {
        for (const std::size_t offset : {100U, 4095U}) {
            WriteFile(path, old);
            ::utimensat(AT_FDCWD, path.c_str(), longAgo, 0);
            ASSERT_EQ(::stat(path.c_str(), &before), 0);
            OpenedFile file(path, BinaryFile::Access::ReadWrite);
            struct stat now = before;
            do { // The clock of a file system has its steps.
                WriteFile(path, theirs);
                if (keepsItsTime) {
                    ::utimensat(AT_FDCWD, path.c_str(), longAgo, 0);
                }
                ASSERT_EQ(::stat(path.c_str(), &now), 0);
            } while (now.st_ctim.tv_sec == before.st_ctim.tv_sec &&
                     now.st_ctim.tv_nsec == before.st_ctim.tv_nsec);
            EXPECT_THROW(ReplaceHead(file, 10, "head"), RuntimeError);
            EXPECT_THROW(OverwriteBytes(file, offset, AsBytes(std::string_view(old).substr(offset, 2)),
                                        AsBytes("xy"), SaveTimes::Keep, WithoutCopy::InPlace),
                         RuntimeError)
                << offset;
            EXPECT_EQ(ReadFile(path), theirs) << offset;
        }
    }
}

TEST_F(SafeSaveTest, AFileWithAnotherNameThatWasReplacedMeanwhileStays) {
    fs::create_hard_link(path, folder / "b.mp3");
    const OpenedFile file(path, BinaryFile::Access::Read);
    WriteFile(folder / "new", "somebody else's");
    fs::rename(folder / "new", path);
    EXPECT_THROW(ReplaceHead(file, 10, "head"), RuntimeError);
    EXPECT_EQ(ReadFile(path), "somebody else's");
    EXPECT_EQ(ReadFile(folder / "b.mp3"), old);
}

TEST_F(SafeSaveTest, TheOtherNamesOfAFileKeepTheOldOne) {
    fs::create_hard_link(path, folder / "b.mp3");
    Overwrite(4095, "xy");
    EXPECT_EQ(ReadFile(path), Put(old, 4095, "xy"));
    EXPECT_EQ(ReadFile(folder / "b.mp3"), old);
}

// As the superuser it saves somebody else's file, whose group is not the one that the folder gives.
TEST_F(SafeSaveTest, WhoCanNotKeepTheOwnerKeepsTheGroupAndNoBorrowedRights) {
    const bool superuser = ::geteuid() == 0;
    ASSERT_EQ(::chown(path.c_str(), superuser ? 12345 : ::geteuid(), ::getegid()), 0);
    ASSERT_EQ(::chmod(path.c_str(), 06666), 0);
    ASSERT_EQ(::chown(folder.Path().c_str(), static_cast<uid_t>(-1), superuser ? 12345 : ::getegid()), 0);
    ASSERT_EQ(::chmod(folder.Path().c_str(), 02777), 0);
    {
        const OrdinaryUser user;
        Overwrite(4095, "xy");
    }
    struct stat facts {};
    ASSERT_EQ(::stat(path.c_str(), &facts), 0);
    EXPECT_EQ(ReadFile(path), Put(old, 4095, "xy"));
    EXPECT_EQ(facts.st_gid, ::getegid());
    EXPECT_EQ(facts.st_mode & 07777, superuser ? 00666U : 06666U);
}

TEST_F(SafeSaveTest, ACopyThatAKilledWriterLeftGoesWithTheNextOne) {
    WriteFile(folder / ".quavernet-aB3xYz", "left");
    WriteFile(folder / ".quavernet-working", "not a copy's name");
    WriteFile(folder / ".quavernet-aB3xY.", "nor this");
    fs::create_directory(folder / ".quavernet-folder");
    Overwrite(4095, "xy");
    EXPECT_EQ(Names(), (std::vector<std::string>{".quavernet-aB3xY.", ".quavernet-folder",
                                                 ".quavernet-working", "a.mp3"}));
}

TEST_F(SafeSaveTest, ACopyThatAnotherWriterIsAtStays) {
    const std::string copy = folder / ".quavernet-aB3xYz";
    WriteFile(copy, "half");
    const int writer = ::open(copy.c_str(), O_RDWR);
    ASSERT_EQ(::flock(writer, LOCK_EX), 0);
    Overwrite(4095, "xy");
    EXPECT_TRUE(fs::exists(copy));
    ::close(writer);
    Overwrite(4095, "zz");
    EXPECT_FALSE(fs::exists(copy));
}

TEST_F(SafeSaveTest, ACopyIsLockedAndNoScansBusinessAsLongAsItIsWritten) {
    TemporaryCopy copy;
    ASSERT_EQ(copy.Begin(path), 0);
    ASSERT_EQ(copy.Append(AsBytes("new")), 0);
    EXPECT_EQ(ReadFile(path), old);
    for (const std::string& name : Names()) { // None, where a copy needs no name.
        EXPECT_TRUE(name == "a.mp3" || IsCopyName(name)) << name;
    }
    const int other = ::open(("/proc/self/fd/" + std::to_string(copy.Number())).c_str(), O_RDONLY);
    EXPECT_NE(::flock(other, LOCK_EX | LOCK_NB), 0);
    ::close(other);
    EXPECT_EQ(copy.MoveToTarget(), 0);
    EXPECT_EQ(ReadFile(path), "new");
}

TEST_F(SafeSaveTest, ACopyThatIsGivenUpLeavesNothing) {
    {
        TemporaryCopy copy;
        ASSERT_EQ(copy.Begin(path), 0);
        ASSERT_EQ(copy.Append(AsBytes("new")), 0);
    }
    EXPECT_EQ(ReadFile(path), old);
    EXPECT_EQ(Names(), std::vector<std::string>{"a.mp3"});
}

TEST_F(SafeSaveTest, ATargetInAMissingFolderIsToldByItsError) {
    TemporaryCopy copy;
    EXPECT_EQ(copy.Begin(folder / "missing/a.mp3"), ENOENT);
}

TEST_F(SafeSaveTest, AFileBeyondTheLengthOfASystemCallIsSavedToo) {
    const std::string name(200, 'n');
    std::string deep = folder.Path();
    int at = ::open(deep.c_str(), O_RDONLY | O_DIRECTORY);
    for (int level = 0; level < 25; ++level) {
        ASSERT_EQ(::mkdirat(at, name.c_str(), 0755), 0);
        const int next = ::openat(at, name.c_str(), O_RDONLY | O_DIRECTORY);
        ::close(at);
        at = next;
        deep += "/" + name;
    }
    const int made = ::openat(at, "a.mp3", O_CREAT | O_WRONLY, 0644);
    ASSERT_EQ(::write(made, old.data(), old.size()), static_cast<ssize_t>(old.size()));
    ::close(made);
    ::close(at);
    const std::string target = deep + "/a.mp3";
    ASSERT_GT(target.size(), 5000U);
    {
        const OpenedFile file(target, BinaryFile::Access::ReadWrite);
        ReplaceHead(file, 5000, "head");
    }
    const OpenedFile saved(target, BinaryFile::Access::Read);
    std::string text(saved.Size(), '?');
    saved.ReadAt(0, std::as_writable_bytes(std::span(text.data(), text.size())));
    EXPECT_EQ(text, "head" + std::string(5000, 'b'));
}

TEST_F(SafeSaveTest, ACopyForWhichThereIsNoRoomIsToldAsAFullDisk) {
    const OpenedFile file(path, BinaryFile::Access::ReadWrite);
    const FileSizeLimit full(100);
    EXPECT_EQ(NumberOf([&] { ReplaceHead(file, 5000, "head"); }), ErrorNumber::DiskFull);
    EXPECT_EQ(ReadFile(path), old);
}

// What a file system or an older kernel lacks.
const RefusedCall NoNamelessFile{SYS_openat, 2, O_TMPFILE & ~O_DIRECTORY, EOPNOTSUPP};
const RefusedCall NoMoveToAFreePlace{SYS_renameat2, 4, RENAME_NOREPLACE, EINVAL};
const RefusedCall NoSecondName{SYS_linkat, 4, 0, EPERM};

TEST_F(SafeSaveTest, ACopyOfAnotherUserStays) {
    const RefusedCall nobodyKnown{SYS_geteuid, 0, 0, EPERM}; // Its answer is then no user's number.
    WriteFile(folder / ".quavernet-aB3xYz", "another user's, who may be back");
    EXPECT_TRUE(SucceedsWithout({nobodyKnown}, [&] {
        Overwrite(4095, "xy");
        return true;
    }));
    EXPECT_EQ(ReadFile(path), Put(old, 4095, "xy"));
    EXPECT_EQ(Names(), (std::vector<std::string>{".quavernet-aB3xYz", "a.mp3"}));
}

// What a disk answers that took the bytes and can't keep them.
RefusedCall NotKept(int error) {
    return {SYS_fsync, 0, 0, error};
}

TEST_F(SafeSaveTest, AWriteInPlaceThatTheDiskDoesNotKeepIsTakenBackAndTold) {
    const struct timespec times[2] = {{1000000000, 0}, {1100000000, 0}};
    const ino_t inode = Inode();
    for (const auto& [error, number] : std::vector<std::pair<int, int>>{{EIO, ErrorNumber::DeviceInputOutput},
                                                                        {ENOSPC, ErrorNumber::DiskFull},
                                                                        {EDQUOT, ErrorNumber::DiskFull}}) {
        for (const SaveTimes renewed : {SaveTimes::Keep, SaveTimes::Renew}) {
            ::utimensat(AT_FDCWD, path.c_str(), times, 0);
            EXPECT_TRUE(SucceedsWithout({NotKept(error)}, [&, expected = number] {
                try {
                    Overwrite(100, "xy", renewed);
                } catch (const RuntimeError& failure) {
                    return failure.Number() == expected && failure.Description().ends_with(path);
                }
                return false;
            })) << error;
            struct stat facts {};
            ASSERT_EQ(::stat(path.c_str(), &facts), 0);
            EXPECT_EQ(facts.st_mtim.tv_sec, 1100000000);
            EXPECT_EQ(ReadFile(path), old);
        }
    }
    EXPECT_EQ(Inode(), inode);
}

TEST_F(SafeSaveTest, ACopyThatTheDiskDoesNotKeepDoesNotTakeTheFilesPlace) {
    const ino_t inode = Inode();
    for (const bool toFreePlace : {false, true}) {
        EXPECT_TRUE(SucceedsWithout({NotKept(EIO)}, [&] {
            TemporaryCopy copy;
            const int begun = copy.Begin(toFreePlace ? folder / "b.mp3" : path) + copy.Append(AsBytes("new"));
            return begun == 0 && (toFreePlace ? copy.MoveToFreePlace() : copy.MoveToTarget()) == EIO;
        }));
    }
    EXPECT_TRUE(SucceedsWithout({NotKept(EIO)}, [&] {
        EXPECT_THROW(Overwrite(4095, "xy"), RuntimeError);
        return !::testing::Test::HasFailure();
    }));
    EXPECT_EQ(ReadFile(path), old);
    EXPECT_EQ(Inode(), inode);
    EXPECT_EQ(Names(), std::vector<std::string>{"a.mp3"});
}

TEST_F(SafeSaveTest, WithoutNamelessFilesTheCopyHasANameUntilItTakesItsPlace) {
    const auto isNamed = [&] { return Names().size() == 2 && IsCopyName(Names().front()); };
    const auto save = [&] {
        Overwrite(4095, "xy");
        TemporaryCopy givenUp;
        const bool named = givenUp.Begin(path) == 0 && isNamed();
        Overwrite(0, "xy", SaveTimes::Keep);
        Overwrite(4095, "zz");
        return named && isNamed() && ReadFile(path) == Put(Put(old, 0, "xy"), 4095, "zz");
    };
    EXPECT_TRUE(SucceedsWithout({NoNamelessFile}, save));
    EXPECT_EQ(Names(), std::vector<std::string>{"a.mp3"});
}

TEST_F(SafeSaveTest, ACopyMovesToAFreePlaceOnlyWhateverTheFileSystemCanDo) {
    const std::vector<std::vector<RefusedCall>> lacks = {
        {},
        {NoNamelessFile},
        {NoNamelessFile, NoMoveToAFreePlace},
        {NoNamelessFile, NoMoveToAFreePlace, NoSecondName},
    };
    for (std::size_t i = 0; i < lacks.size(); ++i) {
        const std::string place = folder / "b.mp3";
        const auto moved = [&](const std::string& target) {
            TemporaryCopy copy;
            EXPECT_EQ(copy.Begin(target), 0);
            EXPECT_EQ(copy.Append(AsBytes("new")), 0);
            return copy.MoveToFreePlace();
        };
        EXPECT_TRUE(SucceedsWithout(lacks[i], [&] { return moved(path) == EEXIST && moved(place) == 0; }))
            << i;
        EXPECT_EQ(ReadFile(path), old) << i;
        EXPECT_EQ(ReadFile(place), "new") << i;
        EXPECT_EQ(Names(), (std::vector<std::string>{"a.mp3", "b.mp3"})) << i;
        fs::remove(place);
    }
}

} // namespace quavernet::test
