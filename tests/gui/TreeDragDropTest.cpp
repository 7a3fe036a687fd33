#include "gui/TreeDragDropTest.h"

#include <QMenu>

namespace quavernet::test {

TEST_F(TreeDragDropTest, APressRemembersTheNodeUnderTheMouseAndSelectsIt) {
    StartWithTree();
    Drag().GridDragging = true;
    Press(Entry(1));
    EXPECT_TRUE(Drag().DragFromTree);
    EXPECT_FALSE(Drag().GridDragging);
    EXPECT_EQ(Drag().DragText, "One.mp3");
    EXPECT_EQ(Drag().DragPosition, "2");
    EXPECT_EQ(Drag().DragCategory, "Alpha");
    EXPECT_EQ(Drag().DragFilePath, "/music/One.mp3");
    EXPECT_TRUE(IsSelected(Entry(1)));
    EXPECT_EQ(Selected(), "file12pos2");
    Release(Entry(1));
    EXPECT_FALSE(Drag().DragFromTree);
    EXPECT_EQ(Drag().DragText, "One.mp3");
}

TEST_F(TreeDragDropTest, TheWholeRowOfANodeIsTheNodeAndBelowTheLastOneIsNone) {
    StartWithTree();
    const int y = Tree().visualRect(Beta()).center().y();
    for (const int x : {1, Tree().viewport()->width() - 2}) {
        Click(Root());
        QTest::mousePress(Tree().viewport(), Qt::LeftButton, {}, {x, y});
        EXPECT_TRUE(IsSelected(Beta())) << x;
        QTest::mouseRelease(Tree().viewport(), Qt::LeftButton, {}, {x, y});
        EXPECT_TRUE(IsSelected(Beta())) << x;
        Tree().expandAll(); // At the left edge the press was on the sign that closes it.
    }
    Drag() = {};
    QTest::mousePress(Tree().viewport(), Qt::LeftButton, {}, Beside());
    EXPECT_TRUE(IsSelected(Beta()));
    EXPECT_TRUE(Drag().DragFromTree);
    EXPECT_EQ(Drag().DragText, "");
    MoveTo(Beside() - QPoint(0, 60), Qt::LeftButton);
    EXPECT_EQ(Tree().findChild<QDrag*>(), nullptr);
}

TEST_F(TreeDragDropTest, ADraggedEntryOffersItsFileAndItsKeyAsText) {
    StartWithTree();
    const QMimeData* data = DragOut(Entry(0));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(LocalFiles(*data), Texts{"/music/Two.mp3"});
    EXPECT_EQ(FromQString(data->text()), "file11pos1");
    EXPECT_FALSE(Drag().DragFromTree); // The drag is over, and has swallowed the release of the button.
    EXPECT_EQ(Drag().DragText, "Two.mp3");
}

TEST_F(TreeDragDropTest, ADraggedCategoryOffersItsFilesInTheirOrderAndNoText) {
    StartWithTree();
    const QMimeData* data = DragOut(Alpha());
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(LocalFiles(*data), (Texts{"/music/Two.mp3", "/music/One.mp3"}));
    EXPECT_FALSE(data->hasText() && data->hasFormat(QStringLiteral("text/plain")));
}

TEST_F(TreeDragDropTest, ADragOffersACopyWithThePointerOfTheProgram) {
    StartWithTree();
    DragOut(Entry(0));
    const auto* drag = Tree().findChild<QDrag*>();
    ASSERT_NE(drag, nullptr);
    EXPECT_EQ(drag->supportedActions(), Qt::CopyAction);
    for (const Qt::DropAction action : {Qt::CopyAction, Qt::IgnoreAction}) {
        EXPECT_EQ(drag->dragCursor(action).deviceIndependentSize(), QSizeF(48, 48));
    }
}

TEST_F(TreeDragDropTest, AnEntryWhoseFileHasAnotherNameNowOffersAnEmptyList) {
    StartWithTree();
    mainModule.Connection->Execute("Update Files Set Name = 'Other.mp3' where File_id = 2");
    Form().Tree().LoadTree();
    const QMimeData* data = DragOut(Entry(0));
    ASSERT_NE(data, nullptr);
    EXPECT_TRUE(LocalFiles(*data).empty());
    EXPECT_TRUE(data->hasFormat(QStringLiteral("text/uri-list")));
}

TEST_F(TreeDragDropTest, TheRootIsNotDraggedAndNothingIsWithTheRightButtonOrAfterAShortMove) {
    StartWithTree();
    EXPECT_EQ(DragOut(Root()), nullptr);
    Release(Root());
    Press(Entry(0), Qt::RightButton);
    MoveTo(Place(Entry(0)) + QPoint(60, 5), Qt::RightButton);
    EXPECT_EQ(Tree().findChild<QDrag*>(), nullptr);
    Release(Entry(0), Qt::RightButton);
    Press(Entry(0));
    MoveTo(Place(Entry(0)) + QPoint(2, 1), Qt::LeftButton);
    EXPECT_EQ(Tree().findChild<QDrag*>(), nullptr);
    Release(Entry(0));
    MoveTo(Place(Entry(0)) + QPoint(60, 5), Qt::LeftButton);
    EXPECT_EQ(Tree().findChild<QDrag*>(), nullptr) << "the press is over";
}

TEST_F(TreeDragDropTest, AHeldButtonSelectsNoNodeOnTheWay) {
    StartWithTree();
    Press(Root());
    MoveTo(Place(Entry(1)), Qt::LeftButton);
    EXPECT_EQ(Selected(), "Parent");
    EXPECT_TRUE(IsSelected(Root()));
}

TEST_F(TreeDragDropTest, ARightPressRemembersNoNodeAndTheFlagGoesWithItsMenu) {
    StartWithTree();
    Press(Entry(0));
    Release(Entry(0));
    Press(Entry(1), Qt::RightButton);
    EXPECT_TRUE(Drag().DragFromTree);
    EXPECT_EQ(Drag().DragText, "Two.mp3");
    Release(Entry(1), Qt::RightButton);
    EXPECT_FALSE(Drag().DragFromTree);

    Press(Entry(1), Qt::RightButton);
    QContextMenuEvent right(QContextMenuEvent::Mouse, Place(Entry(1)),
                            Tree().viewport()->mapToGlobal(Place(Entry(1))));
    QCoreApplication::sendEvent(Tree().viewport(), &right);
    QWidget* menu = QApplication::activePopupWidget();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(Drag().DragFromTree);
    QTest::keyClick(menu, Qt::Key_Escape);
    EXPECT_FALSE(Drag().DragFromTree);
    EXPECT_EQ(Selected(), "file12pos2");
}

TEST_F(TreeDragDropTest, APressOnTheListForgetsTheNodeAndOneOnTheTreeTheList) {
    StartWithTree();
    Press(Entry(0));
    Release(Entry(0));
    QTest::mousePress(Grid().viewport(), Qt::LeftButton, {}, CellCentre(1));
    EXPECT_TRUE(Drag().GridDragging);
    EXPECT_EQ(Drag().DragText + Drag().DragPosition + Drag().DragCategory, "");
    Press(Entry(0));
    EXPECT_FALSE(Drag().GridDragging);
    EXPECT_TRUE(Drag().DragFromTree);
    QTest::mousePress(Grid().viewport(), Qt::LeftButton, {}, CellCentre(1));
    EXPECT_FALSE(Drag().DragFromTree);
}

TEST_F(TreeDragDropTest, AfterTheMenuOfTheListADropFromOutsideIsNoneOfTheList) {
    StartWithTree();
    QTest::mousePress(Grid().viewport(), Qt::RightButton, {}, CellCentre(1));
    QWidget* menu = QApplication::activePopupWidget();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(Drag().GridDragging);
    QTest::keyClick(menu, Qt::Key_Escape);
    EXPECT_FALSE(Drag().GridDragging);
    EXPECT_TRUE(DropOn(Beta(), {MakeFile("Dylan - Three.mp3")}));
    EXPECT_EQ(Shown(Beta()).back(), "Dylan - Three.mp3");
}

TEST_F(TreeDragDropTest, ADragMarksTheNodeUnderItAndNothingWhereNoNodeIs) {
    StartWithTree();
    const std::unique_ptr<QMimeData> data(FilesToOffer({"/music/a.mp3"}));
    const QImage before = Tree().viewport()->grab().toImage();
    EXPECT_TRUE(Enter(*data, Place(Beta())));
    EXPECT_EQ(Target(), "CAT_Beta");
    const QImage marked = Tree().viewport()->grab().toImage();
    EXPECT_NE(marked, before);
    const int right = Tree().viewport()->width() - 5;
    const int y = Place(Beta()).y();
    EXPECT_NE(marked.pixel(right, y), before.pixel(right, y)) << "the mark goes over the whole row";
    EXPECT_TRUE(Over(*data, Place(Entry(0))));
    EXPECT_EQ(Target(), "file11pos1");
    EXPECT_FALSE(Over(*data, Beside())) << "files want a node";
    EXPECT_EQ(Target(), "none");
    EXPECT_EQ(Tree().viewport()->grab().toImage(), before);
    EXPECT_TRUE(Over(*data, Place(Beta())));
    Leave();
    EXPECT_EQ(Tree().viewport()->grab().toImage(), before);
}

TEST_F(TreeDragDropTest, AtTheVeryEdgeTheSelectedNodeIsTheTarget) {
    StartWithTree();
    const std::unique_ptr<QMimeData> data(FilesToOffer({"/music/a.mp3"}));
    EXPECT_TRUE(Enter(*data, {0, Place(Beta()).y()}));
    EXPECT_EQ(Target(), "none");
    Click(Entry(1));
    EXPECT_TRUE(Over(*data, {0, Place(Beta()).y()}));
    EXPECT_EQ(Target(), "file12pos2");
    EXPECT_TRUE(Over(*data, {1, Place(Beta()).y()}));
    EXPECT_EQ(Target(), "CAT_Beta");
    EXPECT_FALSE(Over(*data, {40, 0})) << "the drop would be on the root, which is there";
    EXPECT_EQ(Target(), "file12pos2");
}

TEST_F(TreeDragDropTest, ADragNearTheUpperOrLowerEdgeScrollsALineEachTenthOfASecond) {
    StartWithLongTree();
    const std::unique_ptr<QMimeData> data(FilesToOffer({"/music/a.mp3"}));
    const int height = Tree().viewport()->height();
    EXPECT_EQ(Timer1().interval(), 100);
    EXPECT_FALSE(Timer1().isActive());
    // 300 twips are 20 pixels, 500 are 33.3.
    EXPECT_TRUE(Enter(*data, {40, height / 2}));
    EXPECT_FALSE(Timer1().isActive());
    Over(*data, {40, height - 34});
    EXPECT_FALSE(Timer1().isActive());
    Over(*data, {40, height - 33});
    EXPECT_TRUE(Timer1().isActive());
    ASSERT_EQ(Bar().value(), 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Bar().value() >= 2; }));
    Over(*data, {40, 20});
    EXPECT_FALSE(Timer1().isActive());
    Over(*data, {40, 19});
    EXPECT_TRUE(Timer1().isActive());
    ASSERT_TRUE(QTest::qWaitFor([&] { return Bar().value() == 0; }));
    Over(*data, {40, 0});
    EXPECT_FALSE(Timer1().isActive());
    Over(*data, {40, 1});
    EXPECT_TRUE(Timer1().isActive());
    Leave();
    EXPECT_FALSE(Timer1().isActive());
}

