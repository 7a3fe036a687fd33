#include "help/HelpBrowser.h"
#include "help/HelpKey.h"
#include "help/QtHelpViewer.h"
#include "help/frmHelp.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/ShowHelp.h"
#include "support/LogicTest.h"
#include "widgets/Colours.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <set>

namespace quavernet::test {

namespace {

class HelpWindowTest : public LogicTest {
protected:
    HelpWindowTest() {
        services.helpViewer = &viewer;
        mainModule.Language = "GER";
    }
    void Open(const std::string& page) {
        ShowHelp(page);
        (void)QTest::qWaitForWindowActive(viewer.Form());
    }
    frmHelp& Form() { return *viewer.Form(); }
    template <typename T> T& Control(const char* name) {
        T* found = Form().findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            throw std::runtime_error(std::string("no control ") + name);
        }
        return *found;
    }
    HelpBrowser& Page() { return Control<HelpBrowser>("txtPage"); }
    std::string Shown() { return HelpSet(HelpFile()).NameOf(Page().source()); }
    std::string PageText() { return FromQString(Page().toPlainText()); }
    void SetLanguage(const std::string& language) {
        settings.values["Language"] = language;
        mainModule.Language = language;
    }

    QtHelpViewer viewer;
};

class HelpKeyTest : public LogicTest {
protected:
    HelpKeyTest() { mainModule.Language = "GER"; }
    using Pages = std::vector<std::string>;
    Pages Shown() {
        Pages pages;
        for (const auto& [file, page] : helpViewer.shown) {
            pages.push_back(page.substr(page.find('\\') + 1));
        }
        return pages;
    }
    template <typename T> T* Add(QWidget& form, const char* name) {
        auto* control = new T(&form);
        control->setObjectName(QLatin1String(name));
        return control;
    }
};

} // namespace

TEST_F(HelpWindowTest, TheWindowIsNoLargerThanTheScreen) {
    Open("HTML\\start.html");
    ASSERT_LT(Form().screen()->availableSize().width(), 980) << "the size of the form on a large screen";
    EXPECT_LT(Form().frameGeometry().width(), Form().screen()->availableSize().width());
    EXPECT_LT(Form().frameGeometry().height(), Form().screen()->availableSize().height());
    EXPECT_GT(Page().width(), 400);
    EXPECT_GT(Control<QTreeWidget>("treContents").width(), 250);
}

namespace {
/// Widths of the pictures of a page as they are laid out, in pixels.
std::vector<double> PictureWidths(const QTextBrowser& page) {
    std::vector<double> widths;
    for (QTextBlock block = page.document()->begin(); block.isValid(); block = block.next()) {
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            if (at.fragment().charFormat().isImageFormat()) {
                const QString name = at.fragment().charFormat().toImageFormat().name();
                const QImage image =
                    page.document()->resource(QTextDocument::ImageResource, QUrl(name)).value<QImage>();
                widths.push_back(image.deviceIndependentSize().width());
            }
        }
    }
    return widths;
}
} // namespace

TEST_F(HelpWindowTest, ThePicturesAreNoWiderThanThePageAndNoLargerThanTheyAre) {
    Open("HTML\\maindialoque.html");
    for (const int width : {700, 1100, 620}) {
        Form().resize(width, 500);
        QCoreApplication::processEvents();
        (void)Page().grab();
        const std::vector<double> widths = PictureWidths(Page());
        ASSERT_FALSE(widths.empty());
        for (const double picture : widths) {
            EXPECT_LE(picture, Page().viewport()->width());
            EXPECT_LE(picture, 640);
            EXPECT_GT(picture, 200);
        }
        EXPECT_EQ(Page().horizontalScrollBar()->maximum(), 0) << width;
    }
}

