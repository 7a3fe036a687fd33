#include "browser/GridSelection.h"

#include "support/LogicTest.h"
#include "support/SelectionViewDouble.h"

#include <gmock/gmock.h>

namespace quavernet::test {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class GridSelectionTest : public LogicTest {
protected:
    GridSelectionTest() { Load(20); }

    void Load(std::int32_t count) {
        mainModule.FilePaths.Clear();
        mainModule.FileNames.Clear();
        for (std::int32_t row = 1; row <= count; ++row) {
            mainModule.FilePaths.Add("/music/" + std::to_string(row) + ".mp3");
            mainModule.FileNames.Add(std::to_string(row) + ".mp3");
        }
        grid.Reset(count + 1);
    }
    void Press(std::int32_t row, GridModifiers modifiers = {}, GridButton button = GridButton::Left) {
        grid.MouseDown(row, button, modifiers);
    }
    void RightPress(std::int32_t row) { Press(row, {}, GridButton::Right); }
    void Key(GridKey key, bool shift = false) { grid.KeyMove(key, shift, view.visibleRows); }
    void ClickAt(std::int32_t row, GridModifiers modifiers = {}) {
        Press(row, modifiers);
        grid.MouseUp();
        grid.Click();
    }
    std::vector<std::int32_t> Painted() const {
        std::vector<std::int32_t> rows;
        for (std::int32_t row = 0; row < grid.Rows(); ++row) {
            if (grid.IsPainted(row)) {
                rows.push_back(row);
            }
        }
        return rows;
    }
    static const std::vector<std::int32_t>& Selected() { return mainModule.SelectedRows.Rows(); }

    static constexpr GridModifiers Shift{.Shift = true};
    static constexpr GridModifiers Ctrl{.Ctrl = true};

