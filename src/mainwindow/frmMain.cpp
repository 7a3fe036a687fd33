#include "mainwindow/frmMain.h"

#include "adapters/qt/DialogLanguage.h"
#include "adapters/qt/FileUris.h"
#include "app/IdleTitle.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/Registry.h"
#include "app/TextNumbers.h"
#include "help/HelpKey.h"
#include "mainwindow/CloseGuard.h"
#include "mainwindow/ControlState.h"
#include "mainwindow/MainParts.h"
#include "scanner/CheckReminder.h"
#include "widgets/DragFiles.h"
#include "widgets/Pictures.h"
#include "widgets/Twips.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMimeData>

#include <algorithm>

namespace quavernet {

namespace {

constexpr int AfterLoadMs = 1000;
constexpr int CloseAgainMs = 100;

/// Pixels: the window can be seen and taken hold of. A stored size of nothing would make a program without
/// one.
constexpr QSize LeastShown(120, 80);

void SetComboIndex(QComboBox& combo, std::int32_t stored) {
    combo.setCurrentIndex(ExistingIndex(stored, combo.count()));
}

} // namespace

frmMain::frmMain(PlayerWindow& player) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowIcon(Picture("quavernet"));
    setMouseTracking(true);
    setAcceptDrops(true);
    m_parts = std::make_unique<MainParts>(
        *this, player, [this](ControlMode mode) { SetControlState(mode); }, [this] { LoadStrings(); });
    new HelpKey(this);
    m_afterLoadTimer.setParent(this);
    m_afterLoadTimer.setObjectName(QStringLiteral("AfterLoadTimer"));
    m_afterLoadTimer.setSingleShot(true);
    connect(&m_afterLoadTimer, &QTimer::timeout, this, &frmMain::AfterLoadTimer_Timer);
}

frmMain::~frmMain() = default;

MainMenu& frmMain::Menu() {
    return m_parts->Menu;
}
MainPanes& frmMain::Panes() {
    return m_parts->Panes;
}
TreePane& frmMain::Tree() {
    return m_parts->Tree;
}

void frmMain::Form_Load() {
    m_parts->List.ClearList();
    // During the start the combos stay silent until the whole sequence is through.
    const bool starting = mainModule.SuppressComboClick;
    LoadStrings();
    mainModule.SuppressComboClick = starting;
    mainModule.MainOpen = true;
    const WindowState state = LoadWindowState(mainModule.ScreenResolution);
    PlaceWindow(state);
    mainModule.SelectedRows.Clear();
    mainModule.TreeNodeData.Clear();
    mainModule.LetterFilter = "All";
    mainModule.SortDirection = "ASC";
    m_parts->Panes.Grid().Model().SetSortArrow(0, true);
    mainModule.SortInterpret = true;
    RestoreGrid(state);
    m_parts->Panes.Letters().MarkAll();
    RestoreFilters(state);
    RestoreChecks(state);
    mainModule.ShowInGridMode = false;
    SetControlState(ControlMode::Idle);
    m_afterLoadTimer.start(AfterLoadMs);
}

void frmMain::PlaceWindow(const WindowState& state) {
    move(ToPixels(state.WindowLeft), ToPixels(state.WindowTop));
    resize(QSize(ToPixels(state.WindowWidth), ToPixels(state.WindowHeight)).expandedTo(LeastShown));
    if (mainModule.ScreenResolution == "800x600") {
        m_parts->Panes.Placement().PackForSmallScreen();
    }
    m_parts->Panes.Placement().SetSplitterPos(state.SplitterPos);
    LimitShrinking();
}

// From here on nobody makes the window narrower than the search needs. A stored width is taken as it is.
void frmMain::LimitShrinking() {
    setMinimumWidth(std::min(width(), ToPixels(m_parts->Panes.Placement().LeastUsefulWidth())));
}

void frmMain::RestoreGrid(const WindowState& state) {
    SetColumnWidths(state.ColWidth);
    m_parts->Panes.Grid().setShowGrid(state.GridLines);
    m_parts->Named.SetChecked("mnuShowGridlines", state.GridLines);
    m_parts->Named.SetChecked("mnuKontextShowGridlines", state.GridLines);
}

