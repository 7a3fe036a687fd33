#include "adapters/sqlite/CommitGathering.h"

#include <string>
#include <utility>

#include <sqlite3.h>

#include "adapters/sqlite/LibraryPlace.h"
#include "adapters/sqlite/SqliteError.h"
#include "adapters/sqlite/WriteTurn.h"

namespace quavernet::sqlite {

namespace {

constexpr std::chrono::milliseconds slowFile{50}; // A commit costs a small part of it.

std::string WithLost(const std::string& text, std::size_t lost) {
    const char* changes = lost == 1 ? " earlier change was undone)" : " earlier changes were undone)";
    return text + " (" + std::to_string(lost) + changes;
}

} // namespace

void CommitGathering::CheckPlace(sqlite3* database) {
    if (m_place == nullptr || !m_place->IsLost()) {
        return;
    }
    if (sqlite3_get_autocommit(database) == 0) {
        sqlite3_exec(database, "rollback", nullptr, nullptr, nullptr);
    }
    const std::size_t lost = std::exchange(m_gathered, 0);
    m_place->EmptyLog(database);
    const std::string text = m_place->Path() + ": the library was moved, replaced or deleted";
    throw LibraryError(LibraryFault::Moved, m_place->Path(), SQLITE_READONLY_DBMOVED,
                       lost > 0 ? WithLost(text, lost) : text);
}

void CommitGathering::BeforeWrite(sqlite3* database) {
    if (sqlite3_get_autocommit(database) != 0) {
        m_gathered = 0;
        BeginWriting(database);
        CheckPlace(database); // After the wait for others.
        m_firstWrite = m_now();
    }
}

void CommitGathering::AfterWrite(sqlite3* database, int code) {
    if (code == SQLITE_DONE) {
        ++m_gathered;
        return;
    }
    const bool undone = sqlite3_get_autocommit(database) != 0;
    const std::size_t lost = undone ? std::exchange(m_gathered, 0) : 0;
    const std::string text = sqlite3_errmsg(database);
    ThrowError(database, code, FaultOf(database, code), lost > 0 ? WithLost(text, lost) : text);
}

void CommitGathering::CommitIfDue(sqlite3* database) {
    if (sqlite3_get_autocommit(database) == 0 && m_now() - m_firstWrite >= m_maximumAge) {
        Commit(database);
    }
}

void CommitGathering::CommitBetweenFiles(sqlite3* database) {
    const Clock::time_point now = m_now();
    const bool isSlow = now - std::exchange(m_lastFile, now) >= slowFile;
    if (sqlite3_get_autocommit(database) == 0 && (isSlow || now - m_firstWrite >= m_maximumAge)) {
        Commit(database);
    }
}

void CommitGathering::Commit(sqlite3* database) {
    if (sqlite3_get_autocommit(database) != 0) {
        return;
    }
    CheckPlace(database);
    const int code = sqlite3_exec(database, "commit", nullptr, nullptr, nullptr);
    const std::size_t gathered = std::exchange(m_gathered, 0);
    if (code != SQLITE_OK) {
        const std::string text = WithLost(sqlite3_errmsg(database), gathered);
        const auto fault = FaultOf(database, code);
        if (sqlite3_get_autocommit(database) == 0) {
            sqlite3_exec(database, "rollback", nullptr, nullptr, nullptr);
        }
        ThrowError(database, code, fault, text);
    }
}

} // namespace quavernet::sqlite
