#include "platform/sqlite/LibraryFile.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <unistd.h>

#include <sqlite3.h>

#include "platform/RuntimeError.h"
#include "platform/sqlite/Collation.h"
#include "platform/sqlite/SqliteError.h"
#include "platform/sqlite/StatementCache.h"

namespace quavernet::sqlite {

namespace {

namespace fs = std::filesystem;

constexpr int busyTimeoutMilliseconds = 5000;
// Never created here; and one thread uses the connection, so that it needs no lock for every cell read.
constexpr int openFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;

[[noreturn]] void Refuse(int number, const std::string& path, const std::string& reason) {
    throw RuntimeError(number, path + ": " + reason);
}

bool HoldsData(const std::string& path) {
    std::error_code failed;
    const auto size = fs::file_size(path, failed);
    return !failed && size > 0;
}

// SQLite's own marker: the last connection to close moves the write-ahead log into the file and removes it.
// One that holds data is left by a run that was killed (or belongs to one that is still running).
bool WasClosedCleanly(const std::string& path) {
    return !HoldsData(path + "-wal") && !HoldsData(path + "-journal");
}

void CheckPlace(const std::string& path) {
    std::error_code failed;
    const fs::file_status status = fs::status(path, failed);
    if (status.type() == fs::file_type::not_found) {
        Refuse(ErrorNumber::FileNotFound, path, "the file does not exist");
    }
    if (status.type() != fs::file_type::regular) {
        Refuse(ErrorNumber::PathFileAccess, path, "not a plain file");
    }
    const std::string folder = fs::path(path).parent_path().string();
    if (::access(path.c_str(), R_OK | W_OK) != 0) {
        Refuse(ErrorNumber::PathFileAccess, path, "the file is read-only");
    }
    if (::access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) != 0) {
        Refuse(ErrorNumber::PathFileAccess, path, "the folder is read-only");
    }
}

// The first 100 bytes of an SQLite 3 file (sqlite.org/fileformat.html, section 1.3); numbers are big-endian.
class FileHeader {
public:
    explicit FileHeader(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        m_complete = static_cast<bool>(file.read(m_bytes.data(), m_bytes.size()));
    }

    bool IsSqlite() const {
        constexpr std::string_view magic("SQLite format 3\0", 16);
        return m_complete && std::string_view(m_bytes.data(), magic.size()) == magic;
    }
    std::uint64_t PageSize() const {
        const std::uint32_t size = Number(16, 2);
        return size == 1 ? 65536 : size;
    }
    std::uint64_t PageCount() const { return Number(28, 4); }
    std::uint32_t UserVersion() const { return Number(60, 4); }
    std::uint32_t ApplicationMark() const { return Number(68, 4); }

private:
    std::uint32_t Number(std::size_t offset, std::size_t size) const {
        std::uint32_t number = 0;
        for (std::size_t i = 0; i < size; ++i) {
            number = number << 8 | static_cast<unsigned char>(m_bytes[offset + i]);
        }
        return number;
    }

    std::array<char, 100> m_bytes{};
    bool m_complete = false;
};

void CheckHeader(const std::string& path, bool closedCleanly) {
    const FileHeader header(path);
    if (!header.IsSqlite() || header.ApplicationMark() != ApplicationId) {
        Refuse(SQLITE_NOTADB, path, "the file is not a library");
    }
    if (header.UserVersion() > SchemaVersion) {
        Refuse(SQLITE_NOTADB, path, "the library was made by a newer version of the program");
    }
    // With a log beside it, the file may be in the middle of taking that in.
    if (closedCleanly && fs::file_size(path) < header.PageCount() * header.PageSize()) {
        Refuse(SQLITE_CORRUPT, path, "the library is damaged: its end is missing");
    }
}

std::string FirstText(sqlite3* database, std::string_view sql) {
    const PreparedStatement query = Prepare(database, sql);
    const int code = sqlite3_step(query.handle.get());
    if (code != SQLITE_ROW) {
        ThrowError(database, code);
    }
    return reinterpret_cast<const char*>(sqlite3_column_text(query.handle.get(), 0));
}

void Configure(sqlite3* database) {
    const auto set = [&](int option, int value) {
        Check(database, sqlite3_db_config(database, option, value, nullptr));
    };
    set(SQLITE_DBCONFIG_DQS_DML, 0);
    set(SQLITE_DBCONFIG_DQS_DDL, 0);
    set(SQLITE_DBCONFIG_DEFENSIVE, 1);
    set(SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0);
    Check(database, sqlite3_busy_timeout(database, busyTimeoutMilliseconds));
    RegisterTextComparison(database);
}

} // namespace

void CloseDatabase::operator()(sqlite3* database) const {
    sqlite3_close_v2(database);
}

OpenedLibrary OpenLibraryFile(const std::string& path) {
    CheckPlace(path);
    OpenedLibrary library;
    library.closedCleanly = WasClosedCleanly(path);
    CheckHeader(path, library.closedCleanly);

    // Counting every allocation for statistics takes a lock each time; before the engine's first use it can
    // be told not to.
    static const int uncounted = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    static_cast<void>(uncounted);
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &opened, openFlags, nullptr);
    library.handle.reset(opened);
    Check(opened, code);
    Configure(opened);
    try {
        // Until the content is known to be sound, a close must not move the log of a killed run into the
        // file.
        Check(opened, sqlite3_db_config(opened, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE,
                                        library.closedCleanly ? 0 : 1, nullptr));
        if (sqlite3_db_readonly(opened, "main") != 0) {
            Refuse(ErrorNumber::PathFileAccess, path, "the file is read-only");
        }
        FirstText(opened, "select count(*) from sqlite_schema");
        if (!library.closedCleanly) {
            const std::string finding = FirstText(opened, "pragma quick_check(1)");
            if (finding != "ok") {
                Refuse(SQLITE_CORRUPT, path, "the library is damaged: " + finding);
            }
        }
        if (FirstText(opened, "pragma journal_mode = wal") != "wal") {
            Refuse(SQLITE_CANTOPEN, path, "the file system can't hold the library's log");
        }
        RunInternal(opened, "pragma synchronous = normal; pragma temp_store = memory; "
                            "pragma cache_size = -16384;");
        Check(opened, sqlite3_db_config(opened, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr));
    } catch (const RuntimeError& error) {
        if (error.Description().rfind(path, 0) == 0) {
            throw;
        }
        Refuse(error.Number(), path, error.Description());
    }
    return library;
}

} // namespace quavernet::sqlite
