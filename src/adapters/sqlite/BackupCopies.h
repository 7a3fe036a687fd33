// Rotated copies of a library beside it.
#pragma once

#include "platform/BackupPath.h"

#include <string>

struct sqlite3;

namespace quavernet::sqlite {

/// Copies the committed content beside the library and moves the older copies one number on, the last one
/// out. The library is looked through first and the copy is complete before any other is touched, so that
/// only a sound copy pushes out a sound one; an end in between loses none. Does nothing while another program
/// makes a copy. Throws LibraryError if the library is damaged, RuntimeError if the copy can't be made.
void MakeBackup(sqlite3* database, const std::string& library);

} // namespace quavernet::sqlite
