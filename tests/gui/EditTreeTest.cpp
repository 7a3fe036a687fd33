#include "gui/GuiTest.h"

#include "app/LoadResString.h"
#include "tree/frmEditTree.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>

namespace quavernet::test {

namespace {

class EditTreeTest : public GuiTest {
protected:
    EditTreeTest() {
        Start();
        for (const char* name : {"A", "B", "C"}) {
            mainModule.Connection->Execute("Insert into Categories (Category) values ('" + std::string(name) +
                                           "')");
        }
    }

    void Open() {
        dialog = std::make_unique<frmEditTree>(&Form());
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == dialog.get(); }));
    }
    template <typename T> T& Part(const char* name) { return *dialog->findChild<T*>(QLatin1String(name)); }
    QLineEdit& Field() { return Part<QLineEdit>("txtEdit"); }
    QListWidget& List() { return Part<QListWidget>("lstCategories"); }
    void Click(const char* name) { QTest::mouseClick(&Part<QPushButton>(name), Qt::LeftButton); }
    void ClickRow(int row) {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {},
                          List().visualItemRect(List().item(row)).center());
    }
    std::string Typed() { return FromQString(Field().text()); }
    Texts Enabled() {
        Texts names;
        for (const char* name : {"txtEdit", "cmdSave", "cmdNew", "cmdEdit", "cmdDelete"}) {
            if (Part<QWidget>(name).isEnabled()) {
                names.emplace_back(name);
            }
        }
        return names;
    }
    Texts Shown() {
        Texts names;
        for (int row = 0; row < List().count(); ++row) {
            names.push_back(FromQString(List().item(row)->text()));
        }
        return names;
    }
    /// The key of a letter that other keyboards have.
    void TypeLetter(QChar letter) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
        QCoreApplication::sendEvent(&Field(), &press);
    }
    void Paste(const char* text) {
        QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
        Field().paste();
    }

    const Texts idle{"cmdNew", "cmdEdit", "cmdDelete"};
    const Texts typing{"txtEdit", "cmdSave"};
    std::unique_ptr<frmEditTree> dialog;
};

} // namespace

TEST_F(EditTreeTest, TheCaptionsAreThoseOfTheLanguage) {
    const std::pair<const char*, int> buttons[] = {
        {"cmdNew", 111}, {"cmdEdit", 109}, {"cmdDelete", 107}, {"cmdSave", 110}, {"cmdOK", 101}};
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        Open();
        for (const auto& [name, id] : buttons) {
            EXPECT_EQ(Caption(Part<QPushButton>(name).text()), LoadResString(id)) << name;
        }
        EXPECT_EQ(Caption(Part<QLabel>("Label1").text()), LoadResString(528));
        EXPECT_EQ(FromQString(dialog->windowTitle()), LoadResString(529));
    }
    EXPECT_EQ(QuavernetGER.GetResourceString(529), "Baum Verwaltung");
}

TEST_F(EditTreeTest, ItOpensIdleWithTheKeyboardInTheList) {
    Open();
    EXPECT_EQ(Shown(), (Texts{"A", "B", "C"}));
    EXPECT_EQ(Enabled(), Texts{"cmdNew"}) << "no category is selected";
    EXPECT_TRUE(List().selectedItems().isEmpty());
    EXPECT_EQ(dialog->focusWidget(), &List());
}

TEST_F(EditTreeTest, ACategoryIsMadeByKeysAlone) {
    Open();
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_EQ(Enabled(), typing);
    EXPECT_EQ(dialog->focusWidget(), &Field());
    QTest::keyClicks(&Field(), QStringLiteral("Big Band 2"));
    QTest::keyClick(&Field(), Qt::Key_Return);
    EXPECT_TRUE(dialog->isVisible()) << "Return in the field is no OK";
    EXPECT_EQ(Shown(), (Texts{"A", "B", "C", "Big Band 2"}));
    EXPECT_EQ(Enabled(), idle);
    EXPECT_EQ(Typed(), "");
}