    SelectionViewDouble view;
    DragState drag;
    GridSelection grid{view, drag};
};

TEST_F(GridSelectionTest, AClickSelectsOneRowAndShowsItsPath) {
    ClickAt(3);
    EXPECT_THAT(Painted(), ElementsAre(3));
    EXPECT_THAT(Selected(), ElementsAre(3));
    EXPECT_EQ(view.panel, "/music/3.mp3");
    ClickAt(7);
    EXPECT_THAT(Painted(), ElementsAre(7));
    EXPECT_THAT(Selected(), ElementsAre(7));
    EXPECT_FALSE(grid.MultipleSelection());
}

TEST_F(GridSelectionTest, ARowWithoutAPathLeavesThePanelAsItWas) {
    view.panel = "as it was";
    mainModule.FilePaths.Clear();
    ClickAt(3);
    EXPECT_EQ(view.panel, "as it was");
    EXPECT_THAT(Selected(), ElementsAre(3));
}

TEST_F(GridSelectionTest, ACtrlClickAddsARowInTheOrderOfTheClicks) {
    ClickAt(5);
    ClickAt(2, Ctrl);
    ClickAt(9, Ctrl);
    EXPECT_THAT(Painted(), ElementsAre(2, 5, 9));
    EXPECT_THAT(Selected(), ElementsAre(5, 2, 9));
    EXPECT_TRUE(grid.MultipleSelection());
}

TEST_F(GridSelectionTest, ARowDeselectedWithCtrlIsUnpaintedAndStaysAMember) {
    ClickAt(2);
    ClickAt(5, Ctrl);
    ClickAt(5, Ctrl);
    EXPECT_THAT(Painted(), ElementsAre(2));
    EXPECT_THAT(Selected(), ElementsAre(2, 5));
    EXPECT_TRUE(grid.RowDeselected());
}

TEST_F(GridSelectionTest, ADeselectionTakesOutTheRowWhoseNumberIsTheFileId) {
    view.fileId = [](std::int32_t row) { return row == 5 ? 2 : 1000 + row; };
    ClickAt(2);
    ClickAt(5, Ctrl);
    ClickAt(5, Ctrl);
    EXPECT_THAT(Painted(), ElementsAre(2));
    EXPECT_THAT(Selected(), ElementsAre(5));
}

TEST_F(GridSelectionTest, AFileIdBeyondAllRowNumbersTakesNothingOut) {
    view.fileId = [](std::int32_t) { return (std::int64_t{1} << 32) + 2; };
    ClickAt(2);
    ClickAt(5, Ctrl);
    ClickAt(5, Ctrl);
    EXPECT_THAT(Selected(), ElementsAre(2, 5));
}

TEST_F(GridSelectionTest, ADeselectedRowThatIsTakenInAgainIsWhereItWas) {
    ClickAt(2);
    ClickAt(5, Ctrl);
    ClickAt(7, Ctrl);
    ClickAt(5, Ctrl);
    ClickAt(5, Ctrl);
    EXPECT_THAT(Painted(), ElementsAre(2, 5, 7));
    EXPECT_THAT(Selected(), ElementsAre(2, 5, 7));
    EXPECT_FALSE(grid.RowDeselected());
}

TEST_F(GridSelectionTest, AShiftClickPaintsFromTheCurrentRowToTheClickedOne) {
    ClickAt(4);
    Press(7, Shift);
    EXPECT_TRUE(grid.HighLight());
    EXPECT_THAT(Painted(), ElementsAre(4, 5, 6, 7));
    EXPECT_THAT(Selected(), ElementsAre(4, 5, 6, 7));
    EXPECT_EQ(grid.Row(), 4);
    EXPECT_EQ(grid.RowSel(), 7);
    grid.MouseUp();
    EXPECT_FALSE(grid.HighLight());
    ClickAt(2, Shift);
    EXPECT_THAT(Selected(), ElementsAre(2, 3, 4));
}

TEST_F(GridSelectionTest, AShiftClickTowardsTheTopAddsTheRowsInAscendingOrder) {
    ClickAt(7);
    ClickAt(4, Shift);
    EXPECT_THAT(Selected(), ElementsAre(4, 5, 6, 7));
    EXPECT_EQ(view.panel, "/music/7.mp3");
}

TEST_F(GridSelectionTest, AClickWithShiftAndCtrlCountsAsAPlainClick) {
    ClickAt(2);
    ClickAt(6, {.Shift = true, .Ctrl = true});
    EXPECT_THAT(Painted(), ElementsAre(6));
    EXPECT_THAT(Selected(), ElementsAre(6));
}

TEST_F(GridSelectionTest, AClickOnTheSelectedRowOfARangeLeavesThatRowAlone) {
    ClickAt(2);
    ClickAt(5, Shift);
    ClickAt(5);
    EXPECT_THAT(Painted(), ElementsAre(5));
    EXPECT_THAT(Selected(), ElementsAre(5));
}

TEST_F(GridSelectionTest, ACtrlClickOnTheSelectedRowTakesItOutOfTheMarks) {
    ClickAt(5);
    ClickAt(5, Ctrl);
    EXPECT_THAT(Painted(), IsEmpty());
    EXPECT_THAT(Selected(), ElementsAre(5));
}

TEST_F(GridSelectionTest, TheFirstCtrlClickAfterTheFocusCameTakesTheRowInOnce) {
    ClickAt(2);
    grid.GotFocus();
    EXPECT_EQ(grid.LastColSel(), 0);
    EXPECT_EQ(grid.LastRowSel(), 0);
    ClickAt(5, Ctrl);
    EXPECT_THAT(Painted(), ElementsAre(2, 5));
    EXPECT_THAT(Selected(), ElementsAre(2, 5));
}

TEST_F(GridSelectionTest, TheHandlerRemembersTheBoundsItHasPainted) {
    ClickAt(4);
    ClickAt(6, Shift);
    EXPECT_EQ(grid.LastRow(), 4);
    EXPECT_EQ(grid.LastRowSel(), 6);
    EXPECT_EQ(grid.LastCol(), GridSelection::FormatColumn);
    EXPECT_EQ(grid.LastColSel(), GridSelection::Columns - 1);
}

TEST_F(GridSelectionTest, ARightPressWithOneRowSelectedMovesTheSelection) {
    ClickAt(2);
    RightPress(6);
    EXPECT_THAT(view.kontextItems, ElementsAre(1));
    EXPECT_TRUE(grid.RightClicked());
    EXPECT_THAT(Painted(), ElementsAre(6));
    EXPECT_THAT(Selected(), ElementsAre(6));
    EXPECT_EQ(mainModule.DetailsRow, 6);
    EXPECT_EQ(events.count, 1);
}

TEST_F(GridSelectionTest, ARightPressWithSeveralRowsSelectedKeepsThem) {
    ClickAt(2);
    ClickAt(4, Shift);
    mainModule.DetailsRow = 99;
    RightPress(9);
    EXPECT_THAT(view.kontextItems, ElementsAre(2));
    EXPECT_THAT(Selected(), ElementsAre(2, 3, 4));
    EXPECT_THAT(Painted(), ElementsAre(2, 3, 4));
    EXPECT_EQ(mainModule.DetailsRow, 99);
}

TEST_F(GridSelectionTest, AMemberWithoutAMarkCountsForTheRightPress) {
    ClickAt(2);
    ClickAt(5, Ctrl);
    ClickAt(5, Ctrl);
    RightPress(9);
    EXPECT_THAT(view.kontextItems, ElementsAre(2));
}

TEST_F(GridSelectionTest, ALeftPressForgetsTheRightOne) {
    RightPress(2);
    EXPECT_TRUE(grid.RightClicked());
    ClickAt(3);
    EXPECT_FALSE(grid.RightClicked());
}

TEST_F(GridSelectionTest, TheMenuKeyActsOnTheCurrentRowAndIsNoRightPress) {
    ClickAt(4);
    grid.MenuKey();
    EXPECT_THAT(view.kontextItems, ElementsAre(1));
    EXPECT_EQ(mainModule.DetailsRow, 4);
    EXPECT_THAT(Selected(), ElementsAre(4));
    EXPECT_FALSE(grid.RightClicked());
    EXPECT_FALSE(drag.GridDragging);
    RightPress(5);
    grid.MenuKey();
    EXPECT_TRUE(grid.RightClicked()) << "the last press was the right one";
}

TEST_F(GridSelectionTest, AMiddlePressMovesNothingAndIsNoLeftOne) {
    ClickAt(2);
    Press(6, {}, GridButton::Other);
    EXPECT_FALSE(grid.LeftDown());
    EXPECT_FALSE(grid.RightClicked());
    EXPECT_THAT(Selected(), ElementsAre(2));
}

TEST_F(GridSelectionTest, TheControlStateGoesByTheRowAfterALeftAndBeforeARightPress) {
    std::vector<std::int32_t> rows;
    view.onSelectionChanged = [&] { rows.push_back(grid.Row()); };
    RightPress(4);
    Press(6);
    EXPECT_THAT(rows, ElementsAre(0, 6));
}

TEST_F(GridSelectionTest, TheColumnStaysAtTheFormatAfterAPress) {
    ClickAt(4);
    EXPECT_EQ(grid.Col(), 5);
    EXPECT_EQ(grid.ColSel(), 5);
}

TEST_F(GridSelectionTest, APressIntoAListWithoutRowsArmsTheDragAndNothingElse) {
    Load(0);
    RightPress(0);
    EXPECT_THAT(view.kontextItems, IsEmpty());
    EXPECT_FALSE(grid.RightClicked());
    EXPECT_TRUE(drag.GridDragging);
    Press(0, Ctrl);
    EXPECT_FALSE(grid.CtrlDown());
    EXPECT_FALSE(grid.LeftDown());
    EXPECT_THAT(Selected(), IsEmpty());
}

TEST_F(GridSelectionTest, APressOnTheHeaderAfterALoadSelectsNothing) {
    ClickAt(0);
    EXPECT_THAT(Selected(), IsEmpty());
    EXPECT_THAT(Painted(), IsEmpty());
    EXPECT_EQ(view.panel, "");
}

TEST_F(GridSelectionTest, AShiftClickAfterALoadBeginsAtTheFirstRow) {
    ClickAt(3, Shift);
    EXPECT_THAT(Selected(), ElementsAre(1, 2, 3));
    EXPECT_FALSE(grid.IsPainted(0));
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.RowSel(), 3);
}

