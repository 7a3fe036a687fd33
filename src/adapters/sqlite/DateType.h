// How date columns are told: by their declared type, or by their names. The reader of a statement's columns
// and the scanner of its text ask here.
#pragma once

#include "platform/Ascii.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet::sqlite {

/// Whether a declared type is that of the date columns; null (an expression) is not. "TEXT" in the name gives
/// the column text affinity; a column declared DATE would turn '2026' into a number.
inline bool IsDateType(const char* declaredType) {
    return declaredType != nullptr && std::strcmp(declaredType, "DATETEXT") == 0;
}

/// Whether a name, in any case, is one of these, which are in lower case (DateColumnNames).
inline bool IsDateColumn(std::string_view name, const std::vector<std::string>& dateColumns) {
    return std::any_of(dateColumns.begin(), dateColumns.end(),
                       [&](const std::string& column) { return EqualsIgnoringCase(name, column); });
}

} // namespace quavernet::sqlite
