// What filters the list is marked, and one button lifts all of it.
#include "gui/GuiTest.h"

#include "browser/FilterCombo.h"
#include "browser/SearchBox.h"
#include "support/RecordingConnection.h"
#include "support/SmallAudio.h"
#include "widgets/Colours.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QLabel>
#include <QScrollBar>
#include <QToolButton>

#include <set>

namespace quavernet::test {

namespace {

class FiltersInForceTest : public GuiTest {
protected:
    FiltersInForceTest() {
        AddFile("Abba", "One");
        AddFile("Beatles", "Two", "ogg");
        AddFile("Cure", "Three");
    }

    /// Names of the controls that are marked.
    std::set<std::string> Marked() {
        std::set<std::string> marked;
        for (const char* name : {"cboDrive", "cboGenre", "cboAlbum"}) {
            if (Control<FilterCombo>(name).IsInForce()) {
                marked.insert(name);
            }
        }
        if (Control<SearchBox>("txtSearch").IsInForce()) {
            marked.insert("txtSearch");
        }
        for (const QLabel* label : Control<QWidget>("Frame2").findChildren<QLabel*>()) {
            if (label->frameShape() == QFrame::Box) {
                marked.insert(FromQString(label->objectName()));
            }
        }
        return marked;
    }
    QToolButton& Lift() { return Control<QToolButton>("cmdLiftFilters"); }
    void SearchFor(const char* text) {
        Control<QLineEdit>("txtSearch").setText(QString::fromUtf8(text));
        QTest::keyClick(&Control<QLineEdit>("txtSearch"), Qt::Key_Return);
    }
    /// How often the list was read from the library.
    static std::ptrdiff_t Loads(const RecordingConnection& recorder) {
        return std::count_if(recorder.statements.begin(), recorder.statements.end(),
                             [](const std::string& sent) { return sent.starts_with("Select F.Path, F.S"); });
    }
};

} // namespace

TEST_F(FiltersInForceTest, WhatTheListIsFilteredByIsMarkedAndNothingElse) {
    Start();
    EXPECT_EQ(Marked(), std::set<std::string>{});
    EXPECT_FALSE(Lift().isVisible());
    Control<QComboBox>("cboAlbum").setCurrentIndex(1);
    EXPECT_EQ(Marked(), std::set<std::string>{"cboAlbum"});
    EXPECT_TRUE(Lift().isVisible());
    Control<QComboBox>("cboAlbum").setCurrentIndex(0);
    EXPECT_EQ(Marked(), std::set<std::string>{});
    Control<QComboBox>("cboDrive").setCurrentIndex(2);
    Control<QComboBox>("cboGenre").setCurrentIndex(1);
    SearchFor("t");
    QTest::mouseClick(&Control<QLabel>("lblB"), Qt::LeftButton);
    EXPECT_EQ(Marked(), (std::set<std::string>{"cboDrive", "cboGenre", "txtSearch", "lblB"}));
    QTest::mouseClick(&Control<QLabel>("lblAll"), Qt::LeftButton);
    EXPECT_EQ(Marked(), (std::set<std::string>{"cboDrive", "cboGenre", "txtSearch"}));
}

TEST_F(FiltersInForceTest, WhatIsOnlyChosenOrTypedDoesNotFilterYet) {
    Start();
    auto& album = Control<QComboBox>("cboAlbum");
    QTest::keyClick(&album, Qt::Key_Down);
    QTest::keyClicks(&Control<QLineEdit>("txtSearch"), QStringLiteral("Abba"));
    EXPECT_EQ(Marked(), std::set<std::string>{});
    QTest::keyClick(&album, Qt::Key_Return);
    EXPECT_EQ(Marked(), (std::set<std::string>{"cboAlbum", "txtSearch"}));
}

TEST_F(FiltersInForceTest, TheButtonLiftsEverythingWithOneLoad) {
    Start();
    Control<QComboBox>("cboDrive").setCurrentIndex(1);
    Control<QComboBox>("cboGenre").setCurrentIndex(1);
    Control<QComboBox>("cboAlbum").setCurrentIndex(1);
    SearchFor("xyz");
    QTest::mouseClick(&Control<QLabel>("lblZ"), Qt::LeftButton);
    Action("mnuogg").trigger();
    RecordingConnection& recorder = RecordingConnection::Install();
    QTest::mouseClick(&Lift(), Qt::LeftButton);
    EXPECT_EQ(Loads(recorder), 1);
    EXPECT_EQ(Listed(), (Texts{"Abba", "Beatles", "Cure"}));
    EXPECT_EQ(Marked(), std::set<std::string>{});
    EXPECT_EQ(mainModule.LetterFilter, "All");
    EXPECT_TRUE(Control<QLabel>("lblAll").font().bold());
    EXPECT_TRUE(Action("mnuogg").isChecked());
    EXPECT_TRUE(Action("mnuKontextOgg").isChecked());
    EXPECT_TRUE(Control<QLineEdit>("txtSearch").text().isEmpty());
    for (const char* name : {"cboDrive", "cboGenre", "cboAlbum"}) {
        EXPECT_EQ(Control<QComboBox>(name).currentIndex(), 0) << name;
    }
    EXPECT_FALSE(mainModule.SuppressComboClick);
    EXPECT_FALSE(Lift().isVisible());
    EXPECT_TRUE(Control<QCheckBox>("chkInterpret").isChecked()) << "they filter nothing by themselves";
}

TEST_F(FiltersInForceTest, TheButtonIsReachedByTabAndTheKeyboardIsNotLostWithIt) {
    Start();
    SearchFor("abba");
    auto& letters = Control<QWidget>("Frame2");
    letters.setFocus();
    QTest::keyClick(&letters, Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), &Lift());
    EXPECT_EQ(FromQString(Lift().text()), "Filter aufheben");
    QTest::keyClick(&Lift(), Qt::Key_Space);
    EXPECT_EQ(Listed().size(), 3U);
    EXPECT_EQ(QApplication::focusWidget(), &letters);
}

