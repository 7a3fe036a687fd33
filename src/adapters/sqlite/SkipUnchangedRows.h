// Keeps updates that change nothing from writing. A scan sends every file's row again, and the engine would
// take the row out of each index and put it back. Called when a statement is prepared.
#pragma once

#include <string>

namespace quavernet::sqlite {

/// For "Update T Set A = ?, B = ? where C = ?" the same statement for the rows alone that hold another value,
/// to the byte, in one of the columns. Every other statement comes back as it is.
std::string SkipUnchangedRows(const std::string& sql);

} // namespace quavernet::sqlite
