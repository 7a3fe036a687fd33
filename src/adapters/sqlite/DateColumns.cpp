#include "adapters/sqlite/DateColumns.h"

#include <charconv>
#include <memory>

#include <sqlite3.h>

#include "adapters/sqlite/SqliteError.h"
#include "adapters/sqlite/StatementCache.h"
#include "platform/RuntimeError.h"

namespace quavernet::sqlite {

namespace {

bool TakeNumber(std::string_view text, std::size_t offset, std::size_t digits, int& number) {
    const char* const first = text.data() + offset;
    const auto result = std::from_chars(first, first + digits, number);
    return result.ec == std::errc() && result.ptr == first + digits;
}

} // namespace

std::vector<std::string> DateColumnNames(sqlite3* database) {
    const PreparedStatement query =
        Prepare(database, "select distinct lower(c.name) from sqlite_schema s, pragma_table_info(s.name) c "
                          "where s.type = 'table' and c.type = 'DATETEXT'");
    std::vector<std::string> names;
    int code = sqlite3_step(query.handle.get());
    for (; code == SQLITE_ROW; code = sqlite3_step(query.handle.get())) {
        names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(query.handle.get(), 0)));
    }
    if (code != SQLITE_DONE) {
        ThrowError(database, code);
    }
    return names;
}

std::string StoredDate(std::string_view text, const RegionalSettings& regional) {
    if (text.empty()) {
        return {};
    }
    const auto date = ParseDate(text, regional);
    if (!date) {
        throw RuntimeError(SQLITE_MISMATCH, "Data type mismatch: '" + std::string(text) + "' is no date");
    }
    return IsoDateText(*date);
}

std::string ShownDate(std::string_view stored, const RegionalSettings& regional) {
    DateTime date;
    const bool hasTime = stored.size() == 19;
    if (!(hasTime || stored.size() == 10) || stored[4] != '-' || stored[7] != '-' ||
        !TakeNumber(stored, 0, 4, date.year) || !TakeNumber(stored, 5, 2, date.month) ||
        !TakeNumber(stored, 8, 2, date.day)) {
        return std::string(stored);
    }
    if (hasTime && (!TakeNumber(stored, 11, 2, date.hour) || !TakeNumber(stored, 14, 2, date.minute) ||
                    !TakeNumber(stored, 17, 2, date.second))) {
        return std::string(stored);
    }
    return IsValidDate(date) ? GeneralDateText(date, regional) : std::string(stored);
}

} // namespace quavernet::sqlite
