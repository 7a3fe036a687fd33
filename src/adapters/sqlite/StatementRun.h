// Runs one prepared statement with the literals that were lifted out of its text: binds them, steps, and
// reads the rows. Used by the connection for every statement of the program.
#pragma once

#include "platform/ADODB.h"
#include "platform/RegionalSettings.h"

#include <cstddef>

struct sqlite3;
struct sqlite3_stmt;

namespace quavernet::sqlite {

struct PreparedStatement;
class StatementText;

/// Gives the lifted literals of a statement back to it as its parameters, in their order; dates in the stored
/// form. `text` must live and stay as it is until the statement has run. Throws RuntimeError for a text that
/// is no date where one is wanted, and for a parameter that no literal belongs to.
void BindLiterals(sqlite3* database, sqlite3_stmt* statement, const StatementText& text,
                  const RegionalSettings& regional);

/// The run of a bound statement. The engine tells what a failure was until the run is over.
class StatementRun {
public:
    explicit StatementRun(sqlite3_stmt* statement) : m_statement(statement) {}
    ~StatementRun();
    StatementRun(const StatementRun&) = delete;
    StatementRun& operator=(const StatementRun&) = delete;

    /// To its end; rows that it gives are dropped. The engine's last code: SQLITE_DONE, or an error.
    int ToEnd();

private:
    sqlite3_stmt* m_statement;
};

inline constexpr std::size_t EveryRow = static_cast<std::size_t>(-1);

/// Runs a bound statement and reads its rows, up to so many, date columns in the regional form. Throws
/// RuntimeError if it fails, or if it is one that writes.
ADODB::RowBlock ReadRows(sqlite3* database, const PreparedStatement& statement,
                         const RegionalSettings& regional, std::size_t most = EveryRow);

} // namespace quavernet::sqlite
