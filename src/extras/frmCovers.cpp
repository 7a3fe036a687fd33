#include "extras/frmCovers.h"

#include "adapters/qt/FileUris.h"
#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/MayAct.h"
#include "app/ScopedValue.h"
#include "extras/CoverBox.h"
#include "help/HelpKey.h"
#include "ui_frmCovers.h"
#include "widgets/BusyMark.h"
#include "widgets/DragFiles.h"
#include "widgets/Mnemonics.h"
#include "widgets/Twips.h"

#include <QCloseEvent>
#include <QLabel>
#include <QLayout>
#include <QWindow>

#include <algorithm>

namespace quavernet {

namespace {

// In twips: the least size of the window, and what is to the right of the list.
constexpr int LeastWidth = 11070;
constexpr int LeastHeight = 7410;
constexpr int RightOfList = 7300;
constexpr int Gap = 45;
constexpr int RightOfClose = 1150;

constexpr std::int32_t FirstCaption = 322; // Those of the pages follow each other from here.

} // namespace

void AlbumList::Reset(const std::function<void()>& load) {
    beginResetModel();
    load();
    endResetModel();
}

int AlbumList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_covers.Albums().size());
}

QVariant AlbumList::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) {
        return {};
    }
    return ToLine(m_covers.Albums()[static_cast<std::size_t>(index.row())]);
}

// It can be minimised, and it stays over the main window.
frmCovers::frmCovers(QWidget* owner)
    : QDialog(owner, Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      m_ui(std::make_unique<Ui::frmCovers>()) {
    m_ui->setupUi(this);
    m_pages = {{{m_ui->imgFront, m_ui->cmdBrowseFront, m_ui->cmdFrontOnlineSearch, m_ui->cdmDeleteFront},
                {m_ui->imgBack, m_ui->cmdBrowseBack, m_ui->cmdBackOnlineSearch, m_ui->cdmDeleteBack},
                {m_ui->imgCD, m_ui->cmdBrowseCD, m_ui->cmdCDOnlineSearch, m_ui->cdmDeleteCD},
                {m_ui->imgCD2, m_ui->cmdBrowseCD2, m_ui->cmdCD2OnlineSearch, m_ui->cdmDeleteCD2},
                {m_ui->imgInlay, m_ui->cmdBrowseInlay, m_ui->cmdInlayOnlineSearch, m_ui->cdmDeleteInlay},
                {m_ui->imgInlet, m_ui->cmdBrowseInlet, m_ui->cmdInletOnlineSearch, m_ui->cdmDeleteInlet}}};
    m_panel = new QLabel(this);
    m_panel->setObjectName(QStringLiteral("Panel1"));
    m_panel->setTextFormat(Qt::PlainText);
    m_panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // A long path is cut.
    m_ui->StatusBar1->addWidget(m_panel, 1);
    m_ui->StatusBar1->setSizeGripEnabled(false);
    m_ui->lstAlbums->setModel(&m_albums);
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false); // Return in the list is none of them.
    }
    connect(m_ui->lstAlbums->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmCovers::lstAlbums_Click);
    connect(m_ui->SSTab1, &QTabWidget::currentChanged, this,
            [this](int page) { m_covers.SSTab1_Click(static_cast<CoverPage>(page)); });
    connect(m_ui->cmdClose, &QPushButton::clicked, this, &QWidget::close);
    for (std::size_t page = 0; page < CoverPageCount; ++page) {
        ConnectPage(static_cast<CoverPage>(page));
    }
    new HelpKey(this);
}

// One whose list could not be read was never closed.
frmCovers::~frmCovers() {
    if (m_open) {
        mainModule.CoversOpen = false;
    }
}

void frmCovers::ConnectPage(CoverPage page) {
    const Page& controls = m_pages[static_cast<std::size_t>(page)];
    CoverBox* const image = controls.Image;
    image->TakesDrop = [this] { return m_covers.HasSelection() && MayTakeDrop(); };
    connect(controls.Browse, &QPushButton::clicked, this,
            [this, page] { Act([this, page] { m_covers.BrowseCover(page); }); });
    connect(controls.OnlineSearch, &QPushButton::clicked, this,
            [this] { Act([this] { m_covers.OnlineCoverSearch(); }); });
    connect(controls.Delete, &QPushButton::clicked, this,
            [this, page] { Act([this, page] { m_covers.DeleteCover(page); }); });
    connect(image, &CoverBox::DoubleClicked, this, [this] { Act([this] { m_covers.OpenCoverFile(); }); });
    connect(image, &CoverBox::DragBegins, this, [this, image] { Act([this, image] { DragCover(*image); }); });
    connect(image, &CoverBox::FileDropped, this,
            [this, page](const std::string& path) { m_covers.SetCover(page, path); });
}

void frmCovers::Form_Load() {
    m_open = mainModule.CoversOpen = true;
    LoadStrings();
    m_albums.Reset([this] { m_covers.LoadAlbumList(); });
    m_ui->lstAlbums->setCurrentIndex({}); // Else the first key would go from the first entry to the second.
    resize(minimumSize());
    m_ui->lstAlbums->setFocus();
}

// Room for what the pages hold, in the fonts of this desktop and in the language of now.
void frmCovers::FitContents() {
    for (int page = 0; page < m_ui->SSTab1->count(); ++page) {
        m_ui->SSTab1->widget(page)->layout()->activate(); // Texts have changed since it was laid out last.
    }
    const QSize tab = m_ui->SSTab1->sizeHint();
    m_ui->SSTab1->resize(std::max(ToPixels(RightOfList - 2 * Gap), tab.width()), tab.height());
    m_ui->lstAlbums->resize(m_ui->lstAlbums->width(), tab.height());
    m_ui->cmdClose->resize(m_ui->cmdClose->sizeHint());
    const int height =
        tab.height() + m_ui->cmdClose->height() + 3 * ToPixels(Gap) + m_ui->StatusBar1->sizeHint().height();
    setMinimumSize(ToPixels(LeastWidth), std::max(ToPixels(LeastHeight), height));
}

