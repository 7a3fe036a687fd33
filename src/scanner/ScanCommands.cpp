#include "scanner/ScanCommands.h"

#include "app/CommandRegistry.h"
#include "app/Controls.h"
#include "app/MainModule.h"
#include "scanner/ScanController.h"
#include "scanner/frmRemind.h"
#include "scanner/frmScanpath.h"

namespace quavernet {

void RegisterScanCommands(CommandRegistry& commands, ScanController& scan, Controls& controls,
                          QWidget& owner) {
    commands.Register("mnuScan", [&scan] { scan.mnuScan_Click(); });
    commands.Register("scan", [&scan] { scan.mnuScan_Click(); });
    commands.RegisterForScan("cancel", [&scan] { scan.Cancel(); });
    for (const char* name : {"mnuQuickscan", "mnuRecursive", "mnuScanMp3", "mnuScanWav", "mnuScanOgg"}) {
        commands.RegisterMark(name);
    }
    commands.Register("mnuOptionsScanLog",
                      [&controls] { mainModule.ScanLogEnabled = controls.Checked("mnuOptionsScanLog"); });
    commands.Register("mnuStandardScanningPath", [&owner] { frmScanpath(&owner).exec(); });
    commands.Register("mnuRemind", [&owner] { frmRemind(&owner).exec(); });
}

} // namespace quavernet
