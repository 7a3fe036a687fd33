#include "browser/GridSelection.h"

#include "support/LogicTest.h"

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
        grid.ShowRows(count);
        grid.SetView(1, 10);
    }
    GridPress Press(std::int32_t row, int modifiers = GridModifier::None,
                    GridButton button = GridButton::Left) {
        return grid.MouseDown(button, modifiers, row);
    }
    void ClickAt(std::int32_t row, int modifiers = GridModifier::None) {
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

    std::function<std::int64_t(std::int32_t)> fileId = [](std::int32_t row) { return 1000 + row; };
    GridSelection grid{[this](std::int32_t row) { return fileId(row); }};
};

TEST_F(GridSelectionTest, AClickSelectsOneRowAndShowsItsPath) {
    ClickAt(3);
    EXPECT_THAT(Painted(), ElementsAre(3));
    EXPECT_THAT(Selected(), ElementsAre(3));
    EXPECT_EQ(grid.TakePanelText(), "/music/3.mp3");
    ClickAt(7);
    EXPECT_THAT(Painted(), ElementsAre(7));
    EXPECT_THAT(Selected(), ElementsAre(7));
    EXPECT_FALSE(grid.MultipleSelection());
}

TEST_F(GridSelectionTest, ThePanelTextIsHandedOutOnce) {
    ClickAt(3);
    EXPECT_TRUE(grid.TakePanelText());
    EXPECT_FALSE(grid.TakePanelText());
}

TEST_F(GridSelectionTest, ARowWithoutAPathLeavesThePanelAsItWas) {
    mainModule.FilePaths.Clear();
    ClickAt(3);
    EXPECT_FALSE(grid.TakePanelText());
    EXPECT_THAT(Selected(), ElementsAre(3));
}

TEST_F(GridSelectionTest, ACtrlClickAddsARowInTheOrderOfTheClicks) {
    ClickAt(5);
    ClickAt(2, GridModifier::Ctrl);
    ClickAt(9, GridModifier::Ctrl);
    EXPECT_THAT(Painted(), ElementsAre(2, 5, 9));
    EXPECT_THAT(Selected(), ElementsAre(5, 2, 9));
    EXPECT_TRUE(grid.MultipleSelection());
}

TEST_F(GridSelectionTest, ARowDeselectedWithCtrlIsUnpaintedAndStaysAMember) {
    ClickAt(2);
    ClickAt(5, GridModifier::Ctrl);
    ClickAt(5, GridModifier::Ctrl);
    EXPECT_THAT(Painted(), ElementsAre(2));
    EXPECT_THAT(Selected(), ElementsAre(2, 5));
    EXPECT_TRUE(grid.RowDeselected());
}

TEST_F(GridSelectionTest, ADeselectionTakesOutTheRowWhoseNumberIsTheFileId) {
    fileId = [](std::int32_t row) { return row == 5 ? 2 : 1000 + row; };
    ClickAt(2);
    ClickAt(5, GridModifier::Ctrl);
    ClickAt(5, GridModifier::Ctrl);
    EXPECT_THAT(Painted(), ElementsAre(2));
    EXPECT_THAT(Selected(), ElementsAre(5));
}

TEST_F(GridSelectionTest, AFileIdBeyondAllRowNumbersTakesNothingOut) {
    fileId = [](std::int32_t) { return (std::int64_t{1} << 32) + 2; };
    ClickAt(2);
    ClickAt(5, GridModifier::Ctrl);
    ClickAt(5, GridModifier::Ctrl);
    EXPECT_THAT(Selected(), ElementsAre(2, 5));
}

TEST_F(GridSelectionTest, ADeselectedRowThatIsTakenInAgainStandsWhereItStood) {
    ClickAt(2);
    ClickAt(5, GridModifier::Ctrl);
    ClickAt(7, GridModifier::Ctrl);
    ClickAt(5, GridModifier::Ctrl);
    ClickAt(5, GridModifier::Ctrl);
    EXPECT_THAT(Painted(), ElementsAre(2, 5, 7));
    EXPECT_THAT(Selected(), ElementsAre(2, 5, 7));
    EXPECT_FALSE(grid.RowDeselected());
}

