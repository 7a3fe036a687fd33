#include "editing/EditingCommands.h"

#include "app/CommandRegistry.h"
#include "app/MainModule.h"
#include "editing/OpenDetails.h"
#include "editing/frmFileName.h"
#include "editing/frmFilesName.h"

namespace quavernet {

namespace {

void mnuKontextFilename_Click(const EditingParts& parts, QWidget& owner) {
    if (mainModule.SelectedRows.Count() <= 1) {
        frmFileName(&owner, parts.Work).exec();
    } else {
        frmFilesName(&owner, parts.Work).exec();
    }
}

void mnuEditFilename_Click(const EditingParts& parts, QWidget& owner) {
    if (mainModule.SelectedRows.Count() > 0) {
        mnuKontextFilename_Click(parts, owner);
    }
}

} // namespace

// The dialogs let events run and hold row numbers of the list: no other command, no reminder and no drop
// comes in between.
void RegisterEditingCommands(CommandRegistry& commands, const EditingParts& parts, QWidget& owner) {
    commands.RegisterAlone("mnuEditFilename", [parts, &owner] { mnuEditFilename_Click(parts, owner); });
    commands.RegisterAlone("mnuKontextFilename", [parts, &owner] { mnuKontextFilename_Click(parts, owner); });
    commands.RegisterAlone("mnuDetails", [parts, &owner] { mnuDetails_Click(parts, owner); });
    commands.RegisterAlone("mnuKontextDetails", [parts, &owner] { OpenDetails(parts, owner); });
}

} // namespace quavernet
