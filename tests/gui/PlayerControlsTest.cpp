// What the controls of the player's window do: sliders, the list and its keys, the pop-up menu, drops.
#include "gui/PlayerWindowTest.h"

#include <QCheckBox>
#include <QMenu>

#include <set>

namespace quavernet::test {

namespace {

class PlayerControlsTest : public PlayerWindowTest {
protected:
    /// A press of the left button so far along a slider, 0 to 1, and its release.
    void ClickSlider(const char* name, double place) {
        PlayerSlider& slider = Slider(name);
        QTest::mouseClick(&slider, Qt::LeftButton, {},
                          QPoint(static_cast<int>(place * slider.width()), slider.height() / 2));
    }
    /// Chooses an item of the pop-up menu behind "Add".
    void ChooseAdd(const char* item) {
        Click("cmdAdd");
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(FromQString(menu->objectName()), "mnuAdd");
        auto* action = menu->findChild<QAction*>(QLatin1String(item));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    }
};

} // namespace

TEST_F(PlayerControlsTest, TheButtonsRunTheQueue) {
    PlayThree();
    EXPECT_TRUE(engine->IsPlaying());
    Click("cmdPause");
    EXPECT_FALSE(engine->IsPlaying());
    EXPECT_EQ(Caption(), "Quavernet Player - Pause");
    Click("cmdPause");
    EXPECT_TRUE(engine->IsPlaying());
    EXPECT_EQ(Caption(), "Quavernet Player");
    Click("cmdNext");
    EXPECT_EQ(engine->FileName(), "/music/Two.mp3");
    Click("cmdLast");
    EXPECT_EQ(engine->FileName(), "/music/One.mp3");
    Click("cmdStop");
    EXPECT_FALSE(engine->IsPlaying());
    EXPECT_EQ(Entries(), (Texts{"Abba - One", "Cure - Two", "Eels - Three"}));
    ClickEntry(2);
    Click("cmdPlay");
    EXPECT_EQ(engine->FileName(), "/music/Three.mp3");
}

TEST_F(PlayerControlsTest, EachButtonWithATextHasALetterOfItsOwn) {
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        PlayThree();
        std::set<QChar> letters;
        for (const auto* button : Player().findChildren<QAbstractButton*>()) {
            if (!button->text().isEmpty()) {
                const qsizetype mark = button->text().indexOf(u'&');
                ASSERT_GE(mark, 0) << FromQString(button->text());
                EXPECT_TRUE(letters.insert(button->text()[mark + 1].toLower()).second)
                    << FromQString(button->text());
            }
        }
        EXPECT_EQ(letters.size(), 9U);
        CloseMain();
    }
    PlayThree();
    auto& repeat = Part<QCheckBox>("chkRepeat");
    Player().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Player()));
    const QChar letter = repeat.text()[repeat.text().indexOf(u'&') + 1].toUpper();
    QTest::keyClick(Player().windowHandle(), static_cast<Qt::Key>(letter.unicode()), Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return repeat.isChecked(); }));
}

TEST_F(PlayerControlsTest, TheButtonsCanBePressedByTheSpaceBar) {
    PlayThree();
    QTest::keyClick(&Part<QWidget>("cmdNext"), Qt::Key_Space);
    EXPECT_EQ(engine->FileName(), "/music/Two.mp3");
    ClickEntry(2);
    QTest::keyClick(&Part<QWidget>("cmdRem"), Qt::Key_Space);
    EXPECT_EQ(Entries(), (Texts{"Abba - One", "|> Cure - Two"}));
}

TEST_F(PlayerControlsTest, AClickFarFromTheHandleLeadsToTheSpot) {
    AddFile("Abba", "One");
    StartPlayer();
    engine->durations["/music/One.mp3"] = 200;
    Queue().AddPlaylist("/music/One.mp3");
    windows->Player().PlayFile(1);
    EXPECT_EQ(Slider("Slider1").maximum(), 200);
    ClickSlider("Slider1", 0.5);
    EXPECT_EQ(Slider("Slider1").value(), 100);
    EXPECT_EQ(engine->CurrentPosition(), 100);
}

