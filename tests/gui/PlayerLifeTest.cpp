// The life of the player's window: opening, closing beside the main window and without it, the way back, and
// what it may do while something else is under way.
#include "gui/PlayerWindowTest.h"

#include "support/SmallAudio.h"
#include "support/TestLibrary.h"

#include <QDialog>
#include <QLineEdit>
#include <QPointer>

namespace quavernet::test {

namespace {

class PlayerLifeTest : public PlayerWindowTest {
protected:
    /// Closes a window; the exit code if the process ends with it, otherwise -1.
    static int Close(QWidget& window) {
        try {
            window.close();
        } catch (const ProcessEnded& end) {
            return end.exitCode;
        }
        return -1;
    }
    /// The loop of the program, for a moment.
    static void WaitForTheUser() {
        QEventLoop loop;
        QTimer::singleShot(20, &loop, &QEventLoop::quit);
        loop.exec();
    }
    bool PlayerIsOpen() { return windows->Player().Form() != nullptr; }
    bool HasTree() { return Form().Tree().Model().Contains("Parent"); }
};

} // namespace

TEST_F(PlayerLifeTest, TheMenuItemShowsThePlayer) {
    Start();
    EXPECT_FALSE(mainModule.PlayerOpen);
    EXPECT_EQ(Action("mnuPlayer").shortcut(), QKeySequence(Qt::CTRL | Qt::Key_P));
    Action("mnuPlayer").trigger();
    EXPECT_TRUE(mainModule.PlayerOpen);
    EXPECT_TRUE(Player().isVisible());
    EXPECT_EQ(Caption(), "Quavernet Player");
    EXPECT_EQ(calls, Texts{"volume 0"});
}

TEST_F(PlayerLifeTest, ADoubleClickOnARowPlaysIt) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    Start();
    ClickRow(2);
    QTest::mouseDClick(Grid().viewport(), Qt::LeftButton, {}, CellCentre(2));
    EXPECT_EQ(Entries(), Texts{"|> Cure - Two"});
    EXPECT_TRUE(engine->IsPlaying());
    EXPECT_EQ(engine->FileName(), "/music/Two.mp3");
    EXPECT_EQ(RowTextsOf(*mainModule.Connection, "Select Hits from Files order by File_id"),
              (Texts{"0", "1"}));
}

TEST_F(PlayerLifeTest, ARequestLeavesAMinimisedPlayerMinimisedAndTheMenuItemRestoresIt) {
    StartPlayer();
    Click("cmdMinimize");
    EXPECT_TRUE(Player().isMinimized());
    windows->Player().Show();
    EXPECT_TRUE(Player().isMinimized());
    Action("mnuPlayer").trigger();
    EXPECT_FALSE(Player().isMinimized());
}

TEST_F(PlayerLifeTest, AMinimisedWindowIsNamedAfterItsTrack) {
    PlayThree();
    Click("cmdMinimize");
    EXPECT_EQ(Caption(), " Abba - One") << "two characters of the marker go, the blank stays";
    engine->End();
    EXPECT_EQ(engine->FileName(), "/music/Two.mp3");
    Player().showNormal();
    EXPECT_EQ(Caption(), "Quavernet Player");
}

TEST_F(PlayerLifeTest, AnEmptyMinimisedWindowKeepsItsName) {
    StartPlayer();
    Click("cmdMinimize");
    EXPECT_EQ(Caption(), "Quavernet Player");
    windows->Player().PlayFile(1);
    EXPECT_EQ(Caption(), "Quavernet Player");
}

TEST_F(PlayerLifeTest, TheWindowComesUpWhereTheSettingsSay) {
    settings.values["WindowLeftPlayer"] = "1500";
    settings.values["WindowTopPlayer"] = "3000";
    StartPlayer();
    EXPECT_EQ(Player().pos(), QPoint(100, 200));
}

TEST_F(PlayerLifeTest, WithoutSettingsItComesUpInTheCorner) {
    StartPlayer();
    EXPECT_EQ(Player().pos(), QPoint(12, 17));
}

TEST_F(PlayerLifeTest, ItsPlaceIsKeptInTwips) {
    StartPlayer();
    Player().move(40, 60);
    Close(Player());
    EXPECT_EQ(settings.values["WindowLeftPlayer"], "600");
    EXPECT_EQ(settings.values["WindowTopPlayer"], "900");
}

