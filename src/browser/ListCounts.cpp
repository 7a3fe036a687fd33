#include "browser/ListCounts.h"

#include "app/MainModule.h"
#include "browser/ListRecord.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace quavernet {

namespace {

std::string CountBy(const std::string& statement) {
    ADODB::Recordset records;
    records.Open(statement, *mainModule.Connection);
    return records.Fields(0).Text();
}

// Different keys. They are small numbers, given out in a row, so that a bit for each tells which were met.
class KeySet {
public:
    void Add(const ADODB::Field& field) {
        if (field.IsNull()) {
            return;
        }
        const std::int64_t key = field.Integer();
        if (!HasBit(key)) {
            m_others.insert(key);
            return;
        }
        const auto place = static_cast<std::size_t>(key);
        if (place >= m_met.size()) {
            m_met.resize(place * 2 + 1);
        }
        m_count += m_met[place] ? 0 : 1;
        m_met[place] = true;
    }

    bool Contains(std::int64_t key) const {
        if (!HasBit(key)) {
            return m_others.contains(key);
        }
        const auto place = static_cast<std::size_t>(key);
        return place < m_met.size() && m_met[place];
    }

    std::string Count() const { return std::to_string(m_count + m_others.size()); }

private:
    static bool HasBit(std::int64_t key) {
        constexpr std::int64_t BitLimit = 1 << 24;
        return key >= 0 && key < BitLimit;
    }

    std::vector<bool> m_met;
    std::size_t m_count = 0;
    std::unordered_set<std::int64_t> m_others; ///< Keys that nobody gave out in a row.
};

class LookupKeys {
public:
    /// Takes the keys that stand in three columns from `first` on.
    void Add(const ADODB::RowBlock& files, std::size_t row, std::size_t first) {
        m_interprets.Add(files.At(row, first));
        m_titles.Add(files.At(row, first + 1));
        m_albums.Add(files.At(row, first + 2));
    }
    void Tell(ListTotals& totals) const {
        totals.InterpretCount = m_interprets.Count();
        totals.TitleCount = m_titles.Count();
        totals.AlbumCount = m_albums.Count();
    }

private:
    KeySet m_interprets;
    KeySet m_titles;
    KeySet m_albums;
};

// A search or a filter found few files: only these are asked for, some thousands in one statement.
void AddListed(const ADODB::RowBlock& listed, LookupKeys& keys) {
    constexpr std::size_t IdsInStatement = 5000;
    for (std::size_t row = 0; row < listed.Rows();) {
        const std::size_t end = std::min(row + IdsInStatement, listed.Rows());
        std::string ids;
        for (; row < end; ++row) {
            ids.append(ids.empty() ? "" : ",").append(listed.At(row, ListField::FileId).Text());
        }
        const ADODB::RowBlock files = mainModule.Connection->Query(
            "Select Inter_id, Title_id, Album_id from Files where File_id in (" + ids + ")");
        for (std::size_t file = 0; file < files.Rows(); ++file) {
            keys.Add(files, file, 0);
        }
    }
}

// Many files, but not all: one pass over the table, in which the listed ones are marked.
void AddMarked(const ADODB::RowBlock& listed, LookupKeys& keys) {
    KeySet ids;
    for (std::size_t row = 0; row < listed.Rows(); ++row) {
        ids.Add(listed.At(row, ListField::FileId));
    }
    const ADODB::RowBlock files =
        mainModule.Connection->Query("Select File_id, Inter_id, Title_id, Album_id from Files");
    for (std::size_t row = 0; row < files.Rows(); ++row) {
        if (ids.Contains(files.At(row, 0).Integer())) {
            keys.Add(files, row, 1);
        }
    }
}

// The combos select by keys that stand in Files itself. The list has just been read in the order of its keys:
// from the last row to the first the engine still has half of a thousand scattered rows in its memory. False
// if the list has lost files on the way through its lookup tables: then the listed ones have to be looked at.
bool AddChosen(const ADODB::RowBlock& listed, const ListFilter& filter, LookupKeys& keys) {
    const std::string clauses = ComboClauses(filter);
    if (mainModule.ShowInGridMode || clauses.empty() || !SearchClause(filter).empty()) {
        return false;
    }
    constexpr std::string_view And = " and ";
    const ADODB::RowBlock files =
        mainModule.Connection->Query("Select F.Inter_id, F.Title_id, F.Album_id from Files F where " +
                                     clauses.substr(And.size()) + " order by F.File_id desc");
    if (files.Rows() != listed.Rows()) {
        return false;
    }
    for (std::size_t file = 0; file < files.Rows(); ++file) {
        keys.Add(files, file, 0);
    }
    return true;
}

void CountByKeys(const ADODB::RowBlock& listed, std::int64_t allFiles, const ListFilter& filter,
                 ListTotals& totals) {
    const auto count = static_cast<std::int64_t>(listed.Rows());
    if (count > 0 && count == allFiles) {
        // Each key has an index, which holds equal ones side by side.
        totals.InterpretCount = CountBy("Select Count(distinct Inter_id) from Files");
        totals.TitleCount = CountBy("Select Count(distinct Title_id) from Files");
        totals.AlbumCount = CountBy("Select Count(distinct Album_id) from Files");
        return;
    }
    LookupKeys keys;
    if (count > 0 && !AddChosen(listed, filter, keys)) {
        if (count < allFiles / 4) {
            AddListed(listed, keys);
        } else {
            AddMarked(listed, keys);
        }
    }
    keys.Tell(totals);
}

} // namespace

void CountLookups(const ADODB::RowBlock& listed, std::int64_t allFiles, const ListFilter& filter,
                  const std::string& list, ListTotals& totals) {
    if (!mainModule.ShowChartMode || mainModule.ShowInGridMode) {
        CountByKeys(listed, allFiles, filter, totals);
        return;
    }
    totals.InterpretCount = CountBy(InterpretCountStatement(filter, list));
    totals.TitleCount = CountBy(TitleCountStatement(filter, list));
    totals.AlbumCount = CountBy(AlbumCountStatement(filter, list));
}

} // namespace quavernet