TEST_F(PlayerControlsTest, AClickWithinThirtySecondsOfTheHandleIsTheControlsOwnStep) {
    AddFile("Abba", "One");
    StartPlayer();
    engine->durations["/music/One.mp3"] = 200;
    Queue().AddPlaylist("/music/One.mp3");
    windows->Player().PlayFile(1);
    ClickSlider("Slider1", 0.14); // Second 28, beside the handle.
    EXPECT_EQ(Slider("Slider1").value(), Slider("Slider1").pageStep());
    EXPECT_EQ(engine->CurrentPosition(), Slider("Slider1").pageStep());
}

TEST_F(PlayerControlsTest, AClickJustBeyondTheMarginLeadsToTheSpot) {
    AddFile("Abba", "One");
    StartPlayer();
    engine->durations["/music/One.mp3"] = 200;
    Queue().AddPlaylist("/music/One.mp3");
    windows->Player().PlayFile(1);
    ClickSlider("Slider1", 0.17); // Second 34.
    EXPECT_NEAR(Slider("Slider1").value(), 34, 1);
    ClickSlider("Slider3", 0.95); // 2375, within 200 of the top: the handle itself is there.
    EXPECT_EQ(Slider("Slider3").value(), 2500);
    ClickSlider("Slider3", 0.85);
    EXPECT_NEAR(Slider("Slider3").value(), 2125, 25);
}

TEST_F(PlayerControlsTest, TheFocusOfTheListSelectsNothing) {
    PlayThree();
    Queue().SetListIndex(-1);
    QFocusEvent focus(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(&List(), &focus);
    EXPECT_EQ(Queue().ListIndex(), -1);
    EXPECT_EQ(Selected(), -1);
    EXPECT_FALSE(List().currentIndex().isValid());
}

TEST_F(PlayerControlsTest, AnotherSizeOfTheWindowLeavesThePauseInItsCaption) {
    PlayThree();
    Click("cmdPause");
    Player().resize(Player().size() + QSize(40, 40));
    QCoreApplication::processEvents();
    EXPECT_EQ(Caption(), "Quavernet Player - Pause");
}

TEST_F(PlayerControlsTest, TheArrowKeysMoveThePosition) {
    PlayThree();
    engine->SetPosition(20);
    Player().Queue().Timer1_Timer();
    QTest::keyClick(&Slider("Slider1"), Qt::Key_Right);
    EXPECT_EQ(engine->CurrentPosition(), 21);
}

TEST_F(PlayerControlsTest, TheTickShowsThePositionAndSeeksNothing) {
    PlayThree();
    engine->SetPosition(41.7);
    calls.clear();
    Player().Queue().Timer1_Timer();
    EXPECT_EQ(Slider("Slider1").value(), 42);
    EXPECT_EQ(LabelText("lblTime"), "00:42");
    EXPECT_EQ(calls, Texts{});
}

TEST_F(PlayerControlsTest, WhileTheHandleIsHeldTheTickLeavesItAlone) {
    PlayThree();
    Slider("Slider1").setSliderDown(true);
    Slider("Slider1").setValue(50);
    engine->SetPosition(3);
    Player().Queue().Timer1_Timer();
    EXPECT_EQ(Slider("Slider1").value(), 50);
    Slider("Slider1").setSliderDown(false);
}

TEST_F(PlayerControlsTest, AShorterTrackMovesTheSliderWithoutASeek) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    StartPlayer();
    engine->durations["/music/One.mp3"] = 300;
    engine->durations["/music/Two.mp3"] = 20;
    Queue().AddPlaylist("/music/One.mp3");
    Queue().AddPlaylist("/music/Two.mp3");
    windows->Player().PlayFile(1);
    ClickSlider("Slider1", 0.9);
    calls.clear();
    Click("cmdNext");
    EXPECT_EQ(Slider("Slider1").maximum(), 20);
    for (const std::string& call : calls) {
        EXPECT_FALSE(call.starts_with("position")) << call;
    }
}

