#include "gui/TreeTest.h"

#include "support/ScriptedPlayer.h"
#include "support/TestLibrary.h"

#include <QAbstractItemModelTester>
#include <QMenu>
#include <QPaintEvent>
#include <QScrollBar>

namespace quavernet::test {

using TreePaneTest = TreeTest;

TEST_F(TreePaneTest, AnEmptyLibraryShowsTheBoldExpandedRootAlone) {
    Start();
    ASSERT_EQ(ChildCount({}), 1);
    EXPECT_EQ(Text(Root()), "Bibliothek");
    EXPECT_TRUE(IsBold(Root()));
    EXPECT_EQ(ChildCount(Root()), 0);
    EXPECT_FALSE(Icon(Root()).isNull());
    EXPECT_TRUE(mainModule.TreeLoaded);
    EXPECT_TRUE(Tree().selectionModel()->selectedIndexes().isEmpty());
}

TEST_F(TreePaneTest, CategoriesAreBoldAndBlueWithTheirLengthAndEntriesArePlain) {
    MakeTree();
    Start();
    EXPECT_TRUE(Tree().isExpanded(Root()));
    ASSERT_EQ(ChildCount(Root()), 2);
    EXPECT_EQ(Text(Alpha()), "Alpha (02:10)");
    EXPECT_EQ(Text(Beta()), "Beta");
    EXPECT_TRUE(IsBold(Alpha()));
    EXPECT_EQ(Foreground(Alpha()).value<QBrush>().color(), QColor(0, 0, 192));
    EXPECT_FALSE(Tree().isExpanded(Alpha()));
    ASSERT_EQ(ChildCount(Alpha()), 2);
    EXPECT_EQ(Text(Entry(0)), "Two.mp3");
    EXPECT_EQ(Text(Entry(1)), "One.mp3");
    EXPECT_FALSE(IsBold(Entry(0)));
    EXPECT_FALSE(Foreground(Entry(0)).isValid());
}

TEST_F(TreePaneTest, ASelectedCategoryShowsTheOpenFolder) {
    MakeTree();
    Start();
    const QIcon icon = Icon(Alpha());
    EXPECT_NE(icon.pixmap(16, QIcon::Normal).toImage(), icon.pixmap(16, QIcon::Selected).toImage());
}

TEST_F(TreePaneTest, TheNoteOfASelectedEntryHasTheColourOfItsText) {
    MakeTree();
    Start();
    Tree().expandAll();
    for (const QColor& text : {QColor(Qt::white), QColor(Qt::black)}) {
        QPalette palette = Tree().palette();
        palette.setColor(QPalette::HighlightedText, text);
        Tree().setPalette(palette);
        const QImage selected = Icon(Entry(0)).pixmap(16, QIcon::Selected).toImage();
        int painted = 0;
        for (int pixel = 0; pixel < 16 * 16; ++pixel) {
            const QColor color = selected.pixelColor(pixel % 16, pixel / 16);
            painted += color.alpha() == 255 ? 1 : 0;
            EXPECT_TRUE(color.alpha() < 255 || color == text);
        }
        EXPECT_GT(painted, 4);
        EXPECT_NE(Icon(Entry(0)).pixmap(16).toImage(), selected);
    }
}

TEST_F(TreePaneTest, TheSelectionReachesTheEdgeAndTheRootsPictureIsSeenOnIt) {
    Start();
    auto& tree = Control<TreeView>("TreeView");
    tree.setCurrentIndex(tree.model()->index(0, 0));
    tree.setFocus();
    for (const bool isActive : {true, false}) {
        if (!isActive) {
            QWidget other;
            other.show();
            other.activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
        }
        const QImage image = tree.viewport()->grab().toImage();
        const QRect row = tree.visualRect(tree.model()->index(0, 0));
        const double ratio = image.devicePixelRatio();
        const auto colorAt = [&](int x, int y) {
            return image.pixelColor(static_cast<int>(x * ratio), static_cast<int>(y * ratio));
        };
        const QColor mark = colorAt(tree.viewport()->width() - 2, row.center().y());
        EXPECT_EQ(mark, colorAt(row.right() + 2, row.center().y()));
        EXPECT_NE(mark, tree.palette().color(QPalette::Base));
        int seen = 0;
        for (int x = row.left(); x < row.left() + 20; ++x) {
            for (int y = row.top(); y < row.bottom(); ++y) {
                seen += std::abs(colorAt(x, y).lightness() - mark.lightness()) > 60 ? 1 : 0;
            }
        }
        EXPECT_GT(seen, 15) << isActive;
    }
}

TEST_F(TreePaneTest, TheBlueOfACategoryIsReadableOnADarkWindow) {
    MakeTree();
    Start();
    QPalette dark = Tree().palette();
    dark.setColor(QPalette::Window, QColor(40, 40, 40));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, Qt::white);
    Tree().setPalette(dark);
    EXPECT_GT(Foreground(Alpha()).value<QBrush>().color().lightness(), 160);
}

