#include "gui/GuiTest.h"

#include "app/LoadResString.h"
#include "support/LongWorkDouble.h"
#include "tree/frmCategoryName.h"

#include <QLineEdit>
#include <QPushButton>

namespace quavernet::test {

namespace {

class CategoryNameDialogTest : public GuiTest {
protected:
    CategoryNameDialogTest() {
        AddFile("Abba", "One");
        AddFile("Cure", "Two");
        Start();
    }

    void Open() {
        dialog = std::make_unique<frmCategoryName>(
            &Form(), Texts{"/music/Two.mp3", "/music/unknown.mp3", "/music/One.mp3"}, Form().Parts().Views);
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == dialog.get(); }));
    }
    QLineEdit& Field() { return *dialog->findChild<QLineEdit*>(QStringLiteral("txtCategoryName")); }
    QPushButton& Button(const char* name) { return *dialog->findChild<QPushButton*>(QLatin1String(name)); }
    void Type(const char* name) {
        Field().setText(QString::fromUtf8(name));
        QTest::keyClick(&Field(), Qt::Key_Return);
    }
    std::size_t Categories() { return mainModule.Connection->Query("Select * from Categories").Rows(); }
    Texts Nodes() {
        Texts texts;
        for (const TreeNode& node : Form().Tree().Model().Nodes()) {
            texts.push_back(node.Key + " " + node.Text);
        }
        return texts;
    }

    std::unique_ptr<frmCategoryName> dialog;
};

} // namespace

TEST_F(CategoryNameDialogTest, TheCaptionsAreThoseOfTheLanguage) {
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        Open();
        EXPECT_EQ(Caption(Button("cmdFinish").text()), LoadResString(104));
        EXPECT_EQ(Caption(Button("cmdCancel").text()), LoadResString(102));
        EXPECT_EQ(FromQString(dialog->windowTitle()), LoadResString(311));
    }
    EXPECT_EQ(QuavernetGER.GetResourceString(311), "Name der Kategorie...");
}

TEST_F(CategoryNameDialogTest, EnterMakesTheCategoryShowsItAndCloses) {
    Open();
    EXPECT_EQ(dialog->focusWidget(), &Field());
    Type("Party");
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(Nodes(), (Texts{"Parent Bibliothek", "CAT_Party Party (02:10)", "file1pos1 Two.mp3",
                              "file2pos3 One.mp3"}));
}

TEST_F(CategoryNameDialogTest, TheButtonMakesTheCategoryAndLeavesTheDialogOpen) {
    Open();
    Field().setText(QStringLiteral("Party"));
    Button("cmdFinish").click();
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(Nodes().size(), 4U);
    Button("cmdFinish").click();
    EXPECT_EQ(msgBox.shown.size(), 1U) << "it exists by now";
    Field().setText(QStringLiteral("Another"));
    Button("cmdFinish").click();
    EXPECT_EQ(Categories(), 2U);
}

TEST_F(CategoryNameDialogTest, AnEmptyNameIsToldAndTheFieldGetsTheKeyboard) {
    Open();
    Button("cmdFinish").setFocus();
    Button("cmdFinish").click();
    EXPECT_EQ(msgBox.shown, (std::vector<ShownBox>{{"Bitte geben Sie einen Namen für die Kategorie ein!",
                                                    "Fertigstellen nicht möglich", MsgBox::Icon::Information,
                                                    MsgBox::Buttons::Ok}}));
    EXPECT_EQ(dialog->focusWidget(), &Field());
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(CategoryNameDialogTest, EnterClosesTheDialogAlsoAfterARefusal) {
    Open();
    Type("");
    EXPECT_EQ(msgBox.shown.size(), 1U);
    EXPECT_FALSE(dialog->isVisible());
    mainModule.Connection->Execute("Insert into Categories (Category) values ('Party')");
    Open();
    Type("PARTY");
    EXPECT_EQ(msgBox.shown.size(), 2U);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(Categories(), 1U);
}

TEST_F(CategoryNameDialogTest, ANameThatTheLibraryRefusesIsToldAndTheDialogStays) {
    Open();
    Type("it's");
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].icon, MsgBox::Icon::Critical);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(FromQString(Field().text()), "it's");
    EXPECT_EQ(Categories(), 0U);
    Type("its");
    EXPECT_EQ(Categories(), 1U) << "the files are still there";
}

TEST_F(CategoryNameDialogTest, EventsRunBetweenTheCategoryAndTheEndOfTheDialog) {
    Open();
    Texts seen;
    events.onDoEvents = [&] {
        seen.push_back(std::string(dialog->isVisible() ? "open " : "closed ") + std::to_string(Categories()));
    };
    services.events = &events;
    Type("Party");
    services.events = &realEvents;
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.back(), "open 1");
    EXPECT_FALSE(dialog->isVisible());
    seen.clear();
    Open();
    services.events = &events;
    Type("");
    services.events = &realEvents;
    EXPECT_EQ(seen, Texts{"open 1"}) << "after a refusal too";
}

TEST_F(CategoryNameDialogTest, TheFieldHasNoFilter) {
    Open();
    QTest::keyClicks(&Field(), QStringLiteral("A-Jazz & 'Co'"));
    EXPECT_EQ(FromQString(Field().text()), "A-Jazz & 'Co'");
}

TEST_F(CategoryNameDialogTest, CancelAndEscapeMakeNothing) {
    for (const bool button : {true, false}) {
        Open();
        Field().setText(QStringLiteral("Party"));
        if (button) {
            Button("cmdCancel").click();
        } else {
            QTest::keyClick(&Field(), Qt::Key_Escape);
        }
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(dialog->result(), QDialog::Rejected);
    }
    EXPECT_EQ(Categories(), 0U);
}

TEST_F(CategoryNameDialogTest, NothingIsWrittenWhileAScanRunsOverIt) {
    Open();
    mainModule.ScanRunning = true;
    Type("Party");
    Button("cmdFinish").click();
    mainModule.ScanRunning = false;
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(Categories(), 0U);
}

TEST_F(CategoryNameDialogTest, ItCannotBeMinimised) {
    Open();
    dialog->showMinimized();
    EXPECT_FALSE(dialog->isMinimized());
}

TEST_F(CategoryNameDialogTest, F1OpensThePlayersPageAndOnTheButtonThatOfTheCovers) {
    Open();
    for (const char* name : {"txtCategoryName", "cmdCancel", "cmdFinish"}) {
        QTest::keyClick(dialog->findChild<QWidget*>(QLatin1String(name)), Qt::Key_F1);
    }
    ASSERT_EQ(helpViewer.shown.size(), 3U);
    EXPECT_EQ(helpViewer.shown[0].second, "HTML\\player.html");
    EXPECT_EQ(helpViewer.shown[1].second, "HTML\\player.html");
    EXPECT_EQ(helpViewer.shown[2].second, "HTML\\coveradministration.html");
}

} // namespace quavernet::test
