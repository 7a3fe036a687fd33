#include "gui/CoversWindowTest.h"

#include "app/LoadResString.h"
#include "app/ScopedValue.h"
#include "widgets/Twips.h"

#include <QDrag>
#include <QMessageBox>
#include <QMimeData>

namespace quavernet::test {

namespace {

const char* const Images[] = {"imgFront", "imgBack", "imgCD", "imgCD2", "imgInlay", "imgInlet"};
const char* const BrowseButtons[] = {"cmdBrowseFront", "cmdBrowseBack",  "cmdBrowseCD",
                                     "cmdBrowseCD2",   "cmdBrowseInlay", "cmdBrowseInlet"};
const char* const SearchButtons[] = {"cmdFrontOnlineSearch", "cmdBackOnlineSearch",  "cmdCDOnlineSearch",
                                     "cmdCD2OnlineSearch",   "cmdInlayOnlineSearch", "cmdInletOnlineSearch"};
const char* const DeleteButtons[] = {"cdmDeleteFront", "cdmDeleteBack",  "cdmDeleteCD",
                                     "cdmDeleteCD2",   "cdmDeleteInlay", "cdmDeleteInlet"};

} // namespace

TEST_F(CoversWindowTest, AllTextsFollowTheLanguageWhileTheWindowIsOpen) {
    OpenCovers();
    EXPECT_EQ(FromQString(Covers()->windowTitle()), "Cover Verwaltung");
    const char* const captions[] = {"Front", "Back", "CD", "CD2", "Inlay", "Inlet"};
    for (int page = 0; page < 6; ++page) {
        EXPECT_EQ(Caption(Tabs().tabText(page)), captions[page]);
    }
    EXPECT_EQ(TextOf("cmdBrowseFront"), "Suchen...");
    EXPECT_EQ(TextOf("cmdFrontOnlineSearch"), "Online Suche...");
    EXPECT_EQ(TextOf("cdmDeleteFront"), "Löschen");
    EXPECT_EQ(TextOf("cmdClose"), "Schliessen");
    ClickAlbum(0);
    for (const char* language : {"mnuViewLanguageENG", "mnuViewLanguageGER"}) {
        Action(language).trigger();
        EXPECT_EQ(FromQString(Covers()->windowTitle()), LoadResString(506));
        for (int page = 0; page < 6; ++page) {
            EXPECT_EQ(Caption(Tabs().tabText(page)), LoadResString(322 + page));
            EXPECT_EQ(TextOf(BrowseButtons[page]), LoadResString(105));
            EXPECT_EQ(TextOf(SearchButtons[page]), LoadResString(106));
            EXPECT_EQ(TextOf(DeleteButtons[page]), LoadResString(107));
        }
        EXPECT_EQ(TextOf("cmdClose"), LoadResString(108));
        EXPECT_EQ(Albums().selectionModel()->selectedRows().size(), 1) << "only the texts change";
    }
}

TEST_F(CoversWindowTest, TheCommandShowsOneWindowBesideTheMainOne) {
    OpenCovers();
    EXPECT_EQ(Covers()->parentWidget(), &Form());
    EXPECT_FALSE(Covers()->isModal());
    EXPECT_TRUE(mainModule.CoversOpen);
    EXPECT_EQ(ListedAlbums(), (Texts{"Abba - Album 1", "Cure - Album 2"}));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    frmCovers* const first = Covers();
    ClickAlbum(1);
    Form().activateWindow();
    mainModule.Connection->Execute("Delete from Files where File_id = 1");
    QTest::keyClick(Form().windowHandle(), Qt::Key_L, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == first; }));
    EXPECT_EQ(Covers(), first);
    EXPECT_EQ(ListedAlbums().size(), 2U) << "an open window is not loaded again";
    EXPECT_EQ(Albums().currentIndex().row(), 1);
}

