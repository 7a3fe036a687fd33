#include "mainwindow/frmMain.h"

#include "adapters/qt/DialogLanguage.h"
#include "app/IdleTitle.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/Registry.h"
#include "app/TextNumbers.h"
#include "help/HelpKey.h"
#include "mainwindow/CloseGuard.h"
#include "mainwindow/ControlState.h"
#include "mainwindow/MainParts.h"
#include "mainwindow/MenuKeys.h"
#include "scanner/CheckReminder.h"
#include "widgets/Pictures.h"
#include "widgets/ToldPlaces.h"
#include "widgets/Twips.h"
#include "widgets/WindowFrame.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>

#include <algorithm>

namespace quavernet {

namespace {

constexpr int AfterLoadMs = 1000;
constexpr int CloseAgainMs = 100;

/// Pixels: the window can be seen and taken hold of. A stored size of nothing would make a program without
/// one.
constexpr QSize LeastShown(120, 80);

/// After the last move: frame, place and state of the window belong together by then.
constexpr int FrameKnownMs = 200;

void SetComboIndex(QComboBox& combo, std::int32_t stored) {
    combo.setCurrentIndex(ExistingIndex(stored, combo.count()));
}

} // namespace

frmMain::frmMain(PlayerWindow& player) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowIcon(Picture("quavernet"));
    setMouseTracking(true);
    setAttribute(Qt::WA_AlwaysShowToolTips); // Also while the scan log is in front.
    m_parts = std::make_unique<MainParts>(
        *this, player, [this](ControlMode mode) { SetControlState(mode); }, [this] { LoadStrings(); });
    new HelpKey(this);
    new MenuKeys(*this, m_parts->Menu);
    m_afterLoadTimer.setParent(this);
    m_afterLoadTimer.setObjectName(QStringLiteral("AfterLoadTimer"));
    m_afterLoadTimer.setSingleShot(true);
    connect(&m_parts->Panes, &MainPanes::FontChanged, this, &frmMain::FollowFont);
    m_frameTimer.setParent(this);
    m_frameTimer.setSingleShot(true);
    m_frameTimer.setInterval(FrameKnownMs);
    connect(&m_frameTimer, &QTimer::timeout, this, &frmMain::NoteFrame);
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
    m_loaded = state;
    const std::int32_t left = state.Maximised ? state.NormalLeft : state.WindowLeft;
    const std::int32_t top = state.Maximised ? state.NormalTop : state.WindowTop;
    const std::int32_t width = state.Maximised ? state.NormalWidth : state.WindowWidth;
    const std::int32_t height = state.Maximised ? state.NormalHeight : state.WindowHeight;
    move(ToPixels(left), ToPixels(top));
    // A larger font needs a larger window, but none that ends off the screen; what is stored is not cut.
    const double scale = m_parts->Panes.Placement().Scale();
    const QSize stored(ToPixels(width), ToPixels(height));
    const QSize grown(ToPixels(width * scale), ToPixels(height * scale));
    const QRect available = screen()->availableGeometry();
    const QRect free(PlacesAreTold() ? pos() : available.topLeft(),
                     available.bottomRight() - QPoint(WindowFrame.width(), WindowFrame.height()));
    m_placedSize = grown.boundedTo(free.size().expandedTo(stored));
    resize(m_placedSize.expandedTo(LeastShown));
    if (mainModule.ScreenResolution == "800x600") {
        m_parts->Panes.Placement().PackForSmallScreen();
    }
    m_parts->Panes.Placement().SetSplitterPos(state.SplitterPos);
    LimitShrinking();
    if (state.Maximised) {
        setWindowState(windowState() | Qt::WindowMaximized);
    }
}

// From here on nobody makes the window narrower than the search needs. A stored width is taken as it is.
void frmMain::LimitShrinking() {
    m_leastUseful = m_parts->Panes.Placement().LeastUsefulPixels();
    setMinimumWidth(std::min(width(), m_leastUseful));
}

