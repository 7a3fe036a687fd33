#include "gui/GuiTest.h"

#include "app/LoadResString.h"
#include "scanner/SavedLog.h"
#include "scanner/frmScanLog.h"

#include <QLabel>
#include <QListView>
#include <QPushButton>

namespace quavernet::test {

namespace {

class ScanLogTest : public LogicTest {
protected:
    ScanLogTest() { mainModule.ScanLogEnabled = true; }

    template <typename T> T& Part(const char* name) { return *log.findChild<T*>(QLatin1String(name)); }
    std::string Label(const char* name) { return FromQString(Part<QLabel>(name).text()); }
    std::vector<std::string> Lines() {
        std::vector<std::string> lines;
        const QAbstractItemModel& model = *Part<QListView>("lstLog").model();
        for (int row = 0; row < model.rowCount(); ++row) {
            lines.push_back(FromQString(model.index(row, 0).data().toString()));
        }
        return lines;
    }
    /// The end of a scan: everything is on the screen afterwards.
    void EndScan() { log.EnableClose(true); }

    frmScanLog log{nullptr};
};

} // namespace

TEST_F(ScanLogTest, TheCaptionsAreThoseOfTheLanguageAtEachShow) {
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        log.Show();
        EXPECT_EQ(FromQString(log.windowTitle()), LoadResString(580));
        EXPECT_EQ(Label("Label1"), LoadResString(578));
        EXPECT_EQ(Label("Label4"), LoadResString(579));
        EXPECT_EQ(Label("Label3"), "MB");
        EXPECT_EQ(FromQString(Part<QPushButton>("cmdClose").text()), LoadResString(108));
        log.close();
    }
    EXPECT_EQ(Label("Label1"), "files found");
}

TEST_F(ScanLogTest, AScanThatStoresNothingLeavesTheCountersAtZero) {
    log.Show();
    log.EnableClose(false);
    log.AddLine("Starting scan...");
    EndScan();
    EXPECT_EQ(Label("lblFileCount"), "0");
    EXPECT_EQ(Label("lblMB"), "0");
    EXPECT_EQ(Label("lblPlaytime"), "0");
    EXPECT_FALSE(log.isModal());
}

TEST_F(ScanLogTest, TheCountersGoOnOverScansWhileTheLinesBeginAnew) {
    SavedLog saved(log);
    log.Show();
    saved.Add("/a.mp3", "1572864", "90");
    EndScan();
    EXPECT_EQ(Lines(), std::vector<std::string>{"14:03:22 - Saved... /a.mp3"});
    EXPECT_EQ(Label("lblFileCount"), "1");
    EXPECT_EQ(Label("lblMB"), "1,5");
    EXPECT_EQ(Label("lblPlaytime"), "2");
    Part<QPushButton>("cmdClose").click();
    EXPECT_FALSE(log.isVisible());
    log.Show();
    EXPECT_EQ(Lines(), std::vector<std::string>{});
    EXPECT_EQ(Label("lblFileCount"), "1");
    saved.Add("/b.mp3", "1048576", "60");
    EndScan();
    EXPECT_EQ(Lines(), std::vector<std::string>{"14:03:22 - Saved... /b.mp3"});
    EXPECT_EQ(Label("lblFileCount"), "2");
    EXPECT_EQ(Label("lblMB"), "2,5");
    EXPECT_EQ(Label("lblPlaytime"), "3");
}

TEST_F(ScanLogTest, SkippedEntriesAreNamedWithTheirReasons) {
    log.Show();
    log.AddSkipped({{"/a.mp3", "Permission denied", SkippedEntry::Kind::NoAccess},
                    {"/b", "No such file or directory", SkippedEntry::Kind::Missing},
                    {"/c.mp3", "Input/output error", SkippedEntry::Kind::Unreadable}});
    EndScan();
    EXPECT_EQ(Lines(), (std::vector<std::string>{
                           "Übersprungen... /a.mp3 (kein Zugriff)", "Übersprungen... /b (nicht vorhanden)",
                           "Übersprungen... /c.mp3 (nicht lesbar: Input/output error)"}));
    EXPECT_EQ(Label("lblFileCount"), "0");
    EXPECT_EQ(Part<QListView>("lstLog").currentIndex().row(), 2);
}

TEST_F(ScanLogTest, NeitherButtonNorEscapeNorTheWindowFrameCloseItDuringAScan) {
    log.Show();
    log.EnableClose(false);
    Part<QPushButton>("cmdClose").click();
    QTest::keyClick(&log, Qt::Key_Escape);
    EXPECT_FALSE(log.close());
    EXPECT_TRUE(log.isVisible());
    log.EnableClose(true);
    QTest::keyClick(&log, Qt::Key_Escape);
    EXPECT_FALSE(log.isVisible());
}

} // namespace quavernet::test
