#include "gui/GuiTest.h"

#include <QLabel>
#include <QToolTip>

namespace quavernet::test {

namespace {

/// How the main window tells that long work is over, and how far it is.
class EndOfWorkTest : public GuiTest {
protected:
    LongWork& Work() { return Form().Parts().Work; }
    std::string FirstPanelsToolTip() { return FromQString(Form().Panes().Status().ToolTip(Panel::Scanning)); }
};

} // namespace

TEST_F(EndOfWorkTest, InFrontOfItsUserTheWindowHintsAtTheEmptyPanel) {
    Start();
    Work().SetPanel(Panel::Scanning, "");
    Work().TellEnd("Fertig: 3 neu");
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Fertig: 3 neu"));
    EXPECT_EQ(FirstPanelsToolTip(), "Fertig: 3 neu");
    EXPECT_EQ(PanelText(Panel::Scanning), "") << "the panel itself stays empty";
    EXPECT_EQ(desktop.notes, Texts{});
    Work().SetPanel(Panel::Scanning, "Scanning... /a.mp3");
    EXPECT_EQ(FirstPanelsToolTip(), "Scanning... /a.mp3\nFertig: 3 neu") << "over what is done next, too";
    QToolTip::hideText();
}

TEST_F(EndOfWorkTest, AWordThatThePanelShowsNeedsNoHint) {
    Start();
    QToolTip::hideText();
    Work().SetPanel(Panel::Scanning, "Fertig: 3 neu");
    Work().TellEnd("Fertig: 3 neu");
    EXPECT_FALSE(QToolTip::isVisible());
    EXPECT_EQ(FirstPanelsToolTip(), "Fertig: 3 neu") << "once";
    EXPECT_EQ(windows->Activity(), "") << "nothing is being done any more";
}

TEST_F(EndOfWorkTest, AUserInAnotherWindowGetsANoteOfTheDesktop) {
    Start();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    Work().TellEnd("Fertig: 3 neu");
    EXPECT_EQ(desktop.notes, Texts{"Quavernet: Fertig: 3 neu"});
    services.desktop = nullptr;
    Work().TellEnd("Fertig: 4 neu");
    EXPECT_EQ(FirstPanelsToolTip(), "Bereit!\nFertig: 4 neu");
}

TEST_F(EndOfWorkTest, AClickOnTheNoteBringsTheWindowToTheFront) {
    Start();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    Work().TellEnd("Fertig: 3 neu");
    EXPECT_EQ(desktop.last.ClickName, "Anzeigen");
    Form().showMinimized();
    desktop.last.Clicked();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Form()));
    EXPECT_FALSE(Form().isMinimized());
    auto dialog = std::make_unique<QDialog>(&Form());
    dialog->setWindowModality(Qt::WindowModal);
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    desktop.last.Clicked();
    EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get())) << "it holds the window";
    dialog.reset();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    const auto click = desktop.last.Clicked;
    CloseMain();
    click();
    QCoreApplication::processEvents();
    EXPECT_EQ(QApplication::activeWindow(), &other) << "there is no window any more";
}

TEST_F(EndOfWorkTest, AModalDialogOfTheDesktopsIsNoneToBringToTheFront) {
    Start();
    QDialog portal(&Form());
    portal.setWindowModality(Qt::WindowModal);
    portal.setAttribute(Qt::WA_DontShowOnScreen);
    portal.show();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    ASSERT_EQ(QApplication::activeModalWidget(), &portal);
    Work().TellEnd("Fertig: 3 neu");
    desktop.last.Clicked();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Form()));
}

TEST_F(EndOfWorkTest, AfterTheStartTheWordIsHintedAtToo) {
    Start();
    QToolTip::hideText();
    Work().SetPanel(Panel::Scanning, "Bereit!");
    Work().TellEnd("Fertig: 2 Dateien umbenannt, 0:00");
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Fertig: 2 Dateien umbenannt, 0:00"));
    EXPECT_EQ(PanelText(Panel::Scanning), "Bereit!");
    QToolTip::hideText();
}

TEST_F(EndOfWorkTest, ADialogOfTheWindowIsTheWindow) {
    Start();
    QDialog dialog(&Form());
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    Work().TellEnd("Fertig: 3 neu");
    EXPECT_EQ(desktop.notes, Texts{});
    QToolTip::hideText();
}

TEST_F(EndOfWorkTest, TheTaskBarShowsTheProgressOfWorkThatTakesAWhile) {
    Start();
    desktop.progress.clear();
    Work().SetProgress(10);
    Work().SetProgress(0);
    EXPECT_TRUE(desktop.progress.empty()) << "a load of the list is over before anybody looks";
    Work().SetProgress(1);
    QTest::qWait(550);
    for (int percent = 20; percent <= 60; ++percent) {
        Work().SetProgress(static_cast<float>(percent));
    }
    EXPECT_EQ(desktop.progress, std::vector<double>{0.2}) << "a few times a second, and the rest is left out";
    QTest::qWait(300);
    Work().SetProgress(61.5F);
    Work().SetProgress(0);
    Work().SetProgress(0);
    EXPECT_EQ(desktop.progress, (std::vector<double>{0.2, 0.61, -1}));
    services.desktop = nullptr;
    Work().SetProgress(50);
    QTest::qWait(550);
    Work().SetProgress(60);
    Work().SetProgress(0);
}

} // namespace quavernet::test
