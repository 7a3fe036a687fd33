// What the player's window looks like and how its surface reacts.
#include "gui/PlayerWindowTest.h"
#include "gui/Caption.h"

#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QMouseEvent>

namespace quavernet::test {

namespace {

constexpr auto PictureButtons = std::to_array<const char*>(
    {"cmdLast", "cmdNext", "cmdPlay", "cmdPause", "cmdStop", "cmdMinimize", "cmdMaindialog"});

void MoveOver(QWidget& widget) {
    QMouseEvent move(QEvent::MouseMove, QPointF(2, 2), QPointF(widget.mapToGlobal(QPoint(2, 2))),
                     Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &move);
}

class PlayerLooksTest : public PlayerWindowTest {
protected:
    /// Pictures of the seven buttons.
    Texts Pictures() {
        Texts keys;
        for (const char* name : PictureButtons) {
            keys.push_back(Part<PictureButton>(name).PictureKey());
        }
        return keys;
    }
    /// The surface itself; of the list its viewport.
    QWidget& Surface(const char* name) {
        auto& control = Part<QWidget>(name);
        auto* list = qobject_cast<QAbstractScrollArea*>(&control);
        return list != nullptr ? *list->viewport() : control;
    }
    const Texts atRest{"last", "next", "play", "pause", "stop", "minimize", "maindialog"};
};

} // namespace

TEST_F(PlayerLooksTest, TheTextsAreThoseOfBothLanguages) {
    StartPlayer();
    const auto texts = [this] {
        Texts shown{Caption(), LabelText("Label")};
        for (const char* name : {"cmdAdd", "cmdRem", "cmdRemAll", "cmdLoadPlaylist", "cmdCreatePlaylist",
                                 "cmdCreateCategory", "chkRepeat", "chkRepeatAll", "cmdRandomize"}) {
            shown.push_back(test::Caption(Part<QAbstractButton>(name).text()));
        }
        for (const char* name : PictureButtons) {
            shown.push_back(FromQString(Part<QWidget>(name).toolTip()));
        }
        return shown;
    };
    EXPECT_EQ(texts(), (Texts{"Quavernet Player", "Volume", "Hinzufügen", "Entfernen", "Alle Entfernen",
                              "Playlist laden", "Playlist erstellen", "In Bibliothek", "Repeat", "Repeat all",
                              "Mischen", "Letztes Lied abspielen", "Nächstes Lied abspielen", "Abspielen",
                              "Pause", "Stop", "Minimieren", "Hauptdialog in den Vordergrund bringen"}));
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(texts(), (Texts{"Quavernet Player", "Volume", "Add", "Remove", "Remove all", "Load playlist",
                              "Create playlist", "Add to library", "Repeat", "Repeat all", "Shuffle",
                              "Play previous song", "Play next song", "Play", "Pause", "Stop", "Minimise",
                              "Bring main window to the front"}));
}

TEST_F(PlayerLooksTest, AnOpenPlayerTakesTheNewLanguageAndAClosedOneStaysClosed) {
    Start();
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(windows->Player().Form(), nullptr);
    windows->Player().Show();
    EXPECT_EQ(test::Caption(Part<QToolButton>("cmdAdd").text()), "Add");
}

TEST_F(PlayerLooksTest, NoTextIsCutInEitherLanguageAtTheSmallestSize) {
    StartPlayer();
    for (const char* language : {"mnuViewLanguageENG", "mnuViewLanguageGER"}) {
        Action(language).trigger();
        QCoreApplication::processEvents();
        Player().resize(Player().minimumSizeHint());
        QCoreApplication::processEvents();
        for (const QWidget* widget : Player().findChildren<QWidget*>()) {
            const bool shows = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                               widget->objectName() == QLatin1String("Label");
            if (shows) {
                EXPECT_GE(widget->width(), widget->sizeHint().width())
                    << language << " " << FromQString(widget->objectName());
            }
        }
    }
}

TEST_F(PlayerLooksTest, ALongFileNameDoesNotWidenTheWindow) {
    StartPlayer();
    const int width = Player().minimumSizeHint().width();
    Part<QLabel>("lblFile").setText(QString(300, u'w'));
    QCoreApplication::processEvents();
    EXPECT_EQ(Player().minimumSizeHint().width(), width);
}

TEST_F(PlayerLooksTest, HoveringFromOneButtonToAnotherLeavesExactlyOneBlue) {
    StartPlayer();
    for (std::size_t number = 0; number < PictureButtons.size(); ++number) {
        MoveOver(Part<QWidget>(PictureButtons[number]));
        Texts expected = atRest;
        expected[number] += "blue";
        EXPECT_EQ(Pictures(), expected);
    }
}

TEST_F(PlayerLooksTest, APressedButtonIsDownAndBlueWhenItComesUp) {
    StartPlayer();
    for (const char* name : PictureButtons) {
        auto& button = Part<PictureButton>(name);
        const std::string key = button.PictureKey();
        QObject::disconnect(&button, &QAbstractButton::clicked, nullptr, nullptr); // The looks alone.
        for (const Qt::MouseButton pressed : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
            QTest::mousePress(&button, pressed);
            EXPECT_EQ(button.PictureKey(), key + "down") << pressed;
            QTest::mouseRelease(&button, pressed);
            EXPECT_EQ(button.PictureKey(), key + "blue") << pressed;
            button.SetAtRest();
        }
    }
}

TEST_F(PlayerLooksTest, AMovementMakesAPressedButtonBlueToo) {
    StartPlayer();
    auto& button = Part<PictureButton>("cmdPlay");
    for (const Qt::MouseButton pressed : {Qt::LeftButton, Qt::RightButton}) {
        QTest::mousePress(&button, pressed);
        QMouseEvent move(QEvent::MouseMove, QPointF(2, 2), QPointF(button.mapToGlobal(QPoint(2, 2))),
                         Qt::NoButton, pressed, Qt::NoModifier);
        QCoreApplication::sendEvent(&button, &move);
        EXPECT_EQ(button.PictureKey(), "playblue");
        QTest::mouseRelease(&button, pressed);
        EXPECT_EQ(button.PictureKey(), "playblue");
    }
}

TEST_F(PlayerLooksTest, OnlyTheLeftButtonOfTheMouseClicks) {
    PlayThree();
    for (const Qt::MouseButton pressed : {Qt::RightButton, Qt::MiddleButton}) {
        QTest::mouseClick(&Part<QWidget>("cmdNext"), pressed);
        EXPECT_EQ(Queue().CurrentTrack(), 1);
    }
    Click("cmdNext");
    EXPECT_EQ(Queue().CurrentTrack(), 2);
}

TEST_F(PlayerLooksTest, OverASurfaceAroundTheButtonsAllGoToRest) {
    StartPlayer();
    for (const char* surface : {"Frame1", "Label", "lblFile", "lblPercent", "lblTime", "lstFiles"}) {
        MoveOver(Part<QWidget>("cmdMaindialog"));
        MoveOver(Surface(surface));
        EXPECT_EQ(Pictures(), atRest) << surface;
    }
}

TEST_F(PlayerLooksTest, OverASliderTheButtonOfTheMainWindowStaysAsItIs) {
    StartPlayer();
    Texts expected = atRest;
    expected.back() += "blue";
    for (const char* slider : {"Slider1", "Slider3"}) {
        MoveOver(Part<QWidget>("cmdStop"));
        MoveOver(Surface(slider));
        EXPECT_EQ(Pictures(), atRest) << slider;
        MoveOver(Part<QWidget>("cmdMaindialog"));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&Part<QWidget>("cmdMaindialog"), &leave);
        MoveOver(Surface(slider));
        EXPECT_EQ(Pictures(), expected) << slider;
        MoveOver(Surface("Frame1"));
    }
}