TEST_F(TreeDragDropTest, TheNodeThatScrollsUnderTheMouseBecomesTheTarget) {
    StartWithLongTree();
    const std::unique_ptr<QMimeData> data(FilesToOffer({"/music/a.mp3"}));
    EXPECT_TRUE(Enter(*data, {40, Tree().viewport()->height() - 10}));
    const std::string first = Target();
    ASSERT_TRUE(QTest::qWaitFor([&] { return Bar().value() >= 1; }));
    EXPECT_NE(Target(), first);
    EXPECT_EQ(Target(), Tree().NodeAt({40, Tree().viewport()->height() - 10}));
}

TEST_F(TreeDragDropTest, OnlyFilesOfThisMachineAreTakenAndOnlyAsACopy) {
    StartWithTree();
    QMimeData text;
    text.setText(QStringLiteral("/music/a.mp3"));
    EXPECT_FALSE(Enter(text, Place(Beta())));
    QMimeData link;
    link.setData(QStringLiteral("text/uri-list"), "http://host/c.mp3\r\n");
    EXPECT_FALSE(Enter(link, Place(Beta())));
    const std::unique_ptr<QMimeData> data(FilesToOffer({"/music/a.mp3"}));
    QDragEnterEvent move(Place(Beta()), Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton,
                         Qt::NoModifier);
    move.setDropAction(Qt::MoveAction);
    QCoreApplication::sendEvent(Tree().viewport(), &move);
    EXPECT_TRUE(move.isAccepted());
    EXPECT_EQ(move.dropAction(), Qt::CopyAction);
}

