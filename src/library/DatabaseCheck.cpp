#include "library/DatabaseCheck.h"

#include <vector>

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "library/SqlQuote.h"

namespace quavernet {

namespace {

std::vector<std::string> DoubledNames() {
    std::vector<std::string> names;
    ADODB::Recordset record;
    record.Open("Select count(Category), Category from Categories Group By Category", *mainModule.Connection);
    if (record.RecordCount() > 0) {
        for (record.MoveFirst(); !record.Eof(); record.MoveNext()) {
            if (record.Fields(0).Integer() > 1) {
                names.push_back(record.Fields(1).Text());
            }
        }
    }
    record.Close();
    return names;
}

// The highest key of each name: one row a name and start, so that a name standing three times keeps two.
std::string NewestIds(const std::vector<std::string>& names) {
    std::string ids;
    for (const std::string& name : names) {
        ADODB::Recordset record;
        record.Open("Select Category_id from Categories where Category = '" + SqlQuote(name) +
                        "' Order By Category_id",
                    *mainModule.Connection);
        if (record.RecordCount() > 1) { // Another program that started at the same time may have repaired it.
            record.MoveLast();
            ids += record.Fields(0).Text() + ", ";
        }
        record.Close();
    }
    return ids.substr(0, ids.empty() ? 0 : ids.size() - 2);
}

} // namespace

void CheckDatabase(LongWork& work) {
    work.SetPanel(Panel::Scanning, LoadResString(438));
    work.DoEvents();
    const std::vector<std::string> names = DoubledNames();
    if (names.empty()) {
        return;
    }
    work.SetPanel(Panel::Scanning, LoadResString(439));
    work.DoEvents();
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    const std::string ids = NewestIds(names);
    if (ids.empty()) {
        return;
    }
    mainModule.Connection->Execute("Delete from Categories where Category_id in (" + ids + ")");
    mainModule.Connection->Execute("Delete from FileCategories where Category_id in (" + ids + ")");
}

} // namespace quavernet
