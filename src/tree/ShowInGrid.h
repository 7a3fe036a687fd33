// The files of the selected category or entry as the content of the list. A command of the tree's menu.
#pragma once

namespace quavernet {

class LibraryViews;
class TreeModel;

/// Nothing happens if there are no files to show, or no selection. Throws RuntimeError if a statement fails.
/// Lets events run, in LoadDatabase.
void mnuShowInGrid_Click(const TreeModel& tree, LibraryViews& views);

} // namespace quavernet
