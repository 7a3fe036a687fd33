#include "tree/PlaceNow.h"

#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "library/FirstField.h"
#include "library/SqlQuote.h"

#include <utility>

namespace quavernet {

namespace {

bool HasRows(const std::string& select) {
    ADODB::Recordset rows;
    rows.Open(select, *mainModule.Connection);
    return rows.RecordCount() > 0;
}

} // namespace

bool OthersWatch::HasNews() {
    const std::int64_t now = mainModule.Connection->ChangesOfOthers();
    return std::exchange(m_seen, now) != now;
}

std::optional<std::string> PositionNow(const std::string& fileCategoryId, const std::string& category) {
    ADODB::Recordset rows;
    rows.Open("Select FC.[Position] from FileCategories FC, Categories C where FC.FileCategory_id = " +
                  fileCategoryId + " and C.Category_id = FC.Category_id and C.Category = '" +
                  SqlQuote(category) + "'",
              *mainModule.Connection);
    if (rows.RecordCount() == 0) {
        return std::nullopt;
    }
    return rows.Fields(0).Text();
}

bool IsCategory(const std::string& name) {
    return HasRows("Select Category_id from Categories where Category = '" + SqlQuote(name) + "'");
}

bool TakesEntries(const std::string& categoryId, const std::string& parent) {
    return HasRows("Select Category_id from Categories where Category_id = " + categoryId) &&
           IsCategory(parent);
}

std::optional<std::size_t> ChildrenNow(const std::string& category) {
    ADODB::Recordset rows;
    rows.Open("Select Category_id from Categories where Category = '" + SqlQuote(category) + "'",
              *mainModule.Connection);
    if (rows.RecordCount() == 0) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(
        Val(FirstField("Select Count(FC.FileCategory_id) from Files F, FileCategories FC where F.File_id = "
                       "FC.File_id and FC.Category_id = " +
                       rows.Fields(0).Text())));
}

} // namespace quavernet