TEST_F(HelpWindowTest, TheZoomKeysWorkOnEveryKeyboardAndOnTheKeypad) {
    Open("HTML\\start.html");
    const double usual = Page().font().pointSizeF();
    const Qt::KeyboardModifiers control = Qt::ControlModifier;
    const std::pair<Qt::Key, Qt::KeyboardModifiers> larger[] = {{Qt::Key_Plus, control},
                                                                {Qt::Key_Equal, control},
                                                                {Qt::Key_Plus, control | Qt::ShiftModifier},
                                                                {Qt::Key_Plus, control | Qt::KeypadModifier}};
    const std::pair<Qt::Key, Qt::KeyboardModifiers> back[] = {{Qt::Key_0, control},
                                                              {Qt::Key_0, control | Qt::ShiftModifier},
                                                              {Qt::Key_0, control | Qt::KeypadModifier}};
    const std::pair<Qt::Key, Qt::KeyboardModifiers> smaller[] = {
        {Qt::Key_Minus, control},
        {Qt::Key_Minus, control | Qt::KeypadModifier},
        {Qt::Key_Underscore, control | Qt::ShiftModifier}};
    for (const auto& [zoomKey, zoomModifiers] : larger) {
        QTest::keyClick(&Page(), zoomKey, zoomModifiers);
        EXPECT_GT(Page().font().pointSizeF(), usual) << zoomKey;
        QTest::keyClick(&Page(), Qt::Key_0, control);
    }
    for (const auto& [zoomKey, zoomModifiers] : smaller) {
        QTest::keyClick(&Page(), zoomKey, zoomModifiers);
        EXPECT_LT(Page().font().pointSizeF(), usual) << zoomKey;
        QTest::keyClick(&Page(), Qt::Key_0, control);
    }
    for (const auto& [zoomKey, zoomModifiers] : back) {
        QTest::keyClick(&Page(), Qt::Key_Plus, control);
        QTest::keyClick(&Page(), zoomKey, zoomModifiers);
        EXPECT_EQ(Page().font().pointSizeF(), usual);
    }
}

TEST_F(HelpWindowTest, AWindowLeftOffTheScreenComesUpOnIt) {
    Open("HTML\\start.html");
    Form().move(5000, -3000);
    Form().resize(4000, 4000);
    Form().close();
    Open("HTML\\tree.html");
    EXPECT_TRUE(Form().screen()->availableGeometry().contains(Form().geometry()));
}

TEST_F(HelpWindowTest, APageOpensInTheLanguageOfTheProgram) {
    Open("HTML\\tree.html");
    EXPECT_TRUE(Form().isVisible());
    EXPECT_EQ(Shown(), "HTML\\tree.html");
    EXPECT_EQ(FromQString(Form().windowTitle()), "Hilfe zu Quavernet");
    EXPECT_NE(PageText().find("Der Baum mit Ihren Kategorien"), std::string::npos);
}

TEST_F(HelpWindowTest, NoPageOpensTheContents) {
    Open("");
    EXPECT_EQ(Shown(), "HTML\\contents.html");
}

TEST_F(HelpWindowTest, AMissingHelpFileOrPageShowsNothing) {
    mainModule.Language = "FRA";
    ShowHelp("HTML\\start.html");
    EXPECT_EQ(viewer.Form(), nullptr);
    mainModule.Language = "GER";
    ShowHelp("HTML\\nowhere.html");
    EXPECT_EQ(viewer.Form(), nullptr);
}

TEST_F(HelpWindowTest, ASecondPageComesUpInTheSameWindow) {
    Open("HTML\\tree.html");
    const frmHelp* first = viewer.Form();
    Open("HTML\\player.html");
    EXPECT_EQ(viewer.Form(), first);
    EXPECT_EQ(Shown(), "HTML\\player.html");
    Form().close();
    Open("HTML\\scanlog.html");
    EXPECT_EQ(viewer.Form(), first);
    EXPECT_TRUE(Form().isVisible());
    EXPECT_EQ(Shown(), "HTML\\scanlog.html");
}

