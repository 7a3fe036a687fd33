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

TEST_F(TreeRebuildTest, NothingIsPaintedBeforeTheRebuildIsThrough) {
    StartWithTree();
    bool wasOff = false;
    HandEvents hand;
    hand.onDoEvents = [&] { wasOff = wasOff || !Tree().updatesEnabled(); };
    services.events = &hand;
    EXPECT_TRUE(DropOn(Beta(), {"/music/One.mp3"}));
    services.events = &realEvents;
    EXPECT_TRUE(wasOff);
    EXPECT_TRUE(Tree().updatesEnabled());
}

TEST_F(TreeRebuildTest, AFailingRebuildIsPassedOverAndTheDropStays) {
    StartWithTree();
    mainModule.TreeNodeData.Add("CAT_Gone");
    EXPECT_TRUE(DropOn(Beta(), {"/music/One.mp3"}));
    EXPECT_EQ(Entries("Beta"), "21@1 22@2 23@3");
    EXPECT_EQ(ChildCount(Beta()), 2);
    EXPECT_TRUE(Tree().updatesEnabled());
    EXPECT_FALSE(Drag().DragFromTree);
    mainModule.TreeNodeData.Remove("CAT_Gone");
    Form().Tree().LoadTree();
    EXPECT_EQ(ChildCount(Beta()), 3);
}

TEST_F(TreeRebuildTest, ADropThatComesDuringTheRebuildOfAnotherOneIsShownToo) {
    StartWithTree();
    HandEvents hand;
    hand.onDoEvents = [&] {
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
