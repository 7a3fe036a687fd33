// Takes the selected files out of the library and out of the tree; the files on disk stay. Called by the
// commands of the list.
#pragma once

namespace quavernet {

class GridSelection;
class LibraryViews;
class LongWork;

/// Asks nothing. The list keeps its row and its top row as far as they still exist. Lets events run: at its
/// start, and while the views load. Throws RuntimeError if a statement fails; what was written stays.
void DeleteSelectedEntries(GridSelection& grid, LongWork& work, LibraryViews& views);

} // namespace quavernet
