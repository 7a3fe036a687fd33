#include "library/LibraryCommands.h"

#include "app/CommandRegistry.h"
#include "library/CleanDatabase.h"

namespace quavernet {

void RegisterLibraryCommands(CommandRegistry& commands, LongWork& work, LibraryViews& views) {
    commands.Register("mnuCleanDatabase", [&work, &views] { mnuCleanDatabase_Click(work, views); });
}

} // namespace quavernet
