#include "mainwindow/PaneLayout.h"

#include "app/MainModule.h"
#include "browser/FilterRow.h"
#include "browser/LetterRow.h"
#include "mainwindow/MainStatusBar.h"
#include "widgets/Twips.h"

#include <QLayout>
#include <QMouseEvent>

#include <utility>

namespace quavernet {

namespace {

// Twips, where the layout rules leave a place open.
constexpr int FilterMargin = 60; ///< Right of the filter row's last control.
constexpr int PaneTop = 60;
constexpr int PaneMargin = 90;
constexpr int StatusHeight = 345;
constexpr int LetterTop = 60;
constexpr int LetterHeight = 390;
constexpr int GridTop = 510;
constexpr int ProgressHeight = 150;
constexpr int ProgressPanel = 1740; ///< The last panel, under the progress bar.

constexpr int GapPixels = 4;          ///< Between the panes.
constexpr int HoldPixels = 3;         ///< To either side of it, over the margins of the panes.
constexpr std::int32_t KeyStep = 150; ///< By which an arrow key moves the splitter.

} // namespace

PaneLayout::PaneLayout(const PlacedControls& controls) : m_controls(controls) {
    m_layout.Frame1 = {2895, PaneTop, 12000, 9000};
    m_layout.Frame3 = {0, PaneTop, 2835, 9000};
    m_layout.lblSizer = {2835, PaneTop + PaneMargin, 60, 9000};
    m_layout.TreeView = {PaneMargin, PaneMargin, 2700, 8820};
    m_layout.grdMp3 = {30, GridTop, 11880, 8400};
    m_layout.ProgressBar = {0, 0, 1650, ProgressHeight};
}

void PaneLayout::TakeFont() {
    m_scale = mainModule.ScreenResolution == "800x600" ? 1 : TwipScale(m_controls.Client.font());
}

int PaneLayout::StripPixels() const {
    return Pixels(StripHeight);
}

int PaneLayout::Pixels(std::int64_t twips) const {
    return ToPixels(static_cast<double>(twips) * m_scale);
}

std::int32_t PaneLayout::Twips(int pixels) const {
    return ToTwips(pixels, m_scale);
}

QRect PaneLayout::Place(const ControlBox& box) const {
    return QRect(Pixels(box.Left), Pixels(box.Top), Pixels(box.Width), Pixels(box.Height));
}

void PaneLayout::FitFilterRow() {
    if (mainModule.ScreenResolution != "800x600") {
        const int afterSearch = !m_controls.Play.isHidden() ? 650 + 300 + 300 : 600;
        quavernet::FitFilterRow(m_layout, Twips(m_controls.Filter.width()) - FilterMargin, afterSearch);
    }
}

int PaneLayout::LeastUsefulPixels() const {
    return Pixels(LeastFilterRow(m_layout) + FilterMargin);
}

void PaneLayout::SizeFilterRow() {
    m_layout.chkInterpret.Width = Twips(m_controls.Filter.chkInterpret().sizeHint().width());
    m_layout.chkTitle.Width = Twips(m_controls.Filter.chkTitle().sizeHint().width());
    m_layout.cmdSearch.Width = 600;
    m_layout.cmdPlay.Width = m_layout.cmdRandomize.Width = 300;
    const int height = Twips(m_controls.Filter.txtSearch().sizeHint().height());
    for (ControlBox* box : {&m_layout.cboDrive, &m_layout.cboGenre, &m_layout.cboAlbum,
                            &m_layout.chkInterpret, &m_layout.chkTitle, &m_layout.txtSearch,
                            &m_layout.cmdSearch, &m_layout.cmdPlay, &m_layout.cmdRandomize}) {
        box->Height = height;
        box->Top = (StripHeight - height) / 2;
    }
}

void PaneLayout::PackForSmallScreen() {
    m_layout.Letters = m_controls.Letters.Boxes();
    quavernet::PackForSmallScreen(m_layout);
    m_controls.Letters.SetBoxes(m_layout.Letters);
    SizeFilterRow();
    ApplyLayout();
}

void PaneLayout::SetSplitterPos(std::int32_t twips) {
    // The window has its size but has not been shown: nothing in it has been laid out yet.
    m_controls.Client.window()->layout()->activate();
    m_controls.Client.parentWidget()->layout()->activate();
    ReadLayout();
    StartLayout(m_layout, twips, mainModule.ScreenResolution);
    ApplyLayout();
}

void PaneLayout::ReadLayout() {
    m_layout.ScaleWidth = Twips(m_controls.Client.width());
    m_layout.ScaleHeight = Twips(m_controls.Client.height());
}

void PaneLayout::Form_Resize() {
    ReadLayout();
    const WindowExtent extent{ToTwips(m_controls.Client.window()->width()),
                              ToTwips(m_controls.Client.window()->height()),
                              m_controls.Client.window()->isMinimized()};
    FitFilterRow();
    ResizeMain(m_layout, extent, mainModule.ScreenResolution);
    ApplyLayout();
}

void PaneLayout::ApplyLayout() {
    const std::pair<QWidget*, const ControlBox*> places[] = {
        {&m_controls.Frame1, &m_layout.Frame1},
        {&m_controls.Frame3, &m_layout.Frame3},
        {&m_controls.Tree, &m_layout.TreeView},
        {&m_controls.Grid, &m_layout.grdMp3},
        {&m_controls.Filter.cboDrive(), &m_layout.cboDrive},
        {&m_controls.Filter.cboGenre(), &m_layout.cboGenre},
        {&m_controls.Filter.cboAlbum(), &m_layout.cboAlbum},
        {&m_controls.Filter.chkInterpret(), &m_layout.chkInterpret},
        {&m_controls.Filter.chkTitle(), &m_layout.chkTitle},
        {&m_controls.Filter.txtSearch(), &m_layout.txtSearch},
        {&m_controls.Filter.cmdSearch(), &m_layout.cmdSearch},
        {&m_controls.Play, &m_layout.cmdPlay},
        {&m_controls.Randomize, &m_layout.cmdRandomize},
        {&m_controls.Status.ProgressBar(), &m_layout.ProgressBar},
    };
    for (const auto& [widget, box] : places) {
        widget->setGeometry(Place(*box));
    }
    // The splitter reaches over the gap that it stands for, so that it is easily caught.
    m_controls.Sizer.setGeometry(Pixels(m_layout.lblSizer.Left) - HoldPixels, Pixels(PaneTop),
                                 GapPixels + 2 * HoldPixels, m_controls.Frame1.height());
    m_controls.Letters.setGeometry(m_controls.Grid.x(), Pixels(LetterTop), m_controls.Grid.width(),
                                   Pixels(LetterHeight));
    m_controls.Status.SetProgressPanel(Pixels(ProgressPanel));
    const int statusHeight = Pixels(StatusHeight);
    m_controls.Status.setGeometry(0, m_controls.Client.height() - statusHeight, m_controls.Client.width(),
                                  statusHeight);
    m_controls.Toolbar.setGeometry(Pixels(60), 0, Pixels(2880 - 60), m_controls.Filter.height());
}

void PaneLayout::MoveSplitter(std::int32_t distance) {
    ReadLayout();
    DragSplitter(m_layout, distance);
    ApplyLayout();
}

bool PaneLayout::SplitterEvent(QEvent& event) {
    if (event.type() == QEvent::MouseButtonPress) {
        m_dragOrigin = static_cast<QMouseEvent&>(event).pos().x();
    } else if (event.type() == QEvent::MouseMove &&
               static_cast<QMouseEvent&>(event).buttons().testFlag(Qt::LeftButton)) {
        MoveSplitter(Twips(static_cast<QMouseEvent&>(event).pos().x() - m_dragOrigin));
    } else if (event.type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent&>(event).key();
        if (key == Qt::Key_Left || key == Qt::Key_Right) {
            MoveSplitter(key == Qt::Key_Left ? -KeyStep : KeyStep);
            return true;
        }
    }
    return false;
}

} // namespace quavernet
