#include "browser/ListController.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/MayAct.h"
#include "app/ScopedValue.h"
#include "app/TextNumbers.h"
#include "browser/FilterRow.h"
#include "browser/GridView.h"
#include "browser/LetterRow.h"
#include "browser/LoadDatabase.h"
#include "widgets/MenuEnd.h"

namespace quavernet {

namespace {

bool Filters(const ListFilter& filter) {
    return mainModule.LetterFilter != "All" || !SearchClause(filter).empty() ||
           !ComboClauses(filter).empty() || !(filter.ViewMp3 && filter.ViewOgg && filter.ViewWav);
}

// In a library without a file no search finds any.
EmptyForm FormBeforeALoad() {
    if (!mainModule.LoadOverSearch) {
        return EmptyForm::None;
    }
    std::int64_t files = 1; // A library that can't be asked has some.
    IgnoreFailure([&] { files = CountFiles(); });
    return files == 0 ? EmptyForm::NoLibrary : EmptyForm::SearchFirst;
}

// The formats that a filter leaves out, by the names that they have in the menu.
QString LeftOut(const ListFilter& filter) {
    QStringList names;
    for (const auto& [shown, text] :
         {std::pair{filter.ViewMp3, 214}, std::pair{filter.ViewOgg, 215}, std::pair{filter.ViewWav, 216}}) {
        if (!shown) {
            names << ToQString(LoadResString(text));
        }
    }
    return names.join(QStringLiteral(", "));
}

} // namespace

ListController::ListController(const ListPane& pane, LongWork& work, Controls& controls,
                               SwitchControls switchControls, PlayerWindow& player)
    : m_pane(pane), m_work(work), m_controls(controls), m_switchControls(std::move(switchControls)),
      m_player(player), m_hint(*new EmptyListHint(pane.Grid)) {
    GridView& grid = m_pane.Grid;
    grid.ShowInScanningPanel = [this](const std::string& text) { m_work.SetPanel(Panel::Scanning, text); };
    connect(&grid, &GridView::DoubleClicked, this, &ListController::DoubleClicked);
    connect(&grid, &GridView::EnterPressed, this, &ListController::EnterPressed);
    connect(&grid, &GridView::KontextItemsWanted, this, &ListController::SetKontextItems);
    connect(&grid, &GridView::KontextMenuWanted, this, &ListController::KontextMenu);
    connect(&grid, &GridView::ControlStateChanged, this, &ListController::SelectionChanged);
    connect(&m_pane.Filter, &FilterRow::ReloadWanted, this, &ListController::Reload);
    connect(&m_pane.Letters, &LetterRow::LetterChosen, this, &ListController::Reload);
    connect(&m_pane.Letters, &LetterRow::LiftWanted, this, &ListController::LiftFilters);
    connect(&m_hint, &EmptyListHint::LiftWanted, this, &ListController::LiftFilters);
    connect(&m_hint, &EmptyListHint::ScanWanted, this, &ListController::ScanWanted);
}

void ListController::Reload() {
    LoadDatabase({});
}

void ListController::LoadDatabase(const std::string& list) {
    // Inside the events of a load that shows given files an ordinary one may come: it has no list.
    const ScopedValue listMode(mainModule.ShowInGridMode, mainModule.ShowInGridMode && !list.empty());
    const ScopedValue chartMode(mainModule.ShowChartMode, mainModule.ShowChartMode && !list.empty());
    ListResult result = quavernet::LoadDatabase([this] { return ReadFilterInForce(); }, list, m_work,
                                                [this] { EmptyGrid(); });
    m_pane.Grid.SetRows(std::move(result.Rows));
    m_totals = std::move(result.Totals);
    ShowInForce(true);
    ShowTotals();
    m_work.SetProgress(0);
    m_switchControls(ControlMode::ListLoaded);
    // A scan keeps its state to its end: it must stay possible to cancel it.
    m_switchControls(mainModule.ScanRunning ? ControlMode::ScanRunning : ControlMode::Idle);
    m_pane.Grid.setToolTip({});
    m_work.SetPanel(Panel::Scanning, {});
}

void ListController::ClearList() {
    EmptyGrid();
    m_inForce = ListFilter();
    ShowInForce(false);
    ShowHint(false);
}

void ListController::EmptyGrid() {
    m_totals.TotalMegabytes = 0;
    m_pane.Grid.SetRows({});
    m_controls.SetEnabled("plist", false);
}

void ListController::LoadHeaders() {
    // A leading "<" stands for a left-aligned first column.
    QString format = ToQString(LoadResString(384));
    if (format.startsWith(u'<')) {
        format.remove(0, 1);
    }
    m_pane.Grid.Model().SetHeaders(format.split(u'|'));
    m_pane.Grid.SetHeadToolTip(ToQString(LoadResString(Texts::DoubleClickSorts)));
}

void ListController::ShowTotals() {
    const std::size_t listed = m_pane.Grid.Model().Rows().Count();
    m_work.SetPanel(Panel::Filecount, FileCountText(listed, m_totals.TotalMegabytes));
    m_work.SetPanel(Panel::Interprets, InterpretCountText(m_totals.InterpretCount));
    m_work.SetPanel(Panel::Titles, TitleCountText(m_totals.TitleCount));
    m_work.SetPanel(Panel::Albums, AlbumCountText(m_totals.AlbumCount));
}

ListFilter ListController::ReadFilter() const {
    ListFilter filter;
    m_pane.Filter.ReadFilter(filter);
    filter.ViewMp3 = m_controls.Checked("mnump3");
    filter.ViewWav = m_controls.Checked("mnuwav");
    filter.ViewOgg = m_controls.Checked("mnuogg");
    return filter;
}

// A list of given files is filtered by letter and format alone.
ListFilter ListController::ReadFilterInForce() {
    ListFilter filter = ReadFilter();
    m_inForce = filter;
    if (mainModule.ShowInGridMode || mainModule.ShowChartMode) {
        m_inForce.SearchText.clear();
        m_inForce.DriveId = m_inForce.GenreId = m_inForce.AlbumId = std::nullopt;
    }
    return filter;
}

void ListController::LoadStrings() {
    m_hint.LoadStrings();
    ShowInForce(m_loaded);
}

void ListController::ShowInForce(bool loaded) {
    m_loaded = loaded;
    m_pane.Filter.ShowInForce(m_inForce);
    m_pane.Letters.ShowLift(loaded && Filters(m_inForce), LeftOut(m_inForce));
}

void ListController::ShowHint(bool idle) {
    EmptyForm form = EmptyForm::None;
    if (idle && m_pane.Grid.Model().Rows().Count() == 0) {
        form = !m_loaded                    ? FormBeforeALoad()
               : m_totals.LibraryFiles == 0 ? EmptyForm::NoLibrary
                                            : EmptyForm::NothingFound;
    }
    m_hint.Show(form, SearchClause(m_inForce).empty() ? QString() : ToLine(m_inForce.SearchText));
}

// All at once and with one load.
void ListController::LiftFilters() {
    if (!MayAct()) {
        return;
    }
    m_pane.Filter.Lift();
    m_pane.Letters.MarkAll();
    mainModule.LetterFilter = "All";
    for (const char* mark :
         {"mnump3", "mnuKontextMp3", "mnuogg", "mnuKontextOgg", "mnuwav", "mnuKontextWav"}) {
        m_controls.SetChecked(mark, true);
    }
    Reload();
}

void ListController::SetRedraw(bool redraw) {
    m_pane.Grid.setUpdatesEnabled(redraw);
}

void ListController::SetHeaderPicture(const SortArrow& arrow) {
    m_pane.Grid.Model().SetSortArrow(arrow.Column, arrow.Picture == "ArrowUp");
}

void ListController::DoubleClicked(std::int32_t mouseCol, std::int32_t mouseRow) {
    if (MayAct()) {
        // What plays lets events run: a second one in them would start the row again and count it twice.
        const ScopedValue alone(mainModule.ActsAlone, mouseRow > 0);
        grdMp3_DblClick(mouseCol, mouseRow, m_pane.Grid.Selection(), m_player, *this, m_work);
    }
}

void ListController::EnterPressed() {
    if (!MayAct()) {
        return;
    }
    const ScopedValue alone(mainModule.ActsAlone, true); // As at a double click; a held key comes again.
    switch (GridEnter()) {
    case GridEnterAction::PlayCurrentRow:
        PlayCurrentRow(m_pane.Grid.Selection(), m_player, m_work);
        break;
    case GridEnterAction::PlaySelectedFiles:
        emit PlaySelectedFilesWanted();
        break;
    case GridEnterAction::None:
        break;
    }
}

void ListController::SelectionChanged() {
    if (!mainModule.ScanRunning) {
        m_switchControls(ControlMode::SelectionChanged);
    }
}

void ListController::SetKontextItems(int mode) {
    for (const KontextItem& entry : KontextItems(mode)) {
        m_controls.SetEnabled(entry.Name, entry.Enabled);
    }
}

void ListController::KontextMenu(const QPoint& globalPosition) {
    if (MayAct()) {
        m_controls.PopUp("mnuKontext", {globalPosition.x(), globalPosition.y()});
        // Or the next drop on the tree would be taken for one of the list.
        WhenMenuCloses(m_pane.Grid, [this] { m_pane.Grid.Selection().MouseUp(); });
    }
}

} // namespace quavernet
