#include "gui/GuiTest.h"

#include <fstream>

#include "support/TestLibrary.h"

#include <QListView>

namespace quavernet::test {

namespace {

void WriteLittleEndian(std::ofstream& out, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        out.put(static_cast<char>((value >> (8 * i)) & 0xFF));
    }
}

/// One second of silence: 8 kHz, mono, 8 bits.
void WriteWave(const std::string& path) {
    constexpr std::uint32_t Bytes = 8000;
    std::ofstream out(path, std::ios::binary);
    out << "RIFF";
    WriteLittleEndian(out, 36 + Bytes, 4);
    out << "WAVEfmt ";
    WriteLittleEndian(out, 16, 4);
    WriteLittleEndian(out, 1, 2);
    WriteLittleEndian(out, 1, 2);
    WriteLittleEndian(out, 8000, 4);
    WriteLittleEndian(out, 8000, 4);
    WriteLittleEndian(out, 1, 2);
    WriteLittleEndian(out, 8, 2);
    out << "data";
    WriteLittleEndian(out, Bytes, 4);
    out << std::string(Bytes, '\x80');
}

class ScanTest : public GuiTest {
protected:
    ScanTest() {
        std::filesystem::create_directory(folder / "music");
        for (const char* name : {"Abba - One.wav", "Cure - Two.wav", "notes.txt"}) {
            WriteWave(folder / "music" + std::string("/") + name);
        }
        dialogs.folder = folder / "music";
    }
};

} // namespace

