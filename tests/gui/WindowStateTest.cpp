#include "gui/GuiTest.h"

#include <QDialog>
#include <QHeaderView>
#include <QHelpEvent>
#include <QProgressBar>
#include <QScreen>
#include <QTimer>
#include <QToolTip>

#include <algorithm>

namespace quavernet::test {

namespace {
class WindowStateTest : public GuiTest {
protected:
    WindowStateTest() {
        settings.values["WindowWidth"] = "14100";
        settings.values["WindowHeight"] = "9000";
    }
    QWidget& Frame(const char* name) { return Control<QWidget>(name); }
    void DragSplitter(int pixels) {
        QWidget& sizer = Frame("lblSizer");
        const QPoint press(1, 20);
        QTest::mousePress(&sizer, Qt::LeftButton, {}, press);
        QMouseEvent move(QEvent::MouseMove, QPointF(press + QPoint(pixels, 0)),
                         QPointF(sizer.mapToGlobal(press + QPoint(pixels, 0))), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&sizer, &move);
        QTest::mouseRelease(&sizer, Qt::LeftButton, {}, press);
    }
};
} // namespace

TEST_F(WindowStateTest, WithoutSettingsTheWindowTakesItsDefaults) {
    settings.values.clear();
    Start();
    EXPECT_EQ(Form().size(), QSize(1000, 733));
    EXPECT_EQ(Frame("Frame3").width(), 189);
    EXPECT_EQ(Grid().columnWidth(0),
              220); // A tenth more than the usual 3000 twips, for what is around the text.
    EXPECT_EQ(Grid().columnWidth(4), 110);
    EXPECT_FALSE(Grid().showGrid());
    EXPECT_TRUE(Action("mnuRecursive").isChecked());
    EXPECT_FALSE(Action("mnuQuickscan").isChecked());
    EXPECT_TRUE(settings.values.empty());
}

TEST_F(WindowStateTest, WhatTheUserArrangedComesBackAtTheNextStart) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    Start();
    Form().move(45, 60);
    DragSplitter(40);
    Grid().setColumnWidth(1, 123);
    Action("mnuShowGridlines").trigger();
    Action("mnuQuickscan").trigger();
    Action("mnuScanWav").trigger();
    Action("mnuExternalPlayer").trigger();
    Control<QComboBox>("cboAlbum").setCurrentIndex(2);
    CloseMain();

    EXPECT_EQ(settings.values["WindowWidth"], "14100");
    EXPECT_EQ(settings.values["WindowHeight"], "9000");
    EXPECT_EQ(settings.values["WindowLeft"], "675");
    EXPECT_EQ(settings.values["WindowTop"], "900");
    EXPECT_EQ(settings.values["SplitterPos"], "3435");
    EXPECT_EQ(settings.values["ColWidth(1)"], "1845");
    EXPECT_EQ(settings.values["ColWidth(0)"], "3000") << "nobody has changed it";
    EXPECT_EQ(settings.values["GridLines"], "yes");
    EXPECT_EQ(settings.values["Album"], "2");
    EXPECT_EQ(settings.values["ExternalPlayer"], "1");

    Start();
    EXPECT_EQ(Form().pos(), QPoint(45, 60));
    EXPECT_EQ(Frame("Frame3").width(), 229);
    EXPECT_EQ(Grid().columnWidth(1), 123);
    EXPECT_TRUE(Grid().showGrid());
    EXPECT_TRUE(Action("mnuKontextShowGridlines").isChecked());
    EXPECT_TRUE(Action("mnuQuickscan").isChecked());
    EXPECT_FALSE(Action("mnuScanWav").isChecked());
    EXPECT_TRUE(mainModule.UseExternalPlayer);
    EXPECT_EQ(Control<QComboBox>("cboAlbum").currentIndex(), 2);
    EXPECT_EQ(Listed(), Texts{"Cure"});
}

TEST_F(WindowStateTest, TheSplitterStopsAtANarrowTreePane) {
    Start();
    DragSplitter(-170);
    EXPECT_EQ(Frame("Frame3").width(), 19); // 285 twips: the move that passes the limit still counts
    DragSplitter(-5);
    EXPECT_EQ(Frame("Frame3").width(), 33); // 499 twips
}

