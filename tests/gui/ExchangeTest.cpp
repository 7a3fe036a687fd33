// Export and import of the tree by the real menus.
#include "gui/GuiTest.h"

#include "adapters/qt/FileUris.h"
#include "support/SmallAudio.h"
#include "support/TestFiles.h"
#include "tree/TreeModel.h"
#include "tree/TreeView.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>

namespace quavernet::test {

namespace {

class ExchangeTest : public GuiTest {
protected:
    ExchangeTest() {
        AddFile("Abba", "One");
        WriteFile(path, "#Categories\nJazz\n#Files\n3,Jazz,One.mp3,/music/One.mp3\n");
        dialogs.file = path;
    }
    /// Starts, and imports a file that has to be inspected; the action runs each time when events are let
    /// run.
    void ImportInEvents(const std::function<void()>& action) {
        WriteBytes(folder / "new.mp3", Mp3Bytes("Song", "Blue", "Best"));
        WriteFile(path, "#Categories\nJazz\n#Files\n1,Jazz,new.mp3," + (folder / "new.mp3") + "\n");
        Start();
        int rounds = 0;
        HandEvents hand;
        hand.onDoEvents = [&] {
            if (mainModule.ActsAlone && rounds == 0) {
                ++rounds;
                action();
            }
        };
        services.events = &hand;
        Action("mnuFileImport").trigger();
        services.events = &realEvents;
        EXPECT_EQ(rounds, 1);
        EXPECT_EQ(Categories(), 1U);
        EXPECT_EQ(Form().Parts().Tree.Model().Node("CAT_Jazz").Children.size(), 1U);
    }
    std::size_t Categories() { return Form().Parts().Tree.Model().Node("Parent").Children.size(); }