TEST_F(PlayerLooksTest, AMouseThatLeavesTheWindowLeavesNoBlueButton) {
    StartPlayer();
    MoveOver(Part<QWidget>("cmdPlay"));
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&Player(), &leave);
    EXPECT_EQ(Pictures(), atRest);
}

TEST_F(PlayerLooksTest, TheEntryThatPlaysIsMarkedToTheEyeAsWell) {
    PlayThree();
    EXPECT_EQ(Entries(), (Texts{"|> Abba - One", "Cure - Two", "Eels - Three"}));
    const auto isBold = [this](int row) {
        return List().model()->index(row, 0).data(Qt::FontRole).value<QFont>().bold();
    };
    const auto isTinted = [this](int row) {
        return List().model()->index(row, 0).data(Qt::BackgroundRole).isValid();
    };
    EXPECT_TRUE(isBold(0) && isTinted(0));
    EXPECT_FALSE(isBold(1) || isTinted(1));
    Click("cmdNext");
    EXPECT_FALSE(isBold(0) || isTinted(0));
    EXPECT_TRUE(isBold(1) && isTinted(1));
    EXPECT_EQ(Selected(), 1);
}

TEST_F(PlayerLooksTest, AnEntryWithAFaultIsPale) {
    StartPlayer();
    Queue().AddPlaylist("/music/new.mp3");
    EXPECT_FALSE(List().model()->index(0, 0).data(Qt::ForegroundRole).isValid());
    windows->Player().PlayFile(1); // It is heard, but the library does not know it.
    EXPECT_EQ(Entries(), Texts{"(new.mp3) ***FileError***"});
    EXPECT_TRUE(List().model()->index(0, 0).data(Qt::ForegroundRole).isValid());
}

