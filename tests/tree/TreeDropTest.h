// Base of tests of the drop on the tree: a library with two filled categories and an empty one, its tree, and
// what a drop needs.
#pragma once

#include "app/DragState.h"
#include "app/TextHelpers.h"
#include "library/SqlQuote.h"
#include "support/ScanTest.h"
#include "tree/LoadTree.h"
#include "tree/NodeKey.h"
#include "tree/TreeDrag.h"
#include "tree/TreeDrop.h"

#include <gmock/gmock.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace quavernet::test {

class TreeDropTest : public ScanTest {
protected:
    /// Adds a category with entries j1, j2 and so on at the positions. Entries and files get ids that begin
    /// with that of the category: 101, 102.
    void AddCategory(int id, const std::string& name, const std::string& letter,
                     std::initializer_list<int> positions) {
        Execute("Insert into Categories (Category_id, Category) values (" + std::to_string(id) + ", '" +
                name + "')");
        int number = 0;
        for (const int position : positions) {
            ++number;
            AddEntry(id * 100 + number, id, name, letter + std::to_string(number), position);
        }
    }

    /// An entry together with its file "/m/" and the name.
    void AddEntry(int id, int category, const std::string& parent, const std::string& name, int position) {
        AddFile(id, name);
        Execute("Insert into FileCategories (FileCategory_id, File_id, Category_id, [Position], Parent, "
                "Filename) values (" +
                std::to_string(id) + ", " + std::to_string(id) + ", " + std::to_string(category) + ", " +
                std::to_string(position) + ", '" + parent + "', '" + SqlQuote(name) + "')");
    }

    void AddFile(int id, const std::string& name) {
        Execute("Insert into Files (File_id, Name, Path, Length) values (" + std::to_string(id) + ", '" +
                SqlQuote(name) + "', '" + SqlQuote(KnownPath(name)) + "', 60)");
    }

    static std::string KnownPath(const std::string& name) { return "/m/" + name; }

    /// Six entries of Jazz and three of Blues, without gaps; Empty has none.
    void FillDense() {
        AddCategory(1, "Jazz", "j", {1, 2, 3, 4, 5, 6});
        AddCategory(2, "Blues", "b", {1, 2, 3});
        AddCategory(3, "Empty", "e", {});
        LoadTree(tree);
    }

    void FillGapped() {
        AddCategory(1, "Jazz", "j", {2, 3, 7, 8, 20, 21});
        AddCategory(2, "Blues", "b", {4, 9, 10});
        AddCategory(3, "Empty", "e", {});
        LoadTree(tree);
    }

    /// Lists known files and selects their rows.
    void SelectRows(const std::vector<std::string>& names) {
        for (const std::string& name : names) {
            mainModule.FilePaths.Add(KnownPath(name));
            mainModule.SelectedRows.Add(static_cast<std::int32_t>(mainModule.FilePaths.Count()));
        }
        drag = DragState();
        drag.GridDragging = true;
    }

    void Press(const std::string& key) { TreePress(tree, key, false, drag); }

    DropOutcome Drop(const std::vector<std::string>& files, const std::string& key, bool control = false) {
        connection.statements.clear();
        const DropOutcome outcome = TreeDrop({files, key, control}, drag, tree, driver, work);
        statements = connection.statements;
        return outcome;
    }

    /// The drop of an entry that was pressed before.
    DropOutcome DropEntry(const std::string& key, const std::string& target, bool control = false) {
        Press(key);
        return Drop({drag.DragFilePath}, target, control);
    }

    /// What stands in a category, as "position name", by position and id.
    std::vector<std::string> Entries(const std::string& category) {
        std::vector<std::string> entries;
        for (const std::string& row :
             Rows("Select [Position], Filename from FileCategories where Parent = '" + category +
                  "' order by [Position], FileCategory_id")) {
            entries.push_back(ReplaceAll(row, "|", " "));
        }
        return entries;
    }

    /// All entries with all their columns, to see that nothing has changed.
    std::vector<std::string> EveryEntry() { return Rows("Select * from FileCategories"); }

    TreeModel tree;
    DragState drag;
    std::vector<std::string> statements; ///< Of the last drop.
};

} // namespace quavernet::test
