#include "mainwindow/ListController.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "browser/GridCommands.h"
#include "mainwindow/MainMenu.h"
#include "mainwindow/MainPanes.h"
#include "mainwindow/frmMain.h"
#include "platform/RuntimeError.h"
#include "platform/qt/QtText.h"

#include <QHeaderView>

namespace quavernet {

ListController::ListController(frmMain& form) : m_form(form) {
    GridView& grid = form.Panes().Grid();
    grid.ShowInScanningPanel = [this](const std::string& text) { SetScanningPanel(text); };
    connect(&grid, &GridView::HeaderDoubleClicked, this, &ListController::HeaderDoubleClicked);
    connect(&grid, &GridView::RowDoubleClicked, this, &ListController::RowDoubleClicked);
    connect(&grid, &GridView::EnterPressed, this, &ListController::EnterPressed);
    connect(&grid, &GridView::KontextMenuWanted, this, &ListController::KontextMenu);
    connect(&grid, &GridView::ControlStateChanged, this, [this] { m_form.SetControlState(3); });
    connect(&form.Panes().Filter(), &FilterRow::ReloadWanted, this, [this] { LoadDatabase({}); });
    connect(&form.Panes().Letters(), &LetterRow::LetterChosen, this, [this] { LoadDatabase({}); });
}

void ListController::LoadDatabase(const std::string& list) {
    ListResult result = quavernet::LoadDatabase([this] { return ReadFilter(); }, list, *this);
    m_form.Panes().Grid().SetRows(std::move(result.Rows));
    m_totals = std::move(result.Totals);
    ShowTotals();
    SetProgress(0);
    DisableSelectionCommands();
    m_form.SetControlState(0);
    SetScanningPanel({});
}

void ListController::ClearList() {
    m_totals.TotalMegabytes = 0;
    m_form.Panes().Grid().SetRows({});
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
    m_form.Panes().Grid().Model().SetHeaders(format.split(u'|'));
}

void ListController::ShowTotals() {
    MainStatusBar& status = m_form.Panes().Status();
    const std::size_t listed = m_form.Panes().Grid().Model().Rows().Count();
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

void ListController::HeaderDoubleClicked(int column) {
    m_form.SetMousePointer(11);
    try {
        SortByColumn(column);
        m_form.Panes().Grid().Model().SetSortArrow(column, mainModule.SortDirection == "ASC");
        LoadDatabase({});
    } catch (const RuntimeError&) {
        // A double click that fails ends in silence and gives the pointer back.
    }
    m_form.SetMousePointer(0);
}

void ListController::RowDoubleClicked(std::int32_t row) {
    if (!mainModule.UseExternalPlayer || row < 1) {
        return;
    }
    m_form.SetMousePointer(11);
    PlayRowExternally(row, m_form.Panes().Grid().RowData(row));
    m_form.SetMousePointer(0);
}

void ListController::EnterPressed() {
    if (mainModule.SelectedRows.Count() == 1) {
        RowDoubleClicked(m_form.Panes().Grid().Selection().Row());
    }
}

void ListController::KontextMenu(const QPoint& globalPosition) {
    m_form.Menu().Popup("mnuKontext")->popup(globalPosition);
}

} // namespace quavernet
