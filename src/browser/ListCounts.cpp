#include "browser/ListCounts.h"

#include "app/MainModule.h"
#include "browser/ListRecord.h"

#include <algorithm>

namespace quavernet {

namespace {

using Keys = std::vector<std::int64_t>;

std::string CountBy(const std::string& statement) {
    ADODB::Recordset records;
    records.Open(statement, *mainModule.Connection);
    return records.Fields(0).Text();
}

Keys SortedFileIds(const ADODB::RowBlock& listed) {
    Keys ids;
    ids.reserve(listed.Rows());
    for (std::size_t row = 0; row < listed.Rows(); ++row) {
        ids.push_back(listed.At(row, ListField::FileId).Integer());
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

std::string DistinctCount(Keys& keys) {
    std::sort(keys.begin(), keys.end());
    return std::to_string(std::unique(keys.begin(), keys.end()) - keys.begin());
}

void AddKey(Keys& keys, const ADODB::Field& key) {
    if (!key.IsNull()) {
        keys.push_back(key.Integer());
    }
}

void CountByKeys(const ADODB::RowBlock& listed, ListTotals& totals) {
    const Keys ids = SortedFileIds(listed);
    Keys interprets;
    Keys titles;
    Keys albums;
    if (!ids.empty()) {
        const ADODB::RowBlock files = mainModule.Connection->Query(
            "Select File_id, Inter_id, Title_id, Album_id from Files Order By File_id");
        auto wanted = ids.begin();
        for (std::size_t row = 0; row < files.Rows() && wanted != ids.end(); ++row) {
            if (files.At(row, 0).Integer() == *wanted) {
                AddKey(interprets, files.At(row, 1));
                AddKey(titles, files.At(row, 2));
                AddKey(albums, files.At(row, 3));
                ++wanted;
            }
        }
    }
    totals.InterpretCount = DistinctCount(interprets);
    totals.TitleCount = DistinctCount(titles);
    totals.AlbumCount = DistinctCount(albums);
}

} // namespace

void CountLookups(const ADODB::RowBlock& listed, const ListFilter& filter, const std::string& list,
                  ListTotals& totals) {
    if (!mainModule.ShowChartMode || mainModule.ShowInGridMode) {
        CountByKeys(listed, totals);
        return;
    }
    totals.InterpretCount = CountBy(InterpretCountStatement(filter, list));
    totals.TitleCount = CountBy(TitleCountStatement(filter, list));
    totals.AlbumCount = CountBy(AlbumCountStatement(filter, list));
}

} // namespace quavernet