TEST_F(WindowStateTest, AWindowBelowTheLeastSizeOfAResizeStartsWithTreeAndList) {
    AddFile("Abba", "One");
    settings.values["WindowWidth"] = "4950";
    settings.values["WindowHeight"] = "3750";
    Start();
    EXPECT_EQ(Form().size(), QSize(330, 250));
    const auto shown = [this](QWidget& widget) {
        return QRect(widget.mapTo(&Form(), QPoint()), widget.size()).intersected(Form().rect());
    };
    EXPECT_EQ(Frame("Frame3").width(), 189);
    EXPECT_EQ(shown(Control<TreeView>("TreeView")).width(), 189 - 8);
    EXPECT_GT(shown(Control<TreeView>("TreeView")).height(), 100);
    EXPECT_EQ(shown(Grid()).width(), 330 - 189 - 8 - 8);
    EXPECT_EQ(shown(Grid()).size(), Grid().size());
    EXPECT_GT(shown(Grid()).height(), 50);
    EXPECT_EQ(Form().Panes().Placement().SplitterPos(), 2835);
    CloseMain();
    EXPECT_EQ(settings.values["WindowWidth"], "4950");
    EXPECT_EQ(settings.values["WindowHeight"], "3750");
}

TEST_F(WindowStateTest, AStoredSizeOfNothingStillMakesAWindow) {
    for (const char* size : {"0", "-3000", "15"}) {
        settings.values["WindowWidth"] = size;
        settings.values["WindowHeight"] = size;
        Start();
        EXPECT_TRUE(Form().isVisible());
        EXPECT_GE(Form().width(), 50) << size;
        EXPECT_GE(Form().height(), 50) << size;
        EXPECT_EQ(settings.values["WindowWidth"], size) << "until the window closes";
        const std::string real = std::to_string(Form().width() * 15);
        CloseMain();
        EXPECT_EQ(settings.values["WindowWidth"], real);
    }
}

TEST_F(WindowStateTest, AStoredIndexBeyondTheEndLeavesTheFirstEntry) {
    settings.values["Drive"] = "7";
    settings.values["Genre"] = "-3";
    Start();
    EXPECT_EQ(Control<QComboBox>("cboDrive").currentIndex(), 0);
    EXPECT_EQ(Control<QComboBox>("cboGenre").currentIndex(), 0);
}

TEST_F(WindowStateTest, APositionThatIsNoNumberStopsTheStart) {
    settings.values["WindowLeft"] = "left";
    windows = std::make_unique<AppWindows>();
    EXPECT_THROW(Main(*windows), RuntimeError);
}

TEST_F(WindowStateTest, WithLoadOverSearchTheListStaysEmptyUntilASearch) {
    AddFile("Abba", "One");
    settings.values["LoadOverSearch"] = "1";
    Start();
    EXPECT_EQ(Listed(), Texts{});
    QTest::mouseClick(&Control<QPushButton>("cmdSearch"), Qt::LeftButton);
    EXPECT_EQ(Listed(), Texts{"Abba"});
}

TEST_F(WindowStateTest, AStoredFilterCountsAtTheStartAndLoadsNothingByItself) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    settings.values["Album"] = "2";
    Start();
    EXPECT_EQ(Control<QComboBox>("cboAlbum").currentIndex(), 2);
    EXPECT_EQ(Listed(), Texts{"Cure"});
    CloseMain();
    settings.values["LoadOverSearch"] = "1";
    Start();
    EXPECT_EQ(Control<QComboBox>("cboAlbum").currentIndex(), 2);
    EXPECT_EQ(Listed(), Texts{});
    EXPECT_EQ(PanelText(Panel::Albums), "0 Alben"); // Nothing has been counted yet.
}

TEST_F(WindowStateTest, AMinimisedWindowIsClosedAsANormalOneAndKeepsItsSize) {
    Start();
    Form().showMinimized();
    ASSERT_TRUE(Form().isMinimized());
    mainModule.PlayerOpen = true; // Keeps the process.
    EXPECT_TRUE(Form().close());
    EXPECT_FALSE(Form().isMinimized());
    EXPECT_EQ(settings.values["WindowWidth"], "14100");
    EXPECT_EQ(settings.values["WindowHeight"], "9000");
}

