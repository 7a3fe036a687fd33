#include "adapters/sqlite/LookupCache.h"

#include "adapters/sqlite/LibraryFile.h"
#include "adapters/sqlite/SqliteError.h"
#include "platform/RuntimeError.h"
#include "support/EngineStatements.h"
#include "support/KilledWriter.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include <random>

#include <sqlite3.h>

namespace quavernet::test {
namespace {

ADODB::RowBlock OneField(std::int64_t value) {
    ADODB::RowBlock rows(1);
    rows.AddInteger(value);
    return rows;
}

TEST(LookupCacheTest, AStatementIsKnownByItsWholeText) {
    sqlite::LookupCache cache;
    EXPECT_EQ(cache.Find("a"), nullptr);
    cache.Keep("a", OneField(7), 1);
    ASSERT_NE(cache.Find("a"), nullptr);
    EXPECT_EQ(cache.Find("a")->At(0, 0).Text(), "7");
    EXPECT_EQ(cache.Find("A"), nullptr);
    EXPECT_EQ(cache.Find("a "), nullptr);
}

TEST(LookupCacheTest, AWriteForgetsWhatRestsOnItsTablesAndNothingElse) {
    sqlite::LookupCache cache;
    cache.Keep("one", OneField(1), 0b001);
    cache.Keep("two", OneField(2), 0b010);
    cache.Keep("both", OneField(3), 0b011);
    cache.Forget(0);
    EXPECT_NE(cache.Find("one"), nullptr);
    cache.Forget(0b110);
    EXPECT_NE(cache.Find("one"), nullptr);
    EXPECT_EQ(cache.Find("two"), nullptr);
    EXPECT_EQ(cache.Find("both"), nullptr);
    cache.Keep("two", OneField(4), 0b010);
    ASSERT_NE(cache.Find("two"), nullptr);
    EXPECT_EQ(cache.Find("two")->At(0, 0).Text(), "4");
    cache.Clear();
    EXPECT_EQ(cache.Find("one"), nullptr);
    EXPECT_EQ(cache.Find("two"), nullptr);
}

TEST(LookupCacheTest, OnlySingleShortFieldsOfTablesAreKept) {
    sqlite::LookupCache cache;
    const auto keeps = [&](const std::string& statement, const ADODB::RowBlock& rows,
                           sqlite::TableSet tables) {
        cache.Keep(statement, rows, tables);
        return cache.Find(statement) != nullptr;
    };
    EXPECT_TRUE(keeps(std::string(1024, 'a'), OneField(1), 1));
    EXPECT_FALSE(keeps(std::string(1025, 'a'), OneField(1), 1));
    EXPECT_FALSE(keeps("no table", OneField(1), 0));
    EXPECT_FALSE(keeps("no row", ADODB::RowBlock(1), 1));
    ADODB::RowBlock twoRows = OneField(1);
    twoRows.AddInteger(2);
    EXPECT_FALSE(keeps("two rows", twoRows, 1));
    ADODB::RowBlock twoFields(2);
    twoFields.AddInteger(1);
    twoFields.AddInteger(2);
    EXPECT_FALSE(keeps("two fields", twoFields, 1));
    ADODB::RowBlock longText(1);
    longText.AddText(std::string(1025, 'x'));
    EXPECT_FALSE(keeps("long text", longText, 1));
}

TEST(LookupCacheTest, ItNeverGrowsBeyondItsSlots) {
    sqlite::LookupCache cache;
    for (int i = 0; i < 10000; ++i) {
        cache.Keep("statement " + std::to_string(i), OneField(i), 1);
    }
    int kept = 0;
    for (int i = 0; i < 10000; ++i) {
        const ADODB::RowBlock* rows = cache.Find("statement " + std::to_string(i));
        kept += rows != nullptr ? 1 : 0;
        if (rows != nullptr) {
            EXPECT_EQ(rows->At(0, 0).Integer(), i);
        }
    }
    EXPECT_GT(kept, 100);
    EXPECT_LE(kept, 256);
}

const std::string PerformerA = "Select Inter_id from Interpret where Interpret = 'A'";

/// A second connection to the library of the test: another running program, as far as the engine can tell.
class LookupsOfTwoProgramsTest : public LibraryTest {
protected:
    void OtherExecute(const std::string& statement) {
        m_other->Execute(statement);
        m_other->Commit();
    }

