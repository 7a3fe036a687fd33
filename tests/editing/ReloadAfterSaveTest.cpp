#include "editing/SaveDetails.h"

#include "support/LogicTest.h"
#include "support/LongWorkDouble.h"
#include "support/SelectionViewDouble.h"

#include <gmock/gmock.h>

namespace quavernet::test {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A list that has another number of rows after its next load.
class ReloadingViews : public LibraryViews {
public:
    ReloadingViews(GridSelection& selection, SelectionViewDouble& view) : m_grid(selection), m_view(view) {}

    void LoadDatabase(const std::string& list) override {
        loads.push_back(list);
        Fill(rowsAfter);
    }
    void LoadTree() override { loads.emplace_back("tree"); }
    void Fill(int rows) {
        mainModule.FilePaths.Clear();
        for (int row = 1; row <= rows; ++row) {
            mainModule.FilePaths.Add("/m/" + std::to_string(row) + ".mp3");
        }
        mainModule.SelectedRows.Clear();
        m_grid.Reset(rows + 1);
        m_view.topRow = 1;
    }

    int rowsAfter = 0;
    std::vector<std::string> loads;

private:
    GridSelection& m_grid;
    SelectionViewDouble& m_view;
};

class ReloadAfterSaveTest : public LogicTest {
protected:
    /// Saves with so many rows, row and top row before, and so many rows afterwards.
    void Reload(int rows, int row, int topRow, int rowsAfter) {
        list.Fill(rows);
        list.rowsAfter = rowsAfter;
        grid.SetRow(row);
        grid.SelChange();
        view.topRow = topRow;
        mainModule.DetailsRow = row;
        ReloadAfterSave(grid, list);
    }

    SelectionViewDouble view;
    DragState drag;
    GridSelection grid{view, drag};
    ReloadingViews list{grid, view};
};

} // namespace

TEST_F(ReloadAfterSaveTest, TheListIsLoadedAndKeepsItsRowAndItsTopRow) {
    Reload(100, 42, 40, 100);
    EXPECT_THAT(list.loads, ElementsAre(""));
    EXPECT_EQ(grid.Row(), 42);
    EXPECT_EQ(view.topRow, 40);
    EXPECT_EQ(mainModule.GridCurrentRow, 42);
    EXPECT_EQ(mainModule.GridTopRow, 40);
    EXPECT_THAT(mainModule.SelectedRows.Rows(), ElementsAre(42));
    EXPECT_TRUE(grid.IsPainted(42));
    EXPECT_EQ(view.panel, "/m/42.mp3");
}

TEST_F(ReloadAfterSaveTest, TheLastRowThatNoLongerMatchesLeavesTheListOnTheNewLastOne) {
    Reload(100, 100, 91, 99);
    EXPECT_EQ(mainModule.GridCurrentRow, 99);
    EXPECT_EQ(grid.Row(), 99);
    EXPECT_THAT(mainModule.SelectedRows.Rows(), ElementsAre(99));
}

TEST_F(ReloadAfterSaveTest, AListThatHasLostManyRowsEndsOnItsLastOne) {
    Reload(100, 50, 45, 1);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_THAT(mainModule.SelectedRows.Rows(), ElementsAre(1));
}

TEST_F(ReloadAfterSaveTest, AnEmptyListHasNoRow) {
    Reload(3, 2, 1, 0);
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_THAT(mainModule.SelectedRows.Rows(), IsEmpty());
    EXPECT_EQ(mainModule.GridCurrentRow, 2);
}

TEST_F(ReloadAfterSaveTest, AListThatIsLoadedAtASearchAloneStaysAsItIs) {
    mainModule.LoadOverSearch = true;
    Reload(10, 4, 2, 0);
    EXPECT_THAT(list.loads, IsEmpty());
    EXPECT_EQ(grid.Row(), 4);
    EXPECT_EQ(view.topRow, 2);
}

} // namespace quavernet::test
