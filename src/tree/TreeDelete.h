// Deleting in the category tree: an entry, a category, or what is in one. Commands of the tree's menu, and
// the Delete key.
#pragma once

namespace quavernet {

class LibraryViews;
class TreeModel;

/// Deletes the selected entry or category at once, without a question; the root stays. A failure ends the
/// command silently: what was written stays, and the tree is not built again. Lets events run, in LoadTree.
void mnuDelete_Click(const TreeModel& tree, LibraryViews& views);

/// Asks, then empties the selected category, or of the root deletes all categories and entries. Failures are
/// taken as in mnuDelete_Click. Lets events run, in the box and in LoadTree.
void mnuDeleteContent_Click(const TreeModel& tree, LibraryViews& views);

} // namespace quavernet
