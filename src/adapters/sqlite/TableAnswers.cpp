#include "adapters/sqlite/TableAnswers.h"

#include "adapters/sqlite/StatementRun.h"

#include <sqlite3.h>

namespace quavernet::sqlite {

void TableAnswers::Attach(sqlite3* database) {
    m_rows.clear();
    m_database = database;
    m_look = Prepare(database, "Pragma data_version");
}

const ADODB::RowBlock* TableAnswers::Find(std::string_view statement) {
    const auto found = m_rows.find(statement);
    if (found == m_rows.end()) {
        return nullptr;
    }
    StatementRun look(m_look.handle.get());
    if (look.ToEnd() != SQLITE_DONE) {
        return nullptr; // The query itself will tell what is wrong.
    }
    return VersionOf(m_database) == m_version ? &found->second : nullptr;
}

void TableAnswers::Keep(std::string_view statement, const ADODB::RowBlock& rows) {
    if (!IsShort(rows)) {
        return;
    }
    const LibraryVersion version = VersionOf(m_database);
    if (version != m_version || m_rows.size() >= mostStatements) {
        m_rows.clear();
        m_version = version;
    }
    m_rows.insert_or_assign(std::string(statement), rows);
}

bool TableAnswers::IsShort(const ADODB::RowBlock& rows) {
    if (rows.Columns() > mostColumns || rows.Rows() > mostRows) {
        return false;
    }
    std::size_t bytes = 0;
    for (std::size_t row = 0; row < rows.Rows(); ++row) {
        for (std::size_t column = 0; column < rows.Columns(); ++column) {
            bytes += rows.At(row, column).View().size();
        }
    }
    return bytes <= mostBytes;
}

} // namespace quavernet::sqlite