TEST_F(TreeDragDropTest, ThePointerRefusesANodeThatTakesNothingAndTheDragGoesOn) {
    StartWithTree();
    const std::unique_ptr<QMimeData> music(FilesToOffer({MakeFile("Dylan - Three.mp3")}));
    EXPECT_TRUE(Enter(*music, Place(Root()))) << "there are nodes that take it";
    EXPECT_FALSE(Over(*music, Place(Root())));
    EXPECT_EQ(Target(), "Parent") << "what is under the mouse is marked all the same";
    EXPECT_TRUE(Over(*music, Place(Beta())));
    EXPECT_FALSE(Over(*music, Beside()));
    Leave();
    const std::unique_ptr<QMimeData> others(FilesToOffer({MakeFile("notes.txt"), folder.Path()}));
    EXPECT_TRUE(Enter(*others, Place(Beta())));
    EXPECT_TRUE(Over(*others, Place(Beta()))) << "it adds nothing, but the tree is built again";
    EXPECT_FALSE(Over(*others, Place(Root())));
    Leave();
    const std::unique_ptr<QMimeData> playlist(FilesToOffer({folder / "Party.m3u"}));
    EXPECT_TRUE(Enter(*playlist, Place(Root())));
    EXPECT_TRUE(Over(*playlist, Place(Root())));
    EXPECT_TRUE(Over(*playlist, Beside()));
    Leave();
    Press(BetaEntry(0));
    EXPECT_TRUE(Enter(*music, Place(Beta())));
    EXPECT_FALSE(Over(*music, Place(BetaEntry(0)))) << "an entry onto itself";
    EXPECT_TRUE(Over(*music, Place(BetaEntry(1))));
    Leave();
    Press(Beta());
    EXPECT_TRUE(Enter(*music, Place(Entry(0))));
    EXPECT_FALSE(Over(*music, Place(Entry(0)))) << "a category can't be moved inside the tree";
    EXPECT_NE(Target(), "none") << "what is under the mouse is marked all the same";
}

