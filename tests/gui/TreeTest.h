// The base of tests of the category tree: a library with two categories, and hands for the nodes of the tree
// on the screen.
#pragma once

#include "gui/GuiTest.h"

#include "tree/TreePane.h"
#include "tree/TreeView.h"

#include <QBrush>
#include <QFont>

namespace quavernet::test {

class TreeTest : public GuiTest {
protected:
    /// Two categories; the first holds both files.
    void MakeTree() {
        AddFile("Abba", "One");
        AddFile("Cure", "Two");
        for (const char* statement :
             {"Insert into Categories (Category_id, Category) values (1, 'Alpha')",
              "Insert into Categories (Category_id, Category) values (2, 'Beta')",
              "Insert into FileCategories (FileCategory_id, File_id, Category_id, [Position], Parent, "
              "Filename) values (11, 2, 1, 1, 'Alpha', 'Two.mp3')",
              "Insert into FileCategories (FileCategory_id, File_id, Category_id, [Position], Parent, "
              "Filename) values (12, 1, 1, 2, 'Alpha', 'One.mp3')"}) {
            mainModule.Connection->Execute(statement);
        }
    }
    TreeView& Tree() { return Control<TreeView>("TreeView"); }
    QModelIndex Root() { return Tree().model()->index(0, 0); }
    QModelIndex Child(const QModelIndex& parent, int row) { return Tree().model()->index(row, 0, parent); }
    QModelIndex Alpha() { return Child(Root(), 0); }
    QModelIndex Beta() { return Child(Root(), 1); }
    QModelIndex Entry(int row) { return Child(Alpha(), row); }
    int ChildCount(const QModelIndex& node) { return Tree().model()->rowCount(node); }
    bool IsSelected(const QModelIndex& node) { return Tree().selectionModel()->isSelected(node); }
    QPoint Place(const QModelIndex& node) { return Tree().visualRect(node).center(); }
    void Click(const QModelIndex& node, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(Tree().viewport(), button, {}, Place(node));
    }
    void DoubleClick(const QModelIndex& node) {
        Click(node);
        QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {}, Place(node));
    }
    std::int64_t Hits(int fileId) {
        return mainModule.Connection
            ->Query("Select Hits from Files where File_id = " + std::to_string(fileId))
            .At(0, 0)
            .Integer();
    }
    static std::string Text(const QModelIndex& node) { return FromQString(node.data().toString()); }
    static bool IsBold(const QModelIndex& node) { return node.data(Qt::FontRole).value<QFont>().bold(); }
    static QVariant Foreground(const QModelIndex& node) { return node.data(Qt::ForegroundRole); }
    static QIcon Icon(const QModelIndex& node) { return node.data(Qt::DecorationRole).value<QIcon>(); }
};

} // namespace quavernet::test
