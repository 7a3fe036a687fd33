// What the machine alone takes: bare system calls over the same files and bare SQLite over the same rows,
// without anything of the program. Every benchmark is shown beside one of these.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct sqlite3;

namespace quavernet::bench {

/// The list's statement without its order, from the table that all its keys lead away from.
inline constexpr const char* AllRows =
    "select F.Path, F.SizeInBytes, T.Name, I.Interpret, Q.Quality, F.File_id, F.Length, F.Name, E.Extension "
    "from Files F cross join Titel T cross join Interpret I cross join Quality Q cross join Extensions E "
    "where F.Title_id = T.Title_id and F.Inter_id = I.Inter_id and Q.Quality_id = F.Quality_Id "
    "and F.Extension_id = E.Extension_id";

/// A row of Files with the texts that it points to, as a scan stored it.
struct StoredRow {
    std::string title, interpret, album, drive, name, path, date;
    std::int64_t quality = 0, size = 0, length = 0, extension = 0, genre = 0;
};

/// A library file opened with SQLite and nothing else.
class BareLibrary {
public:
    explicit BareLibrary(const std::string& path);
    ~BareLibrary();
    BareLibrary(const BareLibrary&) = delete;
    BareLibrary& operator=(const BareLibrary&) = delete;

    /// Runs statements that give no rows.
    void Execute(const char* statements);

    /// Reads every column of every row of a statement as text; returns the number of rows.
    std::size_t ReadAll(const std::string& statement);

    /// Every column of every row of a statement as text.
    std::vector<std::vector<std::string>> Texts(const std::string& statement);

    /// The rows of Files, joined to their lookup tables.
    std::vector<StoredRow> Rows();

    /// Makes the twelve tables' part that a scan fills, with the same indexes and the engine's own collation.
    void CreateTables();

    /// Writes the rows and their lookup rows with prepared statements in one transaction.
    void WriteRows(const std::vector<StoredRow>& rows);

    /// Updates every row by its path, in one transaction.
    void UpdateRows(const std::vector<StoredRow>& rows);

    /// Looks every path up.
    std::size_t FindPaths(const std::vector<std::string>& paths);

    /// Looks the path of each row up once and its title twice: what a scan asks for each new file.
    std::size_t FindRows(const std::vector<StoredRow>& rows);

    /// The two tables of the category tree, with one category, beside those of CreateTables.
    void CreateTreeTables();

    /// Looks each path and the category up, and makes the file the category's next entry, all in one
    /// transaction.
    void AddEntries(const std::vector<std::string>& paths);

    sqlite3* Handle() { return m_database; }

private:
    sqlite3* m_database = nullptr;
};

/// Walks a folder with directory descriptors and takes the facts of every file.
std::vector<std::string> WalkFiles(const std::string& folder);

/// Opens every file and reads its first 4 KB and last 128 bytes; returns the number of bytes read.
std::uint64_t ReadHeadsAndTails(const std::vector<std::string>& paths);

/// Reads every file from its first byte to its last; returns the number of bytes read.
std::uint64_t ReadWhole(const std::vector<std::string>& paths);

} // namespace quavernet::bench
