#include "mainwindow/CloseGuard.h"

#include "app/MainModule.h"
#include "app/MayAct.h"
#include "app/ShowBox.h"

namespace quavernet {

CloseAnswer QueryCloseMain() {
    if (!mainModule.ScanRunning) {
        return MayAct() ? CloseAnswer::Close : CloseAnswer::Later;
    }
    ShowBox(355, 356, MsgBox::Icon::Information);
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
