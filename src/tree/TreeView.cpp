#include "tree/TreeView.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QSignalBlocker>

#include <utility>

namespace quavernet {

TreeView::TreeView(QWidget* parent) : QTreeView(parent), m_items(*this) {
    setObjectName(QStringLiteral("TreeView"));
    setModel(&m_items);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setContextMenuPolicy(Qt::CustomContextMenu);
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

} // namespace quavernet
