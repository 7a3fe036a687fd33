#include "extras/ExtrasCommands.h"

#include "app/CommandRegistry.h"
#include "app/MainModule.h"
#include "extras/CoversHost.h"
#include "extras/frmChart.h"
#include "extras/frmCoverSearchOptions.h"
#include "extras/frmOptToplist.h"

namespace quavernet {

namespace {

// One window for both lists, made when it is first wanted. The main window owns it.
frmChart& ChartOf(const ExtrasParts& parts, QWidget& owner) {
    auto* form = owner.findChild<frmChart*>(QString(), Qt::FindDirectChildrenOnly);
    return form != nullptr ? *form : *new frmChart(&owner, parts.Views, parts.Player);
}

} // namespace

void RegisterExtrasCommands(CommandRegistry& commands, const ExtrasParts& parts, QWidget& owner) {
    commands.Register("mnuManageCovers", [parts] { parts.Covers.Show(); });
    commands.Register("mnuCoverOnlineSearch", [&owner] { frmCoverSearchOptions(&owner).exec(); });
    commands.Register("top", [parts, &owner] { ChartOf(parts, owner).Open(mainModule.ChartShowTop); });
    commands.Register("date", [parts, &owner] { ChartOf(parts, owner).Open(mainModule.ChartShowNew); });
    // What it counts must not change under a scan or a play that begins meanwhile.
    commands.RegisterAlone("mnuToplists", [&owner] { frmOptToplist(&owner).exec(); });
}

} // namespace quavernet
