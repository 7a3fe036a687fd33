// A drop on the category tree, as values and statements without a screen: files from other programs, rows of
// the list, entries of the tree itself, and playlists. Called by the tree's form when something is dropped on
// it.
#pragma once

#include "tree/DropRequest.h"

namespace quavernet {

class LongWork;
class ScanDriver;
class TreeModel;
struct DragState;

/// What happens depends on where the drag began, on the first file's extension and on the node. Writes
/// FileCategories. There are four ways out:
/// - done: Rebuild is set. The form rebuilds, selects, and only then calls EndTreeDrop;
/// - ended by a failure, silently: EndTreeDrop has been called. What was written stays and shows at the next
///   rebuild;
/// - left because the node takes nothing, or because a scan runs: `drag` stays as it is;
/// - RuntimeError is thrown. Once the date of a file or a line of a playlist has been read, no failure of
/// this drop is caught.
/// Lets events run while files are added: the tree may be built again inside, and another drop may come. All
/// five arguments must outlive the call, the request too.
DropOutcome TreeDrop(const DropRequest& request, DragState& drag, const TreeModel& tree, ScanDriver& driver,
                     LongWork& work);

/// For the pointer, while the drag moves: whether TreeDrop would do something for this node, as far as it can
/// be told without the library.
bool WouldDrop(const DropRequest& request, const DragState& drag, const TreeModel& tree);

/// The end of every drop but one that was left: the pointer is the usual one again, and no drag goes on.
void EndTreeDrop(DragState& drag, LongWork& work);

} // namespace quavernet