TEST_F(EditTreeTest, TheKeypadsEnterSavesToo) {
    Open();
    Click("cmdNew");
    QTest::keyClicks(&Field(), QStringLiteral("D"));
    QTest::keyClick(&Field(), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(Shown().size(), 4U);
}

TEST_F(EditTreeTest, EditingShowsTheWholeNameMarkedAndRenamesTheLastCategory) {
    Open();
    ClickRow(0);
    EXPECT_EQ(Enabled(), idle);
    Click("cmdEdit");
    EXPECT_EQ(FromQString(Field().selectedText()), "A");
    EXPECT_EQ(Field().cursorPosition(), 1);
    QTest::keyClicks(&Field(), QStringLiteral("D"));
    Click("cmdSave");
    EXPECT_EQ(Shown(), (Texts{"A", "B", "D"}));
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(EditTreeTest, AnArrowKeyInTheListSelectsLikeAClick) {
    Open();
    QTest::keyClick(&List(), Qt::Key_Down);
    EXPECT_EQ(Enabled(), idle);
    EXPECT_EQ(List().selectedItems().size(), 1);
}

TEST_F(EditTreeTest, ASelectionByTheKeyboardAndADeleteLeaveWhatIsTyped) {
    Open();
    Click("cmdNew");
    QTest::keyClicks(&Field(), QStringLiteral("Big"));
    QTest::keyClick(&List(), Qt::Key_Down);
    EXPECT_EQ(Typed(), "Big");
    EXPECT_EQ(List().currentRow(), 0) << "the first arrow selects the first category";
    QTest::keyClick(&List(), Qt::Key_Down);
    EXPECT_EQ(List().currentRow(), 1);
    EXPECT_EQ(Typed(), "Big");
    Click("cmdDelete");
    EXPECT_EQ(Shown(), (Texts{"A", "C"}));
    EXPECT_EQ(Typed(), "Big");
    QTest::keyClick(&Field(), Qt::Key_Return);
    EXPECT_EQ(Shown(), (Texts{"A", "C", "Big"}));
    EXPECT_EQ(Typed(), "");
}

TEST_F(EditTreeTest, TheCtrlKeyTakesNoSelectionAway) {
    Open();
    ClickRow(1);
    QTest::mouseClick(List().viewport(), Qt::LeftButton, Qt::ControlModifier,
                      List().visualItemRect(List().item(1)).center());
    ASSERT_EQ(List().selectedItems().size(), 1);
    EXPECT_EQ(List().currentRow(), 1);
    QTest::keyClick(&List(), Qt::Key_Space, Qt::ControlModifier);
    ASSERT_EQ(List().selectedItems().size(), 1);
    Click("cmdEdit");
    EXPECT_EQ(Typed(), "B");
}

TEST_F(EditTreeTest, AReturnThatIsHeldDownSavesOnceAndClosesNothing) {
    Open();
    Click("cmdNew");
    EXPECT_EQ(dialog->focusWidget(), &Field());
    QTest::keyClicks(&Field(), QStringLiteral("D"));
    QTest::keyClick(&Field(), Qt::Key_Return);
    EXPECT_EQ(dialog->focusWidget(), &List());
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
    QCoreApplication::sendEvent(dialog->focusWidget(), &held);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(Enabled(), idle);
    QTest::keyClick(dialog->focusWidget(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(Enabled(), idle) << "not with Ctrl";
    QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Enabled(), typing);
    EXPECT_EQ(Shown().size(), 4U);
}

/// Looks at the dialog while the box is up.
class LookingMsgBox : public MsgBox {
public:
    explicit LookingMsgBox(std::function<void()> look) : m_look(std::move(look)) {}
    Answer Show(const std::string&, const std::string&, Icon, Buttons) override {
        m_look();
        return Answer::Ok;
    }

private:
    std::function<void()> m_look;
};

TEST_F(EditTreeTest, TheCategoryOfTheNameIsSelectedWhenTheRefusalComesUp) {
    Open();
    Click("cmdNew");
    QTest::keyClicks(&Field(), QStringLiteral("B"));
    int row = -1;
    LookingMsgBox box([&] { row = List().currentRow(); });
    services.msgBox = &box;
    Click("cmdSave");
    services.msgBox = &msgBox;
    EXPECT_EQ(row, 1);
}

TEST_F(EditTreeTest, APressInTheListDropsWhatIsTyped) {
    Open();
    Click("cmdNew");
    QTest::keyClicks(&Field(), QStringLiteral("D"));
    QTest::mousePress(List().viewport(), Qt::LeftButton, {}, List().viewport()->rect().bottomRight());
    EXPECT_EQ(Enabled(), idle);
    EXPECT_EQ(Typed(), "");
    EXPECT_EQ(Shown().size(), 3U);
}

TEST_F(EditTreeTest, RefusalsAreToldAndWhatIsTypedStays) {
    Open();
    Click("cmdNew");
    Click("cmdSave");
    QTest::keyClicks(&Field(), QStringLiteral("B"));
    Click("cmdSave");
    EXPECT_EQ(msgBox.shown, (std::vector<ShownBox>{
                                {"Bitte geben Sie einen Namen ein!", "Speichern abgebrochen",
                                 MsgBox::Icon::Critical, MsgBox::Buttons::Ok},
                                {"Es dürfen keine doppelten Einträge vorhanden sein!",
                                 "Speichern abgebrochen", MsgBox::Icon::Critical, MsgBox::Buttons::Ok}}));
    EXPECT_EQ(Typed(), "B");
    EXPECT_EQ(Enabled(), typing);
    EXPECT_EQ(List().currentRow(), 1) << "the walk has stopped there";
}

TEST_F(EditTreeTest, DeletingSelectsTheFirstCategoryAndAsksNothing) {
    Open();
    ClickRow(1);
    Click("cmdDelete");
    EXPECT_EQ(Shown(), (Texts{"A", "C"}));
    EXPECT_EQ(List().currentRow(), 0);
    ASSERT_EQ(List().selectedItems().size(), 1);
    Click("cmdDelete");
    Click("cmdDelete");
    EXPECT_EQ(Shown(), Texts{});
    Click("cmdDelete");
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(EditTreeTest, TheFieldTakesOnlyItsCharactersFromKeys) {
    Open();
    Click("cmdNew");
    QTest::keyClicks(&Field(), QStringLiteral("a'b&c\"d-e_f.g(h)i#j,k/l"));
    EXPECT_EQ(Typed(), "abcdefghijkl");
    Field().clear();
    for (const char16_t character : std::u16string(u"äÄöüßéñ½xŁж漢")) {
        TypeLetter(QChar(character));
    }
    EXPECT_EQ(Typed(), "xŁж漢");
}

TEST_F(EditTreeTest, AKeyThatIsNotTakenLeavesTheMarkedTextMarked) {
    Open();
    ClickRow(0);
    Click("cmdEdit");
    QTest::keyClick(&Field(), '&');
    EXPECT_EQ(FromQString(Field().selectedText()), "A");
    QTest::keyClick(&Field(), 'x');
    EXPECT_EQ(Typed(), "x");
    QTest::keyClick(&Field(), Qt::Key_Backspace);
    EXPECT_EQ(Typed(), "");
}

TEST_F(EditTreeTest, PastedTextIsFilteredAndWhatWasThereStays) {
    Open();
    Click("cmdNew");
    Paste("it's \"Jazz\" & Märsche\n'");
    EXPECT_EQ(Typed(), "its Jazz  Mrsche");
    EXPECT_EQ(Field().cursorPosition(), 16);
    Field().setCursorPosition(3);
    Paste("''X''");
    EXPECT_EQ(Typed(), "itsX Jazz  Mrsche");
    EXPECT_EQ(Field().cursorPosition(), 4);
    Field().selectAll();
    Paste("'''");
    EXPECT_EQ(Typed(), "itsX Jazz  Mrsche") << "nothing of it is taken";
    Field().setCursorPosition(4);
    Paste("'ä'");
    EXPECT_EQ(Field().cursorPosition(), 4);
    Field().setCursorPosition(17);
    Paste("y");
    EXPECT_EQ(Typed(), "itsX Jazz  Mrschey");
    Paste(QString(QChar::Null).toUtf8());
    EXPECT_EQ(Typed(), "itsX Jazz  Mrschey");
}

TEST_F(EditTreeTest, DroppedTextAndThatOfAnInputMethodIsFiltered) {
    Open();
    Click("cmdNew");
    QMimeData text;
    text.setText(QStringLiteral("O'Neill"));
    const QPointF place = Field().rect().center();
    QDragEnterEvent enter(place.toPoint(), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&Field(), &enter);
    QDropEvent drop(place, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&Field(), &drop);
    EXPECT_EQ(Typed(), "ONeill");
    QInputMethodEvent method;
    method.setCommitString(QStringLiteral("'é音"));
    Field().end(false);
    QCoreApplication::sendEvent(&Field(), &method);
    EXPECT_EQ(Typed(), "ONeill音");
}

TEST_F(EditTreeTest, ANameFromElsewhereIsEditedWithItsCharacters) {
    mainModule.Connection->Execute("Insert into Categories (Category) values ('Märsche & Co')");
    Open();
    ClickRow(3);
    Click("cmdEdit");
    EXPECT_EQ(Typed(), "Märsche & Co");
    Field().end(false);
    TypeLetter(u'2');
    TypeLetter(QChar(u'ä'));
    EXPECT_EQ(Typed(), "Märsche & Co2");
    QTest::keyClick(&Field(), Qt::Key_Return);
    EXPECT_EQ(Shown(), (Texts{"A", "B", "C", "Märsche & Co2"}));
}

TEST_F(EditTreeTest, ALineBreakInANameIsShownAsOneLine) {
    mainModule.Connection->Execute("Insert into Categories (Category) values ('two\nlines')");
    Open();
    EXPECT_EQ(Shown().back().find('\n'), std::string::npos);
}

TEST_F(EditTreeTest, OkAndEscapeDropWhatIsTyped) {
    for (const bool ok : {true, false}) {
        Open();
        Click("cmdNew");
        QTest::keyClicks(&Field(), QStringLiteral("D"));
        if (ok) {
            Click("cmdOK");
        } else {
            QTest::keyClick(&Field(), Qt::Key_Escape);
        }
        EXPECT_FALSE(dialog->isVisible());
    }
    EXPECT_EQ(mainModule.Connection->Query("Select * from Categories").Rows(), 3U);
}

TEST_F(EditTreeTest, TheFieldHasTheKeyboardWheneverTheDialogIsActivated) {
    Open();
    Click("cmdNew");
    Part<QWidget>("cmdOK").setFocus();
    Form().activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Form(); }));
    dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == dialog.get(); }));
    EXPECT_EQ(dialog->focusWidget(), &Field());
}

