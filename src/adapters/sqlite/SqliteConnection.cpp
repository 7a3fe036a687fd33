#include "adapters/sqlite/SqliteConnection.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <sqlite3.h>

#include "adapters/sqlite/BackupCopies.h"
#include "adapters/sqlite/CommitGathering.h"
#include "adapters/sqlite/DateColumns.h"
#include "adapters/sqlite/LibraryFile.h"
#include "adapters/sqlite/LibraryPlace.h"
#include "adapters/sqlite/LookupCache.h"
#include "adapters/sqlite/ReadTransaction.h"
#include "adapters/sqlite/RowOrder.h"
#include "adapters/sqlite/SqliteError.h"
#include "adapters/sqlite/StatementCache.h"
#include "adapters/sqlite/StatementText.h"
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

/// Resets a statement when its run ends, however it ends.
class Run {
public:
    explicit Run(sqlite3_stmt* statement) : m_statement(statement) {}
    ~Run() { sqlite3_reset(m_statement); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

private:
    sqlite3_stmt* m_statement;
};

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
        m_reads.Attach(opened.handle.get());
        m_cache.Attach(opened.handle.get());
        m_library = std::move(opened.handle);
        m_place.Attach(m_path);
        m_commits.Attach(m_place);
    }

    void Execute(std::string_view statement) override {
        BeforeStatement();
        PreparedStatement& prepared = Bind(statement);
        sqlite3_stmt* const handle = prepared.handle.get();
        const bool writes = sqlite3_stmt_readonly(handle) == 0;
        if (writes) {
            BeginWriting();
            m_lookups.Forget(prepared.tables.writes);
        }
        const Run run(handle);
        int code = sqlite3_step(handle);
        while (code == SQLITE_ROW) {
            code = sqlite3_step(handle);
        }
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
        if (!IsWriting()) {
            m_reads.Enter();
        }
        const auto ordered = TakeOrderClause(statement);
        if (!ordered || IsDateColumn(ordered->name)) { // Shown dates don't sort; the stored ones do.
            return ReadRows(statement);
        }
        ADODB::RowBlock rows = ReadRows(ordered->unordered);
        rows.Arrange(RowOrder(rows, ordered->column, ordered->descending));
        return rows;
    }

    void Commit() override {
        m_reads.End();
        if (m_library) {
            m_commits.Commit(m_library.get());
        }
    }

    void CommitIfDue() override {
        m_reads.EndIfDue();
        if (m_held == 0 && m_library) {
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

    void LockWrites() override {
        if (m_held == 0) {
            m_commits.CommitIfDue(Library());
            BeginWriting();
        }
        ++m_held;
    }
    void UnlockWrites() noexcept override { --m_held; }

private:
    // Inside a WriteLock the transaction opens again, even for one that only reads, if the program has
    // committed in the middle because it waited for its user.
    void BeforeStatement() {
        if (m_held > 0) {
            BeginWriting();
        } else {
            m_commits.CommitIfDue(Library());
        }
    }

    // A state that is held might be an old one, from which no transaction can go on.
    void BeginWriting() {
        if (!IsWriting()) {
            m_reads.End();
            m_lookups.Clear(); // Until the transaction has begun, others may write.
        }
        m_commits.BeforeWrite(Library());
    }

    sqlite3* Library() const {
        if (!m_library) {
            throw RuntimeError(SQLITE_MISUSE, "The library is not open.");
        }
        return m_library.get();
    }

    /// A transaction of ours is open: nobody else can write.
    bool IsWriting() const { return sqlite3_get_autocommit(m_library.get()) == 0; }

    /// What a lookup has read holds until we write to its tables ourselves. Outside of a transaction others
    /// may have written.
    bool MayRemember() const { return IsWriting() && m_cache.KnowsTables(); }

    bool IsDateColumn(std::string_view name) const {
        return std::any_of(m_dateColumns.begin(), m_dateColumns.end(), [&](const std::string& column) {
            return sqlite3_strnicmp(column.c_str(), name.data(), static_cast<int>(name.size())) == 0 &&
                   column.size() == name.size();
        });
    }

    // The prepared form of a statement with its literals bound.
    PreparedStatement& Bind(std::string_view statement) {
        m_text.Scan(statement, m_dateColumns);
        PreparedStatement& prepared = Find(statement);
        sqlite3_stmt* const handle = prepared.handle.get();
        const std::vector<Literal>& literals = m_text.Literals();
        if (sqlite3_bind_parameter_count(handle) != static_cast<int>(literals.size())) {
            throw RuntimeError(SQLITE_ERROR, "No value given for one or more required parameters.");
        }
        for (std::size_t i = 0; i < literals.size(); ++i) {
            Check(m_library.get(), BindOne(handle, static_cast<int>(i) + 1, literals[i]));
        }
        return prepared;
    }

    ADODB::RowBlock ReadRows(std::string_view statement) {
        PreparedStatement& prepared = Bind(statement);
        sqlite3_stmt* const handle = prepared.handle.get();
        if (sqlite3_stmt_readonly(handle) == 0) {
            throw RuntimeError(SQLITE_ERROR, "A recordset can't be opened on a statement that writes.");
        }
        const Run run(handle);
        ADODB::RowBlock rows(prepared.dateColumns.size());
        int code = sqlite3_step(handle);
        for (; code == SQLITE_ROW; code = sqlite3_step(handle)) {
            for (std::size_t column = 0; column < prepared.dateColumns.size(); ++column) {
                AddCell(rows, handle, static_cast<int>(column), prepared.dateColumns[column]);
            }
        }
        if (code != SQLITE_DONE) {
            ThrowError(Library(), code);
        }
        if (!prepared.tables.callsFunctions && MayRemember()) {
            m_lookups.Keep(statement, rows, prepared.tables.reads);
        }
        return rows;
    }

    // A statement that fails without its literals is prepared with them: the engine's message then shows the
    // statement as it was sent, and forms that take no parameters work.
    PreparedStatement& Find(std::string_view statement) {
        try {
            return m_cache.Get(m_text.Sql());
        } catch (const RuntimeError&) {
            m_text.ScanKeepingLiterals(statement, m_dateColumns);
            return m_cache.Get(m_text.Sql());
        }
    }

    int BindOne(sqlite3_stmt* handle, int place, const Literal& literal) const {
        if (literal.kind == Literal::Kind::Integer) {
            return sqlite3_bind_int64(handle, place, literal.integer);
        }
        if (literal.kind == Literal::Kind::Real) {
            return sqlite3_bind_double(handle, place, literal.real);
        }
        const std::string_view text = m_text.Text(literal);
        if (literal.isDate) {
            const std::string date = StoredDate(text, m_regional);
            return sqlite3_bind_text(handle, place, date.data(), static_cast<int>(date.size()),
                                     SQLITE_TRANSIENT);
        }
        // m_text stays as it is until the next statement is bound, and that binds all its parameters anew.
        return sqlite3_bind_text(handle, place, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    }

    void AddCell(ADODB::RowBlock& rows, sqlite3_stmt* handle, int column, bool isDate) const {
        sqlite3_value* const value = sqlite3_column_value(handle, column);
        switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            rows.AddNull();
            return;
        case SQLITE_INTEGER:
            rows.AddInteger(sqlite3_value_int64(value));
            return;
        case SQLITE_FLOAT:
            rows.AddReal(sqlite3_value_double(value));
            return;
        default:
            break;
        }
        const auto* data = reinterpret_cast<const char*>(sqlite3_value_text(value));
        const std::string_view text(data, static_cast<std::size_t>(sqlite3_value_bytes(value)));
        if (isDate) {
            rows.AddText(ShownDate(text, m_regional));
        } else {
            rows.AddText(text);
        }
    }

    RegionalSettings m_regional;
    std::string m_path;
    LibraryPlace m_place;     // Before the library, which is closed first.
    DatabaseHandle m_library; // Before the cache: statements are finalized first.
    ReadTransaction m_reads;
    StatementCache m_cache;
    LookupCache m_lookups;
    StatementText m_text;
    CommitGathering m_commits;
    std::vector<std::string> m_dateColumns;
    bool m_backupDue = false;
    int m_held = 0; ///< WriteLock stretches that are open.
};

} // namespace

std::unique_ptr<ADODB::Connection>
CreateSqliteConnection(const RegionalSettings& regional, std::chrono::steady_clock::duration longestGathering,
                       std::chrono::steady_clock::duration longestRead) {
    return std::make_unique<SqliteConnection>(regional, longestGathering, longestRead);
}

} // namespace quavernet
