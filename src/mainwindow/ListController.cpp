#include "mainwindow/ListController.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "mainwindow/MainMenu.h"
#include "mainwindow/MainPanes.h"
#include "mainwindow/frmMain.h"

#include <algorithm>

namespace quavernet {

ListController::ListController(frmMain& form, PlayerWindow& player) : m_form(form), m_player(player) {
    GridView& grid = Grid();
    grid.ShowInScanningPanel = [this](const std::string& text) { SetScanningPanel(text); };
    connect(&grid, &GridView::DoubleClicked, this, &ListController::DoubleClicked);
    connect(&grid, &GridView::EnterPressed, this, &ListController::EnterPressed);
    connect(&grid, &GridView::KontextItemsWanted, this, &ListController::SetKontextItems);
    connect(&grid, &GridView::KontextMenuWanted, this, &ListController::KontextMenu);
    connect(&grid, &GridView::ControlStateChanged, this, [this] { m_form.SetControlState(3); });
    connect(&form.Panes().Filter(), &FilterRow::ReloadWanted, this, [this] { LoadDatabase({}); });
    connect(&form.Panes().Letters(), &LetterRow::LetterChosen, this, [this] { LoadDatabase({}); });
}

GridView& ListController::Grid() const {
    return m_form.Panes().Grid();
}

void ListController::LoadDatabase(const std::string& list) {
    ListResult result = quavernet::LoadDatabase([this] { return ReadFilter(); }, list, *this);
    Grid().SetRows(std::move(result.Rows));
    m_totals = std::move(result.Totals);
    ShowTotals();
    SetProgress(0);
    DisableSelectionCommands();
    m_form.SetControlState(0);
    Grid().setToolTip({});
    SetScanningPanel({});
}

void ListController::ClearList() {
    m_totals.TotalMegabytes = 0;
    Grid().SetRows({});
    if (QAction* plist = m_form.Panes().ToolbarButton("plist")) {
        plist->setEnabled(false);
    }
}

void ListController::DisableSelectionCommands() {
    for (const char* key : {"plist", "konvert"}) {
        if (QAction* button = m_form.Panes().ToolbarButton(key)) {
            button->setEnabled(false);
        }
    }
    for (const char* name :
         {"mnuPlaylist", "mnuDetails", "mnuEditFilename", "mnuEditExchange", "mnuEditDelete"}) {
        if (QAction* item = m_form.Menu().Item(name)) {
            item->setEnabled(false);
        }
    }
}

void ListController::LoadHeaders() {
    // A leading "<" stands for a left-aligned first column.
    QString format = ToQString(LoadResString(384));
    if (format.startsWith(u'<')) {
        format.remove(0, 1);
    }
    Grid().Model().SetHeaders(format.split(u'|'));
}

void ListController::ShowTotals() {
    MainStatusBar& status = m_form.Panes().Status();
    const std::size_t listed = Grid().Model().Rows().Count();
    status.SetText(Panel::Filecount, FileCountText(listed, m_totals.TotalMegabytes));
    status.SetText(Panel::Interprets, InterpretCountText(m_totals.InterpretCount));
    status.SetText(Panel::Titles, TitleCountText(m_totals.TitleCount));
    status.SetText(Panel::Albums, AlbumCountText(m_totals.AlbumCount));
}

void ListController::SetScanningPanel(const std::string& text) {
    m_form.SetScanningPanel(text);
}

void ListController::SetProgress(float value) {
    m_form.Panes().Status().SetProgress(value);
}

float ListController::Progress() const {
    return m_form.Panes().Status().Progress();
}

ListFilter ListController::ReadFilter() const {
    ListFilter filter;
    m_form.Panes().Filter().ReadFilter(filter);
    filter.ViewMp3 = m_form.Menu().Checked("mnump3");
    filter.ViewWav = m_form.Menu().Checked("mnuwav");
    filter.ViewOgg = m_form.Menu().Checked("mnuogg");
    return filter;
}

void ListController::SetMousePointer(int pointer) {
    m_form.SetMousePointer(pointer);
}

void ListController::SetRedraw(bool redraw) {
    Grid().setUpdatesEnabled(redraw);
}

void ListController::SetHeaderPicture(const SortArrow& arrow) {
    Grid().Model().SetSortArrow(arrow.Column, arrow.Picture == "ArrowUp");
}

void ListController::DoubleClicked(std::int32_t mouseCol, std::int32_t mouseRow) {
    grdMp3_DblClick(mouseCol, mouseRow, Grid().Selection(), m_player, *this);
}

void ListController::EnterPressed() {
    // Several rows go to the player together; there is no command for it in the menus yet either.
    if (GridEnter() == GridEnterAction::DblClick) {
        constexpr std::int32_t FirstRow = 1; // Without a current row Enter opens nothing; it never sorts.
        DoubleClicked(0, std::max(Grid().Selection().Row(), FirstRow));
    }
}

void ListController::SetKontextItems(int mode) {
    for (const KontextItem& entry : KontextItems(mode)) {
        if (QAction* item = m_form.Menu().Item(entry.Name)) {
            item->setEnabled(entry.Enabled);
        }
    }
}

void ListController::KontextMenu(const QPoint& globalPosition) {
    m_form.Menu().Popup("mnuKontext")->popup(globalPosition);
}

} // namespace quavernet
