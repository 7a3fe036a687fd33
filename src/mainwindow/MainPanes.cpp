#include "mainwindow/MainPanes.h"

#include "app/CommandRegistry.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"
#include "widgets/AccessibleParts.h"
#include "widgets/Colours.h"
#include "widgets/Pictures.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

#include <utility>
#include <vector>

namespace quavernet {

namespace {

/// The splitter: a bare gap, until the mouse or the keyboard is on it.
class Splitter : public QWidget {
public:
    explicit Splitter(QWidget* parent) : QWidget(parent) {
        setObjectName(QStringLiteral("lblSizer"));
        setCursor(Qt::SplitHCursor);
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        if (!hasFocus() && !underMouse()) {
            return;
        }
        QPainter painter(this);
        painter.fillRect(
            rect().adjusted(width() / 2 - 1, 0, -(width() - 1) / 2, 0), // Two pixels in the middle.
            ColourOf(hasFocus() ? OwnColour::FocusLine : OwnColour::Edge, palette()));
    }
};

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
            painter.setPen(ColourOf(OwnColour::FocusLine, palette()));
            painter.drawRect(focused->geometry().adjusted(-1, -1, 0, 0));
        }
    }
};

} // namespace

MainPanes::MainPanes(QWidget* parent, DragState& drag) : QWidget(parent) {
    InstallAccessibleParts();
    setMouseTracking(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_filter = new FilterRow(this);
    m_client = new QWidget(this);
    m_client->setMouseTracking(true);
    column->addWidget(m_filter);
    column->addWidget(m_client, 1);
    BuildToolbar();
    BuildFrames(drag);
    m_placement = std::make_unique<PaneLayout>(PlacedControls{*m_client, *m_toolbar, *m_filter, *m_play,
                                                              *m_randomize, *m_frame1, *m_frame3, *m_sizer,
                                                              *m_letters, *m_grid, *m_tree, *m_status});
    ApplyScale();
    for (QObject* watched :
         {static_cast<QObject*>(m_toolbar), static_cast<QObject*>(m_frame1), static_cast<QObject*>(m_sizer),
          static_cast<QObject*>(m_client), static_cast<QObject*>(m_grid), static_cast<QObject*>(m_tree)}) {
        watched->installEventFilter(this);
    }
}

// From the strip on top, left to right, to the panes.
void MainPanes::OrderTabs() {
    QWidget* last = m_toolbar;
    for (QAction* button : m_toolbar->actions()) {
        QWidget* next = m_toolbar->widgetForAction(button);
        setTabOrder(last, next);
        last = next;
    }
    std::vector<QWidget*> stops{&m_filter->cboDrive(),
                                &m_filter->cboGenre(),
                                &m_filter->cboAlbum(),
                                &m_filter->chkInterpret(),
                                &m_filter->chkTitle(),
                                &m_filter->txtSearch(),
                                &m_filter->cmdSearch(),
                                m_play,
                                m_randomize,
                                m_letters,
                                &m_letters->cmdLiftFilters(),
                                m_grid};
    for (QPushButton* button : m_grid->viewport()->findChildren<QPushButton*>()) {
        stops.push_back(button); // What an empty list offers.
    }
    stops.push_back(m_sizer);
    stops.push_back(m_tree);
    for (QWidget* next : stops) {
        setTabOrder(last, next);
        last = next;
    }
}

void MainPanes::BuildToolbar() {
    m_toolbar = new MainToolbar(m_filter);
    m_play = new PictureButton(QStringLiteral("cmdPlay"), {"Play", "PlayGreen", "PlayGreenDown"}, m_filter);
    m_randomize = new PictureButton(QStringLiteral("cmdRandomize"), {"PlayR", "PlayRGreen", "PlayRGreenDown"},
                                    m_filter);
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
    OrderTabs();
}

void MainPanes::BuildFrames(DragState& drag) {
    m_frame3 = new PaneFrame(m_client);
    m_frame3->setObjectName(QStringLiteral("Frame3"));
    m_tree = new TreeView(m_frame3);
    m_frame1 = new PaneFrame(m_client);
    m_frame1->setObjectName(QStringLiteral("Frame1"));
    m_frame1->setMouseTracking(true);
    m_letters = new LetterRow(m_frame1);
    m_grid = new GridView(m_frame1, drag);
    m_sizer = new Splitter(m_client);
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
    m_placement->SizeFilterRow();
    m_placement->Form_Resize();
}

void MainPanes::LoadAccessibleNames() {
    const std::pair<QWidget*, int> names[] = {{m_play, 595},
                                              {m_randomize, 596},
                                              {m_grid, 370},
                                              {m_tree, Texts::TreeRoot},
                                              {&m_status->ProgressBar(), 372},
                                              {m_status, Texts::StatusBar},
                                              {m_sizer, Texts::SplitterName}};
    for (const auto& [widget, text] : names) {
        widget->setAccessibleName(ToQString(LoadResString(text)));
    }
}

void MainPanes::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_placement->Form_Resize();
}

void MainPanes::ApplyScale() {
    m_placement->TakeFont();
    const double scale = m_placement->Scale();
    m_filter->setFixedHeight(m_placement->StripPixels());
    m_toolbar->SetScale(scale);
    m_play->SetScale(scale);
    m_randomize->SetScale(scale);
}

void MainPanes::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange && m_placement) {
        ApplyScale();
        m_placement->SizeFilterRow();
        m_placement->Form_Resize();
        emit FontChanged();
    }
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
        return m_placement->SplitterEvent(*event);
    }
    if (watched == m_client && event->type() == QEvent::Resize) {
        m_placement->Form_Resize();
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

} // namespace quavernet
