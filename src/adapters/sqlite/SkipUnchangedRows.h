// Keeps updates that change nothing from writing. A scan sends every file's row again, and the engine would
// take the row out of each index and put it back. Called by StatementCache when a statement is prepared.
#pragma once

#include <string>

namespace quavernet::sqlite {

/// For "Update T Set A = ?, B = ? where C = ?" the same statement for the rows alone that hold another value,
/// to the byte, in one of the columns. Blanks between the words may be any. Every other statement comes back
/// as it is: one that counts ("Hits = Hits + ?") writes a new value anyhow, and a wider condition is not
/// read.
std::string SkipUnchangedRows(const std::string& sql);

} // namespace quavernet::sqlite
