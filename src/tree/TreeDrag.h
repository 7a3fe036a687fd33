// The beginning of a drag on the category tree, as values without a screen: what a press remembers for the
// drop, and which files a dragged node offers. Called by the tree's form.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quavernet {

class TreeModel;
struct DragState;

/// What a press on the tree does before anything is dragged. The key is that of the node under the mouse,
/// or empty where there is no node; the values of the last press then stay. Every button marks the drag as
/// one from the tree; every button but the right one also selects the node and remembers it. True if a drag
/// may start: by any node but the root, and never by the right button, which opens the menu.
bool TreePress(TreeModel& tree, const std::string& key, bool isRightButton, DragState& drag);

/// The button is up, the drag is over, or the menu of a right press has closed.
void TreeRelease(DragState& drag);

/// What a drag offers to whoever takes it, always as a copy.
struct DragPayload {
    std::string Text;               ///< The key of an entry; empty for a category.
    std::vector<std::string> Files; ///< Paths; without those of entries whose file can't be found.
};

/// The payload of the selected node: an entry's file, or the files of a category in the order of its entries.
/// Nothing for the root, if no node is selected, or while a scan runs.
std::optional<DragPayload> TreeStartDrag(const TreeModel& tree, DragState& drag);

} // namespace quavernet
