#include "mainwindow/CloseGuard.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/MayAct.h"

namespace quavernet {

CloseAnswer QueryCloseMain() {
    if (!mainModule.ScanRunning) {
        return MayAct() ? CloseAnswer::Close : CloseAnswer::Later;
    }
    services.msgBox->Show(LoadResString(355), LoadResString(356), MsgBox::Icon::Information,
                          MsgBox::Buttons::Ok);
    return CloseAnswer::Stay;
}

void FinishMainUnload() {
    services.events->DoEvents();
    mainModule.MainOpen = false;
    if (!mainModule.PlayerOpen) {
        ExitProgram();
    }
}

} // namespace quavernet
