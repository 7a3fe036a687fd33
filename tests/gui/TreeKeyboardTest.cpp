#include "gui/TreeDragDropTest.h"

#include <QClipboard>

namespace quavernet::test {

namespace {

/// The keyboard's way to do what drags do.
class TreeKeyboardTest : public TreeDragDropTest {
protected:
    void Select(const QModelIndex& node) { Click(node); }
    void Cut() { QTest::keyClick(&Tree(), Qt::Key_X, Qt::ControlModifier); }
    void Copy() { QTest::keyClick(&Tree(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier); }
    void Paste() { QTest::keyClick(&Tree(), Qt::Key_V, Qt::ControlModifier); }
    static Texts Clipboard() {
        const QMimeData* held = QApplication::clipboard()->mimeData();
        return held == nullptr ? Texts() : LocalFiles(*held);
    }
    static void FillClipboard(const Texts& paths) {
        QApplication::clipboard()->setMimeData(FilesToOffer(paths));
    }
};

} // namespace

TEST_F(TreeKeyboardTest, ACutEntryMovesToTheCategoryThatIsSelectedThen) {
    StartWithTree();
    Select(Entry(0));
    Cut();
    EXPECT_EQ(Clipboard(), Texts{"/music/Two.mp3"});
    EXPECT_EQ(Shown(Alpha()), (Texts{"Two.mp3", "One.mp3"})) << "nothing moves before it is pasted";
    Select(Beta());
    Paste();
    EXPECT_EQ(Shown(Alpha()), Texts{"One.mp3"});
    EXPECT_EQ(Shown(Beta()), (Texts{"One.mp3", "Two.mp3", "Two.mp3"}));
    EXPECT_TRUE(IsSelected(Beta())) << "the keys go on from there";
}

TEST_F(TreeKeyboardTest, ACutEntryTakesThePlaceOfTheEntryThatIsSelectedAsByADrag) {
    StartWithTree();
    Select(Entry(0));
    Cut();
    Select(Entry(1));
    Paste();
    EXPECT_EQ(Entries("Alpha"), "12@1 11@2");
    EXPECT_EQ(Shown(Alpha()), (Texts{"One.mp3", "Two.mp3"}));
    EXPECT_NE(Selected(), "none") << "the keys go on from there";
}

TEST_F(TreeKeyboardTest, ACutEntryMovesOnce) {
    StartWithTree();
    Select(Entry(0));
    Cut();
    Select(Beta());
    Paste();
    EXPECT_EQ(ChildCount(Beta()), 3);
    Select(Beta());
    Paste();
    EXPECT_EQ(Shown(Alpha()), Texts{"One.mp3"});
    EXPECT_EQ(ChildCount(Beta()), 3) << "nothing is taken up any more";
}

TEST_F(TreeKeyboardTest, APasteThatIsRefusedLeavesWhatIsTakenUpForTheNext) {
    StartWithTree();
    Select(Entry(0));
    Cut();
    Select(Root());
    Paste();
    EXPECT_TRUE(IsSelected(Root()));
    Select(Beta());
    Paste();
    EXPECT_EQ(Shown(Alpha()), Texts{"One.mp3"});
    EXPECT_EQ(ChildCount(Beta()), 3);
}

TEST_F(TreeKeyboardTest, ShiftDeleteTakesNothingUp) {
    StartWithTree();
    QApplication::clipboard()->clear();
    msgBox.answers = {MsgBox::Answer::No};
    Select(Entry(0));
    QTest::keyClick(&Tree(), Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_TRUE(Clipboard().empty());
}

TEST_F(TreeKeyboardTest, ACopiedEntryStaysWhereItIs) {
    StartWithTree();
    Select(Entry(0));
    Copy();
    EXPECT_EQ(Clipboard(), Texts{"/music/Two.mp3"});
    Select(Beta());
    Paste();
    EXPECT_EQ(Shown(Alpha()), (Texts{"Two.mp3", "One.mp3"}));
    EXPECT_EQ(ChildCount(Beta()), 3);
}

TEST_F(TreeKeyboardTest, FilesOfOtherProgramsArePastedOnTheSelectedNode) {
    StartWithTree();
    const std::string file = MakeFile("New.mp3");
    FillClipboard({file});
    Select(Beta());
    Paste();
    EXPECT_EQ(Shown(Beta()).back(), "New.mp3");
    EXPECT_FALSE(Drag().DragFromTree);
}

TEST_F(TreeKeyboardTest, AClipboardWithoutFilesIsNotPasted) {
    StartWithTree();
    QApplication::clipboard()->setText(QStringLiteral("/music/One.mp3"));
    Select(Beta());
    Paste();
    EXPECT_EQ(ChildCount(Beta()), 2);
}

TEST_F(TreeKeyboardTest, WhatAnotherProgramPutIntoTheClipboardIsMeantAndNotTheCutEntry) {
    StartWithTree();
    Select(Entry(0));
    Cut();
    FillClipboard({MakeFile("New.mp3")});
    Select(Beta());
    Paste();
    EXPECT_EQ(Shown(Alpha()), (Texts{"Two.mp3", "One.mp3"}));
    EXPECT_EQ(Shown(Beta()).back(), "New.mp3");
}

TEST_F(TreeKeyboardTest, TheRootIsNotTakenUp) {
    StartWithTree();
    QApplication::clipboard()->clear();
    Select(Root());
    Cut();
    EXPECT_TRUE(Clipboard().empty());
}

TEST_F(TreeKeyboardTest, WhileAScanRunsTheKeysDoNothing) {
    StartWithTree();
    Select(Entry(0));
    Cut();
    Select(Beta());
    mainModule.ScanRunning = true;
    Paste();
    mainModule.ScanRunning = false;
    EXPECT_EQ(ChildCount(Beta()), 2);
    EXPECT_EQ(Shown(Alpha()), (Texts{"Two.mp3", "One.mp3"}));
}

TEST_F(TreeKeyboardTest, CtrlAndTheNumberOfAColumnSortTheListAsADoubleClickOnItsHead) {
    AddFile("Abba", "Zulu");
    AddFile("Cure", "Alpha");
    Start();
    Grid().setFocus();
    ASSERT_TRUE(mainModule.SortInterpret);
    QTest::keyClick(&Grid(), Qt::Key_2, Qt::ControlModifier);
    EXPECT_TRUE(mainModule.SortTitle);
    EXPECT_EQ(mainModule.SortDirection, "DESC");
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure"}));
    QTest::keyClick(&Grid(), Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(mainModule.SortDirection, "ASC");
    EXPECT_EQ(Listed(), (Texts{"Cure", "Abba"}));
    QTest::keyClick(&Grid(), Qt::Key_7, Qt::ControlModifier);
    EXPECT_EQ(Listed(), (Texts{"Cure", "Abba"}));
}

} // namespace quavernet::test
