// The road of each statement that the commands of tree and list send, as StatementRoadTest has it for the
// rest of the program.
#include "support/EngineStatements.h"
#include "support/QueryPlans.h"
#include "support/SelectionViewDouble.h"
#include "support/StatementRoad.h"
#include "support/TreeLibraryTest.h"

#include "browser/DeleteSelectedEntries.h"
#include "browser/ExchangeInterpretTitle.h"
#include "tree/CategoryEditor.h"
#include "tree/CategoryName.h"
#include "tree/ShowInGrid.h"
#include "tree/TreeDelete.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsSupersetOf;

// The engine is watched from before the library is opened. Each command runs twice.
class CommandRoadTest : private EngineStatements, public TreeLibraryTest {
protected:
    CommandRoadTest() {
        AddCategory("Jazz", {"a.mp3", "b.mp3", "c.mp3", "d.mp3"});
        AddCategory("Rock", {"e.mp3", "f.mp3"});
        AddCategory("Pop", {"g.mp3", "h.mp3"});
        AddCategory("Soul");
        AddCategory("Folk");
        Connection().Commit();
    }

    void Select(const std::string& key) {
        LoadTree(tree);
        tree.Select(key);
    }
    void DeleteNodes() {
        for (const char* key : {"file1pos1", "file2pos1", "CAT_Soul", "CAT_Folk"}) {
            Select(key);
            mnuDelete_Click(tree, views);
        }
    }
    void DeleteContent() {
        for (int round = 0; round < 2; ++round) {
            Select("Parent");
            msgBox.answers = {MsgBox::Answer::Yes};
            mnuDeleteContent_Click(tree, views);
        }
    }
    void DeleteContentOfCategory() {
        Execute("Update FileCategories Set Parent = 'Rock'");
        Select("CAT_Jazz");
        msgBox.answers = {MsgBox::Answer::Yes};
        mnuDeleteContent_Click(tree, views);
    }
    void ShowCategories() {
        for (const char* key : {"CAT_Jazz", "CAT_Jazz"}) {
            Select(key);
            mnuShowInGrid_Click(tree, views);
        }
    }
    static void EditCategories() {
        CategoryEditor editor;
        for (const char* name : {"One", "Two"}) {
            editor.cmdNew_Click();
            editor.cmdSave_Click(name);
        }
        for (const char* name : {"Three", "Four"}) {
            editor.cmdEdit_Click();
            editor.cmdSave_Click(name);
        }
        for (const int index : {0, 0}) {
            editor.ListClick(index);
            editor.cmdDelete_Click();
        }
    }
    void MakeCategories() {
        for (const char* name : {"One", "Two"}) {
            FinishCategory(name, {"/m/a.mp3", "/m/b.mp3"}, views);
        }
    }
    void SelectRows(std::initializer_list<const char*> names) {
        mainModule.FilePaths.Clear();
        mainModule.SelectedRows.Clear();
        for (const char* name : names) {
            mainModule.FilePaths.Add(std::string("/m/") + name);
            mainModule.SelectedRows.Add(static_cast<std::int32_t>(mainModule.FilePaths.Count()));
        }
    }
    void DeleteRows() {
        SelectRows({"a.mp3", "b.mp3"});
        LongWorkDouble work;
        SelectionViewDouble rows;
        DragState drag;
        GridSelection grid{rows, drag};
        DeleteSelectedEntries(grid, work, views);
    }
    void ExchangeRows() {
        Execute("Insert into Interpret (Interpret) values ('Abba')");
        Execute("Insert into Titel (Name) values ('Waterloo')");
        Execute("Insert into Titel (Name) values ('Mamma Mia')");
        Execute("Update Files Set Inter_id = 1, Title_id = 1 + File_id % 2");
        Connection().Commit();
        SelectRows({"c.mp3", "d.mp3"});
        ExchangeInterpretTitle(views);
    }
};

TEST_F(CommandRoadTest, OfDeletingInTheTree) {
    const StatementRoad road(connection);
    DeleteNodes();
    DeleteContentOfCategory();
    DeleteContent();
    EXPECT_THAT(road.Kinds(),
                IsSupersetOf({"Select File_id from FileCategories where Parent = ? and Filename = ? and "
                              "[Position] = ?: lifted kept remembered",
                              "Select C.Category_id from Files F, Categories C  where F.File_id = ? and "
                              "C.Category = ?: lifted kept",
                              "Delete from FileCategories where File_id = ? and Category_id = ? and "
                              "[Position] = ?: lifted kept",
                              "Update FileCategories set [Position] = [Position]- ? where [Position] > ?  "
                              "and Category_id = ?: partly lifted kept",
                              "Select Category_id from Categories where Category = ?: lifted kept",
                              "Delete from FileCategories where Category_id = ?: lifted kept",
                              "Delete from Categories where Category_id = ?: lifted kept",
                              "Delete from FileCategories where FileName = ? and Parent = ?: lifted kept",
                              "Delete from FileCategories: kept", "Delete from Categories: kept"}));
}

