#include "adapters/sqlite/ReadTransaction.h"

#include <sqlite3.h>

namespace quavernet::sqlite {

// A statement that is on a row keeps its transaction open, and "begin" is left to those that write. This
// one reads the file's header and no table: the watch over statements that read one (TableUse) passes it
// over.
void ReadTransaction::Attach(sqlite3* database) {
    m_holder = Prepare(database, "pragma schema_version");
    m_open = false;
}

void ReadTransaction::Enter() {
    const Clock::time_point now = m_now();
    const bool follows = now - std::exchange(m_lastQuery, now) < m_longest;
    if (m_open && !IsOver(now)) {
        return;
    }
    End();
    if (follows) {
        m_begun = now;
        m_open = sqlite3_step(m_holder.handle.get()) == SQLITE_ROW;
        if (!m_open) {
            sqlite3_reset(m_holder.handle.get()); // The query itself will tell what is wrong.
        }
    }
}

void ReadTransaction::End() {
    if (std::exchange(m_open, false)) {
        sqlite3_reset(m_holder.handle.get());
    }
}

void ReadTransaction::EndIfDue() {
    if (m_open && IsOver(m_now())) {
        End();
    }
}

} // namespace quavernet::sqlite
