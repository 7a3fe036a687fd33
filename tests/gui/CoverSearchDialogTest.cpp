#include "gui/GuiTest.h"

#include "app/LoadResString.h"
#include "extras/CoverSearchOptions.h"
#include "extras/frmCoverSearchOptions.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace quavernet::test {

namespace {

class CoverSearchDialogTest : public GuiTest {
protected:
    CoverSearchDialogTest() { Start(); }

    void Open() {
        dialog = std::make_unique<frmCoverSearchOptions>(&Form());
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == dialog.get(); }));
    }
    template <typename T> T& Part(const char* name) { return *dialog->findChild<T*>(QLatin1String(name)); }
    std::string LabelText(const char* name) { return Caption(Part<QLabel>(name).text()); }
    QLineEdit& Field() { return Part<QLineEdit>("txtSearchString"); }

    std::unique_ptr<frmCoverSearchOptions> dialog;
};

} // namespace

TEST_F(CoverSearchDialogTest, TheTextsAreThoseOfTheLanguageWithAnExample) {
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        Open();
        EXPECT_EQ(FromQString(dialog->windowTitle()), LoadResString(510));
        EXPECT_EQ(LabelText("Label1"), LoadResString(507));
        EXPECT_EQ(LabelText("Label2"), LoadResString(508));
        EXPECT_EQ(LabelText("Label3"), LoadResString(509));
        EXPECT_EQ(FromQString(Part<QLabel>("Label4").text()),
                  "http://artwork.example.org/search.php?search=#coverstring#&&cat=1");
        EXPECT_EQ(Caption(Part<QPushButton>("cmdOK").text()), LoadResString(101));
        EXPECT_EQ(Caption(Part<QPushButton>("cmdCancel").text()), LoadResString(102));
        for (const char* name : {"Label2", "Label4"}) {
            const auto& label = Part<QLabel>(name);
            EXPECT_GE(label.height(), label.heightForWidth(label.width())) << name;
        }
    }
}

TEST_F(CoverSearchDialogTest, TheMenuOpensItModal) {
    bool seen = false;
    QTimer::singleShot(0, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        seen = modal != nullptr && modal->objectName() == QLatin1String("frmCoverSearchOptions") &&
               modal->parentWidget() == &Form();
        modal->close();
    });
    Action("mnuCoverOnlineSearch").trigger();
    EXPECT_TRUE(seen);
    EXPECT_FALSE(settings.values.contains("Coverstring"));
}

TEST_F(CoverSearchDialogTest, ItsDefaultIsAnotherOneThanThatOfTheSearch) {
    Open();
    EXPECT_EQ(FromQString(Field().text()),
              "http://artwork.example.org/search.php?search=#coverstring#&&cat=1");
    EXPECT_NE(FromQString(Field().text()), SearchTemplate());
    Part<QPushButton>("cmdOK").click();
    EXPECT_EQ(settings.values["Coverstring"],
              "http://artwork.example.org/search.php?search=#coverstring#&&cat=1");
}

TEST_F(CoverSearchDialogTest, OkStoresTheTextAsItIs) {
    for (const char* text : {"", "  x/#coverstring#?\"ü'&#coverstring#  ", "ftp://x"}) {
        Open();
        Field().selectAll();
        QTest::keyClick(&Field(), Qt::Key_Delete);
        Field().insert(ToQString(text));
        QTest::keyClick(&Field(), Qt::Key_Return);
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(settings.values["Coverstring"], text);
        Open();
        EXPECT_EQ(FromQString(Field().text()), text);
    }
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(CoverSearchDialogTest, CancelAndEscapeStoreNothing) {
    settings.values["Coverstring"] = "old";
    for (const bool escape : {false, true}) {
        Open();
        Field().setText(QStringLiteral("new"));
        if (escape) {
            QTest::keyClick(&Field(), Qt::Key_Escape);
        } else {
            Part<QPushButton>("cmdCancel").click();
        }
        EXPECT_EQ(dialog->result(), QDialog::Rejected);
        EXPECT_EQ(settings.values["Coverstring"], "old");
    }
}

TEST_F(CoverSearchDialogTest, F1OpensItsPage) {
    Open();
    QTest::keyClick(&Field(), Qt::Key_F1);
    ASSERT_EQ(helpViewer.shown.size(), 1U);
    EXPECT_EQ(helpViewer.shown[0].second, "HTML\\coversearch.html");
}

} // namespace quavernet::test
