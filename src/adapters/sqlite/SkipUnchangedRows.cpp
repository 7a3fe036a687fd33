#include "adapters/sqlite/SkipUnchangedRows.h"

#include "adapters/sqlite/Words.h"

#include <string_view>

namespace quavernet::sqlite {

std::string SkipUnchangedRows(const std::string& sql) {
    Words words(sql);
    if (!words.TakeWord("update") || words.TakeName().empty() || !words.TakeWord("set")) {
        return sql;
    }
    std::string same;
    int parameter = 0;
    do {
        const std::string_view column = words.TakeName();
        if (column.empty() || !words.TakeSign('=') || !words.TakeSign('?')) {
            return sql;
        }
        same.append(same.empty() ? "" : " and ").append(column).append(" collate binary is ?");
        same.append(std::to_string(++parameter));
    } while (words.TakeSign(','));
    if (!words.TakeWord("where") || words.TakeName().empty() || !words.TakeSign('=') ||
        !words.TakeSign('?') || !words.IsAtEnd()) {
        return sql;
    }
    return sql + " and not (" + same + ")";
}

} // namespace quavernet::sqlite
