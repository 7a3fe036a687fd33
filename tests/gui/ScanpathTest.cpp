#include "gui/GuiTest.h"

#include "app/LoadResString.h"
#include "scanner/frmScanpath.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace quavernet::test {

namespace {

class ScanpathTest : public GuiTest {
protected:
    ScanpathTest() {
        std::filesystem::create_directory(folder / "music");
        Start();
    }

    void Open() {
        dialog = std::make_unique<frmScanpath>(&Form());
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == dialog.get(); }));
    }
    template <typename T> T& Part(const char* name) { return *dialog->findChild<T*>(QLatin1String(name)); }
    std::string Text(const char* name) { return Caption(Part<QAbstractButton>(name).text()); }
    std::string Path() { return FromQString(Part<QLineEdit>("txtScanpath").text()); }
    void Press(Qt::Key key) { QTest::keyClick(dialog->focusWidget(), key); }

    std::unique_ptr<frmScanpath> dialog;
};

} // namespace

TEST_F(ScanpathTest, TheCaptionsAreThoseOfTheLanguage) {
    const std::pair<const char*, int> buttons[] = {
        {"cmdBrowse", 117}, {"cmdOK", 101}, {"cmdCancel", 102}, {"chkScanPath", 581}};
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        Open();
        for (const auto& [name, id] : buttons) {
            EXPECT_EQ(Text(name), LoadResString(id)) << name;
        }
        EXPECT_EQ(Caption(Part<QLabel>("Label2").text()), LoadResString(582));
        EXPECT_EQ(FromQString(dialog->windowTitle()), LoadResString(583));
    }
    EXPECT_EQ(QuavernetGER.GetResourceString(583), "Standard Scanpfad");
    EXPECT_NE(FromQString(dialog->windowTitle()), "Standard Scanpfad");
}

TEST_F(ScanpathTest, TheStoredPathIsShown) {
    Open();
    EXPECT_FALSE(Part<QCheckBox>("chkScanPath").isChecked());
    EXPECT_EQ(Path(), "");
    settings.values["ScanpathValue"] = "1";
    settings.values["Scanpath"] = "/Müsik/";
    Open();
    EXPECT_TRUE(Part<QCheckBox>("chkScanPath").isChecked());
    EXPECT_EQ(Path(), "/Müsik/");
}

