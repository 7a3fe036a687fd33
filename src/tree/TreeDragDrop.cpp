#include "tree/TreeDragDrop.h"

#include "adapters/qt/FileUris.h"
#include "adapters/qt/QtText.h"
#include "app/LibraryViews.h"
#include "app/LongWork.h"
#include "app/MainModule.h"
#include "app/MayAct.h"
#include "platform/RuntimeError.h"
#include "tree/TreeDrag.h"
#include "tree/TreeDrop.h"
#include "tree/TreeEvents.h"
#include "tree/TreeView.h"
#include "widgets/DragFiles.h"
#include "widgets/PaintingOff.h"
#include "widgets/Twips.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QScrollBar>

#include <utility>

namespace quavernet {

namespace {

constexpr int ScrollMs = 100;

// True for Ctrl alone, not for Ctrl with Shift or Alt.
bool IsControlHeld(const QDropEvent& event) {
    constexpr Qt::KeyboardModifiers Asked = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;
    return (event.modifiers() & Asked) == Qt::ControlModifier;
}

// Beside the files: which node they are of, in which running program.
const QString NodeFormat = QStringLiteral("application/x-quavernet-node");

QByteArray MarkOf(const std::string& key) {
    return QByteArray::number(QCoreApplication::applicationPid()) + ' ' + QByteArray::fromStdString(key);
}

} // namespace

TreeDragDrop::TreeDragDrop(TreeView& tree, LibraryViews& views, DragState& drag, ScanDriver& driver,
                           LongWork& work)
    : m_tree(tree), m_views(views), m_drag(drag), m_driver(driver), m_work(work) {
    m_timer1.setParent(this);
    m_timer1.setObjectName(QStringLiteral("Timer1"));
    m_timer1.setInterval(ScrollMs);
    connect(&m_timer1, &QTimer::timeout, this, &TreeDragDrop::Timer1_Timer);
    connect(&tree, &TreeView::Pressed, this, &TreeDragDrop::Press);
    connect(&tree, &TreeView::Released, this, [this] { TreeRelease(m_drag); });
    connect(&tree, &TreeView::DragWanted, this, &TreeDragDrop::StartDrag);
    connect(&tree, &TreeView::DragEntered, this, &TreeDragDrop::Enter);
    connect(&tree, &TreeView::DragMoved, this, &TreeDragDrop::Move);
    connect(&tree, &TreeView::DragLeft, this, &TreeDragDrop::Leave);
    connect(&tree, &TreeView::Dropped, this, &TreeDragDrop::Drop);
    connect(&tree, &TreeView::CutPressed, this, [this] { TakeUp(false); });
    connect(&tree, &TreeView::CopyPressed, this, [this] { TakeUp(true); });
    connect(&tree, &TreeView::PastePressed, this, &TreeDragDrop::Paste);
}

void TreeDragDrop::Press(const std::string& key, bool isRightButton) {
    const bool mayDrag = TreePress(m_tree.Model(), key, isRightButton, m_drag);
    // Beside all nodes nothing is under the mouse to be dragged, whatever is selected.
    m_tree.SetMayDrag(mayDrag && !key.empty());
    if (!key.empty()) {
        m_tree.ShowSelection();
    }
}

void TreeDragDrop::StartDrag() {
    if (const auto payload = TreeStartDrag(m_tree.Model(), m_drag)) {
        QMimeData* data = FilesToOffer(payload->Files);
        if (!payload->Text.empty()) {
            data->setText(ToQString(payload->Text));
        }
        // If the press came while a drop let events run, that drop has cleared the mark.
        m_drag.DragFromTree = true;
        DragFiles(m_tree, data);
    }
    TreeRelease(m_drag);
}

// The files are looked at once, when the drag enters: there may be very many.
void TreeDragDrop::Enter(QDropEvent& event) {
    m_request.Files = LocalFiles(*event.mimeData());
    // An entry whose file can't be found offers none, and can be moved all the same.
    m_takes = event.source() == &m_tree || !m_request.Files.empty();
    Track(event);
}

// Over a node that takes nothing the drag goes on all the same: it scrolls, and may find another one.
void TreeDragDrop::Move(QDropEvent& event) {
    if (Track(event)) {
        m_request.NodeKey = m_tree.NodeAt(m_position);
        m_request.Control = IsControlHeld(event);
        (void)AnswerDrag(event, WouldDrop(m_request, m_drag, m_tree.Model()));
    }
}

// False if the drag is refused wherever it is.
bool TreeDragDrop::Track(QDropEvent& event) {
    if (!AnswerDrag(event, m_takes)) {
        Leave();
        return false;
    }
    m_position = event.position().toPoint();
    MarkTarget();
    if (const int direction =
            TreeScrollDirection(ToTwips(m_position.y()), ToTwips(m_tree.viewport()->height()))) {
        m_scrollDirection = direction;
        if (!m_timer1.isActive()) {
            m_timer1.start();
        }
    } else {
        m_timer1.stop();
    }
    return true;
}

void TreeDragDrop::MarkTarget() {
    TreeModel& model = m_tree.Model();
    const TreeNode* before = model.DropHighlight();
    TreeDragOver(model, m_tree.NodeAt(m_position), m_position.x(), m_position.y());
    m_tree.SetShowsTarget(true);
    if (model.DropHighlight() != before) {
        m_tree.UpdateRow(before);
        m_tree.UpdateRow(model.DropHighlight());
    }
}

void TreeDragDrop::Timer1_Timer() {
    if (!MayTakeDrop()) {
        Leave(); // The next move of the drag marks and scrolls again, if it may.
        return;
    }
    m_tree.ScrollLine(m_scrollDirection);
    MarkTarget(); // Another node is under the mouse now.
}

void TreeDragDrop::Leave() {
    m_timer1.stop();
    m_tree.SetShowsTarget(false);
}

void TreeDragDrop::Drop(QDropEvent& event) {
    Leave();
    if (!AnswerDrag(event, m_takes && MayActOnTree())) {
        return;
    }
    (void)TakeDrop(
        {LocalFiles(*event.mimeData()), m_tree.NodeAt(event.position().toPoint()), IsControlHeld(event)});
}

// The files go to the clipboard, for other programs too.
void TreeDragDrop::TakeUp(bool isCopy) {
    TreeModel& model = m_tree.Model();
    if (!MayTakeDrop() || !MayActOnTree() || !model.HasSelection()) {
        return;
    }
    TakenUp taken{model.SelectedItem().Key, isCopy, m_drag};
    (void)TreePress(model, taken.Key, false, taken.Drag);
    if (const auto payload = TreeStartDrag(model, taken.Drag)) {
        QMimeData* data = FilesToOffer(payload->Files);
        data->setData(NodeFormat, MarkOf(taken.Key));
        QGuiApplication::clipboard()->setMimeData(data);
        m_takenUp = std::move(taken);
    }
}

// As if what the clipboard holds had been dragged to the selected node. A node that has gone since, or
// another one at its place, is not meant any more: then its files come as from another program.
void TreeDragDrop::Paste() {
    TreeModel& model = m_tree.Model();
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!MayTakeDrop() || !MayActOnTree() || !model.HasSelection() || data == nullptr) {
        return;
    }
    const bool isOurs = data->data(NodeFormat) == MarkOf(m_takenUp.Key) && model.Contains(m_takenUp.Key) &&
                        model.Node(m_takenUp.Key).Text == m_takenUp.Drag.DragText;
    const std::string target = model.SelectedItem().Key;
    const DropRequest request{LocalFiles(*data), target, isOurs && m_takenUp.IsCopy};
    if (!isOurs && request.Files.empty()) {
        return;
    }
    const DragState drag = isOurs ? m_takenUp.Drag : DragState();
    if (!WouldDrop(request, drag, model)) {
        return; // What is taken up waits for another node.
    }
    m_drag = drag;
    if (isOurs) {
        model.Select(
            m_takenUp.Key); // A drop moves the selected node: the press of a drag would have selected it.
    }
    const bool hasDropped = TakeDrop(request);
    TreeRelease(m_drag);
    if (hasDropped && isOurs && !request.Control) {
        m_takenUp = {}; // It can be moved once.
        QGuiApplication::clipboard()->clear();
    }
    // The keys go on where they were, unless the drop has selected what it made.
    if (TreeModel& now = m_tree.Model(); now.Contains(target) && (!hasDropped || !now.HasSelection())) {
        now.Select(target);
    }
    m_tree.ShowSelection();
}