void frmMain::RestoreFilters(const WindowState& state) {
    FilterRow& filter = m_parts->Panes.Filter();
    SetComboIndex(filter.cboDrive(), state.Drive);
    SetComboIndex(filter.cboGenre(), state.Genre);
    SetComboIndex(filter.cboAlbum(), state.Album);
    // Neither box is cleared here: by design they start so, and a stored "0" leaves them.
    if (state.SearchTitle) {
        filter.chkTitle().setChecked(true);
    }
    if (state.SearchInterpret) {
        filter.chkInterpret().setChecked(true);
    }
}

void frmMain::RestoreChecks(const WindowState& state) {
    m_parts->Named.SetChecked("mnuQuickscan", state.QuickScan);
    m_parts->Named.SetChecked("mnuRecursive", state.RecursiveScan);
    m_parts->Named.SetChecked("mnuScanMp3", state.ScanMp3);
    m_parts->Named.SetChecked("mnuScanWav", state.ScanWav);
    m_parts->Named.SetChecked("mnuScanOgg", state.ScanOgg);
    for (const char* name : {"mnump3", "mnuKontextMp3"}) {
        m_parts->Named.SetChecked(name, state.ViewMp3);
    }
    for (const char* name : {"mnuwav", "mnuKontextWav"}) {
        m_parts->Named.SetChecked(name, state.ViewWav);
    }
    for (const char* name : {"mnuogg", "mnuKontextOgg"}) {
        m_parts->Named.SetChecked(name, state.ViewOgg);
    }
    m_parts->Named.SetChecked("mnuOptionsScanLog", state.ScanLog);
    m_parts->Named.SetChecked("mnuOptionsLoadOverSearch", state.LoadOverSearch);
    m_parts->Named.SetChecked("mnuExternalPlayer", state.ExternalPlayer);
    m_parts->Named.SetChecked("mnuAddToPlaylist", state.AddToPlaylist);
    mainModule.LoadOverSearch = state.LoadOverSearch;
    mainModule.ScanLogEnabled = state.ScanLog;
    mainModule.UseExternalPlayer = state.ExternalPlayer;
    mainModule.AlwaysAddToPlaylist = state.AddToPlaylist;
}

void frmMain::LoadStrings() {
    LongWork& work = m_parts->Work;
    work.SetMousePointer(MousePointer::Hourglass);
    m_parts->List.LoadHeaders();
    SetColumnWidths(LoadColumnWidths());
    const std::string language = Setting("Language", "GER");
    SetDialogLanguage(language);
    m_parts->Named.SetChecked("mnuViewLanguageGER", language == "GER");
    m_parts->Named.SetChecked("mnuViewLanguageENG", language == "ENG");
    mainModule.SuppressComboClick = true;
    m_parts->Panes.Filter().FillDriveCombo();
    m_parts->Panes.Filter().FillGenreCombo();
    m_parts->Panes.Filter().FillAlbumCombo();
    mainModule.SuppressComboClick = false;
    m_parts->Menu.LoadStrings();
    m_parts->Panes.LoadStrings();
    work.SetTitle(IdleTitle());
    m_parts->Tree.LoadStrings();
    m_parts->List.ShowTotals();
    m_parts->List.LoadStrings();
    work.SetPanel(Panel::Scanning, LoadResString(Texts::Ready));
    if (isVisible()) {
        LimitShrinking(); // The captions of the new language have other widths.
    }
    work.SetMousePointer(MousePointer::Default);
}

void frmMain::SetControlState(ControlMode mode) {
    const GridView& grid = m_parts->Panes.Grid();
    for (const ControlSwitch& item : ControlState(mode, grid.Selection().Row(), grid.CurrentFormat())) {
        m_parts->Named.SetEnabled(item.Name, item.Enabled);
    }
    if (mode == ControlMode::Idle || mode == ControlMode::ScanRunning) {
        m_parts->List.ShowHint(mode == ControlMode::Idle);
    }
}

void frmMain::SetColumnWidths(const ColumnWidths& widths) {
    for (std::size_t column = 0; column < widths.size(); ++column) {
        m_parts->Panes.Grid().setColumnWidth(static_cast<int>(column), ToPixels(widths[column]));
    }
}

