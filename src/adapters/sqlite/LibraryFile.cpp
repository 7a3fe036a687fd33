#include "adapters/sqlite/LibraryFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <unistd.h>

#include <sqlite3.h>

#include "adapters/sqlite/Collation.h"
#include "adapters/sqlite/SqliteError.h"
#include "adapters/sqlite/StatementCache.h"
#include "adapters/sqlite/WriteTurn.h"
#include "platform/LibraryError.h"

namespace quavernet::sqlite {

namespace {

namespace fs = std::filesystem;

// Never created here; and one thread uses the connection, so that it needs no lock for every cell read.
constexpr int openFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;

[[noreturn]] void Refuse(LibraryFault fault, int number, const std::string& path, const std::string& reason) {
    throw LibraryError(fault, path, number, path + ": " + reason);
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
        Refuse(LibraryFault::Missing, ErrorNumber::FileNotFound, path, "the file does not exist");
    }
    if (status.type() != fs::file_type::regular) {
        const bool isFolder = status.type() == fs::file_type::directory;
        Refuse(isFolder ? LibraryFault::Folder : LibraryFault::NoPlainFile, ErrorNumber::PathFileAccess, path,
               "not a plain file");
    }
    const std::string folder = fs::path(path).parent_path().string();
    if (::access(path.c_str(), R_OK | W_OK) != 0) {
        Refuse(LibraryFault::FileReadOnly, ErrorNumber::PathFileAccess, path, "the file is read-only");
    }
    if (::access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) != 0) {
        Refuse(LibraryFault::FolderReadOnly, ErrorNumber::PathFileAccess, path, "the folder is read-only");
    }
}

// The first 100 bytes of an SQLite 3 file (sqlite.org/fileformat.html, section 1.3); numbers are big-endian.
class FileHeader {
public:
    explicit FileHeader(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        m_complete =
            static_cast<bool>(file.read(m_bytes.data(), static_cast<std::streamsize>(m_bytes.size())));
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

// Of the log's header (sqlite.org/fileformat.html, section 4.1): its mark, and the sums over its first 24
// bytes in the byte order that the mark's last bit tells.
bool IsLogHeader(const std::array<unsigned char, 32>& bytes) {
    const auto number = [&](std::size_t offset, bool bigEndian) {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            value = value << 8 | bytes[offset + (bigEndian ? i : 3 - i)];
        }
        return value;
    };
    const std::uint32_t mark = number(0, true);
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    for (std::size_t offset = 0; offset < 24; offset += 8) {
        first += number(offset, (mark & 1) != 0) + second;
        second += number(offset + 4, (mark & 1) != 0) + first;
    }
    return (mark & ~std::uint32_t{1}) == 0x377F0682 && first == number(24, true) &&
           second == number(28, true);
}

// The engine takes a log that begins with anything else for an empty one and writes over it. A power failure
// may leave zeros or less than a header; what else is there is damage, and the rows after it are not to
// be given up without a word.
void CheckLog(const std::string& path) {
    std::array<unsigned char, 32> bytes{};
    std::ifstream file(path + "-wal", std::ios::binary);
    if (!file.read(reinterpret_cast<char*>(bytes.data()), bytes.size()) ||
        std::all_of(bytes.begin(), bytes.end(), [](unsigned char byte) { return byte == 0; })) {
        return;
    }
    if (!IsLogHeader(bytes)) {
        Refuse(LibraryFault::Damaged, SQLITE_CORRUPT, path, "the library is damaged: its log is no log");
    }
}

void CheckHeader(const std::string& path, bool closedCleanly) {
    const FileHeader header(path);
    if (!header.IsSqlite() || header.ApplicationMark() != ApplicationId || header.UserVersion() == 0) {
        Refuse(LibraryFault::NoLibrary, SQLITE_NOTADB, path, "the file is not a library");
    }
    if (header.UserVersion() > SchemaVersion) {
        Refuse(LibraryFault::Newer, SQLITE_NOTADB, path,
               "the library was made by a newer version of the program");
    }
    // With a log beside it, the file may be in the middle of taking that in.
    if (closedCleanly && fs::file_size(path) < header.PageCount() * header.PageSize()) {
        Refuse(LibraryFault::Damaged, SQLITE_CORRUPT, path, "the library is damaged: its end is missing");
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
    WaitForOthers(database);
    RegisterTextComparison(database);
}

// All twelve, so that a file with our marks and other content is seen before a statement meets it.
constexpr std::string_view tablesOfALibrary =
    "select count(*) from sqlite_schema where type = 'table' and name in ('Files', 'Titel', 'Interpret', "
    "'Albums', 'Drive', 'Quality', 'Extensions', 'Genres', 'Categories', 'FileCategories', 'Covers', "
    "'Reminder')";

void CheckContent(sqlite3* database, const std::string& path, bool closedCleanly) {
    if (sqlite3_db_readonly(database, "main") != 0) {
        Refuse(LibraryFault::FileReadOnly, ErrorNumber::PathFileAccess, path, "the file is read-only");
    }
    if (FirstText(database, tablesOfALibrary) != "12") {
        Refuse(LibraryFault::NoLibrary, SQLITE_NOTADB, path, "the file is not a library");
    }
    if (!closedCleanly) {
        const std::string finding = FirstFinding(database);
        if (!finding.empty()) {
            Refuse(LibraryFault::Damaged, SQLITE_CORRUPT, path, "the library is damaged: " + finding);
        }
    }
}

void MakeReady(sqlite3* database, const std::string& path, bool closedCleanly) {
    // Until the content is known to be sound, a close must not move the log of a killed run into the file.
    Check(database,
          sqlite3_db_config(database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, closedCleanly ? 0 : 1, nullptr));
    CheckContent(database, path, closedCleanly);
    if (FirstText(database, "pragma journal_mode = wal") != "wal") {
        Refuse(LibraryFault::Other, SQLITE_CANTOPEN, path, "the file system can't hold the library's log");
    }
    RunInternal(database, "pragma synchronous = normal; pragma temp_store = memory;");
    Check(database, sqlite3_db_config(database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr));
}

} // namespace

std::string FirstFinding(sqlite3* database) {
    const std::string finding = FirstText(database, "pragma quick_check(1)");
    return finding == "ok" ? std::string() : finding;
}

void CloseDatabase::operator()(sqlite3* database) const {
    sqlite3_close_v2(database);
}

OpenedLibrary OpenLibraryFile(const std::string& path) {
    CheckPlace(path);
    OpenedLibrary library;
    library.closedCleanly = WasClosedCleanly(path);
    CheckHeader(path, library.closedCleanly);
    CheckLog(path);

    // Counting every allocation for statistics takes a lock each time; before the engine's first use it can
    // be told not to.
    static const int uncounted = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    static_cast<void>(uncounted);
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &opened, openFlags, nullptr);
    library.handle.reset(opened);
    try {
        Check(opened, code);
        Configure(opened);
        MakeReady(opened, path, library.closedCleanly);
    } catch (const LibraryError& error) {
        if (error.Description().starts_with(path)) {
            throw;
        }
        Refuse(error.Fault(), error.Number(), path, error.Description());
    } catch (const RuntimeError& error) {
        Refuse(LibraryFault::Other, error.Number(), path, error.Description());
    }
    return library;
}

} // namespace quavernet::sqlite
