// List and tree of the main window as the logic sees them: what is rebuilt after a change of the library, and
// what a scan asks of the window.
#pragma once

#include "app/Controls.h"
#include "app/LibraryViews.h"
#include "scanner/ScanView.h"

namespace quavernet {

class FilterRow;
class ListController;
class TreePane;

class MainViews : public LibraryViews, public ScanView {
public:
    MainViews(ListController& list, FilterRow& filter, TreePane& tree, const Controls& controls,
              SwitchControls switchControls);

    void LoadDatabase(const std::string& list) override;
    void LoadTree() override;
    ScanOptions Options() const override;
    void SetControlState(ControlMode mode) override;
    void ClearList() override;
    void FillDriveCombo() override;
    void FillAlbumCombo() override;

private:
    ListController& m_list;
    FilterRow& m_filter;
    TreePane& m_tree;
    const Controls& m_controls;
    SwitchControls m_switchControls;
};

} // namespace quavernet