TEST_F(TreePaneTest, AStartForgetsWhatWasExpandedBefore) {
    MakeTree();
    mainModule.TreeNodeData.Add("CAT_Alpha");
    Start();
    EXPECT_TRUE(mainModule.TreeNodeData.Keys().empty());
    EXPECT_FALSE(Tree().isExpanded(Alpha()));
}

TEST_F(TreePaneTest, WhatTheUserHasExpandedStaysSoAfterARebuild) {
    MakeTree();
    Start();
    Tree().setExpanded(Alpha(), true);
    EXPECT_EQ(mainModule.TreeNodeData.Keys(), Texts{"CAT_Alpha"});
    Form().Tree().LoadTree();
    EXPECT_TRUE(Tree().isExpanded(Alpha()));
    EXPECT_EQ(mainModule.TreeNodeData.Keys(), Texts{"CAT_Alpha"});
    Tree().setExpanded(Alpha(), false);
    EXPECT_TRUE(mainModule.TreeNodeData.Keys().empty());
    Form().Tree().LoadTree();
    EXPECT_FALSE(Tree().isExpanded(Alpha()));
}

TEST_F(TreePaneTest, ARebuildLosesTheSelection) {
    MakeTree();
    Start();
    Click(Alpha());
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Alpha");
    Form().Tree().LoadTree();
    EXPECT_FALSE(Form().Tree().Model().HasSelection());
    EXPECT_TRUE(Tree().selectionModel()->selectedIndexes().isEmpty());
}

TEST_F(TreePaneTest, AClickOrAKeySelectsTheNodeAndMarksItForADrop) {
    MakeTree();
    Start();
    Click(Alpha());
    EXPECT_EQ(Form().Tree().Model().DropHighlight()->Key, "CAT_Alpha");
    QTest::keyClick(&Tree(), Qt::Key_Down);
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Beta");
    EXPECT_EQ(Form().Tree().Model().DropHighlight()->Key, "CAT_Beta");
}

TEST_F(TreePaneTest, ADoubleClickOnAnEntryOpensItWithTheSystemAndCountsIt) {
    MakeTree();
    Start();
    mainModule.UseExternalPlayer = true;
    Tree().setExpanded(Alpha(), true);
    DoubleClick(Entry(0));
    EXPECT_EQ(shell.executed, Texts{"/music/Two.mp3"});
    EXPECT_EQ(Hits(2), 1);
    EXPECT_EQ(Hits(1), 0);
    DoubleClick(Beta());
    EXPECT_EQ(shell.executed.size(), 1U);
    EXPECT_EQ(Hits(2), 1);
}

TEST_F(TreePaneTest, IfThePlayerCanNotComeUpADoubleClickSaysThatPlayingIsImpossible) {
    MakeTree();
    settings.values["WindowLeftPlayer"] = "x";
    Texts calls;
    services.createMediaPlayer = [&calls] { return std::make_unique<ScriptedPlayer>(calls); };
    Start();
    Tree().setExpanded(Alpha(), true);
    DoubleClick(Entry(0));
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].text, "Die Datei konnte nicht geöffnet werden!");
    EXPECT_EQ(msgBox.shown[0].title, "Abspielen nicht möglich!");
    EXPECT_EQ(msgBox.shown[0].icon, MsgBox::Icon::Exclamation);
    EXPECT_EQ(Hits(2), 0);
}