void frmCovers::LoadStrings() {
    setWindowTitle(ToQString(LoadResString(506)));
    for (int page = 0; page < static_cast<int>(CoverPageCount); ++page) {
        const QString caption = ToQString(LoadResString(FirstCaption + page));
        m_ui->SSTab1->setTabText(page, caption);
        const Page& controls = m_pages[static_cast<std::size_t>(page)];
        controls.Image->setAccessibleName(caption);
        controls.Browse->setText(ToQString(LoadResString(105)));
        controls.OnlineSearch->setText(ToQString(LoadResString(106)));
        controls.Delete->setText(ToQString(LoadResString(107)));
    }
    m_ui->cmdClose->setText(ToQString(LoadResString(108)));
    FitContents();
    PlaceControls();
    m_ui->lstAlbums->setAccessibleName(windowTitle());
    MarkMnemonics(*this);
}

void frmCovers::SelectAlbum(const std::string& key) {
    const auto position = m_covers.PositionOf(key);
    if (!position) {
        return;
    }
    m_shown = -1; // Also if it is selected already.
    m_ui->lstAlbums->setCurrentIndex(m_albums.index(static_cast<int>(*position)));
    lstAlbums_Click();
}

// Nothing but another entry takes a selection away; the toolkit's list would let a click with Ctrl do so.
void frmCovers::lstAlbums_Click() {
    QItemSelectionModel& selection = *m_ui->lstAlbums->selectionModel();
    const QModelIndexList rows = selection.selectedIndexes();
    if (rows.isEmpty()) {
        if (m_shown >= 0) {
            selection.select(m_albums.index(m_shown), QItemSelectionModel::ClearAndSelect);
        }
    } else if (rows.constFirst().row() != m_shown) {
        m_shown = rows.constFirst().row();
        m_covers.SelectAlbum(static_cast<std::size_t>(m_shown));
    }
}

void frmCovers::RemovePictures() {
    for (const Page& page : m_pages) {
        page.Image->RemovePicture();
    }
}

void frmCovers::ShowPicture(CoverPage page, const std::string& path) {
    Box(page).ShowPicture(path);
}

bool frmCovers::LoadPicture(CoverPage page, const std::string& path) {
    return Box(page).LoadPicture(path);
}

void frmCovers::SetPanel(const std::string& path) {
    m_panel->setText(ToLine(path));
    m_panel->setToolTip(m_panel->text());
}

void frmCovers::SetMousePointer(MousePointer pointer) {
    if (pointer == MousePointer::Hourglass) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
    }
}

void frmCovers::DragCover(CoverBox& source) {
    if (!m_covers.Panel().empty()) {
        DragFiles(source, FilesToOffer({m_covers.Panel()}));
    }
}

// A dialog out of which the window was shown lets no command act beside itself; covers are none of what it
// works on. What a handler of the dialog has begun ends before anything else.
bool frmCovers::MayAct() const {
    return quavernet::MayAct() || (!mainModule.ScanRunning && m_beside != nullptr && !IsBusy(*m_beside));
}

bool frmCovers::MayTakeDrop() const {
    const QWidget* modal = QApplication::activeModalWidget();
    return MayAct() && !m_acting && (modal == nullptr || modal == m_beside);
}

// While one of them lets events run, no other one begins: it might store the image of another album.
void frmCovers::Act(const std::function<void()>& handler) {
    if (MayAct() && !m_acting) {
        const ScopedValue acting(m_acting, true);
        handler();
    }
}

// The dialog blocks every window of its owner but its own.
void frmCovers::ActBeside(QWidget* dialog) {
    m_beside = dialog;
    dialog->installEventFilter(this);
    windowHandle()->setTransientParent(dialog->windowHandle());
}

bool frmCovers::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_beside && event->type() == QEvent::Hide) {
        m_beside->removeEventFilter(this);
        m_beside.clear();
        windowHandle()->setTransientParent(parentWidget()->windowHandle());
    }
    return QDialog::eventFilter(watched, event);
}

// The list takes the width that is left; the heights of the contents never change. What does not fit in the
// fonts of this desktop gets the room that it needs.
void frmCovers::PlaceControls() {
    const int gap = ToPixels(Gap);
    const int listWidth = width() - std::max(ToPixels(RightOfList), m_ui->SSTab1->width() + 2 * gap);
    m_ui->lstAlbums->setGeometry(0, gap, listWidth, m_ui->lstAlbums->height());
    m_ui->SSTab1->move(listWidth + gap, gap);
    QPushButton& close = *m_ui->cmdClose;
    const int caption = close.fontMetrics().size(Qt::TextShowMnemonic, close.text()).width() + 3 * gap;
    close.resize(std::max(ToPixels(RightOfClose - Gap), caption), close.height());
    close.move(width() - std::max(ToPixels(RightOfClose), close.width() + gap),
               m_ui->SSTab1->geometry().bottom() + 1 + gap);
    const int statusHeight = m_ui->StatusBar1->sizeHint().height();
    m_ui->StatusBar1->setGeometry(0, height() - statusHeight, width(), statusHeight);
}

void frmCovers::resizeEvent(QResizeEvent*) {
    PlaceControls();
}

void frmCovers::closeEvent(QCloseEvent* event) {
    m_open = mainModule.CoversOpen = false;
    event->accept();
    emit Closed();
}

void frmCovers::reject() {
    close();
}

} // namespace quavernet
