// The search box: its cross, Esc, Ctrl+F, what its placeholder says, the last searches, and its width.
#include "gui/GuiTest.h"

#include "browser/SearchBox.h"
#include "support/RecordingConnection.h"

#include <QCheckBox>
#include <QMenu>
#include <QToolButton>

namespace quavernet::test {

namespace {

class SearchBoxTest : public GuiTest {
protected:
    SearchBoxTest() {
        AddFile("Abba", "One");
        AddFile("Beatles", "Two");
    }
    SearchBox& Box() { return Control<SearchBox>("txtSearch"); }
    void SearchFor(const std::string& text) {
        Box().setText(ToQString(text));
        QTest::keyClick(&Box(), Qt::Key_Return);
    }
    QToolButton& Cross() {
        for (QToolButton* button : Box().findChildren<QToolButton*>()) {
            if (button->actions().isEmpty() ||
                button->defaultAction() != Box().findChild<QAction*>(QStringLiteral("actLastSearches"))) {
                return *button;
            }
        }
        throw std::runtime_error("no cross");
    }
    /// The open list of the last searches; nullptr if it is closed.
    QMenu* Offer() {
        for (QMenu* menu : Box().findChildren<QMenu*>(QStringLiteral("mnuLastSearches"))) {
            if (menu->isVisible()) {
                return menu;
            }
        }
        return nullptr;
    }
    Texts Offered() {
        Texts texts;
        QTest::keyClick(&Box(), Qt::Key_Down);
        if (QMenu* menu = Offer()) {
            for (const QAction* item : menu->actions()) {
                texts.push_back(FromQString(item->text()));
            }
            menu->close();
        }
        return texts;
    }
    std::string Text() { return FromQString(Box().text()); }
};

} // namespace

TEST_F(SearchBoxTest, ItsCrossEmptiesItAndLoadsOnce) {
    Start();
    SearchFor("abba");
    EXPECT_EQ(Listed(), Texts{"Abba"});
    RecordingConnection& recorder = RecordingConnection::Install();
    QTest::mouseClick(&Cross(), Qt::LeftButton);
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(Listed().size(), 2U);
    EXPECT_EQ(std::count_if(recorder.statements.begin(), recorder.statements.end(),
                            [](const std::string& sent) { return sent.starts_with("Select F.Path"); }),
              1);
}

TEST_F(SearchBoxTest, EscEmptiesItAndLoadsAndDoesNothingWhereNothingIsSearched) {
    Start();
    SearchFor("abba");
    QTest::keyClick(&Box(), Qt::Key_Escape);
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(Listed().size(), 2U);
    RecordingConnection& recorder = RecordingConnection::Install();
    QTest::keyClick(&Box(), Qt::Key_Escape);
    EXPECT_TRUE(recorder.statements.empty());
    SearchFor("abba");
    Box().clear(); // By hand: the list is still that of the search.
    EXPECT_EQ(Listed(), Texts{"Abba"});
    QTest::keyClick(&Box(), Qt::Key_Escape);
    EXPECT_EQ(Listed().size(), 2U);
}

TEST_F(SearchBoxTest, CtrlFGoesToItAndMarksItsText) {
    Start();
    SearchFor("abba");
    Grid().setFocus();
    QTest::keyClick(&Grid(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), &Box());
    EXPECT_EQ(FromQString(Box().selectedText()), "abba");
    QTest::keyClicks(&Box(), QStringLiteral("Beat"));
    EXPECT_EQ(Text(), "Beat");
}

TEST_F(SearchBoxTest, NoMenuHasItsKeys) {
    Start();
    for (const QAction* item : Form().findChildren<QAction*>()) {
        EXPECT_NE(item->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_F)) << FromQString(item->objectName());
    }
}

TEST_F(SearchBoxTest, ThePlaceholderNamesWhatTheBoxesChoose) {
    Start();
    const auto placeholder = [this] { return FromQString(Box().placeholderText()); };
    const auto click = [this](const char* name) {
        auto& box = Control<QCheckBox>(name);
        QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));
    };
    EXPECT_EQ(placeholder(), "Interpret, Titel");
    click("chkTitle");
    EXPECT_EQ(placeholder(), "Interpret");
    click("chkInterpret"); // The last one stays.
    EXPECT_EQ(placeholder(), "Interpret");
    click("chkTitle");
    click("chkInterpret");
    EXPECT_EQ(placeholder(), "Titel");
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(placeholder(), "Title");
    click("chkInterpret");
    EXPECT_EQ(placeholder(), "Performer, title");
    CloseMain();
    settings.values["SearchInterpret"] = settings.values["SearchTitle"] = "0";
    Start();
    EXPECT_EQ(placeholder(), "") << "a text would be searched nowhere";
}

