// The tree on the screen: shows the categories, and hands what mouse and keyboard do on it to the tree's
// logic. The main window makes it.
#pragma once

#include "tree/TreeEvents.h"
#include "tree/TreeModel.h"

#include <QObject>
#include <QTreeWidget>

#include <string>
#include <unordered_map>

namespace quavernet {

class CommandRegistry;
class Controls;

class TreePane : public QObject {
    Q_OBJECT
public:
    TreePane(QTreeWidget& tree, Controls& controls, const CommandRegistry& commands, PlayerWindow& player);

    /// Builds the tree again from the library. Fails as the logic's LoadTree does; the old tree then stays.
    void LoadTree();

    /// The root's text in the current language, once the tree has been loaded.
    void LoadStrings();

    TreeModel& Model() { return m_model; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::string KeyOf(const QTreeWidgetItem* item) const; ///< Empty for no item.
    void Show();
    void ShowChildren(QTreeWidgetItem& parent, const TreeNode& node);
    void ShowNode(QTreeWidgetItem& item, const TreeNode& node);
    void ShowColors();
    void NodeClick();
    void ContextMenu(const QPoint& position);
    void ShowMenuItems(const std::vector<TreeMenuItem>& items);
    void KeyDown(const QKeyEvent& event);

    QTreeWidget& m_tree;
    Controls& m_controls;
    const CommandRegistry& m_commands;
    PlayerWindow& m_player;
    TreeModel m_model;
    std::unordered_map<std::string, QTreeWidgetItem*> m_items; ///< By node key.
};

} // namespace quavernet
