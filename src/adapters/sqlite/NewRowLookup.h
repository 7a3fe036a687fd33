// A lookup that found nothing, then the insert of the very value that it looked for, then the lookup again:
// so every new title and performer comes into the library. The last answer is the new row's key, which the
// engine has given out; it need not look for it. Used by the connection inside a transaction of its own.
#pragma once

#include "adapters/sqlite/StatementCache.h"
#include "adapters/sqlite/StatementText.h"

#include <map>
#include <string>
#include <string_view>

struct sqlite3;

namespace quavernet::sqlite {

class NewRowLookup {
public:
    /// Another library is open, or others may have written.
    void Attach(sqlite3* database);
    void Forget() { m_statement.clear(); }

    /// A lookup has just found no row. `text` is its scanned form, `reads` its tables.
    void NoteMiss(std::string_view statement, const StatementText& text, TableSet reads);

    /// Whether this statement, about to run, gives the lookup its answer if it adds one row and changes no
    /// other. Asked before each write; the miss is over with it.
    bool IsInsertOfMiss(const StatementText& text, StatementCache& cache);

    /// Of the lookup that the last answer of IsInsertOfMiss was about.
    const std::string& Statement() const { return m_answered; }
    TableSet Reads() const { return m_reads; }

private:
    bool Belong(const std::string& insert, Literal::Kind kind, StatementCache& cache) const;
    bool KeepsAsItIs(const std::string& table, const std::string& column, Literal::Kind kind) const;

    sqlite3* m_database = nullptr;
    std::string m_statement; ///< The lookup that found nothing; empty: none did.
    std::string m_answered;
    std::string m_sql; ///< Its prepared text.
    Literal m_literal;
    std::string m_value; ///< Of a text.
    TableSet m_reads = 0;
    std::map<std::string, bool, std::less<>> m_pairs; ///< By kind of value and both prepared texts.
};

} // namespace quavernet::sqlite
