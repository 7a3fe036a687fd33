#include "tree/TreeDelete.h"

#include "app/LibraryViews.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "library/FirstField.h"
#include "library/SqlQuote.h"
#include "platform/RuntimeError.h"
#include "tree/LoadTree.h"
#include "tree/NodeKey.h"
#include "tree/PlaceNow.h"
#include "tree/TreeModel.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace quavernet {

namespace {

std::int16_t PositionOf(const std::string& key) {
    const std::string position = PositionFromKey(key);
    if (position.empty()) {
        throw RuntimeError(ErrorNumber::TypeMismatch, "Type mismatch");
    }
    return Narrow16(Val(position));
}

// The file is looked up by the text that the node shows: after a rename it is not found, and the statement
// with the empty id fails. Such an entry can't be deleted by itself.
void DeleteEntry(const TreeModel& tree) {
    const TreeNode& entry = tree.SelectedItem();
    const std::string category = CategoryFromKey(entry.Parent->Key);
    std::string position = std::to_string(PositionOf(entry.Key));
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    if (OthersWatch(tree.ChangesOfOthers()).HasNews()) {
        const auto now = PositionNow(GetFileCategoryIdFromKey(entry.Key), category);
        if (!now) {
            return; // Another program has deleted it.
        }
        position = *now;
    }
    const std::string categoryId(Trim(FirstField(
        std::string("Select C.Category_id from Files F, Categories C  where F.File_id = ") +
        FileIdAt(entry, position) + " and C.Category = '" + std::string(SqlPlain(category)) + "'")));
    mainModule.Connection->Execute("Delete from FileCategories where File_id = " + FileIdAt(entry, position) +
                                   " and Category_id = " + categoryId + " and [Position] = " + position);
    mainModule.Connection->Execute(
        "Update FileCategories set [Position] = [Position]- 1 where [Position] > " + position +
        "  and Category_id = " + categoryId);
}

void DeleteCategoryRows(const TreeModel& tree, const std::string& name) {
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    if (OthersWatch(tree.ChangesOfOthers()).HasNews() && !IsCategory(name)) {
        return; // Another program has deleted it.
    }
    const std::string categoryId(Trim(FirstField("Select Category_id from Categories where Category = '" +
                                                 std::string(SqlPlain(name)) + "'")));
    mainModule.Connection->Execute("Delete from FileCategories where Category_id = " + categoryId);
    mainModule.Connection->Execute("Delete from Categories where Category_id = " + categoryId);
    mainModule.Connection->Execute("Delete from Categories where Category_id = " + categoryId);
}

void DeleteCategory(const TreeModel& tree, const std::string& key) {
    DeleteCategoryRows(tree, CategoryFromKey(key));
    mainModule.TreeNodeData.Remove(key); // Or the next LoadTree would look for a node that is gone.
}

bool IsAnsweredYes(std::int32_t warning) {
    return services.msgBox->Show(LoadResString(warning) + "\n" + LoadResString(359), LoadResString(363),
                                 MsgBox::Icon::Question, MsgBox::Buttons::YesNo) == MsgBox::Answer::Yes;
}

// The category is known by its shown text. That carries the length as soon as there is one, and is the bare
// name no more: the entries of such a category stay, whatever was answered.
std::vector<std::string> EntriesUnderText(const TreeModel& tree, const std::string& category) {
    std::vector<std::string> names;
    for (const TreeNode& node : tree.Nodes()) {
        if (node.Parent != nullptr && node.Parent->Text == category) {
            names.push_back(node.Text);
        }
    }
    return names;
}

// Gaps stay as they are, and the category itself too.
void DeleteContentOf(const TreeModel& tree, const std::string& category) {
    for (const std::string& name : EntriesUnderText(tree, category)) {
        mainModule.Connection->Execute("Delete from FileCategories where FileName = '" + SqlQuote(name) +
                                       "' and Parent = '" + SqlQuote(category) + "'");
    }
}

// The keys of the expanded nodes stay remembered, those of the deleted categories too.
void DeleteWholeTree() {
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    mainModule.Connection->Execute("Delete from FileCategories");
    mainModule.Connection->Execute("Delete from Categories");
}

} // namespace

void mnuDelete_Click(const TreeModel& tree, LibraryViews& views) {
    try {
        const std::string key = tree.SelectedItem().Key;
        switch (KindOfKey(key)) {
        case NodeKind::Root:
            return;
        case NodeKind::File:
            DeleteEntry(tree);
            break;
        case NodeKind::Category:
            DeleteCategory(tree, key);
            break;
        }
        views.LoadTree();
    } catch (const RuntimeError&) {
        // Ends the command without a word.
    }
}

void mnuDeleteContent_Click(const TreeModel& tree, LibraryViews& views) {
    try {
        // The box lets events run, and what they do may bring another tree.
        const std::string key = tree.SelectedItem().Key;
        const bool isRoot = KindOfKey(key) == NodeKind::Root;
        if (isRoot) {
            if (!IsAnsweredYes(364)) {
                return;
            }
            DeleteWholeTree();
        } else if (!tree.SelectedItem().Children.empty() && IsAnsweredYes(362)) {
            DeleteContentOf(tree, CategoryFromKey(key));
        }
        views.LoadTree();
    } catch (const RuntimeError&) {
        // Ends the command without a word.
    }
}

} // namespace quavernet