    /// Asked three times over: later answers may come from what is kept.
    std::string Asked(const std::string& statement) {
        const std::string first = Value(statement);
        EXPECT_EQ(Value(statement), first) << statement;
        EXPECT_EQ(Value(statement), first) << statement;
        return first;
    }

    /// By a third connection, which does not wait for the others. True if the log is empty after that.
    bool EmptyLog() {
        const auto library = sqlite::OpenLibraryFile(libraryPath);
        sqlite3_busy_timeout(library.handle.get(), 0);
        return sqlite3_wal_checkpoint_v2(library.handle.get(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr,
                                         nullptr) == SQLITE_OK &&
               std::filesystem::file_size(libraryPath + "-wal") == 0;
    }

    std::unique_ptr<ADODB::Connection> m_other = OpenLibrary(libraryPath);
};

TEST_F(LookupsOfTwoProgramsTest, EveryCommitOfAnotherProgramIsSeenByTheNextLookup) {
    EXPECT_EQ(Asked(PerformerA), "no row");
    OtherExecute("Insert into Interpret (Interpret) values ('A')");
    EXPECT_EQ(Asked(PerformerA), "1");
    OtherExecute("Update Interpret Set Inter_id = 5 where Interpret = 'A'");
    EXPECT_EQ(Asked(PerformerA), "5");
    OtherExecute("Delete from Interpret where Interpret = 'A'");
    EXPECT_EQ(Asked(PerformerA), "no row");
    OtherExecute("Insert into Interpret (Interpret) values ('a')");
    EXPECT_EQ(Asked(PerformerA), "1");
}

TEST_F(LookupsOfTwoProgramsTest, ALongRunOfCommitsAndLookupsNeverGivesAnOldAnswer) {
    Execute("Insert into Interpret (Interpret) values ('A')");
    Connection().Commit();
    for (int i = 2; i < 400; ++i) {
        OtherExecute("Update Interpret Set Inter_id = " + std::to_string(i) + " where Interpret = 'A'");
        ASSERT_EQ(Asked(PerformerA), std::to_string(i));
    }
}

TEST_F(LookupsOfTwoProgramsTest, CommitsAreSeenAcrossCheckpointsThatBeginTheLogAnew) {
    Execute("Insert into Interpret (Interpret) values ('A')");
    Connection().Commit();
    for (int i = 2; i < 60; ++i) {
        EXPECT_EQ(Asked(PerformerA), std::to_string(i - 1));
        EXPECT_TRUE(EmptyLog()) << "a read holds the log";
        EXPECT_EQ(Asked(PerformerA), std::to_string(i - 1));
        OtherExecute("Update Interpret Set Inter_id = " + std::to_string(i) + " where Interpret = 'A'");
    }
}

TEST_F(LookupsOfTwoProgramsTest, WritesOfAnotherProcessAreSeen) {
    EXPECT_EQ(Asked(PerformerA), "no row");
    m_other.reset();
    ASSERT_TRUE(WriteAndDie(libraryPath, "Insert into Interpret (Interpret) values ('A')"));
    EXPECT_EQ(Asked(PerformerA), "1");
}

TEST_F(LookupsOfTwoProgramsTest, OwnWritesAreSeenByTheNextLookup) {
    EXPECT_EQ(Asked(PerformerA), "no row");
    Execute("Insert into Interpret (Interpret) values ('A')");
    EXPECT_EQ(Asked(PerformerA), "1");
    Execute("Insert into Titel (Name) values ('A')"); // Another table.
    EXPECT_EQ(Asked(PerformerA), "1");
    Execute("Insert into Interpret (Interpret) values ('a')");
    EXPECT_EQ(Count(PerformerA), 2);
    Execute("Delete from Interpret where Inter_id = 1");
    EXPECT_EQ(Asked(PerformerA), "2");
    Execute("Update Interpret Set Interpret = 'B' where Inter_id = 2");
    EXPECT_EQ(Asked(PerformerA), "no row");
    Execute("Update Interpret Set Interpret = 'A' where Inter_id = 2");
    EXPECT_EQ(Asked(PerformerA), "2");
    Execute("Delete from Interpret");
    EXPECT_EQ(Asked(PerformerA), "no row");
}

TEST_F(LookupsOfTwoProgramsTest, AFailingWriteLeavesTheAnswersRight) {
    Execute("Insert into Interpret (Interpret) values ('A')");
    EXPECT_EQ(Asked(PerformerA), "1");
    EXPECT_THROW(Execute("Insert into Interpret (Inter_id, Interpret) values (1, 'again')"), RuntimeError);
    EXPECT_EQ(Asked(PerformerA), "1");
    EXPECT_THROW(Execute("Insert into Nowhere (Name) values ('x')"), RuntimeError);
    EXPECT_EQ(Asked(PerformerA), "1");
}

TEST_F(LookupsOfTwoProgramsTest, BetweenTwoGatheredRunsOfWritesTheOtherOnesAreSeen) {
    for (int i = 1; i < 40; ++i) {
        const std::string number = std::to_string(i);
        Execute("Insert into Titel (Name) values ('own " + number + "')");
        const std::string before = Asked(PerformerA);
        Connection().Commit();
        OtherExecute("Delete from Interpret");
        OtherExecute("Insert into Interpret (Inter_id, Interpret) values (" + number + ", 'A')");
        Execute("Insert into Titel (Name) values ('next " + number + "')"); // No lookup in between.
        EXPECT_EQ(Asked(PerformerA), number) << "after " << before;
        Connection().Commit();
    }
}

TEST_F(LookupsOfTwoProgramsTest, TriggersOfTheLibraryCountAsWrites) {
    {
        const auto library = sqlite::OpenLibraryFile(libraryPath);
        sqlite::RunInternal(
            library.handle.get(),
            "create trigger Both after insert on Titel begin insert into Interpret (Interpret) "
            "values (new.Name); delete from Interpret where Interpret = 'B'; end");
    }
    Execute("Insert into Interpret (Interpret) values ('B')");
    EXPECT_EQ(Asked("Select Inter_id from Interpret where Interpret = 'B'"), "1");
    Execute("Insert into Titel (Name) values ('A')");
    EXPECT_EQ(Asked("Select Inter_id from Interpret where Interpret = 'B'"), "no row");
    EXPECT_EQ(Asked(PerformerA), "2");
}

// Statements that were prepared before the change rest on another table since.
TEST_F(LookupsOfTwoProgramsTest, ATableThatAnotherProgramHasTurnedIntoAViewIsFollowed) {
    const std::string drive = "Select Drive_id from Drive where Drive = 'A'";
    Execute("Insert into Drive (Drive) values ('A')");
    EXPECT_EQ(Asked(drive), "1");
    Connection().Commit();
    {
        const auto library = sqlite::OpenLibraryFile(libraryPath);
        sqlite::RunInternal(
            library.handle.get(),
            "drop table Drive; create view Drive as select Inter_id as Drive_id, Interpret as "
            "Drive from Interpret; insert into Interpret values (7, 'A')");
    }
    Execute("Insert into Titel (Name) values ('A')"); // The transaction that this begins goes on below.
    EXPECT_EQ(Asked(drive), "7");
    Execute("Update Interpret Set Interpret = 'B' where Inter_id = 7");
    EXPECT_EQ(Asked(drive), "no row");
}

TEST_F(LookupsOfTwoProgramsTest, AResultThatDependsOnMoreThanTablesIsAskedAnew) {
    Execute("Insert into Interpret (Interpret) values ('A')");
    const std::string statement = "Select random() from Interpret where Interpret = 'A'";
    Value(statement);
    const std::string second = Value(statement);
    EXPECT_NE(Value(statement), second);
}

TEST_F(LookupsOfTwoProgramsTest, NoLookupHoldsTheLogOrStopsAWriter) {
    Execute("Insert into Interpret (Interpret) values ('A')");
    Connection().Commit();
    EXPECT_EQ(Asked(PerformerA), "1");
    m_other->Query("Pragma busy_timeout = 0");
    EXPECT_NO_THROW(OtherExecute("Insert into Titel (Name) values ('other')"));
    EXPECT_EQ(Asked(PerformerA), "1");
    EXPECT_TRUE(EmptyLog());
    EXPECT_EQ(Asked(PerformerA), "1");
    EXPECT_NO_THROW(Execute("Insert into Titel (Name) values ('own')"));
    EXPECT_THROW(m_other->Execute("Insert into Titel (Name) values ('late')"), RuntimeError);
    Connection().Commit();
    EXPECT_NO_THROW(OtherExecute("Insert into Titel (Name) values ('late')"));
    EXPECT_EQ(Rows("Select Name from Titel"), (Texts{"other", "own", "late"}));
}

TEST_F(LookupsOfTwoProgramsTest, InATransactionTheEngineAnswersALookupOnceUntilItsTableIsWrittenTo) {
    const EngineStatements statements;
    const auto connection = OpenLibrary(libraryPath);
    const std::string lookup = "Select Inter_id from Interpret where Interpret = ";
    const auto ask = [&] { EXPECT_EQ(RowTextsOf(*connection, lookup + "'A'"), Texts{"1"}); };
    connection->Execute("Insert into Interpret (Interpret) values ('A')");
    for (int i = 0; i < 3; ++i) {
        ask();
        connection->Execute("Insert into Titel (Name) values ('x')");
    }
    EXPECT_EQ(statements.CountOf(lookup), 1);
    connection->Execute("Update Interpret Set Interpret = 'a'");
    ask();
    ask();
    EXPECT_EQ(statements.CountOf(lookup), 2);
}

TEST_F(LookupsOfTwoProgramsTest, OutsideOfATransactionTheEngineIsAskedEachTime) {
    const EngineStatements statements;
    const auto connection = OpenLibrary(libraryPath);
    const std::string lookup = "Select Inter_id from Interpret where Interpret = ";
    const auto ask = [&] { EXPECT_EQ(RowTextsOf(*connection, lookup + "'A'"), Texts{"1"}); };
    connection->Execute("Insert into Interpret (Interpret) values ('A')");
    ask();
    connection->Commit();
    ask();
    ask();
    EXPECT_EQ(statements.CountOf(lookup), 3);
    connection->Execute(
        "Insert into Titel (Name) values ('x')"); // A transaction again: others may have written.
    ask();
    ask();
    EXPECT_EQ(statements.CountOf(lookup), 4);
}

// Both programs write and look up in an order of chance. The spelling of each control question is new, so
// that its answer is read; a third connection, opened for it, tells what is in the file.
TEST_F(LookupsOfTwoProgramsTest, WhateverTheOrderOfWritesAndCommitsTheAnswersAreThoseOfTheTables) {
    std::mt19937 chance(20261121);
    const auto upTo = [&](unsigned count) { return chance() % count; };
    const auto write = [&](ADODB::Connection& connection) {
        const std::string name(1, static_cast<char>('A' + upTo(4)));
        const std::string table = upTo(2) == 0 ? "Interpret" : "Drive";
        const std::string key = table == "Interpret" ? "Inter_id" : "Drive_id";
        const Texts statements{"Insert into " + table + " (" + table + ") values ('" + name + "')",
                               "Delete from " + table + " where " + table + " = '" + name + "'",
                               "Update " + table + " Set " + key + " = " + std::to_string(100 + upTo(900)) +
                                   " where " + table + " = '" + name + "' and (Select Count(" + key +
                                   ") from " + table + " where " + table + " = '" + name + "') = 1"};
        IgnoreFailure([&] { connection.Execute(statements[upTo(3)]); }); // A key may be taken.
    };
    bool writing = false;
    std::string blanks;
    for (int step = 0; step < 600; ++step) {
        switch (upTo(4)) {
        case 0:
            write(Connection());
            writing = true;
            break;
        case 1:
            Connection().Commit();
            writing = false;
            break;
        case 2:
            if (!writing) {
                write(*m_other);
                m_other->Commit();
            }
            break;
        default:
            break;
        }
        blanks += ' ';
        const auto fresh = writing ? nullptr : OpenLibrary(libraryPath);
        for (const char* name : {"A", "B", "C", "D"}) {
            for (const std::string table : {"Interpret", "Drive"}) {
                const std::string question = "Select " + table.substr(0, 5) +
                                             (table == "Drive" ? "_id from Drive" : "_id from Interpret") +
                                             " where " + table + " = '" + name + "'";
                const std::string expected = Value(question + blanks);
                ASSERT_EQ(Value(question), expected) << "step " << step << ": " << question;
                if (fresh) {
                    const Texts rows = RowTextsOf(*fresh, question);
                    ASSERT_EQ(expected, rows.empty() ? "no row" : rows.front()) << "step " << step;
                }
            }
        }
    }
}

} // namespace
} // namespace quavernet::test