TEST_F(CoversWindowTest, AClosedWindowIsForgottenAndTheNextOneLoadsAgain) {
    OpenCovers();
    const auto close = [this](int way) {
        if (way == 0) {
            Press("cmdClose");
        } else if (way == 1) {
            QTest::keyClick(Covers(), Qt::Key_Escape);
        } else {
            Covers()->close();
        }
    };
    for (int way = 0; way < 3; ++way) {
        ClickAlbum(0);
        close(way);
        EXPECT_EQ(Covers(), nullptr) << way;
        EXPECT_FALSE(mainModule.CoversOpen) << way;
        OpenCovers();
        EXPECT_FALSE(Albums().selectionModel()->hasSelection());
    }
    Covers()->close();
    mainModule.Connection->Execute("Delete from Files where File_id = 1");
    OpenCovers();
    EXPECT_EQ(ListedAlbums(), Texts{"Cure - Album 2"});
    Action("mnuViewLanguageENG").trigger();
}

TEST_F(CoversWindowTest, TheWindowClosesWithTheMainWindow) {
    OpenCovers();
    mainModule.PlayerOpen = true;
    Form().close();
    EXPECT_FALSE(mainModule.CoversOpen);
    EXPECT_EQ(Covers(), nullptr);
    windows->BringToFront();
    EXPECT_EQ(Covers(), nullptr);
    mainModule.PlayerOpen = false;
}

TEST_F(CoversWindowTest, AnAlbumShowsItsPicturesAndTheNextOneRemovesThem) {
    StartWithAlbums();
    const std::string front = MakePicture("front.png", Qt::red);
    const std::string inlet = MakePicture("inlet.bmp", Qt::blue);
    mainModule.Connection->Execute(
        "Insert into Covers (Album_id, Interpret_id, Front, Back, CD, CD2, Inlay, Inlet) values (1, 1, '" +
        front + "', '/gone', '', null, '', '" + inlet + "')");
    OpenCovers();
    EXPECT_EQ(PanelPath(), "");
    ClickAlbum(0);
    EXPECT_EQ(Shown("imgFront"), QColor(Qt::red));
    EXPECT_EQ(Shown("imgInlet"), QColor(Qt::blue));
    for (const char* name : {"imgBack", "imgCD", "imgCD2", "imgInlay"}) {
        EXPECT_TRUE(IsEmpty(name)) << name;
    }
    EXPECT_EQ(PanelPath(), front);
    QTest::keyClick(&Albums(), Qt::Key_Down);
    for (const char* name : Images) {
        EXPECT_TRUE(IsEmpty(name)) << name;
    }
    EXPECT_EQ(PanelPath(), "");
}

TEST_F(CoversWindowTest, TheFirstKeyInTheListGoesToItsFirstEntry) {
    OpenCovers();
    EXPECT_EQ(Covers()->focusWidget(), &Albums());
    EXPECT_FALSE(Albums().selectionModel()->hasSelection());
    QTest::keyClick(&Albums(), Qt::Key_Down);
    EXPECT_EQ(Albums().currentIndex().row(), 0);
    EXPECT_TRUE(Albums().selectionModel()->isSelected(Albums().model()->index(0, 0)));
    QTest::keyClick(&Albums(), 'c');
    EXPECT_EQ(Albums().currentIndex().row(), 1) << "and a letter to what begins with it";
}

TEST_F(CoversWindowTest, NothingButAnotherAlbumTakesTheSelectionAway) {
    OpenCovers();
    ClickAlbum(0);
    ASSERT_TRUE(DropOn("imgFront", {MakePicture("front.png", Qt::red)}));
    ClickAlbum(0, Qt::ControlModifier);
    EXPECT_TRUE(Albums().selectionModel()->isSelected(Albums().model()->index(0, 0)));
    EXPECT_EQ(Shown("imgFront"), QColor(Qt::red));
}

TEST_F(CoversWindowTest, EachPageBrowsesForItsOwnImage) {
    OpenCovers();
    ClickAlbum(1);
    std::string expected = "2";
    for (int page = 0; page < 6; ++page) {
        Tabs().setCurrentIndex(page);
        const std::string path = MakePicture(std::to_string(page) + ".png", QColor(page * 40, 0, 7));
        dialogs.file = path;
        Press(BrowseButtons[page]);
        EXPECT_EQ(PanelPath(), path);
        EXPECT_EQ(Shown(Images[page]), QColor(page * 40, 0, 7));
        expected += "|" + path;
    }
    EXPECT_EQ(StoredCovers(), Texts{expected});
    EXPECT_EQ(dialogs.shown.size(), 6U);
}