TEST_F(WindowStateTest, AMaximisedWindowComesBackMaximisedAndKeepsItsNormalPlace) {
    settings.values["WindowLeft"] = "600";
    settings.values["WindowTop"] = "750";
    settings.values["WindowWidth"] = "7500";
    settings.values["WindowHeight"] = "6000";
    Start();
    Form().showMaximized();
    QCoreApplication::processEvents();
    ASSERT_TRUE(Form().isMaximized());
    const int width = Form().width();
    ASSERT_GT(width, 500);
    CloseMain();
    EXPECT_EQ(settings.values["WindowWidth"], std::to_string(15 * width)) << "as it was on the screen";
    EXPECT_EQ(settings.values["WindowMaximised"], "1");
    EXPECT_EQ(settings.values["NormalLeft"], "600");
    EXPECT_EQ(settings.values["NormalTop"], "750");
    EXPECT_EQ(settings.values["NormalWidth"], "7500");
    EXPECT_EQ(settings.values["NormalHeight"], "6000");

    Start();
    EXPECT_TRUE(Form().isMaximized());
    EXPECT_EQ(Form().width(), width);
    CloseMain();
    EXPECT_EQ(settings.values["NormalLeft"], "600") << "over a run in which it stays maximised";

    Start();
    Form().showNormal();
    QCoreApplication::processEvents();
    EXPECT_EQ(Form().pos(), QPoint(40, 50));
    EXPECT_EQ(Form().size(), QSize(500, 400));
    CloseMain();
    EXPECT_EQ(settings.values["WindowMaximised"], "0");
    EXPECT_EQ(settings.values["WindowWidth"], "7500");
    EXPECT_EQ(settings.values["WindowLeft"], "600");
    Start();
    EXPECT_FALSE(Form().isMaximized());
    EXPECT_EQ(Form().size(), QSize(500, 400));
}

TEST_F(WindowStateTest, TheNormalPlaceDoesNotMoveByTheFrameThatAMaximisedWindowLacks) {
    settings.values["WindowLeft"] = "600";
    settings.values["WindowTop"] = "750";
    settings.values["WindowWidth"] = "7500";
    settings.values["WindowHeight"] = "6000";
    Start();
    ASSERT_NE(Form().geometry().topLeft(), Form().pos()) << "it has a frame";
    QCoreApplication::processEvents();
    const auto timers = Form().findChildren<QTimer*>(Qt::FindDirectChildrenOnly);
    ASSERT_TRUE(QTest::qWaitFor([&] {
        return std::ranges::none_of(timers, [](const QTimer* timer) { return timer->isActive(); });
    })) << "place and frame are known by then";
    Form().windowHandle()->setFlag(Qt::FramelessWindowHint);
    Form().showMaximized();
    QCoreApplication::processEvents();
    ASSERT_TRUE(Form().isMaximized());
    ASSERT_EQ(Form().geometry().topLeft(), Form().pos()) << "and now it has none";
    CloseMain();
    EXPECT_EQ(settings.values["NormalLeft"], "600");
    EXPECT_EQ(settings.values["NormalTop"], "750");
}

TEST_F(WindowStateTest, AMaximisedWindowThatWasMinimisedIsStoredAsMaximised) {
    Start();
    Form().showMaximized();
    Form().showMinimized();
    ASSERT_TRUE(Form().isMinimized());
    CloseMain();
    EXPECT_EQ(settings.values["WindowMaximised"], "1");
    EXPECT_EQ(settings.values["NormalWidth"], "14100");
}

TEST_F(WindowStateTest, TheSplitterIsWideEnoughToCatchAndMovesByTheArrowKeys) {
    Start();
    QWidget& sizer = Frame("lblSizer");
    EXPECT_GE(sizer.width(), 10);
    const QRect gap(Frame("Frame3").geometry().right() + 1, sizer.y(), 1, sizer.height());
    EXPECT_TRUE(sizer.geometry().contains(gap));
    EXPECT_FALSE(
        sizer.geometry().intersects(QRect(Grid().mapTo(sizer.parentWidget(), QPoint(2, 0)), Grid().size())));
    const int width = Frame("Frame3").width();
    sizer.setFocus();
    QTest::keyClick(&sizer, Qt::Key_Right);
    EXPECT_EQ(Frame("Frame3").width(), width + 10);
    QTest::keyClick(&sizer, Qt::Key_Left);
    QTest::keyClick(&sizer, Qt::Key_Left);
    EXPECT_EQ(Frame("Frame3").width(), width - 10);
    for (int i = 0; i < 40; ++i) {
        QTest::keyClick(&sizer, Qt::Key_Left);
    }
    EXPECT_GT(Frame("Frame3").width(), 0) << "it stops as under the mouse";
}

