// Writes the record of the current file into the library. Called once a file by the search, and by the drop
// handlers through ScanDriver.
#pragma once

#include "scanner/SavedLog.h"

namespace quavernet {

/// Finds or creates the lookup rows of the current file and inserts or updates its row in Files; the path
/// decides which. Failing statements are not caught.
void StoreFileRecord(SavedLog& log);

} // namespace quavernet
