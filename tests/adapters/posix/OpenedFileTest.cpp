#include "adapters/posix/OpenedFile.h"

#include "platform/RuntimeError.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::test {

using posix::OpenedFile;

class OpenedFileTest : public ::testing::Test {
protected:
    // Number of the error that opening raises, 0 if it goes well.
    static int OpenError(const std::string& path, BinaryFile::Access access = BinaryFile::Access::Read) {
        try {
            OpenedFile file(path, access);
            return 0;
        } catch (const RuntimeError& error) {
            EXPECT_FALSE(error.Description().empty());
            return error.Number();
        }
    }

    static std::string Read(const OpenedFile& file, std::uint64_t offset, std::size_t count) {
        std::string text(count, '?');
        text.resize(file.ReadAt(offset, std::as_writable_bytes(std::span(text.data(), text.size()))));
        return text;
    }

    TemporaryFolder folder;
};

TEST_F(OpenedFileTest, ReadsAtOffsetsAndStopsAtTheEnd) {
    WriteFile(folder / "a", "0123456789");
    const OpenedFile file(folder / "a", BinaryFile::Access::Read);
    EXPECT_EQ(file.Size(), 10u);
    EXPECT_EQ(Read(file, 0, 4), "0123");
    EXPECT_EQ(Read(file, 7, 10), "789");
    EXPECT_EQ(Read(file, 10, 1), "");
    EXPECT_EQ(Read(file, 1000, 1), "");
}

TEST_F(OpenedFileTest, WritesAtOffsets) {
    WriteFile(folder / "a", "0123456789");
    OpenedFile file(folder / "a", BinaryFile::Access::ReadWrite);
    file.WriteAt(3, AsBytes("abc"));
    EXPECT_EQ(Read(file, 0, 10), "012abc6789");
    EXPECT_EQ(ReadFile(folder / "a"), "012abc6789");
}

TEST_F(OpenedFileTest, AFileOpenedForReadingIsNotWritten) {
    WriteFile(folder / "a", "0123");
    OpenedFile file(folder / "a", BinaryFile::Access::Read);
    EXPECT_THROW(file.WriteAt(0, AsBytes("x")), RuntimeError);
    EXPECT_EQ(ReadFile(folder / "a"), "0123");
}

TEST_F(OpenedFileTest, NamesTheReasonWhyAFileDoesNotOpen) {
    WriteFile(folder / "a", "x");
    EXPECT_EQ(OpenError(folder / "missing"), ErrorNumber::FileNotFound);
    EXPECT_EQ(OpenError(""), ErrorNumber::FileNotFound);
    EXPECT_EQ(OpenError(folder / "a/b"), ErrorNumber::PathNotFound);
    EXPECT_EQ(OpenError(folder.Path()), ErrorNumber::PathFileAccess);
    EXPECT_EQ(OpenError(folder.Path(), BinaryFile::Access::ReadWrite), ErrorNumber::PathFileAccess);
    EXPECT_EQ(OpenError(std::string(5000, 'x')), ErrorNumber::PathFileAccess);
}

TEST_F(OpenedFileTest, NeverCreatesAFile) {
    EXPECT_EQ(OpenError(folder / "missing", BinaryFile::Access::ReadWrite), ErrorNumber::FileNotFound);
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
}

TEST_F(OpenedFileTest, APathWithANulIsNotCutToAnotherFile) {
    WriteFile(folder / "a", "x");
    EXPECT_EQ(OpenError((folder / "a") + std::string("\0.mp3", 5)), ErrorNumber::FileNotFound);
}

TEST_F(OpenedFileTest, PipesAndDevicesAreRefusedWithoutWaiting) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(OpenError(folder / "pipe"), ErrorNumber::PathFileAccess);
    EXPECT_EQ(OpenError(folder / "pipe", BinaryFile::Access::ReadWrite), ErrorNumber::PathFileAccess);
    EXPECT_EQ(OpenError("/dev/null"), ErrorNumber::PathFileAccess);
}

TEST_F(OpenedFileTest, RightsAreHeeded) {
    WriteFile(folder / "readonly", "x");
    WriteFile(folder / "secret", "x");
    ::chmod(folder.Path().c_str(), 0755);
    ::chmod((folder / "readonly").c_str(), 0444);
    ::chmod((folder / "secret").c_str(), 0000);
    const OrdinaryUser user;
    EXPECT_EQ(OpenError(folder / "readonly"), 0);
    EXPECT_EQ(OpenError(folder / "readonly", BinaryFile::Access::ReadWrite), ErrorNumber::PathFileAccess);
    EXPECT_EQ(OpenError(folder / "secret"), ErrorNumber::PathFileAccess);
}

TEST_F(OpenedFileTest, LinksToPlainFilesAreFollowedAndCirclesAreNot) {
    WriteFile(folder / "a", "abc");
    std::filesystem::create_symlink("a", folder / "link");
    std::filesystem::create_symlink("circle", folder / "circle");
    EXPECT_EQ(Read(OpenedFile(folder / "link", BinaryFile::Access::Read), 0, 3), "abc");
    EXPECT_EQ(OpenError(folder / "circle"), ErrorNumber::PathFileAccess);
}

TEST_F(OpenedFileTest, MovingPassesTheOpenFileOn) {
    WriteFile(folder / "a", "abc");
    WriteFile(folder / "b", "xyz");
    OpenedFile first(folder / "a", BinaryFile::Access::Read);
    OpenedFile second(std::move(first));
    EXPECT_EQ(Read(second, 0, 3), "abc");
    second = OpenedFile(folder / "b", BinaryFile::Access::Read);
    EXPECT_EQ(Read(second, 0, 3), "xyz");
}

TEST_F(OpenedFileTest, APathBeyondTheLengthOfASystemCallIsOpened) {
    std::string path = folder.Path();
    int at = ::open(path.c_str(), O_RDONLY | O_DIRECTORY);
    const std::string name(250, 'n');
    for (int level = 0; level < 40; ++level) {
        ASSERT_EQ(::mkdirat(at, name.c_str(), 0755), 0);
        const int next = ::openat(at, name.c_str(), O_RDONLY | O_DIRECTORY);
        ::close(at);
        at = next;
        path += "/" + name;
    }
    const int made = ::openat(at, "a", O_CREAT | O_WRONLY, 0644);
    ASSERT_EQ(::write(made, "deep", 4), 4);
    ::close(made);
    ::close(at);
    ASSERT_GT(path.size(), 10000U);
    EXPECT_EQ(Read(OpenedFile(path + "/a", BinaryFile::Access::Read), 0, 10), "deep");
    EXPECT_EQ(OpenError(path + "/missing"), ErrorNumber::FileNotFound);
}

} // namespace quavernet::test