TEST_F(GridSelectionTest, AShiftClickPaintsFromTheCurrentRowToTheClickedOne) {
    ClickAt(4);
    Press(7, GridModifier::Shift);
    EXPECT_TRUE(grid.HighLight());
    EXPECT_THAT(Painted(), ElementsAre(4, 5, 6, 7));
    EXPECT_THAT(Selected(), ElementsAre(4, 5, 6, 7));
    EXPECT_EQ(grid.Row(), 4);
    EXPECT_EQ(grid.RowSel(), 7);
    grid.MouseUp();
    EXPECT_FALSE(grid.HighLight());
    ClickAt(2, GridModifier::Shift);
    EXPECT_THAT(Selected(), ElementsAre(2, 3, 4));
}

TEST_F(GridSelectionTest, AShiftClickTowardsTheTopAddsTheRowsInAscendingOrder) {
    ClickAt(7);
    ClickAt(4, GridModifier::Shift);
    EXPECT_THAT(Selected(), ElementsAre(4, 5, 6, 7));
    EXPECT_EQ(grid.TakePanelText(), "/music/7.mp3");
}

TEST_F(GridSelectionTest, AClickWithShiftAndCtrlCountsAsAPlainClick) {
    ClickAt(2);
    ClickAt(6, GridModifier::Shift + GridModifier::Ctrl);
    EXPECT_THAT(Painted(), ElementsAre(6));
    EXPECT_THAT(Selected(), ElementsAre(6));
}

TEST_F(GridSelectionTest, AClickOnTheSelectedRowOfARangeLeavesThatRowAlone) {
    ClickAt(2);
    ClickAt(5, GridModifier::Shift);
    ClickAt(5);
    EXPECT_THAT(Painted(), ElementsAre(5));
    EXPECT_THAT(Selected(), ElementsAre(5));
}

TEST_F(GridSelectionTest, ACtrlClickOnTheSelectedRowTakesItOutOfTheMarks) {
    ClickAt(5);
    ClickAt(5, GridModifier::Ctrl);
    EXPECT_THAT(Painted(), IsEmpty());
    EXPECT_THAT(Selected(), ElementsAre(5));
}

TEST_F(GridSelectionTest, TheFirstCtrlClickAfterTheFocusCameTakesTheRowInOnce) {
    ClickAt(2);
    grid.GotFocus();
    EXPECT_EQ(grid.LastColSel(), 0);
    EXPECT_EQ(grid.LastRowSel(), 0);
    ClickAt(5, GridModifier::Ctrl);
    EXPECT_THAT(Painted(), ElementsAre(2, 5));
    EXPECT_THAT(Selected(), ElementsAre(2, 5));
}

TEST_F(GridSelectionTest, TheHandlerRemembersTheBoundsItHasPainted) {
    ClickAt(4);
    ClickAt(6, GridModifier::Shift);
    EXPECT_EQ(grid.LastRow(), 4);
    EXPECT_EQ(grid.LastRowSel(), 6);
    EXPECT_EQ(grid.LastCol(), GridSelection::FormatColumn);
    EXPECT_EQ(grid.LastColSel(), GridSelection::Columns - 1);
}

TEST_F(GridSelectionTest, ARightPressWithOneRowSelectedMovesTheSelection) {
    ClickAt(2);
    const GridPress press = Press(6, GridModifier::None, GridButton::Right);
    EXPECT_EQ(press.KontextItems, 1);
    EXPECT_TRUE(grid.RightClicked());
    EXPECT_THAT(Painted(), ElementsAre(6));
    EXPECT_THAT(Selected(), ElementsAre(6));
    EXPECT_EQ(mainModule.DetailsRow, 6);
    EXPECT_EQ(events.count, 1);
}

TEST_F(GridSelectionTest, ARightPressWithSeveralRowsSelectedKeepsThem) {
    ClickAt(2);
    ClickAt(4, GridModifier::Shift);
    mainModule.DetailsRow = 99;
    const GridPress press = Press(9, GridModifier::None, GridButton::Right);
    EXPECT_EQ(press.KontextItems, 2);
    EXPECT_THAT(Selected(), ElementsAre(2, 3, 4));
    EXPECT_THAT(Painted(), ElementsAre(2, 3, 4));
    EXPECT_EQ(mainModule.DetailsRow, 99);
}

