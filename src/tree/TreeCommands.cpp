#include "tree/TreeCommands.h"

#include "app/CommandRegistry.h"
#include "app/LibraryViews.h"
#include "tree/NodeKey.h"
#include "tree/ShowInGrid.h"
#include "tree/TreeDelete.h"
#include "tree/TreeModel.h"
#include "tree/frmEditTree.h"

namespace quavernet {

namespace {

// What the dialog has changed reaches the tree when it closes, in whatever way that happens.
void Administer(frmEditTree& dialog, LibraryViews& views) {
    dialog.exec();
    views.LoadTree();
}

void mnuEditCategory_Click(const TreeModel& tree, LibraryViews& views, QWidget& owner) {
    if (!tree.HasSelection()) {
        return;
    }
    const std::string category = CategoryFromKey(tree.SelectedItem().Key);
    frmEditTree dialog(&owner);
    dialog.EditCategory(category);
    Administer(dialog, views);
}

void mnuNewCategory_Click(LibraryViews& views, QWidget& owner) {
    frmEditTree dialog(&owner);
    dialog.cmdNew_Click();
    Administer(dialog, views);
}

void mnuEditTree_Click(LibraryViews& views, QWidget& owner) {
    frmEditTree dialog(&owner);
    Administer(dialog, views);
}

} // namespace

void RegisterTreeCommands(CommandRegistry& commands, TreeModel& tree, LibraryViews& views, QWidget& owner) {
    commands.Register("mnuDelete", [&tree, &views] { mnuDelete_Click(tree, views); });
    commands.Register("mnuDeleteContent", [&tree, &views] { mnuDeleteContent_Click(tree, views); });
    commands.Register("mnuEditCategory",
                      [&tree, &views, &owner] { mnuEditCategory_Click(tree, views, owner); });
    commands.Register("mnuNewCategory", [&views, &owner] { mnuNewCategory_Click(views, owner); });
    for (const char* name : {"mnuEditTree", "mnuEditTree2"}) {
        commands.Register(name, [&views, &owner] { mnuEditTree_Click(views, owner); });
    }
    commands.Register("mnuShowInGrid", [&tree, &views] { mnuShowInGrid_Click(tree, views); });
}

} // namespace quavernet
