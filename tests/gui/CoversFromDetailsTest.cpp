#include "gui/CoversWindowTest.h"

#include <QMessageBox>
#include <QTimer>
#include <QWindow>

namespace quavernet::test {

namespace {

/// The way from the details of a file to the covers of its album, with the dialog open as the user has it.
class CoversFromDetailsTest : public CoversWindowTest {
protected:
    CoversFromDetailsTest() {
        AddTagged("Abba", "One");
        AddTagged("Cure", "Two");
        AddTagged("Doors", "Three");
        Start();
    }
    void AddTagged(const std::string& performer, const std::string& title) {
        AddFile(performer, title);
        const std::string path = folder / (title + ".mp3");
        WriteBytes(path, Mp3Bytes(title, performer, "Album " + std::to_string(files)));
        mainModule.Connection->Execute("Update Files set Path = '" + path +
                                       "' where File_id = " + std::to_string(files));
    }
    /// Opens the details of a row by its command, runs the action in them, and closes them.
    void InDetails(int row, const std::function<void(QWidget& details)>& action) {
        ClickRow(row);
        WhenDetailsAreOpen(action);
        Action("mnuDetails").trigger();
    }
    void WhenDetailsAreOpen(const std::function<void(QWidget& details)>& action) {
        QTimer::singleShot(1, &m_context, [this, action] {
            QWidget* modal = QApplication::activeModalWidget();
            if (modal == nullptr) {
                WhenDetailsAreOpen(action);
                return;
            }
            action(*modal);
            modal->close();
        });
    }
    static void ClickCover(QWidget& details) {
        QTest::mouseClick(details.findChild<QLabel*>(QStringLiteral("lblCover")), Qt::LeftButton);
    }
    std::string SelectedAlbum() { return FromQString(Albums().currentIndex().data().toString()); }
    /// By the way of the window system, which asks whether a dialog blocks the window.
    void ClickWindow(const QWidget& control, const QPoint& place) {
        QTest::mouseClick(Covers()->windowHandle(), Qt::LeftButton, {}, control.mapTo(Covers(), place));
    }

private:
    QObject m_context;
};

} // namespace

TEST_F(CoversFromDetailsTest, TheLabelIsThereAndSelectsTheAlbumOfTheFile) {
    InDetails(2, [this](QWidget& details) {
        EXPECT_TRUE(details.findChild<QLabel*>(QStringLiteral("lblCover"))->isVisible());
        ClickCover(details);
        ASSERT_NE(Covers(), nullptr);
        EXPECT_TRUE(Covers()->isVisible());
        EXPECT_FALSE(Covers()->isModal());
        EXPECT_EQ(SelectedAlbum(), "Cure - Album 2");
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    });
    ASSERT_NE(Covers(), nullptr) << "the window outlives the dialog";
    EXPECT_TRUE(Covers()->isVisible());
}

TEST_F(CoversFromDetailsTest, TheWindowWorksBesideTheOpenDialogAndAfterIt) {
    const std::string front = MakePicture("front.png", Qt::red);
    const std::string back = MakePicture("back.png", Qt::blue);
    InDetails(1, [&](QWidget& details) {
        ClickCover(details);
        ClickWindow(*Albums().viewport(), Albums().visualRect(Albums().model()->index(2, 0)).center());
        EXPECT_EQ(SelectedAlbum(), "Doors - Album 3");
        EXPECT_TRUE(DropOn("imgFront", {front}));
        ClickWindow(*Tabs().tabBar(), Tabs().tabBar()->tabRect(1).center());
        dialogs.file = back;
        ClickWindow(Part<QWidget>("cmdBrowseBack"), {5, 5});
        EXPECT_EQ(Shown("imgBack"), QColor(Qt::blue));
        EXPECT_FALSE(Form().Parts().Commands.Run("mnuManageCovers")) << "commands stay held back";
    });
    EXPECT_EQ(StoredCovers(), Texts{"3|" + front + "|" + back + "||||"});
    EXPECT_EQ(Covers()->windowHandle()->transientParent(), Form().windowHandle());
    ClickWindow(*Tabs().tabBar(), Tabs().tabBar()->tabRect(0).center());
    EXPECT_EQ(PanelPath(), front);
    EXPECT_TRUE(DropOn("imgFront", {back}));
}

TEST_F(CoversFromDetailsTest, AnOpenWindowSelectsTheAlbumWithoutLoadingAgain) {
    OpenCovers();
    ClickAlbum(1);
    ASSERT_TRUE(DropOn("imgFront", {MakePicture("front.png", Qt::red)}));
    mainModule.Connection->Execute("Update Covers Set Front = ''");
    frmCovers* const first = Covers();
    InDetails(2, [&](QWidget& details) {
        ClickCover(details);
        EXPECT_EQ(Covers(), first);
        EXPECT_EQ(SelectedAlbum(), "Cure - Album 2");
        EXPECT_TRUE(IsEmpty("imgFront")) << "its covers are read again";
        ClickWindow(*Albums().viewport(), Albums().visualRect(Albums().model()->index(0, 0)).center());
        EXPECT_EQ(SelectedAlbum(), "Abba - Album 1");
    });
}

TEST_F(CoversFromDetailsTest, AnAlbumThatTheListDoesNotHaveLeadsToTheFirstOne) {
    OpenCovers();
    mainModule.Connection->Execute("Insert into Albums (Album_id, Name) values (77, 'New')");
    ClickAlbum(2);
    Form().Parts().Covers.ShowAlbum("AlbumID:77InterID:1");
    EXPECT_EQ(SelectedAlbum(), "Abba - Album 1");
    Covers()->close();
    mainModule.Connection->Execute("Delete from Files");
    Form().Parts().Covers.ShowAlbum("AlbumID:1InterID:1");
    EXPECT_TRUE(ListedAlbums().empty());
    EXPECT_EQ(PanelPath(), "");
}

TEST_F(CoversFromDetailsTest, AWindowThatIsClosedWhileEventsRunIsNotMissed) {
    services.events = &events;
    events.onDoEvents = [this] {
        if (Covers() != nullptr) {
            Covers()->close();
        }
    };
    Form().Parts().Covers.ShowAlbum("AlbumID:1InterID:1");
    services.events = &realEvents;
    EXPECT_EQ(events.count, 1);
    EXPECT_EQ(Covers(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(CoversFromDetailsTest, WhileAHandlerOfTheDialogLetsEventsRunNothingActs) {
    const std::string path = MakePicture("a.png", Qt::red);
    dialogs.file = path;
    InDetails(1, [&](QWidget& details) {
        ClickCover(details);
        int rounds = 0;
        events.onDoEvents = [&] {
            ++rounds;
            Press("cmdBrowseFront");
            EXPECT_FALSE(DropOn("imgFront", {path}));
        };
        services.events = &events;
        details.findChild<QPushButton*>(QStringLiteral("cmdEdit"))->click();
        details.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();
        services.events = &realEvents;
        EXPECT_GE(rounds, 1);
        EXPECT_EQ(StoredCovers(), Texts{});
        Press("cmdBrowseFront");
        EXPECT_EQ(StoredCovers(), Texts{"1|" + path + "|||||"});
    });
}

TEST_F(CoversFromDetailsTest, UnderABoxOfTheDialogNothingIsDropped) {
    const std::string path = MakePicture("a.png", Qt::red);
    InDetails(1, [&](QWidget& details) {
        ClickCover(details);
        QMessageBox box(&details);
        box.open();
        EXPECT_FALSE(DropOn("imgFront", {path}));
        box.close();
        EXPECT_TRUE(DropOn("imgFront", {path}));
    });
}

TEST_F(CoversFromDetailsTest, WithoutPerformerOrAlbumInTheLibraryNothingIsShown) {
    mainModule.Connection->Execute("Update Albums set Name = 'Other' where Album_id = 1");
    InDetails(1, [this](QWidget& details) {
        ClickCover(details);
        EXPECT_EQ(Covers(), nullptr);
    });
}

} // namespace quavernet::test
