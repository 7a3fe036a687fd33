#include "mainwindow/frmMain.h"

#include "adapters/qt/DialogLanguage.h"
#include "adapters/qt/FileUris.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/Registry.h"
#include "app/TextNumbers.h"
#include "help/HelpKey.h"
#include "mainwindow/CloseGuard.h"
#include "mainwindow/ControlState.h"
#include "mainwindow/ListController.h"
#include "mainwindow/MainCommands.h"
#include "mainwindow/MainMenu.h"
#include "mainwindow/MainPanes.h"
#include "mainwindow/ScanController.h"
#include "mainwindow/TreePane.h"
#include "scanner/CheckReminder.h"
#include "widgets/Pictures.h"
#include "widgets/Twips.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMimeData>

namespace quavernet {

namespace {

constexpr int TitleTimeMs = 50; // Painting takes time away from a scan.
constexpr int AfterLoadMs = 1000;

/// Pixels: the window can be seen and taken hold of. A stored size of nothing would make a program without
/// one.
constexpr QSize LeastShown(120, 80);

void SetComboIndex(QComboBox& combo, std::int32_t stored) {
    combo.setCurrentIndex(ExistingIndex(stored, combo.count()));
}

} // namespace

frmMain::frmMain() {
    setObjectName(QStringLiteral("frmMain"));
    setWindowIcon(Picture("quavernet"));
    setMouseTracking(true);
    setAcceptDrops(true);
    m_menu = new MainMenu(menuBar());
    m_panes = new MainPanes(this);
    setCentralWidget(m_panes);
    m_tree = new TreePane(m_panes->Tree(), *m_menu, m_player);
    m_list = std::make_unique<ListController>(*this, m_player);
    m_scan = std::make_unique<ScanController>(*this);
    m_commands = std::make_unique<MainCommands>(*this, *m_scan);
    connect(&m_panes->Grid(), &GridView::FilesDropped, this,
            [this](const std::vector<std::string>& paths) { m_scan->FilesDropped(DropTarget::Grid, paths); });
    new HelpKey(this);
    m_afterLoadTimer.setParent(this);
    m_afterLoadTimer.setObjectName(QStringLiteral("AfterLoadTimer"));
    m_afterLoadTimer.setSingleShot(true);
    m_titleTimer.setSingleShot(true);
    m_titleTimer.setInterval(TitleTimeMs);
    connect(&m_afterLoadTimer, &QTimer::timeout, this, &frmMain::AfterLoadTimer_Timer);
    connect(&m_titleTimer, &QTimer::timeout, this, &frmMain::ShowTitle);
}

frmMain::~frmMain() = default;

void frmMain::Form_Load() {
    m_list->ClearList();
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
    m_panes->Grid().Model().SetSortArrow(0, true);
    mainModule.SortInterpret = true;
    RestoreGrid(state);
    m_panes->Letters().MarkAll();
    RestoreFilters(state);
    RestoreChecks(state);
    mainModule.ShowInGridMode = false;
    SetControlState(0);
    m_afterLoadTimer.start(AfterLoadMs);
}

void frmMain::PlaceWindow(const WindowState& state) {
    move(ToPixels(state.WindowLeft), ToPixels(state.WindowTop));
    resize(QSize(ToPixels(state.WindowWidth), ToPixels(state.WindowHeight)).expandedTo(LeastShown));
    if (mainModule.ScreenResolution == "800x600") {
        m_panes->PackForSmallScreen();
    }
    m_panes->SetSplitterPos(state.SplitterPos);
}

void frmMain::RestoreGrid(const WindowState& state) {
    SetColumnWidths(state.ColWidth);
    SetGridLines(state.GridLines);
    m_menu->SetChecked("mnuShowGridlines", state.GridLines);
    m_menu->SetChecked("mnuKontextShowGridlines", state.GridLines);
}

void frmMain::RestoreFilters(const WindowState& state) {
    FilterRow& filter = m_panes->Filter();
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
    m_menu->SetChecked("mnuQuickscan", state.QuickScan);
    m_menu->SetChecked("mnuRecursive", state.RecursiveScan);
    m_menu->SetChecked("mnuScanMp3", state.ScanMp3);
    m_menu->SetChecked("mnuScanWav", state.ScanWav);
    m_menu->SetChecked("mnuScanOgg", state.ScanOgg);
    for (const char* name : {"mnump3", "mnuKontextMp3"}) {
        m_menu->SetChecked(name, state.ViewMp3);
    }
    for (const char* name : {"mnuwav", "mnuKontextWav"}) {
        m_menu->SetChecked(name, state.ViewWav);
    }
    for (const char* name : {"mnuogg", "mnuKontextOgg"}) {
        m_menu->SetChecked(name, state.ViewOgg);
    }
    m_menu->SetChecked("mnuOptionsScanLog", state.ScanLog);
    m_menu->SetChecked("mnuOptionsLoadOverSearch", state.LoadOverSearch);
    m_menu->SetChecked("mnuExternalPlayer", state.ExternalPlayer);
    m_menu->SetChecked("mnuAddToPlaylist", state.AddToPlaylist);
    mainModule.LoadOverSearch = state.LoadOverSearch;
    mainModule.ScanLogEnabled = state.ScanLog;
    mainModule.UseExternalPlayer = state.ExternalPlayer;
    mainModule.AlwaysAddToPlaylist = state.AddToPlaylist;
}

void frmMain::LoadStrings() {
    SetMousePointer(11);
    m_list->LoadHeaders();
    SetColumnWidths(LoadColumnWidths());
    const std::string language = Setting("Language", "GER");
    SetDialogLanguage(language);
    m_menu->SetChecked("mnuViewLanguageGER", language == "GER");
    m_menu->SetChecked("mnuViewLanguageENG", language == "ENG");
    mainModule.SuppressComboClick = true;
    m_panes->Filter().FillDriveCombo();
    m_panes->Filter().FillGenreCombo();
    m_panes->Filter().FillAlbumCombo();
    mainModule.SuppressComboClick = false;
    m_menu->LoadStrings();
    m_panes->LoadStrings();
    SetTitle("Quavernet - " + LoadResString(Texts::LastScan) + Setting("LastScan", "-"));
    m_tree->LoadStrings();
    m_list->ShowTotals();
    SetScanningPanel(LoadResString(432));
    SetMousePointer(0);
}

void frmMain::LoadDatabase(const std::string& list) {
    m_list->LoadDatabase(list);
}

void frmMain::LoadTree() {
    m_tree->LoadTree();
}

void frmMain::SetControlState(std::int16_t mode) {
    const GridView& grid = m_panes->Grid();
    for (const ControlSwitch& item :
         ControlState(mode, m_panes->Grid().Selection().Row(), grid.CurrentFormat())) {
        if (QAction* action = m_menu->Item(item.Name)) {
            action->setEnabled(item.Enabled);
        } else if (QAction* button = m_panes->ToolbarButton(item.Name)) {
            button->setEnabled(item.Enabled);
        } else if (auto* control = m_panes->findChild<QWidget*>(ToQString(item.Name))) {
            control->setEnabled(item.Enabled);
        }
    }
}

void frmMain::SetTitle(const std::string& text) {
    m_title = text;
    if (!m_titleTimer.isActive()) {
        ShowTitle();
        m_titleTimer.start();
    }
}

void frmMain::ShowTitle() {
    const QString title = ToQString(m_title);
    if (title != windowTitle()) {
        setWindowTitle(title);
    }
}

void frmMain::SetScanningPanel(const std::string& text) {
    m_panes->Status().SetText(Panel::Scanning, text);
}

void frmMain::SetMousePointer(int pointer) {
    constexpr int Hourglass = 11;
    if (pointer == Hourglass) {
        setCursor(Qt::WaitCursor);
    } else {
        unsetCursor();
    }
}

void frmMain::SetGridLines(bool shown) {
    m_panes->Grid().setShowGrid(shown);
}

void frmMain::SetColumnWidths(const ColumnWidths& widths) {
    for (std::size_t column = 0; column < widths.size(); ++column) {
        m_panes->Grid().setColumnWidth(static_cast<int>(column), ToPixels(widths[column]));
    }
}

WindowState frmMain::CurrentState() const {
    WindowState state;
    state.WindowLeft = ToTwips(x());
    state.WindowTop = ToTwips(y());
    state.WindowWidth = ToTwips(width());
    state.WindowHeight = ToTwips(height());
    state.SplitterPos = m_panes->SplitterPos();
    for (std::size_t column = 0; column < state.ColWidth.size(); ++column) {
        state.ColWidth[column] = ToTwips(m_panes->Grid().columnWidth(static_cast<int>(column)));
    }
    state.GridLines = m_menu->Checked("mnuShowGridlines") && m_menu->Checked("mnuKontextShowGridlines");
    FilterRow& filter = m_panes->Filter();
    state.Drive = filter.cboDrive().currentIndex();
    state.Genre = filter.cboGenre().currentIndex();
    state.Album = filter.cboAlbum().currentIndex();
    state.QuickScan = m_menu->Checked("mnuQuickscan");
    state.RecursiveScan = m_menu->Checked("mnuRecursive");
    state.ScanMp3 = m_menu->Checked("mnuScanMp3");
    state.ScanWav = m_menu->Checked("mnuScanWav");
    state.ScanOgg = m_menu->Checked("mnuScanOgg");
    state.ViewMp3 = m_menu->Checked("mnump3");
    state.ViewWav = m_menu->Checked("mnuwav");
    state.ViewOgg = m_menu->Checked("mnuogg");
    state.ExternalPlayer = m_menu->Checked("mnuExternalPlayer");
    state.AddToPlaylist = m_menu->Checked("mnuAddToPlaylist");
    state.ScanLog = m_menu->Checked("mnuOptionsScanLog");
    state.LoadOverSearch = m_menu->Checked("mnuOptionsLoadOverSearch");
    return state;
}

bool frmMain::Form_QueryUnload() {
    if (!MayCloseMain()) {
        return false;
    }
    if (isMinimized()) {
        showNormal(); // So that real sizes are stored.
    }
    return true;
}

void frmMain::Form_Unload() {
    SaveWindowState(CurrentState());
    FinishMainUnload();
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
    m_panes->Filter().txtSearch().setFocus();
    bool scanWanted = false;
    IgnoreFailure([&] { CheckReminder(scanWanted, [this] { UnloadSplash(); }); });
    if (scanWanted) {
        m_scan->ReminderScan();
    }
}

void frmMain::UnloadSplash() {
    if (auto* splash = findChild<QWidget*>(QStringLiteral("frmSplash"))) {
        splash->close();
    }
}

void frmMain::mouseMoveEvent(QMouseEvent*) {
    m_panes->Letters().ResetLetterColors();
}

void frmMain::wheelEvent(QWheelEvent* event) {
    // Wherever the mouse stands, the wheel moves the list. A movement to the side is no notch of it.
    if (event->angleDelta().y() != 0 || event->angleDelta().x() == 0) {
        m_panes->Grid().ScrollByNotch(event->angleDelta().y());
    }
}

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) {
        event->acceptProposedAction();
    }
}

void frmMain::dropEvent(QDropEvent* event) {
    m_scan->FilesDropped(DropTarget::Window, LocalFiles(*event->mimeData()));
}

} // namespace quavernet
