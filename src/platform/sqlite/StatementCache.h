// Prepared statements, kept by their text with the literals taken out: preparing costs several times what
// running a lookup does.
#pragma once

#include "platform/sqlite/StatementText.h"

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

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const;
};

struct PreparedStatement {
    std::unique_ptr<sqlite3_stmt, FinalizeStatement> handle;
    std::vector<bool> dateColumns; ///< For each column of the result: declared as a date.
};

/// Prepares the one statement that a text holds. Throws RuntimeError if it is none or more than one.
PreparedStatement Prepare(sqlite3* database, std::string_view sql);

class StatementCache {
public:
    /// The prepared form; valid until the next call.
    PreparedStatement& Get(sqlite3* database, const std::string& sql);
    void Clear();

private:
    static constexpr std::size_t maximumCount = 128;
    static constexpr std::size_t maximumLength = 4096; // Longer ones are lists of ids and don't come again.

    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    std::unordered_map<std::string, PreparedStatement, Hash, std::equal_to<>> m_statements;
    PreparedStatement m_single; ///< The last one that was too long to keep.
};

} // namespace quavernet::sqlite
