// Builds the category tree from the library, and finds the file of an entry. Called at start and after
// every change of Categories, FileCategories or Files.
#pragma once

#include "tree/TreeModel.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quavernet {

/// Replaces the tree by what the library holds; selection and drop mark are lost, the nodes that the user has
/// expanded (mainModule.TreeNodeData) are expanded again. Throws RuntimeError if a statement fails, two
/// categories have one key, an entry's Parent names no category, an expanded node is gone though no other
/// program has written since the last load, or the length of a category is not known or more than 32767
/// minutes: the tree then holds what was built until there. Faults found by the first load of a run make
/// neither that load nor later ones fail (mainModule.TreeFaults): what they concern is left out, such as the
/// length of a category. Lets events run after each category and before the new tree takes the old one's
/// place.
/// `seen`: what the tree that is shown has as ChangesOfOthers, if another model takes the new one.
void LoadTree(TreeModel& tree, std::optional<std::int64_t> seen = std::nullopt);

/// The faults that the tree had at the start, in one line for the status bar; empty if there was none.
std::string TreeFaultsText();

/// File_id of an entry, by the node's key or, for an empty key, of the selected node. Empty if no row
/// matches, for example after a rename: the lookup uses the name that the file had when the entry was made.
std::string GetFileIdFromNode(const TreeModel& tree, const std::string& key);

/// The same for an entry that another program has moved to this position since the tree was built.
std::string FileIdAt(const TreeNode& entryNode, const std::string& position);

} // namespace quavernet
