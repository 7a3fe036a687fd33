#include "adapters/sqlite/SqliteConnection.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <sqlite3.h>

#include "adapters/sqlite/BackupCopies.h"
#include "adapters/sqlite/CommitGathering.h"
#include "adapters/sqlite/DateColumns.h"
#include "adapters/sqlite/DateType.h"
#include "adapters/sqlite/FirstRows.h"
#include "adapters/sqlite/LibraryFile.h"
#include "adapters/sqlite/LibraryPlace.h"
#include "adapters/sqlite/LibraryVersion.h"
#include "adapters/sqlite/LookupCache.h"
#include "adapters/sqlite/OrderClause.h"
#include "adapters/sqlite/PageMemory.h"
#include "adapters/sqlite/ReadTransaction.h"
#include "adapters/sqlite/RowOrder.h"
#include "adapters/sqlite/SqliteError.h"
#include "adapters/sqlite/StatementCache.h"
#include "adapters/sqlite/StatementRun.h"
#include "adapters/sqlite/StatementText.h"
#include "adapters/sqlite/TableAnswers.h"
#include "platform/RuntimeError.h"

namespace quavernet {

namespace {

using namespace sqlite;

std::string DataSource(std::string_view connectionString) {
    constexpr std::string_view key = "Data Source=";
    const std::size_t at = connectionString.find(key);
    if (at == std::string_view::npos || connectionString.find('\0') != std::string_view::npos) {
        throw RuntimeError(SQLITE_CANTOPEN, "The connection string names no data source.");
    }
    return std::string(connectionString.substr(at + key.size()));
}

class SqliteConnection : public ADODB::Connection {
public:
    SqliteConnection(RegionalSettings regional, CommitGathering::Clock::duration longestGathering,
                     ReadTransaction::Clock::duration longestRead)
        : m_regional(std::move(regional)), m_reads(longestRead), m_commits(longestGathering) {}

    ~SqliteConnection() override {
        try {
            SqliteConnection::Commit();
        } catch (const RuntimeError&) {
            // Nobody is left to hear of it; the file keeps its last committed state.
        }
        if (m_library && m_place.IsLost()) {
            m_place.EmptyLog(m_library.get());
        }
    }

    void Open(std::string_view connectionString) override {
        m_path = DataSource(connectionString);
        OpenedLibrary opened = OpenLibraryFile(m_path);
        m_dateColumns = DateColumnNames(opened.handle.get());
        m_backupDue = opened.closedCleanly;
        m_lookups.Clear();
        m_ties.Clear();
        m_reads.Attach(opened.handle.get());
        m_cache.Attach(opened.handle.get());
        m_answers.Attach(opened.handle.get());
        m_pages.Attach(opened.handle.get());
        m_library = std::move(opened.handle);
        m_place.Attach(m_path);
        m_commits.Attach(m_place);
    }

    void Execute(std::string_view statement) override {
        BeforeStatement();
        PreparedStatement& prepared = Bind(statement);
        const bool writes = sqlite3_stmt_readonly(prepared.handle.get()) == 0;
        if (writes) {
            EnterTransaction();
            m_lookups.Forget(prepared.tables.writes);
        }
        StatementRun run(prepared.handle.get());
        const int code = run.ToEnd();
        if (writes) {
            m_commits.AfterWrite(Library(), code);
        } else if (code != SQLITE_DONE) {
            ThrowError(Library(), code);
        }
    }

    ADODB::RowBlock Query(std::string_view statement) override {
        BeforeStatement();
        if (const ADODB::RowBlock* known = MayRemember() ? m_lookups.Find(statement) : nullptr) {
            return *known;
        }
        if (!IsInTransaction()) {
            m_reads.Enter();
            if (const ADODB::RowBlock* known = m_answers.Find(statement)) {
                return *known;
            }
        }
        const auto ordered = TakeOrderClause(statement);
        // Dates don't sort in the form that is read here; the stored ones do.
        if (!ordered || IsDateColumn(ordered->name, m_dateColumns)) {
            return Read(statement);
        }
        if (ordered->ties && !IsInTransaction()) {
            m_pages.KeepFew(); // The list.
        }
        ADODB::RowBlock rows = Read(ordered->unordered);
        rows.Arrange(OrderOf(rows, *ordered));
        return rows;
    }

    ADODB::RowBlock QueryFirst(std::string_view statement, std::size_t most) override {
        BeforeStatement();
        if (!IsInTransaction()) {
            m_reads.Enter();
        }
        const std::string first = FirstRows(statement, most);
        return ReadRows(Library(), Bind(first), m_regional, most);
    }

    void Commit() override {
        m_reads.End();
        if (m_library) {
            m_commits.Commit(m_library.get());
        }
    }

