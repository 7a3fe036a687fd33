// The scan's side of the main window: starts and cancels the scan, takes dropped files, and owns the log
// window. The main window makes it; the commands of the scan and the reminder run it.
#pragma once

#include "app/Controls.h"
#include "app/LongWork.h"
#include "scanner/OggBatches.h"
#include "scanner/ScanDriver.h"
#include "scanner/ScanView.h"

#include <memory>

class QWidget;

namespace quavernet {

class frmScanLog;

class ScanController {
public:
    /// `owner` is the window that the log is over.
    ScanController(LongWork& work, ScanView& view, Controls& controls, QWidget& owner);
    ~ScanController();

    /// Lets events run all the way.
    void mnuScan_Click();
    /// As mnuScan_Click, for a scan that the reminder starts: failures are passed over.
    void ReminderScan();
    void Cancel();
    /// Lets events run.
    void FilesDropped(const std::vector<std::string>& paths);

    /// Writes the size of an open log to the settings.
    void StoreLogSize();

    /// For the drop on the tree and the import of one, which store unknown files by it.
    ScanDriver& Driver() { return m_driver; }

private:
    LongWork& m_work;
    ScanView& m_view;
    Controls& m_controls;
    QWidget& m_owner;
    std::unique_ptr<frmScanLog> m_log;
    OggBatches m_oggBatches;
    ScanDriver m_driver;
};

} // namespace quavernet
