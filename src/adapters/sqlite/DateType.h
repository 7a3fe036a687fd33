// The declared type of date columns. The reader of a statement's columns asks here.
#pragma once

#include <cstring>

namespace quavernet::sqlite {

/// Whether a declared type is that of the date columns; null (an expression) is not. "TEXT" in the name gives
/// the column text affinity; a column declared DATE would turn '2026' into a number.
inline bool IsDateType(const char* declaredType) {
    return declaredType != nullptr && std::strcmp(declaredType, "DATETEXT") == 0;
}

} // namespace quavernet::sqlite
