#include "gui/GuiTest.h"

#include "app/LoadResString.h"
#include "extras/frmOptToplist.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace quavernet::test {

namespace {

class OptToplistTest : public GuiTest {
protected:
    OptToplistTest() {
        AddFile("Abba", "One");
        mainModule.Connection->Execute("Update Files Set Hits = 4");
        Start();
    }

    void Open() {
        dialog = std::make_unique<frmOptToplist>(&Form());
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == dialog.get(); }));
    }
    template <typename T> T& Part(const char* name) { return *dialog->findChild<T*>(QLatin1String(name)); }
    QLineEdit& Field() { return Part<QLineEdit>("txtFileCount"); }
    std::string Stored() { return settings.values["FileCountTopList"]; }
    static std::string Hits() {
        return mainModule.Connection->Query("Select Hits from Files").At(0, 0).Text();
    }

    std::unique_ptr<frmOptToplist> dialog;
};

} // namespace

TEST_F(OptToplistTest, ItComesUpWithTheStoredLengthReadyToBeTypedOver) {
    Open();
    EXPECT_EQ(FromQString(Field().selectedText()), "10");
    settings.values["FileCountTopList"] = "abc 25";
    Open();
    EXPECT_EQ(dialog->focusWidget(), &Field());
    EXPECT_EQ(FromQString(Field().selectedText()), "abc 25");
    EXPECT_FALSE(Part<QCheckBox>("chkResetStatistik").isChecked());
}

TEST_F(OptToplistTest, EachActivationSelectsTheWholeText) {
    Open();
    Part<QPushButton>("cmdOK").setFocus();
    Field().deselect();
    Form().activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Form(); }));
    dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == dialog.get(); }));
    EXPECT_EQ(dialog->focusWidget(), &Field());
    EXPECT_EQ(FromQString(Field().selectedText()), "10");
}

TEST_F(OptToplistTest, EnterInTheFieldStoresWhatStandsThere) {
    for (const char* text : {"25", "-5", "abc", "99999999999", " 7"}) {
        Open();
        QTest::keyClicks(&Field(), QString::fromUtf8(text));
        QTest::keyClick(&Field(), Qt::Key_Return);
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(dialog->result(), QDialog::Accepted);
        EXPECT_EQ(Stored(), text);
    }
    EXPECT_EQ(Hits(), "4");
}

TEST_F(OptToplistTest, WithoutATextTheDialogStays) {
    Open();
    Part<QCheckBox>("chkResetStatistik").setChecked(true);
    Field().clear();
    Part<QPushButton>("cmdOK").click();
    QTest::keyClick(&Field(), Qt::Key_Return);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(settings.values.count("FileCountTopList"), 0U);
    EXPECT_EQ(Hits(), "4");
}

TEST_F(OptToplistTest, TheBoxResetsAllCountsAtOnce) {
    Open();
    Part<QCheckBox>("chkResetStatistik").click();
    EXPECT_EQ(Hits(), "4") << "not before the button";
    Part<QPushButton>("cmdOK").click();
    EXPECT_EQ(Hits(), "0");
    EXPECT_EQ(Stored(), "10");
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(OptToplistTest, EscapeChangesNothing) {
    Open();
    Part<QCheckBox>("chkResetStatistik").setChecked(true);
    Field().setText(QStringLiteral("8"));
    QTest::keyClick(&Field(), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(settings.values.count("FileCountTopList"), 0U);
    EXPECT_EQ(Hits(), "4");
}

TEST_F(OptToplistTest, TheTextsAreThoseOfTheLanguageAndEveryPartHasAName) {
    Open();
    EXPECT_EQ(FromQString(dialog->windowTitle()), "Charts und Toplist");
    EXPECT_EQ(Caption(Part<QLabel>("Label1").text()), "Anzahl der angezeigten Dateien:");
    EXPECT_EQ(Caption(Part<QCheckBox>("chkResetStatistik").text()), "Topliststatistik zurücksetzen");
    EXPECT_EQ(Caption(Part<QPushButton>("cmdOK").text()), "OK");
    EXPECT_EQ(FromQString(Field().accessibleName()), "Anzahl der angezeigten Dateien:");
    settings.values["Language"] = "ENG";
    Open();
    EXPECT_EQ(FromQString(dialog->windowTitle()), QuavernetENG.GetResourceString(549));
    EXPECT_EQ(Caption(Part<QLabel>("Label1").text()), QuavernetENG.GetResourceString(547));
    EXPECT_EQ(Caption(Part<QCheckBox>("chkResetStatistik").text()), QuavernetENG.GetResourceString(548));
}

TEST_F(OptToplistTest, F1OnEachControlOpensItsHelpPage) {
    Open();
    for (const char* name : {"txtFileCount", "chkResetStatistik", "cmdOK"}) {
        helpViewer.shown.clear();
        QTest::keyClick(&Part<QWidget>(name), Qt::Key_F1);
        ASSERT_EQ(helpViewer.shown.size(), 1U) << name;
        EXPECT_EQ(helpViewer.shown[0].second, "HTML\\toplists.html") << name;
    }
}

TEST_F(OptToplistTest, TheMenuOpensItModalOverTheMainWindowAndAlone) {
    bool seen = false;
    QTimer::singleShot(0, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        seen = modal != nullptr && modal->objectName() == QLatin1String("frmOptToplist") &&
               modal->parentWidget() == &Form();
        EXPECT_TRUE(mainModule.ActsAlone);
        EXPECT_FALSE(Form().Parts().Commands.Run("top"));
        if (modal != nullptr) {
            modal->close();
        }
    });
    Action("mnuToplists").trigger();
    EXPECT_TRUE(seen);
    EXPECT_FALSE(mainModule.ActsAlone);
}

} // namespace quavernet::test
