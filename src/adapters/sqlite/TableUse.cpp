#include "adapters/sqlite/TableUse.h"

#include <algorithm>

#include <sqlite3.h>

#include "adapters/sqlite/SqliteError.h"

namespace quavernet::sqlite {

namespace {

constexpr std::size_t LastBit = 63;

} // namespace

void TableUseNotes::Attach(sqlite3* database) {
    m_tables.clear();
    m_stale = false;
    Check(database, sqlite3_set_authorizer(database, &TableUseNotes::Note, this));
}

void TableUseNotes::Begin() {
    m_use = TableUse();
    m_watching = true;
}

TableUse TableUseNotes::End() {
    m_watching = false;
    return m_use;
}

// The engine asks whether the statement may do what it says; it always may.
int TableUseNotes::Note(void* notes, int action, const char* first, const char* second, const char*,
                        const char*) {
    auto& self = *static_cast<TableUseNotes*>(notes);
    switch (action) {
    case SQLITE_READ:
        self.m_use.reads |= self.BitOf(first);
        break;
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_DELETE:
        self.m_use.writes |= self.BitOf(first);
        break;
    case SQLITE_FUNCTION:
        self.m_use.callsFunctions = self.m_use.callsFunctions || std::string_view(second) != "count";
        break;
    default:
        return SQLITE_OK;
    }
    self.m_stale = self.m_stale || !self.m_watching;
    return SQLITE_OK;
}

TableSet TableUseNotes::BitOf(std::string_view table) {
    const auto found = std::find(m_tables.begin(), m_tables.end(), table);
    const auto place = static_cast<std::size_t>(found - m_tables.begin());
    if (found == m_tables.end() && place < LastBit) {
        m_tables.emplace_back(table);
    }
    return TableSet{1} << std::min(place, LastBit);
}

} // namespace quavernet::sqlite
