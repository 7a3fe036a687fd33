#include "platform/sqlite/BackupCopies.h"

#include "platform/RuntimeError.h"
#include "support/TestLibrary.h"

#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

namespace quavernet::test {
namespace {

using Texts = std::vector<std::string>;
using sqlite::BackupPath;

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
    const pid_t child = ::fork();
    if (child == 0) {
        try {
            const auto connection = OpenLibrary(libraryPath);
            connection->Execute("Insert into Titel (Name) values ('x')");
            connection->Commit();
            ::_exit(0);
        } catch (...) {
            ::_exit(1);
        }
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    ASSERT_EQ(status, 0);
    RunOnce("after the kill");
    EXPECT_FALSE(Exists(Copy(1)));
    RunOnce("later");
    EXPECT_EQ(TitlesOf(Copy(1)), (Texts{"x", "after the kill"}));
}

TEST_F(BackupCopiesTest, AFailingCopyLeavesTheOlderOnes) {
    RunOnce("a");
    mainModule.Connection = OpenLibrary(libraryPath);
    std::filesystem::create_directory(Copy(0)); // Stands where the copy is made.
    std::ofstream(Copy(0) + "/file") << "x";
    EXPECT_THROW(Connection().Backup(), RuntimeError);
    EXPECT_EQ(TitlesOf(Copy(1)), Texts{});
    EXPECT_FALSE(Exists(Copy(2)));
}

TEST_F(BackupCopiesTest, ARestOfACopyThatWasCutShortIsReplaced) {
    std::ofstream(Copy(0)) << "cut short";
    Connection().Backup();
    EXPECT_EQ(TitlesOf(Copy(1)), Texts{});
    EXPECT_FALSE(Exists(Copy(0)));
}

} // namespace
} // namespace quavernet::test