    void CommitIfDue() override {
        m_reads.EndIfDue();
        if (m_writeLocks == 0 && m_library) {
            m_commits.CommitBetweenFiles(m_library.get());
        }
    }

    void Backup() override {
        Commit();
        if (std::exchange(m_backupDue, false)) {
            m_commits.CheckPlace(Library()); // No copy of one library among those of another.
            MakeBackup(Library(), m_path);
        }
    }

    std::int64_t ChangesOfOthers() override { return Query("Pragma data_version").At(0, 0).Integer(); }

    void LockWrites() override {
        if (m_writeLocks == 0) {
            m_commits.CommitIfDue(Library());
            EnterTransaction();
        }
        ++m_writeLocks;
    }
    void UnlockWrites() noexcept override { --m_writeLocks; }

private:
    // Inside a WriteLock the transaction opens again, even for one that only reads, if the program has
    // committed in the middle because it waited for its user.
    void BeforeStatement() {
        if (m_writeLocks > 0) {
            EnterTransaction();
        } else {
            m_commits.CommitIfDue(Library());
        }
    }

    void EnterTransaction() {
        if (!IsInTransaction()) {
            m_reads.End();
            m_lookups.Clear(); // Until the transaction has begun, others may write.
            m_pages.KeepMany();
        }
        m_commits.BeforeWrite(Library());
    }

    /// A transaction of ours is open: nobody else can write.
    bool IsInTransaction() const { return sqlite3_get_autocommit(m_library.get()) == 0; }

    /// What a lookup has read holds until we write to its tables ourselves. Outside of a transaction others
    /// may have written.
    bool MayRemember() const { return IsInTransaction() && m_cache.KnowsTables(); }

    sqlite3* Library() const {
        if (!m_library) {
            throw RuntimeError(SQLITE_MISUSE, "The library is not open.");
        }
        return m_library.get();
    }

    /// The prepared form of a statement with its literals bound.
    PreparedStatement& Bind(std::string_view statement) {
        m_text.Scan(statement, m_dateColumns);
        PreparedStatement& prepared = Prepared(statement);
        BindLiterals(Library(), prepared.handle.get(), m_text, m_regional);
        return prepared;
    }

    // A statement that fails without its literals is prepared with them: the engine's message then shows the
    // statement as it was sent, and forms that take no parameters work.
    PreparedStatement& Prepared(std::string_view statement) {
        try {
            return m_cache.Get(m_text.Sql());
        } catch (const RuntimeError&) {
            m_text.ScanKeepingLiterals(statement, m_dateColumns);
            return m_cache.Get(m_text.Sql());
        }
    }

    std::vector<std::uint32_t> OrderOf(const ADODB::RowBlock& rows, const OrderedStatement& ordered) {
        if (!ordered.ties) {
            return RowOrder(rows, ordered.column, ordered.descending);
        }
        std::vector<std::uint32_t> sequence = m_ties.Of(rows, *ordered.ties, VersionOf(Library()));
        if (ordered.column == ordered.ties->performer && !ordered.descending) {
            return sequence; // That order already.
        }
        return RowOrder(rows, ordered.column, ordered.descending, sequence);
    }

    ADODB::RowBlock Read(std::string_view statement) {
        const PreparedStatement& prepared = Bind(statement);
        ADODB::RowBlock rows = ReadRows(Library(), prepared, m_regional);
        if (prepared.tables.callsFunctions) {
            return rows;
        }
        if (MayRemember()) {
            m_lookups.Keep(statement, rows, prepared.tables.reads);
        } else if (!IsInTransaction() && prepared.tables.reads != 0 && m_text.Literals().empty()) {
            m_answers.Keep(statement, rows);
        }
        return rows;
    }

    RegionalSettings m_regional;
    std::string m_path;
    LibraryPlace m_place;     // Before the library, which is closed first.
    DatabaseHandle m_library; // Before the cache: statements are finalized first.
    PageMemory m_pages;
    ReadTransaction m_reads;
    StatementCache m_cache;
    LookupCache m_lookups;
    TableAnswers m_answers;
    TieOrder m_ties;
    StatementText m_text;
    CommitGathering m_commits;
    std::vector<std::string> m_dateColumns;
    bool m_backupDue = false;
    int m_writeLocks = 0; ///< WriteLocks that live.
};

} // namespace

std::unique_ptr<ADODB::Connection>
CreateSqliteConnection(const RegionalSettings& regional, std::chrono::steady_clock::duration longestGathering,
                       std::chrono::steady_clock::duration longestRead) {
    return std::make_unique<SqliteConnection>(regional, longestGathering, longestRead);
}

} // namespace quavernet
