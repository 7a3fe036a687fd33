#include "adapters/sqlite/SqliteError.h"

#include "platform/WriteError.h"

#include <sqlite3.h>

namespace quavernet::sqlite {

namespace {

constexpr int PrimaryCode = 0xFF; // The upper bytes of a code tell more of the same.

LibraryFault FaultOfSystem(int error) {
    if (IsDiskFull(error)) {
        return LibraryFault::DiskFull;
    }
    return IsWriteRefused(error) ? LibraryFault::FolderReadOnly : LibraryFault::Device;
}

} // namespace

std::optional<LibraryFault> FaultOf(sqlite3* database, int code) {
    switch (code & PrimaryCode) {
    case SQLITE_FULL:
        return LibraryFault::DiskFull;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return LibraryFault::Damaged;
    case SQLITE_BUSY:
    case SQLITE_PROTOCOL:
        return LibraryFault::Locked;
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return LibraryFault::FileReadOnly;
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
        return FaultOfSystem(database == nullptr ? 0 : sqlite3_system_errno(database));
    default:
        return std::nullopt;
    }
}

void ThrowError(sqlite3* database, int code) {
    ThrowError(database, code, FaultOf(database, code),
               database == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(database));
}

void ThrowError(sqlite3* database, int code, std::optional<LibraryFault> fault, const std::string& text) {
    if (!fault) {
        throw RuntimeError(code, text);
    }
    const char* path = database == nullptr ? nullptr : sqlite3_db_filename(database, "main");
    throw LibraryError(*fault, path == nullptr ? "" : path, code, text);
}

void Check(sqlite3* database, int code) {
    if (code != SQLITE_OK) {
        ThrowError(database, code);
    }
}

void RunInternal(sqlite3* database, const char* statements) {
    Check(database, sqlite3_exec(database, statements, nullptr, nullptr, nullptr));
}

} // namespace quavernet::sqlite
