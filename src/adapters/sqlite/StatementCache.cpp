#include "adapters/sqlite/StatementCache.h"

#include <sqlite3.h>

#include "adapters/sqlite/DateType.h"
#include "adapters/sqlite/KeyOrder.h"
#include "adapters/sqlite/SkipUnchangedRows.h"
#include "adapters/sqlite/SqliteError.h"
#include "platform/RuntimeError.h"

namespace quavernet::sqlite {

void FinalizeStatement::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

PreparedStatement Prepare(sqlite3* database, std::string_view sql) {
    sqlite3_stmt* handle = nullptr;
    const char* tail = nullptr;
    Check(database, sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()),
                                       SQLITE_PREPARE_PERSISTENT, &handle, &tail));
    PreparedStatement prepared;
    prepared.handle.reset(handle);
    const std::string_view rest = sql.substr(static_cast<std::size_t>(tail - sql.data()));
    if (handle == nullptr || rest.find_first_not_of(" ;") != std::string_view::npos) {
        throw RuntimeError(SQLITE_ERROR, handle == nullptr ? "Syntax error: no statement"
                                                           : "Syntax error: characters behind the statement");
    }
    const int columns = sqlite3_column_count(handle);
    prepared.dateColumns.reserve(static_cast<std::size_t>(columns));
    for (int column = 0; column < columns; ++column) {
        prepared.dateColumns.push_back(IsDateType(sqlite3_column_decltype(handle, column)));
    }
    return prepared;
}

void StatementCache::Attach(sqlite3* database) {
    m_statements.clear();
    m_single = PreparedStatement();
    m_database = database;
    m_notes.Attach(database);
}

PreparedStatement& StatementCache::Get(const std::string& sql) {
    if (const auto found = m_statements.find(sql); found != m_statements.end()) {
        return found->second;
    }
    if (sql.size() > maximumLength) {
        m_single = PrepareInKeyOrder(sql);
        return m_single;
    }
    PreparedStatement prepared = PrepareInKeyOrder(SkipUnchangedRows(sql));
    if (m_statements.size() >= maximumCount) {
        m_statements.clear();
    }
    return m_statements.emplace(sql, std::move(prepared)).first->second;
}

// A text that fails with the order in it is prepared without: the engine's message is then about what was
// sent.
PreparedStatement StatementCache::PrepareInKeyOrder(const std::string& sql) {
    try {
        return PrepareNoting(InKeyOrder(sql));
    } catch (const RuntimeError&) {
        return PrepareNoting(sql);
    }
}

PreparedStatement StatementCache::PrepareNoting(std::string_view sql) {
    m_notes.Begin();
    try {
        PreparedStatement prepared = Prepare(m_database, sql);
        prepared.tables = m_notes.End();
        return prepared;
    } catch (const RuntimeError&) {
        m_notes.End();
        throw;
    }
}

} // namespace quavernet::sqlite
