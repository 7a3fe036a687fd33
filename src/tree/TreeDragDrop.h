// Drag and drop on the category tree: arms and starts drags of its nodes, shows where a drag would drop,
// scrolls under it, hands the drop to the tree's logic and rebuilds. The main window makes it.
#pragma once

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
struct DragState;
struct DropOutcome;

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
    bool Accept(QDropEvent& event) const;
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
};

} // namespace quavernet
