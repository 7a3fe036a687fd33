#include "tree/TreePane.h"

#include "adapters/qt/QtText.h"
#include "app/CommandRegistry.h"
#include "app/Controls.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/MayAct.h"
#include "app/ScopedValue.h"
#include "app/TextNumbers.h"
#include "platform/LibraryError.h"
#include "tree/LoadTree.h"
#include "tree/TreeView.h"
#include "widgets/KeyCodes.h"
#include "widgets/MenuEnd.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <utility>

namespace quavernet {

namespace {

// The release of a button is not among them: a press that began before a load still ends.
bool ActsOnNodes(QEvent::Type type) {
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick ||
           type == QEvent::KeyPress || type == QEvent::ContextMenu;
}

} // namespace

TreePane::TreePane(TreeView& tree, Controls& controls, const CommandRegistry& commands, PlayerWindow& player)
    : QObject(&tree), m_tree(tree), m_controls(controls), m_commands(commands), m_player(player) {
    tree.installEventFilter(this);
    tree.viewport()->installEventFilter(this);
    tree.verticalScrollBar()->installEventFilter(this);
    tree.horizontalScrollBar()->installEventFilter(this);
    connect(&tree, &QTreeView::expanded, this, [this](const QModelIndex& index) {
        // The toolkit also tells of nodes without children, which never look expanded: to keep those would
        // make a later load fail for no reason that anyone sees.
        if (m_tree.model()->hasChildren(index)) {
            TreeExpand(Model(), TreeItems::NodeOf(index)->Key);
        }
    });
    connect(&tree, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { TreeCollapse(Model(), TreeItems::NodeOf(index)->Key); });
    connect(tree.selectionModel(), &QItemSelectionModel::selectionChanged, this, &TreePane::NodeClick);
    connect(&tree, &QAbstractItemView::clicked, this, &TreePane::NodeClick);
    connect(&tree, &QWidget::customContextMenuRequested, this, &TreePane::ContextMenu);
}

TreeModel& TreePane::Model() {
    return m_tree.Model();
}

void TreePane::LoadTree() {
    const std::uint64_t load = ++m_begun;
    const ScopedValue running(mainModule.TreeLoading, true); // Loads may lie in each other.
    m_tree.LoseSelection();
    TreeModel loaded;
    const auto seen = mainModule.TreeLoaded ? std::optional(Model().ChangesOfOthers()) : std::nullopt;
    try {
        quavernet::LoadTree(loaded, seen);
    } catch (const LibraryError&) {
        (void)ShowUnlessOlder(load, std::move(loaded));
        throw;
    } catch (const RuntimeError&) {
        // A newer load has already shown a newer tree: then this failure, of rows that have changed
        // meanwhile, no longer matters. A command that ignores it still shows the new tree, as far as it
        // came.
        if (ShowUnlessOlder(load, std::move(loaded))) {
            throw;
        }
        return;
    }
    (void)ShowUnlessOlder(load, std::move(loaded));
}

bool TreePane::ShowUnlessOlder(std::uint64_t load, TreeModel loaded) {
    if (m_shown >= load) {
        return false;
    }
    m_tree.Show(std::move(loaded));
    m_shown = load;
    return true;
}

void TreePane::LoadStrings() {
    constexpr int NoCategoriesYet = 808;
    m_tree.SetHint(ToQString(LoadResString(NoCategoriesYet)));
    if (mainModule.TreeLoaded && Model().Contains(RootKey)) {
        m_tree.Items().SetRootText(LoadResString(Texts::TreeRoot));
    }
}

void TreePane::NodeClick() {
    const QModelIndexList selected = m_tree.selectionModel()->selectedIndexes();
    if (!selected.isEmpty()) {
        TreeNodeClick(Model(), TreeItems::NodeOf(selected.constFirst())->Key);
    } else {
        // The toolkit takes the mark away at a press where no node is, or with Ctrl. A node stays selected
        // until another one is, or commands would act on one that nobody sees.
        m_tree.ShowSelection();
    }
}

void TreePane::ContextMenu(const QPoint& position) {
    const auto items = TreeRightPress(Model(), m_tree.NodeAt(position));
    if (!items) {
        return;
    }
    m_tree.ShowSelection();
    if (!MayAct()) {
        return;
    }
    ShowMenuItems(*items);
    const QPoint place = m_tree.viewport()->mapToGlobal(position);
    m_controls.PopUp("mnuTree", {place.x(), place.y()});
    WhenMenuCloses(m_tree, [this] { m_tree.EndPress(); });
}

void TreePane::ShowMenuItems(const std::vector<TreeMenuItem>& items) {
    for (const TreeMenuItem& entry : items) {
        m_controls.SetVisible(entry.Name, entry.Visible);
        m_controls.SetEnabled(entry.Name, entry.Visible);
    }
}

void TreePane::KeyDown(const QKeyEvent& event) {
    if (TreeKeyDown(Model(), KeyCode(event)) != TreeKeyAction::Delete) {
        return;
    }
    IgnoreFailure([this] { (void)m_commands.Run("mnuDelete"); });
}

// By the kind of the event first: the last events arrive while the tree is being destroyed.
bool TreePane::eventFilter(QObject* watched, QEvent* event) {
    if (mainModule.TreeLoading && ActsOnNodes(event->type()) &&
        (watched == &m_tree || watched == m_tree.viewport())) {
        return true;
    }
    if (event->type() == QEvent::Wheel) {
        // The wheel moves the list wherever the mouse is: the window gets it. To the side it is the
        // tree's.
        const QPoint delta = static_cast<QWheelEvent*>(event)->angleDelta();
        event->ignore();
        return delta.y() != 0 || delta.x() == 0;
    }
    if (event->type() == QEvent::KeyPress && watched == &m_tree) {
        KeyDown(*static_cast<QKeyEvent*>(event));
    } else if (event->type() == QEvent::MouseButtonDblClick && watched == m_tree.viewport() &&
               static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton &&
               !m_tree.NodeAt(static_cast<QMouseEvent*>(event)->pos()).empty() && MayActOnTree()) {
        const ScopedValue alone(mainModule.ActsAlone, true);
        TreeDblClick(Model(), m_player);
    }
    return false;
}

} // namespace quavernet
