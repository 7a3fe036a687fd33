#include "tree/TreeEvents.h"

#include "app/Keys.h"
#include "app/MainModule.h"
#include "app/OpenWithShell.h"
#include "app/TextNumbers.h"
#include "library/SqlQuote.h"
#include "platform/RuntimeError.h"
#include "tree/LoadTree.h"

namespace quavernet {

namespace {

std::string PathOfSelectedEntry(const TreeModel& tree) {
    ADODB::Recordset file;
    file.Open("Select Path from Files where File_id = " + GetFileIdFromNode(tree, ""),
              *mainModule.Connection);
    std::string path = file.Fields(0).Text();
    file.Close();
    return path;
}

void OpenInPlayer(const TreeModel& tree, PlayerWindow& player) {
    player.Show();
    player.FillPlaylistFromTree(PlayerWindow::OneFile, tree);
    if (!mainModule.AlwaysAddToPlaylist) {
        player.PlayFileFromTree(1);
    }
}

} // namespace

void TreeExpand(TreeModel& tree, const std::string& key) {
    IgnoreFailure([&] { tree.Node(key).Expanded = true; });
    mainModule.TreeNodeData.Add(key);
}

void TreeCollapse(TreeModel& tree, const std::string& key) {
    IgnoreFailure([&] { tree.Node(key).Expanded = false; });
    mainModule.TreeNodeData.Remove(key);
}

void TreeNodeClick(TreeModel& tree, const std::string& key) {
    tree.Select(key);
    tree.SetDropHighlight(key);
}

void TreeDragOver(TreeModel& tree, const std::string& key, std::int32_t x, std::int32_t y) {
    tree.ClearDropHighlight();
    if (x == 0 || y == 0) {
        if (tree.HasSelection()) {
            tree.SetDropHighlight(tree.SelectedItem().Key);
        }
    } else if (tree.Contains(key)) {
        tree.SetDropHighlight(key);
    }
}

int TreeScrollDirection(std::int32_t y, std::int32_t height) {
    constexpr std::int32_t UpperBand = 300;
    constexpr std::int32_t LowerBand = 500;
    if (y > 0 && y < UpperBand) {
        return -1;
    }
    return y > height - LowerBand && y < height ? 1 : 0;
}

TreeKeyAction TreeKeyDown(const TreeModel& tree, int keyCode) {
    const bool deletes = keyCode == Keys::Delete && tree.HasSelection() &&
                         KindOfKey(tree.SelectedItem().Key) != NodeKind::Root;
    return deletes ? TreeKeyAction::Delete : TreeKeyAction::None;
}

std::vector<TreeMenuItem> TreeMenuItems(NodeKind kind) {
    const bool root = kind == NodeKind::Root;
    const bool category = kind == NodeKind::Category;
    return {{"mnuPlay", !root},
            {"mnuTreeRandom", category},
            {"mnuCreatePlaylist", category},
            {"mnuNewCategory", category},
            {"mnuEditCategory", category},
            {"mnuDelete", !root},
            {"mnuDeleteContent", root || category},
            {"mnuShowInGrid", !root},
            {"mnuSep12", category},
            {"mnuSep2", true},
            {"mnuSep3", !root},
            {"mnuSep11", category},
            {"mnuSep15", !root}};
}

std::optional<std::vector<TreeMenuItem>> TreeRightPress(TreeModel& tree, const std::string& key) {
    if (!tree.Contains(key)) {
        return std::nullopt;
    }
    tree.Select(key);
    return TreeMenuItems(KindOfKey(key));
}

void TreeDblClick(const TreeModel& tree, PlayerWindow& player) {
    std::string path;
    bool failed = false;
    if (tree.HasSelection() && KindOfKey(tree.SelectedItem().Key) == NodeKind::File) {
        try {
            if (mainModule.UseExternalPlayer) {
                path = PathOfSelectedEntry(tree);
                OpenWithShell(path);
            } else {
                OpenInPlayer(tree, player);
            }
        } catch (const RuntimeError& failure) {
            failed = failure.Number() != ErrorNumber::ObjectNotSet;
        }
    }
    // With the internal player, and on other nodes, no path is known: the statement then names none and
    // counts nothing.
    try {
        mainModule.Connection->Execute("Update Files Set Hits = Hits + 1 where Path = '" + SqlQuote(path) +
                                       "'");
    } catch (const RuntimeError&) {
        failed = true;
    }
    if (failed) {
        ShowExclamation(Texts::OpenFailed, Texts::PlayingFailed);
    }
}

} // namespace quavernet