TEST_F(WindowStateTest, ToolTipsAppearWhileAnotherWindowIsInFront) {
    Start();
    EXPECT_TRUE(Form().testAttribute(Qt::WA_AlwaysShowToolTips));
}

TEST_F(WindowStateTest, ALargerFontEnlargesTheWindowUpToTheScreenAndLeavesWhatIsStored) {
    settings.values["WindowLeft"] = "150";
    settings.values["WindowTop"] = "150";
    settings.values["WindowWidth"] = "8250"; // 550 pixels of the 800 that the screen has.
    settings.values["WindowHeight"] = "9000";
    const QFont usual = QApplication::font();
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 11));
    Start();
    EXPECT_GT(Form().width(), 600);
    EXPECT_LT(Form().width(), 700);
    EXPECT_GT(Form().height(), 600);
    EXPECT_LE(Form().frameGeometry().bottom(), Form().screen()->availableGeometry().bottom());
    EXPECT_GT(Grid().columnWidth(0), 240);
    CloseMain();
    QApplication::setFont(usual);
    EXPECT_EQ(settings.values["WindowWidth"], "8250");
    EXPECT_EQ(settings.values["WindowHeight"], "9000");
    EXPECT_EQ(settings.values["ColWidth(0)"], "3000");
    EXPECT_EQ(settings.values["SplitterPos"], "2835");
}

TEST_F(WindowStateTest, ColumnsAndTheLeastWidthFollowTheFontOfTheDesktopWhileTheWindowIsOpen) {
    settings.values["ColWidth(1)"] = "2000";
    const QFont usual = QApplication::font();
    Start();
    Grid().setColumnWidth(2, 90);
    const int least = Form().minimumWidth();
    const auto widths = [this] {
        return std::vector<int>{Grid().columnWidth(0), Grid().columnWidth(1), Grid().columnWidth(2)};
    };
    const std::vector<int> before = widths();
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 12));
    QCoreApplication::processEvents();
    const double scale = Form().Panes().Placement().Scale();
    ASSERT_GT(scale, 1.2);
    for (std::size_t column = 0; column < before.size(); ++column) {
        EXPECT_NEAR(widths()[column], before[column] * scale, 1) << column;
    }
    EXPECT_GT(Form().minimumWidth(), least);
    EXPECT_GE(Form().width(), Form().minimumWidth());
    QApplication::setFont(usual);
    QCoreApplication::processEvents();
    EXPECT_EQ(widths(), before);
    EXPECT_EQ(Form().minimumWidth(), least);
    CloseMain();
    EXPECT_EQ(settings.values["ColWidth(0)"], "3000");
    EXPECT_EQ(settings.values["ColWidth(1)"], "2000");
    EXPECT_EQ(settings.values["ColWidth(2)"], "1350");
}

TEST_F(WindowStateTest, ARefusedCloseLeavesTheWindowMinimised) {
    Start();
    Form().showMinimized();
    mainModule.ScanRunning = true;
    EXPECT_FALSE(Form().close());
    EXPECT_TRUE(Form().isMinimized());
}

TEST_F(WindowStateTest, InANarrowWindowTheFirstPanelKeepsAThirdOfTheStatusBar) {
    Start();
    Form().resize(700, 600);
    Form().Parts().Work.SetPanel(Panel::Scanning, "Lade Datenbank...");
    MainStatusBar& status = Form().Panes().Status();
    const auto tipAt = [&status](int x) {
        const QPoint place(x, status.height() / 2);
        QHelpEvent help(QEvent::ToolTip, place, status.mapToGlobal(place));
        QCoreApplication::sendEvent(&status, &help);
        return FromQString(QToolTip::text());
    };
    EXPECT_EQ(tipAt(status.width() / 3 - 2), "Lade Datenbank...");
}

TEST_F(WindowStateTest, AScanKeepsTheWindowOpenAndNothingIsSaved) {
    Start();
    settings.values.clear();
    mainModule.ScanRunning = true;
    EXPECT_FALSE(Form().close());
    EXPECT_TRUE(Form().isVisible());
    EXPECT_TRUE(settings.values.empty());
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].text,
              "Der Scanvorgang ist noch nicht beendet! Bitte brechen Sie diesen vor dem "
              "Schliessen des Programmes ab.");
    EXPECT_EQ(msgBox.shown[0].title, "Programm beenden");
    EXPECT_EQ(msgBox.shown[0].icon, MsgBox::Icon::Information);
}

