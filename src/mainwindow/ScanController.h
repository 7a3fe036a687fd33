// The scan's side of the main window: what a running scan shows, the commands that start and cancel it, and
// files that are dropped.
#pragma once

#include "scanner/AddDroppedFiles.h"
#include "scanner/OggBatches.h"
#include "scanner/ScanDriver.h"
#include "scanner/ScanWindow.h"

#include <memory>

namespace quavernet {

class frmMain;
class frmScanLog;

class ScanController : public ScanWindow {
public:
    explicit ScanController(frmMain& form);
    ~ScanController() override;

    void mnuScan_Click();
    /// As mnuScan_Click, for a scan that the reminder starts: failures are passed over.
    void ReminderScan();
    void Cancel();
    void FilesDropped(DropTarget target, const std::vector<std::string>& paths);

private:
    ScanOptions Options() const override;
    void SetPanel(int panel, const std::string& text) override;
    std::string Panel(int panel) const override;
    void SetTitle(const std::string& text) override;
    void SetMousePointer(int pointer) override;
    void SetProgress(float value) override;
    float Progress() const override;
    void SetControlState(int mode) override;
    void ClearList() override;
    void FillDriveCombo() override;
    void FillAlbumCombo() override;
    void LoadDatabase(const std::string& list) override;

    frmMain& m_form;
    std::unique_ptr<frmScanLog> m_log;
    OggBatches m_oggBatches;
    std::unique_ptr<ScanDriver> m_driver;
};

} // namespace quavernet