TEST_F(FiltersInForceTest, AHiddenFormatAloneIsAFilterToLift) {
    Start();
    Action("mnuogg").trigger();
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure"}));
    EXPECT_TRUE(Lift().isVisible());
    QTest::mouseClick(&Lift(), Qt::LeftButton);
    EXPECT_EQ(Listed().size(), 3U);
}

TEST_F(FiltersInForceTest, TheButtonNamesTheFormatsThatAreLeftOut) {
    settings.values["WindowWidth"] = "30000";
    Start();
    std::vector<QRect> places;
    for (const QLabel* label : Control<QWidget>("Frame2").findChildren<QLabel*>()) {
        places.push_back(label->geometry());
    }
    Action("mnuogg").trigger();
    EXPECT_EQ(FromQString(Lift().text()), "Filter aufheben (ogg-Vorbis ausgeblendet)");
    Action("mnuwav").trigger();
    EXPECT_EQ(FromQString(Lift().toolTip()), "Filter aufheben (ogg-Vorbis, wav ausgeblendet)");
    EXPECT_EQ(Lift().accessibleName(), Lift().toolTip());
    EXPECT_LE(Lift().sizeHint().width(), Lift().width()) << "whole";
    std::size_t index = 0;
    for (const QLabel* label : Control<QWidget>("Frame2").findChildren<QLabel*>()) {
        EXPECT_EQ(label->geometry(), places[index++]) << "no letter moves";
        EXPECT_LT(label->geometry().right(), Lift().geometry().left());
    }
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(FromQString(Lift().text()), "Clear filters (ogg-Vorbis, wav hidden)");
    Form().resize(800, 600);
    EXPECT_EQ(FromQString(Lift().toolTip()), "Clear filters (ogg-Vorbis, wav hidden)");
    EXPECT_TRUE(Control<QWidget>("Frame2").rect().contains(Lift().geometry()));
    QTest::mouseClick(&Lift(), Qt::LeftButton);
    EXPECT_EQ(FromQString(Lift().toolTip()), "Clear filters");
    QTest::mouseClick(&Control<QLabel>("lblB"), Qt::LeftButton);
    EXPECT_EQ(FromQString(Lift().accessibleName()), "Clear filters") << "a letter shows that it filters";
}

TEST_F(FiltersInForceTest, AListOfGivenFilesIsFilteredByTheLetterAlone) {
    Start();
    Control<QComboBox>("cboAlbum").setCurrentIndex(1);
    QTest::mouseClick(&Control<QLabel>("lblC"), Qt::LeftButton);
    {
        const ScopedValue given(mainModule.ShowInGridMode, true);
        Form().Parts().Views.LoadDatabase("1,2,3");
    }
    EXPECT_EQ(Listed(), Texts{"Cure"});
    EXPECT_EQ(Marked(), std::set<std::string>{"lblC"});
    QTest::mouseClick(&Lift(), Qt::LeftButton);
    EXPECT_EQ(Listed().size(), 3U);
}

TEST_F(FiltersInForceTest, WhileAScanRunsTheButtonIsGoneAndActsOnNothing) {
    std::filesystem::create_directory(folder / "music");
    WriteBytes(folder / "music/1.mp3", Mp3Bytes("Song", "Blue", "Best"));
    dialogs.folder = folder / "music";
    settings.values["ScanLog"] = "0";
    Start();
    SearchFor("abba");
    int points = 0;
    events.onDoEvents = [&] {
        if (mainModule.ScanRunning) {
            ++points;
            emit Form().Panes().Letters().LiftWanted(); // A press that came through all the same.
            Lift().click();
            EXPECT_EQ(FromQString(Control<QLineEdit>("txtSearch").text()), "abba");
            if (PanelText(Panel::Scanning).starts_with("Scanning... ")) {
                EXPECT_FALSE(Lift().isVisible());
            }
        }
    };
    services.events = &events;
    Action("scan").trigger();
    services.events = &realEvents;
    events.onDoEvents = nullptr;
    EXPECT_GE(points, 6);
    EXPECT_EQ(Listed(), Texts{"Abba"});
    EXPECT_EQ(Marked(), std::set<std::string>{"txtSearch"});
}

