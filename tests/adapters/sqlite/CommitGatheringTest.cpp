#include "adapters/sqlite/CommitGathering.h"

#include "adapters/sqlite/LibraryFile.h"
#include "adapters/sqlite/SqliteError.h"
#include "platform/RuntimeError.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include <sys/wait.h>
#include <unistd.h>

#include <sqlite3.h>

namespace quavernet::test {
namespace {

class CommitGatheringTest : public LibraryTest {
protected:
    void Insert(const std::string& name) { Execute("Insert into Titel (Name) values ('" + name + "')"); }
    Texts SeenByAnother() {
        const auto another = OpenLibrary(libraryPath);
        return RowTextsOf(*another, "Select Name from Titel Order By Title_id");
    }
};

TEST_F(CommitGatheringTest, AStatementIsInForceAtOnceOnItsConnection) {
    Insert("one");
    EXPECT_EQ(Value("Select Title_id from Titel where Name = 'one'"), "1");
    EXPECT_EQ(Value("Select Max(Title_id) from Titel"), "1");
}

TEST_F(CommitGatheringTest, AnotherConnectionSeesTheWritesAfterTheCommit) {
    Insert("one");
    EXPECT_EQ(SeenByAnother(), Texts{});
    Connection().Commit();
    EXPECT_EQ(SeenByAnother(), Texts{"one"});
    EXPECT_NO_THROW(Connection().Commit());
}

TEST_F(CommitGatheringTest, TheStatementAfterTheLimitBringsTheEarlierOnesToTheFile) {
    const auto library = sqlite::OpenLibraryFile(libraryPath);
    sqlite3* const database = library.handle.get();
    sqlite::CommitGathering patient(std::chrono::hours(1)), eager(std::chrono::seconds(0));
    patient.BeforeWrite(database);
    sqlite::RunInternal(database, "Insert into Titel (Name) values ('one')");
    patient.CommitIfDue(database);
    EXPECT_EQ(SeenByAnother(), Texts{});
    eager.CommitIfDue(database);
    EXPECT_EQ(SeenByAnother(), Texts{"one"});
}

TEST_F(CommitGatheringTest, EveryStatementOfAConnectionLooksWhetherACommitIsDue) {
    mainModule.Connection = CreateConnection(services.regional, std::chrono::milliseconds(0));
    Connection().Open(ConnectionStart + libraryPath);
    Insert("one");
    EXPECT_EQ(SeenByAnother(), Texts{});
    Insert("two");
    EXPECT_EQ(SeenByAnother(), Texts{"one"});
    Rows("Select Name from Titel");
    EXPECT_EQ(SeenByAnother(), (Texts{"one", "two"}));
}

TEST_F(CommitGatheringTest, TheLimitRunsFromTheFirstWriteAndNotFromTheLast) {
    const auto library = sqlite::OpenLibraryFile(libraryPath);
    sqlite3* const database = library.handle.get();
    sqlite::CommitGathering::Clock::time_point now;
    sqlite::CommitGathering commits(std::chrono::milliseconds(200), [&now] { return now; });
    const auto writeAt = [&](int milliseconds) {
        now = sqlite::CommitGathering::Clock::time_point(std::chrono::milliseconds(milliseconds));
        commits.CommitIfDue(database);
        commits.BeforeWrite(database);
        sqlite::RunInternal(database, "Insert into Titel (Name) values ('x')");
        commits.AfterWrite(database, SQLITE_DONE);
        return SeenByAnother().size();
    };
    EXPECT_EQ(writeAt(1000), 0u);
    EXPECT_EQ(writeAt(1100), 0u);
    EXPECT_EQ(writeAt(1199), 0u);
    EXPECT_EQ(writeAt(1200), 3u);
    EXPECT_EQ(writeAt(1300), 3u);
    EXPECT_EQ(writeAt(1400), 5u);
}

TEST_F(CommitGatheringTest, BetweenFilesACommitIsDueByTheClockOrAfterASlowFile) {
    const auto library = sqlite::OpenLibraryFile(libraryPath);
    sqlite3* const database = library.handle.get();
    sqlite::CommitGathering::Clock::time_point now;
    sqlite::CommitGathering commits(std::chrono::milliseconds(200), [&now] { return now; });
    const auto fileAt = [&](int milliseconds) {
        now = sqlite::CommitGathering::Clock::time_point(std::chrono::milliseconds(milliseconds));
        commits.CommitBetweenFiles(database);
    };
    const auto storeAt = [&](int milliseconds) {
        now = sqlite::CommitGathering::Clock::time_point(std::chrono::milliseconds(milliseconds));
        commits.BeforeWrite(database);
        sqlite::RunInternal(database, "Insert into Titel (Name) values ('x')");
        commits.AfterWrite(database, SQLITE_DONE);
    };
    const auto committed = [&] { return SeenByAnother().size(); };
    fileAt(1000);
    storeAt(1001);
    for (int milliseconds = 1030; milliseconds <= 1200; milliseconds += 17) {
        fileAt(milliseconds);
    }
    EXPECT_EQ(committed(), 0u) << "many quick ones share a commit";
    fileAt(1201);
    EXPECT_EQ(committed(), 1u) << "and its time comes without a statement";
    fileAt(1210);
    storeAt(1259);
    fileAt(1259);
    EXPECT_EQ(committed(), 1u);
    fileAt(1260);
    storeAt(1310); // Fifty milliseconds on.
    fileAt(1310);
    EXPECT_EQ(committed(), 3u) << "the next one may be as slow";
}

TEST_F(CommitGatheringTest, BetweenFilesAConnectionCommitsOnlyOutsideOfAnUndisturbed) {
    mainModule.Connection = CreateConnection(services.regional, std::chrono::milliseconds(0));
    EXPECT_NO_THROW(Connection().CommitIfDue()) << "not open yet";
    Connection().Open(ConnectionStart + libraryPath);
    Connection().CommitIfDue();
    {
        const ADODB::WriteLock writeLock(Connection());
        Insert("one");
        Connection().CommitIfDue();
        EXPECT_EQ(SeenByAnother(), Texts{});
    }
    Connection().CommitIfDue();
    EXPECT_EQ(SeenByAnother(), Texts{"one"});
}

TEST_F(CommitGatheringTest, AFailingCommitSaysWhatIsLostAndTheNextWritesAreKept) {
    const auto library = sqlite::OpenLibraryFile(libraryPath);
    sqlite3* const database = library.handle.get();
    sqlite::RunInternal(database, "pragma foreign_keys = on; create table Child (Title_id integer references "
                                  "Titel (Title_id) deferrable initially deferred)");
    sqlite::CommitGathering commits{std::chrono::hours(1)};
    const auto write = [&](const char* statement) {
        commits.BeforeWrite(database);
        sqlite::RunInternal(database, statement);
        commits.AfterWrite(database, SQLITE_DONE);
    };
    const auto failure = [&]() -> std::string {
        try {
            commits.Commit(database);
        } catch (const RuntimeError& error) {
            return error.Description();
        }
        return "none";
    };
    write("Insert into Titel (Name) values ('lost')");
    write("Insert into Child values (99)"); // The transaction stays open when its commit fails.
    EXPECT_EQ(failure(), "FOREIGN KEY constraint failed (2 earlier changes were undone)");
    EXPECT_EQ(SeenByAnother(), Texts{});
    sqlite3_commit_hook(
        database, [](void*) { return 1; }, nullptr);
    write("Insert into Titel (Name) values ('lost too')"); // The engine itself takes the transaction back.
    EXPECT_EQ(failure(), "constraint failed (1 earlier change was undone)");
    sqlite3_commit_hook(database, nullptr, nullptr);
    write("Insert into Titel (Name) values ('kept')");
    EXPECT_EQ(failure(), "none");
    EXPECT_EQ(SeenByAnother(), Texts{"kept"});
}

TEST_F(CommitGatheringTest, ClosingCommits) {
    Insert("one");
    mainModule.Connection.reset();
    EXPECT_EQ(SeenByAnother(), Texts{"one"});
}

TEST_F(CommitGatheringTest, AReadOpensNoTransactionThatBlocksAnother) {
    Rows("Select Name from Titel");
    const auto another = OpenLibrary(libraryPath);
    another->Execute("Insert into Titel (Name) values ('other')");
    another->Commit();
    EXPECT_EQ(Rows("Select Name from Titel"), Texts{"other"});
}

TEST_F(CommitGatheringTest, AFullDiskSaysThatEarlierStatementsWentToo) {
    Insert("kept");
    mainModule.Connection.reset();
    {
        const auto library = sqlite::OpenLibraryFile(libraryPath);
        sqlite3* const database = library.handle.get();
        sqlite::CommitGathering patient(std::chrono::hours(1));
        const auto write = [&](const std::string& statement) {
            patient.BeforeWrite(database);
            const int code = sqlite3_exec(database, statement.c_str(), nullptr, nullptr, nullptr);
            patient.AfterWrite(database, code == SQLITE_OK ? SQLITE_DONE : code);
        };
        sqlite::RunInternal(database, "Pragma max_page_count = 1"); // No more than it has.
        write("Insert into Titel (Name) values ('gathered')");
        try {
            write("Insert into Titel (Name) values (zeroblob(1000000))");
            FAIL() << "the row found room";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), SQLITE_FULL);
            EXPECT_EQ(error.Description(), "database or disk is full (1 earlier change was undone)");
        }
        sqlite::RunInternal(database, "Pragma max_page_count = 1000000");
        write("Insert into Titel (Name) values ('after')");
        patient.Commit(database);
    }
    EXPECT_EQ(SeenByAnother(), (Texts{"kept", "after"}));
}

