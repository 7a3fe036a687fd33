// What empty list and empty tree say about themselves.
#include "gui/GuiTest.h"
#include "gui/PaintedTexts.h"

#include "support/SmallAudio.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

namespace quavernet::test {

namespace {

class EmptyListTest : public GuiTest {
protected:
    QWidget& Hint() { return Control<QWidget>("EmptyListHint"); }
    std::string Title() { return FromQString(Control<QLabel>("lblEmptyTitle").text()); }
    /// What the visible parts of the hint say, from top to bottom.
    Texts Said() {
        Texts said;
        if (Hint().isVisible()) {
            for (const QWidget* part : Hint().findChildren<QWidget*>()) {
                if (part->isVisible()) {
                    said.push_back(FromQString(part->property("text").toString()));
                }
            }
        }
        return said;
    }
    void SearchFor(const char* text) {
        Control<QLineEdit>("txtSearch").setText(QString::fromUtf8(text));
        QTest::keyClick(&Control<QLineEdit>("txtSearch"), Qt::Key_Return);
    }
    std::string PaintedInTree() {
        TreeView& tree = Form().Panes().Tree();
        return PaintedTexts(*tree.viewport());
    }

    const Texts noLibrary{"Noch keine Musik in der Bibliothek", "Ordner scannen… Strg+S",
                          "oder Dateien hierher ziehen"};
};

} // namespace

TEST_F(EmptyListTest, AnEmptyLibraryOffersAScanAndADropInBothLanguages) {
    Start();
    EXPECT_EQ(Said(), noLibrary);
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(Said(),
              (Texts{"No music in the library yet", "Scan a folder... Ctrl+S", "or drag files here"}));
    Action("mnuViewLanguageGER").trigger();
    EXPECT_EQ(Said(), noLibrary);
}

TEST_F(EmptyListTest, TheButtonRunsTheScanAndTheHintGoesWithTheFirstRows) {
    std::filesystem::create_directory(folder / "music");
    WriteBytes(folder / "music/1.mp3", Mp3Bytes("Song", "Blue", "Best"));
    dialogs.folder = folder / "music";
    settings.values["ScanLog"] = "0";
    Start();
    int points = 0;
    events.onDoEvents = [&] {
        if (PanelText(Panel::Scanning).starts_with("Scanning... ")) {
            ++points;
            EXPECT_FALSE(Hint().isVisible()) << "while a scan fills the library";
        }
    };
    services.events = &events;
    QTest::mouseClick(&Control<QPushButton>("cmdEmptyScan"), Qt::LeftButton);
    services.events = &realEvents;
    events.onDoEvents = nullptr;
    EXPECT_GE(points, 1);
    EXPECT_EQ(Listed(), Texts{"Blue"});
    EXPECT_EQ(Said(), Texts{});
}

TEST_F(EmptyListTest, TheScansButtonIsReachedByTabAndPressedByEnter) {
    Start();
    Grid().setFocus();
    QTest::keyClick(&Grid(), Qt::Key_Tab);
    auto& button = Control<QPushButton>("cmdEmptyScan");
    EXPECT_EQ(QApplication::focusWidget(), &button);
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_EQ(dialogs.titles.size(), 1U) << "the folder is asked for";
    EXPECT_EQ(Said(), noLibrary) << "the scan was not wanted after all";
}

TEST_F(EmptyListTest, FilesDroppedOnTheHintReachTheList) {
    WriteBytes(folder / "1.mp3", Mp3Bytes("Song", "Blue", "Best"));
    Start();
    // As the toolkit does it: the widget below the mouse that takes drops is looked for from the inside out.
    QWidget* target = &Control<QLabel>("lblEmptyTitle");
    QPoint place = target->rect().center();
    while (!target->acceptDrops()) {
        place = target->mapToParent(place);
        target = target->parentWidget();
    }
    EXPECT_EQ(target, Grid().viewport());
    EXPECT_TRUE(Drop(*target, {folder / "1.mp3"}, place));
    EXPECT_EQ(Listed(), Texts{"Blue"});
    EXPECT_EQ(Said(), Texts{});
}

TEST_F(EmptyListTest, ASearchThatFindsNothingNamesItsTextAndOffersToLiftAllFilters) {
    AddFile("Abba", "One");
    Start();
    EXPECT_EQ(Said(), Texts{});
    SearchFor("<b>Cure & Co</b>");
    EXPECT_EQ(Said(), (Texts{"Nichts gefunden für „<b>Cure & Co</b>“", "Filter aufheben"}));
    EXPECT_EQ(Control<QLabel>("lblEmptyTitle").textFormat(), Qt::PlainText);
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(Said(), (Texts{"Nothing found for \"<b>Cure & Co</b>\"", "Clear filters"}));
    QTest::mouseClick(&Control<QPushButton>("cmdEmptyLift"), Qt::LeftButton);
    EXPECT_EQ(Listed(), Texts{"Abba"});
    EXPECT_EQ(Said(), Texts{});
}

TEST_F(EmptyListTest, AVeryLongSearchIsCutAndOneThatIsOnlyTypedIsNotNamed) {
    AddFile("Abba", "One");
    Start();
    SearchFor(std::string(100, 'x').c_str());
    EXPECT_EQ(Title(), "Nichts gefunden für „" + std::string(60, 'x') + "...“");
    Control<QLineEdit>("txtSearch").setText(QStringLiteral("typed"));
    Control<QComboBox>("cboGenre").setCurrentIndex(1);
    EXPECT_EQ(Title(), "Nichts gefunden für „typed“") << "the combo's load reads the box too";
    Control<QLineEdit>("txtSearch").setText(QStringLiteral("more"));
    EXPECT_EQ(Title(), "Nichts gefunden für „typed“");
}

TEST_F(EmptyListTest, AFormatThatHidesAllRowsIsLiftedToo) {
    AddFile("Abba", "One");
    Start();
    Action("mnump3").trigger();
    EXPECT_EQ(Said(), (Texts{"Nichts gefunden", "Filter aufheben"}));
    QTest::mouseClick(&Control<QPushButton>("cmdEmptyLift"), Qt::LeftButton);
    EXPECT_EQ(Listed(), Texts{"Abba"});
    EXPECT_TRUE(Action("mnump3").isChecked());
    EXPECT_TRUE(Action("mnuKontextMp3").isChecked());
}

TEST_F(EmptyListTest, AListThatIsLoadedBySearchAsksForASearch) {
    AddFile("Abba", "One");
    settings.values["LoadOverSearch"] = "1";
    Start();
    EXPECT_EQ(Said(), Texts{"Suchwort eingeben"});
    SearchFor("abba");
    EXPECT_EQ(Said(), Texts{});
    SearchFor("nobody");
    EXPECT_EQ(Said(), (Texts{"Nichts gefunden für „nobody“", "Filter aufheben"}));
}

TEST_F(EmptyListTest, InAnEmptyLibraryNoSearchIsAskedFor) {
    settings.values["LoadOverSearch"] = "1";
    Start();
    EXPECT_EQ(Said(), (Texts{"Noch keine Musik in der Bibliothek", "Ordner scannen… Strg+S",
                             "oder Dateien hierher ziehen"}));
    WriteBytes(folder / "1.mp3", Mp3Bytes("Song", "Blue", "Best"));
    EXPECT_TRUE(Drop(*Grid().viewport(), {folder / "1.mp3"}, QPoint(40, 8)));
    EXPECT_EQ(Said(), Texts{"Suchwort eingeben"}) << "now there is something to be found";
}

TEST_F(EmptyListTest, AfterAScanAListThatIsLoadedBySearchAsksForASearchAgain) {
    std::filesystem::create_directory(folder / "music");
    WriteBytes(folder / "music/1.mp3", Mp3Bytes("Song", "Blue", "Best"));
    dialogs.folder = folder / "music";
    settings.values["ScanLog"] = "0";
    settings.values["LoadOverSearch"] = "1";
    AddFile("Abba", "One");
    Start();
    SearchFor("abba");
    EXPECT_EQ(Said(), Texts{});
    Action("scan").trigger();
    EXPECT_EQ(Said(), Texts{"Suchwort eingeben"});
    EXPECT_FALSE(Control<QWidget>("cmdLiftFilters").isVisible()) << "no list is shown that could be filtered";
}

TEST_F(EmptyListTest, DuringALoadNothingIsSaidThatWasNotSaidBefore) {
    AddFile("Abba", "One");
    Start();
    int points = 0;
    events.onDoEvents = [&] {
        ++points;
        EXPECT_EQ(Said(), Texts{});
    };
    services.events = &events;
    SearchFor("abba");
    services.events = &realEvents;
    events.onDoEvents = nullptr;
    EXPECT_GE(points, 3);
}

TEST_F(EmptyListTest, TheHintFillsTheViewHoweverItIsSizedAndScrolled) {
    Start();
    Form().resize(1100, 700);
    Grid().setColumnWidth(0, 3000);
    QCoreApplication::processEvents();
    EXPECT_EQ(Hint().geometry(), Grid().viewport()->rect());
    Grid().horizontalScrollBar()->setValue(500);
    EXPECT_EQ(Hint().geometry(), Grid().viewport()->rect());
}

TEST_F(EmptyListTest, AnEmptyTreeSaysHowToMakeACategoryUntilThereIsOne) {
    Start();
    EXPECT_NE(PaintedInTree().find("NochkeineKategorien."), std::string::npos) << PaintedInTree();
    TreeView& tree = Form().Panes().Tree();
    EXPECT_TRUE(FromQString(tree.accessibleDescription()).starts_with("Noch keine Kategorien."));
    Action("mnuViewLanguageENG").trigger();
    EXPECT_NE(PaintedInTree().find("Nocategoriesyet."), std::string::npos) << PaintedInTree();
    mainModule.Connection->Execute("Insert into Categories (Category) values ('Party')");
    Form().Tree().LoadTree();
    EXPECT_EQ(PaintedInTree().find("Nocategories"), std::string::npos) << PaintedInTree();
    EXPECT_TRUE(tree.accessibleDescription().isEmpty());
}

} // namespace quavernet::test
