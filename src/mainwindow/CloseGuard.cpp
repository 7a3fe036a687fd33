#include "mainwindow/CloseGuard.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"

namespace quavernet {

bool MayCloseMain() {
    if (!mainModule.ScanRunning) {
        return true;
    }
    services.msgBox->Show(LoadResString(355), LoadResString(356), MsgBox::Icon::Information,
                          MsgBox::Buttons::Ok);
    return false;
}

void FinishMainUnload() {
    services.events->DoEvents();
    mainModule.MainOpen = false;
    if (!mainModule.PlayerOpen) {
        ExitProgram();
    }
}

} // namespace quavernet
