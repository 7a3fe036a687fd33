#include "adapters/sqlite/LibraryVersion.h"

#include <sqlite3.h>

namespace quavernet::sqlite {

// The engine counts the commits that it has noticed, ours and those of others, when a statement has read;
// what we have written since the last one counts by itself.
LibraryVersion VersionOf(sqlite3* library) {
    LibraryVersion version;
    sqlite3_file_control(library, "main", SQLITE_FCNTL_DATA_VERSION, &version.file);
    version.ownChanges = sqlite3_total_changes64(library);
    return version;
}

} // namespace quavernet::sqlite
