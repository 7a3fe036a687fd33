#include "scanner/ScanController.h"

#include "app/MainModule.h"
#include "scanner/AddDroppedFiles.h"
#include "scanner/frmScanLog.h"

#include <QPointer>
#include <QWidget>

namespace quavernet {

ScanController::ScanController(LongWork& work, ScanView& view, Controls& controls, QWidget& owner)
    : m_work(work), m_view(view), m_controls(controls), m_owner(owner),
      m_log(std::make_unique<frmScanLog>(&owner)), m_driver(work, view, *m_log, &m_oggBatches) {}

ScanController::~ScanController() = default;

void ScanController::mnuScan_Click() {
    // A cancelled scan gives the button back before its walk has noticed: no second scan inside the first.
    if (mainModule.ScanRunning) {
        return;
    }
    const QPointer<QWidget> focus = m_owner.focusWidget();
    mainModule.ScanRunning = true;
    m_driver.StartScan();
    mainModule.ScanRunning = false;
    // A control that is switched off loses the keyboard to its neighbour; it gets it back.
    if (focus && focus->isEnabled()) {
        focus->setFocus();
    }
}

void ScanController::FilesDropped(const std::vector<std::string>& paths) {
    AddDroppedFiles(paths, m_driver, m_view, m_work);
}

void ScanController::ReminderScan() {
    if (mainModule.ScanRunning) {
        return;
    }
    IgnoreFailure([this] { mnuScan_Click(); });
    mainModule.ScanRunning = false; // Also after a failure: a window that believes in a scan can't be closed.
}

void ScanController::StoreLogSize() {
    m_log->SaveSize();
}

void ScanController::Cancel() {
    m_driver.Cancel();
    m_work.SetPanel(Panel::Scanning, {});
    m_controls.SetEnabled("scan", true);
    m_controls.SetEnabled("cancel", false);
}

} // namespace quavernet
