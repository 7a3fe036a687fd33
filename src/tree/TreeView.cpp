#include "tree/TreeView.h"

#include "widgets/Colours.h"

#include <QApplication>
#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>

#include <utility>

namespace quavernet {

namespace {

// Ctrl+C is a command of the menu, so that copying has the keys of the list.
bool IsCopy(const QKeyEvent& event) {
    const QKeySequence pressed(event.keyCombination());
    return pressed == QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C) ||
           pressed == QKeySequence(Qt::CTRL | Qt::Key_Insert);
}

} // namespace

TreeView::TreeView(QWidget* parent) : QTreeView(parent), m_items(*this) {
    setObjectName(QStringLiteral("TreeView"));
    setModel(&m_items);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setAcceptDrops(true);
    viewport()->setAcceptDrops(true);
    // A long name gets a scroll bar instead of dots.
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setStretchLastSection(false);
}

void TreeView::Show(TreeModel model) {
    const QSignalBlocker silent(this); // What is expanded here is not the user's doing.
    m_items.Show(std::move(model));
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    for (const TreeNode& node : Model().Nodes()) {
        if (node.Expanded) {
            setExpanded(m_items.IndexOf(node), true);
        }
    }
    TellHint();
}

std::string TreeView::NodeAt(const QPoint& position) const {
    // The column may end before the row does: only the height counts.
    const TreeNode* node = TreeItems::NodeOf(indexAt(QPoint(0, position.y())));
    return node == nullptr ? std::string() : node->Key;
}

void TreeView::ShowSelection() {
    if (Model().HasSelection()) {
        setCurrentIndex(m_items.IndexOf(Model().SelectedItem()));
    }
}

void TreeView::LoseSelection() {
    Model().ClearSelection(); // First: the form marks the model's node again when the mark goes.
    selectionModel()->clear();
}

std::string TreeView::GetTreeViewFirstVisibleNode() const {
    return NodeAt(QPoint(0, 0));
}

void TreeView::SetTreeViewFirstVisibleNode(const std::string& key) {
    scrollTo(m_items.IndexOf(Model().Node(key)), PositionAtTop);
}

void TreeView::ScrollLine(int direction) {
    verticalScrollBar()->setValue(verticalScrollBar()->value() + direction);
}

void TreeView::SetShowsTarget(bool shows) {
    if (shows != m_showsTarget) {
        m_showsTarget = shows;
        UpdateRow(Model().DropHighlight());
    }
}

void TreeView::SetHint(const QString& hint) {
    m_hint = hint;
    TellHint();
}

bool TreeView::ShowsHint() const {
    const QModelIndex root = m_items.index(0, 0, {});
    return root.isValid() && m_items.rowCount(root) == 0;
}

// A screen reader does not see what is painted.
void TreeView::TellHint() {
    setAccessibleDescription(ShowsHint() ? m_hint : QString());
    viewport()->update();
}

void TreeView::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    if (ShowsHint()) {
        constexpr int Margin = 8;
        const int top = visualRect(m_items.index(0, 0, {})).bottom();
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(viewport()->rect().adjusted(Margin, top + Margin, -Margin, -Margin),
                         Qt::AlignTop | Qt::AlignLeft | Qt::TextWordWrap, m_hint);
    }
}

void TreeView::UpdateRow(const TreeNode* node) {
    if (node != nullptr) {
        const QRect cell = visualRect(m_items.IndexOf(*node));
        viewport()->update(0, cell.top(), viewport()->width(), cell.height());
    }
}

// In the tree these keys are its own, and not the list's.
bool TreeView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && IsCopy(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QTreeView::event(event);
}

void TreeView::keyPressEvent(QKeyEvent* event) {
    if (QKeySequence(event->keyCombination()) == QKeySequence(Qt::CTRL | Qt::Key_X)) { // Delete deletes.
        emit CutPressed();
    } else if (IsCopy(*event)) {
        emit CopyPressed();
    } else if (event->matches(QKeySequence::Paste)) {
        emit PastePressed();
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void TreeView::mousePressEvent(QMouseEvent* event) {
    m_mayDrag = false;
    m_pressPosition = event->pos();
    const std::string key = NodeAt(event->pos()); // The toolkit may expand a node: then others are here.
    QTreeView::mousePressEvent(event);
    emit Pressed(key, event->button() == Qt::RightButton);
}

void TreeView::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton) {
        QTreeView::mouseMoveEvent(event);
        return;
    }
    // A held button selects nothing on the way: it drags, or does nothing.
    const int distance = (event->pos() - m_pressPosition).manhattanLength();
    if (m_mayDrag && event->buttons() == Qt::LeftButton && distance >= QApplication::startDragDistance()) {
        m_mayDrag = false;
        emit DragWanted();
    }
}

void TreeView::mouseReleaseEvent(QMouseEvent* event) {
    m_mayDrag = false;
    QTreeView::mouseReleaseEvent(event);
    EndPress();
}

void TreeView::dragEnterEvent(QDragEnterEvent* event) {
    emit DragEntered(*event);
}

void TreeView::dragMoveEvent(QDragMoveEvent* event) {
    emit DragMoved(*event);
}

void TreeView::dragLeaveEvent(QDragLeaveEvent*) {
    emit DragLeft();
}

void TreeView::dropEvent(QDropEvent* event) {
    emit Dropped(*event);
}

void TreeView::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const {
    m_selectedBranch = selectionModel()->isSelected(index);
    QTreeView::drawBranches(painter, rect, index);
    m_selectedBranch = false;
}

// The mark reaches the view's edge; the toolkit paints no further than the column again.
void TreeView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTreeView::selectionChanged(selected, deselected);
    viewport()->update();
}

// The arrow of the selected node lies on its mark, and is drawn like its text.
void TreeView::initViewItemOption(QStyleOptionViewItem* option) const {
    QTreeView::initViewItemOption(option);
    const QColor ground = ColourOf(OwnColour::SelectionGround, option->palette);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        option->palette.setBrush(group, QPalette::Highlight, ground);
        option->palette.setBrush(group, QPalette::HighlightedText,
                                 option->palette.brush(QPalette::Active, QPalette::HighlightedText));
    }
    if (m_selectedBranch) {
        const QBrush text = option->palette.brush(QPalette::HighlightedText);
        for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
            option->palette.setBrush(role, text);
        }
    }
}

// The whole row takes the drop, so all of it is marked; the selected node stays recognisable by its ground.
void TreeView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
    const QRect row(0, option.rect.top(), viewport()->width(), option.rect.height());
    const bool takesDrop = m_showsTarget && TreeItems::NodeOf(index) == m_items.Model().DropHighlight();
    const bool isSelected = selectionModel()->isSelected(index);
    if (takesDrop && !isSelected) {
        painter->fillRect(row, ColourOf(OwnColour::DropGround, palette())); // Below the text.
    }
    QTreeView::drawRow(painter, option, index);
    const int end = visualRect(index).right() + 1;
    if (isSelected && end < viewport()->width()) {
        painter->fillRect(QRect(end, row.top(), viewport()->width() - end, row.height()),
                          ColourOf(OwnColour::SelectionGround, palette()));
    }
    if (takesDrop) {
        painter->setPen(isSelected ? palette().color(QPalette::Active, QPalette::HighlightedText)
                                   : ColourOf(OwnColour::FocusLine, palette()));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(row.adjusted(0, 0, -1, -1));
    }
}

} // namespace quavernet