TEST_F(TreePaneTest, ADoubleClickWhereNoNodeIsWithNothingSelectedIsSilent) {
    MakeTree();
    Start();
    QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {}, Tree().viewport()->rect().bottomRight());
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_TRUE(shell.executed.empty());
}

TEST_F(TreePaneTest, AClickWhereNoNodeIsLeavesTheSelectionAndADoubleClickThereOpensNothing) {
    MakeTree();
    Start();
    mainModule.UseExternalPlayer = true;
    Tree().setExpanded(Alpha(), true);
    Click(Entry(0));
    const std::string key = Form().Tree().Model().SelectedItem().Key;
    const QPoint beside = Tree().viewport()->rect().bottomRight();
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, beside);
    EXPECT_TRUE(IsSelected(Entry(0)));
    EXPECT_EQ(Tree().selectionModel()->selectedIndexes().size(), 1);
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, key);
    QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {}, beside);
    EXPECT_TRUE(IsSelected(Entry(0)));
    EXPECT_TRUE(shell.executed.empty());
    EXPECT_EQ(Hits(2), 0);
    DoubleClick(Entry(1));
    EXPECT_EQ(shell.executed, Texts{"/music/One.mp3"});
}

TEST_F(TreePaneTest, TheCtrlKeyTakesNoSelectionAway) {
    MakeTree();
    Start();
    Click(Alpha());
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, Qt::ControlModifier, Place(Alpha()));
    EXPECT_TRUE(IsSelected(Alpha()));
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Alpha");
    QTest::keyClick(&Tree(), Qt::Key_Space, Qt::ControlModifier);
    EXPECT_TRUE(IsSelected(Alpha()));
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Alpha");
}

TEST_F(TreePaneTest, ARightClickSelectsItsNodeAndDoesNothingWhereNoNodeIs) {
    MakeTree();
    Start();
    Click(Beta());
    QContextMenuEvent right(QContextMenuEvent::Mouse, Place(Alpha()),
                            Tree().viewport()->mapToGlobal(Place(Alpha())));
    QCoreApplication::sendEvent(Tree().viewport(), &right);
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Alpha");
    EXPECT_EQ(Tree().currentIndex(), Alpha());
    ASSERT_EQ(QApplication::activePopupWidget(), Form().Menu().Popup("mnuTree"));
    QApplication::activePopupWidget()->close();
    const QPoint beside = Tree().viewport()->rect().bottomRight();
    QContextMenuEvent off(QContextMenuEvent::Mouse, beside, Tree().viewport()->mapToGlobal(beside));
    QCoreApplication::sendEvent(Tree().viewport(), &off);
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Alpha");
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(TreePaneTest, TheLanguageSwitchRenamesTheRootAndKeepsTheRest) {
    MakeTree();
    Start();
    Click(Alpha());
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(Text(Root()), "Library");
    EXPECT_EQ(Text(Alpha()), "Alpha (02:10)");
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Alpha");
}

TEST_F(TreePaneTest, AnExpandedNodeThatIsGoneFailsTheRebuildThatShowsTheNewTree) {
    MakeTree();
    Start();
    mainModule.Connection->Execute("Insert into Categories (Category) values ('Gamma')");
    mainModule.TreeNodeData.Add("CAT_Gone");
    EXPECT_THROW(Form().Tree().LoadTree(), RuntimeError);
    EXPECT_EQ(ChildCount(Root()), 3);
    mainModule.TreeNodeData.Remove("CAT_Gone");
}

TEST_F(TreePaneTest, ACategoryThatAnotherProgramHasDeletedIsFoldedAwayWithoutAFailure) {
    MakeTree();
    Start();
    mainModule.TreeNodeData.Add("CAT_Alpha");
    Form().Tree().LoadTree();
    mainModule.Connection->Commit();
    const std::string path =
        mainModule.ConnectionString.substr(mainModule.ConnectionString.find("Data Source=") + 12);
    const auto other = OpenLibrary(path);
    other->Execute("Delete from FileCategories where Parent = 'Alpha'");
    other->Execute("Delete from Categories where Category = 'Alpha'");
    other->Commit();
    EXPECT_NO_THROW(Form().Tree().LoadTree());
    EXPECT_FALSE(Form().Tree().Model().Contains("CAT_Alpha"));
}

TEST_F(TreePaneTest, AMarkThatGoesLeavesNothingAtTheEdge) {
    class PaintedRegion : public QObject {
    public:
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint) {
                region += static_cast<QPaintEvent*>(event)->region();
            }
            return false;
        }
        QRegion region;
    } painted;
    MakeTree();
    Start();
    Tree().expandAll();
    Tree().selectionModel()->setCurrentIndex(Alpha(), QItemSelectionModel::ClearAndSelect);
    ASSERT_TRUE(IsSelected(Alpha()));
    QTest::qWait(100); // What the expansion has moved is painted as well.
    Tree().viewport()->installEventFilter(&painted);
    Tree().selectionModel()->setCurrentIndex(Entry(0), QItemSelectionModel::ClearAndSelect);
    QCoreApplication::processEvents();
    Tree().viewport()->removeEventFilter(&painted);
    const int edge = Tree().viewport()->width() - 1;
    EXPECT_LT(Tree().visualRect(Alpha()).right(), edge);
    EXPECT_TRUE(painted.region.contains(QPoint(edge, Place(Alpha()).y())));
    EXPECT_TRUE(painted.region.contains(QPoint(edge, Place(Entry(0)).y())));
}