TEST_F(PlayerControlsTest, TheWindowBeginsAtFullVolume) {
    StartPlayer();
    EXPECT_EQ(Slider("Slider3").value(), 2500);
    EXPECT_EQ(Slider("Slider3").maximum(), 2500);
    EXPECT_EQ(LabelText("lblPercent"), "100%");
    EXPECT_EQ(engine->Volume(), 0);
}

TEST_F(PlayerControlsTest, TheVolumeFollowsItsSlider) {
    StartPlayer();
    ClickSlider("Slider3", 0.5);
    EXPECT_NEAR(Slider("Slider3").value(), 1250, 15);
    Slider("Slider3").setValue(1250);
    EXPECT_EQ(engine->Volume(), -1250);
    EXPECT_EQ(LabelText("lblPercent"), "50 %");
    Slider("Slider3").setValue(1274);
    EXPECT_EQ(LabelText("lblPercent"), "50 %");
    Slider("Slider3").setValue(2500);
    EXPECT_EQ(engine->Volume(), 0);
    EXPECT_EQ(LabelText("lblPercent"), "100 %");
    Slider("Slider3").setValue(0);
    EXPECT_EQ(engine->Volume(), -2500);
    EXPECT_EQ(LabelText("lblPercent"), "0 %");
}

TEST_F(PlayerControlsTest, ADoubleClickOrTheSpaceBarTurnsTheTimeRound) {
    PlayThree();
    engine->SetPosition(15);
    Player().Queue().Timer1_Timer();
    EXPECT_EQ(LabelText("lblTime"), "00:15");
    QTest::mouseDClick(&Part<QWidget>("lblTime"), Qt::LeftButton);
    Player().Queue().Timer1_Timer();
    EXPECT_EQ(LabelText("lblTime"), "00:45");
    QTest::keyClick(&Part<QWidget>("lblTime"), Qt::Key_Space);
    Player().Queue().Timer1_Timer();
    EXPECT_EQ(LabelText("lblTime"), "00:15");
}

TEST_F(PlayerControlsTest, WhilePausedWhatTheUserChangesIsShownAtOnce) {
    PlayThree();
    engine->SetPosition(15);
    Click("cmdPause");
    EXPECT_EQ(LabelText("lblTime"), "00:15");
    QTest::mouseDClick(&Part<QWidget>("lblTime"), Qt::LeftButton);
    EXPECT_EQ(LabelText("lblTime"), "00:45");
    QTest::keyClick(&Slider("Slider1"), Qt::Key_Home);
    EXPECT_EQ(LabelText("lblTime"), "01:00");
}

TEST_F(PlayerControlsTest, TheTimerRunsOnlyWhileTheEnginePlays) {
    StartPlayer();
    EXPECT_FALSE(Timer1().isActive());
    Queue().AddPlaylist("/music/One.mp3");
    windows->Player().PlayFile(1);
    EXPECT_TRUE(Timer1().isActive());
    EXPECT_GE(Timer1().interval(), 100);
    engine->Pause();
    engine->ChangePlaying();
    EXPECT_FALSE(Timer1().isActive());
    engine->Play();
    engine->ChangePlaying();
    EXPECT_TRUE(Timer1().isActive());
    engine->End();
    EXPECT_FALSE(Timer1().isActive());
}