// A window that was wide enough for the search stays so, as far as its screen goes.
void frmMain::FollowFont() {
    if (!isVisible()) {
        return;
    }
    SetColumnWidths(ReadColumnWidths());
    const int least = m_parts->Panes.Placement().LeastUsefulPixels();
    if (minimumWidth() >= m_leastUseful) {
        const int room = screen()->availableGeometry().width() - WindowFrame.width();
        setMinimumWidth(std::min(std::max(width(), room), least));
    } else {
        setMinimumWidth(std::min(width(), least));
    }
    m_leastUseful = least;
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

// A width that nobody has chosen gets a tenth more than its twips: for the padding of the cells and the arrow
// in the head.
int frmMain::ColumnPixels(std::size_t column, std::int32_t twips) const {
    constexpr double RoomAroundText = 1.1;
    const bool isUsual = twips == WindowState().ColWidth[column];
    return ToPixels(twips * m_columnScale * (isUsual ? RoomAroundText : 1.0));
}

void frmMain::SetColumnWidths(const ColumnWidths& widths) {
    m_loaded.ColWidth = widths;
    m_columnScale = m_parts->Panes.Placement().Scale();
    for (std::size_t column = 0; column < widths.size(); ++column) {
        m_parts->Panes.Grid().setColumnWidth(static_cast<int>(column), ColumnPixels(column, widths[column]));
    }
}

ColumnWidths frmMain::ReadColumnWidths() const {
    ColumnWidths widths = m_loaded.ColWidth;
    for (std::size_t column = 0; column < widths.size(); ++column) {
        const int width = m_parts->Panes.Grid().columnWidth(static_cast<int>(column));
        if (width != ColumnPixels(column, widths[column])) {
            widths[column] = ToTwips(width, m_columnScale);
        }
    }
    return widths;
}

// Sizes that nobody has changed are stored as they were, whatever pixels they have come to; so is a place
// that nobody tells.
void frmMain::ReadPlace(WindowState& state) const {
    const double scale = m_parts->Panes.Placement().Scale();
    state.Maximised = isMaximized();
    state.WindowLeft = ToTwips(x());
    state.WindowTop = ToTwips(y());
    state.WindowWidth = ToTwips(width(), scale);
    state.WindowHeight = ToTwips(height(), scale);
    const QSize normal = (state.Maximised ? normalGeometry() : geometry()).size();
    const bool sameWidth = normal.width() == m_placedSize.width();
    const bool sameHeight = normal.height() == m_placedSize.height();
    const bool normalKept = m_loaded.Maximised && !m_wasNormal;
    if (state.Maximised && normalKept) {
        state.NormalLeft = m_loaded.NormalLeft;
        state.NormalTop = m_loaded.NormalTop;
    } else if (state.Maximised) {
        const QPoint frame = m_normalFrame.value_or(geometry().topLeft() - pos());
        state.NormalLeft = ToTwips(normalGeometry().x() - frame.x());
        state.NormalTop = ToTwips(normalGeometry().y() - frame.y());
    }
    const std::int32_t loadedWidth = m_loaded.Maximised ? m_loaded.NormalWidth : m_loaded.WindowWidth;
    const std::int32_t loadedHeight = m_loaded.Maximised ? m_loaded.NormalHeight : m_loaded.WindowHeight;
    state.NormalWidth = sameWidth ? loadedWidth : ToTwips(normalGeometry().width(), scale);
    state.NormalHeight = sameHeight ? loadedHeight : ToTwips(normalGeometry().height(), scale);
    if (!state.Maximised) {
        state.WindowWidth = sameWidth ? loadedWidth : state.WindowWidth;
        state.WindowHeight = sameHeight ? loadedHeight : state.WindowHeight;
    }
    if (!PlacesAreTold()) {
        state.WindowLeft = state.NormalLeft = m_loaded.Maximised ? m_loaded.NormalLeft : m_loaded.WindowLeft;
        state.WindowTop = state.NormalTop = m_loaded.Maximised ? m_loaded.NormalTop : m_loaded.WindowTop;
    }
    state.ColWidth = ReadColumnWidths();
}

WindowState frmMain::CurrentState() const {
    WindowState state;
    ReadPlace(state);
    state.SplitterPos = m_parts->Panes.Placement().SplitterPos();
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
        setWindowState(windowState() & ~Qt::WindowMinimized); // So that real sizes are stored.
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
    m_parts->Scan.StoreLogSize(); // The end of the program closes no window but this one.
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

void frmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && !isMaximized() && !isMinimized()) {
        m_wasNormal = true;
    }
}

void frmMain::moveEvent(QMoveEvent*) {
    m_frameTimer.start();
}

void frmMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    m_frameTimer.start();
}

// A maximised window has another frame, and with that one its normal place would move at each end.
void frmMain::NoteFrame() {
    if (isVisible() &&
        (windowState() & (Qt::WindowMaximized | Qt::WindowMinimized | Qt::WindowFullScreen)) == 0) {
        m_normalFrame = geometry().topLeft() - pos();
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

} // namespace quavernet