TEST_F(GridSelectionTest, AMemberWithoutAMarkCountsForTheRightPress) {
    ClickAt(2);
    ClickAt(5, GridModifier::Ctrl);
    ClickAt(5, GridModifier::Ctrl);
    EXPECT_EQ(Press(9, GridModifier::None, GridButton::Right).KontextItems, 2);
}

TEST_F(GridSelectionTest, ALeftPressForgetsTheRightOne) {
    Press(2, GridModifier::None, GridButton::Right);
    EXPECT_TRUE(grid.RightClicked());
    ClickAt(3);
    EXPECT_FALSE(grid.RightClicked());
}

TEST_F(GridSelectionTest, AMiddlePressMovesNothingAndIsNoLeftOne) {
    ClickAt(2);
    Press(6, GridModifier::None, GridButton::Middle);
    EXPECT_FALSE(grid.LeftDown());
    EXPECT_FALSE(grid.RightClicked());
    EXPECT_THAT(Selected(), ElementsAre(2));
}

TEST_F(GridSelectionTest, TheControlStateGoesByTheRowAfterALeftAndBeforeARightPress) {
    EXPECT_EQ(Press(4, GridModifier::None, GridButton::Right).ControlStateRow, 0);
    EXPECT_EQ(Press(6).ControlStateRow, 6);
}

TEST_F(GridSelectionTest, TheColumnStaysAtTheFormatAfterAPress) {
    ClickAt(4);
    EXPECT_EQ(grid.Col(), 5);
    EXPECT_EQ(grid.ColSel(), 5);
}

TEST_F(GridSelectionTest, APressIntoAListWithoutRowsArmsTheDragAndNothingElse) {
    Load(0);
    const GridPress press = Press(0, GridModifier::None, GridButton::Right);
    EXPECT_EQ(press.KontextItems, 0);
    EXPECT_FALSE(grid.RightClicked());
    EXPECT_TRUE(grid.GridDragging());
    Press(0, GridModifier::Ctrl);
    EXPECT_FALSE(grid.CtrlDown());
    EXPECT_FALSE(grid.LeftDown());
    EXPECT_THAT(Selected(), IsEmpty());
}

TEST_F(GridSelectionTest, APressOnTheHeaderAfterALoadSelectsNothing) {
    ClickAt(0);
    EXPECT_THAT(Selected(), IsEmpty());
    EXPECT_THAT(Painted(), IsEmpty());
    EXPECT_FALSE(grid.TakePanelText());
}

TEST_F(GridSelectionTest, AShiftClickAfterALoadBeginsAtTheFirstRow) {
    ClickAt(3, GridModifier::Shift);
    EXPECT_THAT(Selected(), ElementsAre(1, 2, 3));
    EXPECT_FALSE(grid.IsPainted(0));
}

TEST_F(GridSelectionTest, APlaceBelowTheLastRowCountsAsTheLastRow) {
    ClickAt(50);
    EXPECT_THAT(Selected(), ElementsAre(20));
}

TEST_F(GridSelectionTest, TheReleaseClearsAllFlagsOfThePress) {
    Press(3, GridModifier::Ctrl);
    EXPECT_TRUE(grid.CtrlDown());
    EXPECT_TRUE(grid.LeftDown());
    EXPECT_TRUE(grid.GridDragging());
    grid.MouseUp();
    EXPECT_FALSE(grid.CtrlDown());
    EXPECT_FALSE(grid.LeftDown());
    EXPECT_FALSE(grid.GridDragging());
    Press(3, GridModifier::Shift);
    EXPECT_TRUE(grid.ShiftDown());
    grid.MouseUp();
    EXPECT_FALSE(grid.ShiftDown());
}

TEST_F(GridSelectionTest, ALoadEmptiesTheSelectionAndForgetsTheBounds) {
    ClickAt(4);
    grid.Clear();
    EXPECT_THAT(Selected(), IsEmpty());
    EXPECT_EQ(grid.Rows(), 1);
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_EQ(grid.LastColSel(), 0);
    EXPECT_EQ(grid.LastRowSel(), 0);
    Load(20);
    EXPECT_THAT(Painted(), IsEmpty());
}

