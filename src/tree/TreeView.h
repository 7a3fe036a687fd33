// The tree control of the main window: shows the nodes of TreeItems, tells which node is at a place, scrolls,
// and passes on what mouse and drags do on it. The main window's panes make it; TreePane and TreeDragDrop
// handle what happens on it.
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
    /// No node is selected any more, in the model and on the screen.
    void LoseSelection();

    /// Key of the node at the top of the visible part; empty in an empty tree.
    std::string GetTreeViewFirstVisibleNode() const;
    /// Scrolls so that the node is at the top, or as far as the tree goes. Throws RuntimeError 35601 if there
    /// is none of that key.
    void SetTreeViewFirstVisibleNode(const std::string& key);
    /// Scrolls by one node: up for -1, down for 1.
    void ScrollLine(int direction);

    /// From now on the model's target of a drop is painted as such, or no longer.
    void SetShowsTarget(bool shows);
    /// What the view says below the root while there are no categories.
    void SetHint(const QString& hint);

    /// The row of a node has to be painted again; nullptr for none.
    void UpdateRow(const TreeNode* node);

    /// Whether the press that goes on may become a drag; each press begins with one that may not.
    void SetMayDrag(bool may) { m_mayDrag = may; }

    /// The button is up, or the menu that took its place has closed.
    void EndPress() { emit Released(); }

signals:
    /// The key is empty where no node is.
    void Pressed(const std::string& key, bool isRightButton);
    void Released(); ///< The press has ended.
    /// The mouse has moved far enough with the left button held.
    void DragWanted();
    void DragEntered(QDropEvent& event); ///< Handlers of these three accept the event or ignore it.
    void DragMoved(QDropEvent& event);
    void Dropped(QDropEvent& event);
    void DragLeft();
    // The keyboard's way to drag: take a node up, or a copy of it, and drop it on the selected node.
    void CutPressed();
    void CopyPressed();
    void PastePressed();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;

private:
    bool ShowsHint() const;
    void TellHint();

    TreeItems m_items;
    QString m_hint;
    QPoint m_pressPosition;
    bool m_mayDrag = false;
    bool m_showsTarget = false;
    mutable bool m_selectedBranch = false; ///< What is being drawn is left of a selected node.
};

} // namespace quavernet
