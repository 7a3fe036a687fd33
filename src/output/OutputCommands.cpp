#include "output/OutputCommands.h"

#include "app/CommandRegistry.h"
#include "output/ConvertSelectedFiles.h"

namespace quavernet {

// A box lets events run: no other command, no reminder and no drop comes in between.
void RegisterOutputCommands(CommandRegistry& commands, const OutputParts& parts,
                            [[maybe_unused]] QWidget& owner) {
    for (const char* name : {"mnuKonvert", "mnuKontextKonvert", "konvert"}) {
        commands.RegisterAlone(name, [parts] { ConvertSelectedFiles(parts.Work, [] {}); });
    }
}

} // namespace quavernet