TEST_F(ScanpathTest, BrowsingFillsInThePathWithItsSeparator) {
    Open();
    dialogs.folder = folder / "music";
    Part<QPushButton>("cmdBrowse").click();
    EXPECT_EQ(dialogs.titles, Texts{"Wählen Sie einen Ordner"});
    EXPECT_EQ(Path(), folder / "music/");
    dialogs.folder.reset();
    Part<QPushButton>("cmdBrowse").click();
    EXPECT_EQ(Path(), folder / "music/");
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(ScanpathTest, TheKeyboardAloneStoresAPath) {
    Open();
    EXPECT_EQ(dialog->focusWidget(), &Part<QCheckBox>("chkScanPath"));
    Press(Qt::Key_Space);
    Press(Qt::Key_Tab);
    EXPECT_EQ(dialog->focusWidget(), &Part<QLineEdit>("txtScanpath"));
    QTest::keyClicks(dialog->focusWidget(), ToQString(folder / "music"));
    Press(Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(settings.values["Scanpath"], folder / "music");
    EXPECT_EQ(settings.values["ScanpathValue"], "1");
    EXPECT_EQ(dialogs.titles, Texts{}) << "Return in the text is OK, not Browse";
}

TEST_F(ScanpathTest, TabsGoFromTheTextOverBrowseToTheButtons) {
    Open();
    for (const char* name : {"txtScanpath", "cmdBrowse", "cmdOK", "cmdCancel"}) {
        Press(Qt::Key_Tab);
        EXPECT_EQ(FromQString(dialog->focusWidget()->objectName()), name);
    }
}

TEST_F(ScanpathTest, APathThatDoesNotExistKeepsTheDialogOpen) {
    Open();
    for (const std::string& path : {std::string(), folder / "gone"}) {
        Part<QLineEdit>("txtScanpath").setText(ToQString(path));
        msgBox.shown.clear();
        Part<QPushButton>("cmdOK").setFocus();
        Part<QPushButton>("cmdOK").click();
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_EQ(dialog->focusWidget(), &Part<QLineEdit>("txtScanpath")) << "where it can be put right";
        ASSERT_EQ(msgBox.shown.size(), 1U);
        EXPECT_EQ(msgBox.shown[0],
                  (ShownBox{"Der Pfad existiert nicht!\nSpeichern nicht möglich.", "Speichern abgebrochen",
                            MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}));
    }
    EXPECT_FALSE(settings.values.contains("Scanpath"));
    EXPECT_FALSE(settings.values.contains("ScanpathValue"));
}

TEST_F(ScanpathTest, EscapeAndCancelStoreNothing) {
    Open();
    Part<QLineEdit>("txtScanpath").setText(ToQString(folder / "music"));
    Press(Qt::Key_Escape);
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    Open();
    Part<QLineEdit>("txtScanpath").setText(ToQString(folder / "music"));
    Part<QPushButton>("cmdCancel").click();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_FALSE(settings.values.contains("Scanpath"));
}

TEST_F(ScanpathTest, APathThatIsNoUtf8KeepsItsBytesUntilItIsEdited) {
    const std::string path = folder / "m\xFCsic";
    std::filesystem::create_directory(path);
    Open();
    dialogs.folder = path;
    Part<QPushButton>("cmdBrowse").click();
    Part<QPushButton>("cmdOK").click();
    EXPECT_EQ(settings.values["Scanpath"], path + "/");
    Open();
    Part<QPushButton>("cmdOK").click();
    EXPECT_EQ(settings.values["Scanpath"], path + "/");
    Open();
    QTest::keyClick(&Part<QLineEdit>("txtScanpath"), Qt::Key_X);
    Part<QPushButton>("cmdOK").click();
    EXPECT_EQ(settings.values["Scanpath"], path + "/") << "the edited text names no folder";
    EXPECT_EQ(msgBox.shown.size(), 1U);
}

TEST_F(ScanpathTest, F1OnEachControlOpensItsHelpPage) {
    Open();
    for (const char* name : {"chkScanPath", "txtScanpath", "cmdBrowse", "cmdOK", "cmdCancel"}) {
        helpViewer.shown.clear();
        QTest::keyClick(&Part<QWidget>(name), Qt::Key_F1);
        ASSERT_EQ(helpViewer.shown.size(), 1U) << name;
        EXPECT_EQ(helpViewer.shown[0].second, "HTML\\scanpath.html") << name;
    }
}

TEST_F(ScanpathTest, TheMenuOpensItModalOverTheMainWindow) {
    bool seen = false;
    QTimer::singleShot(0, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        seen = modal != nullptr && modal->objectName() == QLatin1String("frmScanpath") &&
               modal->parentWidget() == &Form();
        if (modal != nullptr) {
            modal->close();
        }
    });
    Action("mnuStandardScanningPath").trigger();
    EXPECT_TRUE(seen);
}

TEST_F(ScanpathTest, AScanTakesTheStoredPathWithoutAsking) {
    Open();
    Part<QCheckBox>("chkScanPath").click();
    Part<QLineEdit>("txtScanpath").setText(ToQString(folder / "music/"));
    Part<QPushButton>("cmdOK").click();
    Action("scan").trigger();
    EXPECT_EQ(dialogs.titles, Texts{});
    settings.values["Scanpath"] = "";
    Action("scan").trigger();
    EXPECT_EQ(dialogs.titles, Texts{}) << "an empty standard path starts no scan at all";
    EXPECT_TRUE(Action("scan").isEnabled());
}

} // namespace quavernet::test
