#include "adapters/sqlite/LookupCache.h"

#include <bit>
#include <functional>

namespace quavernet::sqlite {

std::size_t LookupCache::PlaceOf(std::string_view statement) {
    return std::hash<std::string_view>()(statement) % slotCount;
}

const ADODB::RowBlock* LookupCache::Find(std::string_view statement) const {
    if (m_slots.empty() || statement.size() > maximumLength) {
        return nullptr;
    }
    const Slot& slot = m_slots[PlaceOf(statement)];
    if (slot.time == 0 || slot.statement != statement) {
        return nullptr;
    }
    for (TableSet rest = slot.tables; rest != 0; rest &= rest - 1) {
        if (m_written[static_cast<std::size_t>(std::countr_zero(rest))] > slot.time) {
            return nullptr;
        }
    }
    return &slot.rows;
}

void LookupCache::Keep(std::string_view statement, const ADODB::RowBlock& rows, TableSet tables) {
    if (tables == 0 || rows.Rows() != 1 || rows.Columns() != 1 || statement.size() > maximumLength ||
        rows.At(0, 0).View().size() > maximumLength) {
        return;
    }
    m_slots.resize(slotCount);
    Slot& slot = m_slots[PlaceOf(statement)];
    slot.statement = statement;
    slot.rows = rows;
    slot.tables = tables;
    slot.time = ++m_time;
}

void LookupCache::Forget(TableSet written) {
    if (written == 0) {
        return;
    }
    ++m_time;
    for (TableSet rest = written; rest != 0; rest &= rest - 1) {
        m_written[static_cast<std::size_t>(std::countr_zero(rest))] = m_time;
    }
}

void LookupCache::Clear() {
    Forget(~TableSet{0});
}

} // namespace quavernet::sqlite