bool TreeDragDrop::TakeDrop(const DropRequest& request) {
    const DropOutcome outcome = TreeDrop(request, m_drag, m_tree.Model(), m_driver, m_work);
    if (outcome.Rebuild) {
        Rebuild(outcome);
        EndTreeDrop(m_drag, m_work);
    }
    if (!outcome.Word.empty()) {
        m_work.TellEnd(outcome.Word);
    }
    return outcome.Rebuild;
}

// Each step is passed over when it fails: what the drop has written is in the library, and shows at the next
// rebuild at the latest.
void TreeDragDrop::Rebuild(const DropOutcome& outcome) {
    const std::string firstVisible = m_tree.GetTreeViewFirstVisibleNode();
    const int scrolledToTheSide = m_tree.horizontalScrollBar()->value();
    const PaintingOff off(m_tree);
    IgnoreFailure([&] { m_views.LoadTree(); });
    if (outcome.FileAdded && !mainModule.LoadOverSearch) {
        IgnoreFailure([&] { m_views.LoadDatabase({}); });
    }
    m_work.DoEvents();
    if (outcome.HadFileTarget) {
        IgnoreFailure([&] { m_tree.SetTreeViewFirstVisibleNode(firstVisible); });
        m_tree.horizontalScrollBar()->setValue(scrolledToTheSide);
        m_work.DoEvents();
        IgnoreFailure([&] {
            m_tree.Model().Select(outcome.SelectKey);
            m_tree.ShowSelection();
        });
    }
    m_work.DoEvents();
}

} // namespace quavernet
