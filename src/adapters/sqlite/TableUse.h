// Which tables a statement reads and writes, told by the engine itself while it compiles the statement: views
// and triggers count with what is after them. Called by the cache of prepared statements.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace quavernet::sqlite {

/// One bit for each table. Tables after the 63rd share the last bit: then one stands for all of them.
using TableSet = std::uint64_t;

/// What one statement touches.
struct TableUse {
    TableSet reads = 0;
    TableSet writes = 0;
    bool callsFunctions = false; ///< Others than count(): its result may depend on more than the tables.
};

/// Hears from the engine what it compiles. Stays where it is while it is attached: the engine keeps its
/// address.
class TableUseNotes {
public:
    TableUseNotes() = default;
    TableUseNotes(const TableUseNotes&) = delete;
    TableUseNotes& operator=(const TableUseNotes&) = delete;

    /// From now on every compilation on this connection is watched.
    void Attach(sqlite3* database);

    /// Before a statement is compiled, and after that.
    void Begin();
    TableUse End();

    /// The engine has compiled a statement by itself, which it does when another program has changed the
    /// tables themselves: what was noted of the statements no longer holds. So rare that it stays so.
    bool IsStale() const { return m_stale; }

private:
    static int Note(void* notes, int action, const char* first, const char* second, const char* database,
                    const char* trigger);
    TableSet BitOf(std::string_view table);

    std::vector<std::string> m_tables; ///< By the number of their bit.
    TableUse m_use;
    bool m_watching = false;
    bool m_stale = false;
};

} // namespace quavernet::sqlite
