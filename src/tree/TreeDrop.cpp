#include "tree/TreeDrop.h"

#include "app/AudioKind.h"
#include "app/DragState.h"
#include "app/EndWord.h"
#include "app/LongWork.h"
#include "app/MainModule.h"
#include "app/MayAct.h"
#include "app/TextHelpers.h"
#include "app/TextNumbers.h"
#include "tree/DropRun.h"
#include "tree/NodeKey.h"
#include "tree/TreeModel.h"

#include <algorithm>

namespace quavernet {

namespace {

constexpr std::string_view PlaylistExtension = ".m3u";

// Throws RuntimeError where no node is.
DropNode NodeOf(const DropRun& run) {
    const TreeNode& node = run.tree.Node(run.request.NodeKey);
    DropNode copy{node.Key, node.Text, {}, node.Children.size()};
    if (KindOfKey(node.Key) == NodeKind::Category) {
        copy.Category = CategoryFromKey(node.Key);
    } else if (node.Parent != nullptr) {
        copy.Category = CategoryFromKey(node.Parent->Key);
    }
    return copy;
}

// The two kinds of node ask for different signs of a drag inside the tree: an entry for the text that was
// remembered at the press, a category for the flag.
DropEnd DropFromInside(DropRun& run) {
    if (KindOfKey(run.node.Key) == NodeKind::File) {
        TakeFileTarget(run);
        if (!run.drag.DragText.empty()) {
            return DropTreeEntry(run);
        }
    } else {
        run.pos = Narrow16(static_cast<double>(run.node.Children) + 1);
        if (run.drag.DragFromTree) {
            return DropTreeEntry(run);
        }
    }
    DropGridRows(run);
    return DropEnd::Done;
}

// The first look at the extension takes both cases of letters, the second one small letters alone. So a first
// file that ends in ".M3U" is no file from outside and no playlist either: it is treated like a drag from
// inside the program.
DropEnd DropByCase(DropRun& run) {
    const std::string firstFile = run.request.Files.empty() ? std::string() : run.request.Files.front();
    const std::string extension(RightCharacters(firstFile, PlaylistExtension.size()));
    if (extension == PlaylistExtension) {
        DropPlaylist(run); // Wherever it was dropped, also where no node is.
        return DropEnd::Done;
    }
    run.node = NodeOf(run);
    if (KindOfKey(run.node.Key) == NodeKind::Root) {
        return DropEnd::Left;
    }
    if (LowerAscii(extension) != PlaylistExtension && !run.drag.GridDragging && !run.drag.DragFromTree) {
        DropFiles(run);
        if (!run.request.Files.empty()) {
            return DropEnd::Done;
        }
    }
    // By the text and not by the key: so an entry can't be dropped on another entry of the same name.
    if (run.node.Text == run.drag.DragText) {
        return DropEnd::Left;
    }
    return DropFromInside(run);
}

bool IsPlaylist(const std::string& path) {
    return RightCharacters(path, PlaylistExtension.size()) == PlaylistExtension;
}

// A category has no position: it can't be moved or copied.
bool DragsEntry(const DragState& drag) {
    return !drag.DragPosition.empty() &&
           drag.DragPosition.find_first_not_of("0123456789") == std::string::npos;
}

std::string WordOf(const DropRun& run, EndWord& word) {
    if (run.entries + run.skipped == 0) {
        return {};
    }
    word.Count(run.entries, Texts::NewEntry, Texts::NewEntries);
    word.Count(run.stored, Texts::NewFiles);
    word.Count(run.skipped, Texts::SkippedFiles);
    return word.Done();
}

} // namespace

DropOutcome TreeDrop(const DropRequest& request, DragState& drag, const TreeModel& tree, ScanDriver& driver,
                     LongWork& work) {
    EndWord word;
    DropRun run{request, drag, tree, driver, work, OthersWatch(tree.ChangesOfOthers())};
    DropEnd end = DropEnd::Left;
    if (MayAct()) {
        try {
            end = DropByCase(run);
            // A disk that is full takes back here what has been gathered, and not in the rebuild.
            mainModule.Connection->Commit();
        } catch (const RuntimeError&) {
            if (!run.failuresEndDrop) {
                throw;
            }
            end = DropEnd::Ended;
        }
    }
    if (end == DropEnd::Ended) {
        EndTreeDrop(drag, work);
    }
    if (end != DropEnd::Done) {
        return {};
    }
    return {true, run.fileAdded, run.hadFileTarget, WordOf(run, word),
            FileKey(std::to_string(run.entryId), std::to_string(run.pos))};
}

bool WouldDrop(const DropRequest& request, const DragState& drag, const TreeModel& tree) {
    const std::string firstFile = request.Files.empty() ? std::string() : request.Files.front();
    if (IsPlaylist(firstFile)) {
        return true;
    }
    if (!tree.Contains(request.NodeKey)) {
        return false;
    }
    const TreeNode& node = tree.Node(request.NodeKey);
    const NodeKind kind = KindOfKey(node.Key);
    if (kind == NodeKind::Root) {
        return false;
    }
    const bool isFromOutside = !drag.GridDragging && !drag.DragFromTree;
    if (isFromOutside && !request.Files.empty() && !IsPlaylist(LowerAscii(firstFile))) {
        return true; // Files of other kinds add nothing, but the tree is built again.
    }
    const bool isEntryDrop = kind == NodeKind::File ? !drag.DragText.empty() : drag.DragFromTree;
    if (!isEntryDrop) {
        return mainModule.SelectedRows.Count() > 0;
    }
    return DragsEntry(drag) && node.Text != drag.DragText &&
           (kind == NodeKind::File || request.Control || node.Text != drag.DragCategory);
}

void EndTreeDrop(DragState& drag, LongWork& work) {
    work.SetMousePointer(MousePointer::Default);
    drag.DragFromTree = false;
    drag.GridDragging = false;
}

} // namespace quavernet
