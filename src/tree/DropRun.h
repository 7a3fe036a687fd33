// What the cases of one drop on the tree share: the request, the node under the mouse, and what the drop is
// to show when it is over. Made by TreeDrop and handed through its cases.
#pragma once

#include "platform/ADODB.h"
#include "platform/RuntimeError.h"
#include "tree/DropRequest.h"
#include "tree/PlaceNow.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quavernet {

class LongWork;
class NewFilesAhead;
class ScanDriver;
class TreeModel;
struct CurrentFile;
struct DragState;

/// What a drop reads of the node under the mouse, copied: the tree may be built again while events run.
struct DropNode {
    std::string Key;
    std::string Text;
    std::string Category; ///< Name of the category: the node's own, or that of an entry; of the root nothing.
    std::size_t Children = 0;
};

struct DropRun {
    const DropRequest& request;
    const DragState& drag;
    const TreeModel& tree; ///< To be read before events run.
    ScanDriver& driver;
    LongWork& work;

    OthersWatch watch; ///< Of what the tree tells.

    DropNode node = {};
    std::int16_t pos = 0; ///< Where the next entry goes, or the moved one.
    /// How many places there are from pos on, up to the entry under the mouse: that is at pos + room. 0 for a
    /// drop on a category.
    int room = 0;
    std::int16_t entryId = 0; ///< The entry that is selected afterwards.
    bool hadFileTarget = false;
    bool fileAdded = false;
    std::size_t stored = 0;      ///< Files that joined the library.
    std::size_t entries = 0;     ///< Entries that files and rows have become.
    std::size_t skipped = 0;     ///< Files, or lines of a playlist, that have become none.
    bool failuresEndDrop = true; ///< True: a failure ends the drop silently. False: it ends the program.
};

/// How the cases of a drop end, if not by a failure.
enum class DropEnd {
    Done,  ///< The tree is built again.
    Ended, ///< Nothing more happens, as after a failure.
    Left   ///< The drop is ignored.
};

/// Drop from outside: each audio file becomes an entry, at the node's place or at its category's end.
void DropFiles(DropRun& run);

/// Drop of the list's selected rows.
void DropGridRows(DropRun& run);

/// Drop of an entry of the tree itself: moved, or copied with Ctrl.
DropEnd DropTreeEntry(DropRun& run);

/// Drop of a playlist: a new category with the playlist's files.
void DropPlaylist(DropRun& run);

/// Reads the position that a drop on an entry begins with, and notes that there was an entry.
void TakeFileTarget(DropRun& run);

/// At the begin of a WriteLock, when `watch` has news: pos becomes what it is to be now, by the entry under
/// the mouse or by the number of entries of the category. False if that node is gone, or its entry is in
/// another category: nothing more can be dropped there, and the drop is over.
bool FollowTarget(DropRun& run);

/// Raises pos by a number. It has 16 bits: a higher value is the failure "Overflow".
void Advance(std::int16_t& pos, int by = 1);

/// Makes the path the current one, and stores the file if the library doesn't know it: fileAdded is then
/// set, and failures no longer end the drop. Returns the path under which the library has the file. Lets
/// events run then, and gives the lock up before: other programs may write while the file is read.
std::string StoreIfUnknown(DropRun& run, const std::string& path, CurrentFile& file, NewFilesAhead& ahead,
                           std::optional<ADODB::WriteLock>& writeLock);

/// Inserts an entry for a path that the library knows, at pos, and counts it.
void InsertEntryOfPath(DropRun& run, const std::string& path, std::string_view categoryId,
                       std::string_view quotedParent);

} // namespace quavernet
