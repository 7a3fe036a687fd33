#include "Floors.h"

#include "BareStatement.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace quavernet::bench {

namespace {

/// Keys of one lookup table, by text; a new text is inserted at once.
class Lookup {
public:
    Lookup(sqlite3* database, std::string_view insert) : m_database(database), m_insert(database, insert) {}

    template <typename Value> std::int64_t KeyOf(const Value& value, const std::string& text) {
        const auto [entry, isNew] = m_keys.try_emplace(text, 0);
        if (isNew) {
            m_insert.Bind(1, value);
            m_insert.Run();
            entry->second = sqlite3_last_insert_rowid(m_database);
        }
        return entry->second;
    }

private:
    sqlite3* m_database;
    Statement m_insert;
    std::unordered_map<std::string, std::int64_t> m_keys;
};

void WalkInto(const std::string& folder, std::vector<std::string>& files) {
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
    if (!entries) {
        throw std::runtime_error("can't open " + folder);
    }
    std::vector<std::string> folders;
    while (const dirent* entry = readdir(entries.get())) {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..") {
            continue;
        }
        std::string path = folder + "/" + std::string(name);
        if (entry->d_type == DT_DIR) {
            folders.push_back(std::move(path));
            continue;
        }
        struct statx facts;
        if (statx(dirfd(entries.get()), entry->d_name, 0, STATX_SIZE | STATX_MTIME | STATX_BTIME, &facts) ==
            0) {
            files.push_back(std::move(path));
        }
    }
    for (const std::string& sub : folders) {
        WalkInto(sub, files);
    }
}

} // namespace

BareLibrary::BareLibrary(const std::string& path) {
    if (sqlite3_open(path.c_str(), &m_database) != SQLITE_OK) {
        throw std::runtime_error("can't open " + path);
    }
    Execute("pragma journal_mode = WAL; pragma synchronous = NORMAL");
}

BareLibrary::~BareLibrary() {
    sqlite3_close(m_database);
}

void BareLibrary::Execute(const char* statements) {
    if (sqlite3_exec(m_database, statements, nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(m_database));
    }
}

std::size_t BareLibrary::ReadAll(const std::string& statement) {
    Statement query(m_database, statement);
    const int columns = sqlite3_column_count(query.Handle());
    std::size_t rows = 0;
    std::string block;
    while (query.Step()) {
        for (int column = 0; column < columns; ++column) {
            block.append(reinterpret_cast<const char*>(sqlite3_column_text(query.Handle(), column)),
                         static_cast<std::size_t>(sqlite3_column_bytes(query.Handle(), column)));
        }
        ++rows;
    }
    return rows;
}

