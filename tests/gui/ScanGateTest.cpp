#include "gui/GuiTest.h"

#include "adapters/qt/FileUris.h"
#include "support/SmallAudio.h"
#include "support/TestLibrary.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMimeData>
#include <QTimer>

namespace quavernet::test {

namespace {

/// Hands in the main window at every event point of a running scan: nothing but "cancel" may act.
class ScanGateTest : public GuiTest {
protected:
    ScanGateTest() {
        settings.values["ScanLog"] = "0";
        std::filesystem::create_directory(folder / "music");
        for (const char* name : {"1.mp3", "2.mp3"}) {
            WriteBytes(folder / "music" + std::string("/") + name,
                       Mp3Bytes(std::string("Song ") + name, "Blue", "Best"));
        }
        dialogs.folder = folder / "music";
        AddFile("Abba", "One");
        AddFile("Cure", "Two");
    }

    /// Scans; the action runs at each of the scan's event points.
    void ScanWith(const std::function<void()>& action) {
        bool inside = false;
        events.onDoEvents = [&] {
            if (mainModule.ScanRunning && !inside) {
                inside = true;
                ++points;
                action();
                if (Action("cancel").isEnabled()) {
                    ++cancellable;
                }
                inside = false;
            }
        };
        services.events = &events;
        Action("scan").trigger();
        services.events = &realEvents;
        events.onDoEvents = nullptr;
        EXPECT_GE(points, 6);
        EXPECT_EQ(cancellable, points) << "at each point the scan can be cancelled";
        ExpectIdle();
    }
    void ExpectScanState() {
        EXPECT_TRUE(Action("cancel").isEnabled());
        for (const char* name : {"scan", "mnuFile", "mnuView", "mnuOptions", "mnuUpperHelp"}) {
            EXPECT_FALSE(Action(name).isEnabled()) << name;
        }
        for (const char* name : {"txtSearch", "cmdSearch", "cboDrive", "cboGenre", "cboAlbum"}) {
            EXPECT_FALSE(Control<QWidget>(name).isEnabled()) << name;
        }
    }
    void ExpectIdle() {
        EXPECT_FALSE(mainModule.ScanRunning);
        EXPECT_TRUE(Action("scan").isEnabled());
        EXPECT_FALSE(Action("cancel").isEnabled());
        EXPECT_TRUE(Action("mnuFile").isEnabled());
        EXPECT_TRUE(Control<QWidget>("txtSearch").isEnabled());
    }
    Texts Names() { return RowTextsOf(*mainModule.Connection, "Select Name from Files order by Name"); }

    void RunAfterLoadTimer() {
        auto& timer = Control<QTimer>("AfterLoadTimer");
        timer.start(0);
        while (timer.isActive()) {
            QCoreApplication::processEvents();
        }
    }
    void SetReminderForToday() {
        mainModule.Connection->Execute(
            "Insert Into Reminder (RemindFlag, RemindDate, ScanPeriode) values (1, '20.11.2026', 'd')");
    }

    int points = 0;
    int cancellable = 0;
};

/// Acts while a certain box is up.
class BusyMsgBox : public ScriptedMsgBox {
public:
    Answer ShowWithDetails(const std::string& text, const std::string& details, const std::string& title,
                           Icon icon, Buttons buttons) override {
        if (title == titleToActOn) {
            titleToActOn.clear();
            action();
        }
        return ScriptedMsgBox::ShowWithDetails(text, details, title, icon, buttons);
    }

    std::string titleToActOn;
    std::function<void()> action;
};

} // namespace

TEST_F(ScanGateTest, ALetterActsOnNothing) {
    Start();
    ScanWith([this] {
        QTest::mouseClick(&Control<QLabel>("lblB"), Qt::LeftButton);
        auto& strip = Control<QWidget>("Frame2");
        QTest::keyClick(&strip, Qt::Key_End);
        QTest::keyClick(&strip, Qt::Key_Space);
        EXPECT_EQ(mainModule.LetterFilter, "All");
        EXPECT_TRUE(Control<QLabel>("lblAll").font().bold());
        ExpectScanState();
    });
    EXPECT_EQ(Listed().size(), 4U);
}

TEST_F(ScanGateTest, AColumnHeadARowAndEnterActOnNothing) {
    mainModule.UseExternalPlayer = true;
    settings.values["ExternalPlayer"] = "1";
    Start();
    const Texts before = RowTextsOf(*mainModule.Connection, "Select Hits from Files where File_id = 1");
    ClickRow(1);
    ScanWith([this] {
        QHeaderView& head = *Grid().horizontalHeader();
        QTest::mouseDClick(head.viewport(), Qt::LeftButton, {}, QPoint(head.sectionPosition(1) + 20, 5));
        EXPECT_EQ(mainModule.SortDirection, "ASC");
        EXPECT_TRUE(mainModule.SortInterpret);
        QTest::mouseDClick(Grid().viewport(), Qt::LeftButton, {}, CellCentre(1));
        QTest::keyClick(&Grid(), Qt::Key_Return);
        ExpectScanState();
    });
    EXPECT_EQ(shell.executed, Texts{});
    EXPECT_EQ(RowTextsOf(*mainModule.Connection, "Select Hits from Files where File_id = 1"), before);
}

TEST_F(ScanGateTest, ARightPressOpensNoMenuAndARowSwitchesNothing) {
    Start();
    ScanWith([this] {
        ClickRow(1, {}, Qt::RightButton);
        EXPECT_FALSE(Form().Menu().Popup("mnuKontext")->isVisible());
        ExpectScanState();
    });
}

TEST_F(ScanGateTest, TheBoxesTakeNoClickAndNoEnter) {
    Start();
    ScanWith([this] {
        for (const char* name : {"chkInterpret", "chkTitle"}) {
            auto& box = Control<QCheckBox>(name);
            QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));
            EXPECT_TRUE(box.isChecked()) << name;
            QTest::keyClick(&box, Qt::Key_Return);
        }
        ExpectScanState();
    });
    EXPECT_FALSE(settings.values.contains("SearchInterpret"));
    EXPECT_FALSE(settings.values.contains("SearchTitle"));
}

