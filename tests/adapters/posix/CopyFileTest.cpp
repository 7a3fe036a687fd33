// Copies of whole files, as the first start makes one of the template.
#include "adapters/posix/PosixFileSystem.h"

#include "platform/RuntimeError.h"
#include "support/FailureNumber.h"
#include "support/FileSizeLimit.h"
#include "support/OrdinaryUser.h"
#include "support/SmallAudio.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>

#include <sys/stat.h>

namespace quavernet::test {
namespace {

namespace fs = std::filesystem;

class CopyFileTest : public ::testing::Test {
protected:
    CopyFileTest() { fs::permissions(folder.Path(), fs::perms(0755)); }

    void Write(const std::string& name, const std::string& bytes = "x") { WriteBytes(folder / name, bytes); }

    TemporaryFolder folder;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
};

TEST_F(CopyFileTest, ACopyIsWholeAndWritable) {
    const std::string bytes(200000, 'q');
    Write("source", bytes);
    fs::permissions(folder / "source", fs::perms(0444));

    fileSystem->CopyFile(folder / "source", folder / "target");

    std::ifstream copy(folder / "target", std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(copy), {}), bytes);
    EXPECT_EQ(fs::status(folder / "target").permissions(), fs::perms(0644));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 2) << "nothing else is left behind";
}

TEST_F(CopyFileTest, ACopyGivesNobodyMoreThanTheUsersNewFilesDo) {
    Write("source");
    fs::permissions(folder / "source", fs::perms(0644));
    const mode_t before = ::umask(077);
    for (const auto& [mask, rights] :
         {std::pair<mode_t, unsigned>{077, 0600}, {027, 0640}, {022, 0644}, {0777, 0600}}) {
        ::umask(mask);
        fs::remove(folder / "target");
        fileSystem->CopyFile(folder / "source", folder / "target");
        EXPECT_EQ(fs::status(folder / "target").permissions(), fs::perms(rights)) << mask;
        EXPECT_EQ(::umask(mask), mask) << "and it stays";
    }
    ::umask(before);
}

TEST_F(CopyFileTest, ACopyThatFailsLeavesNothing) {
    Write("source", "new");
    fs::create_directory(folder / "target");

    EXPECT_EQ(NumberOf([&] { fileSystem->CopyFile(folder / "missing", folder / "x"); }), 53);
    EXPECT_EQ(NumberOf([&] { fileSystem->CopyFile(folder.Path(), folder / "x"); }), 53);
    EXPECT_EQ(NumberOf([&] { fileSystem->CopyFile(folder / "source", folder / "none/x"); }), 75);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 2);
    const FileSizeLimit full(2);
    EXPECT_EQ(NumberOf([&] { fileSystem->CopyFile(folder / "source", folder / "x"); }), 61);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 2);
}

TEST_F(CopyFileTest, ASourceThatMayNotBeReadIsNoFaultOfTheTargetsFolder) {
    Write("secret", "x");
    fs::permissions(folder.Path(), fs::perms(0777));
    fs::permissions(folder / "secret", fs::perms(0000));
    const OrdinaryUser user;
    try {
        fileSystem->CopyFile(folder / "secret", folder / "x");
        ADD_FAILURE() << "copied";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::PathFileAccess);
        EXPECT_EQ(error.Description(), "Permission denied: " + (folder / "secret"));
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 1);
}

TEST_F(CopyFileTest, ACopyLeavesWhatIsInItsPlace) {
    Write("source", "new");
    Write("file", "old");
    fs::create_directory(folder / "folder");
    fs::create_symlink(folder / "none", folder / "link");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const char* name : {"file", "folder", "link", "pipe"}) {
        EXPECT_EQ(NumberOf([&] { fileSystem->CopyFile(folder / "source", folder / name); }), 58) << name;
    }
    EXPECT_EQ(fs::file_size(folder / "file"), 3u);
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
    EXPECT_FALSE(fs::exists(folder / "none"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 5);
}

} // namespace
} // namespace quavernet::test