TEST_F(TreePaneTest, AStatementThatFailsLeavesTheNewTreeAsFarAsItCame) {
    MakeTree();
    Start();
    mainModule.Connection->Execute("Insert into Categories (Category) values ('Gamma')");
    mainModule.Connection->Execute("Alter table FileCategories rename to Away");
    EXPECT_THROW(Form().Tree().LoadTree(), RuntimeError);
    EXPECT_EQ(ChildCount(Root()), 3);
    EXPECT_EQ(ChildCount(Alpha()), 0);
    mainModule.Connection->Execute("Alter table Away rename to FileCategories");
    Form().Tree().LoadTree();
    EXPECT_EQ(ChildCount(Root()), 3);
}

TEST_F(TreePaneTest, AKeyThatExpandsACategoryWithoutEntriesIsNotRemembered) {
    MakeTree();
    Start();
    Click(Beta());
    for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Right, Qt::Key_Asterisk}) {
        QTest::keyClick(&Tree(), key);
        EXPECT_TRUE(mainModule.TreeNodeData.Keys().empty()) << key;
    }
    Click(Alpha());
    QTest::keyClick(&Tree(), Qt::Key_Plus);
    EXPECT_EQ(mainModule.TreeNodeData.Keys(), Texts{"CAT_Alpha"});
}

TEST_F(TreePaneTest, OneStepOfADragAtTheEdgeScrollsByOneLine) {
    MakeTree();
    for (int number = 0; number < 60; ++number) {
        mainModule.Connection->Execute("Insert into Categories (Category) values ('Z" +
                                       std::to_string(number) + "')");
    }
    Start();
    QScrollBar& bar = *Tree().verticalScrollBar();
    bar.setValue(3);
    Tree().ScrollLine(1);
    EXPECT_EQ(bar.value(), 4);
    EXPECT_EQ(Tree().GetTreeViewFirstVisibleNode(), "CAT_Z1") << "root, two categories, Z0: a line is a row";
    Tree().ScrollLine(-1);
    EXPECT_EQ(bar.value(), 3);
}

