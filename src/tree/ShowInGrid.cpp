#include "tree/ShowInGrid.h"

#include "app/LibraryViews.h"
#include "app/MainModule.h"
#include "app/ScopedValue.h"
#include "library/SqlQuote.h"
#include "tree/LoadTree.h"
#include "tree/NodeKey.h"
#include "tree/TreeModel.h"

#include <string>

namespace quavernet {

namespace {

// In the library's order, not that of the positions.
std::string FilesOfCategory(const std::string& category) {
    ADODB::Recordset files;
    files.Open("Select File_id from FileCategories where Parent = '" + std::string(SqlPlain(category)) + "'",
               *mainModule.Connection);
    std::string list;
    for (; !files.Eof(); files.MoveNext()) {
        list += files.Fields(0).Text() + ",";
    }
    files.Close();
    if (!list.empty()) {
        list.pop_back();
    }
    return list;
}

std::string FilesOfSelection(const TreeModel& tree) {
    const TreeNode& node = tree.SelectedItem();
    const bool isCategory = node.Parent != nullptr && node.Parent->Key == RootKey;
    return isCategory ? FilesOfCategory(CategoryFromKey(node.Key)) : GetFileIdFromNode(tree, "");
}

} // namespace

void mnuShowInGrid_Click(const TreeModel& tree, LibraryViews& views) {
    if (!tree.HasSelection()) {
        return;
    }
    // Loading the list lets events run, so this command may start again inside itself.
    const ScopedValue listMode(mainModule.ShowInGridMode, true);
    const std::string list = FilesOfSelection(tree);
    if (!list.empty()) {
        views.LoadDatabase(list);
    }
}

} // namespace quavernet