TEST_F(GridSelectionTest, AShiftClickOnTheFirstRowAfterALoadMakesItTheCurrentOne) {
    std::vector<std::int32_t> rows;
    view.onSelectionChanged = [&] { rows.push_back(grid.Row()); };
    ClickAt(1, Shift);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_THAT(rows, ElementsAre(1));
    EXPECT_THAT(Selected(), ElementsAre(1));
    EXPECT_EQ(view.panel, "/music/1.mp3");
}

TEST_F(GridSelectionTest, APlaceBelowTheLastRowCountsAsTheLastRow) {
    ClickAt(50);
    EXPECT_THAT(Selected(), ElementsAre(20));
}

TEST_F(GridSelectionTest, TheReleaseClearsAllFlagsOfThePress) {
    Press(3, Ctrl);
    EXPECT_TRUE(grid.CtrlDown());
    EXPECT_TRUE(grid.LeftDown());
    EXPECT_TRUE(drag.GridDragging);
    grid.MouseUp();
    EXPECT_FALSE(grid.CtrlDown());
    EXPECT_FALSE(grid.LeftDown());
    EXPECT_FALSE(drag.GridDragging);
    Press(3, Shift);
    EXPECT_TRUE(grid.ShiftDown());
    grid.MouseUp();
    EXPECT_FALSE(grid.ShiftDown());
}