TEST_F(GridSelectionTest, ArrowKeysMoveTheSelectionByOneRow) {
    grid.KeyMove(GridKey::Down, false);
    EXPECT_THAT(Selected(), ElementsAre(1));
    grid.KeyMove(GridKey::Down, false);
    EXPECT_THAT(Selected(), ElementsAre(2));
    EXPECT_THAT(Painted(), ElementsAre(2));
    grid.KeyMove(GridKey::Up, false);
    grid.KeyMove(GridKey::Up, false);
    EXPECT_THAT(Selected(), ElementsAre(1));
}

TEST_F(GridSelectionTest, ArrowKeysWithShiftGrowAndShrinkTheRange) {
    ClickAt(4);
    grid.KeyMove(GridKey::Down, true);
    grid.KeyMove(GridKey::Down, true);
    EXPECT_THAT(Selected(), ElementsAre(4, 5, 6));
    grid.KeyMove(GridKey::Up, true);
    EXPECT_THAT(Selected(), ElementsAre(4, 5));
    EXPECT_THAT(Painted(), ElementsAre(4, 5));
    grid.KeyMove(GridKey::Down, false);
    EXPECT_THAT(Selected(), ElementsAre(6));
}

TEST_F(GridSelectionTest, AKeyThatMovesNothingKeepsTheSelection) {
    ClickAt(1);
    ClickAt(3, GridModifier::Ctrl);
    ClickAt(1, GridModifier::Ctrl);
    ClickAt(1, GridModifier::Ctrl);
    grid.KeyMove(GridKey::Up, false);
    EXPECT_THAT(Painted(), ElementsAre(1, 3));
}

TEST_F(GridSelectionTest, AKeyMoveEndsAMultipleSelection) {
    ClickAt(1);
    ClickAt(3, GridModifier::Ctrl);
    grid.KeyMove(GridKey::Down, false);
    EXPECT_THAT(Selected(), ElementsAre(4));
    EXPECT_FALSE(grid.MultipleSelection());
}

TEST_F(GridSelectionTest, HomeAndEndGoToTheFirstAndTheLastRow) {
    ClickAt(5);
    grid.KeyMove(GridKey::End, false);
    EXPECT_THAT(Selected(), ElementsAre(20));
    EXPECT_EQ(grid.TopRow(), 11);
    grid.KeyMove(GridKey::Home, true);
    EXPECT_EQ(Selected().size(), 20U);
    EXPECT_EQ(grid.TopRow(), 1);
}

TEST_F(GridSelectionTest, PageKeysMoveByTheRowsInView) {
    ClickAt(1);
    grid.KeyMove(GridKey::PageDown, false);
    EXPECT_EQ(grid.Row(), 11);
    EXPECT_EQ(grid.TopRow(), 2);
    grid.KeyMove(GridKey::PageDown, false);
    EXPECT_EQ(grid.Row(), 20);
    grid.KeyMove(GridKey::PageUp, false);
    EXPECT_EQ(grid.Row(), 10);
}

TEST_F(GridSelectionTest, AnArrowKeyScrollsByOneRowAtTheEdges) {
    ClickAt(10);
    grid.KeyMove(GridKey::Down, false);
    EXPECT_EQ(grid.TopRow(), 2);
    EXPECT_EQ(mainModule.GridTopRow, 1) << "the top row is noted before the scroll";
    ClickAt(2);
    grid.KeyMove(GridKey::Up, false);
    EXPECT_EQ(grid.TopRow(), 1);
}

TEST_F(GridSelectionTest, AnArrowKeyFarFromTheViewScrollsByOneRowOnly) {
    ClickAt(2);
    grid.SetView(8, 10);
    grid.KeyMove(GridKey::Down, false);
    EXPECT_EQ(grid.TopRow(), 7);
}

TEST_F(GridSelectionTest, TheMovingEndOfARangeStaysInView) {
    ClickAt(10);
    grid.KeyMove(GridKey::Down, true);
    EXPECT_EQ(grid.TopRow(), 2);
}