TEST_F(ScanGateTest, AComboThatChangesAllTheSameLoadsNothing) {
    Start();
    std::vector<std::size_t> listed;
    ScanWith([&] {
        mainModule.SuppressComboClick = false; // As a released arrow key leaves it.
        auto& album = Control<QComboBox>("cboAlbum");
        album.setCurrentIndex(album.currentIndex() == 1 ? 2 : 1);
        QTest::keyClick(&album, Qt::Key_Return);
        if (PanelText(Panel::Scanning).starts_with("Scanning... ")) {
            listed.push_back(Listed().size());
        }
        ExpectScanState();
    });
    EXPECT_FALSE(listed.empty());
    for (const std::size_t rows : listed) {
        EXPECT_EQ(rows, 0U) << "the list stays empty until the scan ends";
    }
}

TEST_F(ScanGateTest, TheListTakesNoFilesAndTheScanLosesNone) {
    std::filesystem::create_directory(folder / "more");
    WriteBytes(folder / "more/3.mp3", Mp3Bytes("Dropped", "Red", "Other"));
    Start();
    ScanWith([this] {
        const std::unique_ptr<QMimeData> data(FilesToOffer({folder / "more/3.mp3"}));
        QWidget& target = *Grid().viewport();
        QDragEnterEvent enter(QPoint(10, 40), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&target, &enter);
        EXPECT_FALSE(enter.isAccepted());
        QDropEvent drop(QPoint(10, 40), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&target, &drop);
        emit Grid().FilesDropped({folder / "more/3.mp3"}); // A drop that came through all the same.
        ExpectScanState();
    });
    EXPECT_EQ(Names(), (Texts{"1.mp3", "2.mp3", "One.mp3", "Two.mp3"}));
    EXPECT_EQ(RowTextsOf(*mainModule.Connection, "Select Name from Titel where Name like '%Song%'").size(),
              2U);
}

TEST_F(ScanGateTest, NoCommandRunsAndNoMarkStaysTurned) {
    Start();
    ScanWith([this] {
        for (const char* name : {"mnump3", "mnuKontextWav", "mnuQuickscan", "mnuOptionsLoadOverSearch",
                                 "mnuViewLanguageENG", "mnuKontextShowGridlines", "mnuCleanDatabase",
                                 "mnuExit", "mnuScan", "scan", "mnuAbout", "mnuKonvert", "mnuKontextKonvert",
                                 "konvert", "mnuKonvertoptions", "mnuManageCovers", "mnuCoverOnlineSearch"}) {
            QAction& item = Action(name);
            const bool enabled = item.isEnabled();
            const bool checked = item.isChecked();
            item.setEnabled(true);
            item.trigger();
            item.setEnabled(enabled);
            EXPECT_EQ(item.isChecked(), checked) << name;
        }
        EXPECT_EQ(mainModule.Language, "GER");
        EXPECT_TRUE(Form().isVisible());
        EXPECT_FALSE(mainModule.CoversOpen);
        ExpectScanState();
    });
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_FALSE(mainModule.LoadOverSearch);
    EXPECT_EQ(dialogs.titles.size(), 1U);
}

TEST_F(ScanGateTest, WhateverLoadsTheListAllTheSameKeepsTheStateOfTheScan) {
    Start();
    ScanWith([this] {
        Form().Parts().Views.LoadDatabase({});
        ExpectScanState();
        EXPECT_FALSE(Form().close());
        EXPECT_TRUE(Form().isVisible());
    });
    EXPECT_FALSE(msgBox.shown.empty());
    for (const ShownBox& box : msgBox.shown) {
        EXPECT_EQ(box.title, "Programm beenden");
    }
    EXPECT_EQ(Names().size(), 4U);
}