TEST_F(WindowStateTest, TheExitItemClosesTheWindowAndWithoutAPlayerTheProcess) {
    Start();
    EXPECT_THROW(Form().close(), ProcessEnded);
    EXPECT_FALSE(mainModule.MainOpen);
    EXPECT_FALSE(mainModule.Connection);
    EXPECT_EQ(settings.values["GridLines"], "no");
}

TEST_F(WindowStateTest, ThePlayerKeepsTheProcessAlive) {
    Start();
    mainModule.PlayerOpen = true;
    Action("mnuExit").trigger();
    EXPECT_FALSE(Form().isVisible());
    EXPECT_FALSE(mainModule.MainOpen);
    EXPECT_TRUE(mainModule.Connection);
}

TEST_F(WindowStateTest, OneSecondAfterTheLoadTheSearchBoxTakesTheFocus) {
    Start();
    auto& timer = Control<QTimer>("AfterLoadTimer");
    EXPECT_EQ(timer.interval(), 1000);
    EXPECT_TRUE(timer.isActive());
    timer.start(0);
    QCoreApplication::processEvents();
    EXPECT_EQ(Form().focusWidget(), &Control<QLineEdit>("txtSearch"));
    EXPECT_FALSE(timer.isActive());
}

TEST_F(WindowStateTest, TheTreeShowsItsRoot) {
    Start();
    auto& tree = Control<TreeView>("TreeView");
    ASSERT_EQ(tree.model()->rowCount(), 1);
    const QModelIndex root = tree.model()->index(0, 0);
    EXPECT_EQ(FromQString(root.data().toString()), "Bibliothek");
    EXPECT_TRUE(root.data(Qt::FontRole).value<QFont>().bold());
    EXPECT_TRUE(mainModule.TreeLoaded);
}

TEST_F(WindowStateTest, TheSplashWindowIsThereForFourSecondsOrUntilAKey) {
    windows = std::make_unique<AppWindows>();
    Main(*windows);
    auto& splash = Control<QDialog>("frmSplash");
    EXPECT_TRUE(splash.isVisible());
    EXPECT_EQ(splash.findChild<QTimer*>(QStringLiteral("Timer1"))->interval(), 4000);
    EXPECT_EQ(FromQString(splash.findChild<QLabel*>(QStringLiteral("lblVersion"))->text()), "v1.0.3");
    QTest::mouseClick(splash.findChild<QLabel*>(QStringLiteral("Image1")), Qt::LeftButton);
    EXPECT_FALSE(splash.isVisible());
}

TEST_F(WindowStateTest, AKeyForTheMainWindowEndsTheSplashWindowAndDoesNothingElse) {
    for (const auto& [key, modifiers] : {std::pair(Qt::Key_Space, Qt::KeyboardModifiers()),
                                         std::pair(Qt::Key_S, Qt::KeyboardModifiers(Qt::ControlModifier))}) {
        windows = std::make_unique<AppWindows>();
        Main(*windows);
        Form().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
        QWidget& button =
            *Form().Panes().Toolbar1().widgetForAction(Form().Panes().Toolbar1().Button("scan"));
        button.setFocus();
        auto& splash = Control<QDialog>("frmSplash");
        QTest::keyPress(&button, Qt::Key_Control);
        EXPECT_TRUE(splash.isVisible()) << "a key that waits for another";
        QTest::keyClick(&button, key, modifiers);
        EXPECT_FALSE(splash.isVisible());
        EXPECT_TRUE(dialogs.titles.empty());
        EXPECT_FALSE(mainModule.ScanRunning);
        windows.reset();
        mainModule.Connection.reset();
    }
}

TEST_F(WindowStateTest, WhatIsTypedIntoTheSearchBoxEndsTheSplashWindowAndGetsThere) {
    windows = std::make_unique<AppWindows>();
    Main(*windows);
    auto& splash = Control<QDialog>("frmSplash");
    auto& search = Control<QLineEdit>("txtSearch");
    search.setFocus();
    QTest::keyClicks(&search, QStringLiteral("ab"));
    EXPECT_FALSE(splash.isVisible());
    EXPECT_EQ(FromQString(search.text()), "ab");
}

