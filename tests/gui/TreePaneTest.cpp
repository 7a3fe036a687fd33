#include "gui/GuiTest.h"

#include "tree/TreePane.h"

#include <QMenu>

namespace quavernet::test {

namespace {
class TreePaneTest : public GuiTest {
protected:
    /// Two categories; the first holds both files.
    void MakeTree() {
        AddFile("Abba", "One");
        AddFile("Cure", "Two");
        for (const char* statement :
             {"Insert into Categories (Category_id, Category) values (1, 'Alpha')",
              "Insert into Categories (Category_id, Category) values (2, 'Beta')",
              "Insert into FileCategories (FileCategory_id, File_id, Category_id, [Position], Parent, "
              "Filename) values (11, 2, 1, 1, 'Alpha', 'Two.mp3')",
              "Insert into FileCategories (FileCategory_id, File_id, Category_id, [Position], Parent, "
              "Filename) values (12, 1, 1, 2, 'Alpha', 'One.mp3')"}) {
            mainModule.Connection->Execute(statement);
        }
    }
    QTreeWidget& Tree() { return Control<QTreeWidget>("TreeView"); }
    QTreeWidgetItem& Root() { return *Tree().topLevelItem(0); }
    QTreeWidgetItem& Alpha() { return *Root().child(0); }
    QPoint Place(QTreeWidgetItem& item) { return Tree().visualItemRect(&item).center(); }
    void Click(QTreeWidgetItem& item, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(Tree().viewport(), button, {}, Place(item));
    }
    void DoubleClick(QTreeWidgetItem& item) {
        Click(item);
        QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {}, Place(item));
    }
    std::int64_t Hits(int fileId) {
        return mainModule.Connection
            ->Query("Select Hits from Files where File_id = " + std::to_string(fileId))
            .At(0, 0)
            .Integer();
    }
    static std::string Text(const QTreeWidgetItem& item) { return FromQString(item.text(0)); }
};
} // namespace

TEST_F(TreePaneTest, AnEmptyLibraryShowsTheBoldExpandedRootAlone) {
    Start();
    ASSERT_EQ(Tree().topLevelItemCount(), 1);
    EXPECT_EQ(Text(Root()), "Bibliothek");
    EXPECT_TRUE(Root().font(0).bold());
    EXPECT_EQ(Root().childCount(), 0);
    EXPECT_FALSE(Root().icon(0).isNull());
    EXPECT_TRUE(mainModule.TreeLoaded);
    EXPECT_TRUE(Tree().selectedItems().isEmpty());
}

TEST_F(TreePaneTest, CategoriesAreBoldAndBlueWithTheirLengthAndEntriesArePlain) {
    MakeTree();
    Start();
    EXPECT_TRUE(Root().isExpanded());
    ASSERT_EQ(Root().childCount(), 2);
    EXPECT_EQ(Text(Alpha()), "Alpha (02:10)");
    EXPECT_EQ(Text(*Root().child(1)), "Beta");
    EXPECT_TRUE(Alpha().font(0).bold());
    EXPECT_EQ(Alpha().foreground(0).color(), QColor(0, 0, 192));
    EXPECT_FALSE(Alpha().isExpanded());
    ASSERT_EQ(Alpha().childCount(), 2);
    EXPECT_EQ(Text(*Alpha().child(0)), "Two.mp3");
    EXPECT_EQ(Text(*Alpha().child(1)), "One.mp3");
    EXPECT_FALSE(Alpha().child(0)->font(0).bold());
    EXPECT_EQ(Alpha().child(0)->foreground(0).style(), Qt::NoBrush);
}

TEST_F(TreePaneTest, ASelectedCategoryShowsTheOpenFolder) {
    MakeTree();
    Start();
    const QIcon icon = Alpha().icon(0);
    EXPECT_NE(icon.pixmap(16, QIcon::Normal).toImage(), icon.pixmap(16, QIcon::Selected).toImage());
}

TEST_F(TreePaneTest, TheBlueOfACategoryIsReadableOnADarkWindow) {
    MakeTree();
    Start();
    QPalette dark = Tree().palette();
    dark.setColor(QPalette::Window, QColor(40, 40, 40));
    dark.setColor(QPalette::WindowText, Qt::white);
    Tree().setPalette(dark);
    EXPECT_GT(Alpha().foreground(0).color().lightness(), 160);
}

TEST_F(TreePaneTest, AStartForgetsWhatWasExpandedBefore) {
    MakeTree();
    mainModule.TreeNodeData.Add("CAT_Alpha");
    Start();
    EXPECT_TRUE(mainModule.TreeNodeData.Keys().empty());
    EXPECT_FALSE(Alpha().isExpanded());
}

TEST_F(TreePaneTest, WhatTheUserHasExpandedStaysSoAfterARebuild) {
    MakeTree();
    Start();
    Alpha().setExpanded(true);
    EXPECT_EQ(mainModule.TreeNodeData.Keys(), Texts{"CAT_Alpha"});
    Form().Tree().LoadTree();
    EXPECT_TRUE(Alpha().isExpanded());
    EXPECT_EQ(mainModule.TreeNodeData.Keys(), Texts{"CAT_Alpha"});
    Alpha().setExpanded(false);
    EXPECT_TRUE(mainModule.TreeNodeData.Keys().empty());
    Form().Tree().LoadTree();
    EXPECT_FALSE(Alpha().isExpanded());
}

