#include "browser/GridView.h"

#include "adapters/qt/FileUris.h"
#include "adapters/qt/QtText.h"
#include "browser/GridPaint.h"
#include "widgets/DragFiles.h"
#include "widgets/PaintingOff.h"

#include <QApplication>
#include <QClipboard>
#include <QHelpEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace quavernet {

namespace {

GridButton ButtonOf(const QMouseEvent& event) {
    switch (event.button()) {
    case Qt::LeftButton:
        return GridButton::Left;
    case Qt::RightButton:
        return GridButton::Right;
    default:
        return GridButton::Other;
    }
}

GridModifiers ModifiersOf(const QMouseEvent& event) {
    return {event.modifiers().testFlag(Qt::ShiftModifier), event.modifiers().testFlag(Qt::ControlModifier),
            event.modifiers().testFlag(Qt::AltModifier)};
}

} // namespace

GridView::GridView(QWidget* parent, DragState& drag) : QTableView(parent), m_selection(*this, drag) {
    setObjectName(QStringLiteral("grdMp3"));
    setModel(&m_model);
    m_painter = new RowPainter(m_selection, this);
    setItemDelegate(m_painter);
    setHorizontalHeader(new ArrowHeader(m_model, this));
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setWordWrap(false);
    setAutoScroll(false); // A mark that only screen readers see moves nothing.
    setCornerButtonEnabled(false);
    setAlternatingRowColors(true);
    setGridStyle(Qt::NoPen); // The delegate draws the lines.
    setTabKeyNavigation(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setMouseTracking(true);
    setAcceptDrops(true);
    viewport()->setAcceptDrops(true);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    SetRowHeight();
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(0);
    horizontalHeader()->viewport()->installEventFilter(this);
    m_clock.start();
    verticalScrollBar()->installEventFilter(this);
    horizontalScrollBar()->installEventFilter(this);
    connect(horizontalHeader(), &QHeaderView::sectionDoubleClicked, this,
            [this](int column) { emit DoubleClicked(column, 0); });
    QAccessible::installActivationObserver(this);
}

GridView::~GridView() {
    QAccessible::removeActivationObserver(this);
}

// A whole number of the screen's own pixels, so that all rows and the lines between them look alike.
void GridView::SetRowHeight() {
    constexpr int RoomAroundText = 5;
    constexpr int MostSteps = 4; // Screens go by quarters.
    int height = fontMetrics().height() + RoomAroundText;
    for (int step = 0; step < MostSteps; ++step, ++height) {
        const double pixels = height * devicePixelRatioF();
        if (std::abs(pixels - std::round(pixels)) < 0.01) {
            break;
        }
    }
    verticalHeader()->setDefaultSectionSize(height);
}

void GridView::SetHeadToolTip(const QString& text) {
    horizontalHeader()->setToolTip(text);
}

void GridView::SetRows(ListRows rows) {
    m_model.SetRows(std::move(rows));
    m_selection.Reset(m_model.rowCount() + 1);
}

std::int64_t GridView::RowData(std::int32_t row) const {
    return m_model.Rows().RowData(static_cast<std::size_t>(row));
}

std::int32_t GridView::TopRow() const {
    return verticalScrollBar()->value() + 1;
}

void GridView::SetTopRow(std::int32_t row) {
    verticalScrollBar()->setValue(row - 1);
}

bool GridView::RowIsVisible(std::int32_t row) const {
    const int top = rowViewportPosition(row - 1);
    return top >= 0 && top + rowHeight(row - 1) <= viewport()->height();
}

std::string GridView::CurrentFormat() const {
    const std::int32_t row = m_selection.Row();
    if (row < 1 || row > m_model.rowCount()) {
        return {};
    }
    return m_model.Rows().Text(static_cast<std::size_t>(row), ListColumn::Format);
}

std::int32_t GridView::MouseRow(const QPoint& position) const {
    const int row = rowAt(position.y());
    return row < 0 ? m_selection.Rows() : row + 1;
}

void GridView::RepaintRows() {
    viewport()->update();
    TellSelection();
}

// The toolkit's own marks are never painted; screen readers take from them which row is the current one, and
// which ones are selected.
void GridView::TellSelection() {
    if (!QAccessible::isActive()) {
        return;
    }
    QItemSelection rows;
    for (const auto& [first, last] : m_selection.Painted().Ranges()) {
        rows.append(QItemSelectionRange(m_model.index(first - 1, 0),
                                        m_model.index(last - 1, m_model.columnCount() - 1)));
    }
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
    const std::int32_t row = m_selection.RowSel();
    if (row >= 1 && row <= m_model.rowCount()) {
        selectionModel()->setCurrentIndex(m_model.index(row - 1, 0), QItemSelectionModel::NoUpdate);
    }
}

void GridView::SetScanningPanel(const std::string& text) {
    if (ShowInScanningPanel) {
        ShowInScanningPanel(text);
    }
}

void GridView::Press(const QMouseEvent& event, std::int32_t mouseRow) {
    setFocus(Qt::MouseFocusReason);
    window()->raise();
    m_pressPosition = event.globalPosition().toPoint();
    const GridButton button = ButtonOf(event);
    m_selection.MouseDown(mouseRow, button, ModifiersOf(event));
    if (button == GridButton::Right && m_selection.Rows() >= 2) {
        emit KontextMenuWanted(event.globalPosition().toPoint());
    }
}

void GridView::Release() {
    m_selection.MouseUp();
    m_selection.Click();
}

void GridView::mousePressEvent(QMouseEvent* event) {
    Press(*event, MouseRow(event->pos()));
}

void GridView::mouseMoveEvent(QMouseEvent* event) {
    const GridHover hover = m_selection.MouseMove(MouseRow(event->pos()), event->buttons() == Qt::LeftButton);
    if (hover.ToolTip) {
        setToolTip(ToQString(*hover.ToolTip));
    }
    emit MouseMoved();
    const int distance = (event->globalPosition().toPoint() - m_pressPosition).manhattanLength();
    if (hover.StartDrag && distance >= QApplication::startDragDistance()) {
        Drag();
    }
}

void GridView::mouseReleaseEvent(QMouseEvent*) {
    Release();
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
    // The second press of a double click is none of its own: the first has already set the selection.
    if (event->button() == Qt::LeftButton) {
        emit DoubleClicked(std::max(columnAt(event->pos().x()), 0), MouseRow(event->pos()));
    }
}

// The header is row 0 of the list to the mouse. No drag starts there: it would end the drag of a column's
// edge.
bool GridView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel && qobject_cast<QScrollBar*>(watched) != nullptr) {
        const QPoint delta = static_cast<QWheelEvent*>(event)->angleDelta();
        event->ignore(); // A scroll bar would move by more than a row: the list itself gets the notch.
        return delta.y() != 0 || delta.x() == 0;
    }
    if (watched != horizontalHeader()->viewport()) {
        return QTableView::eventFilter(watched, event);
    }
    if (event->type() == QEvent::ToolTip) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), horizontalHeader()->toolTip(),
                           horizontalHeader()->viewport());
        return true;
    }
    if (event->type() == QEvent::MouseButtonPress) {
        Press(*static_cast<QMouseEvent*>(event), 0);
    } else if (event->type() == QEvent::MouseButtonRelease) {
        Release();
    } else if (event->type() == QEvent::MouseMove) {
        emit MouseMoved();
    }
    return false;
}

