#include "tree/ExchangeCommands.h"

#include "app/CommandRegistry.h"
#include "tree/TreeExport.h"
#include "tree/TreeImport.h"

namespace quavernet {

void RegisterExchangeCommands(CommandRegistry& commands, const TreeModel& tree, LongWork& work,
                              LibraryViews& views, ScanDriver& driver) {
    for (const char* name : {"mnuFileExport", "mnuExport"}) {
        commands.RegisterAlone(name, [&tree, &work] { ExportTree(tree, work); });
    }
    // While unknown files are inspected events run, but the window is to do nothing: a category that goes in
    // the middle would leave entries of no category.
    for (const char* name : {"mnuFileImport", "mnuImport"}) {
        commands.RegisterAlone(name, [&work, &views, &driver] { ImportTree(work, views, driver); });
    }
}

} // namespace quavernet
