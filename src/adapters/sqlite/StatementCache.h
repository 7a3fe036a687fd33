// Prepared statements, kept by their text with the literals taken out: preparing costs several times what
// running a lookup does. Asked by the connection for every statement.
#pragma once

#include "adapters/sqlite/StatementText.h"
#include "adapters/sqlite/TableUse.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace quavernet::sqlite {

/// Frees a prepared statement of the engine.
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const;
};

/// What is known of a statement once the engine has compiled it.
struct PreparedStatement {
    std::unique_ptr<sqlite3_stmt, FinalizeStatement> handle;
    std::vector<bool> dateColumns; ///< For each column of the result: declared as a date.
    TableUse tables;               ///< Filled in by the cache.
};

/// Prepares the one statement that a text holds. Throws RuntimeError if it is none or more than one.
PreparedStatement Prepare(sqlite3* database, std::string_view sql);

/// Updates go through SkipUnchangedRows on their way in, queries through InKeyOrder.
class StatementCache {
public:
    /// Drops what is kept, and keeps the statements of this connection from now on.
    void Attach(sqlite3* database);

    /// The prepared form; valid until the next call. Throws RuntimeError if the engine can't prepare it.
    PreparedStatement& Get(const std::string& sql);

    /// Whether the tables that were noted for the statements still hold.
    bool KnowsTables() const { return !m_notes.IsStale(); }

private:
    static constexpr std::size_t maximumCount = 128;
    static constexpr std::size_t maximumLength = 4096; // Longer ones are lists of ids and don't come again.

    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    PreparedStatement PrepareInKeyOrder(const std::string& sql);
    PreparedStatement PrepareNoting(std::string_view sql);

    sqlite3* m_database = nullptr;
    TableUseNotes m_notes;
    std::unordered_map<std::string, PreparedStatement, Hash, std::equal_to<>> m_statements;
    PreparedStatement m_single; ///< The last one that was too long to keep.
};

} // namespace quavernet::sqlite