TEST_F(CommandRoadTest, OfShowingInTheList) {
    const StatementRoad road(connection);
    ShowCategories();
    EXPECT_THAT(road.Kinds(), Contains("Select File_id from FileCategories where Parent = ?: lifted kept"));
}

TEST_F(CommandRoadTest, OfTheEditorOfCategories) {
    const StatementRoad road(connection);
    EditCategories();
    EXPECT_THAT(road.Kinds(),
                ElementsAre("Select Category from Categories: kept",
                            "Insert Into Categories (Category) values (?): lifted kept",
                            "Update FileCategories set Parent = ? where Parent = ?: lifted kept guarded",
                            "Update Categories set Category = ? where Category = ?: lifted kept guarded",
                            "Select Category_id from Categories where Category = ?: lifted kept",
                            "Delete from FileCategories where Category_id = ?: lifted kept",
                            "Delete from Categories where Category_id = ?: lifted kept"));
}

TEST_F(CommandRoadTest, OfACategoryMadeOfAList) {
    const StatementRoad road(connection);
    MakeCategories();
    EXPECT_THAT(road.Kinds(),
                ElementsAre("Select Category_id, Category from Categories where Category = ?: lifted kept",
                            "Insert into Categories (Category) values (?): lifted kept",
                            "Select Category_id, Category from Categories Order by Category_id: kept",
                            "Select File_id, Name from Files where Path = ?: lifted kept",
                            "Insert Into FileCategories (File_id, Category_ID, Filename, [Position], Parent) "
                            "values (?, ?, ?, ?, ?): lifted kept"));
}

TEST_F(CommandRoadTest, OfDeletingRowsOfTheList) {
    const StatementRoad road(connection);
    DeleteRows();
    EXPECT_THAT(
        road.Kinds(),
        ElementsAre(
            "Select File_id from Files where Path = ?: lifted kept",
            "Delete from Files where Path = ?: lifted kept",
            "Select Parent, [Position] from FileCategories where File_id = ?: lifted kept",
            "Delete from FileCategories where ([Position] = ? and File_id = ? and Parent = ?): lifted kept",
            "Update FileCategories set [Position] = [Position] - ? where ([Position] > ? and Parent = ?): "
            "partly lifted kept"));
}

TEST_F(CommandRoadTest, OfSwappingPerformerAndTitle) {
    const StatementRoad road(connection);
    ExchangeRows();
    EXPECT_THAT(
        road.Kinds(),
        IsSupersetOf({"Select Title_id, Inter_id from Files where Path = ?: lifted kept",
                      "Select Interpret from Interpret where Inter_id = ?: lifted kept",
                      "Select Name from Titel where Title_id = ?: lifted kept",
                      "Select Inter_id from Interpret where Interpret = ?: lifted kept",
                      "Insert Into Interpret (Interpret) values (?): lifted kept",
                      "Select Max(Inter_id) from Interpret where Interpret = ?: lifted kept",
                      "Select Title_id from Titel where Name = ?: lifted kept",
                      "Insert Into Titel (Name) values (?): lifted",
                      "Select Max(Title_id) from Titel where Name = ?: lifted",
                      "Update Files Set Inter_id = ?, Title_id = ? where Path = ?: lifted kept guarded"}));
}

TEST_F(CommandRoadTest, ReadsWithoutAnOrderComeByKeyWithoutASortButForTwo) {
    const StatementRoad road(connection);
    DeleteNodes();
    ShowCategories();
    MakeCategories();
    EditCategories();
    ExchangeRows();
    DeleteRows();
    std::vector<std::string> others;
    for (const std::string& query : QueriesWithoutOrder(road)) {
        if (!ComesByKey(Connection(), query) || Sorts(Connection(), query)) {
            others.push_back(query);
        }
    }
    // One is of a single row; the files of a category lie in the order of their places, and are sorted.
    EXPECT_THAT(others,
                ElementsAre("Select C.Category_id from Files F, Categories C  where F.File_id = 1 and "
                            "C.Category = 'Jazz'",
                            "Select File_id from FileCategories where Parent = 'Jazz'"));
    EXPECT_GE(QueriesWithoutOrder(road).size(), 9U);
}

} // namespace
} // namespace quavernet::test
