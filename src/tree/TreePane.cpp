#include "tree/TreePane.h"

#include "app/CommandRegistry.h"
#include "app/Controls.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"
#include "tree/LoadTree.h"
#include "widgets/KeyCodes.h"
#include "widgets/Pictures.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace quavernet {

namespace {

constexpr int IndexRole =
    Qt::UserRole; ///< The node's Index; a key need not survive as a text of the toolkit.

/// The picture at rest, and the one of the selected node where there is one.
QIcon IconOf(const TreeNode& node) {
    QIcon icon = Picture(node.Image);
    if (*node.SelectedImage != '\0') {
        icon.addFile(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(node.SelectedImage)), QSize(),
                     QIcon::Selected);
    }
    return icon;
}

} // namespace

TreePane::TreePane(QTreeWidget& tree, Controls& controls, const CommandRegistry& commands,
                   PlayerWindow& player)
    : QObject(&tree), m_tree(tree), m_controls(controls), m_commands(commands), m_player(player) {
    tree.setHeaderHidden(true);
    tree.setUniformRowHeights(true);
    tree.setContextMenuPolicy(Qt::CustomContextMenu);
    // A long name gets a scroll bar instead of dots.
    tree.header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tree.header()->setStretchLastSection(false);
    tree.installEventFilter(this);
    tree.viewport()->installEventFilter(this);
    tree.verticalScrollBar()->installEventFilter(this);
    tree.horizontalScrollBar()->installEventFilter(this);
    connect(&tree, &QTreeWidget::itemExpanded, this,
            [this](QTreeWidgetItem* item) { TreeExpand(m_model, KeyOf(item)); });
    connect(&tree, &QTreeWidget::itemCollapsed, this,
            [this](QTreeWidgetItem* item) { TreeCollapse(m_model, KeyOf(item)); });
    connect(&tree, &QTreeWidget::itemSelectionChanged, this, &TreePane::NodeClick);
    connect(&tree, &QTreeWidget::itemClicked, this, &TreePane::NodeClick);
    connect(&tree, &QWidget::customContextMenuRequested, this, &TreePane::ContextMenu);
}

std::string TreePane::KeyOf(const QTreeWidgetItem* item) const {
    return item == nullptr
               ? std::string()
               : m_model.Nodes()[static_cast<std::size_t>(item->data(0, IndexRole).toULongLong()) - 1].Key;
}

void TreePane::LoadTree() {
    quavernet::LoadTree(m_model);
    Show();
}

void TreePane::LoadStrings() {
    if (!mainModule.TreeLoaded || !m_model.Contains(RootKey)) {
        return;
    }
    TreeNode& root = m_model.Node(RootKey);
    root.Text = LoadResString(Texts::TreeRoot);
    m_items.at(root.Key)->setText(0, ToQString(root.Text));
}

// Painting is off around the rebuild, and the nodes that it expands are not the user's doing.
void TreePane::Show() {
    const QSignalBlocker silent(m_tree);
    m_tree.setUpdatesEnabled(false);
    m_tree.clear();
    m_items.clear();
    for (const TreeNode& node : m_model.Nodes()) {
        if (node.Parent == nullptr) {
            auto* item = new QTreeWidgetItem(&m_tree);
            ShowNode(*item, node);
            ShowChildren(*item, node);
        }
    }
    ShowColors();
    for (const TreeNode& node : m_model.Nodes()) {
        if (node.Expanded) {
            m_items.at(node.Key)->setExpanded(true);
        }
    }
    m_tree.setUpdatesEnabled(true);
}

void TreePane::ShowChildren(QTreeWidgetItem& parent, const TreeNode& node) {
    for (const TreeNode* child : node.Children) {
        auto* item = new QTreeWidgetItem(&parent);
        ShowNode(*item, *child);
        ShowChildren(*item, *child);
    }
}

void TreePane::ShowNode(QTreeWidgetItem& item, const TreeNode& node) {
    item.setText(0, ToLine(node.Text));
    item.setData(0, IndexRole, static_cast<qulonglong>(node.Index));
    item.setIcon(0, IconOf(node));
    QFont font = m_tree.font();
    font.setBold(node.Bold);
    item.setFont(0, font);
    m_items.emplace(node.Key, &item);
}

void TreePane::ShowColors() {
    for (const TreeNode& node : m_model.Nodes()) {
        if (node.ForeColor != TreeNode::TextColor) {
            m_items.at(node.Key)->setForeground(0, ColorOn(m_tree.palette(), node.ForeColor));
        }
    }
}

void TreePane::NodeClick() {
    const QList<QTreeWidgetItem*> selected = m_tree.selectedItems();
    if (!selected.isEmpty()) {
        TreeNodeClick(m_model, KeyOf(selected.constFirst()));
    } else if (m_model.HasSelection()) {
        // The toolkit takes the mark away at a press beside all nodes, or with Ctrl. A node stays selected
        // until another one is, or commands would act on one that nobody sees.
        const QSignalBlocker silent(m_tree);
        m_items.at(m_model.SelectedItem().Key)->setSelected(true);
    }
}

void TreePane::ContextMenu(const QPoint& position) {
    QTreeWidgetItem* item = m_tree.itemAt(position);
    const auto items = TreeRightPress(m_model, KeyOf(item));
    if (!items) {
        return;
    }
    m_tree.setCurrentItem(item);
    if (mainModule.ScanRunning) {
        return;
    }
    ShowMenuItems(*items);
    const QPoint place = m_tree.viewport()->mapToGlobal(position);
    m_controls.PopUp("mnuTree", {place.x(), place.y()});
}

void TreePane::ShowMenuItems(const std::vector<TreeMenuItem>& items) {
    for (const TreeMenuItem& entry : items) {
        m_controls.SetVisible(entry.Name, entry.Visible);
        m_controls.SetEnabled(entry.Name, entry.Visible);
    }
}

void TreePane::KeyDown(const QKeyEvent& event) {
    if (TreeKeyDown(m_model, KeyCode(event)) != TreeKeyAction::Delete) {
        return;
    }
    IgnoreFailure([this] { (void)m_commands.Run("mnuDelete"); });
}

// By the kind of the event first: the last ones come when the tree is hardly a tree any more.
bool TreePane::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel) {
        // The wheel moves the list wherever the mouse is: the window gets it. To the side it is the
        // tree's.
        const QPoint delta = static_cast<QWheelEvent*>(event)->angleDelta();
        event->ignore();
        return delta.y() != 0 || delta.x() == 0;
    }
    if (event->type() == QEvent::KeyPress && watched == &m_tree) {
        KeyDown(*static_cast<QKeyEvent*>(event));
    } else if (event->type() == QEvent::PaletteChange && watched == &m_tree) {
        ShowColors();
    } else if (event->type() == QEvent::MouseButtonDblClick && watched == m_tree.viewport() &&
               static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton &&
               m_tree.itemAt(static_cast<QMouseEvent*>(event)->pos()) != nullptr && !mainModule.ScanRunning) {
        TreeDblClick(m_model, m_player);
    }
    return false;
}

} // namespace quavernet
