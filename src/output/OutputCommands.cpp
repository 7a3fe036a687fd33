#include "output/OutputCommands.h"

#include "app/CommandRegistry.h"
#include "output/ConvertSelectedFiles.h"
#include "output/GridToPrint.h"
#include "output/PrintList.h"

namespace quavernet {

// A box lets events run: no other command, no reminder and no drop comes in between.
void RegisterOutputCommands(CommandRegistry& commands, const OutputParts& parts,
                            [[maybe_unused]] QWidget& owner) {
    for (const char* name : {"mnuKonvert", "mnuKontextKonvert", "konvert"}) {
        commands.RegisterAlone(name, [parts] { ConvertSelectedFiles(parts.Work, [] {}); });
    }
    for (const char* name : {"mnuPrint", "mnuKontextPrint", "print"}) {
        commands.RegisterAlone(name, [parts] {
            GridToPrint grid(parts.Grid);
            PrintList(grid, parts.Work, parts.Switches);
        });
    }
}

} // namespace quavernet