std::int32_t GridView::RowsInView() const {
    return std::max(1, viewport()->height() / std::max(1, verticalHeader()->defaultSectionSize()) - 1);
}

bool GridView::MoveByKey(const QKeyEvent& event) {
    static constexpr std::pair<int, GridKey> Keys[] = {
        {Qt::Key_Up, GridKey::Up},         {Qt::Key_Down, GridKey::Down},
        {Qt::Key_PageUp, GridKey::PageUp}, {Qt::Key_PageDown, GridKey::PageDown},
        {Qt::Key_Home, GridKey::Home},     {Qt::Key_End, GridKey::End}};
    const auto* found =
        std::find_if(std::begin(Keys), std::end(Keys),
                     [&event](const std::pair<int, GridKey>& entry) { return entry.first == event.key(); });
    if (found == std::end(Keys)) {
        return false;
    }
    m_selection.KeyMove(found->second, event.modifiers().testFlag(Qt::ShiftModifier), RowsInView());
    ShowMovedRow();
    return true;
}

void GridView::ShowMovedRow() {
    if (m_selection.RowSel() >= 1 && !RowIsVisible(m_selection.RowSel())) {
        scrollTo(m_model.index(m_selection.RowSel() - 1, 0));
    }
}

// Typed letters go to the next row of the sorted column that begins with them.
bool GridView::MoveByLetter(const QKeyEvent& event) {
    const QString text = event.text();
    if (text.isEmpty() || !text.front().isPrint() ||
        event.modifiers().testAnyFlags(Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier) ||
        !m_typed.Type(FromQString(text), m_clock.elapsed())) {
        return false;
    }
    const std::int32_t from = std::max(m_selection.Row(), 0) + (m_typed.FromNext() ? 1 : 0);
    const std::int32_t row =
        RowStartingWith(m_model.Rows(), static_cast<ListColumn>(m_model.SortColumn()), m_typed.Text(), from);
    if (row >= 1) {
        m_selection.MoveTo(row, false);
        ShowMovedRow();
    }
    return true;
}