TEST_F(FiltersInForceTest, LiftedInsideALoadTheLoadThatGoesOnShowsEverythingToo) {
    Start();
    SearchFor("abba");
    bool lifted = false;
    events.onDoEvents = [&] {
        if (!lifted) {
            lifted = true;
            Lift().click();
        }
    };
    services.events = &events;
    Control<QComboBox>("cboGenre").setCurrentIndex(1);
    services.events = &realEvents;
    events.onDoEvents = nullptr;
    EXPECT_TRUE(lifted);
    EXPECT_EQ(Listed().size(), 3U);
    EXPECT_EQ(Marked(), std::set<std::string>{});
}

TEST_F(FiltersInForceTest, WhileACommandActsAloneNothingIsLifted) {
    Start();
    SearchFor("abba");
    {
        const ScopedValue alone(mainModule.ActsAlone, true);
        Lift().click();
        EXPECT_EQ(Listed(), Texts{"Abba"});
        EXPECT_EQ(FromQString(Control<QLineEdit>("txtSearch").text()), "abba");
    }
}

TEST_F(FiltersInForceTest, TheMarksAreReadOnLightAndDarkGround) {
    Start();
    Control<QComboBox>("cboAlbum").setCurrentIndex(1);
    SearchFor("o");
    QTest::mouseClick(&Control<QLabel>("lblA"), Qt::LeftButton);
    const QPalette before = Form().palette();
    for (const bool dark : {false, true}) {
        QPalette colors = before;
        colors.setColor(QPalette::Window, dark ? QColor(0x20, 0x23, 0x26) : QColor(0xEF, 0xF0, 0xF1));
        colors.setColor(QPalette::Base, dark ? QColor(0x1B, 0x1E, 0x20) : QColor(0xFC, 0xFC, 0xFC));
        for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
            colors.setColor(role, dark ? QColor(0xFC, 0xFC, 0xFC) : QColor(0x23, 0x26, 0x29));
        }
        Form().setPalette(colors);
        for (const char* name : {"cboAlbum", "txtSearch"}) {
            auto& control = Control<QWidget>(name);
            const QColor frame = control.grab().toImage().pixelColor(0, control.height() / 2);
            EXPECT_GE(Contrast(frame, colors.color(QPalette::Window)), 4.5) << name << dark;
            EXPECT_GE(Contrast(frame, colors.color(QPalette::Base)), 4.5) << name << dark;
        }
        auto& letter = Control<QLabel>("lblA");
        EXPECT_GE(Contrast(letter.palette().color(QPalette::WindowText), colors.color(QPalette::Window)),
                  4.5);
        auto& search = Control<QLineEdit>("txtSearch");
        const QColor hint = search.palette().color(QPalette::PlaceholderText);
        EXPECT_EQ(hint.alpha(), 255);
        EXPECT_GE(Contrast(hint, colors.color(QPalette::Base)), TextContrast);
    }
}

TEST_F(FiltersInForceTest, TheLettersKeepTheirPlacesWhenTheButtonComesAndEndBeforeIt) {
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        for (const char* width : {"11700", "12000", "15000", "24000"}) {
            settings.values["WindowWidth"] = width;
            Start();
            std::vector<QRect> places;
            for (const QLabel* label : Control<QWidget>("Frame2").findChildren<QLabel*>()) {
                places.push_back(label->geometry());
            }
            SearchFor("abba");
            QCoreApplication::processEvents();
            std::size_t index = 0;
            for (const QLabel* label : Control<QWidget>("Frame2").findChildren<QLabel*>()) {
                EXPECT_EQ(label->geometry(), places[index++]);
                EXPECT_LE(label->geometry().right(), Lift().geometry().left()) << language << width;
            }
            EXPECT_TRUE(Control<QWidget>("Frame2").rect().contains(Lift().geometry()));
            CloseMain();
        }
    }
}

TEST_F(FiltersInForceTest, TheAlbumListOpens25RowsHighWithAScrollBar) {
    for (int album = 0; album < 60; ++album) {
        AddFile("P" + std::to_string(album), "T" + std::to_string(album));
    }
    Start();
    auto& album = Control<QComboBox>("cboAlbum");
    album.showPopup();
    QAbstractItemView& list = *album.view();
    const int row = list.visualRect(list.model()->index(0, 0)).height();
    ASSERT_GT(row, 0);
    EXPECT_EQ(list.viewport()->height() / row, 25);
    EXPECT_TRUE(list.verticalScrollBar()->isVisible());
    EXPECT_EQ(list.verticalScrollBar()->maximum() > 0, true);
    album.hidePopup();
}

} // namespace quavernet::test
