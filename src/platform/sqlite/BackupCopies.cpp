#include "platform/sqlite/BackupCopies.h"

#include <filesystem>

#include <sqlite3.h>

#include "platform/RuntimeError.h"
#include "platform/sqlite/LibraryFile.h"
#include "platform/sqlite/SqliteError.h"

namespace quavernet::sqlite {

namespace {

namespace fs = std::filesystem;

void CopyContent(sqlite3* source, const std::string& target) {
    sqlite3* opened = nullptr;
    const int code =
        sqlite3_open_v2(target.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    const DatabaseHandle handle(opened);
    Check(opened, code);
    sqlite3_backup* const backup = sqlite3_backup_init(opened, "main", source, "main");
    if (backup == nullptr) {
        ThrowError(opened, sqlite3_errcode(opened));
    }
    const int copied = sqlite3_backup_step(backup, -1);
    const int finished = sqlite3_backup_finish(backup);
    if (copied != SQLITE_DONE || finished != SQLITE_OK) {
        const int failure = copied != SQLITE_DONE ? copied : finished;
        throw RuntimeError(failure, target + ": " + sqlite3_errstr(failure));
    }
}

} // namespace

std::string BackupPath(const std::string& library, int number) {
    fs::path path(library);
    const std::string extension = path.extension().string();
    path.replace_extension(".backup" + std::to_string(number) + extension);
    return path.string();
}

void MakeBackup(sqlite3* database, const std::string& library) {
    const std::string fresh = BackupPath(library, 0);
    std::error_code failed;
    fs::remove(fresh, failed); // Left over by a run that ended while it copied.
    try {
        CopyContent(database, fresh);
    } catch (const RuntimeError&) {
        fs::remove(fresh, failed);
        throw;
    }
    for (int number = BackupCount - 1; number >= 0; --number) {
        const std::string from = BackupPath(library, number);
        if (!fs::exists(from, failed)) {
            continue;
        }
        fs::rename(from, BackupPath(library, number + 1), failed);
        if (failed) {
            throw RuntimeError(ErrorNumber::PathFileAccess, from + ": " + failed.message());
        }
    }
}

} // namespace quavernet::sqlite