// Ctrl and the number of a column do what a double click on its head does.
bool GridView::SortByKey(const QKeyEvent& event) {
    const int column = event.key() - Qt::Key_1;
    if (event.modifiers().setFlag(Qt::KeypadModifier, false) != Qt::ControlModifier || column < 0 ||
        column >= ListColumnCount) {
        return false;
    }
    emit DoubleClicked(column, 0);
    return true;
}

bool GridView::PasteByKey(QKeyEvent& event) {
    if (!event.matches(QKeySequence::Paste)) {
        return false;
    }
    const QMimeData* held = QApplication::clipboard()->mimeData();
    const std::vector<std::string> paths = held == nullptr ? std::vector<std::string>() : LocalFiles(*held);
    if (!paths.empty() && MayTakeDrop()) {
        emit FilesDropped(paths);
    }
    return true;
}

void GridView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit EnterPressed();
        break;
    case Qt::Key_Left:
    case Qt::Key_Right: {
        QScrollBar& bar = *horizontalScrollBar();
        bar.setValue(bar.value() + (event->key() == Qt::Key_Left ? -bar.singleStep() : bar.singleStep()));
        break;
    }
    default:
        if (!MoveByKey(*event) && !SortByKey(*event) && !PasteByKey(*event) && !MoveByLetter(*event)) {
            event->ignore();
        }
    }
}

// The menu key opens the menu of the current row; the mouse's own press has already had its menu.
void GridView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() != QContextMenuEvent::Keyboard || m_selection.Rows() < 2) {
        return;
    }
    m_selection.MenuKey();
    const std::int32_t row = m_selection.Row();
    const QPoint place =
        row >= 1 ? visualRect(m_model.index(row - 1, 0)).bottomLeft() : viewport()->rect().topLeft();
    emit KontextMenuWanted(viewport()->mapToGlobal(place));
}

void GridView::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    m_selection.GotFocus();
    RepaintRows();
}

void GridView::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    viewport()->update();
}

void GridView::showEvent(QShowEvent* event) {
    SetRowHeight(); // The screen is known only now.
    QTableView::showEvent(event);
}

void GridView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        SetRowHeight();
    }
}

void GridView::paintEvent(QPaintEvent* event) {
    const int end = horizontalHeader()->length() - horizontalHeader()->offset();
    if (end < viewport()->width() && m_model.rowCount() > 0) {
        QPainter painter(viewport());
        const int height = verticalHeader()->defaultSectionSize();
        for (int row = TopRow(); row <= m_model.rowCount(); ++row) {
            const QRect rest(end, rowViewportPosition(row - 1), viewport()->width() - end, height);
            if (rest.top() > viewport()->height()) {
                break;
            }
            m_painter->PaintRest(painter, rest, row, palette());
        }
    }
    QTableView::paintEvent(event);
}

void GridView::ScrollByNotch(int delta) {
    // One notch is one row, whatever the size of the delta; neither the row nor the selection moves.
    if (delta >= 0) {
        SetTopRow(std::max(TopRow() - 1, 1));
    } else if (TopRow() < m_selection.Rows()) {
        SetTopRow(TopRow() + 1);
    }
}

void GridView::wheelEvent(QWheelEvent* event) {
    const QPoint delta = event->angleDelta();
    if (delta.y() == 0 && delta.x() != 0) {
        QTableView::wheelEvent(event);
        return;
    }
    ScrollByNotch(delta.y());
    event->accept();
}

bool GridView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        if (toolTip().isEmpty()) {
            QToolTip::hideText();
        } else {
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), toolTip(), viewport());
        }
        return true;
    }
    return QTableView::viewportEvent(event);
}

void GridView::Drag() {
    const std::vector<std::string> files = m_selection.StartDrag();
    if (!files.empty()) {
        // The selection stays as it was when the drag began, also to look at.
        const PaintingOff off(*this);
        DragFiles(*this, FilesToOffer(files));
    }
    m_selection.CompleteDrag();
}

void GridView::TakeFiles(QDropEvent& event) const {
    (void)AnswerDrag(event, m_takesFiles);
}

// The files are looked at once, when the drag enters: there may be very many.
void GridView::dragEnterEvent(QDragEnterEvent* event) {
    // Its own rows are in the library. A look at it that fails is none of the pointer's business.
    m_takesFiles = event->source() != this && MayTakeDrop();
    if (m_takesFiles) {
        IgnoreFailure([&] { m_takesFiles = WouldAddFiles(LocalFiles(*event->mimeData())); });
    }
    TakeFiles(*event);
}

void GridView::dragMoveEvent(QDragMoveEvent* event) {
    TakeFiles(*event);
}

void GridView::dropEvent(QDropEvent* event) {
    const std::vector<std::string> paths = LocalFiles(*event->mimeData());
    TakeFiles(*event);
    if (event->isAccepted()) {
        emit FilesDropped(paths);
    }
}

} // namespace quavernet
