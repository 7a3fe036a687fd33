#include "tree/TreeDrag.h"

#include "app/DragState.h"
#include "app/MainModule.h"
#include "app/MayAct.h"
#include "platform/RuntimeError.h"
#include "tree/LoadTree.h"
#include "tree/NodeKey.h"
#include "tree/TreeModel.h"

namespace quavernet {

namespace {

// For any other node: the key from its third character, which is never a number.
std::string DragPositionOf(const std::string& key) {
    return KindOfKey(key) == NodeKind::File ? PositionFromKey(key) : key.substr(2);
}

void TakeFilePath(const TreeModel& tree, const std::string& key, DragState& drag) {
    ADODB::Recordset rows;
    rows.Open("Select Path from Files where File_id = " + GetFileIdFromNode(tree, key),
              *mainModule.Connection);
    drag.DragFilePath = rows.Fields(0).Text();
    rows.Close();
}

// An entry whose file has another name now, or is gone, offers nothing.
void OfferFile(const TreeModel& tree, const std::string& key, DragState& drag, DragPayload& payload) {
    IgnoreFailure([&] {
        TakeFilePath(tree, key, drag);
        payload.Files.push_back(drag.DragFilePath);
    });
}

} // namespace

bool TreePress(TreeModel& tree, const std::string& key, bool isRightButton, DragState& drag) {
    drag.DragFromTree = true;
    drag.GridDragging = false;
    if (isRightButton) {
        return false;
    }
    if (tree.Contains(key)) {
        const TreeNode& node = tree.Node(key);
        drag.DragText = node.Text;
        drag.DragPosition = DragPositionOf(key);
        if (node.Parent != nullptr) {
            drag.DragCategory = CategoryFromKey(node.Parent->Key);
        }
        tree.Select(key);
        if (KindOfKey(key) == NodeKind::File) {
            IgnoreFailure([&] { TakeFilePath(tree, "", drag); });
        }
    }
    return tree.HasSelection() && KindOfKey(tree.SelectedItem().Key) != NodeKind::Root;
}

void TreeRelease(DragState& drag) {
    drag.DragFromTree = false;
}

std::optional<DragPayload> TreeStartDrag(const TreeModel& tree, DragState& drag) {
    if (!MayAct() || !tree.HasSelection() || KindOfKey(tree.SelectedItem().Key) == NodeKind::Root) {
        return std::nullopt;
    }
    DragPayload payload;
    const TreeNode& dragged = tree.SelectedItem();
    if (KindOfKey(dragged.Key) == NodeKind::File) {
        payload.Text = dragged.Key;
        OfferFile(tree, dragged.Key, drag, payload);
        return payload;
    }
    // By the parent's text: another category that shows the same text offers its files, too.
    for (const TreeNode& node : tree.Nodes()) {
        if (node.Parent != nullptr && node.Parent->Text == dragged.Text) {
            OfferFile(tree, node.Key, drag, payload);
        }
    }
    return payload;
}

} // namespace quavernet
