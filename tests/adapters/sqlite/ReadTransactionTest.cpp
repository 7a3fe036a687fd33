// Lookups that follow each other closely share one read; it is short, and no write begins inside of it.
#include "adapters/sqlite/ReadTransaction.h"

#include "adapters/sqlite/LibraryFile.h"
#include "support/TestLibrary.h"

#include <chrono>

#include <sqlite3.h>

namespace quavernet::test {
namespace {

using namespace std::chrono_literals;

/// A connection without a piece of ours but the one that is tested; the test's own is another program.
class ReadTransactionTest : public LibraryTest {
protected:
    ReadTransactionTest() { m_reads.Attach(m_library.handle.get()); }

    /// Titles, as a query sees them that is sent now.
    int Titles() {
        m_reads.Enter();
        const auto query = sqlite::Prepare(m_library.handle.get(), "select count(*) from Titel");
        EXPECT_EQ(sqlite3_step(query.handle.get()), SQLITE_ROW);
        return sqlite3_column_int(query.handle.get(), 0);
    }
    void OtherAddsATitle() {
        Execute("Insert into Titel (Name) values ('x')");
        Connection().Commit();
    }
    /// Whether nobody reads from the log, so that it can start again at its beginning.
    bool IsLogFree() {
        const auto third = sqlite::OpenLibraryFile(libraryPath);
        sqlite3_busy_timeout(third.handle.get(), 0);
        return sqlite3_wal_checkpoint_v2(third.handle.get(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr,
                                         nullptr) == SQLITE_OK;
    }

    sqlite::ReadTransaction::Clock::time_point m_now = sqlite::ReadTransaction::Clock::time_point() + 1h;
    sqlite::OpenedLibrary m_library = sqlite::OpenLibraryFile(libraryPath);
    sqlite::ReadTransaction m_reads{1ms, [this] { return m_now; }};
};

TEST_F(ReadTransactionTest, QueriesThatFollowEachOtherCloselySeeOneStateUntilItsTimeIsOver) {
    EXPECT_EQ(Titles(), 0);
    m_now += 999us;
    EXPECT_EQ(Titles(), 0); // The transaction begins.
    OtherAddsATitle();
    EXPECT_EQ(Titles(), 0);
    m_now += 999us;
    EXPECT_EQ(Titles(), 0);
    m_now += 1us;
    EXPECT_EQ(Titles(), 1);
    OtherAddsATitle();
    EXPECT_EQ(Titles(), 1);
}

TEST_F(ReadTransactionTest, QueriesThatComeFurtherApartHoldNothing) {
    for (int titles = 0; titles < 5; ++titles) {
        EXPECT_EQ(Titles(), titles);
        OtherAddsATitle();
        EXPECT_TRUE(IsLogFree());
        m_now += 1ms;
    }
}

TEST_F(ReadTransactionTest, WhatIsHeldIsLetGoOnDemandOrWhenItsTimeIsOver) {
    Titles();
    Titles();
    OtherAddsATitle();
    EXPECT_FALSE(IsLogFree());
    m_reads.EndIfDue();
    EXPECT_FALSE(IsLogFree());
    m_now += 1ms;
    m_reads.EndIfDue();
    EXPECT_TRUE(IsLogFree());
    Titles();
    Titles();
    OtherAddsATitle();
    EXPECT_FALSE(IsLogFree());
    m_reads.End();
    EXPECT_TRUE(IsLogFree());
    EXPECT_EQ(Titles(), 2);
}

/// The whole connection, which would hold a read for an hour; m_other is another program.
class HeldReadTest : public LibraryTest {
protected:
    HeldReadTest() {
        mainModule.Connection = CreateSqliteConnection(services.regional, 200ms, 1h);
        mainModule.Connection->Open(ConnectionStart + libraryPath);
        Titles();
        Titles();
        m_other->Execute("Insert into Titel (Name) values ('other')");
        m_other->Commit();
    }
    std::string Titles() { return Value("Select Count(*) from Titel"); }

    std::unique_ptr<ADODB::Connection> m_other = OpenLibrary(libraryPath);
};

TEST_F(HeldReadTest, InsideAWriteLockEveryCommitOfAnotherProgramIsSeen) {
    EXPECT_EQ(Titles(), "0");
    const ADODB::WriteLock writeLock(Connection());
    EXPECT_EQ(Titles(), "1");
}

TEST_F(HeldReadTest, AWriteDoesNotBeginFromTheHeldState) {
    EXPECT_EQ(Titles(), "0");
    EXPECT_NO_THROW(Execute("Insert into Titel (Name) values ('own')"));
    EXPECT_EQ(Titles(), "2");
}

TEST_F(HeldReadTest, NoReadIsHeldWhileTheProgramWaits) {
    EXPECT_EQ(Titles(), "0");
    Connection().Commit(); // As before every wait for the user.
    EXPECT_EQ(Titles(), "1");
}

TEST_F(HeldReadTest, AHeldReadStopsNoWriterAndIsNoTransactionOfOurs) {
    m_other->Query("Pragma busy_timeout = 0");
    EXPECT_EQ(Titles(), "0");
    EXPECT_NO_THROW(m_other->Execute("Insert into Titel (Name) values ('second')"));
    EXPECT_NO_THROW(m_other->Commit());
    EXPECT_EQ(Titles(), "0");
}

} // namespace
} // namespace quavernet::test