TEST_F(PlayerLifeTest, AMinimisedWindowIsRestoredBeforeItsPlaceIsKept) {
    StartPlayer();
    Player().move(40, 60);
    Click("cmdMinimize");
    const QPointer<frmPlayer> form = &Player();
    Close(Player());
    EXPECT_FALSE(form->isMinimized());
    EXPECT_EQ(settings.values["WindowLeftPlayer"], "600");
}

TEST_F(PlayerLifeTest, ASettingThatIsNoNumberNamesItself) {
    settings.values["WindowTopPlayer"] = "x";
    Start();
    EXPECT_THROW(windows->Player().Show(), RuntimeError);
    EXPECT_FALSE(mainModule.PlayerOpen);
    EXPECT_FALSE(PlayerIsOpen());
}

TEST_F(PlayerLifeTest, ClosingThePlayerFirstStopsTheMusicAndTheProgramGoesOn) {
    PlayThree();
    ScriptedPlayer* closed = engine;
    EXPECT_EQ(Close(Player()), -1);
    EXPECT_FALSE(mainModule.PlayerOpen);
    EXPECT_FALSE(PlayerIsOpen());
    EXPECT_EQ(calls.back(), "next ");
    EXPECT_EQ(Calls("Stop"), 1);
    EXPECT_FALSE(closed->HasListener());
    EXPECT_EQ(windows->Player().QueueCount(), 0U);
}

TEST_F(PlayerLifeTest, APlayerThatIsOpenedAgainBeginsEmptyAtFullVolume) {
    PlayThree();
    Slider("Slider3").setValue(100);
    Close(Player());
    windows->Player().Show();
    EXPECT_EQ(Entries(), Texts{});
    EXPECT_EQ(Queue().CurrentTrack(), 0);
    EXPECT_EQ(LabelText("lblPercent"), "100%");
    EXPECT_EQ(LabelText("lblFile"), "");
}

TEST_F(PlayerLifeTest, RequestsToAPlayerThatHasClosedDoNothing) {
    StartPlayer();
    Close(Player());
    PlayerHost& host = windows->Player();
    host.FillPlaylist();
    host.FillRandomPlaylist("1", 1);
    host.fGetM3u(1, "/music/list.m3u", true);
    host.ClearQueue();
    host.SelectFirst();
    host.PlayFile(1);
    host.PlayFileFromTree(1);
    host.LoadStrings();
    EXPECT_FALSE(PlayerIsOpen());
    EXPECT_FALSE(mainModule.PlayerOpen);
}

TEST_F(PlayerLifeTest, AWindowThatClosesWhileATrackStartsLivesUntilThatIsOver) {
    PlayThree();
    QPointer<frmPlayer> form = &Player();
    events.onDoEvents = [&] {
        events.onDoEvents = nullptr;
        Close(*form);
    };
    services.events = &events;
    Click("cmdNext");
    services.events = &realEvents;
    EXPECT_FALSE(PlayerIsOpen());
    QCoreApplication::processEvents();
    EXPECT_FALSE(form.isNull()) << "it goes when the program waits for its user";
    WaitForTheUser();
    EXPECT_TRUE(form.isNull());
}

TEST_F(PlayerLifeTest, TheMusicGoesOnWhenTheMainWindowCloses) {
    PlayThree();
    EXPECT_EQ(Close(Form()), -1);
    EXPECT_FALSE(mainModule.MainOpen);
    EXPECT_TRUE(engine->IsPlaying());
    engine->End();
    EXPECT_EQ(Entries(), (Texts{"Abba - One", "|> Cure - Two", "Eels - Three"}));
    Click("cmdNext");
    EXPECT_EQ(engine->FileName(), "/music/Three.mp3");
    EXPECT_EQ(Close(Player()), 0) << "the last window ends the process";
}

TEST_F(PlayerLifeTest, TheMainWindowEndsTheProcessWhenThePlayerHasClosed) {
    StartPlayer();
    EXPECT_EQ(Close(Player()), -1);
    EXPECT_EQ(Close(Form()), 0);
}

TEST_F(PlayerLifeTest, TheWayBackBuildsTheMainWindowAgainAndFillsIt) {
    settings.values["WindowWidth"] = "9000";
    PlayThree();
    Form().resize(700, 500);
    Close(Form());
    Click("cmdMaindialog");
    EXPECT_TRUE(mainModule.MainOpen);
    EXPECT_TRUE(Form().isVisible());
    EXPECT_EQ(Form().size(), QSize(700, 500));
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure", "Eels"}));
    EXPECT_TRUE(HasTree());
    EXPECT_FALSE(mainModule.SuppressComboClick);
    EXPECT_TRUE(engine->IsPlaying());
    Action("mnuPlayer").trigger();
    EXPECT_EQ(Entries().size(), 3U);
    EXPECT_EQ(Close(Player()), -1);
    EXPECT_EQ(Close(Form()), 0);
}

