#include "adapters/sqlite/LibraryPlace.h"

#include "adapters/sqlite/LibraryFile.h"
#include "platform/LibraryError.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include <fstream>
#include <functional>
#include <iterator>

#include <sys/wait.h>
#include <unistd.h>

namespace quavernet::test {
namespace {

namespace fs = std::filesystem;
std::string ReadWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A running program with a committed row, whose library then goes another way.
class LibraryPlaceTest : public LogicTest {
protected:
    LibraryPlaceTest() {
        fs::create_directory(folder);
        CopyTemplate(path);
        CopyTemplate(outside / "restored.db");
        connection = OpenLibrary(path);
        Insert("early");
        connection->Commit();
    }

    void Insert(const std::string& name) {
        connection->Execute("Insert into Titel (Name) values ('" + name + "')");
    }
    void Replace() { fs::rename(outside / "restored.db", path); }

    /// The failure of an action, which must be that of a lost library.
    std::string Failure(const std::function<void()>& action) {
        try {
            action();
        } catch (const LibraryError& error) {
            EXPECT_EQ(error.Fault(), LibraryFault::Moved);
            EXPECT_EQ(error.Path(), path);
            return error.Description();
        }
        return "none";
    }
    static Texts TitlesOf(const std::string& library) {
        return RowTextsOf(*OpenLibrary(library), "Select Name from Titel");
    }
    static bool IsEmptyOrMissing(const std::string& file) {
        return !fs::exists(file) || fs::file_size(file) == 0;
    }

