// Drag and drop on the category tree: arms and starts drags of its nodes, shows where a drag would drop,
// scrolls under it, hands the drop to the tree's logic and rebuilds. The main window makes it.
#pragma once

#include "app/DragState.h"
#include "tree/DropRequest.h"

#include <QObject>
#include <QPoint>
#include <QTimer>

#include <string>

class QDropEvent;

namespace quavernet {

class LibraryViews;
class LongWork;
class ScanDriver;
class TreeView;

class TreeDragDrop : public QObject {
    Q_OBJECT
public:
    TreeDragDrop(TreeView& tree, LibraryViews& views, DragState& drag, ScanDriver& driver, LongWork& work);

private:
    void Press(const std::string& key, bool isRightButton);
    void StartDrag();
    void Enter(QDropEvent& event);
    void Move(QDropEvent& event);
    void Leave();
    void Drop(QDropEvent& event);
    void TakeUp(bool isCopy);
    void Paste();
    bool TakeDrop(const DropRequest& request); ///< False if the node took nothing, or the drop failed.
    bool Track(QDropEvent& event);
    void MarkTarget();
    void Timer1_Timer();
    void Rebuild(const DropOutcome& outcome);

    TreeView& m_tree;
    LibraryViews& m_views;
    DragState& m_drag;
    ScanDriver& m_driver;
    LongWork& m_work;
    QTimer m_timer1;           ///< Scrolls while a drag is near the upper or the lower edge.
    int m_scrollDirection = 0; ///< 1 down, -1 up.
    QPoint m_position;         ///< Of the drag over the tree, in pixels.
    bool m_takes = false;      ///< The drag that has entered has something to drop here.
    DropRequest m_request;     ///< What it would drop, and where.

    /// What the keyboard has taken up here; it counts while the clipboard holds its files.
    struct TakenUp {
        std::string Key; ///< Of the node; empty: nothing is taken up.
        bool IsCopy = false;
        DragState Drag; ///< As if the node had been pressed.
    };
    TakenUp m_takenUp;
};

} // namespace quavernet