TEST_F(TreePaneTest, ARebuildLosesTheSelection) {
    MakeTree();
    Start();
    Click(Alpha());
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Alpha");
    Form().Tree().LoadTree();
    EXPECT_FALSE(Form().Tree().Model().HasSelection());
    EXPECT_TRUE(Tree().selectedItems().isEmpty());
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
    Alpha().setExpanded(true);
    DoubleClick(*Alpha().child(0));
    EXPECT_EQ(shell.executed, Texts{"/music/Two.mp3"});
    EXPECT_EQ(Hits(2), 1);
    EXPECT_EQ(Hits(1), 0);
    DoubleClick(*Root().child(1));
    EXPECT_EQ(shell.executed.size(), 1U);
    EXPECT_EQ(Hits(2), 1);
}

TEST_F(TreePaneTest, WithoutAPlayerADoubleClickSaysThatPlayingIsImpossible) {
    MakeTree();
    Start();
    Alpha().setExpanded(true);
    DoubleClick(*Alpha().child(0));
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].text, "Die Datei konnte nicht geöffnet werden!");
    EXPECT_EQ(msgBox.shown[0].title, "Abspielen nicht möglich!");
    EXPECT_EQ(msgBox.shown[0].icon, MsgBox::Icon::Exclamation);
    EXPECT_EQ(Hits(2), 0);
}

TEST_F(TreePaneTest, ADoubleClickBesideAllNodesWithNothingSelectedIsSilent) {
    MakeTree();
    Start();
    QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {}, Tree().viewport()->rect().bottomRight());
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_TRUE(shell.executed.empty());
}

TEST_F(TreePaneTest, AClickBesideAllNodesLeavesTheSelectionAndADoubleClickThereOpensNothing) {
    MakeTree();
    Start();
    mainModule.UseExternalPlayer = true;
    Alpha().setExpanded(true);
    Click(*Alpha().child(0));
    const std::string key = Form().Tree().Model().SelectedItem().Key;
    const QPoint beside = Tree().viewport()->rect().bottomRight();
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, beside);
    EXPECT_TRUE(Alpha().child(0)->isSelected());
    EXPECT_EQ(Tree().selectedItems().size(), 1);
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, key);
    QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {}, beside);
    EXPECT_TRUE(Alpha().child(0)->isSelected());
    EXPECT_TRUE(shell.executed.empty());
    EXPECT_EQ(Hits(2), 0);
    DoubleClick(*Alpha().child(1));
    EXPECT_EQ(shell.executed, Texts{"/music/One.mp3"});
}

TEST_F(TreePaneTest, TheCtrlKeyTakesNoSelectionAway) {
    MakeTree();
    Start();
    Click(Alpha());
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, Qt::ControlModifier, Place(Alpha()));
    EXPECT_TRUE(Alpha().isSelected());
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Alpha");
    QTest::keyClick(&Tree(), Qt::Key_Space, Qt::ControlModifier);
    EXPECT_TRUE(Alpha().isSelected());
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Alpha");
}

TEST_F(TreePaneTest, ARightClickSelectsItsNodeAndBesideAllNodesDoesNothing) {
    MakeTree();
    Start();
    Click(*Root().child(1));
    QContextMenuEvent right(QContextMenuEvent::Mouse, Place(Alpha()),
                            Tree().viewport()->mapToGlobal(Place(Alpha())));
    QCoreApplication::sendEvent(Tree().viewport(), &right);
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Alpha");
    EXPECT_EQ(Tree().currentItem(), &Alpha());
    const QPoint beside = Tree().viewport()->rect().bottomRight();
    QContextMenuEvent off(QContextMenuEvent::Mouse, beside, Tree().viewport()->mapToGlobal(beside));
    QCoreApplication::sendEvent(Tree().viewport(), &off);
    EXPECT_EQ(Form().Tree().Model().SelectedItem().Key, "CAT_Alpha");
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(TreePaneTest, TheDeleteKeyDoesNothingWhileDeletingIsNotInTheMenus) {
    MakeTree();
    Start();
    ASSERT_EQ(Form().Menu().Item("mnuDelete"), nullptr);
    Click(Alpha());
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    EXPECT_EQ(Root().childCount(), 2);
    EXPECT_TRUE(msgBox.shown.empty());
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

TEST_F(TreePaneTest, AnExpandedNodeThatIsGoneFailsTheRebuildAndTheOldTreeStays) {
    MakeTree();
    Start();
    mainModule.TreeNodeData.Add("CAT_Gone");
    EXPECT_THROW(Form().Tree().LoadTree(), RuntimeError);
    EXPECT_EQ(Root().childCount(), 2);
    mainModule.TreeNodeData.Remove("CAT_Gone");
}

} // namespace quavernet::test