TEST_F(GridSelectionTest, ALoadEmptiesTheSelectionAndForgetsTheBounds) {
    ClickAt(4);
    grid.Reset(1);
    EXPECT_THAT(Selected(), IsEmpty());
    EXPECT_EQ(grid.Rows(), 1);
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_EQ(grid.LastColSel(), 0);
    EXPECT_EQ(grid.LastRowSel(), 0);
    Load(20);
    EXPECT_THAT(Painted(), IsEmpty());
}

TEST_F(GridSelectionTest, ArrowKeysMoveTheSelectionByOneRow) {
    Key(GridKey::Down);
    EXPECT_THAT(Selected(), ElementsAre(1));
    Key(GridKey::Down);
    EXPECT_THAT(Selected(), ElementsAre(2));
    EXPECT_THAT(Painted(), ElementsAre(2));
    Key(GridKey::Up);
    Key(GridKey::Up);
    EXPECT_THAT(Selected(), ElementsAre(1));
}

TEST_F(GridSelectionTest, ArrowKeysWithShiftGrowAndShrinkTheRange) {
    ClickAt(4);
    Key(GridKey::Down, true);
    Key(GridKey::Down, true);
    EXPECT_THAT(Selected(), ElementsAre(4, 5, 6));
    Key(GridKey::Up, true);
    EXPECT_THAT(Selected(), ElementsAre(4, 5));
    EXPECT_THAT(Painted(), ElementsAre(4, 5));
    Key(GridKey::Down);
    EXPECT_THAT(Selected(), ElementsAre(6));
}

TEST_F(GridSelectionTest, AKeyThatMovesNothingKeepsTheSelection) {
    ClickAt(1);
    ClickAt(3, Ctrl);
    ClickAt(1, Ctrl);
    ClickAt(1, Ctrl);
    Key(GridKey::Up);
    EXPECT_THAT(Painted(), ElementsAre(1, 3));
}

TEST_F(GridSelectionTest, AKeyMoveEndsAMultipleSelection) {
    ClickAt(1);
    ClickAt(3, Ctrl);
    Key(GridKey::Down);
    EXPECT_THAT(Selected(), ElementsAre(4));
    EXPECT_FALSE(grid.MultipleSelection());
}

TEST_F(GridSelectionTest, HomeAndEndGoToTheFirstAndTheLastRow) {
    ClickAt(5);
    Key(GridKey::End);
    EXPECT_THAT(Selected(), ElementsAre(20));
    Key(GridKey::Home, true);
    EXPECT_EQ(Selected().size(), 20U);
    EXPECT_EQ(grid.Row(), 20);
    EXPECT_EQ(grid.RowSel(), 1);
}

