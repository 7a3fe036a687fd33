#include "scanner/Lookups.h"

#include "app/MainModule.h"
#include "library/SqlQuote.h"

namespace quavernet {

std::optional<std::string> FirstValue(const std::string& select) {
    ADODB::Recordset rows;
    rows.Open(select, *mainModule.Connection);
    auto value = rows.RecordCount() > 0 ? std::optional(rows.Fields(0).Text()) : std::nullopt;
    rows.Close();
    return value;
}

bool FindsRow(const std::string& select) {
    ADODB::Recordset rows;
    rows.Open(select, *mainModule.Connection);
    const bool found = rows.RecordCount() > 0;
    rows.Close();
    return found;
}

bool IsKnownPath(const std::string& path) {
    return FindsRow("Select Path from Files where Path = '" + SqlQuote(path) + "'");
}

} // namespace quavernet