TEST_F(ScanGateTest, AfterCancelNothingActsUntilTheScanHasEnded) {
    Start();
    bool cancelled = false;
    bool inside = false;
    events.onDoEvents = [&] {
        if (!mainModule.ScanRunning || inside) {
            return;
        }
        inside = true;
        if (!cancelled && PanelText(Panel::Scanning).starts_with("Scanning... ")) {
            cancelled = true;
            Action("cancel").trigger();
        } else if (cancelled) {
            Action("scan").trigger(); // The button is back, the scan is not over.
            QTest::mouseClick(&Control<QLabel>("lblB"), Qt::LeftButton);
        }
        inside = false;
    };
    services.events = &events;
    Action("scan").trigger();
    services.events = &realEvents;
    EXPECT_TRUE(cancelled);
    EXPECT_EQ(dialogs.titles.size(), 1U);
    EXPECT_EQ(mainModule.LetterFilter, "All");
    EXPECT_EQ(Names().size(), 3U);
    ExpectIdle();
}

TEST_F(ScanGateTest, TheRemindersScanRunsInsideTheQuestionOfTheCleaning) {
    BusyMsgBox busy;
    services.msgBox = &busy;
    Start();
    SetReminderForToday();
    busy.titleToActOn = "Datenbank säubern";
    busy.answers = {MsgBox::Answer::Yes, MsgBox::Answer::Yes};
    busy.action = [this] {
        RunAfterLoadTimer();
        ExpectIdle();
        EXPECT_EQ(Names().size(), 4U);
    };
    Action("mnuCleanDatabase").trigger();
    ASSERT_EQ(busy.shown.size(), 2U);
    EXPECT_EQ(busy.shown[0].title, "Scan Erinnerung") << "it was answered first";
    EXPECT_EQ(Names(), (Texts{"1.mp3", "2.mp3"})) << "the cleaning goes on with what the scan left";
    EXPECT_EQ(Listed().size(), 2U);
    ExpectIdle();
    services.msgBox = &msgBox;
}

TEST_F(ScanGateTest, TheRemindersScanRunsOverTheOpenScanPathDialog) {
    Start();
    SetReminderForToday();
    msgBox.answers = {MsgBox::Answer::Yes};
    bool seen = false;
    QTimer::singleShot(0, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        RunAfterLoadTimer();
        seen = dialog->isVisible();
        EXPECT_EQ(Names().size(), 4U);
        ExpectIdle();
        dialog->close();
    });
    Action("mnuStandardScanningPath").trigger();
    EXPECT_TRUE(seen) << "the dialog has stayed open";
    EXPECT_FALSE(settings.values.contains("Scanpath"));
    ExpectIdle();
}

TEST_F(ScanGateTest, TheReminderAsksButStartsNoSecondScan) {
    Start();
    SetReminderForToday();
    msgBox.answers = {MsgBox::Answer::Yes};
    bool asked = false;
    ScanWith([&] {
        if (!asked) {
            asked = true;
            RunAfterLoadTimer();
        }
        EXPECT_TRUE(mainModule.ScanRunning);
    });
    EXPECT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(dialogs.titles.size(), 1U);
}

TEST_F(ScanGateTest, ACleaningThatComesDuringItselfLeavesTheLibraryRight) {
    Start();
    msgBox.answers = {MsgBox::Answer::Yes, MsgBox::Answer::Yes};
    bool again = false;
    events.onDoEvents = [&] {
        if (!again && PanelText(Panel::Scanning) == "Datenbank säubern...") {
            again = true;
            Action("mnuCleanDatabase").trigger();
        }
    };
    services.events = &events;
    Action("mnuCleanDatabase").trigger();
    services.events = &realEvents;
    EXPECT_TRUE(again);
    EXPECT_EQ(msgBox.shown.size(), 2U);
    EXPECT_EQ(Names(), Texts{});
    EXPECT_EQ(Listed(), Texts{});
    EXPECT_EQ(PanelText(Panel::Scanning), "");
    EXPECT_NE(Form().cursor().shape(), Qt::WaitCursor);
    ExpectIdle();
}

TEST_F(ScanGateTest, AScanThatBeginsInsideALoadOfTheListEndsBeforeIt) {
    Start();
    bool begun = false;
    events.onDoEvents = [&] {
        if (!begun) {
            begun = true;
            Action("scan").trigger();
        }
    };
    services.events = &events;
    Form().Parts().Views.LoadDatabase({});
    services.events = &realEvents;
    EXPECT_EQ(Listed().size(), 4U);
    ExpectIdle();
}

} // namespace quavernet::test