TEST_F(CoversWindowTest, ThePageThatComesToTheFrontSetsThePanel) {
    OpenCovers();
    ClickAlbum(0);
    const std::string front = MakePicture("front.png", Qt::red);
    const std::string inlay = MakePicture("inlay.png", Qt::blue);
    ASSERT_TRUE(DropOn("imgFront", {front}));
    Tabs().setCurrentIndex(4);
    EXPECT_EQ(PanelPath(), "");
    ASSERT_TRUE(DropOn("imgInlay", {inlay}));
    EXPECT_EQ(PanelPath(), inlay);
    Tabs().setCurrentIndex(0);
    EXPECT_EQ(PanelPath(), front);
    Tabs().setCurrentIndex(4);
    ClickAlbum(1);
    ClickAlbum(0);
    EXPECT_EQ(PanelPath(), front) << "of another page, until the page changes";
    Tabs().setCurrentIndex(5);
    Tabs().setCurrentIndex(4);
    EXPECT_EQ(PanelPath(), inlay);
}

TEST_F(CoversWindowTest, DeletingLeavesThePictureUntilAnotherAlbumIsChosen) {
    OpenCovers();
    for (int page = 0; page < 6; ++page) {
        ClickAlbum(0);
        Tabs().setCurrentIndex(page);
        ASSERT_TRUE(DropOn(Images[page], {MakePicture("a.png", Qt::green)}));
        Press(DeleteButtons[page]);
        EXPECT_EQ(StoredCovers(), Texts{"1||||||"});
        EXPECT_EQ(Shown(Images[page]), QColor(Qt::green));
        ClickAlbum(1);
        EXPECT_TRUE(IsEmpty(Images[page]));
        ClickAlbum(0);
        EXPECT_TRUE(IsEmpty(Images[page]));
    }
}

TEST_F(CoversWindowTest, TheFirstOfTheDroppedFilesIsTaken) {
    OpenCovers();
    ClickAlbum(0);
    const std::string a = MakePicture("a ü'%.png", Qt::red);
    const std::string b = MakePicture("b.png", Qt::blue);
    EXPECT_TRUE(DropOn("imgFront", {a, b}));
    EXPECT_EQ(StoredCovers(), Texts{"1|" + a + "|||||"});
    EXPECT_EQ(Shown("imgFront"), QColor(Qt::red));
    EXPECT_EQ(PanelPath(), a);
}

TEST_F(CoversWindowTest, APictureOfTheBrowserIsTakenAsTheFileThatItOffers) {
    OpenCovers();
    ClickAlbum(0);
    const std::string path = MakePicture("cache.png", Qt::red);
    const auto answer = [this](const QMimeData& data) {
        QDragEnterEvent enter({20, 20}, Qt::CopyAction | Qt::LinkAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&Box("imgCD"), &enter);
        QDropEvent drop({20, 20}, Qt::CopyAction | Qt::LinkAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&Box("imgCD"), &drop);
        EXPECT_EQ(enter.isAccepted(), drop.isAccepted());
        return drop.isAccepted();
    };
    QMimeData picture;
    picture.setImageData(QImage(8, 8, QImage::Format_RGB32));
    picture.setHtml(QStringLiteral("<img src=\"http://x/a.png\">"));
    EXPECT_FALSE(answer(picture)) << "no file";
    picture.setData(QStringLiteral("text/uri-list"), "http://x/a.png\r\n");
    EXPECT_FALSE(answer(picture)) << "a link to the web alone";
    picture.setData(QStringLiteral("text/uri-list"),
                    "http://x/a.png\r\nfile://" + QByteArray::fromStdString(path) + "\r\n");
    EXPECT_TRUE(answer(picture));
    EXPECT_EQ(StoredCovers(), Texts{"1|||" + path + "|||"});
}

