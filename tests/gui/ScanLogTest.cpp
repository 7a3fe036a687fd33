#include "gui/GuiTest.h"

#include "app/LoadResString.h"
#include "gui/PaintedTexts.h"
#include "scanner/SavedLog.h"
#include "scanner/frmScanLog.h"

#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QScreen>
#include <gmock/gmock.h>

namespace quavernet::test {

namespace {

class ScanLogTest : public LogicTest {
protected:
    ScanLogTest() { mainModule.ScanLogEnabled = true; }

    template <typename T> T& Part(const char* name) { return *log.findChild<T*>(QLatin1String(name)); }
    std::string Label(const char* name) { return Caption(Part<QLabel>(name).text()); }
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
        EXPECT_EQ(Caption(Part<QPushButton>("cmdClose").text()), LoadResString(108));
        log.close();
    }
    EXPECT_EQ(Label("Label1"), "file(s) found");
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

TEST_F(ScanLogTest, ALineThatIsTooLongKeepsTheNameOfItsFileWhole) {
    const QFontMetrics metrics(log.font());
    const QString name = QStringLiteral("A rather long title (live).mp3");
    const QString line =
        QStringLiteral("14:03:22 - Saved... /music/A folder/and another one/and one more/") + name;
    const int whole = metrics.horizontalAdvance(line);
    EXPECT_EQ(ScanLogPainter::Shortened(line, metrics, whole), line);
    for (const int width : {whole - 1, whole * 3 / 4, metrics.horizontalAdvance(name) + 40}) {
        const QString shown = ScanLogPainter::Shortened(line, metrics, width);
        EXPECT_TRUE(shown.endsWith(u'/' + name) || shown.endsWith(u'…' + name)) << FromQString(shown);
        EXPECT_LE(metrics.horizontalAdvance(shown), width) << FromQString(shown);
    }
    EXPECT_EQ(ScanLogPainter::Shortened(line, metrics, 50), name) << "where nothing else has room";
    const QString reason =
        QStringLiteral("Übersprungen... /music/A folder/c.mp3 (nicht lesbar: Input/output error)");
    EXPECT_TRUE(ScanLogPainter::Shortened(reason, metrics, metrics.horizontalAdvance(reason) - 10)
                    .endsWith(QStringLiteral("c.mp3 (nicht lesbar: Input/output error)")));
}

TEST_F(ScanLogTest, TheLogShowsLongLinesWithTheirFilesNamesAndTellsTheWholeLineInATip) {
    const std::string folders = "/music/" + std::string(200, 'x') + "/";
    log.Show();
    log.AddLine("14:03:22 - Saved... " + folders + "Name.mp3");
    EndScan();
    const std::string painted = PaintedTexts(*Part<QListView>("lstLog").viewport());
    EXPECT_THAT(painted, ::testing::EndsWith("Name.mp3"));
    EXPECT_THAT(painted, ::testing::StartsWith("14:03:22"));
    EXPECT_EQ(FromQString(Part<QListView>("lstLog").model()->index(0, 0).data(Qt::ToolTipRole).toString()),
              "14:03:22 - Saved... " + folders + "Name.mp3");
}

TEST_F(ScanLogTest, ALineBreakInANameIsPaintedAsABlank) {
    log.Show();
    log.AddLine("14:03:22 - Saved... /a\nb\rc\u2028d\u2029e.mp3");
    EndScan();
    EXPECT_EQ(PaintedTexts(*Part<QListView>("lstLog").viewport()), "14:03:22-Saved.../abcde.mp3");
}

TEST_F(ScanLogTest, TheSelectedLineHasTheColourOfSelectedTexts) {
    QPalette palette;
    palette.setColor(QPalette::Text, QColor(0, 0, 0xFF));
    palette.setColor(QPalette::HighlightedText, QColor(0xFF, 0, 0));
    palette.setColor(QPalette::Highlight, QColor(0xFF, 0xFF, 0));
    palette.setColor(QPalette::Base, QColor(0xFF, 0xFF, 0xFF));
    auto& list = Part<QListView>("lstLog");
    list.setPalette(palette);
    QFont font = list.font();
    font.setStyleStrategy(QFont::NoAntialias);
    list.setFont(font);
    log.Show();
    log.AddLine("14:03:22 - Saved... /a.mp3");
    log.AddLine("14:03:23 - Saved... /b.mp3");
    EndScan();
    const auto has = [&](int row, const QColor& color) {
        const QRect line = list.visualRect(list.model()->index(row, 0));
        const QImage image = list.viewport()->grab(line).toImage();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == color) {
                    return true;
                }
            }
        }
        return false;
    };
    EXPECT_TRUE(has(0, palette.color(QPalette::Text)));
    EXPECT_FALSE(has(0, palette.color(QPalette::HighlightedText)));
    EXPECT_TRUE(has(1, palette.color(QPalette::HighlightedText)));
    EXPECT_FALSE(has(1, palette.color(QPalette::Text)));
}

TEST_F(ScanLogTest, TheLogComesUpInTheSizeThatItWasGiven) {
    log.Show();
    log.close();
    EXPECT_FALSE(settings.values.contains("ScanLogWidth")) << "nobody has changed it";
    log.Show();
    log.resize(480, 300);
    log.close();
    EXPECT_EQ(settings.values["ScanLogWidth"], "7200");
    EXPECT_EQ(settings.values["ScanLogHeight"], "4500");
    frmScanLog next(nullptr);
    next.Show();
    EXPECT_EQ(next.size(), QSize(480, 300));
    next.close();
    settings.values["ScanLogWidth"] = "wide";
    settings.values["ScanLogHeight"] = "9000000";
    frmScanLog bounded(nullptr);
    bounded.Show();
    EXPECT_EQ(bounded.width(), 560);
    EXPECT_LT(bounded.height(), bounded.screen()->availableGeometry().height());
}

} // namespace quavernet::test
