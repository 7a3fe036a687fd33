// The command "clean the database": removes the files that are gone from the disk, with their tree entries.
// Called by the commands of the library.
#pragma once

#include "app/LibraryViews.h"
#include "app/LongWork.h"

namespace quavernet {

/// Warns that files of unreachable volumes go too, and cleans on a yes. Lets events run.
void mnuCleanDatabase_Click(LongWork& work, LibraryViews& views);

/// Removes every file that does not exist, closes the gaps in its categories and rebuilds tree and list. No
/// failure is caught, and what was removed until then stays so. Lets events run before its first statement
/// and in both rebuilds.
void CleanDatabase(LongWork& work, LibraryViews& views);

} // namespace quavernet