TEST_F(HelpWindowTest, ALinkIsFollowedByTabAndEnterAndTheButtonsGoBackAndForward) {
    Open("HTML\\scanlog.html");
    EXPECT_FALSE(Control<QToolButton>("cmdBack").isEnabled());
    Page().setFocus();
    QTest::keyClick(&Page(), Qt::Key_Tab);
    QTest::keyClick(&Page(), Qt::Key_Return);
    EXPECT_EQ(Shown(), "HTML\\scanning.html");
    QTest::mouseClick(&Control<QToolButton>("cmdBack"), Qt::LeftButton);
    EXPECT_EQ(Shown(), "HTML\\scanlog.html");
    QTest::mouseClick(&Control<QToolButton>("cmdForward"), Qt::LeftButton);
    EXPECT_EQ(Shown(), "HTML\\scanning.html");
    QTest::keyClick(&Form(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Shown(), "HTML\\scanlog.html");
    QTest::keyClick(&Form(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Shown(), "HTML\\scanning.html");
    QTest::keyClick(&Form(), Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(Shown(), "HTML\\contents.html");
    QTest::keyClick(&Form(), Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(HelpWindowTest, TheContentsOpenPagesAndFollowTheShownOne) {
    Open("HTML\\player.html");
    auto& tree = Control<QTreeWidget>("treContents");
    ASSERT_NE(tree.currentItem(), nullptr);
    EXPECT_EQ(FromQString(tree.currentItem()->text(0)), "Der Player");
    ASSERT_NE(tree.currentItem()->parent(), nullptr);
    EXPECT_EQ(FromQString(tree.currentItem()->parent()->text(0)), "Musik abspielen");
    tree.setFocus();
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_EQ(Shown(), "HTML\\playlists.html");
}

TEST_F(HelpWindowTest, NothingOutsideTheHelpIsLoaded) {
    Open("HTML\\start.html");
    for (const char* place : {"http://example.org/", "file:///etc/hostname", "qrc:/icons/quavernet.svg",
                              "none.html", "mailto:someone@example.org"}) {
        Page().setSource(QUrl(QLatin1String(place)));
        EXPECT_EQ(Shown(), "HTML\\start.html") << place;
        EXPECT_FALSE(Page().loadResource(QTextDocument::ImageResource, QUrl(QLatin1String(place))).isValid());
    }
    EXPECT_FALSE(Page().openExternalLinks());
    EXPECT_NE(PageText().find("Willkommen bei Quavernet"), std::string::npos);
}

TEST_F(HelpWindowTest, TheStyleSheetReachesThePage) {
    Open("HTML\\edittree.html");
    QTextCursor cursor = Page().document()->find(QStringLiteral("Den neuen Namen bekommt"));
    ASSERT_FALSE(cursor.isNull());
    EXPECT_EQ(cursor.blockFormat().background().color(), Form().palette().color(QPalette::AlternateBase));
    EXPECT_EQ(cursor.charFormat().foreground().style(), Qt::NoBrush);
}

TEST_F(HelpWindowTest, TheTextOnAPageIsFoundFromTheOtherEndToo) {
    Open("HTML\\scanning.html");
    QTest::keyClick(&Form(), Qt::Key_F, Qt::ControlModifier);
    auto& find = Control<QLineEdit>("txtFind");
    EXPECT_TRUE(find.hasFocus());
    QTest::keyClicks(&find, QStringLiteral("volume information"));
    QTest::keyClick(&find, Qt::Key_Return);
    const int place = Page().textCursor().position();
    EXPECT_EQ(FromQString(Page().textCursor().selectedText()), "Volume Information");
    QTest::keyClick(&Form(), Qt::Key_F3);
    EXPECT_EQ(Page().textCursor().position(), place);
    EXPECT_EQ(FromQString(Control<QLabel>("lblFound").text()), "");
    QTest::keyClick(&Form(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(FromQString(Page().textCursor().selectedText()), "Volume Information");
    find.selectAll();
    QTest::keyClicks(&find, QStringLiteral("xyzzy"));
    QTest::keyClick(&find, Qt::Key_Return);
    EXPECT_EQ(FromQString(Control<QLabel>("lblFound").text()), "Nichts gefunden");
    QTest::keyClick(&find, Qt::Key_Backspace);
    EXPECT_EQ(FromQString(Control<QLabel>("lblFound").text()), "");
}

TEST_F(HelpWindowTest, ASearchOverAllPagesListsThemAndMarksTheText) {
    Open("");
    QTest::keyClick(&Form(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    auto& search = Control<QLineEdit>("txtSearchAll");
    auto& results = Control<QListWidget>("lstResults");
    EXPECT_TRUE(search.hasFocus());
    EXPECT_FALSE(results.isVisible());
    QTest::keyClicks(&search, QStringLiteral("128 bytes"));
    ASSERT_EQ(results.count(), 1);
    EXPECT_TRUE(results.isVisible());
    EXPECT_FALSE(Control<QTreeWidget>("treContents").isVisible());
    EXPECT_EQ(FromQString(results.item(0)->text()), "Details und Tags einer Datei");
    QTest::keyClick(&search, Qt::Key_Return);
    EXPECT_EQ(Shown(), "HTML\\details.html");
    EXPECT_EQ(FromQString(Page().textCursor().selectedText()), "128 Bytes");
    search.setFocus();
    search.selectAll();
    QTest::keyClicks(&search, QStringLiteral("xyzzy"));
    ASSERT_EQ(results.count(), 1);
    EXPECT_EQ(FromQString(results.item(0)->text()), "Nichts gefunden");
    QTest::keyClick(&search, Qt::Key_Return);
    EXPECT_EQ(Shown(), "HTML\\details.html");
    search.clear();
    EXPECT_TRUE(Control<QTreeWidget>("treContents").isVisible());
}

TEST_F(HelpWindowTest, TheWindowTakesOnAnotherLanguageWithTheSamePage) {
    Open("HTML\\toplists.html");
    SetLanguage("ENG");
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&Form(), &change);
    EXPECT_EQ(Shown(), "HTML\\toplists.html");
    EXPECT_EQ(FromQString(Form().windowTitle()), "Quavernet Help");
    EXPECT_EQ(FromQString(Control<QToolButton>("cmdBack").toolTip()), "Back");
    EXPECT_NE(PageText().find("Charts and newest files"), std::string::npos);
    EXPECT_EQ(FromQString(Control<QTreeWidget>("treContents").topLevelItem(0)->text(0)), "First steps");
    EXPECT_FALSE(Control<QToolButton>("cmdBack").isEnabled()); // No way back into the other language.
}

TEST_F(HelpWindowTest, APageAskedForAfterALanguageSwitchIsInTheNewLanguage) {
    Open("HTML\\start.html");
    SetLanguage("ENG");
    Open("HTML\\start.html");
    EXPECT_NE(PageText().find("Welcome to Quavernet"), std::string::npos);
    EXPECT_EQ(FromQString(Control<QLineEdit>("txtSearchAll").placeholderText()), "Search all pages");
}

TEST_F(HelpWindowTest, AnUnreadableLanguageLeavesTheOpenPage) {
    Open("HTML\\start.html");
    SetLanguage("FRA");
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&Form(), &change);
    EXPECT_NE(PageText().find("Willkommen bei Quavernet"), std::string::npos);
}

TEST_F(HelpWindowTest, TheFieldsHintsFollowTheTextOfADarkDesktop) {
    Open("");
    const QPalette before = QApplication::palette();
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(27, 30, 32));
    dark.setColor(QPalette::Text, QColor(252, 252, 252));
    dark.setColor(QPalette::PlaceholderText, Qt::black);
    for (const QPalette& palette : {dark, before}) {
        QApplication::setPalette(palette);
        QCoreApplication::processEvents();
        for (const char* name : {"txtFind", "txtSearchAll"}) {
            const QPalette shown = Control<QLineEdit>(name).palette();
            EXPECT_EQ(shown.color(QPalette::PlaceholderText), ColourOf(OwnColour::Hint, palette)) << name;
            EXPECT_NE(shown.color(QPalette::PlaceholderText), shown.color(QPalette::Text)) << name;
        }
    }
}

TEST_F(HelpWindowTest, TheWidthForPicturesDoesNotDependOnTheirHeight) {
    for (const char* page : {"HTML\\start.html", "HTML\\scanreminder.html"}) {
        Open(page);
        std::set<int> widths;
        for (int height = 300; height <= 1500; height += 100) {
            Form().resize(900, height);
            QCoreApplication::processEvents();
            widths.insert(Page().viewport()->width());
        }
        EXPECT_EQ(widths.size(), 1U) << "the scroll bar would come and go with the pictures' sizes";
    }
}

TEST_F(HelpWindowTest, NoEntryOfTheContentsIsCut) {
    for (const char* language : {"GER", "ENG"}) {
        SetLanguage(language);
        Open("");
        auto& contents = Control<QTreeWidget>("treContents");
        for (QTreeWidgetItemIterator item(&contents); *item != nullptr; ++item) {
            const QRect place = contents.visualItemRect(*item);
            const int text = contents.fontMetrics().horizontalAdvance((*item)->text(0));
            EXPECT_LE(text + 8, place.width()) << FromQString((*item)->text(0));
        }
    }
}

TEST_F(HelpWindowTest, TheHelpWorksWhileAModalFormIsOpen) {
    Open("HTML\\start.html");
    QDialog modal;
    modal.setObjectName(QStringLiteral("frmAbout"));
    modal.setModal(true);
    modal.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&modal));
    ShowHelp("HTML\\player.html");
    QCoreApplication::processEvents();
    QTest::mouseClick(Form().windowHandle(), Qt::LeftButton, {},
                      Control<QToolButton>("cmdContents").geometry().center());
    EXPECT_EQ(Shown(), "HTML\\contents.html");
    modal.close();
    QCoreApplication::processEvents();
    EXPECT_TRUE(Form().isVisible());
    ShowHelp("HTML\\tree.html");
    EXPECT_EQ(Shown(), "HTML\\tree.html");
    EXPECT_TRUE(Form().isVisible());
}

TEST_F(HelpWindowTest, EveryControlIsReachedByTabAndNamed) {
    Open("HTML\\start.html");
    for (const char* name : {"cmdBack", "cmdForward", "cmdContents", "txtFind", "cmdFindPrevious",
                             "cmdFindNext", "txtSearchAll", "treContents", "txtPage"}) {
        const auto& control = Control<QWidget>(name);
        EXPECT_TRUE(control.focusPolicy() & Qt::TabFocus) << name;
        if (QLatin1String(name) != QLatin1String("txtPage")) {
            EXPECT_FALSE(control.accessibleName().isEmpty()) << name;
        }
    }
}

TEST_F(HelpKeyTest, F1OpensThePageOfTheControlOrOfTheForm) {
    QWidget form;
    form.setObjectName(QStringLiteral("frmMain"));
    auto* search = Add<QLineEdit>(form, "txtSearch");
    auto* grid = Add<QTreeWidget>(form, "grdMp3");
    auto* tree = Add<QTreeWidget>(form, "TreeView");
    HelpKey key(&form);
    for (QWidget* control : {static_cast<QWidget*>(search), static_cast<QWidget*>(grid),
                             static_cast<QWidget*>(tree), grid->viewport(), &form}) {
        QTest::keyClick(control, Qt::Key_F1);
    }
    EXPECT_EQ(Shown(), (Pages{"maindialoque.html", "filewindow.html", "tree.html", "filewindow.html",
                              "maindialoque.html"}));
    EXPECT_EQ(helpViewer.shown.front().first, "help.chm");
}

TEST_F(HelpKeyTest, TheFilterCombosWaitForTheKeyToComeUp) {
    QWidget form;
    form.setObjectName(QStringLiteral("frmMain"));
    auto* combo = Add<QComboBox>(form, "cboAlbum");
    HelpKey key(&form);
    QTest::keyPress(combo, Qt::Key_F1);
    EXPECT_EQ(Shown(), Pages{});
    QTest::keyRelease(combo, Qt::Key_F1);
    EXPECT_EQ(Shown(), Pages{"maindialoque.html"});
}

TEST_F(HelpKeyTest, TheScanLogsListHasAPageOfItsOwnButItsButtonHasNot) {
    QDialog form;
    form.setObjectName(QStringLiteral("frmScanLog"));
    auto* list = Add<QListWidget>(form, "lstLog");
    auto* button = Add<QPushButton>(form, "cmdClose");
    HelpKey key(&form);
    QTest::keyClick(list, Qt::Key_F1);
    QTest::keyClick(button, Qt::Key_F1);
    QTest::keyClick(&form, Qt::Key_F1);
    EXPECT_EQ(Shown(), (Pages{"scanlog.html", "scanreminder.html", "scanreminder.html"}));
}

TEST_F(HelpKeyTest, TheKeyIsSwallowedAndOpensOnePageOnly) {
    struct Counter : QWidget {
        int keys = 0;
        void keyPressEvent(QKeyEvent*) override { ++keys; }
    } owner;
    auto* form = new QWidget(&owner);
    form->setObjectName(QStringLiteral("frmPlayer"));
    auto* label = Add<QLabel>(*form, "lblFile");
    HelpKey key(form);
    QTest::keyClick(label, Qt::Key_F1);
    EXPECT_EQ(Shown(), Pages{"player.html"});
    EXPECT_EQ(owner.keys, 0);
    QTest::keyClick(label, Qt::Key_F2);
    EXPECT_EQ(owner.keys, 1);
    EXPECT_EQ(Shown(), Pages{"player.html"});
}

TEST_F(HelpKeyTest, AKeyHeldDownOpensOnePage) {
    QWidget form;
    form.setObjectName(QStringLiteral("frmDetails"));
    HelpKey key(&form);
    QKeyEvent again(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier, QString(), true);
    QTest::keyPress(&form, Qt::Key_F1);
    QCoreApplication::sendEvent(&form, &again);
    EXPECT_EQ(Shown(), Pages{"details.html"});
}

TEST_F(HelpKeyTest, AControlAddedLaterAndAFormInAFormAreKeptApart) {
    QWidget form;
    form.setObjectName(QStringLiteral("frmMain"));
    form.show();
    HelpKey key(&form);
    auto* late = Add<QTreeWidget>(form, "grdMp3");
    late->show();
    QCoreApplication::processEvents();
    QTest::keyClick(late, Qt::Key_F1);
    auto* about = new QDialog(&form);
    about->setObjectName(QStringLiteral("frmAbout"));
    HelpKey aboutKey(about);
    about->show();
    QCoreApplication::processEvents();
    QTest::keyClick(about, Qt::Key_F1);
    EXPECT_EQ(Shown(), (Pages{"filewindow.html", "start.html"}));
}

} // namespace quavernet::test