TEST_F(PlayerControlsTest, TheTwoRepeatBoxesExcludeEachOther) {
    StartPlayer();
    auto& repeat = Part<QCheckBox>("chkRepeat");
    auto& repeatAll = Part<QCheckBox>("chkRepeatAll");
    Click("chkRepeat");
    EXPECT_TRUE(repeat.isChecked() && !repeatAll.isChecked());
    Click("chkRepeatAll");
    EXPECT_TRUE(!repeat.isChecked() && repeatAll.isChecked());
    Click("chkRepeat");
    EXPECT_TRUE(repeat.isChecked() && !repeatAll.isChecked());
    Click("chkRepeat");
    EXPECT_FALSE(repeat.isChecked() || repeatAll.isChecked());
}

TEST_F(PlayerControlsTest, ADoubleClickPlaysTheEntryAndTakesTheMarkerAlong) {
    PlayThree();
    ClickEntry(2);
    EXPECT_EQ(Entries()[2], "Eels - Three");
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {},
                       List().visualRect(List().model()->index(2, 0)).center());
    EXPECT_EQ(Entries(), (Texts{"Abba - One", "Cure - Two", "|> Eels - Three"}));
    EXPECT_EQ(engine->FileName(), "/music/Three.mp3");
}

TEST_F(PlayerControlsTest, TheKeysOfTheListActBeforeTheSelectionMoves) {
    PlayThree();
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_Down);
    EXPECT_EQ(Selected(), 1);
    EXPECT_EQ(Queue().CurrentTrack(), 2);
    QTest::keyClick(&List(), Qt::Key_Right);
    EXPECT_EQ(Selected(), 2);
    EXPECT_EQ(Queue().CurrentTrack(), 3);
    QTest::keyClick(&List(), Qt::Key_Left);
    QTest::keyClick(&List(), Qt::Key_Up);
    EXPECT_EQ(Selected(), 0);
    EXPECT_EQ(Queue().CurrentTrack(), 1);
    QTest::keyClick(&List(), Qt::Key_End);
    EXPECT_EQ(Queue().ListIndex(), 2);
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_EQ(engine->FileName(), "/music/Three.mp3");
    EXPECT_EQ(Entries(), (Texts{"|> Abba - One", "Cure - Two", "|> Eels - Three"}));
    QTest::keyClick(&List(), Qt::Key_Delete);
    EXPECT_EQ(Entries(), (Texts{"|> Abba - One", "Cure - Two"}));
    EXPECT_EQ(Selected(), 1);
}

TEST_F(PlayerControlsTest, RemovingTheOnlyEntryLeavesAnEmptyListWithoutASelection) {
    StartPlayer();
    Queue().AddPlaylist("/music/One.mp3");
    ClickEntry(0);
    Click("cmdRem");
    EXPECT_EQ(Entries(), Texts{});
    EXPECT_EQ(Selected(), -1);
    EXPECT_EQ(Queue().PathCount(), 0U);
}

TEST_F(PlayerControlsTest, WithoutASelectionNothingIsRemoved) {
    PlayThree();
    Queue().SetListIndex(-1);
    EXPECT_EQ(Selected(), -1);
    Click("cmdRem");
    EXPECT_EQ(Entries().size(), 3U);
}

TEST_F(PlayerControlsTest, TheSelectionGoesToTheRememberedPositionOrTheLastEntry) {
    PlayThree();
    ClickEntry(1);
    Click("cmdRem");
    EXPECT_EQ(Entries(), (Texts{"|> Abba - One", "Eels - Three"}));
    EXPECT_EQ(Selected(), 1);
    Click("cmdRem");
    EXPECT_EQ(Selected(), 0);
    Click("cmdRem");
    EXPECT_EQ(Selected(), -1);
    EXPECT_TRUE(engine->IsPlaying()) << "removing the entry that plays does not stop it";
}

TEST_F(PlayerControlsTest, RemovingAllKeepsThePlayingTrack) {
    PlayThree();
    Click("cmdRemAll");
    EXPECT_EQ(Entries(), Texts{});
    EXPECT_EQ(Selected(), -1);
    EXPECT_TRUE(engine->IsPlaying());
    EXPECT_EQ(Queue().CurrentTrack(), 1);
}

