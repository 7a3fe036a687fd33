// Date columns: the file holds "YYYY-MM-DD" or "YYYY-MM-DD HH:MM:SS", which sorts and reads anywhere; the
// statements and their readers see the regional forms, of which the engine's date functions know nothing.
#pragma once

#include "platform/RegionalSettings.h"

#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace quavernet::sqlite {

/// Names of all date columns in the file, in lower case.
std::vector<std::string> DateColumnNames(sqlite3* database);

/// The stored form of a regional date text; an empty text stays empty. Throws RuntimeError for a text that is
/// no date.
std::string StoredDate(std::string_view text, const RegionalSettings& regional);

/// The regional form of a stored date; a text in another form is given back as it is.
std::string ShownDate(std::string_view stored, const RegionalSettings& regional);

} // namespace quavernet::sqlite
