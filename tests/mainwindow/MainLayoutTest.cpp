#include "mainwindow/MainLayout.h"

#include <gtest/gtest.h>

namespace quavernet::test {

namespace {

constexpr const char* Wide = "1920x1080";
constexpr const char* Small = "800x600";
constexpr WindowExtent Normal{15000, 11000, false};

/// A window at its default size, as the start leaves it.
MainLayout Started() {
    MainLayout layout;
    layout.ScaleWidth = 14880;
    layout.ScaleHeight = 10000;
    layout.cboDrive.Width = 1500;
    layout.cboGenre.Width = 1600;
    layout.cboAlbum.Width = 1700;
    layout.chkInterpret.Width = 1000;
    layout.chkTitle.Width = 800;
    layout.txtSearch.Width = 1900;
    layout.cmdSearch.Width = 500;
    for (std::size_t i = 0; i < LetterLabels::Count; ++i) {
        layout.Letters[i].Width = 100 + static_cast<std::int64_t>(i);
    }
    ApplySplitterPos(layout, 2835);
    return layout;
}

} // namespace

TEST(ResizeTest, PlacesEverythingByTheFormsInside) {
    MainLayout layout = Started();
    ResizeMain(layout, Normal, Wide);
    EXPECT_EQ(layout.Frame1.Height, 9400);
    EXPECT_EQ(layout.Frame1.Width, 14880 - 2835 - 100);
    EXPECT_EQ(layout.Frame1.Left, 2895);
    EXPECT_EQ(layout.Frame3.Height, 9400);
    EXPECT_EQ(layout.Frame3.Width, 2835);
    EXPECT_EQ(layout.lblSizer.Left, 2835);
    EXPECT_EQ(layout.TreeView.Height, 9220);
    EXPECT_EQ(layout.TreeView.Width, 2715);
    EXPECT_EQ(layout.grdMp3.Height, 8800);
    EXPECT_EQ(layout.grdMp3.Width, 11825);
    EXPECT_EQ(layout.ProgressBar.Top, 9750);
    EXPECT_EQ(layout.ProgressBar.Left, 13140);
}

TEST(ResizeTest, TheFilterRowRunsFromLeftToRight) {
    MainLayout layout = Started();
    ResizeMain(layout, Normal, Wide);
    EXPECT_EQ(layout.cboDrive.Left, 2880);
    EXPECT_EQ(layout.cboGenre.Left, 2880 + 1500 + 100);
    EXPECT_EQ(layout.cboAlbum.Left, 4480 + 1600 + 100);
    EXPECT_EQ(layout.chkInterpret.Left, 6180 + 1700 + 100);
    EXPECT_EQ(layout.chkTitle.Left, 7980 + 1000 + 50);
    EXPECT_EQ(layout.txtSearch.Left, 9030 + 800 + 100);
    EXPECT_EQ(layout.cmdSearch.Left, 9930 + 1900 + 50);
    EXPECT_EQ(layout.cmdPlay.Left, 11880 + 650);
    EXPECT_EQ(layout.cmdRandomize.Left, 12530 + 300);
}

TEST(ResizeTest, OnASmallScreenTheListDoesNotFollowTheSplitter) {
    MainLayout layout = Started();
    ResizeMain(layout, Normal, Small);
    EXPECT_EQ(layout.Frame1.Width, 14880 - 2900);
    EXPECT_EQ(layout.Frame2.Width, 14880 - 2900 - 150);
    ApplySplitterPos(layout, 5000);
    ResizeMain(layout, Normal, Small);
    EXPECT_EQ(layout.Frame1.Width, 14880 - 2900);
}

TEST(ResizeTest, OnOtherScreensTheLetterRowKeepsItsWidth) {
    MainLayout layout = Started();
    layout.Frame2.Width = 4711;
    ResizeMain(layout, Normal, "800x601");
    EXPECT_EQ(layout.Frame2.Width, 4711);
    EXPECT_EQ(layout.Frame1.Width, 14880 - 2835 - 100);
}

TEST(ResizeTest, ASmallOrMinimisedWindowIsLeftAlone) {
    const MainLayout before = Started();
    for (const WindowExtent window : {WindowExtent{15000, 11000, true}, WindowExtent{4999, 11000, false},
                                      WindowExtent{15000, 2999, false}}) {
        MainLayout layout = before;
        ResizeMain(layout, window, Wide);
        EXPECT_EQ(layout, before);
    }
    MainLayout layout = before;
    ResizeMain(layout, {5000, 3000, false}, Wide);
    EXPECT_NE(layout, before);
}

TEST(ResizeTest, ANegativeSizeIsPassedOverAndTheRestGoesOn) {
    MainLayout layout = Started();
    ResizeMain(layout, Normal, Wide);
    layout.ScaleWidth = 5000;
    layout.Frame3.Width = 12000;
    const auto listWidth = layout.Frame1.Width;
    ResizeMain(layout, {5120, 11000, false}, Wide);
    EXPECT_EQ(layout.Frame1.Width, listWidth);
    EXPECT_EQ(layout.TreeView.Width, 11880);
    EXPECT_EQ(layout.grdMp3.Width, listWidth - 120);
    EXPECT_EQ(layout.ProgressBar.Left, 3260);
    layout.Frame3.Width = 100;
    layout.ScaleHeight = 700;
    ResizeMain(layout, {5120, 3000, false}, Wide);
    EXPECT_EQ(layout.TreeView.Width, 11880);
    EXPECT_EQ(layout.Frame1.Height, 100);
    EXPECT_EQ(layout.grdMp3.Height, 8800);
    layout.ScaleHeight = 500; // The tree pane follows the list pane, whose height stays.
    layout.Frame3.Height = 1;
    ResizeMain(layout, {5120, 3000, false}, Wide);
    EXPECT_EQ(layout.Frame1.Height, 100);
    EXPECT_EQ(layout.Frame3.Height, 100);
    EXPECT_EQ(layout.ProgressBar.Top, 250);
}

TEST(ResizeTest, OnASmallScreenTheLetterRowFollowsTheListEvenWhereThatKeepsItsWidth) {
    MainLayout layout = Started();
    layout.ScaleWidth = 2800;
    layout.Frame1.Width = 4000;
    ResizeMain(layout, {5000, 3000, false}, Small);
    EXPECT_EQ(layout.Frame1.Width, 4000);
    EXPECT_EQ(layout.Frame2.Width, 3850);
}

TEST(FilterRowFitTest, TheFilterControlsGiveWayInANarrowWindowDownToTheirSmallWidths) {
    MainLayout layout;
    layout.chkInterpret.Width = 1100;
    layout.chkTitle.Width = 800;
    const auto widths = [&layout](std::int64_t windowWidth) {
        FitFilterRow(layout, windowWidth, 600);
        ResizeMain(layout, {windowWidth, 9000, false}, "1280x960");
        return std::array<std::int64_t, 4>{layout.cboDrive.Width, layout.cboGenre.Width,
                                           layout.cboAlbum.Width, layout.txtSearch.Width};
    };
    const std::array<std::int64_t, 4> full{1950, 1950, 2100, 1800};
    constexpr std::int64_t FullRow =
        2880 + 1950 + 100 + 1950 + 100 + 2100 + 100 + 1100 + 50 + 800 + 100 + 1800 + 50 + 600;
    EXPECT_EQ(widths(FullRow), full);
    EXPECT_EQ(widths(FullRow + 900), (std::array<std::int64_t, 4>{1950, 1950, 2100, 2700}))
        << "the search box grows with the window";
    EXPECT_EQ(layout.cmdSearch.Left + 600, FullRow + 900);
    EXPECT_EQ(widths(60000), (std::array<std::int64_t, 4>{1950, 1950, 2100, 6000}));
    EXPECT_EQ(widths(FullRow - 1300), (std::array<std::int64_t, 4>{1600, 1600, 1775, 1525}));
    EXPECT_EQ(layout.cmdSearch.Left + 600, FullRow - 1300);
    for (std::int64_t narrow = FullRow - 2600; narrow < FullRow; ++narrow) {
        widths(narrow);
        ASSERT_LE(layout.cmdSearch.Left + 600, narrow);
    }
    const std::array<std::int64_t, 4> least{1250, 1250, 1450, 1250};
    EXPECT_EQ(widths(FullRow - 2600), least);
    EXPECT_EQ(widths(6000), least);
    layout.cmdSearch.Width = 600;
    EXPECT_EQ(LeastFilterRow(layout), FullRow - 2600);
}

TEST(SplitterTest, MovesBothPanesWithTheMouse) {
    MainLayout layout = Started();
    const auto width = layout.Frame1.Width;
    DragSplitter(layout, 300);
    EXPECT_EQ(layout.Frame3.Width, 3135);
    EXPECT_EQ(layout.Frame1.Left, 3195);
    EXPECT_EQ(layout.Frame1.Width, width - 300);
    EXPECT_EQ(layout.grdMp3.Width, width - 420);
    EXPECT_EQ(layout.TreeView.Width, 3015);
    EXPECT_EQ(layout.lblSizer.Left, 3135);
    DragSplitter(layout, -400);
    EXPECT_EQ(layout.Frame3.Width, 2735);
    EXPECT_EQ(layout.Frame1.Left, 2795);
    EXPECT_EQ(layout.Frame1.Width, width + 100);
    EXPECT_EQ(layout.lblSizer.Left, 2735);
}

TEST(SplitterTest, TheTreePaneStopsAt499) {
    MainLayout layout = Started();
    for (int i = 0; i < 400; ++i) {
        DragSplitter(layout, -15);
    }
    EXPECT_EQ(layout.Frame3.Width, 499);
    EXPECT_EQ(layout.Frame1.Left, 559);
    EXPECT_EQ(layout.Frame1.Width, 14880 - 499 - 120);
    EXPECT_EQ(layout.TreeView.Width, 379);
    EXPECT_EQ(layout.lblSizer.Left, 499);
}

TEST(SplitterTest, TheListPaneStopsAt499) {
    MainLayout layout = Started();
    for (int i = 0; i < 1500; ++i) {
        DragSplitter(layout, 15);
    }
    EXPECT_EQ(layout.Frame1.Width, 499);
    EXPECT_EQ(layout.Frame1.Left, 14880 - 499);
    EXPECT_EQ(layout.Frame3.Width, 14880 - 499 - 60);
    EXPECT_EQ(layout.grdMp3.Width, 379);
    EXPECT_EQ(layout.lblSizer.Left, 14880 - 499 - 60);
}

TEST(SplitterTest, APaneOfExactly500StillMovesOnce) {
    MainLayout layout = Started();
    ApplySplitterPos(layout, 500);
    DragSplitter(layout, -15);
    EXPECT_EQ(layout.Frame3.Width, 485);
    DragSplitter(layout, -15);
    EXPECT_EQ(layout.Frame3.Width, 499);
}

TEST(SplitterTest, ANarrowPaneGrowsAgainInTheOtherDirection) {
    MainLayout layout = Started();
    ApplySplitterPos(layout, 499);
    DragSplitter(layout, 15);
    EXPECT_EQ(layout.Frame3.Width, 514);
}

TEST(SplitterTest, NoDistanceOnlyAlignsTheContents) {
    MainLayout layout = Started();
    layout.grdMp3.Width = layout.TreeView.Width = layout.lblSizer.Left = 1;
    const ControlBox frame1 = layout.Frame1;
    const ControlBox frame3 = layout.Frame3;
    DragSplitter(layout, 0);
    EXPECT_EQ(layout.Frame1, frame1);
    EXPECT_EQ(layout.Frame3, frame3);
    EXPECT_EQ(layout.grdMp3.Width, frame1.Width - 120);
    EXPECT_EQ(layout.TreeView.Width, frame3.Width - 120);
    EXPECT_EQ(layout.lblSizer.Left, frame3.Width);
}

TEST(SplitterTest, ASizeThatWouldBeNegativeEndsTheHandler) {
    MainLayout layout = Started();
    const MainLayout before = layout;
    DragSplitter(layout, -3000); // The tree pane is 2835 wide: nothing has moved yet.
    EXPECT_EQ(layout, before);
    DragSplitter(layout, 20000); // The list pane would vanish: what was set before stays.
    EXPECT_EQ(layout.Frame3.Width, 22835);
    EXPECT_EQ(layout.Frame1.Left, 22895);
    EXPECT_EQ(layout.Frame1.Width, before.Frame1.Width);
    EXPECT_EQ(layout.lblSizer.Left, before.lblSizer.Left);
}

TEST(SplitterTest, AClampThatFindsNoRoomLeavesWhatItSetBefore) {
    MainLayout narrow = Started();
    narrow.ScaleWidth = 600;
    narrow.Frame3.Width = 400;
    narrow.Frame1.Width = 4000;
    MainLayout layout = narrow;
    DragSplitter(layout, -15);
    EXPECT_EQ(layout.Frame3.Width, 499);
    EXPECT_EQ(layout.Frame1.Left, 559);
    EXPECT_EQ(layout.Frame1.Width, 4000);
    EXPECT_EQ(layout.lblSizer.Left, narrow.lblSizer.Left);
    layout = narrow;
    layout.ScaleWidth = 550;
    layout.Frame1.Width = 400;
    DragSplitter(layout, 15);
    EXPECT_EQ(layout.Frame1.Width, 499);
    EXPECT_EQ(layout.Frame1.Left, 51);
    EXPECT_EQ(layout.Frame3.Width, 400);
    EXPECT_EQ(layout.lblSizer.Left, narrow.lblSizer.Left);
}

TEST(SplitterTest, AGridWithoutRoomKeepsTheTreeAndTheSplitterWhereTheyAre) {
    MainLayout layout = Started();
    layout.Frame1.Width = 600;
    const MainLayout before = layout;
    DragSplitter(layout, 500);
    EXPECT_EQ(layout.Frame1.Width, 100);
    EXPECT_EQ(layout.grdMp3, before.grdMp3);
    EXPECT_EQ(layout.TreeView, before.TreeView);
    EXPECT_EQ(layout.lblSizer, before.lblSizer);
}

TEST(SplitterTest, TheStoredPositionIsAppliedWithoutAClamp) {
    MainLayout layout = Started();
    EXPECT_EQ(layout.lblSizer.Left, 2835);
    EXPECT_EQ(layout.Frame3.Width, 2835);
    EXPECT_EQ(layout.Frame1.Left, 2895);
    EXPECT_EQ(layout.Frame1.Width, 14880 - 2835 - 120);
    ApplySplitterPos(layout, 30);
    EXPECT_EQ(layout.Frame3.Width, 30);
    EXPECT_EQ(layout.Frame1.Width, 14730);
    ApplySplitterPos(layout, 14700);
    EXPECT_EQ(layout.Frame1.Width, 60);
    ApplySplitterPos(layout, 2147483647);
    EXPECT_EQ(layout.lblSizer.Left, 2147483647);
    EXPECT_EQ(layout.Frame1.Width, 0);
    ApplySplitterPos(layout, -50);
    EXPECT_EQ(layout.lblSizer.Left, -50);
    EXPECT_EQ(layout.Frame3.Width, 0);
}

TEST(StartTest, ASmallFormIsFilledWhereAResizeWouldLeaveIt) {
    MainLayout layout = Started();
    layout.ScaleWidth = 4500;
    layout.ScaleHeight = 2400;
    StartLayout(layout, 2835, Wide);
    EXPECT_EQ(layout.lblSizer.Left, 2835);
    EXPECT_EQ(layout.Frame3.Width, 2835);
    EXPECT_EQ(layout.Frame3.Height, 1800);
    EXPECT_EQ(layout.Frame1.Left, 2895);
    EXPECT_EQ(layout.Frame1.Width, 4500 - 2835 - 120);
    EXPECT_EQ(layout.Frame1.Height, 1800);
    EXPECT_EQ(layout.TreeView.Width, 2715);
    EXPECT_EQ(layout.TreeView.Height, 1620);
    EXPECT_EQ(layout.grdMp3.Width, 1425);
    EXPECT_EQ(layout.grdMp3.Height, 1200);
    EXPECT_EQ(layout.ProgressBar.Top, 2150);
    EXPECT_EQ(layout.cboDrive.Left, 2880);
}

TEST(StartTest, TheStoredSplitterPositionIsTakenWithoutALimit) {
    MainLayout layout = Started();
    StartLayout(layout, 150, Small);
    EXPECT_EQ(layout.Frame3.Width, 150);
    EXPECT_EQ(layout.TreeView.Width, 30);
    EXPECT_EQ(layout.Frame1.Width, 14880 - 150 - 120);
    EXPECT_EQ(layout.grdMp3.Width, layout.Frame1.Width - 120);
}

TEST(SmallScreenTest, PacksTheListAndTheLetters) {
    MainLayout layout = Started();
    PackForSmallScreen(layout);
    EXPECT_EQ(layout.Frame1.Width, 8500);
    EXPECT_EQ(layout.grdMp3.Width, 8350);
    EXPECT_EQ(layout.cboDrive.Width, 1250);
    EXPECT_EQ(layout.cboGenre.Width, 1250);
    EXPECT_EQ(layout.cboAlbum.Width, 1450);
    EXPECT_EQ(layout.txtSearch.Width, 1250);
    EXPECT_EQ(layout.Letters[0].Left, 50);
    for (std::size_t i = 1; i < LetterLabels::Count; ++i) {
        EXPECT_EQ(layout.Letters[i].Left, layout.Letters[i - 1].Left + layout.Letters[i - 1].Width + 10);
    }
    EXPECT_EQ(layout.Letters[2].Left, 50 + 100 + 10 + 101 + 10);
}

} // namespace quavernet::test
