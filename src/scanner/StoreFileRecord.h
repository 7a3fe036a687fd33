// Writes the record of an inspected file into the library. Called once a file by the search, and by the drop
// handlers through ScanDriver.
#pragma once

#include "app/CurrentFile.h"
#include "scanner/SavedLog.h"

namespace quavernet {

/// Finds or creates the lookup rows of the file and inserts or updates its row in Files; the path decides
/// which, and true is returned for a new row. Names that are empty are filled. Failing statements are not
/// caught. Lets events run after each new lookup row: no handler inside them may touch `file`.
bool StoreFileRecord(CurrentFile& file, SavedLog& log);

} // namespace quavernet