TEST_F(SearchBoxTest, TheLastTenSearchesAreOfferedTheNewestFirstAndNoneTwice) {
    Start();
    EXPECT_EQ(Offered(), Texts{});
    for (int search = 1; search <= 12; ++search) {
        SearchFor("s" + std::to_string(search));
    }
    SearchFor("S5");
    SearchFor("");
    Box().setText(QStringLiteral("not searched for"));
    EXPECT_EQ(Offered(), (Texts{"S5", "s12", "s11", "s10", "s9", "s8", "s7", "s6", "s4", "s3"}));
    CloseMain();
    Start();
    EXPECT_EQ(Offered().size(), 10U) << "they are kept";
}

TEST_F(SearchBoxTest, AnOfferedSearchIsPickedByMouseOrKeysAndSearches) {
    Start();
    SearchFor("abba");
    SearchFor("A & B");
    EXPECT_EQ(Listed(), Texts{});
    QTest::keyClick(&Box(), Qt::Key_Down);
    ASSERT_NE(Offer(), nullptr);
    EXPECT_EQ(FromQString(Offer()->actions().front()->text()), "A && B");
    QTest::keyClick(Offer(), Qt::Key_Down);
    QTest::keyClick(Offer(), Qt::Key_Return);
    EXPECT_EQ(Text(), "abba");
    EXPECT_EQ(Listed(), Texts{"Abba"});
    EXPECT_EQ(Offered(), (Texts{"abba", "A && B"}));

    Box().findChild<QAction*>(QStringLiteral("actLastSearches"))->trigger();
    ASSERT_NE(Offer(), nullptr);
    QTest::keyClick(Offer(), Qt::Key_Escape);
    EXPECT_EQ(Offer(), nullptr);
    EXPECT_EQ(Listed(), Texts{"Abba"}) << "Esc closes the offer and empties nothing";
    QTest::keyClick(&Box(), Qt::Key_Return);
    EXPECT_EQ(Listed(), Texts{"Abba"});
}

TEST_F(SearchBoxTest, WhileACommandActsAloneItEmptiesOffersAndKeepsNothing) {
    Start();
    SearchFor("abba");
    QTest::keyClick(&Box(), Qt::Key_Down);
    QMenu* open = Offer();
    ASSERT_NE(open, nullptr);
    {
        const ScopedValue alone(mainModule.ActsAlone, true);
        QTest::keyClick(&Box(), Qt::Key_Escape);
        EXPECT_EQ(Text(), "abba");
        Box().setText(QStringLiteral("other"));
        QTest::keyClick(open, Qt::Key_Return);
        EXPECT_EQ(Text(), "other");
        EXPECT_EQ(Offered(), Texts{});
        Control<QPushButton>("cmdSearch").click();
        EXPECT_EQ(settings.values["LastSearches"], "abba");
        EXPECT_EQ(Listed(), Texts{"Abba"});
    }
}

TEST_F(SearchBoxTest, ItGrowsWithTheWindowAndTheWindowStopsWhereItsButtonWouldGo) {
    Start();
    const int before = Box().width();
    Form().resize(Form().width() + 150, Form().height());
    QCoreApplication::processEvents();
    EXPECT_EQ(Box().width(), before + 150);
    Form().resize(200, 500);
    QCoreApplication::processEvents();
    const auto& go = Control<QPushButton>("cmdSearch");
    EXPECT_EQ(Form().width(), Form().minimumWidth());
    EXPECT_EQ(Box().width(), 1250 / 15);
    const int right = go.mapTo(&Form(), go.rect().topRight()).x();
    EXPECT_LE(right, Form().width());
    EXPECT_GE(right, Form().width() - 8);
    Action("mnuViewLanguageENG").trigger();
    EXPECT_LE(Form().minimumWidth(), Form().width());
}

TEST_F(SearchBoxTest, AWindowThatWasStoredNarrowerComesUpSoAndGetsNoNarrower) {
    settings.values["WindowWidth"] = "7500";
    Start();
    EXPECT_EQ(Form().width(), 500);
    EXPECT_EQ(Form().minimumWidth(), 500);
}

} // namespace quavernet::test