TEST_F(CoversWindowTest, ADropThatIsNoPictureChangesNothingThatIsSeen) {
    OpenCovers();
    ClickAlbum(0);
    const std::string front = MakePicture("front.png", Qt::red);
    ASSERT_TRUE(DropOn("imgFront", {front}));
    const std::string text = folder / "notes.png";
    WriteBytes(text, "no picture");
    for (const std::string& path : {text, folder.Path(), folder / "missing.png", std::string("/dev/zero")}) {
        EXPECT_TRUE(DropOn("imgFront", {path, front})) << path;
        EXPECT_EQ(Shown("imgFront"), QColor(Qt::red)) << path;
        EXPECT_EQ(PanelPath(), front) << path;
        EXPECT_EQ(StoredCovers(), Texts{"1|" + front + "|||||"}) << path;
    }
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(CoversWindowTest, NothingIsTakenWithoutAnAlbumDuringAScanOrUnderABox) {
    OpenCovers();
    const std::string path = MakePicture("a.png", Qt::red);
    EXPECT_FALSE(DropOn("imgFront", {path})) << "no album";
    ClickAlbum(0);
    {
        const ScopedValue scan(mainModule.ScanRunning, true);
        EXPECT_FALSE(DropOn("imgFront", {path})) << "a scan";
    }
    {
        const ScopedValue alone(mainModule.ActsAlone, true);
        EXPECT_FALSE(DropOn("imgFront", {path})) << "a command that acts alone";
    }
    {
        QMessageBox box(Covers());
        box.open();
        EXPECT_FALSE(DropOn("imgFront", {path})) << "a box";
    }
    dialogs.file = path;
    bool dropped = true;
    dialogs.onShow = [&] { dropped = DropOn("imgFront", {path}); };
    Press("cmdBrowseFront");
    EXPECT_FALSE(dropped) << "while a file is being chosen";
    ClickAlbum(1);
    EXPECT_TRUE(DropOn("imgFront", {path}));
    EXPECT_FALSE(Drop(Albums(), {path}, {5, 5})) << "the list takes no files";
}

TEST_F(CoversWindowTest, WhileAScanRunsNothingActs) {
    OpenCovers();
    ClickAlbum(0);
    ASSERT_TRUE(DropOn("imgFront", {MakePicture("a.png", Qt::red)}));
    const Texts before = StoredCovers();
    dialogs.file = MakePicture("b.png", Qt::blue);
    for (bool* flag : {&mainModule.ScanRunning, &mainModule.ActsAlone}) {
        const ScopedValue running(*flag, true);
        Press("cmdBrowseFront");
        Press("cdmDeleteFront");
        Press("cmdFrontOnlineSearch");
        QTest::mouseDClick(&Box("imgFront"), Qt::LeftButton);
        QTest::mousePress(&Box("imgFront"), Qt::LeftButton, {}, {20, 20});
        QTest::mouseMove(&Box("imgFront"), {90, 90});
        QTest::mouseRelease(&Box("imgFront"), Qt::LeftButton, {}, {90, 90});
    }
    EXPECT_EQ(StoredCovers(), before);
    EXPECT_EQ(dialogs.shown, Texts{});
    EXPECT_EQ(shell.addresses, Texts{});
    EXPECT_EQ(shell.executed, Texts{});
    EXPECT_TRUE(Box("imgFront").findChildren<QDrag*>().isEmpty());
    QTest::mouseDClick(&Box("imgFront"), Qt::LeftButton);
    EXPECT_EQ(shell.executed.size(), 1U);
}

TEST_F(CoversWindowTest, InsideABrowseNoOtherCommandOfTheWindowBegins) {
    OpenCovers();
    ClickAlbum(0);
    const std::string path = MakePicture("a.png", Qt::red);
    dialogs.file = path;
    int rounds = 0;
    dialogs.onShow = [&] {
        ++rounds;
        Press("cmdBrowseFront");
        Press("cdmDeleteFront");
        Press("cmdFrontOnlineSearch");
    };
    Press("cmdBrowseFront");
    EXPECT_EQ(rounds, 1);
    EXPECT_EQ(shell.addresses, Texts{});
    EXPECT_EQ(StoredCovers(), Texts{"1|" + path + "|||||"});
}

TEST_F(CoversWindowTest, ADoubleClickOnAnyPictureOpensThePanelsFile) {
    OpenCovers();
    QTest::mouseDClick(&Box("imgFront"), Qt::LeftButton);
    EXPECT_EQ(shell.executed, Texts{});
    ClickAlbum(0);
    const std::string path = MakePicture("a.png", Qt::red);
    ASSERT_TRUE(DropOn("imgFront", {path}));
    QTest::mouseDClick(&Box("imgFront"), Qt::RightButton);
    EXPECT_EQ(shell.executed, Texts{});
    QTest::mouseDClick(&Box("imgFront"), Qt::LeftButton);
    EXPECT_EQ(shell.executed, Texts{path});
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(CoversWindowTest, ADragOffersACopyOfThePanelsFile) {
    OpenCovers();
    ClickAlbum(0);
    const auto drags = [this] {
        QTest::mousePress(&Box("imgFront"), Qt::LeftButton, {}, {20, 20});
        QMouseEvent move(QEvent::MouseMove, QPointF(90, 90), QPointF(90, 90), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&Box("imgFront"), &move);
        QTest::mouseRelease(&Box("imgFront"), Qt::LeftButton, {}, {90, 90});
        return Box("imgFront").findChildren<QDrag*>();
    };
    EXPECT_TRUE(drags().isEmpty()) << "the panel is empty";
    const std::string path = MakePicture("a ü.png", Qt::red);
    ASSERT_TRUE(DropOn("imgFront", {path}));
    const QList<QDrag*> begun = drags();
    ASSERT_EQ(begun.size(), 1);
    EXPECT_EQ(LocalFiles(*begun[0]->mimeData()), Texts{path});
    EXPECT_EQ(begun[0]->supportedActions(), Qt::CopyAction);
}

TEST_F(CoversWindowTest, EveryPageSearchesForTheAlbum) {
    OpenCovers();
    Press("cmdFrontOnlineSearch");
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].text, LoadResString(319));
    ClickAlbum(1);
    settings.values["Coverstring"] = "http://x/#coverstring#";
    for (int page = 0; page < 6; ++page) {
        Tabs().setCurrentIndex(page);
        Press(SearchButtons[page]);
    }
    EXPECT_EQ(shell.addresses, Texts(6, "http://x/Cure  Album 2"));
}