WindowState frmMain::CurrentState() const {
    WindowState state;
    state.WindowLeft = ToTwips(x());
    state.WindowTop = ToTwips(y());
    state.WindowWidth = ToTwips(width());
    state.WindowHeight = ToTwips(height());
    state.SplitterPos = m_parts->Panes.Placement().SplitterPos();
    for (std::size_t column = 0; column < state.ColWidth.size(); ++column) {
        state.ColWidth[column] = ToTwips(m_parts->Panes.Grid().columnWidth(static_cast<int>(column)));
    }
    state.GridLines =
        m_parts->Named.Checked("mnuShowGridlines") && m_parts->Named.Checked("mnuKontextShowGridlines");
    FilterRow& filter = m_parts->Panes.Filter();
    state.Drive = filter.cboDrive().currentIndex();
    state.Genre = filter.cboGenre().currentIndex();
    state.Album = filter.cboAlbum().currentIndex();
    state.QuickScan = m_parts->Named.Checked("mnuQuickscan");
    state.RecursiveScan = m_parts->Named.Checked("mnuRecursive");
    state.ScanMp3 = m_parts->Named.Checked("mnuScanMp3");
    state.ScanWav = m_parts->Named.Checked("mnuScanWav");
    state.ScanOgg = m_parts->Named.Checked("mnuScanOgg");
    state.ViewMp3 = m_parts->Named.Checked("mnump3");
    state.ViewWav = m_parts->Named.Checked("mnuwav");
    state.ViewOgg = m_parts->Named.Checked("mnuogg");
    state.ExternalPlayer = m_parts->Named.Checked("mnuExternalPlayer");
    state.AddToPlaylist = m_parts->Named.Checked("mnuAddToPlaylist");
    state.ScanLog = m_parts->Named.Checked("mnuOptionsScanLog");
    state.LoadOverSearch = m_parts->Named.Checked("mnuOptionsLoadOverSearch");
    return state;
}

bool frmMain::Form_QueryUnload() {
    const CloseAnswer answer = QueryCloseMain();
    if (answer == CloseAnswer::Later) {
        QTimer::singleShot(CloseAgainMs, this, &QWidget::close);
    }
    if (answer != CloseAnswer::Close) {
        return false;
    }
    if (isMinimized()) {
        showNormal(); // So that real sizes are stored.
    }
    return true;
}

void frmMain::Form_Unload() {
    m_afterLoadTimer.stop(); // The player may go on without the window.
    StoreState();
    FinishMainUnload();
}

void frmMain::StoreState() const {
    SaveWindowState(CurrentState());
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (!Form_QueryUnload()) {
        event->ignore();
        return;
    }
    Form_Unload();
    event->accept();
}

void frmMain::AfterLoadTimer_Timer() {
    if (mainModule.ActsAlone || mainModule.TreeLoading) {
        m_afterLoadTimer.start(AfterLoadMs); // The reminder waits: its scan may not come into these.
        return;
    }
    m_parts->Panes.Filter().txtSearch().setFocus();
    bool scanWanted = false;
    IgnoreFailure([&] { CheckReminder(scanWanted, [this] { UnloadSplash(); }); });
    if (scanWanted) {
        m_parts->Scan.ReminderScan();
    }
}

void frmMain::UnloadSplash() {
    if (auto* splash = findChild<QWidget*>(QStringLiteral("frmSplash"))) {
        splash->close();
    }
}

void frmMain::mouseMoveEvent(QMouseEvent*) {
    m_parts->Panes.Letters().ResetLetterColors();
}

void frmMain::wheelEvent(QWheelEvent* event) {
    // Wherever the mouse is, the wheel moves the list. A movement to the side is no notch of it.
    if (event->angleDelta().y() != 0 || event->angleDelta().x() == 0) {
        m_parts->Panes.Grid().ScrollByNotch(event->angleDelta().y());
    }
}

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    (void)AnswerDrag(*event, !LocalFiles(*event->mimeData()).empty());
}

void frmMain::dropEvent(QDropEvent* event) {
    const std::vector<std::string> paths = LocalFiles(*event->mimeData());
    if (AnswerDrag(*event, !paths.empty())) {
        m_parts->Scan.FilesDropped(DropTarget::Window, paths);
    }
}

} // namespace quavernet