TEST_F(PlayerControlsTest, TheMenuOfTheAddButtonHasItsTwoItemsInBothLanguages) {
    StartPlayer();
    const auto captions = [this] {
        Click("cmdAdd");
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        Texts texts;
        for (const QAction* action : menu->actions()) {
            texts.push_back(FromQString(action->text()));
        }
        menu->close();
        return texts;
    };
    EXPECT_EQ(captions(), (Texts{"Datei...", "Ordner..."}));
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(captions(), (Texts{"File...", "Folder..."}));
}

TEST_F(PlayerControlsTest, AFileThatIsAddedToAnEmptyListPlays) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    StartPlayer();
    dialogs.file = "/music/One.mp3";
    ChooseAdd("mnuAddFile");
    EXPECT_EQ(Entries(), Texts{"|> Abba - One"});
    dialogs.file = "/music/Two.mp3";
    ChooseAdd("mnuAddFile");
    EXPECT_EQ(Entries(), (Texts{"|> Abba - One", "Cure - Two"}));
    EXPECT_EQ(engine->FileName(), "/music/One.mp3");
}

TEST_F(PlayerControlsTest, AFolderWithUpperCaseExtensionsAddsNothing) {
    WriteFile(folder / "A.MP3", "x");
    StartPlayer();
    dialogs.folder = folder.Path();
    ChooseAdd("mnuAddFolder");
    EXPECT_EQ(Entries(), Texts{});
    WriteFile(folder / "b.mp3", "x");
    WriteFile(folder / "c.wav", "x");
    ChooseAdd("mnuAddFolder");
    EXPECT_EQ(Entries().size(), 2U);
    EXPECT_EQ(engine->FileName(), folder / "b.mp3");
}

TEST_F(PlayerControlsTest, ADropOnTheWindowReplacesTheQueueAndPlays) {
    PlayThree();
    EXPECT_TRUE(Drop(Player(), {"/music/Two.mp3", "/music/notes.txt"}));
    EXPECT_EQ(Entries(), (Texts{"|> Cure - Two", "notes.txt"}));
    EXPECT_EQ(engine->FileName(), "/music/Two.mp3");
}

TEST_F(PlayerControlsTest, ADropOnTheListAppendsAndStartsNothing) {
    PlayThree();
    calls.clear();
    EXPECT_TRUE(Drop(*List().viewport(), {"/music/Two.MP3"}));
    EXPECT_EQ(Entries().size(), 4U);
    EXPECT_EQ(Calls("Play"), 0);
}

TEST_F(PlayerControlsTest, ADropWhoseFirstNameIsNoMusicIsIgnored) {
    PlayThree();
    for (QWidget* target : {static_cast<QWidget*>(&Player()), List().viewport()}) {
        EXPECT_FALSE(Drop(*target, {"/music/list.m3u", "/music/One.mp3"})) << "the pointer refuses it";
        EXPECT_EQ(Entries().size(), 3U);
    }
}

TEST_F(PlayerControlsTest, ADragWithoutLocalFilesIsRefused) {
    StartPlayer();
    QMimeData links;
    links.setUrls({QUrl(QStringLiteral("https://example.org/a.mp3"))});
    for (QWidget* target : {static_cast<QWidget*>(&Player()), List().viewport()}) {
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &links, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &enter);
        EXPECT_FALSE(enter.isAccepted());
    }
}

TEST_F(PlayerControlsTest, AFullQueueIsShown) {
    StartPlayer();
    for (int number = 0; number < PlayQueue::MostEntries; ++number) {
        Queue().AddPlaylist("/music/" + std::to_string(number) + ".mp3");
    }
    EXPECT_EQ(List().model()->rowCount(), 32767);
    Queue().AddPlaylist("/music/more.mp3");
    EXPECT_EQ(List().model()->rowCount(), 32767);
    Click("cmdRemAll");
    EXPECT_EQ(Entries(), Texts{});
}

} // namespace quavernet::test
