#include "mainwindow/MainViews.h"

#include "browser/FilterRow.h"
#include "browser/ListController.h"
#include "tree/TreePane.h"

#include <utility>

namespace quavernet {

MainViews::MainViews(ListController& list, FilterRow& filter, TreePane& tree, const Controls& controls,
                     SwitchControls switchControls)
    : m_list(list), m_filter(filter), m_tree(tree), m_controls(controls),
      m_switchControls(std::move(switchControls)) {}

void MainViews::LoadDatabase(const std::string& list) {
    m_list.LoadDatabase(list);
}

void MainViews::LoadTree() {
    m_tree.LoadTree();
}

ScanOptions MainViews::Options() const {
    ScanOptions options;
    options.Recursive = m_controls.Checked("mnuRecursive");
    options.QuickScan = m_controls.Checked("mnuQuickscan");
    options.ScanMp3 = m_controls.Checked("mnuScanMp3");
    options.ScanWav = m_controls.Checked("mnuScanWav");
    options.ScanOgg = m_controls.Checked("mnuScanOgg");
    return options;
}

void MainViews::SetControlState(ControlMode mode) {
    m_switchControls(mode);
}

void MainViews::ClearList() {
    m_list.ClearList();
}

void MainViews::FillDriveCombo() {
    m_filter.FillDriveCombo();
}

void MainViews::FillAlbumCombo() {
    m_filter.FillAlbumCombo();
}

} // namespace quavernet
