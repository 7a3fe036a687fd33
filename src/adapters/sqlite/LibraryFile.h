// Opening a library file: everything that can be wrong with it is found before anything is written.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct sqlite3;

namespace quavernet::sqlite {

/// Marks in the header of every library file, set by the schema.
inline constexpr std::uint32_t ApplicationId = 0x51764E74; // "QvNt"
inline constexpr std::uint32_t SchemaVersion = 1;

/// Closes a database once its last statement has gone.
struct CloseDatabase {
    void operator()(sqlite3* database) const;
};
using DatabaseHandle = std::unique_ptr<sqlite3, CloseDatabase>;

/// What OpenLibraryFile gives back.
struct OpenedLibrary {
    DatabaseHandle handle;
    bool closedCleanly = true; ///< The last run closed the file.
};

/// Opens an existing library for reading and writing, with the text comparison registered and the write-ahead
/// log on. Throws LibraryError with the reason if the file is missing, a folder, no library, cut, damaged,
/// made by a newer version, locked or not writable; the file is then as it was.
OpenedLibrary OpenLibraryFile(const std::string& path);

/// Looks through every page of an open library. What is wrong with it, or an empty text.
std::string FirstFinding(sqlite3* database);

} // namespace quavernet::sqlite
