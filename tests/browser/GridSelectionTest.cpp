#include "browser/GridSelection.h"

#include "support/LogicTest.h"

namespace quavernet::test {

namespace {

class RecordingGrid : public GridWindow {
public:
    std::int64_t RowData(std::int32_t row) const override { return firstFileId + row; }
    std::int32_t TopRow() const override { return top; }
    void SetTopRow(std::int32_t row) override { top = row; }
    bool RowIsVisible(std::int32_t row) const override { return row >= top && row < top + 5; }
    void SetScanningPanel(const std::string& text) override { panel = text; }
    void RepaintRows() override {}
    void SelectionChanged() override { ++changes; }
    void SetKontextItems(int mode) override { kontextModes.push_back(mode); }

    std::int64_t firstFileId = 1000;
    std::int32_t top = 1;
    std::string panel = "untouched";
    int changes = 0;
    std::vector<int> kontextModes;
};

constexpr GridModifiers None{};
constexpr GridModifiers Shift{.Shift = true};
constexpr GridModifiers Ctrl{.Ctrl = true};

class GridSelectionTest : public LogicTest {
protected:
    GridSelectionTest() {
        for (int row = 1; row <= 9; ++row) {
            mainModule.FilePaths.Add("/music/" + std::to_string(row) + ".mp3");
        }
        selection.Reset(10);
    }

    void Click(std::int32_t row, GridModifiers modifiers = None) {
        selection.MouseDown(row, GridButton::Left, modifiers);
        selection.MouseUp();
    }
    void RightClick(std::int32_t row) {
        selection.MouseDown(row, GridButton::Right, None);
        selection.MouseUp();
    }
    std::vector<std::int32_t> Painted() const {
        std::vector<std::int32_t> rows;
        for (std::int32_t row = 0; row < 10; ++row) {
            if (selection.IsPainted(row)) {
                rows.push_back(row);
            }
        }
        return rows;
    }
    static std::vector<std::int32_t> Selected() { return mainModule.SelectedRows.Rows(); }

    using Rows = std::vector<std::int32_t>;
    RecordingGrid grid;
    GridSelection selection{grid};
};

} // namespace

TEST_F(GridSelectionTest, AClickSelectsItsRowAloneAndShowsItsPath) {
    Click(3);
    Click(5);
    EXPECT_EQ(Painted(), Rows{5});
    EXPECT_EQ(Selected(), Rows{5});
    EXPECT_EQ(selection.Row(), 5);
    EXPECT_EQ(grid.panel, "/music/5.mp3");
}

TEST_F(GridSelectionTest, CtrlAddsARow) {
    Click(3);
    Click(5, Ctrl);
    EXPECT_EQ(Painted(), (Rows{3, 5}));
    EXPECT_EQ(Selected(), (Rows{3, 5}));
}

TEST_F(GridSelectionTest, CtrlOnAPaintedRowUnpaintsItButCommandsStillActOnIt) {
    Click(3);
    Click(5, Ctrl);
    Click(5, Ctrl);
    EXPECT_EQ(Painted(), Rows{3});
    EXPECT_EQ(Selected(), (Rows{3, 5}));
}

TEST_F(GridSelectionTest, UnpaintingARowTakesOutTheRowWhoseNumberIsItsFileId) {
    grid.firstFileId = -2; // Row 5 holds the file with the id 3.
    Click(3);
    Click(5, Ctrl);
    Click(5, Ctrl);
    EXPECT_EQ(Painted(), Rows{3});
    EXPECT_EQ(Selected(), Rows{5});
}

TEST_F(GridSelectionTest, ShiftPaintsFromTheCurrentRowToTheClickedOneInEitherDirection) {
    Click(4);
    Click(6, Shift);
    EXPECT_EQ(Painted(), (Rows{4, 5, 6}));
    EXPECT_EQ(Selected(), (Rows{4, 5, 6}));
    EXPECT_EQ(selection.Row(), 4);
    Click(2, Shift);
    EXPECT_EQ(Painted(), (Rows{2, 3, 4}));
    EXPECT_EQ(Selected(), (Rows{2, 3, 4}));
}

TEST_F(GridSelectionTest, TheGridsOwnMarkingIsOnOnlyWhileAPressWithShiftLasts) {
    Click(4);
    selection.MouseDown(6, GridButton::Left, Shift);
    EXPECT_TRUE(selection.HighLight());
    selection.MouseUp();
    EXPECT_FALSE(selection.HighLight());
    selection.MouseDown(6, GridButton::Left, None);
    EXPECT_FALSE(selection.HighLight());
}

TEST_F(GridSelectionTest, CtrlAndShiftTogetherCountAsAPlainClick) {
    Click(4);
    Click(6, GridModifiers{.Shift = true, .Ctrl = true});
    EXPECT_EQ(Painted(), Rows{6});
    EXPECT_EQ(Selected(), Rows{6});
}

TEST_F(GridSelectionTest, TheRightButtonMovesASingleSelection) {
    Click(3);
    RightClick(7);
    EXPECT_EQ(Painted(), Rows{7});
    EXPECT_EQ(mainModule.DetailsRow, 7);
    EXPECT_EQ(grid.kontextModes, std::vector<int>{1});
    EXPECT_TRUE(selection.RightClicked());
}

TEST_F(GridSelectionTest, TheRightButtonKeepsSeveralSelectedRows) {
    Click(3);
    Click(5, Ctrl);
    RightClick(7);
    EXPECT_EQ(Painted(), (Rows{3, 5}));
    EXPECT_EQ(Selected(), (Rows{3, 5}));
    EXPECT_EQ(grid.kontextModes, std::vector<int>{2});
}

TEST_F(GridSelectionTest, APressInAnEmptyListOnlySwitchesTheControls) {
    selection.Reset(1);
    Click(0);
    EXPECT_EQ(Selected(), Rows{});
    EXPECT_EQ(grid.changes, 1);
    EXPECT_EQ(grid.panel, "untouched");
}

TEST_F(GridSelectionTest, AStaleRowLeavesThePanelAsItWas) {
    mainModule.FilePaths.Clear();
    Click(3);
    EXPECT_EQ(Selected(), Rows{3});
    EXPECT_EQ(grid.panel, "untouched");
}

TEST_F(GridSelectionTest, TheKeyboardScrollsByOneRow) {
    Click(5);
    selection.MoveTo(6, false);
    EXPECT_EQ(grid.top, 2);
    EXPECT_EQ(mainModule.GridTopRow, 1);
    grid.top = 7;
    selection.MoveTo(5, false);
    EXPECT_EQ(grid.top, 6);
}

TEST_F(GridSelectionTest, TheKeyboardExtendsTheRangeWithShiftAndStopsAtTheEnds) {
    Click(8);
    selection.MoveTo(9, true);
    EXPECT_EQ(Selected(), (Rows{8, 9}));
    selection.MoveTo(10, false);
    EXPECT_EQ(Selected(), Rows{9});
    selection.MoveTo(-3, false);
    EXPECT_EQ(Selected(), Rows{1});
}

TEST_F(GridSelectionTest, AReloadForgetsRowAndPaint) {
    Click(8);
    selection.Reset(10);
    EXPECT_EQ(Painted(), Rows{});
    EXPECT_EQ(selection.Row(), 0);
}

} // namespace quavernet::test