TEST_F(CommitGatheringTest, AFailingStatementKeepsTheGatheredOnes) {
    Insert("one");
    EXPECT_THROW(Execute("Insert into Titel (Title_id, Name) values (1, 'again')"), RuntimeError);
    Insert("two");
    Connection().Commit();
    EXPECT_EQ(SeenByAnother(), (Texts{"one", "two"}));
}

TEST_F(CommitGatheringTest, ALockedLibraryFailsAndTheGatheredWritesOfTheOtherStay) {
    Insert("one");
    const auto another = OpenLibrary(libraryPath);
    another->Query("Pragma busy_timeout = 0");
    try {
        another->Execute("Insert into Titel (Name) values ('other')");
        FAIL() << "two writers at once";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 5);
        EXPECT_EQ(error.Description(), "database is locked");
    }
    Connection().Commit();
    another->Execute("Insert into Titel (Name) values ('other')");
    another->Commit();
    EXPECT_EQ(Rows("Select Name from Titel"), (Texts{"one", "other"}));
}

// Runs in a child that ends without closing anything.
[[noreturn]] void KeepSomeAndDie(const std::string& path) {
    try {
        const auto connection = OpenLibrary(path);
        for (int i = 1; i <= 1000; ++i) {
            connection->Execute("Insert into Titel (Name) values ('kept " + std::to_string(i) + "')");
        }
        connection->Commit();
        connection->Execute("Insert into Titel (Name) values ('gathered')");
        ::_exit(0);
    } catch (...) {
        ::_exit(1);
    }
}

TEST(CommitGatheringKillTest, AKilledRunLosesAtMostTheGatheredStatements) {
    const TemporaryFolder folder;
    const std::string path = folder / "Quavernet.db";
    CopyTemplate(path);
    const pid_t child = ::fork();
    if (child == 0) {
        KeepSomeAndDie(path);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    ASSERT_GT(std::filesystem::file_size(path + "-wal"), 0u);
    const auto connection = OpenLibrary(path);
    EXPECT_EQ(RowTextsOf(*connection, "Select Count(Title_id), Max(Name) from Titel"),
              Texts{"1000|kept 999"});
    EXPECT_EQ(RowTextsOf(*connection, "Pragma integrity_check"), Texts{"ok"});
}

} // namespace
} // namespace quavernet::test
