#include "adapters/sqlite/StatementRun.h"

#include <string>
#include <string_view>
#include <vector>

#include <sqlite3.h>

#include "adapters/sqlite/DateColumns.h"
#include "adapters/sqlite/SqliteError.h"
#include "adapters/sqlite/StatementCache.h"
#include "adapters/sqlite/StatementText.h"
#include "platform/RuntimeError.h"

namespace quavernet::sqlite {

namespace {

int BindText(sqlite3_stmt* statement, int place, std::string_view text, sqlite3_destructor_type lifetime) {
    return sqlite3_bind_text(statement, place, text.data(), static_cast<int>(text.size()), lifetime);
}

int BindLiteral(sqlite3_stmt* statement, int place, const StatementText& text, const Literal& literal,
                const RegionalSettings& regional) {
    switch (literal.kind) {
    case Literal::Kind::Integer:
        return sqlite3_bind_int64(statement, place, literal.integer);
    case Literal::Kind::Real:
        return sqlite3_bind_double(statement, place, literal.real);
    case Literal::Kind::Text:
        break;
    }
    if (literal.isDate) {
        return BindText(statement, place, StoredDate(text.Text(literal), regional), SQLITE_TRANSIENT);
    }
    return BindText(statement, place, text.Text(literal), SQLITE_STATIC);
}

void AddCell(ADODB::RowBlock& rows, sqlite3_value* value, bool isDate, const RegionalSettings& regional) {
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
        rows.AddText(ShownDate(text, regional));
    } else {
        rows.AddText(text);
    }
}

} // namespace

void BindLiterals(sqlite3* database, sqlite3_stmt* statement, const StatementText& text,
                  const RegionalSettings& regional) {
    const std::vector<Literal>& literals = text.Literals();
    if (sqlite3_bind_parameter_count(statement) != static_cast<int>(literals.size())) {
        throw RuntimeError(SQLITE_ERROR, "No value given for one or more required parameters.");
    }
    for (std::size_t i = 0; i < literals.size(); ++i) {
        Check(database, BindLiteral(statement, static_cast<int>(i) + 1, text, literals[i], regional));
    }
}

StatementRun::~StatementRun() {
    sqlite3_reset(m_statement);
}

int StatementRun::ToEnd() {
    int code = sqlite3_step(m_statement);
    while (code == SQLITE_ROW) {
        code = sqlite3_step(m_statement);
    }
    return code;
}

ADODB::RowBlock ReadRows(sqlite3* database, const PreparedStatement& statement,
                         const RegionalSettings& regional, std::size_t most) {
    sqlite3_stmt* const handle = statement.handle.get();
    if (sqlite3_stmt_readonly(handle) == 0) {
        throw RuntimeError(SQLITE_ERROR, "A recordset can't be opened on a statement that writes.");
    }
    const StatementRun run(handle);
    const std::size_t columns = statement.dateColumns.size();
    ADODB::RowBlock rows(columns);
    int code = most == 0 ? SQLITE_DONE : sqlite3_step(handle);
    for (; code == SQLITE_ROW; code = rows.Rows() < most ? sqlite3_step(handle) : SQLITE_DONE) {
        for (std::size_t column = 0; column < columns; ++column) {
            AddCell(rows, sqlite3_column_value(handle, static_cast<int>(column)),
                    statement.dateColumns[column], regional);
        }
    }
    if (code != SQLITE_DONE) {
        ThrowError(database, code);
    }
    return rows;
}

} // namespace quavernet::sqlite
