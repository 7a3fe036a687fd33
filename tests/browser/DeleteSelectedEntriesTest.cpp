#include "browser/DeleteSelectedEntries.h"

#include "support/SelectionViewDouble.h"
#include "support/TreeLibraryTest.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Loads the list as the window does, into the selection and the collections.
class ListedViews : public LibraryViews {
public:
    ListedViews(CallList& calls, GridSelection& grid, SelectionViewDouble& view)
        : m_calls(calls), m_grid(grid), m_view(view) {}

    void LoadDatabase(const std::string& list) override {
        m_calls.push_back("load '" + list + "'");
        mainModule.FilePaths.Clear();
        const ADODB::RowBlock rows = mainModule.Connection->Query("Select Path from Files order by File_id");
        for (std::size_t row = 0; row < rows.Rows(); ++row) {
            mainModule.FilePaths.Add(rows.At(row, 0).Text());
        }
        m_grid.Reset(static_cast<std::int32_t>(rows.Rows()) + 1);
        m_view.topRow = 1;
    }
    void LoadTree() override {
        m_calls.emplace_back("tree");
        if (onLoadTree) {
            onLoadTree();
        }
    }

    std::function<void()> onLoadTree;

private:
    CallList& m_calls;
    GridSelection& m_grid;
    SelectionViewDouble& m_view;
};

class DeleteSelectedEntriesTest : public TreeLibraryTest {
protected:
    /// Lists the files and selects rows, the first of them as the current one.
    void Select(std::initializer_list<std::int32_t> rows) {
        list.LoadDatabase("");
        for (const std::int32_t row : rows) {
            mainModule.SelectedRows.Add(row);
        }
        grid.SetRow(*rows.begin());
        connection.statements.clear();
        calls.clear();
    }
    void Delete() { DeleteSelectedEntries(grid, work, list); }
    void AddFiles(std::initializer_list<const char*> names) {
        for (const char* name : names) {
            AddFile(name);
        }
    }
    std::vector<std::string> Files() { return Rows("Select Name from Files order by File_id"); }

    LongWorkDouble work{calls};
    SelectionViewDouble view;
    DragState drag;
    GridSelection grid{view, drag};
    ListedViews list{calls, grid, view};
};