TEST_F(CoversWindowTest, TheListTakesTheWidthThatIsLeftAndHeightsStay) {
    OpenCovers();
    EXPECT_GE(Covers()->minimumWidth(), ToPixels(11070));
    EXPECT_GE(Covers()->minimumHeight(), ToPixels(7410));
    const int listHeight = Albums().height();
    const QSize tab = Tabs().size();
    for (const QSize& size : {QSize(1000, 700), QSize(1400, 900), QSize(100, 100)}) {
        Covers()->resize(size);
        const QSize now = Covers()->size();
        EXPECT_EQ(now, size.expandedTo(Covers()->minimumSize()));
        EXPECT_EQ(Albums().geometry(), QRect(0, 3, now.width() - ToPixels(7300), listHeight));
        EXPECT_EQ(Tabs().geometry(), QRect(QPoint(Albums().width() + ToPixels(45), 3), tab));
        EXPECT_EQ(Part<QWidget>("cmdClose").x(), now.width() - ToPixels(1150));
        EXPECT_EQ(Part<QWidget>("StatusBar1").geometry().bottom(), now.height() - 1);
        EXPECT_GT(Part<QWidget>("StatusBar1").y(), Part<QWidget>("cmdClose").geometry().bottom());
        EXPECT_LT(Tabs().geometry().right(), now.width());
    }
}

TEST_F(CoversWindowTest, NoCaptionIsCutInEitherLanguageAndWithLargeFonts) {
    const QFont font = QApplication::font();
    for (const int size : {font.pointSize(), 2 * font.pointSize()}) {
        QFont other = font;
        other.setPointSize(size);
        QApplication::setFont(other);
        if (windows) {
            Covers()->close();
        }
        OpenCovers();
        for (const char* language : {"mnuViewLanguageENG", "mnuViewLanguageGER"}) {
            Action(language).trigger();
            for (const char* name :
                 {"cmdBrowseFront", "cmdFrontOnlineSearch", "cdmDeleteFront", "cmdClose"}) {
                const auto& button = Part<QPushButton>(name);
                EXPECT_GE(button.width(),
                          button.fontMetrics().size(Qt::TextShowMnemonic, button.text()).width() + 4)
                    << name;
                EXPECT_GT(button.height(), button.fontMetrics().height()) << name;
                EXPECT_TRUE(
                    Covers()->rect().contains(QRect(button.mapTo(Covers(), QPoint(0, 0)), button.size())))
                    << name;
            }
            EXPECT_GT(Albums().width(), 100);
        }
    }
    QApplication::setFont(font);
}

