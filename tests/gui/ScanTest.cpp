#include "gui/GuiTest.h"

#include <fstream>

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
    EXPECT_EQ(log.model()->rowCount(), 4);
    EXPECT_EQ(log.currentIndex().row(), 3);
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
