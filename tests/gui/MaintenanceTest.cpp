#include "gui/GuiTest.h"

#include "support/TestLibrary.h"

#include <QTimer>

#include <fstream>

namespace quavernet::test {

namespace {

/// What the main window does by itself or on demand to keep the library in order: cleaning, reminder.
class MaintenanceTest : public GuiTest {
protected:
    void Execute(const std::string& statement) { mainModule.Connection->Execute(statement); }
    Texts Rows(const std::string& statement) { return RowTextsOf(*mainModule.Connection, statement); }

    void SetReminderForToday() {
        Execute("Insert Into Reminder (RemindFlag, RemindDate, ScanPeriode) values (1, '20.11.2026', 'd')");
    }
    void RunAfterLoadTimer() {
        auto& timer = Control<QTimer>("AfterLoadTimer");
        timer.start(0);
        (void)QTest::qWaitFor([&] { return !timer.isActive(); }, 1000);
        QCoreApplication::processEvents();
    }
    void PressCtrlC() { QTest::keyClick(Form().windowHandle(), Qt::Key_C, Qt::ControlModifier); }
};

} // namespace

TEST_F(MaintenanceTest, CtrlCAsksAndCleansTheLibrary) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    std::ofstream(folder / "Two.mp3") << "x";
    Execute("Update Files set Path = '" + (folder / "Two.mp3") + "' where File_id = 2");
    Start();
    Grid().setFocus();
    PressCtrlC();
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].title, "Datenbank säubern");
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure"})) << "No changes nothing";

    msgBox.answers = {MsgBox::Answer::Yes};
    PressCtrlC();
    EXPECT_EQ(Listed(), Texts{"Cure"});
    EXPECT_EQ(Rows("Select File_id from Files"), Texts{"2"});
    EXPECT_EQ(PanelText(Panel::Scanning), "");
    EXPECT_NE(Form().cursor().shape(), Qt::WaitCursor);
}

TEST_F(MaintenanceTest, WithLoadOverSearchTheListKeepsTheDeletedFile) {
    AddFile("Abba", "One");
    Start();
    Action("mnuOptionsLoadOverSearch").trigger();
    msgBox.answers = {MsgBox::Answer::Yes};
    Action("mnuCleanDatabase").trigger();
    EXPECT_EQ(Rows("Select File_id from Files"), Texts{});
    EXPECT_EQ(Listed(), Texts{"Abba"});
}

TEST_F(MaintenanceTest, InTheSearchBoxCtrlCCopiesMarkedTextAndElseAsks) {
    Start();
    auto& search = Control<QLineEdit>("txtSearch");
    search.setFocus();
    search.setText(QStringLiteral("abba"));
    search.selectAll();
    PressCtrlC();
    EXPECT_TRUE(msgBox.shown.empty());
    search.deselect();
    PressCtrlC();
    EXPECT_EQ(msgBox.shown.size(), 1U);
}

TEST_F(MaintenanceTest, ADueReminderClosesTheSplashWindowAsksAndScans) {
    std::filesystem::create_directory(folder / "music");
    std::ofstream(folder / "music/Abba - One.mp3") << std::string(4000, '\0');
    dialogs.folder = folder / "music";
    windows = std::make_unique<AppWindows>();
    Main(*windows);
    SetReminderForToday();
    auto& splash = Control<QWidget>("frmSplash");
    EXPECT_TRUE(splash.isVisible());
    bool splashGone = false;
    QObject::connect(&splash, &QObject::destroyed, [&] { splashGone = true; });
    msgBox.answers = {MsgBox::Answer::Yes};
    RunAfterLoadTimer();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(splashGone);
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].title, "Scan Erinnerung");
    EXPECT_EQ(dialogs.titles, Texts{"Wählen Sie einen Ordner"});
    EXPECT_EQ(Rows("Select Name from Files"), Texts{"Abba - One.mp3"});
    EXPECT_EQ(Rows("Select RemindDate from Reminder"), Texts{"21.11.2026"});
    EXPECT_FALSE(mainModule.ScanRunning);
}

TEST_F(MaintenanceTest, ADeclinedReminderScansNothing) {
    Start();
    SetReminderForToday();
    RunAfterLoadTimer();
    EXPECT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(dialogs.titles, Texts{});
    EXPECT_EQ(Rows("Select RemindDate from Reminder"), Texts{"21.11.2026"});
}

TEST_F(MaintenanceTest, WithoutAReminderTheSplashWindowStays) {
    windows = std::make_unique<AppWindows>();
    Main(*windows);
    RunAfterLoadTimer();
    EXPECT_TRUE(Control<QWidget>("frmSplash").isVisible());
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(MaintenanceTest, AFailingReminderIsPassedOver) {
    Start();
    Execute("Drop table Reminder");
    RunAfterLoadTimer();
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_EQ(Form().focusWidget(), &Control<QLineEdit>("txtSearch"));
}

TEST_F(MaintenanceTest, AYesScansAlsoIfTheNextDateCannotBeWritten) {
    Start();
    SetReminderForToday();
    RecordingConnection::Install().failOn = "Update Reminder";
    msgBox.answers = {MsgBox::Answer::Yes};
    RunAfterLoadTimer();
    EXPECT_EQ(dialogs.titles, Texts{"Wählen Sie einen Ordner"});
}

TEST_F(MaintenanceTest, AFailingScanOfTheReminderIsPassedOverAndLeavesTheWindowClosable) {
    std::filesystem::create_directory(folder / "music");
    std::ofstream(folder / "music/Abba - One.mp3") << std::string(4000, '\0');
    dialogs.folder = folder / "music";
    Start();
    SetReminderForToday();
    RecordingConnection::Install().failOn = "Insert Into Files";
    msgBox.answers = {MsgBox::Answer::Yes};
    RunAfterLoadTimer();
    EXPECT_EQ(Rows("Select Name from Files"), Texts{});
    EXPECT_FALSE(mainModule.ScanRunning);
    mainModule.PlayerOpen = true;
    EXPECT_TRUE(Form().close());
}

} // namespace quavernet::test