TEST_F(WindowStateTest, ACommandsKeyInTheSearchBoxEndsTheSplashWindowAndRunsNoCommand) {
    windows = std::make_unique<AppWindows>();
    Main(*windows);
    Form().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
    auto& splash = Control<QDialog>("frmSplash");
    auto& search = Control<QLineEdit>("txtSearch");
    search.setFocus();
    QTest::keyClick(&search, Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(splash.isVisible());
    EXPECT_TRUE(dialogs.titles.empty());
}

TEST_F(WindowStateTest, TheSplitterStopsAtANarrowList) {
    Start();
    for (int i = 0; i < 40; ++i) {
        DragSplitter(60);
    }
    EXPECT_EQ(Frame("Frame1").width(), 33); // 499 twips
    DragSplitter(0);
    EXPECT_EQ(Frame("Frame1").width(), 33);
    EXPECT_NEAR(Form().Panes().Placement().SplitterPos(), 15 * Frame("Frame3").width(), 7);
}

TEST_F(WindowStateTest, AStoredSplitterPositionIsTakenWithoutALimit) {
    settings.values["SplitterPos"] = "150";
    Start();
    EXPECT_EQ(Frame("Frame3").width(), 10);
    EXPECT_EQ(Form().Panes().Placement().SplitterPos(), 150);
}

TEST_F(WindowStateTest, APositionOffTheScreenStays) {
    settings.values["WindowLeft"] = "-60000";
    settings.values["WindowTop"] = "45000";
    windows = std::make_unique<AppWindows>();
    mainModule.SuppressComboClick = true;
    EXPECT_NO_THROW(Main(*windows));
    EXPECT_EQ(Form().pos(), QPoint(-4000, 3000));
}

TEST_F(WindowStateTest, AnIndexThatIsNoNumberLeavesTheFirstEntry) {
    settings.values["Album"] = "three";
    AddFile("Abba", "One");
    Start();
    EXPECT_EQ(Control<QComboBox>("cboAlbum").currentIndex(), 0);
}

TEST_F(WindowStateTest, AColumnWidthOrACheckThatIsNoNumberStopsTheStart) {
    for (const char* name : {"ColWidth(3)", "SplitterPos", "QuickScan", "ViewOgg"}) {
        settings.values.clear();
        settings.values[name] = "wide";
        windows = std::make_unique<AppWindows>();
        EXPECT_THROW(Main(*windows), RuntimeError) << name;
    }
}

TEST_F(WindowStateTest, ASearchBoxIsCheckedByAStoredOneAlone) {
    settings.values["SearchTitle"] = "0";
    Start();
    EXPECT_FALSE(Control<QCheckBox>("chkTitle").isChecked());
    EXPECT_TRUE(Control<QCheckBox>("chkInterpret").isChecked());
}

TEST_F(WindowStateTest, EachStartBeginsWithAllLettersSortedByPerformer) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    mainModule.LetterFilter = "C";
    mainModule.SortDirection = "DESC";
    mainModule.ShowInGridMode = true;
    Start();
    EXPECT_EQ(mainModule.LetterFilter, "All");
    EXPECT_EQ(mainModule.SortDirection, "ASC");
    EXPECT_FALSE(mainModule.ShowInGridMode);
    EXPECT_TRUE(Control<QLabel>("lblAll").font().bold());
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure"}));
    EXPECT_EQ(Grid().Model().SortColumn(), 0);
}

TEST_F(WindowStateTest, TheProgressBarEndsOneAboveItsHighestValueAndLiesOverTheLastPanel) {
    Start();
    QProgressBar& bar = Form().Panes().Status().ProgressBar();
    EXPECT_EQ(bar.minimum(), 0);
    EXPECT_EQ(bar.maximum(), 101);
    const QRect panels(Form().Panes().Status().mapTo(&Form(), QPoint()), Form().Panes().Status().size());
    const QRect place(bar.mapTo(&Form(), QPoint()), bar.size());
    EXPECT_TRUE(panels.contains(place));
    EXPECT_GT(place.left(), panels.right() - 1740 / 15 - 2);
}

TEST_F(WindowStateTest, AResizeMovesThePanesAndANarrowWindowLeavesThem) {
    Start();
    Form().resize(1200, 800);
    QCoreApplication::processEvents();
    const int width = Frame("Frame1").width();
    EXPECT_EQ(width, 1200 - Frame("Frame3").width() - 7);
    EXPECT_EQ(Grid().width(), width - 8);
    Form().setMinimumWidth(0); // As it is for a window that was stored so narrow.
    Form().resize(320, 800);
    QCoreApplication::processEvents();
    EXPECT_EQ(Frame("Frame1").width(), width);
}

} // namespace quavernet::test
