// The tree control of the main window: shows the nodes of TreeItems, tells which node is at a place, and
// scrolls to nodes. The main window's panes make it; TreePane handles what happens on it.
#pragma once

#include "tree/TreeItems.h"

#include <QTreeView>

#include <string>

namespace quavernet {

class TreeView : public QTreeView {
    Q_OBJECT
public:
    explicit TreeView(QWidget* parent);

    TreeItems& Items() { return m_items; }
    TreeModel& Model() { return m_items.Model(); }

    /// A new tree: at its top, nothing selected, the nodes expanded that say so. Emits nothing.
    void Show(TreeModel model);

    /// Key of the node in whose row a place of the viewport is, up to the view's edges; empty below the last
    /// one.
    std::string NodeAt(const QPoint& position) const;

    /// Marks the model's selected node as such; nothing happens if it has none.
    void ShowSelection();

private:
    TreeItems m_items;
};

} // namespace quavernet