TEST_F(TreeDragDropTest, TheStatusTellsWhatADropHasMade) {
    StartWithTree();
    EXPECT_TRUE(DropOn(Beta(), {MakeFile("Dylan - Three.mp3"), MakeFile("notes.txt")}));
    const std::string told = "Fertig: 1 Eintrag, 1 neu, 1 übergangen, 0:00";
    EXPECT_EQ(Form().Parts().Work.LastEnd(), told);
    EXPECT_EQ(PanelText(Panel::Scanning), "") << "the panel is empty after long work";
    EXPECT_EQ(windows->Activity(), "");
    DragTo(Entry(0), BetaEntry(1));
    EXPECT_EQ(Form().Parts().Work.LastEnd(), told) << "a move inside the tree is no long job";
}

TEST_F(TreeDragDropTest, LinksToTheWebAreLeftOutOfAList) {
    StartWithTree();
    const std::string path = MakeFile("Abba - Three.mp3");
    QMimeData mixed;
    mixed.setData(QStringLiteral("text/uri-list"),
                  QByteArray::fromStdString("http://host/c.mp3\r\nfile://" + path + "\r\n"));
    ASSERT_TRUE(Enter(mixed, Place(Beta())));
    QDropEvent drop(Place(Beta()), Qt::CopyAction, &mixed, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Tree().viewport(), &drop);
    EXPECT_EQ(Shown(Beta()).size(), 3U);
}

TEST_F(TreeDragDropTest, DuringAScanAndUnderAModalBoxNothingIsTakenOrDragged) {
    StartWithTree();
    mainModule.ScanRunning = true;
    EXPECT_FALSE(DropOn(Beta(), {"/music/One.mp3"}));
    EXPECT_EQ(DragOut(Entry(0)), nullptr);
    mainModule.ScanRunning = false;
    QMessageBox box(&Form());
    box.open();
    EXPECT_FALSE(DropOn(Beta(), {"/music/One.mp3"}));
    box.close();
    EXPECT_EQ(Entries("Beta"), "21@1 22@2");

    // A scan may begin, or a box open, while the drag is over the tree.
    const std::unique_ptr<QMimeData> data(FilesToOffer({"/music/One.mp3"}));
    EXPECT_TRUE(Enter(*data, Place(Beta())));
    mainModule.ScanRunning = true;
    EXPECT_FALSE(Over(*data, Place(Alpha())));
    QDropEvent drop(Place(Beta()), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Tree().viewport(), &drop);
    EXPECT_FALSE(drop.isAccepted());
    mainModule.ScanRunning = false;
    EXPECT_EQ(Entries("Beta"), "21@1 22@2");
    EXPECT_TRUE(DropOn(Beta(), {"/music/One.mp3"}));
    EXPECT_EQ(Shown(Beta()).size(), 3U);
}