TEST_F(GridSelectionTest, PageKeysMoveByTheRowsInView) {
    ClickAt(1);
    Key(GridKey::PageDown);
    EXPECT_EQ(grid.Row(), 11);
    Key(GridKey::PageDown);
    EXPECT_EQ(grid.Row(), 20);
    Key(GridKey::PageUp);
    EXPECT_EQ(grid.Row(), 10);
    view.visibleRows = 0;
    Key(GridKey::PageUp);
    EXPECT_EQ(grid.Row(), 9) << "a list too low for a row moves by one";
}

TEST_F(GridSelectionTest, AnArrowKeyScrollsByOneRowAtTheEdges) {
    ClickAt(10);
    Key(GridKey::Down);
    EXPECT_EQ(view.topRow, 2);
    EXPECT_EQ(mainModule.GridTopRow, 1) << "the top row is noted before the scroll";
    ClickAt(2);
    Key(GridKey::Up);
    EXPECT_EQ(view.topRow, 1);
}

TEST_F(GridSelectionTest, AnArrowKeyFarFromTheViewScrollsByOneRowOnly) {
    ClickAt(2);
    view.topRow = 8;
    Key(GridKey::Down);
    EXPECT_EQ(view.topRow, 7);
}

TEST_F(GridSelectionTest, ARangeLeavesTheViewAtItsCurrentRow) {
    ClickAt(10);
    Key(GridKey::Down, true);
    EXPECT_EQ(view.topRow, 1) << "the current row is in view";
    view.topRow = 11;
    Key(GridKey::Down, true);
    EXPECT_EQ(view.topRow, 10) << "the list goes back towards the current row";
}

TEST_F(GridSelectionTest, AClickNotesTheTopRow) {
    view.topRow = 6;
    grid.Click();
    EXPECT_EQ(mainModule.GridTopRow, 6);
    Load(0);
    view.topRow = 3;
    grid.Click();
    EXPECT_EQ(mainModule.GridTopRow, 6) << "a list without rows has no top row to note";
}

TEST_F(GridSelectionTest, TheToolTipIsTheNameOnDiskUnderTheMouse) {
    EXPECT_EQ(grid.MouseMove(3, false).ToolTip, "3.mp3");
    EXPECT_FALSE(grid.MouseMove(0, false).ToolTip) << "over the header the tip stays";
}

TEST_F(GridSelectionTest, AMoveWithTheLeftButtonStartsADragUnlessCtrlIsDown) {
    EXPECT_FALSE(grid.MouseMove(3, false).StartDrag);
    Press(3);
    EXPECT_TRUE(grid.MouseMove(3, true).StartDrag);
    grid.MouseUp();
    Press(4, Ctrl);
    EXPECT_FALSE(grid.MouseMove(4, true).StartDrag);
}

TEST_F(GridSelectionTest, ADragTakesThePathsOfAllMembers) {
    ClickAt(5);
    Press(2, Ctrl);
    EXPECT_THAT(grid.StartDrag(), ElementsAre("/music/5.mp3", "/music/2.mp3"));
}

TEST_F(GridSelectionTest, ADragOfOneMemberTakesTheRowThatIsPainted) {
    Press(5);
    EXPECT_THAT(grid.StartDrag(), ElementsAre("/music/5.mp3"));
    EXPECT_EQ(events.count, 1);
    grid.CompleteDrag();
    EXPECT_FALSE(drag.GridDragging);
    EXPECT_FALSE(grid.LeftDown());
}

TEST_F(GridSelectionTest, ADragPassesOverAMemberWithoutAPath) {
    ClickAt(5);
    Press(2, Ctrl);
    mainModule.FilePaths.Clear();
    mainModule.FilePaths.Add("/music/a.mp3");
    mainModule.FilePaths.Add("/music/b.mp3");
    EXPECT_THAT(grid.StartDrag(), ElementsAre("/music/b.mp3"));
}

TEST_F(GridSelectionTest, ADragWithoutACurrentRowTakesNothing) {
    EXPECT_THAT(grid.StartDrag(), IsEmpty());
    EXPECT_EQ(events.count, 0);
}

