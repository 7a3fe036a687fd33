#include "TreeFloors.h"

#include "BareStatement.h"

#include <fstream>
#include <unordered_map>

namespace quavernet::bench {

namespace {

constexpr const char* Tables =
    "create table Files (File_id integer primary key, Title_id integer, Inter_id integer, Name text, "
    "Path text, Sizeinbytes integer, Quality_id integer, Length integer, Extension_id integer, "
    "Drive_id integer, Genre_id integer, Album_id integer);"
    "create table Titel (Title_id integer primary key, Name text);"
    "create table Interpret (Inter_id integer primary key, Interpret text);"
    "create table Quality (Quality_id integer primary key, Quality integer);"
    "create table Extensions (Extension_id integer primary key, Extension text);"
    "create table Categories (Category_id integer primary key, Category text);"
    "create table FileCategories (FileCategory_id integer primary key, File_id integer, Category_id integer, "
    "Position integer, Parent text, Filename text);";

constexpr const char* Indexes =
    "create index FilesPath on Files (Path); create index FilesDrive on Files (Drive_id);"
    "create index FilesGenre on Files (Genre_id); create index FilesAlbum on Files (Album_id);"
    "create index FilesPerformer on Files (Inter_id); create index FilesTitle on Files (Title_id);"
    "create index CategoriesName on Categories (Category);"
    "create index EntriesCategory on FileCategories (Category_id, Position);"
    "create index EntriesParent on FileCategories (Parent, Position);"
    "create index EntriesFile on FileCategories (File_id)";

constexpr const char* Rows =
    "insert into Files select File_id, Title_id, Inter_id, Name, Path, Sizeinbytes, Quality_id, Length, "
    "Extension_id, Drive_id, Genre_id, Album_id from program.Files;"
    "insert into Titel select Title_id, Name from program.Titel;"
    "insert into Interpret select Inter_id, Interpret from program.Interpret;"
    "insert into Quality select Quality_id, Quality from program.Quality;"
    "insert into Extensions select Extension_id, Extension from program.Extensions;"
    "insert into Categories select Category_id, Category from program.Categories;"
    "insert into FileCategories select FileCategory_id, File_id, Category_id, Position, Parent, Filename "
    "from program.FileCategories;";

constexpr const char* InsertEntry =
    "insert into FileCategories (File_id, Category_id, Position, Parent, Filename) values (?, ?, ?, ?, ?)";

struct FoundFile {
    std::int64_t id = 0;
    std::string name;
};

FoundFile Find(Statement& find, const std::string& path) {
    find.Bind(1, path);
    if (!find.Step()) {
        throw std::runtime_error("no file " + path);
    }
    FoundFile found{find.Integer(0), find.Text(1)};
    find.Reset();
    return found;
}

void Insert(Statement& insert, const FoundFile& file, std::int64_t category, std::int64_t position,
            const std::string& parent) {
    insert.Bind(1, file.id);
    insert.Bind(2, category);
    insert.Bind(3, position);
    insert.Bind(4, parent);
    insert.Bind(5, file.name);
    insert.Run();
}

struct Place {
    std::string parent;
    std::int64_t position = 0;
};

std::vector<Place> PlacesOf(Statement& places, std::int64_t file) {
    std::vector<Place> found;
    places.Bind(1, file);
    while (places.Step()) {
        found.push_back({places.Text(0), places.Integer(1)});
    }
    places.Reset();
    return found;
}

} // namespace

std::unique_ptr<BareLibrary> OpenTree(const std::string& path) {
    auto library = std::make_unique<BareLibrary>(path);
    library->Execute("pragma cache_size = -16384; pragma temp_store = memory");
    return library;
}

void CopyTree(const std::string& programLibrary, const std::string& path) {
    BareLibrary library(path);
    library.Execute(Tables);
    library.Execute(("attach '" + programLibrary + "' as program").c_str());
    library.Execute(Rows);
    library.Execute("detach program");
    library.Execute(Indexes);
}

void ReadTree(BareLibrary& library) {
    library.Execute("begin");
    library.ReadAll("select Category from Categories");
    library.ReadAll(
        "select F.Name, C.Category, F.Path, F.File_id, FC.Position, FC.FileCategory_id from Files F, "
        "Categories C, FileCategories FC where F.File_id = FC.File_id and "
        "C.Category_id = FC.Category_id");
    library.ReadAll("select sum(F.Length), FC.Category_id from Files F inner join FileCategories FC "
                    "on F.File_id = FC.File_id group by FC.Category_id");
    library.Execute("commit");
}

void DeleteFiles(BareLibrary& library, const std::vector<std::string>& paths) {
    library.Execute("begin");
    Statement find(library.Handle(), "select File_id, Name from Files where Path = ?");
    Statement forget(library.Handle(), "delete from Files where Path = ?");
    Statement places(library.Handle(), "select Parent, Position from FileCategories where File_id = ?");
    Statement remove(library.Handle(),
                     "delete from FileCategories where Position = ? and File_id = ? and Parent = ?");
    Statement shift(library.Handle(),
                    "update FileCategories set Position = Position - 1 where Position > ? and Parent = ?");
    for (const std::string& path : paths) {
        const FoundFile file = Find(find, path);
        forget.Bind(1, path);
        forget.Run();
        for (const Place& place : PlacesOf(places, file.id)) {
            remove.Bind(1, place.position);
            remove.Bind(2, file.id);
            remove.Bind(3, place.parent);
            remove.Run();
            shift.Bind(1, place.position);
            shift.Bind(2, place.parent);
            shift.Run();
        }
    }
    library.Execute("commit");
}

void ImportEntries(BareLibrary& library, const std::string& exchangeFile) {
    library.Execute("begin");
    Statement category(library.Handle(), "insert into Categories (Category) values (?)");
    Statement find(library.Handle(), "select File_id, Name from Files where Path = ?");
    Statement insert(library.Handle(), InsertEntry);
    std::unordered_map<std::string, std::int64_t> keys;
    std::ifstream file(exchangeFile);
    bool entries = false;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) {
            entries = line == "#Files";
        } else if (!entries) {
            const std::string name = line + "1";
            category.Bind(1, name);
            category.Run();
            keys[line] = sqlite3_last_insert_rowid(library.Handle());
        } else {
            const std::size_t first = line.find(',');
            const std::size_t second = line.find(',', first + 1);
            const std::size_t last = line.rfind(',');
            const std::string parent = line.substr(first + 1, second - first - 1);
            FoundFile found = Find(find, line.substr(last + 1));
            found.name = line.substr(second + 1, last - second - 1);
            Insert(insert, found, keys.at(parent), std::stoll(line.substr(0, first)), parent + "1");
        }
    }
    library.Execute("commit");
}

} // namespace quavernet::bench
