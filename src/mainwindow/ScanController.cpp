#include "mainwindow/ScanController.h"

#include "app/MainModule.h"
#include "mainwindow/ListController.h"
#include "mainwindow/MainMenu.h"
#include "mainwindow/MainPanes.h"
#include "mainwindow/frmMain.h"
#include "scanner/frmScanLog.h"

#include <QPointer>

namespace quavernet {

namespace {

/// Panels count from 1 in the order in which they stand.
quavernet::Panel PanelOf(int panel) {
    return static_cast<quavernet::Panel>(panel - 1);
}

} // namespace

ScanController::ScanController(frmMain& form)
    : m_form(form), m_log(std::make_unique<frmScanLog>(&form)),
      m_driver(std::make_unique<ScanDriver>(*this, *m_log, &m_oggBatches)) {}

ScanController::~ScanController() = default;

void ScanController::mnuScan_Click() {
    // A cancelled scan gives the button back before its walk has noticed: no second scan inside the first.
    if (mainModule.ScanRunning) {
        return;
    }
    const QPointer<QWidget> focus = m_form.focusWidget();
    mainModule.ScanRunning = true;
    m_driver->StartScan();
    mainModule.ScanRunning = false;
    // A control that is switched off loses the keyboard to its neighbour; it gets it back.
    if (focus && focus->isEnabled()) {
        focus->setFocus();
    }
}

void ScanController::FilesDropped(DropTarget target, const std::vector<std::string>& paths) {
    AddDroppedFiles(target, paths, *m_driver, *this);
}

void ScanController::ReminderScan() {
    if (mainModule.ScanRunning) {
        return;
    }
    IgnoreFailure([this] { mnuScan_Click(); });
    mainModule.ScanRunning = false; // Also after a failure: a window that believes in a scan can't be closed.
}

void ScanController::Cancel() {
    m_driver->Cancel();
    m_form.SetScanningPanel({});
    m_form.Panes().ToolbarButton("scan")->setEnabled(true);
    m_form.Panes().ToolbarButton("cancel")->setEnabled(false);
}

ScanOptions ScanController::Options() const {
    const MainMenu& menu = m_form.Menu();
    ScanOptions options;
    options.Recursive = menu.Checked("mnuRecursive");
    options.QuickScan = menu.Checked("mnuQuickscan");
    options.ScanMp3 = menu.Checked("mnuScanMp3");
    options.ScanWav = menu.Checked("mnuScanWav");
    options.ScanOgg = menu.Checked("mnuScanOgg");
    return options;
}

void ScanController::SetPanel(int panel, const std::string& text) {
    m_form.Panes().Status().SetText(PanelOf(panel), text);
}

std::string ScanController::Panel(int panel) const {
    return m_form.Panes().Status().Text(PanelOf(panel));
}

void ScanController::SetTitle(const std::string& text) {
    m_form.SetTitle(text);
}

void ScanController::SetMousePointer(int pointer) {
    m_form.SetMousePointer(pointer);
}

void ScanController::SetProgress(float value) {
    m_form.Panes().Status().SetProgress(value);
}

float ScanController::Progress() const {
    return m_form.Panes().Status().Progress();
}

void ScanController::SetControlState(int mode) {
    m_form.SetControlState(static_cast<std::int16_t>(mode));
}

void ScanController::ClearList() {
    m_form.List().ClearList();
}

void ScanController::FillDriveCombo() {
    m_form.Panes().Filter().FillDriveCombo();
}

void ScanController::FillAlbumCombo() {
    m_form.Panes().Filter().FillAlbumCombo();
}

void ScanController::LoadDatabase(const std::string& list) {
    m_form.LoadDatabase(list);
}

} // namespace quavernet