TEST_F(ScanTest, AScanFillsListLogAndTitle) {
    Start();
    QTest::keyClick(Form().windowHandle(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(dialogs.titles, Texts{"Wählen Sie einen Ordner"});
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure"}));
    EXPECT_FALSE(mainModule.ScanRunning);
    EXPECT_TRUE(Action("scan").isEnabled());
    EXPECT_FALSE(Action("cancel").isEnabled());
    EXPECT_EQ(PanelText(Panel::Scanning), "");
    EXPECT_EQ(Control<QComboBox>("cboDrive").count(), 2);
    ExpectTitle("Quavernet - letzter scan: 20.11.2026");
    auto& log = Control<QListView>("lstLog");
    EXPECT_EQ(log.model()->rowCount(), 5);
    EXPECT_EQ(log.currentIndex().row(), 4);
    EXPECT_EQ(FromQString(log.currentIndex().data().toString()),
              "Fertig: 2 neu, 0 aktualisiert, 0 übergangen, 0:00");
    EXPECT_TRUE(log.window()->isVisible());
    EXPECT_EQ(FromQString(log.window()->windowTitle()), "Scan Log");
    EXPECT_TRUE(Control<QPushButton>("cmdClose").isEnabled());
}

TEST_F(ScanTest, ACancelledFolderDialogChangesNothing) {
    dialogs.folder.reset();
    Start();
    Action("scan").trigger();
    EXPECT_EQ(Listed(), Texts{});
    EXPECT_TRUE(Action("scan").isEnabled());
    EXPECT_FALSE(mainModule.ScanRunning);
}

TEST_F(ScanTest, CancelReachesARunningScan) {
    Start();
    bool menuWasOpen = true;
    events.onDoEvents = [&] {
        if (Action("cancel").isEnabled() && PanelText(Panel::Scanning).starts_with("Scanning... ")) {
            menuWasOpen = Action("mnuFile").isEnabled();
            Action("cancel").trigger();
            EXPECT_TRUE(Action("scan").isEnabled());
            EXPECT_FALSE(Action("cancel").isEnabled());
            EXPECT_EQ(PanelText(Panel::Scanning), "");
        }
    };
    services.events = &events;
    Action("scan").trigger();
    EXPECT_FALSE(menuWasOpen);
    EXPECT_EQ(Listed().size(), 1U);
    EXPECT_TRUE(Action("mnuFile").isEnabled());
    services.events = &realEvents;
}

TEST_F(ScanTest, TheProgramKnowsFromItsStartToItsEndThatAScanRuns) {
    Start();
    int asked = 0;
    int running = 0;
    const auto ask = [&] {
        ++asked;
        running += mainModule.ScanRunning;
    };
    events.onDoEvents = ask;
    services.events = &events;
    EXPECT_FALSE(mainModule.ScanRunning);
    Action("scan").trigger();
    services.events = &realEvents;
    EXPECT_FALSE(mainModule.ScanRunning);
    EXPECT_GT(asked, 5);
    EXPECT_EQ(running, asked);
}

TEST_F(ScanTest, NoSecondScanStartsInsideTheFirst) {
    Start();
    int tried = 0;
    events.onDoEvents = [&] {
        if (tried == 0 && Action("cancel").isEnabled() &&
            PanelText(Panel::Scanning).starts_with("Scanning... ")) {
            ++tried;
            Action("cancel").trigger(); // Which gives the button back before the walk has noticed.
            Action("scan").trigger();
            Form().Parts().Scan.mnuScan_Click(); // As a way past the registry of commands would,
            Form().Parts().Scan.ReminderScan();  // and as the timer after the start does.
            EXPECT_TRUE(mainModule.ScanRunning);
        }
    };
    services.events = &events;
    Action("scan").trigger();
    services.events = &realEvents;
    EXPECT_EQ(tried, 1);
    EXPECT_EQ(dialogs.titles.size(), 1U);
    EXPECT_EQ(Listed().size(), 1U);
    EXPECT_FALSE(mainModule.ScanRunning);
}

TEST_F(ScanTest, TheLogCannotBeClosedWhileTheScanRuns) {
    Start();
    bool checked = false;
    events.onDoEvents = [&] {
        if (PanelText(Panel::Scanning).starts_with("Scanning... ") && !checked) {
            checked = true;
            QWidget* log = Control<QListView>("lstLog").window();
            EXPECT_FALSE(Control<QPushButton>("cmdClose").isEnabled());
            EXPECT_FALSE(log->close());
            EXPECT_TRUE(log->isVisible());
        }
    };
    services.events = &events;
    Action("scan").trigger();
    services.events = &realEvents;
    EXPECT_TRUE(checked);
    EXPECT_TRUE(Control<QListView>("lstLog").window()->close());
    EXPECT_EQ(Control<QListView>("lstLog").model()->rowCount(), 0);
}

TEST_F(ScanTest, EachScanOptionFlipsItsMarkAndDoesNothingElse) {
    Start();
    const auto stored = settings.values;
    RecordingConnection& recorder = RecordingConnection::Install();
    for (const char* name :
         {"mnuScanMp3", "mnuScanWav", "mnuScanOgg", "mnuRecursive", "mnuQuickscan", "mnuOptionsScanLog"}) {
        const bool checked = Action(name).isChecked();
        const bool logged = mainModule.ScanLogEnabled;
        const bool isLog = name == std::string("mnuOptionsScanLog");
        Action(name).trigger();
        EXPECT_EQ(Action(name).isChecked(), !checked) << name;
        EXPECT_EQ(mainModule.ScanLogEnabled, isLog ? !logged : logged) << name;
        Action(name).trigger();
        EXPECT_EQ(Action(name).isChecked(), checked) << name;
        EXPECT_EQ(mainModule.ScanLogEnabled, logged) << name;
    }
    EXPECT_EQ(settings.values, stored) << "marks are stored when the window closes";
    EXPECT_TRUE(recorder.statements.empty());
}

TEST_F(ScanTest, TheFormatsThatAreMarkedAreScanned) {
    class NotingTool : public OggInfoTool {
    public:
        std::string Run(const std::vector<std::string>& paths) override {
            asked += paths.size();
            return {};
        }
        std::size_t asked = 0;
    };
    NotingTool ogg;
    services.oggInfo = &ogg;
    std::ofstream(folder / "music/Can - Three.mp3") << std::string(4000, '\0');
    std::ofstream(folder / "music/Devo - Four.ogg") << "no stream";
    Start();
    const auto scanned = [&] {
        mainModule.Connection->Execute("Delete from Files");
        ogg.asked = 0;
        Action("scan").trigger();
        return RowTextsOf(*mainModule.Connection, "Select Name from Files order by Name");
    };
    Action("mnuScanWav").trigger();
    EXPECT_EQ(scanned(), Texts{"Can - Three.mp3"});
    EXPECT_EQ(ogg.asked, 1U);
    Action("mnuScanOgg").trigger();
    Action("mnuScanMp3").trigger();
    EXPECT_EQ(scanned(), Texts{});
    EXPECT_EQ(ogg.asked, 0U);
    Action("mnuScanWav").trigger();
    EXPECT_EQ(scanned(), (Texts{"Abba - One.wav", "Cure - Two.wav"}));
    services.oggInfo = nullptr;
}

TEST_F(ScanTest, OnlyARecursiveScanEntersSubfolders) {
    std::filesystem::create_directory(folder / "music/more");
    WriteWave(folder / "music/more/Devo - Four.wav");
    Start();
    Action("mnuRecursive").trigger();
    Action("scan").trigger();
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure"}));
    Action("mnuRecursive").trigger();
    Action("scan").trigger();
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure", "Devo"}));
}

TEST_F(ScanTest, OnlyAFullScanReadsKnownFilesAgain) {
    Start();
    Action("scan").trigger();
    mainModule.Connection->Execute("Update Files set Length = 999");
    const auto lengths = [&] {
        return RowTextsOf(*mainModule.Connection, "Select Length from Files order by Name");
    };
    Action("mnuQuickscan").trigger();
    Action("scan").trigger();
    EXPECT_EQ(lengths(), (Texts{"999", "999"}));
    Action("mnuQuickscan").trigger();
    Action("scan").trigger();
    EXPECT_EQ(lengths(), (Texts{"1", "1"}));
}

TEST_F(ScanTest, WithoutTheLogNoWindowComesUp) {
    settings.values["ScanLog"] = "0";
    Start();
    Action("scan").trigger();
    EXPECT_EQ(Listed().size(), 2U);
    EXPECT_FALSE(Control<QListView>("lstLog").window()->isVisible());
}

TEST_F(ScanTest, AfterTheScanTheKeyboardIsWhereItWas) {
    settings.values["ScanLog"] = "0";
    Start();
    Control<QLineEdit>("txtSearch").setFocus();
    Action("scan").trigger();
    EXPECT_EQ(Form().focusWidget(), &Control<QLineEdit>("txtSearch"));
}

} // namespace quavernet::test