TEST_F(CoversWindowTest, F1OpensThePageOfTheCovers) {
    OpenCovers();
    QTest::keyClick(&Albums(), Qt::Key_F1);
    ASSERT_EQ(helpViewer.shown.size(), 1U);
    EXPECT_EQ(helpViewer.shown[0].second, "HTML\\coveradministration.html");
    QTest::keyClick(&Part<QWidget>("cdmDeleteFront"), Qt::Key_F1);
    EXPECT_EQ(helpViewer.shown.size(), 2U);
}

TEST_F(CoversWindowTest, AMinimisedWindowComesBackAndAMinimisedMainWindowClosesNothing) {
    OpenCovers();
    frmCovers* const first = Covers();
    first->showMinimized();
    Action("mnuManageCovers").trigger();
    EXPECT_EQ(Covers(), first);
    EXPECT_FALSE(first->isMinimized());
    Form().showMinimized();
    QCoreApplication::processEvents();
    EXPECT_EQ(Covers(), first);
    EXPECT_TRUE(mainModule.CoversOpen);
    Form().showNormal();
}

TEST_F(CoversWindowTest, AWindowThatIsClosedInsideItsOwnCommandEndsItQuietly) {
    OpenCovers();
    ClickAlbum(0);
    const std::string path = MakePicture("a.png", Qt::red);
    dialogs.file = path;
    dialogs.onShow = [this] {
        Covers()->close();
        realEvents.DoEvents();
    };
    Press("cmdBrowseFront");
    EXPECT_EQ(Covers(), nullptr);
    EXPECT_FALSE(mainModule.CoversOpen);
    EXPECT_EQ(StoredCovers(), Texts{"1|" + path + "|||||"}) << "the choice counts";
    dialogs.onShow = nullptr;
    OpenCovers();
    ClickAlbum(0);
    EXPECT_EQ(Shown("imgFront"), QColor(Qt::red));
}

TEST_F(CoversWindowTest, EveryBoxOpensAndDragsThePanelsFile) {
    OpenCovers();
    ClickAlbum(0);
    const std::string front = MakePicture("front.png", Qt::red);
    ASSERT_TRUE(DropOn("imgFront", {front}));
    ClickAlbum(1);
    Tabs().setCurrentIndex(5);
    ClickAlbum(0);
    EXPECT_EQ(PanelPath(), front);
    for (int page = 0; page < 6; ++page) {
        CoverBox& box = Box(Images[page]);
        QTest::mouseDClick(&box, Qt::LeftButton);
        EXPECT_EQ(shell.executed, Texts(static_cast<std::size_t>(page) + 1, front))
            << "of another page than that in front";
        QTest::mousePress(&box, Qt::LeftButton, {}, {20, 20});
        QMouseEvent move(QEvent::MouseMove, QPointF(90, 90), QPointF(90, 90), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&box, &move);
        QTest::mouseRelease(&box, Qt::LeftButton, {}, {90, 90});
        const QList<QDrag*> begun = box.findChildren<QDrag*>();
        ASSERT_EQ(begun.size(), 1) << page;
        EXPECT_EQ(LocalFiles(*begun[0]->mimeData()), Texts{front});
    }
}

TEST_F(CoversWindowTest, AFailingListEndsTheProgramWithItsMessageAndNoWindowIsLeft) {
    StartWithAlbums();
    RecordingConnection::Install().failOn = "Select distinct A.Name";
    EXPECT_THROW(Form().Parts().Covers.Show(), RuntimeError);
    EXPECT_EQ(Covers(), nullptr);
    EXPECT_FALSE(mainModule.CoversOpen);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

} // namespace quavernet::test