    TemporaryFolder outside;
    std::string folder = outside / "Quavernet Database";
    std::string path = folder + "/Quavernet.db";
    std::string told = path + ": the library was moved, replaced or deleted";
    std::unique_ptr<ADODB::Connection> connection;
};

TEST_F(LibraryPlaceTest, AFileThatTookTheLibrarysPlaceGetsNothingAndOpens) {
    Replace();
    const std::string restored = ReadWhole(path);
    EXPECT_EQ(Failure([&] { Insert("late"); }), told);
    EXPECT_EQ(Failure([&] { Insert("later"); }), told) << "and so it stays";
    EXPECT_TRUE(IsEmptyOrMissing(path + "-wal")) << "the process may end here at once";
    EXPECT_TRUE(sqlite::OpenLibraryFile(path).closedCleanly);
    connection.reset();
    EXPECT_EQ(ReadWhole(path), restored);
    EXPECT_EQ(TitlesOf(path), Texts{});
}

TEST_F(LibraryPlaceTest, WhatIsGatheredWhenTheFileIsReplacedIsNamedAsUndone) {
    Insert("gathered");
    Insert("too");
    Replace();
    EXPECT_EQ(Failure([&] { connection->Commit(); }), told + " (2 earlier changes were undone)");
    EXPECT_EQ(RowTextsOf(*connection, "Select Name from Titel"), Texts{"early"}) << "the old file";
    connection.reset();
    EXPECT_EQ(TitlesOf(path), Texts{});
}

TEST_F(LibraryPlaceTest, AnUndisturbedAndTheCopyBeforeAScanAreRefusedToo) {
    Replace();
    EXPECT_EQ(Failure([&] { const ADODB::WriteLock writeLock(*connection); }), told);
    EXPECT_EQ(Failure([&] { connection->Backup(); }), told);
    EXPECT_FALSE(fs::exists(folder + "/Quavernet.backup1.db"));
}

TEST_F(LibraryPlaceTest, AProgramThatHasNothingMoreToWriteLeavesNoLogToTheNewFile) {
    Replace();
    connection.reset();
    EXPECT_TRUE(IsEmptyOrMissing(path + "-wal"));
    EXPECT_EQ(TitlesOf(path), Texts{});
}

TEST_F(LibraryPlaceTest, ADeletedLibraryIsNotWrittenToAndALaterOneFindsNoLog) {
    fs::remove(path);
    EXPECT_EQ(Failure([&] { Insert("late"); }), told);
    EXPECT_FALSE(fs::exists(path));
    connection.reset();
    Replace();
    EXPECT_EQ(TitlesOf(path), Texts{});
}

TEST_F(LibraryPlaceTest, AFolderThatIsDeletedOrMadeAgainIsTold) {
    fs::remove_all(folder);
    EXPECT_EQ(Failure([&] { Insert("late"); }), told);
    fs::create_directory(folder);
    EXPECT_EQ(Failure([&] { Insert("late"); }), told);
    Replace();
    EXPECT_EQ(Failure([&] { Insert("late"); }), told);
    connection.reset();
    EXPECT_EQ(TitlesOf(path), Texts{});
    fs::rename(path, outside / "restored.db");
    fs::remove_all(folder);
    std::ofstream(folder) << "a file";
    EXPECT_THROW(OpenLibrary(path), RuntimeError);
}

TEST_F(LibraryPlaceTest, AMovedFileHoldsWhatWasCommittedWithoutItsLog) {
    fs::rename(path, outside / "moved.db");
    EXPECT_EQ(Failure([&] { Insert("late"); }), told);
    connection.reset();
    EXPECT_TRUE(IsEmptyOrMissing(path + "-wal"));
    EXPECT_EQ(TitlesOf(outside / "moved.db"), Texts{"early"});
}

TEST_F(LibraryPlaceTest, AMovedFolderHoldsWhatWasCommitted) {
    fs::rename(folder, outside / "moved");
    EXPECT_EQ(Failure([&] { Insert("late"); }), told);
    connection.reset();
    EXPECT_EQ(TitlesOf(outside / "moved/Quavernet.db"), Texts{"early"});
}

TEST_F(LibraryPlaceTest, ALinkThatLeadsElsewhereByNowIsTold) {
    connection.reset();
    fs::create_directory(outside / "disk");
    fs::rename(outside / "restored.db", outside / "disk/Quavernet.db");
    fs::create_directory_symlink(folder, outside / "link");
    path = outside / "link/Quavernet.db";
    connection = OpenLibrary(path);
    Insert("late");
    fs::remove(outside / "link");
    fs::create_directory_symlink(outside / "disk", outside / "link");
    EXPECT_EQ(Failure([&] { connection->Commit(); }),
              path + ": the library was moved, replaced or deleted (1 earlier change was undone)");
    EXPECT_EQ(TitlesOf(path), Texts{});
}

TEST_F(LibraryPlaceTest, AFileInItsPlaceIsWrittenToWhateverLiesBeside) {
    std::ofstream(folder + "/other.db") << "x";
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(Failure([&] { Insert("late"); }), "none");
    fs::rename(path, outside / "away.db");
    fs::rename(outside / "away.db", path);
    EXPECT_EQ(Failure([&] { connection->Commit(); }), "none") << "the same file";
    connection.reset();
    EXPECT_EQ(TitlesOf(path), (Texts{"early", "late"}));
}

// Two ends of a pipe: one process waits until the other one has done something.
class Signal {
public:
    Signal() { EXPECT_EQ(::pipe(m_ends), 0); }
    ~Signal() {
        ::close(m_ends[0]);
        ::close(m_ends[1]);
    }
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;
    void Give() const { [[maybe_unused]] const auto ignored = ::write(m_ends[1], "x", 1); }
    void Await() const {
        char byte = 0;
        [[maybe_unused]] const auto ignored = ::read(m_ends[0], &byte, 1);
    }

private:
    int m_ends[2]{};
};

TEST_F(LibraryPlaceTest, ALogThatAnotherProgramUsesForTheNewFileIsLeftToIt) {
    connection.reset();
    const Signal opened, replaced, closed;
    const pid_t child = ::fork();
    if (child == 0) { // Opens the file that takes the place of this process's.
        try {
            replaced.Await();
            auto other = OpenLibrary(path);
            other->Execute("Insert into Titel (Name) values ('of the other')");
            other->Commit();
            opened.Give();
            closed.Await();
            other.reset();
            ::_exit(0);
        } catch (...) {
            opened.Give();
            ::_exit(1);
        }
    }
    connection = OpenLibrary(path);
    EXPECT_EQ(RowTextsOf(*connection, "Select Name from Titel"), Texts{"early"});
    Replace();
    replaced.Give();
    opened.Await();
    connection.reset();
    closed.Give();
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(TitlesOf(path), Texts{"of the other"});
}

} // namespace
} // namespace quavernet::test
