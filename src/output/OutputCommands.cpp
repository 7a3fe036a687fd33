#include "output/OutputCommands.h"

#include "app/CommandRegistry.h"
#include "output/ConvertSelectedFiles.h"
#include "output/GridToPrint.h"
#include "output/PrintList.h"
#include "output/frmKonvertOptions.h"

namespace quavernet {

// The dialog and the box of a conversion let events run, and the selected rows are read after both: no other
// command, no reminder and no drop comes in between.
void RegisterOutputCommands(CommandRegistry& commands, const OutputParts& parts, QWidget& owner) {
    const auto showOptions = [&owner] { frmKonvertOptions(&owner).exec(); };
    for (const char* name : {"mnuKonvert", "mnuKontextKonvert", "konvert"}) {
        commands.RegisterAlone(name, [parts, showOptions] { ConvertSelectedFiles(parts.Work, showOptions); });
    }
    commands.RegisterAlone("mnuKonvertoptions", showOptions);
    for (const char* name : {"mnuPrint", "mnuKontextPrint", "print"}) {
        commands.RegisterAlone(name, [parts] {
            GridToPrint grid(parts.Grid);
            PrintList(grid, parts.Work, parts.Switches);
        });
    }
}

} // namespace quavernet
