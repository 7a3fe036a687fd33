#include "adapters/sqlite/PageMemory.h"

#include <string>

#include <sqlite3.h>

namespace quavernet::sqlite {

void PageMemory::Attach(sqlite3* database) {
    m_database = database;
    m_kilobytes = 0;
    KeepFew();
}

void PageMemory::Keep(int kilobytes) {
    if (m_kilobytes != kilobytes) {
        m_kilobytes = kilobytes;
        const std::string pragma = "pragma cache_size = -" + std::to_string(kilobytes);
        sqlite3_exec(m_database, pragma.c_str(), nullptr, nullptr, nullptr);
    }
}

} // namespace quavernet::sqlite
