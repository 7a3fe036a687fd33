#include "gui/GuiTest.h"

#include <QAccessible>
#include <QToolButton>

#include <set>

namespace quavernet::test {

namespace {
class KeyboardTest : public GuiTest {
protected:
    /// Object names in the order in which Tab reaches them; a toolbar button by its action.
    Texts TabStops() {
        Texts stops;
        QWidget* const first = &Control<QLineEdit>("txtSearch");
        first->setFocus();
        do {
            QWidget* focus = QApplication::focusWidget();
            const auto* button = qobject_cast<QToolButton*>(focus);
            const QAction* action = button == nullptr ? nullptr : button->defaultAction();
            stops.push_back(FromQString(action == nullptr ? focus->objectName() : action->objectName()));
            QTest::keyClick(focus, Qt::Key_Tab);
        } while (QApplication::focusWidget() != first && stops.size() < 40);
        return stops;
    }
};
} // namespace

TEST_F(KeyboardTest, TabReachesEveryControlFromTheStripToThePanes) {
    AddFile("Abba", "One");
    Start();
    EXPECT_EQ(TabStops(), (Texts{"txtSearch", "cmdSearch", "cmdRandomize", "Frame2", "grdMp3", "lblSizer",
                                 "TreeView", "scan", "print", "top", "date", "cboDrive", "cboGenre",
                                 "cboAlbum", "chkInterpret", "chkTitle"}));
}

TEST_F(KeyboardTest, EveryControlThatTakesTheKeyboardHasAName) {
    Start();
    for (const QWidget* widget : Form().Panes().findChildren<QWidget*>()) {
        if (!widget->isVisible() || !(widget->focusPolicy() & Qt::TabFocus)) {
            continue;
        }
        QAccessibleInterface* access = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
        ASSERT_NE(access, nullptr) << FromQString(widget->objectName());
        EXPECT_FALSE(access->text(QAccessible::Name).isEmpty())
            << FromQString(widget->objectName()) << " " << widget->metaObject()->className();
    }
}

TEST_F(KeyboardTest, TheLettersAreWalkedByArrowKeysAndChosenByEnterOrSpace) {
    AddFile("Abba", "One");
    AddFile("Beatles", "Two");
    Start();
    auto& row = Control<QFrame>("Frame2");
    row.setFocus();
    QTest::keyClick(&row, Qt::Key_Left);
    QTest::keyClick(&row, Qt::Key_Right);
    QTest::keyClick(&row, Qt::Key_Right);
    EXPECT_EQ(Listed().size(), 2U);
    QTest::keyClick(&row, Qt::Key_Return);
    EXPECT_EQ(mainModule.LetterFilter, "B");
    EXPECT_EQ(Listed(), Texts{"Beatles"});
    EXPECT_TRUE(Control<QLabel>("lblB").font().bold());
    QTest::keyClick(&row, Qt::Key_End);
    QTest::keyClick(&row, Qt::Key_Right);
    QTest::keyClick(&row, Qt::Key_Space);
    EXPECT_EQ(mainModule.LetterFilter, "other");
    QTest::keyClick(&row, Qt::Key_Home);
    QTest::keyClick(&row, Qt::Key_Space);
    EXPECT_EQ(mainModule.LetterFilter, "All");
}

TEST_F(KeyboardTest, TheFocusedPaneIsSeen) {
    AddFile("Abba", "One");
    Start();
    auto& frame = Control<QFrame>("Frame1");
    Control<QLineEdit>("txtSearch").setFocus();
    const QImage without = frame.grab().toImage();
    Grid().setFocus();
    EXPECT_NE(frame.grab().toImage(), without);
}

TEST_F(KeyboardTest, EnterOnTheSearchButtonSearches) {
    AddFile("Abba", "One");
    AddFile("Beatles", "Two");
    Start();
    Control<QLineEdit>("txtSearch").setText(QStringLiteral("Beat"));
    QTest::keyClick(&Control<QPushButton>("cmdSearch"), Qt::Key_Return);
    EXPECT_EQ(Listed(), Texts{"Beatles"});
}

TEST_F(KeyboardTest, TheMenuKeyOpensTheContextMenuOfTheCurrentRow) {
    AddFile("Abba", "One");
    Start();
    ClickRow(1);
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(5, 5),
                          Grid().viewport()->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(Grid().viewport(), &key);
    QMenu* menu = Form().Menu().Popup("mnuKontext");
    EXPECT_TRUE(menu->isVisible());
    EXPECT_EQ(mainModule.DetailsRow, 1);
    menu->close();
    mainModule.UseExternalPlayer = true;
    QTest::keyClick(&Grid(), Qt::Key_Return);
    EXPECT_EQ(shell.executed, Texts{"/music/One.mp3"});
}

} // namespace quavernet::test