TEST_F(PlayerLooksTest, TheLabelsTellOfTheTrack) {
    PlayThree();
    EXPECT_EQ(LabelText("lblFile"), "One.mp3");
    EXPECT_EQ(FromQString(Part<QLabel>("lblFile").toolTip()), "/music/One.mp3");
    EXPECT_EQ(LabelText("lblQuality"), "128 bit");
    EXPECT_EQ(LabelText("lblTime"), "01:05");
    EXPECT_EQ(LabelText("lblLength"), "Spieldauer: 01:05 min");
}

TEST_F(PlayerLooksTest, TabReachesEveryControlInTheOrderOfTheWindow) {
    StartPlayer();
    Player().activateWindow();
    (void)QTest::qWaitForWindowActive(&Player());
    Part<QWidget>("cmdLast").setFocus();
    Texts reached;
    for (const QWidget* focus = Player().focusWidget();
         std::find(reached.begin(), reached.end(), FromQString(focus->objectName())) == reached.end();
         focus = Player().focusWidget()) {
        reached.push_back(FromQString(focus->objectName()));
        QTest::keyClick(Player().focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(reached, (Texts{"cmdLast",
                              "cmdPlay",
                              "cmdPause",
                              "cmdStop",
                              "cmdNext",
                              "Slider1",
                              "lblTime",
                              "Slider3",
                              "chkRepeat",
                              "chkRepeatAll",
                              "cmdRandomize",
                              "lstFiles",
                              "cmdAdd",
                              "cmdRem",
                              "cmdRemAll",
                              "cmdLoadPlaylist",
                              "cmdCreatePlaylist",
                              "cmdCreateCategory",
                              "cmdMaindialog",
                              "cmdMinimize"}));
}

TEST_F(PlayerLooksTest, EveryControlHasANameForAScreenReader) {
    StartPlayer();
    for (const char* name : PictureButtons) {
        EXPECT_NE(FromQString(Part<QWidget>(name).accessibleName()), "") << name;
    }
    EXPECT_EQ(FromQString(Part<QWidget>("Slider1").accessibleName()), "Position im Stück");
    EXPECT_EQ(FromQString(Part<QWidget>("Slider3").accessibleName()), "Volume");
    EXPECT_EQ(FromQString(Part<QWidget>("lstFiles").accessibleName()), "Liste der Stücke");
}

TEST_F(PlayerLooksTest, F1OpensThePlayersPageOnEveryControl) {
    StartPlayer();
    std::size_t pressed = 0;
    for (QWidget* control : Player().findChildren<QWidget*>()) {
        if (control->focusPolicy() != Qt::NoFocus) {
            QTest::keyClick(control, Qt::Key_F1);
            ++pressed;
            ASSERT_EQ(helpViewer.shown.size(), pressed) << FromQString(control->objectName());
            EXPECT_EQ(helpViewer.shown.back().second, "HTML\\player.html");
        }
    }
    EXPECT_GE(pressed, 20U);
}

TEST_F(PlayerLooksTest, ReasonsForSilenceAreSaidOnceInTheWindow) {
    AddFile("Abba", "One");
    Start();
    silenceReason = "Kein Tongerät";
    windows->Player().Show();
    EXPECT_TRUE(Part<QLabel>("lblStatus").isVisible());
    EXPECT_EQ(LabelText("lblStatus"), "Kein Tongerät");
    silenceReason.clear();
    engine->ChangePlaying();
    EXPECT_FALSE(Part<QLabel>("lblStatus").isVisible());
}

} // namespace quavernet::test