TEST_F(TreePaneTest, TheNodesFollowTheRulesOfTheToolkitBeforeAndAfterALoad) {
    MakeTree();
    Start();
    const QAbstractItemModelTester rules(Tree().model(),
                                         QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(Tree().model()->parent(Entry(1)), Alpha());
    EXPECT_EQ(Entry(1).row(), 1);
    mainModule.Connection->Execute("Delete from FileCategories");
    mainModule.Connection->Execute("Insert into Categories (Category) values ('Gamma')");
    Form().Tree().LoadTree();
    EXPECT_EQ(ChildCount(Root()), 3);
    EXPECT_EQ(ChildCount(Alpha()), 0);
}

TEST_F(TreePaneTest, ARebuildStartsAtTheTop) {
    for (int number = 100; number < 200; ++number) {
        if (number == 100) {
            AddFile("Abba", "One");
        }
        mainModule.Connection->Execute("Insert into Categories (Category) values ('" +
                                       std::to_string(number) + "')");
    }
    Start();
    Tree().verticalScrollBar()->setValue(40);
    Form().Tree().LoadTree();
    QCoreApplication::processEvents();
    EXPECT_EQ(Tree().verticalScrollBar()->value(), 0);
    EXPECT_GT(Tree().verticalScrollBar()->maximum(), 40);
}

TEST_F(TreePaneTest, ALoadThatBeginsInsideAnotherOneIsTheOneThatIsShown) {
    MakeTree();
    Start();
    HandEvents hand;
    services.events = &hand;
    // The outer load has read the categories when the inner one finds an entry in a new one.
    hand.onDoEvents = [&] {
        hand.onDoEvents = nullptr;
        mainModule.Connection->Execute("Insert into Categories (Category_id, Category) values (3, 'Gamma')");
        mainModule.Connection->Execute("Insert into FileCategories (FileCategory_id, File_id, Category_id, "
                                       "[Position], Parent, Filename) "
                                       "values (13, 1, 3, 1, 'Gamma', 'One.mp3')");
        Form().Tree().LoadTree();
    };
    Form().Tree().LoadTree();
    ASSERT_EQ(ChildCount(Root()), 3);
    EXPECT_EQ(Text(Child(Root(), 2)), "Gamma (01:05)");
    services.events = &realEvents;
}

TEST_F(TreePaneTest, WhileALoadRunsNothingIsSelectedAndNothingActsOnTheOldTree) {
    MakeTree();
    Start();
    mainModule.UseExternalPlayer = true;
    Tree().setExpanded(Alpha(), true);
    Click(Alpha());
    HandEvents hand;
    services.events = &hand;
    hand.onDoEvents = [&] {
        EXPECT_TRUE(Tree().selectionModel()->selectedIndexes().isEmpty());
        DoubleClick(Entry(0));
        QTest::keyClick(&Tree(), Qt::Key_Down);
        QTest::keyClick(&Tree(), Qt::Key_Delete);
        QContextMenuEvent right(QContextMenuEvent::Mouse, Place(Alpha()),
                                Tree().viewport()->mapToGlobal(Place(Alpha())));
        QCoreApplication::sendEvent(Tree().viewport(), &right);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        EXPECT_FALSE(Form().Tree().Model().HasSelection());
        EXPECT_TRUE(Tree().selectionModel()->selectedIndexes().isEmpty());
    };
    Form().Tree().LoadTree();
    services.events = &realEvents;
    EXPECT_EQ(hand.count, 3);
    EXPECT_TRUE(shell.executed.empty());
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_TRUE(Tree().isExpanded(Alpha()));
    Click(Beta());
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Beta");
}

TEST_F(TreePaneTest, AfterALoadThatFailsTheTreeActsAgain) {
    MakeTree();
    Start();
    Click(Alpha());
    mainModule.TreeNodeData.Add("CAT_Gone");
    EXPECT_THROW(Form().Tree().LoadTree(), RuntimeError);
    mainModule.TreeNodeData.Remove("CAT_Gone");
    EXPECT_FALSE(Form().Tree().Model().HasSelection());
    Click(Beta());
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Beta");
    EXPECT_TRUE(IsSelected(Beta()));
}

} // namespace quavernet::test