    const std::string path = folder / "tree.qvn";
};

/// Does something in the middle of long work, each time when events are let run.
class MeddlingEvents : public QtEvents {
public:
    void DoEvents() override {
        QtEvents::DoEvents();
        if (meddle) {
            meddle();
        }
    }
    std::function<void()> meddle;
};

} // namespace

TEST_F(ExchangeTest, BothMenusImportAndTheTreeShowsIt) {
    Start();
    Action("mnuFileImport").trigger();
    EXPECT_EQ(Categories(), 1U);
    EXPECT_EQ(Form().Parts().Tree.Model().Node("CAT_Jazz").Children.front()->Key, "file1pos3");
    Action("mnuImport").trigger();
    EXPECT_EQ(Categories(), 2U);
    EXPECT_EQ(Form().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ExchangeTest, BothMenusExport) {
    Start();
    Action("mnuFileImport").trigger();
    for (const char* name : {"mnuFileExport", "mnuExport"}) {
        dialogs.file = folder / name;
        Action(name).trigger();
        EXPECT_EQ(ReadFile(folder / name), ReadFile(path));
    }
}

TEST_F(ExchangeTest, WhileUnknownFilesAreInspectedNoCommandActs) {
    WriteBytes(folder / "new.mp3", Mp3Bytes("Song", "Blue", "Best"));
    WriteFile(path, "#Categories\nJazz\n#Files\n1,Jazz,new.mp3," + (folder / "new.mp3") + "\n");
    MeddlingEvents meddling;
    Start();
    services.events = &meddling;
    int rounds = 0;
    meddling.meddle = [&] {
        ++rounds;
        Action("mnuFileImport").trigger();
        Action("mnuFileExport").trigger();
        Action("mnuViewLanguageENG").trigger();
        EXPECT_FALSE(Action("mnuViewLanguageENG").isChecked());
    };
    Action("mnuFileImport").trigger();
    EXPECT_GT(rounds, 0);
    EXPECT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(mainModule.Language, "GER");
    EXPECT_EQ(Categories(), 1U);
    services.events = &realEvents;
}

TEST_F(ExchangeTest, WhileUnknownFilesAreInspectedNoDropAndNoViewActs) {
    settings.values["ExternalPlayer"] = "1";
    ImportInEvents([this] {
        const std::unique_ptr<QMimeData> data(FilesToOffer({folder / "new.mp3"}));
        for (QWidget* target : {Grid().viewport(), Control<TreeView>("TreeView").viewport()}) {
            QDragEnterEvent enter(QPoint(40, 8), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(target, &enter);
            EXPECT_FALSE(enter.isAccepted());
            QDropEvent drop(QPoint(40, 8), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(target, &drop);
            EXPECT_FALSE(drop.isAccepted());
        }
        emit Grid().FilesDropped({folder / "new.mp3"}); // A drop that came through all the same.
        QTest::mouseDClick(Grid().viewport(), Qt::LeftButton, {}, CellCentre(1));
        QTest::mouseDClick(Grid().horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
        QTest::keyClick(&Grid(), Qt::Key_Return);
        ClickRow(1, {}, Qt::RightButton);
        EXPECT_FALSE(Form().Menu().Popup("mnuKontext")->isVisible());
        QTest::mouseClick(&Control<QLabel>("lblB"), Qt::LeftButton);
        EXPECT_EQ(mainModule.LetterFilter, "All");
    });
    EXPECT_EQ(shell.executed, Texts{});
    EXPECT_EQ(mainModule.SortDirection, "ASC");
    EXPECT_EQ(Listed().size(), 2U) << "the import's own file has been added";
}

TEST_F(ExchangeTest, WhileUnknownFilesAreInspectedNoFilterChanges) {
    mainModule.SuppressComboClick = false;
    ImportInEvents([this] {
        for (const char* name : {"chkInterpret", "chkTitle"}) {
            auto& box = Control<QCheckBox>(name);
            QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));
            EXPECT_TRUE(box.isChecked()) << name;
        }
        auto& album = Control<QComboBox>("cboAlbum");
        QTest::keyClick(&album, Qt::Key_Down);
        QTest::mouseClick(&album, Qt::LeftButton);
        EXPECT_FALSE(album.view()->isVisible());
        EXPECT_EQ(album.currentIndex(), 0);
        Control<QLineEdit>("txtSearch").setText(QStringLiteral("nothing"));
        QTest::keyClick(&Control<QLineEdit>("txtSearch"), Qt::Key_Return);
        QTest::mouseClick(&Control<QPushButton>("cmdSearch"), Qt::LeftButton);
        EXPECT_EQ(Listed().size(), 1U);
        Control<QLineEdit>("txtSearch").clear();
    });
}

TEST_F(ExchangeTest, TheReminderWaitsForTheEndOfAnImport) {
    mainModule.Connection->Execute(
        "Insert Into Reminder (RemindFlag, RemindDate, ScanPeriode) values (1, '20.11.2026', 'd')");
    auto timer = [this]() -> QTimer& { return Control<QTimer>("AfterLoadTimer"); };
    ImportInEvents([&] {
        timer().start(0);
        QCoreApplication::processEvents();
        EXPECT_TRUE(msgBox.shown.empty());
        EXPECT_TRUE(timer().isActive()) << "it asks later";
    });
    timer().start(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !msgBox.shown.empty(); }));
    EXPECT_EQ(msgBox.shown.front().title, "Scan Erinnerung");
}

TEST_F(ExchangeTest, AWindowThatIsClosedDuringAnImportClosesAfterIt) {
    mainModule.PlayerOpen = true;
    ImportInEvents([this] {
        mainModule.PlayerOpen = true; // The process lives on.
        EXPECT_FALSE(Form().close());
        EXPECT_TRUE(Form().isVisible());
        EXPECT_TRUE(mainModule.MainOpen);
    });
    EXPECT_EQ(Categories(), 1U);
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Form().isVisible(); }));
    EXPECT_FALSE(mainModule.MainOpen);
}

TEST_F(ExchangeTest, NothingIsExportedOrImportedWhileAScanRuns) {
    Start();
    mainModule.ScanRunning = true;
    for (const char* name : {"mnuFileImport", "mnuImport", "mnuFileExport", "mnuExport"}) {
        EXPECT_FALSE(Form().Parts().Commands.Run(name));
    }
    mainModule.ScanRunning = false;
    EXPECT_TRUE(dialogs.shown.empty());
}

} // namespace quavernet::test