TEST_F(DeleteSelectedEntriesTest, TheFilesOfTheRowsGoAndTheViewsAreLoaded) {
    AddFiles({"a.mp3", "it''s.mp3", "c.mp3"});
    Select({2, 3});
    events.onDoEvents = [&] { calls.emplace_back("events"); };
    Delete();
    EXPECT_THAT(connection.statements,
                ElementsAre("Select File_id from Files where Path = '/m/it''s.mp3'",
                            "Delete from Files where Path = '/m/it''s.mp3'",
                            "Select Parent, [Position] from FileCategories where File_id = 2",
                            "Select File_id from Files where Path = '/m/c.mp3'",
                            "Delete from Files where Path = '/m/c.mp3'",
                            "Select Parent, [Position] from FileCategories where File_id = 3",
                            "Select Path from Files order by File_id"));
    EXPECT_THAT(calls, ElementsAre("pointer 11", "events", "tree", "load ''", "pointer 0"));
    EXPECT_THAT(Files(), ElementsAre("a.mp3"));
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(DeleteSelectedEntriesTest, TheEntriesOfTheFileGoAndTheGapOfEachCategoryCloses) {
    AddCategory("Jazz", {"a.mp3", "b.mp3", "c.mp3"});
    AddCategory("Rock", {"d.mp3"});
    AddEntry("2", "2", 2, "Rock", "b.mp3");
    AddEntry("1", "2", 3, "Rock", "a.mp3");
    Select({2});
    Delete();
    EXPECT_THAT(
        connection.statements,
        ElementsAre("Select File_id from Files where Path = '/m/b.mp3'",
                    "Delete from Files where Path = '/m/b.mp3'",
                    "Select Parent, [Position] from FileCategories where File_id = 2",
                    "Delete from FileCategories where ([Position] = 2 and File_id = 2 and Parent = 'Jazz')",
                    "Update FileCategories set [Position] = [Position] - 1 where ([Position] > 2 and Parent "
                    "= 'Jazz')",
                    "Delete from FileCategories where ([Position] = 2 and File_id = 2 and Parent = 'Rock')",
                    "Update FileCategories set [Position] = [Position] - 1 where ([Position] > 2 and Parent "
                    "= 'Rock')",
                    "Select Path from Files order by File_id"));
    EXPECT_THAT(Entries(), ElementsAre("1|a.mp3|Jazz", "2|c.mp3|Jazz", "1|d.mp3|Rock", "2|a.mp3|Rock"));
}

TEST_F(DeleteSelectedEntriesTest, TheSecondEntryOfAFileInOneCategoryStaysAsAnOrphanThatNoTreeShows) {
    AddCategory("Jazz", {"a.mp3", "b.mp3", "c.mp3"});
    AddEntry("1", "1", 4, "Jazz", "a.mp3");
    AddFile("e.mp3");
    AddEntry("4", "1", 5, "Jazz", "e.mp3");
    Select({1});
    Delete();
    // The orphan has moved from 4 to 3, so that the delete at 4 missed it; what was at 5 was at 4 by then and
    // stays there.
    EXPECT_THAT(Entries(), ElementsAre("1|b.mp3|Jazz", "2|c.mp3|Jazz", "3|a.mp3|Jazz", "4|e.mp3|Jazz"));
    LoadTree(tree);
    EXPECT_EQ(tree.Node("CAT_Jazz").Children.size(), 3U);
}

TEST_F(DeleteSelectedEntriesTest, TheCurrentRowAndTheTopRowStay) {
    AddFiles({"a", "b", "c", "d", "e", "f"});
    Select({3});
    view.topRow = 2;
    Delete();
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_THAT(mainModule.SelectedRows.Rows(), ElementsAre(3));
    EXPECT_EQ(view.panel, "/m/d") << "the row's new file";
    EXPECT_EQ(view.topRow, 2);
    EXPECT_EQ(mainModule.GridTopRow, 2);
    EXPECT_EQ(mainModule.GridCurrentRow, 3);
}

TEST_F(DeleteSelectedEntriesTest, AfterTheLastRowTheNewLastOneIsCurrent) {
    AddFiles({"a", "b", "c"});
    Select({3});
    view.topRow = 2;
    Delete();
    EXPECT_EQ(grid.Row(), 2);
    EXPECT_THAT(mainModule.SelectedRows.Rows(), ElementsAre(2));
    EXPECT_EQ(view.topRow, 2);
}

TEST_F(DeleteSelectedEntriesTest, AfterTheLastRowsTheNewLastOneIsCurrent) {
    AddFiles({"a", "b", "c", "d", "e", "f", "g"});
    Select({7, 6, 5, 4});
    Delete();
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_EQ(mainModule.GridCurrentRow, 6) << "lowered by one, for fewer rows than that";
}

TEST_F(DeleteSelectedEntriesTest, WithTheOnlyRowNothingIsCurrent) {
    AddFiles({"a"});
    Select({1});
    Delete();
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_THAT(mainModule.SelectedRows.Rows(), IsEmpty());
    EXPECT_EQ(calls.back(), "pointer 0");
}

TEST_F(DeleteSelectedEntriesTest, WithoutASelectionTheViewsAreLoadedAllTheSame) {
    AddFiles({"a"});
    Select({1});
    mainModule.SelectedRows.Clear();
    Delete();
    EXPECT_THAT(Files(), ElementsAre("a"));
    EXPECT_THAT(calls, ElementsAre("pointer 11", "tree", "load ''", "pointer 0"));
}

TEST_F(DeleteSelectedEntriesTest, AParentWithAnApostropheIsAFailureAndWhatWasDoneStays) {
    AddFiles({"a", "b"});
    AddEntry("1", "1", 1, "it''''s", "a");
    Select({1, 2});
    EXPECT_THROW(Delete(), RuntimeError);
    EXPECT_THAT(Files(), ElementsAre("b"));
    EXPECT_EQ(Entries().size(), 1U);
    EXPECT_THAT(calls, ElementsAre("pointer 11"));
}

TEST_F(DeleteSelectedEntriesTest, AFileThatHasGoneFromTheLibraryIsPassedOver) {
    AddFiles({"a", "b", "c"});
    Select({1, 2});
    Execute("Delete from Files where Path = '/m/a'");
    Delete();
    EXPECT_THAT(Files(), ElementsAre("c"));
}

TEST_F(DeleteSelectedEntriesTest, RowsThatAreSelectedWhileEventsRunAreNotDeleted) {
    AddFiles({"a", "b", "c"});
    Select({1});
    events.onDoEvents = [&] {
        mainModule.SelectedRows.Clear();
        mainModule.SelectedRows.Add(3);
    };
    Delete();
    EXPECT_THAT(Files(), ElementsAre("b", "c"));
}

TEST_F(DeleteSelectedEntriesTest, ItMayComeInsideItselfWhereverEventsRun) {
    AddFiles({"a", "b", "c"});
    Select({1, 2});
    bool inside = false;
    const auto again = [&] {
        if (!inside) {
            inside = true;
            Delete();
            inside = false;
        }
    };
    events.onDoEvents = again;
    Delete();
    EXPECT_THAT(Files(), ElementsAre("c"));
    events.onDoEvents = nullptr;
    AddFiles({"d"});
    Select({1});
    list.onLoadTree = again;
    Delete();
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_THAT(Files(), ElementsAre("d"));
}

} // namespace
} // namespace quavernet::test
