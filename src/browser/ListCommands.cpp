#include "browser/ListCommands.h"

#include "app/CommandRegistry.h"
#include "app/Controls.h"
#include "browser/CopyPaths.h"
#include "browser/DeleteSelectedEntries.h"
#include "browser/ExchangeInterpretTitle.h"
#include "browser/FilterEvents.h"
#include "browser/GridView.h"
#include "browser/ListController.h"

namespace quavernet {

void RegisterListCommands(CommandRegistry& commands, ListController& list, GridView& grid, Controls& controls,
                          LongWork& work, LibraryViews& views) {
    const auto reload = [&list](bool) { list.LoadDatabase({}); };
    commands.RegisterMarkPair("mnump3", "mnuKontextMp3", controls, reload);
    commands.RegisterMarkPair("mnuogg", "mnuKontextOgg", controls, reload);
    commands.RegisterMarkPair("mnuwav", "mnuKontextWav", controls, reload);
    commands.RegisterMarkPair("mnuShowGridlines", "mnuKontextShowGridlines", controls,
                              [&grid](bool checked) { grid.setShowGrid(checked); });
    for (const char* name : {"mnuKontextDelete", "mnuEditDelete"}) {
        commands.Register(name,
                          [&grid, &work, &views] { DeleteSelectedEntries(grid.Selection(), work, views); });
    }
    for (const char* name : {"mnuKontextExchange", "mnuEditExchange"}) {
        commands.Register(name, [&views] { ExchangeInterpretTitle(views); });
    }
    commands.Register("mnuKontextCopyPaths", CopyPaths);
    commands.Register("mnuOptionsLoadOverSearch", [&controls] {
        // The click has turned the mark round already.
        const bool before = !controls.Checked("mnuOptionsLoadOverSearch");
        controls.SetChecked("mnuOptionsLoadOverSearch", mnuOptionsLoadOverSearch_Click(before));
    });
}

} // namespace quavernet
