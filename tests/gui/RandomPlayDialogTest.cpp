#include "gui/GuiTest.h"

#include "app/LoadResString.h"
#include "playback/frmRandomPlay.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

namespace quavernet::test {

namespace {

class RandomPlayDialogTest : public GuiTest {
protected:
    RandomPlayDialogTest() { Start(); }

    void Open() {
        dialog = std::make_unique<frmRandomPlay>(&Form());
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == dialog.get(); }));
    }
    void OpenWith(const std::string& option, const std::string& count) {
        settings.values["CheckedRandomOpt"] = option;
        settings.values["FileCountRandomPlay"] = count;
        Open();
    }
    template <typename T> T& Part(const char* name) { return *dialog->findChild<T*>(QLatin1String(name)); }
    QRadioButton& All() { return Part<QRadioButton>("optAllFiles"); }
    QRadioButton& Count() { return Part<QRadioButton>("optFileCount"); }
    QLineEdit& Field() { return Part<QLineEdit>("txtFileCount"); }
    Texts Stored() { return {settings.values["CheckedRandomOpt"], settings.values["FileCountRandomPlay"]}; }

    std::unique_ptr<frmRandomPlay> dialog;
};

} // namespace

TEST_F(RandomPlayDialogTest, WithoutSettingsAllFilesAreChosenAndTheCountIsGrey) {
    Open();
    EXPECT_TRUE(All().isChecked());
    EXPECT_FALSE(Count().isChecked());
    EXPECT_EQ(FromQString(Field().text()), "200");
    EXPECT_FALSE(Field().isEnabled());
}

TEST_F(RandomPlayDialogTest, AStoredCountIsReadyToBeTypedOver) {
    OpenWith("FileCount", "1000");
    EXPECT_TRUE(Count().isChecked());
    EXPECT_TRUE(Field().isEnabled());
    EXPECT_EQ(dialog->focusWidget(), &Field());
    EXPECT_EQ(FromQString(Field().selectedText()), "1000");
}

TEST_F(RandomPlayDialogTest, AStoredChoiceOfNoSenseShowsAllFiles) {
    OpenWith("some", "5");
    EXPECT_TRUE(All().isChecked());
    EXPECT_FALSE(Field().isEnabled());
}

TEST_F(RandomPlayDialogTest, TheOptionsSwitchTheField) {
    Open();
    QTest::mouseClick(&Count(), Qt::LeftButton, {}, QPoint(5, Count().height() / 2));
    EXPECT_TRUE(Field().isEnabled());
    EXPECT_EQ(dialog->focusWidget(), &Field());
    EXPECT_EQ(FromQString(Field().selectedText()), "200");
    QTest::mouseClick(&All(), Qt::LeftButton, {}, QPoint(5, All().height() / 2));
    EXPECT_FALSE(Field().isEnabled());
}

TEST_F(RandomPlayDialogTest, TheKeyboardAloneChoosesACount) {
    Open();
    EXPECT_EQ(dialog->focusWidget(), &All());
    QTest::keyClick(&All(), Qt::Key_Down);
    ASSERT_TRUE(QTest::qWaitFor([this] { return dialog->focusWidget() == &Field(); }));
    QTest::keyClicks(&Field(), QStringLiteral("25"));
    QTest::keyClick(&Field(), Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(Stored(), (Texts{"FileCount", "25"}));
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(RandomPlayDialogTest, TheTextIsStoredAsItStandsWhicheverOptionIsChosen) {
    OpenWith("FileCount", "7");
    Field().setText(QStringLiteral(" viele"));
    Part<QPushButton>("cmdOK").click();
    EXPECT_EQ(Stored(), (Texts{"FileCount", " viele"}));
    OpenWith("FileCount", "9");
    All().click();
    Part<QPushButton>("cmdOK").click();
    EXPECT_EQ(Stored(), (Texts{"AllFiles", "9"}));
}

TEST_F(RandomPlayDialogTest, ACountAboveTheLimitIsWarnedOfAndStored) {
    OpenWith("FileCount", "32768");
    Part<QPushButton>("cmdOK").click();
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].title, "Achtung");
    EXPECT_EQ(msgBox.shown[0].icon, MsgBox::Icon::Exclamation);
    EXPECT_EQ(Stored(), (Texts{"FileCount", "32768"}));
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(RandomPlayDialogTest, EscapeChangesNothing) {
    OpenWith("FileCount", "7");
    Field().setText(QStringLiteral("8"));
    QTest::keyClick(&Field(), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(Stored(), (Texts{"FileCount", "7"}));
}

TEST_F(RandomPlayDialogTest, TheTextsAreThoseOfTheLanguageAndEveryPartHasAName) {
    Open();
    EXPECT_EQ(FromQString(dialog->windowTitle()), "Random Play Optionen");
    EXPECT_EQ(FromQString(Part<QGroupBox>("Frame1").title()), "Anzahl der abzuspielenden Dateien");
    EXPECT_EQ(Caption(All().text()), "Alle Dateien");
    EXPECT_EQ(Caption(Part<QPushButton>("cmdOK").text()), "OK");
    EXPECT_EQ(FromQString(Count().accessibleName()), "Anzahl der abzuspielenden Dateien");
    EXPECT_EQ(FromQString(Field().accessibleName()), "Anzahl der abzuspielenden Dateien");
    settings.values["Language"] = "ENG";
    Open();
    EXPECT_EQ(FromQString(dialog->windowTitle()), QuavernetENG.GetResourceString(561));
    EXPECT_EQ(FromQString(Part<QGroupBox>("Frame1").title()), QuavernetENG.GetResourceString(560));
    EXPECT_EQ(Caption(All().text()), "All files");
    EXPECT_EQ(Caption(Part<QPushButton>("cmdOK").text()), QuavernetENG.GetResourceString(101));
}

TEST_F(RandomPlayDialogTest, F1OnEachControlOpensItsHelpPage) {
    OpenWith("FileCount", "7");
    for (const char* name : {"optAllFiles", "optFileCount", "txtFileCount", "cmdOK"}) {
        helpViewer.shown.clear();
        QTest::keyClick(&Part<QWidget>(name), Qt::Key_F1);
        ASSERT_EQ(helpViewer.shown.size(), 1U) << name;
        EXPECT_EQ(helpViewer.shown[0].second, "HTML\\randomplayoptions.html") << name;
    }
}

TEST_F(RandomPlayDialogTest, TheMenuOpensItModalOverTheMainWindow) {
    bool seen = false;
    QTimer::singleShot(0, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        seen = modal != nullptr && modal->objectName() == QLatin1String("frmRandomPlay") &&
               modal->parentWidget() == &Form();
        if (modal != nullptr) {
            modal->close();
        }
    });
    Action("mnuRandom").trigger();
    EXPECT_TRUE(seen);
    EXPECT_EQ(settings.values.count("CheckedRandomOpt"), 0U);
}

} // namespace quavernet::test