TEST_F(GridSelectionTest, AClickNotesTheTopRow) {
    grid.SetView(6, 10);
    grid.Click();
    EXPECT_EQ(mainModule.GridTopRow, 6);
    Load(0);
    grid.SetView(3, 10);
    grid.Click();
    EXPECT_EQ(mainModule.GridTopRow, 6) << "a list without rows has no top row to note";
}

TEST_F(GridSelectionTest, TheToolTipIsTheNameOnDiskUnderTheMouse) {
    EXPECT_EQ(grid.MouseMove(false, 3).ToolTip, "3.mp3");
    EXPECT_FALSE(grid.MouseMove(false, 0).ToolTip) << "over the header the tip stays";
}

TEST_F(GridSelectionTest, AMoveWithTheLeftButtonStartsADragUnlessCtrlIsDown) {
    EXPECT_FALSE(grid.MouseMove(false, 3).StartDrag);
    Press(3);
    EXPECT_TRUE(grid.MouseMove(true, 3).StartDrag);
    grid.MouseUp();
    Press(4, GridModifier::Ctrl);
    EXPECT_FALSE(grid.MouseMove(true, 4).StartDrag);
}

TEST_F(GridSelectionTest, ADragTakesThePathsOfAllMembers) {
    ClickAt(5);
    ClickAt(2, GridModifier::Ctrl);
    EXPECT_THAT(grid.StartDrag(), ElementsAre("/music/5.mp3", "/music/2.mp3"));
}

TEST_F(GridSelectionTest, ADragOfOneMemberTakesTheRowThatIsPainted) {
    Press(5);
    EXPECT_THAT(grid.StartDrag(), ElementsAre("/music/5.mp3"));
    EXPECT_EQ(events.count, 1);
    grid.CompleteDrag();
    EXPECT_FALSE(grid.GridDragging());
    EXPECT_FALSE(grid.LeftDown());
}

TEST_F(GridSelectionTest, ADragPassesOverAMemberWithoutAPath) {
    ClickAt(5);
    ClickAt(2, GridModifier::Ctrl);
    mainModule.FilePaths.Clear();
    mainModule.FilePaths.Add("/music/a.mp3");
    mainModule.FilePaths.Add("/music/b.mp3");
    EXPECT_THAT(grid.StartDrag(), ElementsAre("/music/b.mp3"));
}

TEST_F(GridSelectionTest, ADragWithoutACurrentRowTakesNothing) {
    EXPECT_THAT(grid.StartDrag(), IsEmpty());
    EXPECT_EQ(events.count, 0);
}

TEST_F(GridSelectionTest, TheEndOfADropClearsTheMemoryOfTheDrag) {
    Press(5);
    grid.ClearDragging();
    EXPECT_FALSE(grid.GridDragging());
    EXPECT_TRUE(grid.LeftDown());
}

TEST_F(GridSelectionTest, ARowBehindTheLastIsSetAsTheLast) {
    grid.SetRow(25);
    grid.SelChange();
    EXPECT_THAT(Selected(), ElementsAre(20));
}

TEST_F(GridSelectionTest, RowsBeyondSixteenBitsAreMembersLikeAnyOther) {
    Load(40000);
    ClickAt(32760);
    grid.KeyMove(GridKey::End, true);
    EXPECT_EQ(Selected().size(), 7241U);
    EXPECT_TRUE(mainModule.SelectedRows.Contains(32768));
    EXPECT_TRUE(mainModule.SelectedRows.Contains(40000));
}

TEST_F(GridSelectionTest, AMillionRowsAreMarkedAsOneRange) {
    GridSelection large([](std::int32_t row) { return row; });
    large.ShowRows(1'000'000);
    large.KeyMove(GridKey::Home, false);
    large.KeyMove(GridKey::End, true);
    EXPECT_EQ(mainModule.SelectedRows.Count(), 1'000'000U);
    EXPECT_EQ(large.Painted().Ranges().size(), 1U);
}

TEST_F(GridSelectionTest, TheMenuOfOneRowEnablesAllItsItemsAndThatOfSeveralNotTheDetails) {
    const auto text = [](int mode) {
        std::string items;
        for (const KontextItem& item : SetKontextItems(mode)) {
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

TEST(RowNumbersTest, MembersKeepTheirOrderAndStandOnce) {
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
