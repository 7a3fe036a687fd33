// What mouse and keyboard do on the category tree: expanding, the context menu, the double click. The tree's
// form passes its events on and shows what comes back.
#pragma once

#include "app/PlayerWindow.h"
#include "tree/NodeKey.h"
#include "tree/TreeModel.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quavernet {

/// The user has expanded or collapsed a node: TreeNodeData remembers it for the next LoadTree.
void TreeExpand(TreeModel& tree, const std::string& key);
void TreeCollapse(TreeModel& tree, const std::string& key);

/// Selects the node and marks it as the target of a drop.
void TreeNodeClick(TreeModel& tree, const std::string& key);

/// A drag is over a node (empty key: over none), at a place in pixels of the tree: the node is
/// marked as its target. At the very edge, where a place is 0, the selected node is.
void TreeDragOver(TreeModel& tree, const std::string& key, std::int32_t x, std::int32_t y);

/// The direction in which a drag at this height scrolls a tree of that height, in twips: -1 up in the upper
/// band, 1 down in the lower one, which is wider; 0 between them and at the edges.
int TreeScrollDirection(std::int32_t y, std::int32_t height);

/// What a key asks of the form.
enum class TreeKeyAction {
    None,
    Delete ///< As mnuDelete, with failures passed over.
};
TreeKeyAction TreeKeyDown(const TreeModel& tree, int keyCode);

/// An item or separator of mnuTree: visible and enabled, or hidden and disabled.
struct TreeMenuItem {
    const char* Name;
    bool Visible;
};

/// The items that depend on the kind of node. mnuExport, mnuImport and mnuEditTree always show.
std::vector<TreeMenuItem> TreeMenuItems(NodeKind kind);

/// A right press at a node (empty key: at none): selects the node and gives the menu's items, or
/// nothing if no menu pops up.
std::optional<std::vector<TreeMenuItem>> TreeRightPress(TreeModel& tree, const std::string& key);

/// Plays the selected entry in the internal or an external player; ends with the count of a play in every
/// case. Failures before the count are told in a box after it; one of the count is thrown.
void TreeDblClick(const TreeModel& tree, PlayerWindow& player);

} // namespace quavernet