TEST_F(GridSelectionTest, EachPressForgetsWhatAPressOnTheTreeRemembered) {
    for (const GridButton button : {GridButton::Left, GridButton::Right, GridButton::Other}) {
        drag = {true, false, "One.mp3", "3", "Rock", "/music/One.mp3"};
        // What the window reads of it at the press is already the new state, but for the list's own flag.
        view.onSelectionChanged = [&] { EXPECT_FALSE(drag.DragFromTree || drag.GridDragging); };
        Press(5, {}, button);
        EXPECT_TRUE(drag.GridDragging);
        EXPECT_FALSE(drag.DragFromTree);
        EXPECT_EQ(drag.DragText + drag.DragPosition + drag.DragCategory, "");
        EXPECT_EQ(drag.DragFilePath, "/music/One.mp3");
        grid.MouseUp();
    }
}

TEST_F(GridSelectionTest, ARowAfterTheLastIsSetAsTheLast) {
    grid.SetRow(25);
    grid.SelChange();
    EXPECT_THAT(Selected(), ElementsAre(20));
}

TEST_F(GridSelectionTest, RowsBeyondSixteenBitsAreMembersLikeAnyOther) {
    Load(40000);
    ClickAt(32760);
    Key(GridKey::End, true);
    EXPECT_EQ(Selected().size(), 7241U);
    EXPECT_TRUE(mainModule.SelectedRows.Contains(32768));
    EXPECT_TRUE(mainModule.SelectedRows.Contains(40000));
}

TEST_F(GridSelectionTest, AMillionRowsAreMarkedAsOneRange) {
    grid.Reset(1'000'001);
    Key(GridKey::Home);
    Key(GridKey::End, true);
    EXPECT_EQ(mainModule.SelectedRows.Count(), 1'000'000U);
    EXPECT_EQ(grid.Painted().Ranges().size(), 1U);
}

TEST_F(GridSelectionTest, TheMenuOfOneRowEnablesAllItsItemsAndThatOfSeveralNotTheDetails) {
    const auto text = [](int mode) {
        std::string items;
        for (const KontextItem& item : KontextItems(mode)) {
            items += std::string(item.Name) + (item.Enabled ? "+ " : "- ");
        }
        return items;
    };
    EXPECT_EQ(text(1), "mnuKontextDetails+ mnuKontextAnsicht+ mnuKontextFilename+ mnuKontextRandom+ "
                       "mnuKontextPlay+ ");
    EXPECT_EQ(text(2), "mnuKontextDetails- mnuKontextAnsicht+ mnuKontextFilename+ mnuKontextRandom+ "
                       "mnuKontextPlay+ ");
    EXPECT_EQ(text(3), "");
}

TEST(RowNumbersTest, MembersKeepTheirOrderAndAreThereOnce) {
    RowNumbers rows;
    rows.AddRange(3, 5);
    rows.Add(1);
    rows.AddRange(0, 4);
    EXPECT_THAT(rows.Rows(), ElementsAre(3, 4, 5, 1, 0, 2));
    EXPECT_EQ(rows.Count(), 6U);
    rows.AddRange(9, 8);
    EXPECT_EQ(rows.Count(), 6U);
}

TEST(RowNumbersTest, ARemovedMemberCanBeAddedAgainAtTheEnd) {
    RowNumbers rows;
    rows.AddRange(1, 3);
    rows.Remove(2);
    rows.Remove(2);
    rows.Remove(77);
    rows.Remove(-1);
    EXPECT_FALSE(rows.Contains(2));
    rows.Add(2);
    EXPECT_THAT(rows.Rows(), ElementsAre(1, 3, 2));
    rows.Clear();
    EXPECT_FALSE(rows.Contains(1));
    rows.Add(1);
    EXPECT_THAT(rows.Rows(), ElementsAre(1));
}

TEST(RowNumbersTest, ANegativeRowIsRefused) {
    RowNumbers rows;
    EXPECT_THROW(rows.Add(-1), RuntimeError);
}

} // namespace

} // namespace quavernet::test
