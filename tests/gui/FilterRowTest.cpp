#include "gui/GuiTest.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>

namespace quavernet::test {

namespace {
class FilterRowTest : public GuiTest {
protected:
    FilterRowTest() {
        AddFile("Abba", "One");
        AddFile("Beatles", "Two");
        AddFile("Cure", "Tree");
    }
    static void MoveMouse(QWidget& over) {
        QMouseEvent move(QEvent::MouseMove, QPointF(2, 2), QPointF(over.mapToGlobal(QPoint(2, 2))),
                         Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&over, &move);
    }
    static QColor Colour(const QLabel& label) { return label.palette().color(QPalette::WindowText); }
};
} // namespace

TEST_F(FilterRowTest, EnterInTheSearchBoxSearches) {
    Start();
    auto& search = Control<QLineEdit>("txtSearch");
    QTest::keyClicks(&search, QStringLiteral("t"));
    EXPECT_EQ(Listed().size(), 3U);
    QTest::keyClick(&search, Qt::Key_Return);
    EXPECT_EQ(Listed(), (Texts{"Beatles", "Cure"}));
    EXPECT_EQ(FromQString(search.text()), "t");
}

TEST_F(FilterRowTest, ANulInAPastedOrDroppedTextIsLeftOut) {
    Start();
    auto& search = Control<QLineEdit>("txtSearch");
    const QString text = QString::fromLatin1("r\0ee\0", 5);
    ASSERT_EQ(text.count(QChar::Null), 2);
    QGuiApplication::clipboard()->setText(text);
    QTest::keyClicks(&search, QStringLiteral("T"));
    QTest::keyClick(&search, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(FromQString(search.text()), "Tree");
    EXPECT_EQ(search.cursorPosition(), 4);
    QTest::keyClick(&search, Qt::Key_Return);
    EXPECT_EQ(Listed(), Texts{"Cure"});

    search.clear();
    QMimeData data;
    data.setText(text);
    const QPointF middle = QRectF(search.rect()).center();
    QDragEnterEvent enter(middle.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&search, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&search, &drop);
    EXPECT_EQ(FromQString(search.text()), "ree");
    QTest::keyClick(&search, Qt::Key_Return);
    EXPECT_EQ(Listed(), Texts{"Cure"});
}

TEST_F(FilterRowTest, EnterInTheSearchBoxSearchesAndDoesNotReachTheBox) {
    Start();
    auto& search = Control<QLineEdit>("txtSearch");
    int reached = 0;
    QObject::connect(&search, &QLineEdit::returnPressed, [&] { ++reached; });
    search.setText(QStringLiteral("Cure"));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(&search, key);
        EXPECT_EQ(Listed(), Texts{"Cure"});
    }
    EXPECT_EQ(reached, 0);
    EXPECT_EQ(FromQString(search.text()), "Cure");
}

TEST_F(FilterRowTest, AMousePickReloadsAtOnceAndArrowKeysOnlyWithEnter) {
    Start();
    auto& album = Control<QComboBox>("cboAlbum");
    album.setCurrentIndex(1);
    EXPECT_EQ(Listed(), Texts{"Abba"});
    QTest::keyPress(&album, Qt::Key_Down);
    EXPECT_EQ(album.currentIndex(), 2);
    EXPECT_TRUE(mainModule.SuppressComboClick);
    QTest::keyRelease(&album, Qt::Key_Down);
    EXPECT_FALSE(mainModule.SuppressComboClick);
    EXPECT_EQ(Listed(), Texts{"Abba"});
    QTest::keyClick(&album, Qt::Key_Return);
    EXPECT_EQ(Listed(), Texts{"Beatles"});
}

TEST_F(FilterRowTest, AReleasedKeyThatGotLostKeepsTheCombosSilent) {
    Start();
    mainModule.SuppressComboClick = true;
    Control<QComboBox>("cboAlbum").setCurrentIndex(1);
    EXPECT_EQ(Listed().size(), 3U);
}

TEST_F(FilterRowTest, OneOfTheTwoBoxesStaysChecked) {
    Start();
    auto& performer = Control<QCheckBox>("chkInterpret");
    auto& title = Control<QCheckBox>("chkTitle");
    QTest::mouseClick(&title, Qt::LeftButton, {}, QPoint(8, title.height() / 2));
    EXPECT_FALSE(title.isChecked());
    EXPECT_EQ(settings.values["SearchTitle"], "0");
    QTest::mouseClick(&performer, Qt::LeftButton, {}, QPoint(8, performer.height() / 2));
    EXPECT_TRUE(performer.isChecked());
    EXPECT_EQ(settings.values["SearchInterpret"], "1");
    EXPECT_EQ(Listed().size(), 3U);
}

TEST_F(FilterRowTest, ALetterFiltersAndBecomesTheOnlyBoldOne) {
    Start();
    EXPECT_TRUE(Control<QLabel>("lblAll").font().bold());
    QTest::mouseClick(&Control<QLabel>("lblB"), Qt::LeftButton);
    EXPECT_EQ(mainModule.LetterFilter, "B");
    EXPECT_EQ(Listed(), Texts{"Beatles"});
    EXPECT_TRUE(Control<QLabel>("lblB").font().bold());
    EXPECT_FALSE(Control<QLabel>("lblAll").font().bold());
    QTest::mouseClick(&Control<QLabel>("lblOther"), Qt::LeftButton);
    EXPECT_EQ(mainModule.LetterFilter, "other");
}

TEST_F(FilterRowTest, OnlyTheLetterUnderTheMouseIsWhite) {
    Start();
    auto& a = Control<QLabel>("lblA");
    auto& b = Control<QLabel>("lblB");
    const QColor rest(0, 0, 0xC0);
    EXPECT_EQ(Colour(a), rest);
    for (QLabel* label : {&a, &b}) {
        MoveMouse(*label);
    }
    EXPECT_EQ(Colour(a), rest);
    EXPECT_EQ(Colour(b), QColor(Qt::white));
    for (QWidget* other : {Grid().viewport(), static_cast<QWidget*>(&Control<QFrame>("Frame1")),
                           static_cast<QWidget*>(&Control<QFrame>("Frame2")), static_cast<QWidget*>(&Form()),
                           Grid().horizontalHeader()->viewport()}) {
        MoveMouse(b);
        ASSERT_EQ(Colour(b), QColor(Qt::white));
        MoveMouse(*other);
        EXPECT_EQ(Colour(b), rest) << FromQString(other->objectName());
    }
}

TEST_F(FilterRowTest, TheCountersOfTheStatusBarExplainThemselves) {
    Start();
    MainStatusBar& status = Form().Panes().Status();
    EXPECT_EQ(FromQString(status.ToolTip(Panel::Titles)), "");
    MoveMouse(status);
    EXPECT_EQ(FromQString(status.ToolTip(Panel::Titles)), "3 Titel in der Datenbank gespeichert");
    EXPECT_EQ(FromQString(status.ToolTip(Panel::Filecount)), "");
    mainModule.ScanRunning = true;
    MoveMouse(status);
    EXPECT_EQ(FromQString(status.ToolTip(Panel::Filecount)), "Prozent des gesamten Scanvorganges");
    EXPECT_EQ(FromQString(status.ToolTip(Panel::Interprets)), "Geschätzte verbleibende Zeit");
    EXPECT_EQ(FromQString(status.ToolTip(Panel::Titles)), "Abgelaufene Zeit");
    mainModule.ScanRunning = false;
}

TEST_F(FilterRowTest, KeysInAnOpenListWorkAsInTheClosedOne) {
    Start();
    auto& album = Control<QComboBox>("cboAlbum");
    album.showPopup();
    QTest::keyPress(album.view(), Qt::Key_Down);
    EXPECT_TRUE(mainModule.SuppressComboClick);
    QTest::keyRelease(album.view(), Qt::Key_Down);
    EXPECT_FALSE(mainModule.SuppressComboClick);
    EXPECT_EQ(Listed().size(), 3U);
    QTest::keyClick(album.view(), Qt::Key_Return);
    EXPECT_EQ(album.currentIndex(), 1);
    EXPECT_EQ(Listed(), Texts{"Abba"});
}

TEST_F(FilterRowTest, PickingTheShownEntryAgainReloadsOnce) {
    Start();
    auto& album = Control<QComboBox>("cboAlbum");
    album.setCurrentIndex(1);
    Action("mnuViewLanguageENG").trigger();
    ASSERT_EQ(album.currentIndex(), 0);
    ASSERT_EQ(Listed(), Texts{"Abba"});
    int loads = 0;
    QObject::connect(Grid().model(), &QAbstractItemModel::modelReset, &album, [&loads] { ++loads; });
    const auto pick = [&album](int index) {
        album.showPopup();
        album.view()->setCurrentIndex(album.model()->index(index, 0));
        QTest::keyClick(album.view(), Qt::Key_Return);
    };
    pick(0);
    EXPECT_EQ(Listed().size(), 3U);
    const int once = std::exchange(loads, 0);
    pick(2);
    EXPECT_EQ(Listed(), Texts{"Beatles"});
    EXPECT_EQ(std::exchange(loads, 0), once);
    mainModule.SuppressComboClick = true;
    pick(2);
    EXPECT_EQ(loads, 0);
}

TEST_F(FilterRowTest, EnterOnACheckBoxSearchesAndAClickDoesNot) {
    Start();
    Control<QLineEdit>("txtSearch").setText(QStringLiteral("abb"));
    auto& title = Control<QCheckBox>("chkTitle");
    QTest::mouseClick(&title, Qt::LeftButton, {}, QPoint(8, title.height() / 2));
    EXPECT_EQ(Listed().size(), 3U);
    QTest::keyClick(&title, Qt::Key_Return);
    EXPECT_EQ(Listed(), Texts{"Abba"});
}

TEST_F(FilterRowTest, TheGenreEntryForNoGenreIsAlwaysThere) {
    Start();
    auto& genre = Control<QComboBox>("cboGenre");
    EXPECT_EQ(FromQString(genre.itemText(1)), "Kein Genre...");
    EXPECT_EQ(genre.itemData(1).toInt(), 255);
    genre.setCurrentIndex(1);
    EXPECT_TRUE(Listed().empty());
}

TEST_F(FilterRowTest, TheTipOfAPanelStaysUntilAMovementSetsAnother) {
    Start();
    MainStatusBar& status = Form().Panes().Status();
    mainModule.ScanRunning = true;
    MoveMouse(status);
    mainModule.ScanRunning = false;
    MoveMouse(status);
    EXPECT_EQ(FromQString(status.ToolTip(Panel::Filecount)), "Prozent des gesamten Scanvorganges");
    EXPECT_EQ(FromQString(status.ToolTip(Panel::Albums)), "3 Alben in der Datenbank gespeichert");
}

} // namespace quavernet::test