TEST_F(EditTreeTest, NothingIsWrittenWhileAScanRunsOverIt) {
    Open();
    ClickRow(0);
    mainModule.ScanRunning = true;
    Click("cmdDelete");
    Click("cmdNew");
    QTest::keyClicks(&Field(), QStringLiteral("D"));
    QTest::keyClick(&Field(), Qt::Key_Return);
    Click("cmdSave");
    mainModule.ScanRunning = false;
    EXPECT_EQ(Shown(), (Texts{"A", "B", "C"}));
    EXPECT_EQ(Typed(), "D");
    Click("cmdSave");
    EXPECT_EQ(Shown().size(), 4U);
}

TEST_F(EditTreeTest, ItCannotBeMinimised) {
    Open();
    dialog->showMinimized();
    EXPECT_FALSE(dialog->isMinimized());
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(EditTreeTest, F1OnEachControlOpensItsHelpPage) {
    Open();
    Click("cmdNew");
    for (const char* name : {"lstCategories", "txtEdit", "cmdSave", "cmdOK"}) {
        helpViewer.shown.clear();
        QTest::keyClick(&Part<QWidget>(name), Qt::Key_F1);
        ASSERT_EQ(helpViewer.shown.size(), 1U) << name;
        EXPECT_EQ(helpViewer.shown[0].second, "HTML\\edittree.html") << name;
    }
}

} // namespace quavernet::test