TEST_F(PlayerLifeTest, TheMainWindowThatWasClosedIsDeletedWhenTheProgramWaits) {
    StartPlayer();
    const QPointer<frmMain> first = &Form();
    Close(Form());
    Click("cmdMaindialog");
    EXPECT_FALSE(first.isNull());
    EXPECT_NE(first.data(), &Form());
    WaitForTheUser();
    EXPECT_TRUE(first.isNull());
    EXPECT_TRUE(Form().isVisible());
}

TEST_F(PlayerLifeTest, WithLoadOverSearchTheWayBackLoadsTheTreeAlone) {
    settings.values["LoadOverSearch"] = "1";
    PlayThree();
    Close(Form());
    Click("cmdMaindialog");
    EXPECT_EQ(Listed(), Texts{});
    EXPECT_TRUE(HasTree());
}

TEST_F(PlayerLifeTest, AFilledListIsNotLoadedAgain) {
    PlayThree();
    mainModule.Connection->Execute("Delete from Files where File_id = 2");
    Click("cmdMaindialog");
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure", "Eels"}));
}

TEST_F(PlayerLifeTest, AListWithoutRowsIsLoadedByTheWayBack) {
    Start();
    AddFile("Abba", "One");
    windows->Player().Show();
    EXPECT_EQ(Listed(), Texts{});
    Click("cmdMaindialog");
    EXPECT_EQ(Listed(), Texts{"Abba"});
}

TEST_F(PlayerLifeTest, TheWayBackRestoresAMinimisedMainWindow) {
    StartPlayer();
    Form().showMinimized();
    Click("cmdMaindialog");
    EXPECT_FALSE(Form().isMinimized());
}

TEST_F(PlayerLifeTest, AMainWindowThatClosesAtOnceAsksForNoScan) {
    StartPlayer();
    auto& timer = Control<QTimer>("AfterLoadTimer");
    timer.start(1000);
    Close(Form());
    EXPECT_FALSE(timer.isActive());
}

TEST_F(PlayerLifeTest, TheQueueBecomesACategory) {
    PlayThree();
    QTimer::singleShot(0, [] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(FromQString(dialog->objectName()), "frmCategoryName");
        dialog->findChild<QLineEdit*>()->setText(QStringLiteral("Evening"));
        QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
    });
    Click("cmdCreateCategory");
    EXPECT_EQ(RowTextsOf(*mainModule.Connection, "Select File_id from FileCategories order by [Position]"),
              (Texts{"1", "2", "3"}));
    EXPECT_TRUE(Form().Tree().Model().Contains("CAT_Evening"));
}

