// Rotated copies of a library beside it.
#pragma once

#include <string>

struct sqlite3;

namespace quavernet::sqlite {

inline constexpr int BackupCount = 3;

/// Path of a copy; number 1 is the newest: "Quavernet.db" has "Quavernet.backup1.db".
std::string BackupPath(const std::string& library, int number);

/// Copies the committed content beside the library and moves the older copies one number on, the last one
/// out. The copy is complete before any other is touched. Throws RuntimeError if it can't be made.
void MakeBackup(sqlite3* database, const std::string& library);

} // namespace quavernet::sqlite
