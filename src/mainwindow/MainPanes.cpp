#include "mainwindow/MainPanes.h"

#include "app/CommandRegistry.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "widgets/Pictures.h"
#include "widgets/Twips.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

#include <utility>

namespace quavernet {

namespace {

// Twips, where the layout rules leave a place open.
constexpr int StripHeight = 510;
constexpr int FilterMargin = 60; ///< Right of the filter row's last control.
constexpr int PaneTop = 60;
constexpr int PaneMargin = 90;
constexpr int StatusHeight = 345;
constexpr int LetterTop = 60;
constexpr int LetterHeight = 390;
constexpr int GridTop = 510;
constexpr int ProgressHeight = 150;

/// A pane that draws a line around the control in it that has the keyboard.
class PaneFrame : public QFrame {
public:
    using QFrame::QFrame;

protected:
    void paintEvent(QPaintEvent* event) override {
        QFrame::paintEvent(event);
        const QWidget* focused = QApplication::focusWidget();
        if (qobject_cast<const QAbstractItemView*>(focused) != nullptr && focused->parentWidget() == this) {
            QPainter painter(this);
            painter.setPen(palette().color(QPalette::Highlight));
            painter.drawRect(focused->geometry().adjusted(-1, -1, 0, 0));
        }
    }
};

QRect Pixels(const ControlBox& box) {
    return QRect(ToPixels(static_cast<double>(box.Left)), ToPixels(static_cast<double>(box.Top)),
                 ToPixels(static_cast<double>(box.Width)), ToPixels(static_cast<double>(box.Height)));
}

} // namespace

MainPanes::MainPanes(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_filter = new FilterRow(this);
    m_filter->setFixedHeight(ToPixels(StripHeight));
    m_client = new QWidget(this);
    m_client->setMouseTracking(true);
    column->addWidget(m_filter);
    column->addWidget(m_client, 1);
    BuildToolbar();
    BuildFrames();
    for (QObject* watched :
         {static_cast<QObject*>(m_toolbar), static_cast<QObject*>(m_frame1), static_cast<QObject*>(m_sizer),
          static_cast<QObject*>(m_client), static_cast<QObject*>(m_grid), static_cast<QObject*>(m_tree)}) {
        watched->installEventFilter(this);
    }
    m_layout.Frame1 = {2895, PaneTop, 12000, 9000};
    m_layout.Frame3 = {0, PaneTop, 2835, 9000};
    m_layout.lblSizer = {2835, PaneTop + PaneMargin, 60, 9000};
    m_layout.TreeView = {PaneMargin, PaneMargin, 2700, 8820};
    m_layout.grdMp3 = {30, GridTop, 11880, 8400};
    m_layout.ProgressBar = {0, 0, 1650, ProgressHeight};
}

// From the strip on top, left to right, to the panes.
void MainPanes::OrderTabs() {
    QWidget* last = m_toolbar;
    for (QAction* button : m_toolbar->actions()) {
        QWidget* next = m_toolbar->widgetForAction(button);
        setTabOrder(last, next);
        last = next;
    }
    for (QWidget* next :
         {static_cast<QWidget*>(&m_filter->cboDrive()), static_cast<QWidget*>(&m_filter->cboGenre()),
          static_cast<QWidget*>(&m_filter->cboAlbum()), static_cast<QWidget*>(&m_filter->chkInterpret()),
          static_cast<QWidget*>(&m_filter->chkTitle()), static_cast<QWidget*>(&m_filter->txtSearch()),
          static_cast<QWidget*>(&m_filter->cmdSearch()), static_cast<QWidget*>(m_play),
          static_cast<QWidget*>(m_randomize), static_cast<QWidget*>(m_letters), static_cast<QWidget*>(m_grid),
          static_cast<QWidget*>(m_tree)}) {
        setTabOrder(last, next);
        last = next;
    }
}

void MainPanes::BuildToolbar() {
    m_toolbar = new MainToolbar(m_filter);
    m_play = new PictureButton(QStringLiteral("cmdPlay"), "Play", m_filter);
    m_randomize = new PictureButton(QStringLiteral("cmdRandomize"), "PlayR", m_filter);
    connect(m_play, &PictureButton::Entered, m_randomize, &PictureButton::SetAtRest);
    connect(m_randomize, &PictureButton::Entered, m_play, &PictureButton::SetAtRest);
}

void MainPanes::BuildCommands(const CommandRegistry& commands) {
    m_toolbar->Build(commands);
    for (PictureButton* button : {m_play, m_randomize}) {
        const std::string name = FromQString(button->objectName());
        button->setVisible(commands.Contains(name));
        connect(button, &QAbstractButton::clicked, this, [&commands, name] { commands.Run(name); });
    }
    m_playButtonsShown = commands.Contains("cmdPlay");
    OrderTabs();
}

void MainPanes::BuildFrames() {
    m_frame3 = new PaneFrame(m_client);
    m_frame3->setObjectName(QStringLiteral("Frame3"));
    m_tree = new QTreeWidget(m_frame3);
    m_tree->setObjectName(QStringLiteral("TreeView"));
    m_frame1 = new PaneFrame(m_client);
    m_frame1->setObjectName(QStringLiteral("Frame1"));
    m_frame1->setMouseTracking(true);
    m_letters = new LetterRow(m_frame1);
    m_grid = new GridView(m_frame1);
    m_sizer = new QWidget(m_client);
    m_sizer->setObjectName(QStringLiteral("lblSizer"));
    m_sizer->setCursor(Qt::SplitHCursor);
    m_status = new MainStatusBar(m_client);
    m_status->ProgressBar().raise();
    connect(m_letters, &LetterRow::MouseMoved, this, &MainPanes::PlayButtonsAtRest);
    connect(m_grid, &GridView::MouseMoved, m_letters, &LetterRow::ResetLetterColors);
}

void MainPanes::LoadStrings() {
    m_filter->LoadStrings();
    m_letters->LoadStrings();
    m_play->setToolTip(ToQString(LoadResString(595)));
    m_randomize->setToolTip(ToQString(LoadResString(596)));
    m_toolbar->LoadStrings();
    LoadAccessibleNames();
    SizeFilterRow();
    Form_Resize();
}

void MainPanes::LoadAccessibleNames() {
    const std::pair<QWidget*, int> names[] = {
        {m_play, 595}, {m_randomize, 596}, {m_grid, 370}, {m_tree, 591}, {&m_status->ProgressBar(), 372}};
    for (const auto& [widget, text] : names) {
        widget->setAccessibleName(ToQString(LoadResString(text)));
    }
}

void MainPanes::FitFilterRow() {
    if (mainModule.ScreenResolution != "800x600") {
        const int afterSearch = m_playButtonsShown ? 650 + 300 + 300 : 600;
        quavernet::FitFilterRow(m_layout, ToTwips(m_filter->width()) - FilterMargin, afterSearch);
    }
}

void MainPanes::SizeFilterRow() {
    m_layout.chkInterpret.Width = ToTwips(m_filter->chkInterpret().sizeHint().width());
    m_layout.chkTitle.Width = ToTwips(m_filter->chkTitle().sizeHint().width());
    m_layout.cmdSearch.Width = 600;
    m_layout.cmdPlay.Width = m_layout.cmdRandomize.Width = 300;
    const int height = ToTwips(m_filter->txtSearch().sizeHint().height());
    for (ControlBox* box : {&m_layout.cboDrive, &m_layout.cboGenre, &m_layout.cboAlbum,
                            &m_layout.chkInterpret, &m_layout.chkTitle, &m_layout.txtSearch,
                            &m_layout.cmdSearch, &m_layout.cmdPlay, &m_layout.cmdRandomize}) {
        box->Height = height;
        box->Top = (StripHeight - height) / 2;
    }
}

void MainPanes::PackForSmallScreen() {
    m_layout.Letters = m_letters->Boxes();
    quavernet::PackForSmallScreen(m_layout);
    m_letters->SetBoxes(m_layout.Letters);
    SizeFilterRow();
    ApplyLayout();
}

void MainPanes::SetSplitterPos(std::int32_t twips) {
    // The window has its size but has not been shown: nothing in it has been laid out yet.
    window()->layout()->activate();
    layout()->activate();
    ReadLayout();
    StartLayout(m_layout, twips, mainModule.ScreenResolution);
    ApplyLayout();
}

void MainPanes::ReadLayout() {
    m_layout.ScaleWidth = ToTwips(m_client->width());
    m_layout.ScaleHeight = ToTwips(m_client->height());
}

void MainPanes::Form_Resize() {
    ReadLayout();
    const WindowExtent extent{ToTwips(window()->width()), ToTwips(window()->height()),
                              window()->isMinimized()};
    FitFilterRow();
    ResizeMain(m_layout, extent, mainModule.ScreenResolution);
    ApplyLayout();
}

void MainPanes::ApplyLayout() {
    const std::pair<QWidget*, const ControlBox*> places[] = {
        {m_frame1, &m_layout.Frame1},
        {m_frame3, &m_layout.Frame3},
        {m_tree, &m_layout.TreeView},
        {m_grid, &m_layout.grdMp3},
        {&m_filter->cboDrive(), &m_layout.cboDrive},
        {&m_filter->cboGenre(), &m_layout.cboGenre},
        {&m_filter->cboAlbum(), &m_layout.cboAlbum},
        {&m_filter->chkInterpret(), &m_layout.chkInterpret},
        {&m_filter->chkTitle(), &m_layout.chkTitle},
        {&m_filter->txtSearch(), &m_layout.txtSearch},
        {&m_filter->cmdSearch(), &m_layout.cmdSearch},
        {m_play, &m_layout.cmdPlay},
        {m_randomize, &m_layout.cmdRandomize},
        {&m_status->ProgressBar(), &m_layout.ProgressBar},
    };
    for (const auto& [widget, box] : places) {
        widget->setGeometry(Pixels(*box));
    }
    m_sizer->setGeometry(ToPixels(static_cast<double>(m_layout.lblSizer.Left)), ToPixels(PaneTop), 4,
                         m_frame1->height());
    m_letters->setGeometry(m_grid->x(), ToPixels(LetterTop), m_grid->width(), ToPixels(LetterHeight));
    const int statusHeight = ToPixels(StatusHeight);
    m_status->setGeometry(0, m_client->height() - statusHeight, m_client->width(), statusHeight);
    m_toolbar->setGeometry(ToPixels(60), 0, ToPixels(2880 - 60), m_filter->height());
}

void MainPanes::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Form_Resize();
}

void MainPanes::PlayButtonsAtRest() {
    m_play->SetAtRest();
    m_randomize->SetAtRest();
}

void MainPanes::mouseMoveEvent(QMouseEvent*) {
    m_letters->ResetLetterColors();
}

bool MainPanes::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_sizer) {
        SplitterEvent(*event);
    } else if (watched == m_client && event->type() == QEvent::Resize) {
        Form_Resize();
    } else if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        m_frame1->update();
        m_frame3->update();
    } else if (event->type() == QEvent::MouseMove) {
        PlayButtonsAtRest();
        if (watched != m_toolbar) {
            m_letters->ResetLetterColors();
        }
    }
    return false;
}

void MainPanes::SplitterEvent(QEvent& event) {
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
