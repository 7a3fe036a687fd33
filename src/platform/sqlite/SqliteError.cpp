#include "platform/sqlite/SqliteError.h"

#include <sqlite3.h>

#include "platform/RuntimeError.h"

namespace quavernet::sqlite {

void ThrowError(sqlite3* database, int code) {
    throw RuntimeError(code, database == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(database));
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
