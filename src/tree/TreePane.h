// The category tree in the main window: loads it, and hands what mouse and keyboard do on it to the tree's
// logic. The main window makes it.
#pragma once

#include "tree/TreeEvents.h"
#include "tree/TreeModel.h"

#include <QObject>

#include <cstdint>
#include <string>
#include <vector>

class QKeyEvent;
class QPoint;

namespace quavernet {

class CommandRegistry;
class Controls;
class TreeView;

class TreePane : public QObject {
    Q_OBJECT
public:
    TreePane(TreeView& tree, Controls& controls, const CommandRegistry& commands, PlayerWindow& player);

    /// Builds the tree again from the library. Fails as the logic's LoadTree does; what it leaves is shown.
    /// Lets events run: a load that begins in them is the newer one, and its tree stays. From its beginning
    /// on nothing is selected, and until its end no press, key or drop acts on the tree.
    void LoadTree();

    /// The root's text in the current language, once the tree has been loaded.
    void LoadStrings();

    /// Replaced by each load: no pointer into it outlives one.
    TreeModel& Model();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// False, and nothing happens, if the tree of a newer load is shown.
    bool ShowUnlessOlder(std::uint64_t load, TreeModel loaded);
    void NodeClick();
    void ContextMenu(const QPoint& position);
    void ShowMenuItems(const std::vector<TreeMenuItem>& items);
    void KeyDown(const QKeyEvent& event);

    TreeView& m_tree;
    Controls& m_controls;
    const CommandRegistry& m_commands;
    PlayerWindow& m_player;
    std::uint64_t m_begun = 0; ///< Loads, numbered from 1.
    std::uint64_t m_shown = 0; ///< The number of the load whose tree is shown.
};

} // namespace quavernet
