#include "platform/UserFiles.h"
#include "support/FailureNumber.h"
#include "support/FileSizeLimit.h"
#include "support/OrdinaryUser.h"
#include "support/RealFiles.h"
#include "support/RefusedCalls.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace quavernet::test {

namespace {

class SafeWriteTest : public ::testing::Test {
protected:
    static void Write(const std::string& path, std::string_view contents) {
        const auto file = RealFiles().Create(path);
        file->Append(contents);
        file->Keep();
    }
    static void WritePrivately(const std::string& target, std::string_view contents) {
        const auto file = RealFiles().CreatePrivate(target);
        file->Append(contents);
        file->Keep();
    }
    mode_t Rights() const {
        struct stat facts {};
        EXPECT_EQ(::stat(path.c_str(), &facts), 0);
        return facts.st_mode & 07777;
    }
    long NamesInFolder() const {
        return std::distance(std::filesystem::directory_iterator(folder.Path()), {});
    }

    TemporaryFolder folder;
    const std::string path = folder / "tree.qvn";
};

} // namespace

TEST_F(SafeWriteTest, AFileIsWrittenPieceByPiece) {
    const auto file = RealFiles().Create(path);
    const std::string piece(1000, 'x');
    for (int i = 0; i < 200; ++i) {
        file->Append(piece);
    }
    file->Keep();
    EXPECT_EQ(ReadFile(path), std::string(200'000, 'x'));
    EXPECT_EQ(NamesInFolder(), 1);
}

TEST_F(SafeWriteTest, AnEmptyFileIsAFile) {
    RealFiles().Create(path)->Keep();
    EXPECT_TRUE(std::filesystem::is_empty(path));
}

TEST_F(SafeWriteTest, TheOldFileStaysUntilTheNewOneIsKept) {
    WriteFile(path, "old");
    const auto file = RealFiles().Create(path);
    file->Append(std::string(200'000, 'x'));
    EXPECT_EQ(ReadFile(path), "old");
    file->Keep();
    EXPECT_EQ(std::filesystem::file_size(path), 200'000U);
}

TEST_F(SafeWriteTest, AFileThatIsGivenUpLeavesTheOldOneOrNothing) {
    RealFiles().Create(path)->Append("new");
    EXPECT_EQ(NamesInFolder(), 0);
    WriteFile(path, "old");
    RealFiles().Create(path)->Append("new");
    EXPECT_EQ(ReadFile(path), "old");
    EXPECT_EQ(NamesInFolder(), 1);
}

TEST_F(SafeWriteTest, AFileThatLacksAPieceIsNotKept) {
    WriteFile(path, "old");
    FileSizeLimit limit(100'000);
    const auto file = RealFiles().Create(path);
    EXPECT_NE(NumberOf([&] { file->Append(std::string(200'000, 'x')); }), 0);
    limit.Set(1'000'000); // There is room again.
    EXPECT_NE(NumberOf([&] { file->Keep(); }), 0);
    EXPECT_EQ(ReadFile(path), "old");
}

TEST_F(SafeWriteTest, ANewFileHasTheRightsOfAnyNewFile) {
    const mode_t before = ::umask(027);
    Write(path, "new");
    ::umask(before);
    EXPECT_EQ(Rights(), 0640U);
}

TEST_F(SafeWriteTest, RightsAndAttributesOfTheOldFileStay) {
    WriteFile(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), 0604), 0);
    ASSERT_EQ(::setxattr(path.c_str(), "user.note", "mine", 4, 0), 0);
    Write(path, "new");
    EXPECT_EQ(Rights(), 0604U);
    char note[4] = {};
    EXPECT_EQ(::getxattr(path.c_str(), "user.note", note, sizeof note), 4);
    EXPECT_EQ(std::string(note, 4), "mine");
}

TEST_F(SafeWriteTest, ALinkStaysOneAndItsFileIsWritten) {
    const std::string file = folder / "file";
    WriteFile(file, "old");
    std::filesystem::create_symlink("file", path);
    Write(path, "new");
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(ReadFile(file), "new");
}

TEST_F(SafeWriteTest, ALinkThatLeadsNowhereGetsItsFile) {
    std::filesystem::create_symlink("later", folder / "second");
    std::filesystem::create_symlink(folder / "second", path);
    Write(path, "new");
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "second"));
    EXPECT_EQ(ReadFile(folder / "later"), "new");
}

TEST_F(SafeWriteTest, WhatIsNoPlainFileIsRefusedAndStays) {
    EXPECT_EQ(NumberOf([&] { RealFiles().Create(folder.Path()); }), ErrorNumber::PathFileAccess);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(NumberOf([&] { RealFiles().Create(path); }), ErrorNumber::PathFileAccess);
    EXPECT_TRUE(std::filesystem::is_fifo(path));
    EXPECT_EQ(NumberOf([&] { RealFiles().Create(folder / std::string("a\0b", 3)); }),
              ErrorNumber::FileNotFound);
    EXPECT_EQ(NamesInFolder(), 1);
}

TEST_F(SafeWriteTest, AMissingFolderIsToldByItsNumber) {
    EXPECT_EQ(NumberOf([&] { RealFiles().Create(folder / "missing/tree.qvn"); }), ErrorNumber::PathNotFound);
}

TEST_F(SafeWriteTest, WhoMayNotWriteTheOldFileMayNotReplaceIt) {
    ASSERT_EQ(::chmod(folder.Path().c_str(), 0777), 0);
    WriteFile(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
    const OrdinaryUser user;
    EXPECT_EQ(NumberOf([&] { RealFiles().Create(path); }), ErrorNumber::PathFileAccess);
    EXPECT_EQ(ReadFile(path), "old");
}

TEST_F(SafeWriteTest, AFullDiskIsToldAndTheOldFileStays) {
    WriteFile(path, "old");
    {
        const FileSizeLimit limit(100'000);
        const auto file = RealFiles().Create(path);
        EXPECT_EQ(NumberOf([&] {
                      file->Append(std::string(300'000, 'x'));
                      file->Append("y");
                      file->Keep();
                  }),
                  ErrorNumber::DiskFull);
    }
    EXPECT_EQ(ReadFile(path), "old");
    EXPECT_EQ(NamesInFolder(), 1);
}

TEST_F(SafeWriteTest, WhatTheDiskDoesNotKeepDoesNotTakeTheOldFilesPlace) {
    WriteFile(path, "old");
    EXPECT_FALSE(SucceedsWithout({{SYS_fsync, 0, 0, EIO}}, [&] {
        Write(path, "new");
        return true;
    }));
    EXPECT_EQ(ReadFile(path), "old");
}

TEST_F(SafeWriteTest, APrivateFileIsReadableByItsUserAlone) {
    const mode_t before = ::umask(0);
    WritePrivately(path, "new");
    EXPECT_EQ(Rights(), 0600U);
    WriteFile(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
    WritePrivately(path, "new");
    ::umask(before);
    EXPECT_EQ(Rights(), 0600U);
    EXPECT_EQ(ReadFile(path), "new");
    EXPECT_EQ(NamesInFolder(), 1);
}

TEST_F(SafeWriteTest, APrivateFileTakesThePlaceOfALinkInsteadOfFollowingIt) {
    const std::string file = folder / "file";
    WriteFile(file, "mine");
    std::filesystem::create_symlink("file", path);
    WritePrivately(path, "new");
    EXPECT_FALSE(std::filesystem::is_symlink(path));
    EXPECT_EQ(ReadFile(path), "new");
    EXPECT_EQ(ReadFile(file), "mine");
}

TEST_F(SafeWriteTest, APrivateFileWaitsForNoPipeAndTakesNoFoldersPlace) {
    ASSERT_EQ(::mkfifo(path.c_str(), 0666), 0);
    WritePrivately(path, "new");
    EXPECT_EQ(ReadFile(path), "new");
    std::filesystem::create_directory(folder / "sub");
    EXPECT_EQ(NumberOf([&] { WritePrivately(folder / "sub", "new"); }), ErrorNumber::PathFileAccess);
    EXPECT_EQ(NumberOf([&] { WritePrivately(folder / "missing/a", "new"); }), ErrorNumber::PathNotFound);
    EXPECT_EQ(NumberOf([&] { WritePrivately(folder / std::string("a\0b", 3), "new"); }),
              ErrorNumber::PathFileAccess);
    EXPECT_EQ(NamesInFolder(), 2);
}

TEST_F(SafeWriteTest, AnotherUsersFileInASharedFolderStays) {
    ASSERT_EQ(::chmod(folder.Path().c_str(), 01777), 0);
    WriteFile(path, "theirs");
    {
        const OrdinaryUser user;
        EXPECT_EQ(NumberOf([&] { WritePrivately(path, "new"); }), ErrorNumber::PathFileAccess);
    }
    EXPECT_EQ(ReadFile(path), "theirs");
    EXPECT_EQ(NamesInFolder(), 1);
}

} // namespace quavernet::test
