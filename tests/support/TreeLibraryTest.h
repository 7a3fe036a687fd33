// Base of tests of the tree's commands: a library behind a recorder, the tree that is loaded from it, and
// views that are told to load.
#pragma once

#include "support/LongWorkDouble.h"
#include "support/RecordingConnection.h"
#include "support/TestLibrary.h"

#include "tree/LoadTree.h"
#include "tree/TreeModel.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace quavernet::test {

class TreeLibraryTest : public LibraryTest {
protected:
    TreeLibraryTest() : connection(RecordingConnection::Install()) {}

    /// A file with the next id; its path is "/m/" and the name.
    void AddFile(const std::string& name) {
        Execute("Insert into Files (Name, Path, Length) values ('" + name + "', '/m/" + name + "', 60)");
    }
    /// A category with the next id, and files that become its entries in this order.
    void AddCategory(const std::string& name, std::initializer_list<const char*> entries = {}) {
        Execute("Insert into Categories (Category) values ('" + name + "')");
        const std::string id = Value("Select Max(Category_id) from Categories");
        int position = 0;
        for (const char* entry : entries) {
            AddFile(entry);
            AddEntry(Value("Select Max(File_id) from Files"), id, ++position, name, entry);
        }
    }
    void AddEntry(const std::string& fileId, const std::string& categoryId, int position,
                  const std::string& parent, const std::string& filename) {
        Execute("Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (" +
                fileId + ", " + categoryId + ", " + std::to_string(position) + ", '" + parent + "', '" +
                filename + "')");
    }

    /// Loads the tree and selects a node; from here on statements and calls are noted.
    void LoadAndSelect(const std::string& key) {
        LoadTree(tree);
        tree.Select(key);
        connection.statements.clear();
        calls.clear();
    }
    /// Each entry as its place, name and category, in the order of the keys.
    std::vector<std::string> Entries() {
        return Rows("Select [Position], Filename, Parent from FileCategories order by FileCategory_id");
    }
    std::vector<std::string> Categories() {
        return Rows("Select Category from Categories order by Category_id");
    }

    RecordingConnection& connection;
    TreeModel tree;
    CallList calls;
    LibraryViewsDouble views{calls};
};

} // namespace quavernet::test