std::vector<std::vector<std::string>> BareLibrary::Texts(const std::string& statement) {
    Statement query(m_database, statement);
    std::vector<std::vector<std::string>> rows;
    while (query.Step()) {
        std::vector<std::string> row;
        for (int column = 0; column < sqlite3_column_count(query.Handle()); ++column) {
            row.push_back(query.Text(column));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<StoredRow> BareLibrary::Rows() {
    Statement query(
        m_database,
        "select T.Name, I.Interpret, A.Name, D.Drive, F.Name, F.Path, F.DateLastModified, Q.Quality, "
        "F.SizeInBytes, F.Length, F.Extension_id, F.Genre_id from Files F, Titel T, Interpret I, Albums A, "
        "Drive D, Quality Q where T.Title_id = F.Title_id and I.Inter_id = F.Inter_id and "
        "A.Album_id = F.Album_id and D.Drive_id = F.Drive_id and Q.Quality_id = F.Quality_id");
    std::vector<StoredRow> rows;
    while (query.Step()) {
        rows.push_back({query.Text(0), query.Text(1), query.Text(2), query.Text(3), query.Text(4),
                        query.Text(5), query.Text(6), query.Integer(7), query.Integer(8), query.Integer(9),
                        query.Integer(10), query.Integer(11)});
    }
    return rows;
}

void BareLibrary::CreateTables() {
    Execute(
        "create table Titel (Title_id integer primary key, Name text);"
        "create table Interpret (Inter_id integer primary key, Interpret text);"
        "create table Albums (Album_id integer primary key, Name text);"
        "create table Drive (Drive_id integer primary key, Drive text);"
        "create table Quality (Quality_id integer primary key, Quality integer);"
        "create table Files (File_id integer primary key, Title_id integer, Inter_id integer, Name text, "
        "Path text, Sizeinbytes integer, DateLastModified text, Drive_id integer, Quality_id integer, "
        "Length integer, Extension_id integer, Genre_id integer, Album_id integer, Hits integer default 0);"
        "create index TitelName on Titel (Name); create index InterpretName on Interpret (Interpret);"
        "create index AlbumsName on Albums (Name); create index DriveName on Drive (Drive);"
        "create index QualityValue on Quality (Quality); create index FilesPath on Files (Path);"
        "create index FilesDrive on Files (Drive_id); create index FilesGenre on Files (Genre_id);"
        "create index FilesAlbum on Files (Album_id); create index FilesPerformer on Files (Inter_id);"
        "create index FilesTitle on Files (Title_id)");
}

void BareLibrary::WriteRows(const std::vector<StoredRow>& rows) {
    Execute("begin");
    Lookup titles(m_database, "insert into Titel (Name) values (?)");
    Lookup interprets(m_database, "insert into Interpret (Interpret) values (?)");
    Lookup albums(m_database, "insert into Albums (Name) values (?)");
    Lookup drives(m_database, "insert into Drive (Drive) values (?)");
    Lookup qualities(m_database, "insert into Quality (Quality) values (?)");
    Statement insert(m_database,
                     "insert into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, DateLastModified, "
                     "Drive_id, Quality_id, Length, Extension_id, Genre_id, Album_id) "
                     "values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    for (const StoredRow& row : rows) {
        insert.Bind(1, titles.KeyOf(std::string_view(row.title), row.title));
        insert.Bind(2, interprets.KeyOf(std::string_view(row.interpret), row.interpret));
        insert.Bind(3, row.name);
        insert.Bind(4, row.path);
        insert.Bind(5, row.size);
        insert.Bind(6, row.date);
        insert.Bind(7, drives.KeyOf(std::string_view(row.drive), row.drive));
        insert.Bind(8, qualities.KeyOf(row.quality, std::to_string(row.quality)));
        insert.Bind(9, row.length);
        insert.Bind(10, row.extension);
        insert.Bind(11, row.genre);
        insert.Bind(12, albums.KeyOf(std::string_view(row.album), row.album));
        insert.Run();
    }
    Execute("commit");
}

void BareLibrary::UpdateRows(const std::vector<StoredRow>& rows) {
    Execute("begin");
    Statement update(m_database,
                     "update Files set Name = ?, Path = ?, Sizeinbytes = ?, DateLastModified = ?, "
                     "Length = ?, Extension_id = ?, Genre_id = ? where Path = ?");
    for (const StoredRow& row : rows) {
        update.Bind(1, row.name);
        update.Bind(2, row.path);
        update.Bind(3, row.size);
        update.Bind(4, row.date);
        update.Bind(5, row.length);
        update.Bind(6, row.extension);
        update.Bind(7, row.genre);
        update.Bind(8, row.path);
        update.Run();
    }
    Execute("commit");
}

std::size_t BareLibrary::FindPaths(const std::vector<std::string>& paths) {
    Statement find(m_database, "select Path from Files where Path = ?");
    std::size_t found = 0;
    for (const std::string& path : paths) {
        find.Bind(1, path);
        found += find.Step() ? 1 : 0;
        find.Reset();
    }
    return found;
}

std::size_t BareLibrary::FindRows(const std::vector<StoredRow>& rows) {
    Statement path(m_database, "select File_id from Files where Path = ?");
    Statement title(m_database, "select Title_id from Titel where Name = ?");
    std::size_t found = 0;
    for (const StoredRow& row : rows) {
        for (int i = 0; i < 2; ++i) {
            title.Bind(1, row.title);
            found += title.Step() ? 1 : 0;
            title.Reset();
        }
        path.Bind(1, row.path);
        found += path.Step() ? 1 : 0;
        path.Reset();
    }
    return found;
}

void BareLibrary::CreateTreeTables() {
    Execute(
        "create table Categories (Category_id integer primary key autoincrement, Category text);"
        "create table FileCategories (FileCategory_id integer primary key autoincrement, File_id integer, "
        "Category_id integer, Position integer, Parent text, Filename text);"
        "create index CategoriesByName on Categories (Category);"
        "create index EntriesByCategory on FileCategories (Category_id, Position);"
        "create index EntriesByParent on FileCategories (Parent, Position);"
        "create index EntriesByFile on FileCategories (File_id);"
        "insert into Categories (Category) values ('Target')");
}

void BareLibrary::AddEntries(const std::vector<std::string>& paths) {
    Execute("begin");
    Statement file(m_database, "select File_id, Name from Files where Path = ?");
    Statement category(m_database, "select Category_id, Category from Categories where Category = 'Target'");
    Statement insert(m_database,
                     "insert into FileCategories (File_id, Category_id, Position, Parent, Filename) "
                     "values (?, ?, ?, 'Target', ?)");
    std::int64_t position = 0;
    for (const std::string& path : paths) {
        file.Bind(1, path);
        file.Step();
        category.Step();
        const std::string name = file.Text(1);
        insert.Bind(1, file.Integer(0));
        insert.Bind(2, category.Integer(0));
        insert.Bind(3, ++position);
        insert.Bind(4, name);
        insert.Run();
        file.Reset();
        category.Reset();
    }
    Execute("commit");
}

std::vector<std::string> WalkFiles(const std::string& folder) {
    std::vector<std::string> files;
    WalkInto(folder, files);
    return files;
}

std::uint64_t ReadHeadsAndTails(const std::vector<std::string>& paths) {
    std::array<char, 4096> buffer;
    std::uint64_t total = 0;
    for (const std::string& path : paths) {
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (file < 0) {
            throw std::runtime_error("can't open " + path);
        }
        const off_t end = lseek(file, 0, SEEK_END);
        total += static_cast<std::uint64_t>(pread(file, buffer.data(), buffer.size(), 0));
        total += static_cast<std::uint64_t>(pread(file, buffer.data(), 128, end > 128 ? end - 128 : 0));
        close(file);
    }
    return total;
}

std::uint64_t ReadWhole(const std::vector<std::string>& paths) {
    std::array<char, 65536> buffer;
    std::uint64_t total = 0;
    for (const std::string& path : paths) {
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (file < 0) {
            throw std::runtime_error("can't open " + path);
        }
        for (ssize_t size = 0; (size = read(file, buffer.data(), buffer.size())) > 0;) {
            total += static_cast<std::uint64_t>(size);
        }
        close(file);
    }
    return total;
}

} // namespace quavernet::bench
