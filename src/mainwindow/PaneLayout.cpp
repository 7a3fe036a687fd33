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

QRect Pixels(const ControlBox& box) {
    return QRect(ToPixels(static_cast<double>(box.Left)), ToPixels(static_cast<double>(box.Top)),
                 ToPixels(static_cast<double>(box.Width)), ToPixels(static_cast<double>(box.Height)));
}

} // namespace

PaneLayout::PaneLayout(const PlacedControls& controls) : m_controls(controls) {
    m_layout.Frame1 = {2895, PaneTop, 12000, 9000};
    m_layout.Frame3 = {0, PaneTop, 2835, 9000};
    m_layout.lblSizer = {2835, PaneTop + PaneMargin, 60, 9000};
    m_layout.TreeView = {PaneMargin, PaneMargin, 2700, 8820};
    m_layout.grdMp3 = {30, GridTop, 11880, 8400};
    m_layout.ProgressBar = {0, 0, 1650, ProgressHeight};
}

void PaneLayout::FitFilterRow() {
    if (mainModule.ScreenResolution != "800x600") {
        const int afterSearch = !m_controls.Play.isHidden() ? 650 + 300 + 300 : 600;
        quavernet::FitFilterRow(m_layout, ToTwips(m_controls.Filter.width()) - FilterMargin, afterSearch);
    }
}

double PaneLayout::LeastUsefulWidth() const {
    return static_cast<double>(LeastFilterRow(m_layout) + FilterMargin);
}

void PaneLayout::SizeFilterRow() {
    m_layout.chkInterpret.Width = ToTwips(m_controls.Filter.chkInterpret().sizeHint().width());
    m_layout.chkTitle.Width = ToTwips(m_controls.Filter.chkTitle().sizeHint().width());
    m_layout.cmdSearch.Width = 600;
    m_layout.cmdPlay.Width = m_layout.cmdRandomize.Width = 300;
    const int height = ToTwips(m_controls.Filter.txtSearch().sizeHint().height());
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
    m_layout.ScaleWidth = ToTwips(m_controls.Client.width());
    m_layout.ScaleHeight = ToTwips(m_controls.Client.height());
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
        widget->setGeometry(Pixels(*box));
    }
    m_controls.Sizer.setGeometry(ToPixels(static_cast<double>(m_layout.lblSizer.Left)), ToPixels(PaneTop), 4,
                                 m_controls.Frame1.height());
    m_controls.Letters.setGeometry(m_controls.Grid.x(), ToPixels(LetterTop), m_controls.Grid.width(),
                                   ToPixels(LetterHeight));
    const int statusHeight = ToPixels(StatusHeight);
    m_controls.Status.setGeometry(0, m_controls.Client.height() - statusHeight, m_controls.Client.width(),
                                  statusHeight);
    m_controls.Toolbar.setGeometry(ToPixels(60), 0, ToPixels(2880 - 60), m_controls.Filter.height());
}

void PaneLayout::SplitterEvent(QEvent& event) {
    if (event.type() == QEvent::MouseButtonPress) {
        m_dragOrigin = static_cast<QMouseEvent&>(event).pos().x();
    } else if (event.type() == QEvent::MouseMove &&
               static_cast<QMouseEvent&>(event).buttons().testFlag(Qt::LeftButton)) {
        ReadLayout();
        DragSplitter(m_layout, ToTwips(static_cast<QMouseEvent&>(event).pos().x() - m_dragOrigin));
        ApplyLayout();
    }
}

} // namespace quavernet
