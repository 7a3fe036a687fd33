#include "mainwindow/GridView.h"

#include "app/MainModule.h"
#include "mainwindow/Pictures.h"
#include "platform/RuntimeError.h"

#include <QApplication>
#include <QDrag>
#include <QFile>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QUrl>

namespace quavernet {

namespace {

/// Paints the rows of the selection: what looks like a selection is cell colour.
class RowPainter : public QStyledItemDelegate {
public:
    RowPainter(const GridSelection& selection, QObject* parent)
        : QStyledItemDelegate(parent), m_selection(selection) {}

    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
        if (m_selection.IsPainted(index.row() + 1)) {
            option->backgroundBrush = option->palette.brush(QPalette::Active, QPalette::Highlight);
            option->palette.setBrush(QPalette::Text,
                                     option->palette.brush(QPalette::Active, QPalette::HighlightedText));
        }
    }

private:
    const GridSelection& m_selection;
};

/// The header draws the sort arrow at the right edge of its cell.
class ArrowHeader : public QHeaderView {
public:
    ArrowHeader(const ListModel& model, QWidget* parent)
        : QHeaderView(Qt::Horizontal, parent), m_list(model) {}

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override {
        painter->save();
        QHeaderView::paintSection(painter, rect, section);
        painter->restore();
        if (section == m_list.SortColumn()) {
            constexpr int Size = 16;
            const QRect place(rect.right() - Size - 3, rect.center().y() - Size / 2, Size, Size);
            Picture(m_list.SortAscending() ? "ArrowUp" : "ArrowDown").paint(painter, place);
        }
    }

private:
    const ListModel& m_list;
};

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

} // namespace

GridView::GridView(QWidget* parent) : QTableView(parent), m_selection(*this) {
    setObjectName(QStringLiteral("grdMp3"));
    setModel(&m_model);
    setItemDelegate(new RowPainter(m_selection, this));
    setHorizontalHeader(new ArrowHeader(m_model, this));
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setMouseTracking(true);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 5);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(0);
    connect(horizontalHeader(), &QHeaderView::sectionDoubleClicked, this, &GridView::HeaderDoubleClicked);
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

void GridView::SetScanningPanel(const std::string& text) {
    if (ShowInScanningPanel) {
        ShowInScanningPanel(text);
    }
}

void GridView::SetKontextItems(int) {
    // The items that depend on one or several rows belong to commands that are not in the menu yet; the
    // view options are on in both cases.
}

std::int32_t GridView::MouseRow(const QPoint& position) const {
    return rowAt(position.y()) + 1;
}

void GridView::mousePressEvent(QMouseEvent* event) {
    setFocus(Qt::MouseFocusReason);
    window()->raise();
    m_pressPosition = event->pos();
    const GridModifiers modifiers{event->modifiers().testFlag(Qt::ShiftModifier),
                                  event->modifiers().testFlag(Qt::ControlModifier),
                                  event->modifiers().testFlag(Qt::AltModifier)};
    m_selection.MouseDown(MouseRow(event->pos()), ButtonOf(*event), modifiers);
    if (event->button() == Qt::RightButton && m_selection.Rows() >= 2) {
        emit KontextMenuWanted(event->globalPosition().toPoint());
    }
}

void GridView::mouseMoveEvent(QMouseEvent* event) {
    emit MouseMoved();
    if (event->buttons() == Qt::LeftButton && !m_selection.CtrlDown() &&
        (event->pos() - m_pressPosition).manhattanLength() >= QApplication::startDragDistance()) {
        DragSelectedFiles();
    }
}

void GridView::mouseReleaseEvent(QMouseEvent*) {
    m_selection.MouseUp();
}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
    const std::int32_t row = MouseRow(event->pos());
    if (row >= 1 && !m_selection.RightClicked()) {
        emit RowDoubleClicked(m_selection.Row());
    }
}

void GridView::keyPressEvent(QKeyEvent* event) {
    const std::int32_t page =
        std::max(1, viewport()->height() / std::max(1, verticalHeader()->defaultSectionSize()) - 1);
    std::int32_t target = m_selection.RowSel();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit EnterPressed();
        return;
    case Qt::Key_Up:
        target -= 1;
        break;
    case Qt::Key_Down:
        target += 1;
        break;
    case Qt::Key_PageUp:
        target -= page;
        break;
    case Qt::Key_PageDown:
        target += page;
        break;
    case Qt::Key_Home:
        target = 1;
        break;
    case Qt::Key_End:
        target = m_selection.Rows() - 1;
        break;
    default:
        QTableView::keyPressEvent(event);
        return;
    }
    m_selection.MoveTo(target, event->modifiers().testFlag(Qt::ShiftModifier));
    if (m_selection.RowSel() >= 1 && !RowIsVisible(m_selection.RowSel())) {
        scrollTo(m_model.index(m_selection.RowSel() - 1, 0));
    }
}

void GridView::wheelEvent(QWheelEvent* event) {
    const int delta = event->angleDelta().y();
    if (delta == 0) {
        QTableView::wheelEvent(event);
        return;
    }
    // One notch is one row, whatever the size of the delta; neither the row nor the selection moves.
    SetTopRow(TopRow() + (delta > 0 ? -1 : 1));
    event->accept();
}

bool GridView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        QString tip;
        Skip([&] { tip = ToQString(mainModule.FileNames.Item(MouseRow(help->pos()))); });
        if (tip.isEmpty()) {
            QToolTip::hideText();
        } else {
            QToolTip::showText(help->globalPos(), tip, viewport());
        }
        return true;
    }
    return QTableView::viewportEvent(event);
}

void GridView::DragSelectedFiles() {
    if (m_selection.Row() < 1) {
        return;
    }
    QList<QUrl> urls;
    for (const std::int32_t row : mainModule.SelectedRows.Rows()) {
        Skip([&] {
            urls.append(QUrl::fromLocalFile(
                QFile::decodeName(QByteArray::fromStdString(mainModule.FilePaths.Item(row)))));
        });
    }
    if (!urls.isEmpty()) {
        auto* drag = new QDrag(this);
        auto* files = new QMimeData;
        files->setUrls(urls);
        drag->setMimeData(files);
        drag->setPixmap(Picture("drag").pixmap(24));
        drag->exec(Qt::CopyAction);
    }
    m_selection.MouseUp();
}

} // namespace quavernet
