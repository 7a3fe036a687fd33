#include "extras/ExtrasCommands.h"

#include "app/CommandRegistry.h"
#include "extras/frmCoverSearchOptions.h"

namespace quavernet {

void RegisterExtrasCommands(CommandRegistry& commands, QWidget& owner) {
    commands.Register("mnuCoverOnlineSearch", [&owner] { frmCoverSearchOptions(&owner).exec(); });
}

} // namespace quavernet
