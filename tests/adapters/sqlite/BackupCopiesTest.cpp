#include "adapters/sqlite/BackupCopies.h"

#include "platform/LibraryError.h"
#include "support/FileSizeLimit.h"
#include "support/KilledWriter.h"
#include "support/RefusedCalls.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include <cerrno>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quavernet::test {
namespace {

class BackupCopiesTest : public LibraryTest {
protected:
    // A run of the program that makes a copy and then adds a title.
    void RunOnce(const std::string& title) {
        mainModule.Connection.reset();
        mainModule.Connection = OpenLibrary(libraryPath);
        Connection().Backup();
        Execute("Insert into Titel (Name) values ('" + title + "')");
    }
    Texts TitlesOf(const std::string& path) {
        return RowTextsOf(*OpenLibrary(path), "Select Name from Titel Order By Title_id");
    }
    static std::string FileBytes(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::string Copy(int number) const { return BackupPath(libraryPath, number); }
    static bool Exists(const std::string& path) { return std::filesystem::exists(path); }
};

TEST_F(BackupCopiesTest, TheCopyLiesBesideTheLibraryAndIsOneItself) {
    Execute("Insert into Titel (Name) values ('not committed yet')");
    Connection().Backup();
    EXPECT_EQ(Copy(1), libraryFolder / "Quavernet.backup1.db");
    EXPECT_EQ(TitlesOf(Copy(1)), Texts{"not committed yet"});
    EXPECT_FALSE(Exists(Copy(0)));
    EXPECT_FALSE(Exists(Copy(2)));
}

TEST_F(BackupCopiesTest, ThreeCopiesAreKeptTheNewestFirst) {
    for (const char* title : {"a", "b", "c", "d", "e"}) {
        RunOnce(title);
    }
    EXPECT_EQ(TitlesOf(Copy(1)), (Texts{"a", "b", "c", "d"}));
    EXPECT_EQ(TitlesOf(Copy(2)), (Texts{"a", "b", "c"}));
    EXPECT_EQ(TitlesOf(Copy(3)), (Texts{"a", "b"}));
    EXPECT_FALSE(Exists(Copy(4)));
}

TEST_F(BackupCopiesTest, OneRunMakesOneCopy) {
    Connection().Backup();
    Connection().Backup();
    EXPECT_TRUE(Exists(Copy(1)));
    EXPECT_FALSE(Exists(Copy(2)));
}

TEST_F(BackupCopiesTest, NoCopyFollowsARunThatDidNotCloseTheLibrary) {
    mainModule.Connection.reset();
    ASSERT_TRUE(WriteAndDie(libraryPath, "Insert into Titel (Name) values ('x')"));
    RunOnce("after the kill");
    EXPECT_FALSE(Exists(Copy(1)));
    RunOnce("later");
    EXPECT_EQ(TitlesOf(Copy(1)), (Texts{"x", "after the kill"}));
}

TEST_F(BackupCopiesTest, AFailingCopyLeavesTheOlderOnes) {
    RunOnce("a");
    mainModule.Connection = OpenLibrary(libraryPath);
    std::filesystem::create_directory(Copy(0)); // Is where the copy is made.
    std::ofstream(Copy(0) + "/file") << "x";
    EXPECT_THROW(Connection().Backup(), RuntimeError);
    EXPECT_EQ(TitlesOf(Copy(1)), Texts{});
    EXPECT_FALSE(Exists(Copy(2)));
}

TEST_F(BackupCopiesTest, ADamagedLibraryPushesNoCopyOut) {
    for (const char* title : {"a", "b", "c", "d"}) {
        RunOnce(title);
    }
    mainModule.Connection.reset();
    const auto before = FileBytes(Copy(3));
    {
        // A page of an index that the start doesn't read.
        std::fstream file(libraryPath, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(static_cast<std::streamoff>(std::filesystem::file_size(libraryPath) / 2 / 4096 * 4096));
        file << std::string(4096, '\x7F');
    }
    const auto damaged = FileBytes(libraryPath);
    mainModule.Connection = OpenLibrary(libraryPath);
    try {
        Connection().Backup();
        FAIL() << "a copy of a damaged library";
    } catch (const LibraryError& error) {
        EXPECT_EQ(error.Fault(), LibraryFault::Damaged);
        EXPECT_EQ(error.Path(), libraryPath);
        EXPECT_TRUE(error.Description().starts_with(libraryPath + ": the library is damaged: "));
    }
    mainModule.Connection.reset();
    EXPECT_EQ(FileBytes(libraryPath), damaged);
    EXPECT_EQ(FileBytes(Copy(3)), before);
    EXPECT_EQ(TitlesOf(Copy(1)), (Texts{"a", "b", "c"}));
    EXPECT_FALSE(Exists(Copy(0)));
}

TEST_F(BackupCopiesTest, AnEndBetweenTheStepsOfTheRotationLosesNoCopy) {
    const auto write = [](const std::string& path, const std::string& text) { std::ofstream(path) << text; };
    // Killed when number 2 had moved, when 1 had moved too, and before the fresh one came in.
    for (const Texts& left : {Texts{"new", "1", "", "2"}, Texts{"new", "", "1", "2"}}) {
        for (int number = 0; number <= BackupCount; ++number) {
            std::filesystem::remove(Copy(number));
            if (!left[static_cast<std::size_t>(number)].empty()) {
                write(Copy(number), left[static_cast<std::size_t>(number)]);
            }
        }
        mainModule.Connection = OpenLibrary(libraryPath);
        Connection().Backup();
        EXPECT_EQ(TitlesOf(Copy(1)), Texts{});
        EXPECT_EQ(FileBytes(Copy(2)), "1");
        EXPECT_EQ(FileBytes(Copy(3)), "2");
        EXPECT_FALSE(Exists(Copy(0)));
    }
}

TEST_F(BackupCopiesTest, OneThatAnotherProgramIsMakingIsLeftToIt) {
    RunOnce("a");
    mainModule.Connection = OpenLibrary(libraryPath);
    std::ofstream(Copy(0)) << "half";
    const int other = ::open(Copy(0).c_str(), O_RDWR);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    Connection().Backup();
    EXPECT_EQ(FileBytes(Copy(0)), "half");
    EXPECT_FALSE(Exists(Copy(2)));
    ::close(other);
}

TEST_F(BackupCopiesTest, ACopyShowsOneMomentOfWhatAnotherProgramWrites) {
    mainModule.Connection = OpenLibrary(libraryPath);
    const auto another = OpenLibrary(libraryPath);
    another->Execute("Insert into Titel (Name) values ('committed')");
    another->Commit();
    another->Execute("Insert into Titel (Name) values ('under way')");
    Connection().Backup();
    EXPECT_EQ(TitlesOf(Copy(1)), Texts{"committed"});
    another->Commit();
    EXPECT_EQ(Rows("Select Name from Titel Order By Title_id"), (Texts{"committed", "under way"}));
}

TEST_F(BackupCopiesTest, AFullDiskKeepsTheOlderCopiesAndLeavesNoRest) {
    RunOnce("a");
    mainModule.Connection = OpenLibrary(libraryPath);
    {
        const FileSizeLimit full(20000);
        EXPECT_THROW(Connection().Backup(), RuntimeError);
    }
    EXPECT_EQ(TitlesOf(Copy(1)), Texts{});
    EXPECT_FALSE(Exists(Copy(0)));
    EXPECT_FALSE(Exists(Copy(0) + "-journal"));
    EXPECT_FALSE(Exists(Copy(2)));
}

TEST_F(BackupCopiesTest, ACopyHasTheRightsOfTheLibraryAndNeverMore) {
    const auto rightsOf = [](const std::string& path) {
        return std::filesystem::status(path).permissions() & std::filesystem::perms::mask;
    };
    for (const unsigned rights : {0600U, 0640U, 0664U, 0644U}) {
        std::ofstream(Copy(0)) << "rest of a run that was killed";
        std::filesystem::permissions(libraryPath, std::filesystem::perms(rights));
        mainModule.Connection = OpenLibrary(libraryPath);
        Connection().Backup();
        EXPECT_EQ(rightsOf(Copy(1)), std::filesystem::perms(rights));
    }
}

TEST_F(BackupCopiesTest, TheNamesOfTheCopiesAreBroughtToTheDisk) {
    const auto succeedsWhenTheFolderGives = [this](int error) {
        return SucceedsWithout({{SYS_fsync, 0, 0, error}}, [this] {
            OpenLibrary(libraryPath)->Backup();
            return true;
        });
    };
    mainModule.Connection.reset();
    EXPECT_FALSE(succeedsWhenTheFolderGives(EIO));
    EXPECT_TRUE(succeedsWhenTheFolderGives(EINVAL)) << "a file system without that call";
    EXPECT_EQ(TitlesOf(Copy(1)), Texts{});
}

TEST_F(BackupCopiesTest, ARestOfACopyThatWasCutShortIsReplaced) {
    std::ofstream(Copy(0)) << "cut short";
    Connection().Backup();
    EXPECT_EQ(TitlesOf(Copy(1)), Texts{});
    EXPECT_FALSE(Exists(Copy(0)));
}

} // namespace
} // namespace quavernet::test