TEST_F(TreeDragDropTest, RowsOfTheListDroppedOnACategoryJoinItsEnd) {
    StartWithTree();
    ClickRow(1);
    ClickRow(2, Qt::ShiftModifier);
    QTest::mousePress(Grid().viewport(), Qt::LeftButton, Qt::ShiftModifier, CellCentre(2));
    ASSERT_TRUE(Drag().GridDragging);
    EXPECT_TRUE(DropOn(Beta(), {"/music/One.mp3", "/music/Two.mp3"}));
    EXPECT_EQ(Shown(Beta()), (Texts{"One.mp3", "Two.mp3", "One.mp3", "Two.mp3"}));
    EXPECT_FALSE(Drag().GridDragging);
    EXPECT_EQ(Selected(), "none");
    EXPECT_EQ(Text(Beta()), "Beta (04:20)");
}

TEST_F(TreeDragDropTest, ARowOfTheListDroppedOnAnEntryTakesItsPlaceAndIsSelected) {
    StartWithTree();
    QTest::mousePress(Grid().viewport(), Qt::LeftButton, {}, CellCentre(1));
    EXPECT_TRUE(DropOn(BetaEntry(1), {"/music/One.mp3"}));
    EXPECT_EQ(Shown(Beta()), (Texts{"One.mp3", "One.mp3", "Two.mp3"}));
    EXPECT_TRUE(IsSelected(BetaEntry(1)));
    EXPECT_EQ(Selected(), "file23pos2");
}

TEST_F(TreeDragDropTest, AnEntryMovesInsideItsCategoryAndStaysSelected) {
    StartWithTree();
    DragTo(Entry(1), Entry(0));
    EXPECT_EQ(Entries("Alpha"), "12@1 11@2");
    EXPECT_EQ(Selected(), "file12pos1");
    EXPECT_TRUE(IsSelected(Entry(0)));
    DragTo(Entry(0), Entry(1));
    EXPECT_EQ(Entries("Alpha"), "11@1 12@2");
    EXPECT_EQ(Selected(), "file12pos2");
}

TEST_F(TreeDragDropTest, AnEntryGoesToAnotherCategoryAndWithCtrlAloneACopyDoes) {
    StartWithTree();
    DragTo(BetaEntry(1), BetaEntry(0));
    ASSERT_EQ(Entries("Beta"), "22@1 21@2");
    DragTo(Entry(0), BetaEntry(1), Qt::ControlModifier);
    EXPECT_EQ(Entries("Alpha"), "11@1 12@2");
    EXPECT_EQ(Entries("Beta"), "22@1 23@2 21@3");
    EXPECT_EQ(Selected(), "none") << "the copy has an id of its own";
    DragTo(Entry(0), BetaEntry(2), Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Entries("Alpha"), "12@1");
    EXPECT_EQ(Entries("Beta"), "22@1 23@2 11@3 21@4");
    EXPECT_EQ(Selected(), "file11pos3");
}

TEST_F(TreeDragDropTest, AnEntryDroppedOnItsOwnTextOrTheRootChangesNothing) {
    StartWithTree();
    DragTo(Entry(0), BetaEntry(1));
    DragTo(Entry(0), Root());
    EXPECT_EQ(Entries("Alpha"), "11@1 12@2");
    EXPECT_EQ(Entries("Beta"), "21@1 22@2");
}

TEST_F(TreeDragDropTest, ADroppedFileIsStoredAndTheListShowsItUnlessItLoadsBySearch) {
    StartWithTree();
    EXPECT_TRUE(DropOn(Beta(), {MakeFile("Dylan - Three.mp3")}));
    EXPECT_EQ(Shown(Beta()).back(), "Dylan - Three.mp3");
    EXPECT_EQ(Listed().size(), 3U);
    mainModule.LoadOverSearch = true;
    EXPECT_TRUE(DropOn(Beta(), {MakeFile("Eagles - Four.mp3")}));
    EXPECT_EQ(Shown(Beta()).back(), "Eagles - Four.mp3");
    EXPECT_EQ(Listed().size(), 3U);
}

TEST_F(TreeDragDropTest, WhereNoNodeIsFilesAreDroppedForNothingAndAPlaylistBecomesACategory) {
    StartWithTree();
    const std::string file = MakeFile("Dylan - Three.mp3");
    DropAt(Beside(), {file});
    EXPECT_EQ(Listed().size(), 2U);
    std::ofstream(folder / "Party.m3u") << file << "\n";
    DropAt(Beside(), {folder / "Party.m3u"});
    ASSERT_EQ(ChildCount(Root()), 3);
    EXPECT_EQ(Shown(Child(Root(), 2)), Texts{"Dylan - Three.mp3"});
    EXPECT_EQ(Listed().size(), 3U);
}

} // namespace quavernet::test
