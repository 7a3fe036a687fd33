#include "browser/ListQuery.h"

#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "library/SqlQuote.h"

namespace quavernet {

namespace {

constexpr std::string_view Tables = "from Files F, Titel T, Interpret I, Quality Q, Extensions E";
constexpr std::string_view Joins = " where F.Title_id = T.Title_id and F.Inter_id = I.Inter_id and "
                                   "Q.Quality_id = F.Quality_Id and F.Extension_id = E.Extension_id";

std::string FilterClauses(const ListFilter& filter) {
    return SearchClause(filter) + ComboClauses(filter);
}

std::string ListClause(const std::string& list) {
    return " and File_id in (" + list + ")";
}

std::string SortClause() {
    const struct {
        bool active;
        const char* clause;
    } sorts[] = {
        {mainModule.SortInterpret, " order by I.Interpret "},
        {mainModule.SortTitle, " order by T.Name "},
        {mainModule.SortQuality, " order by Q.Quality "},
        {mainModule.SortLength, " order by F.Length "},
        {mainModule.SortFormat, " order by E.Extension "},
        {mainModule.SortSize, " order by F.SizeInBytes "},
    };
    for (const auto& sort : sorts) {
        if (sort.active) {
            return sort.clause + mainModule.SortDirection;
        }
    }
    return {};
}

// A request of the tree counts its own rows. A request of the charts does not: its counters go on telling
// what the filter controls select.
std::string CountStatement(std::string_view column, const ListFilter& filter, const std::string& list) {
    std::string statement = "Select Count(Seperate) from (select distinct F.";
    statement.append(column).append(" As Seperate ").append(Tables).append(Joins);
    statement += mainModule.ShowInGridMode ? ListClause(list) : FilterClauses(filter);
    return statement + " )";
}

} // namespace

std::string SearchClause(const ListFilter& filter) {
    // No stored text holds a NUL, and no statement may.
    const std::string text = ReplaceAll(filter.SearchText, std::string_view("\0", 1), {});
    if (text.empty()) {
        return {};
    }
    const std::string pattern = " Like '%" + SqlQuote(text) + "%'";
    if (filter.InterpretChecked && filter.TitleChecked) {
        return " and (I.Interpret" + pattern + " or T.Name" + pattern + ")";
    }
    if (filter.InterpretChecked) {
        return " and I.Interpret" + pattern;
    }
    if (filter.TitleChecked) {
        return " and T.Name" + pattern;
    }
    return {};
}

std::string ComboClauses(const ListFilter& filter) {
    std::string clauses;
    if (filter.DriveId) {
        clauses += " and F.Drive_id = " + std::to_string(*filter.DriveId);
    }
    if (filter.GenreId) {
        clauses += " and F.Genre_id = " + std::to_string(*filter.GenreId);
    }
    if (filter.AlbumId) {
        clauses += " and F.Album_id = " + std::to_string(*filter.AlbumId);
    }
    return clauses;
}

std::string ListStatement(const ListFilter& filter, const std::string& list) {
    std::string statement =
        "Select F.Path, F.SizeInBytes, T.Name, I.Interpret, Q.Quality, F.File_id, F.Length, "
        "F.Name, E.Extension ";
    statement.append(Tables).append(Joins);
    const bool given = mainModule.ShowInGridMode || mainModule.ShowChartMode;
    statement += given ? ListClause(list) : FilterClauses(filter);
    return statement + SortClause();
}

std::string InterpretCountStatement(const ListFilter& filter, const std::string& list) {
    return CountStatement("inter_id", filter, list);
}

std::string TitleCountStatement(const ListFilter& filter, const std::string& list) {
    return CountStatement("Title_id", filter, list);
}

std::string AlbumCountStatement(const ListFilter& filter, const std::string& list) {
    return CountStatement("Album_id", filter, list);
}

} // namespace quavernet