TEST_F(PlayerLifeTest, WithoutTheMainWindowTheQueueBecomesACategoryToo) {
    PlayThree();
    Close(Form());
    QTimer::singleShot(0, [] {
        auto* name = QApplication::activeModalWidget()->findChild<QLineEdit*>();
        name->setText(QStringLiteral("Evening"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    Click("cmdCreateCategory");
    Click("cmdMaindialog");
    EXPECT_TRUE(Form().Tree().Model().Contains("CAT_Evening"));
}

/// A scan of two files that acts on the player at each of its event points.
class PlayerDuringScanTest : public PlayerLifeTest {
protected:
    void ScanWith(const std::function<void()>& action) {
        settings.values["ScanLog"] = "0";
        std::filesystem::create_directory(folder / "music");
        for (const char* name : {"1.mp3", "2.mp3"}) {
            WriteBytes(folder / "music" + std::string("/") + name,
                       Mp3Bytes(std::string("Song ") + name, "Blue", "Best"));
        }
        dialogs.folder = folder / "music";
        bool inside = false;
        int points = 0;
        events.onDoEvents = [&] {
            if (mainModule.ScanRunning && !inside) {
                inside = true;
                ++points;
                action();
                inside = false;
            }
        };
        services.events = &events;
        Action("scan").trigger();
        services.events = &realEvents;
        events.onDoEvents = nullptr;
        EXPECT_GE(points, 6);
        EXPECT_EQ(
            RowTextsOf(*mainModule.Connection, "Select count(*) from Files where Path like '%music/_.mp3'"),
            Texts{"2"});
    }
};

TEST_F(PlayerDuringScanTest, TheMusicGoesOn) {
    PlayThree();
    ScanWith([this] {
        engine->End();
        Click("cmdLast");
    });
    EXPECT_TRUE(engine->IsPlaying());
    EXPECT_EQ(Entries(), (Texts{"|> Abba - One", "Cure - Two", "Eels - Three"}));
}

TEST_F(PlayerDuringScanTest, NothingIsAskedAndNothingIsWritten) {
    PlayThree();
    dialogs.file = "/music/new.mp3";
    const std::size_t asked = 1; // The folder of the scan.
    ScanWith([this] {
        for (const char* name : {"cmdLoadPlaylist", "cmdCreatePlaylist", "cmdCreateCategory"}) {
            Click(name);
        }
        Part<QAction>("mnuAddFile").trigger();
        Part<QAction>("mnuAddFolder").trigger();
    });
    EXPECT_EQ(dialogs.shown, Texts{});
    EXPECT_EQ(dialogs.titles.size(), asked);
    EXPECT_EQ(Entries().size(), 3U);
}

TEST_F(PlayerDuringScanTest, TheWayBackShowsTheMainWindowAndLoadsNothing) {
    StartPlayer();
    int couldHaveLoaded = 0;
    ScanWith([&] {
        const Texts before = Listed();
        if (before.empty() && RowTextsOf(*mainModule.Connection, "Select Name from Files").size() > 0) {
            ++couldHaveLoaded;
        }
        Form().showMinimized();
        Click("cmdMaindialog");
        EXPECT_FALSE(Form().isMinimized());
        EXPECT_EQ(Listed(), before);
    });
    EXPECT_GE(couldHaveLoaded, 1);
    EXPECT_EQ(Listed().size(), 2U);
}

TEST_F(PlayerDuringScanTest, ThePlayerMayCloseAndTheMainWindowMayNot) {
    PlayThree();
    bool first = true;
    ScanWith([&] {
        if (first) {
            first = false;
            EXPECT_EQ(Close(Form()), -1);
            EXPECT_EQ(Close(Player()), -1);
        }
    });
    EXPECT_TRUE(Form().isVisible());
    EXPECT_FALSE(PlayerIsOpen());
}

TEST_F(PlayerDuringScanTest, ADropIsRefused) {
    PlayThree();
    ScanWith([this] {
        EXPECT_FALSE(Drop(Player(), {"/music/Two.mp3"}));
        EXPECT_FALSE(Drop(*List().viewport(), {"/music/Two.mp3"}));
    });
    EXPECT_EQ(Entries().size(), 3U);
}

TEST_F(PlayerLifeTest, WhileABoxIsOpenTheMusicGoesOnAndDropsAreRefused) {
    PlayThree();
    QDialog box(&Form());
    box.setModal(true);
    box.show();
    engine->End();
    EXPECT_EQ(engine->FileName(), "/music/Two.mp3");
    EXPECT_FALSE(Drop(Player(), {"/music/One.mp3"}));
    EXPECT_FALSE(Drop(*List().viewport(), {"/music/One.mp3"}));
    EXPECT_EQ(Entries(), (Texts{"Abba - One", "|> Cure - Two", "Eels - Three"}));
}

TEST_F(PlayerLifeTest, ADropInsideAStartIsWhatPlaysAndWhatIsShown) {
    PlayThree();
    events.onDoEvents = [this] {
        events.onDoEvents = nullptr;
        EXPECT_TRUE(Drop(Player(), {"/music/Three.mp3", "/music/One.mp3"}));
    };
    services.events = &events;
    Click("cmdNext");
    services.events = &realEvents;
    EXPECT_EQ(engine->FileName(), "/music/Three.mp3");
    EXPECT_TRUE(engine->IsPlaying());
    EXPECT_EQ(Entries(), (Texts{"|> Eels - Three", "Abba - One"}));
    EXPECT_EQ(LabelText("lblFile"), "Three.mp3");
}

TEST_F(PlayerLifeTest, TheWayBackInsideItselfLoadsOnce) {
    Start();
    AddFile("Abba", "One");
    windows->Player().Show();
    int inside = 0;
    events.onDoEvents = [&] {
        if (inside++ == 0) {
            Click("cmdMaindialog");
        }
    };
    services.events = &events;
    Click("cmdMaindialog");
    services.events = &realEvents;
    EXPECT_GE(inside, 1);
    EXPECT_EQ(Listed(), Texts{"Abba"});
    EXPECT_TRUE(HasTree());
}

} // namespace quavernet::test
