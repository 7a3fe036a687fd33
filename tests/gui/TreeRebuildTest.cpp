#include "gui/TreeDragDropTest.h"

namespace quavernet::test {

using TreeRebuildTest = TreeDragDropTest;

TEST_F(TreeRebuildTest, ADropOnAnEntryKeepsThePlaceInTheTreeAndOneOnACategoryGoesToTheTop) {
    StartWithLongTree();
    Bar().setValue(40);
    const std::string top = Tree().GetTreeViewFirstVisibleNode();
    const QModelIndex target = Tree().indexAt({0, 100});
    const QModelIndex category = Text(target) == "One.mp3" ? target.parent() : target;
    const std::string name = CategoryFromKey(TreeItems::NodeOf(category)->Key);
    QTest::mousePress(Grid().viewport(), Qt::LeftButton, {}, CellCentre(2));
    EXPECT_TRUE(DropOn(Child(category, 0), {"/music/Two.mp3"}));
    EXPECT_EQ(Entries(name), "200@1 " + name + "@2");
    EXPECT_EQ(Tree().GetTreeViewFirstVisibleNode(), top);
    EXPECT_EQ(Bar().value(), 40);
    EXPECT_EQ(Selected(), "file200pos1");
    QTest::mousePress(Grid().viewport(), Qt::LeftButton, {}, CellCentre(2));
    EXPECT_TRUE(DropAt({40, 100}, {"/music/Two.mp3"}));
    QTest::mousePress(Grid().viewport(), Qt::LeftButton, {}, CellCentre(2));
    const std::string key = TreeItems::NodeOf(Tree().indexAt({0, 100}))->Key;
    EXPECT_TRUE(DropOn(Tree().Items().IndexOf(Tree().Model().Node("CAT_" + name)), {"/music/Two.mp3"}));
    EXPECT_EQ(Bar().value(), 0);
    EXPECT_EQ(Selected(), "none");
}

TEST_F(TreeRebuildTest, NothingIsPaintedAndTheMarksStayBeforeTheRebuildIsThrough) {
    StartWithTree();
    HandEvents hand;
    bool wasPainted = false;
    bool wasUnmarked = false;
    hand.onDoEvents = [&] {
        wasPainted = wasPainted || Tree().updatesEnabled();
        wasUnmarked = wasUnmarked || !Drag().DragFromTree;
    };
    services.events = &hand;
    DragTo(Entry(1), Entry(0));
    services.events = &realEvents;
    EXPECT_EQ(Selected(), "file12pos1");
    EXPECT_EQ(hand.count, 6); // Three of the load, one after it, one before the selection and one after it.
    EXPECT_FALSE(wasPainted);
    EXPECT_FALSE(wasUnmarked);
    EXPECT_TRUE(Tree().updatesEnabled());
    EXPECT_FALSE(Drag().DragFromTree);
}

TEST_F(TreeRebuildTest, TheTreeIsBuiltBeforeTheListShowsANewFile) {
    StartWithTree();
    HandEvents hand;
    bool wasTreeFirst = false;
    bool wasListFirst = false;
    hand.onDoEvents = [&] {
        const bool inTree = ChildCount(Beta()) == 3;
        const bool inList = Listed().size() == 3;
        wasTreeFirst = wasTreeFirst || (inTree && !inList);
        wasListFirst = wasListFirst || (inList && !inTree);
    };
    services.events = &hand;
    EXPECT_TRUE(DropOn(Beta(), {MakeFile("Dylan - Three.mp3")}));
    services.events = &realEvents;
    EXPECT_EQ(Listed().size(), 3U);
    EXPECT_TRUE(wasTreeFirst);
    EXPECT_FALSE(wasListFirst);
}

TEST_F(TreeRebuildTest, WhenTheFirstVisibleNodeHasAnotherKeyNowTheNewEntryIsSelectedAllTheSame) {
    StartWithLongTree();
    Bar().setValue(2);
    ASSERT_EQ(Tree().GetTreeViewFirstVisibleNode(), "file100pos1");
    QTest::mousePress(Grid().viewport(), Qt::LeftButton, {}, CellCentre(2));
    EXPECT_TRUE(DropOn(Child(Child(Root(), 0), 0), {"/music/Two.mp3"}));
    EXPECT_EQ(Entries("100"), "200@1 100@2");
    EXPECT_EQ(Bar().value(), 0);
    EXPECT_EQ(Selected(), "file200pos1");
    EXPECT_TRUE(IsSelected(Child(Child(Root(), 0), 0)));
}

TEST_F(TreeRebuildTest, ADropStopsTheScrollingAndTakesTheMarkAway) {
    StartWithTree();
    const QImage before = Tree().viewport()->grab().toImage();
    const std::unique_ptr<QMimeData> data(FilesToOffer({"/music/One.mp3"}));
    ASSERT_TRUE(Enter(*data, Place(Root())));
    EXPECT_TRUE(Timer1().isActive());
    EXPECT_NE(Tree().viewport()->grab().toImage(), before);
    QDropEvent drop(Place(Root()), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Tree().viewport(), &drop);
    EXPECT_FALSE(Timer1().isActive());
    EXPECT_EQ(Tree().viewport()->grab().toImage(), before);
}

TEST_F(TreeRebuildTest, ADropThatTheNodeDoesNotTakeLeavesTheMarks) {
    StartWithTree();
    DragTo(Entry(0), Root());
    EXPECT_TRUE(Drag().DragFromTree);
    DragTo(Entry(0), BetaEntry(1)); // Another entry of the same text.
    EXPECT_TRUE(Drag().DragFromTree);
    DragTo(Entry(0), Beta());
    EXPECT_FALSE(Drag().DragFromTree);
    QTest::mousePress(Grid().viewport(), Qt::LeftButton, {}, CellCentre(1));
    EXPECT_TRUE(DropOn(Root(), {"/music/One.mp3"}));
    EXPECT_TRUE(Drag().GridDragging);
}

TEST_F(TreeRebuildTest, AnExpandedNodeThatIsGoneIsPassedOverAndTheDropIsShown) {
    StartWithTree();
    mainModule.TreeNodeData.Add("CAT_Gone");
    EXPECT_TRUE(DropOn(Beta(), {"/music/One.mp3"}));
    EXPECT_EQ(Entries("Beta"), "21@1 22@2 23@3");
    EXPECT_EQ(ChildCount(Beta()), 3);
    EXPECT_TRUE(Tree().updatesEnabled());
    EXPECT_FALSE(Drag().DragFromTree);
    mainModule.TreeNodeData.Remove("CAT_Gone");
    Form().Tree().LoadTree();
    EXPECT_EQ(ChildCount(Beta()), 3);
}

TEST_F(TreeRebuildTest, OnlyADropOnAnEntryKeepsThePlaceToTheSide) {
    StartWithTree();
    mainModule.Connection->Execute("Update Files set Name = '" + std::string(500, 'x') +
                                   "' where Name = 'Two.mp3'");
    Form().Tree().LoadTree();
    QScrollBar& side = *Tree().horizontalScrollBar();
    ASSERT_TRUE(QTest::qWaitFor([&] { return side.maximum() > 100; }));
    side.setValue(100);
    EXPECT_TRUE(DropOn(Entry(1), {"/music/One.mp3"}));
    EXPECT_EQ(side.value(), 100);
    EXPECT_TRUE(DropOn(Beta(), {"/music/One.mp3"}));
    EXPECT_EQ(side.value(), 0);
}

TEST_F(TreeRebuildTest, ADropThatComesDuringTheRebuildOfAnotherOneIsShownToo) {
    StartWithTree();
    HandEvents hand;
    hand.onDoEvents = [&] {
        if (mainModule.TreeLoading) {
            EXPECT_FALSE(DropOn(Alpha(), {"/music/Two.mp3"})) << "the nodes are those of an old tree";
            return;
        }
        hand.onDoEvents = nullptr;
        EXPECT_TRUE(DropOn(Alpha(), {"/music/Two.mp3"}));
    };
    services.events = &hand;
    EXPECT_TRUE(DropOn(Beta(), {"/music/One.mp3"}));
    services.events = &realEvents;
    EXPECT_EQ(Shown(Alpha()), (Texts{"Two.mp3", "One.mp3", "Two.mp3"}));
    EXPECT_EQ(Shown(Beta()), (Texts{"One.mp3", "Two.mp3", "One.mp3"}));
    EXPECT_TRUE(Tree().updatesEnabled());
}

TEST_F(TreeRebuildTest, ADragWhosePressCameInTheEventsOfADropIsMarkedAllTheSame) {
    StartWithTree();
    HandEvents hand;
    hand.onDoEvents = [&] { Press(Entry(0)); };
    services.events = &hand;
    EXPECT_TRUE(DropOn(Beta(), {"/music/One.mp3"}));
    EXPECT_FALSE(Drag().DragFromTree);
    EXPECT_TRUE(MarkAtDrag(Tree(), Drag().DragFromTree, Place(Entry(0)) + QPoint(60, 5)));

    hand.onDoEvents = [&] { QTest::mousePress(Grid().viewport(), Qt::LeftButton, {}, CellCentre(1)); };
    EXPECT_TRUE(DropOn(Beta(), {"/music/One.mp3"}));
    EXPECT_FALSE(Drag().GridDragging);
    EXPECT_TRUE(MarkAtDrag(Grid(), Drag().GridDragging, CellCentre(1) + QPoint(60, 5)));
    services.events = &realEvents;
    EXPECT_FALSE(Drag().GridDragging || Drag().DragFromTree);
}

TEST_F(TreeRebuildTest, NothingScrollsWhileAScanRunsOrABoxIsOpen) {
    StartWithLongTree();
    const std::unique_ptr<QMimeData> data(FilesToOffer({"/music/a.mp3"}));
    const QPoint low(40, Tree().viewport()->height() - 10);
    EXPECT_TRUE(Enter(*data, low));
    mainModule.ScanRunning = true;
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Timer1().isActive(); }));
    EXPECT_EQ(Bar().value(), 0);
    mainModule.ScanRunning = false;
    EXPECT_TRUE(Over(*data, low));
    EXPECT_TRUE(Timer1().isActive());
    QMessageBox box(&Form());
    box.open();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Timer1().isActive(); }));
    EXPECT_EQ(Bar().value(), 0);
    box.close();
    EXPECT_TRUE(Over(*data, low));
    EXPECT_TRUE(QTest::qWaitFor([&] { return Bar().value() > 0; }));
}

} // namespace quavernet::test
