#include "browser/FilterLists.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"

namespace quavernet {

namespace {

// A library used in both languages holds a no-album row in each.
bool IsNoAlbum(const std::string& name) {
    return name == "Kein Album..." || name == "No album...";
}

// Text and key of the rows of one lookup table that a file points to.
std::vector<FilterEntry> UsedRows(const char* statement) {
    ADODB::Recordset records;
    records.Open(statement, *mainModule.Connection);
    std::vector<FilterEntry> rows;
    for (records.MoveFirst(); !records.Eof(); records.MoveNext()) {
        rows.push_back({records.Fields(0).Text(), records.Fields(1).Integer()});
    }
    return rows;
}

} // namespace

std::vector<FilterEntry> FillDriveCombo() {
    std::vector<FilterEntry> entries{{LoadResString(388), 0}};
    // Ordered by the key, which is the table's own order: an index could give the rows in another one.
    for (auto& drive :
         UsedRows("Select D.Drive, D.Drive_id from Drive D where exists "
                  "(Select 1 from Files F where F.Drive_id = D.Drive_id) Order By D.Drive_id")) {
        entries.push_back(std::move(drive));
    }
    return entries;
}

std::vector<FilterEntry> FillGenreCombo() {
    std::vector<FilterEntry> entries{{LoadResString(389), 0}, {LoadResString(390), NoGenre}};
    for (auto& genre : UsedRows("Select G.Genre, G.Genre_id from Genres G where exists "
                                "(Select 1 from Files F where F.Genre_id = G.Genre_id) Order By G.Genre")) {
        if (genre.ItemData != NoGenre) {
            entries.push_back(std::move(genre));
        }
    }
    return entries;
}

std::vector<FilterEntry> FillAlbumCombo() {
    std::vector<FilterEntry> entries{{LoadResString(391), 0}};
    for (auto& album : UsedRows("Select A.Name, A.Album_id from Albums A where exists "
                                "(Select 1 from Files F where F.Album_id = A.Album_id) Order By A.Name")) {
        // The row read last comes first: each goes right under the "all" entry.
        entries.insert(IsNoAlbum(album.Text) ? entries.begin() + 1 : entries.end(), std::move(album));
    }
    return entries;
}

} // namespace quavernet
