#include "adapters/sqlite/ReadSnapshot.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include <sqlite3.h>

namespace quavernet::sqlite {

namespace {

constexpr std::uint32_t KnownFormat = 3007000; // The header's first word.
constexpr int RegionSize = 32768; // The index is mapped in pieces; the first begins with the header.

// Null if the library has no index of a log.
const volatile std::uint32_t* MapIndex(sqlite3* database) {
    sqlite3_file* file = nullptr;
    volatile void* region = nullptr;
    if (sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
        file->pMethods == nullptr || file->pMethods->iVersion < 2 ||
        file->pMethods->xShmMap(file, 0, RegionSize, 0, &region) != SQLITE_OK) {
        return nullptr;
    }
    return static_cast<const volatile std::uint32_t*>(region);
}

} // namespace

void ReadSnapshot::Attach(sqlite3* database) {
    // It reads the header and no table: the watch over statements that read one (TableUse) passes it over.
    PreparedStatement holder = Prepare(database, "pragma schema_version");
    m_holder = std::move(holder);
    m_database = database;
    m_held = false;
}

bool ReadSnapshot::Renew() {
    if (m_held && IsCurrent()) {
        return false;
    }
    const Clock::time_point now = Clock::now();
    if (m_held) {
        m_pauseEnds = now + m_pause;
    }
    Release();
    m_held = now >= m_pauseEnds && Take();
    return true;
}

void ReadSnapshot::Release() {
    if (m_held) {
        sqlite3_reset(m_holder.handle.get());
        m_held = false;
    }
}

// A commit between the header and the first row makes the state newer than the header: the next call then
// finds another header, and takes the same state again.
bool ReadSnapshot::Take() {
    m_index = MapIndex(m_database);
    if (m_index == nullptr) {
        return false;
    }
    std::copy_n(m_index, m_header.size(), m_header.begin());
    if (m_header.front() == KnownFormat && sqlite3_step(m_holder.handle.get()) == SQLITE_ROW) {
        return true;
    }
    sqlite3_reset(m_holder.handle.get());
    return false;
}

bool ReadSnapshot::IsCurrent() const {
    std::atomic_thread_fence(std::memory_order_seq_cst); // What others have committed is seen.
    return std::equal(m_header.begin(), m_header.end(), m_index);
}

} // namespace quavernet::sqlite
