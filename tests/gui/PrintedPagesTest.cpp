// The printed list as other programs find it in PDF files and pictures.
#include "gui/PrintTest.h"

#include "support/FileSizeLimit.h"
#include "support/OrdinaryUser.h"

#include <QHeaderView>
#include <QRegularExpression>

#include <gmock/gmock.h>

#include <filesystem>
#include <set>
#include <tuple>

namespace quavernet::test {

namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

class PrintedPagesTest : public PrintTest {
protected:
    /// The first box tells why nothing was printed.
    void ExpectTold(const std::string& start) {
        ASSERT_EQ(msgBox.shown.size(), 1U);
        EXPECT_THAT(msgBox.shown[0].text, StartsWith(start));
        EXPECT_EQ(msgBox.shown[0].title, "Drucken nicht möglich");
        EXPECT_EQ(msgBox.shown[0].icon, MsgBox::Icon::Critical);
        EXPECT_EQ(PanelText(Panel::Scanning), "");
    }
    Texts FilesInFolder() {
        Texts names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
            if (entry.is_regular_file()) {
                names.push_back(entry.path().filename());
            }
        }
        return names;
    }

    const std::string path = folder / "list.pdf";
};

/// Paper, orientation and language.
class EachPaperTest : public PrintTest,
                      public ::testing::WithParamInterface<
                          std::tuple<QPageSize::PageSizeId, Printer::Orientation, const char*>> {};

/// A picture in place of a page.
class PictureTarget : public PageTarget {
public:
    explicit PictureTarget(QImage& picture) : m_picture(picture) {}

    QPaintDevice& Device() override { return m_picture; }
    void SetCopies(int) override {}
    void SetOrientation(QPageLayout::Orientation) override {}
    void Open(const QString&) override { m_picture.fill(Qt::white); }
    bool NewPage() override { return false; }
    void Close() override {}
    void Abandon(QPainter& painter) override { painter.end(); }

private:
    QImage& m_picture;
};

} // namespace

TEST_P(EachPaperTest, ThreeThousandRowsAreThereOnceAndInOrderWithinTheMargins) {
    const auto [size, orientation, language] = GetParam();
    settings.values["Language"] = language;
    const bool german = std::string(language) == "GER";
    const std::string path = folder / "list.pdf";
    StartWithRows(3000);
    PrintTo(path, orientation, size);
    ASSERT_TRUE(msgBox.shown.empty());

    const std::vector<Texts> pages = Pages(path);
    int row = 0;
    for (const Texts& page : pages) {
        ASSERT_GT(page.size(), 3U);
        EXPECT_EQ(page[0], german ? "Quavernet Datei Liste" : "Quavernet File List");
        EXPECT_EQ(page[1], "20.11.2026");
        EXPECT_THAT(page[2],
                    StartsWith(german ? "Interpret Titel Länge Grösse" : "Performer Title Length Size"));
        for (std::size_t line = 3; line < page.size(); ++line) {
            const std::string number = std::to_string(++row);
            EXPECT_THAT(page[line], StartsWith("P" + number + " T" + number + " 00:"));
            EXPECT_THAT(page[line], ::testing::EndsWith(" mp3"));
        }
    }
    EXPECT_EQ(row, 3000);

    const QSizeF paper = QPageSize(size).size(QPageSize::Millimeter);
    const bool across = orientation == Printer::Orientation::Landscape;
    const double width = across ? paper.height() : paper.width();
    const double height = across ? paper.width() : paper.height();
    constexpr double Unprintable = 10 * 25.4 / 72;
    for (const int page : {1, static_cast<int>(pages.size())}) {
        const QImage picture = Picture(path, page);
        EXPECT_NEAR(picture.width(), Pixels(width), 2);
        EXPECT_NEAR(picture.height(), Pixels(height), 2);
        const QRect inked = Inked(picture);
        EXPECT_GE(inked.left(), Pixels(Unprintable + 20) - 1);
        EXPECT_LE(inked.left(), Pixels(Unprintable + 22));
        EXPECT_GE(inked.top(), Pixels(Unprintable + 10) - 1);
        EXPECT_LE(inked.top(), Pixels(Unprintable + 12));
        EXPECT_LE(inked.right(), Pixels(width - Unprintable - 20) + 1);
        EXPECT_LE(inked.bottom(), Pixels(height - Unprintable - 20) + 1);
        if (page == 1) {
            EXPECT_GE(inked.bottom(), Pixels(height - Unprintable - 27)) << "the page is full";
        }
        const QRect below = Inked(
            picture.copy(0, static_cast<int>(Pixels(Unprintable + 21)), picture.width(), picture.height()));
        EXPECT_GE(below.top(), Pixels(4) - 1) << "the rows begin at 25 mm";
        EXPECT_LE(below.top(), Pixels(6.5));
    }
}

INSTANTIATE_TEST_SUITE_P(Papers, EachPaperTest,
                         ::testing::Combine(::testing::Values(QPageSize::A4, QPageSize::Letter),
                                            ::testing::Values(Printer::Orientation::Portrait,
                                                              Printer::Orientation::Landscape),
                                            ::testing::Values("GER", "ENG")));

TEST_F(PrintedPagesTest, AnEmptyListGivesOnePageWithTitleAndDate) {
    StartWithRows(0);
    PrintTo(path);
    const std::vector<Texts> pages = Pages(path);
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_THAT(pages[0], ElementsAre("Quavernet Datei Liste", "20.11.2026",
                                      "Interpret Titel Länge Grösse Qualität (Bit) Format"));
}

TEST_F(PrintedPagesTest, NoPageFollowsTheLastRows) {
    StartWithRows(3000);
    PrintTo(path);
    EXPECT_GT(Pages(path).back().size(), 3U);
}

TEST_F(PrintedPagesTest, ALongTextEndsInAnEllipsisAfterAWholeLetter) {
    const std::string title =
        "Äpfel, Öl und Übermut: ein langer Titel, der in keine Spalte passt, so breit sie auch ist";
    AddFile("Künstler", title);
    AddFile("Zz", "Kurz");
    Start();
    Grid().setColumnWidth(1, 120);
    PrintTo(path);
    const Texts page = Pages(path).at(0);
    const QRegularExpressionMatch found =
        QRegularExpression(QStringLiteral("^Künstler (.+)… 01:05 ")).match(ToQString(page.at(3)));
    ASSERT_TRUE(found.hasMatch()) << page.at(3);
    EXPECT_TRUE(ToQString(title).startsWith(found.captured(1))) << page.at(3);
    EXPECT_GT(found.captured(1).size(), 8);
    EXPECT_THAT(page.at(4), StartsWith("Zz Kurz 01:05 "));
}

TEST_F(PrintedPagesTest, WhatHasRoomOnTheScreenHasRoomOnPaperInEveryFont) {
    const std::string title = "Ein Titel, der seine Spalte füllt";
    AddFile("Künstler", title);
    Start();
    for (int column = 2; column < ListColumnCount; ++column) {
        Grid().setColumnWidth(column, 40);
    }
    for (const int points : {7, 10, 14}) {
        QFont font = Grid().font();
        font.setPointSize(points);
        Grid().setFont(font);
        // The style leaves three pixels free on either side; letters on a screen come in whole pixels.
        const int filled = Grid().fontMetrics().horizontalAdvance(ToQString(title)) + 6;
        Grid().setColumnWidth(1, filled + filled / 20 + 1);
        for (const int first : {100, 300}) { // With and without room for all.
            Grid().setColumnWidth(0, first);
            PrintTo(path);
            EXPECT_THAT(Pages(path).at(0).at(3), StartsWith("Künstler " + title + " ")) << points;
        }
    }
}

TEST_F(PrintedPagesTest, NoTextReachesIntoTheNextColumn) {
    AddFile("WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW", "Titel");
    Start();
    Grid().setColumnWidth(0, 100);
    Grid().setColumnWidth(1, 100);
    PrintTo(path);
    const QImage picture = Picture(path, 1);
    // The first column's right edge: 100 pixels from the left margin; the ink keeps 0.8 mm away from it.
    const double edge = 10 * 25.4 / 72 + 20 + 100 * 25.4 / 96;
    const QRect gap(static_cast<int>(Pixels(edge - 0.6)), static_cast<int>(Pixels(36)),
                    static_cast<int>(Pixels(1.2)), static_cast<int>(Pixels(3)));
    EXPECT_TRUE(Inked(picture.copy(gap)).isNull());
    EXPECT_FALSE(Inked(picture.copy(gap.translated(static_cast<int>(-Pixels(10)), 0))).isNull());
}

TEST_F(PrintedPagesTest, HiddenColumnsAreNotPrintedAndTooNarrowOnesStayEmpty) {
    StartWithRows(3);
    Grid().setColumnWidth(0, 0);
    Grid().setColumnWidth(2, 4);
    PrintTo(path);
    const Texts page = Pages(path).at(0);
    EXPECT_EQ(page.at(2), "Titel Grösse Qualität (Bit) Format");
    EXPECT_THAT(page.at(3), StartsWith("T1 1,00 MB"));
}

TEST_F(PrintedPagesTest, GridLinesArePrintedWhereTheGridHasThem) {
    StartWithRows(3);
    PrintTo(path);
    const QImage without = Picture(path, 1);
    Grid().setShowGrid(true);
    PrintTo(path);
    EXPECT_NE(Picture(path, 1), without);
    EXPECT_EQ(Inked(Picture(path, 1)).right(), Inked(without).right());
}

TEST_F(PrintedPagesTest, AnyPaintDeviceTakesThePages) {
    StartWithRows(3);
    QImage picture(1000, 800, QImage::Format_RGB32);
    picture.setDotsPerMeterX(4000);
    picture.setDotsPerMeterY(4000);
    dialogs.printer = ChosenPrinter{std::make_unique<PaintedPages>(std::make_unique<PictureTarget>(picture)),
                                    1, Printer::Orientation::Portrait};
    Action("mnuPrint").trigger();
    const QRect inked = Inked(picture);
    EXPECT_NEAR(inked.left(), 80, 4) << "20 mm";
    EXPECT_NEAR(inked.top(), 43, 6) << "10 mm, and what the letters leave free";
    EXPECT_GT(inked.bottom(), 100);
}

TEST_F(PrintedPagesTest, TheSortOfTheListIsThatOfThePages) {
    AddFile("Abba", "One");
    AddFile("Cure", "Two");
    Start();
    QTest::mouseDClick(Grid().horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
    ASSERT_EQ(Listed(), (Texts{"Cure", "Abba"}));
    PrintTo(path);
    const Texts page = Pages(path).at(0);
    EXPECT_THAT(page.at(3), StartsWith("Cure Two"));
    EXPECT_THAT(page.at(4), StartsWith("Abba One"));
}

TEST_F(PrintedPagesTest, BreaksAndControlCharactersInATextBreakNoLine) {
    AddFile("Ab\nba\tx", "One\r\nTwo");
    AddFile("Cure", "Three");
    Start();
    PrintTo(path);
    const Texts page = Pages(path).at(0);
    EXPECT_THAT(page.at(3), StartsWith("Ab ba x One Two 01:05"));
    EXPECT_THAT(page.at(4), StartsWith("Cure Three 01:05"));
}

TEST_F(PrintedPagesTest, AFileInAFolderThatIsMissingIsTold) {
    StartWithRows(3);
    PrintTo(folder / "missing/list.pdf");
    ExpectTold("Fehler: 75 - ");
    EXPECT_THAT(msgBox.shown[0].text, ::testing::HasSubstr("missing/list.pdf"));
}

TEST_F(PrintedPagesTest, AFolderInPlaceOfTheFileIsTold) {
    std::filesystem::create_directory(path);
    StartWithRows(3);
    PrintTo(path);
    ExpectTold("Fehler: 75 - ");
    EXPECT_TRUE(std::filesystem::is_empty(path));
}

TEST_F(PrintedPagesTest, AFolderThatMayNotBeWrittenIsTold) {
    StartWithRows(3);
    std::filesystem::create_directory(folder / "closed");
    std::filesystem::permissions(folder / "closed", std::filesystem::perms::owner_read);
    {
        const OrdinaryUser user;
        PrintTo(folder / "closed/list.pdf");
    }
    ExpectTold("Fehler: 75 - ");
    EXPECT_TRUE(std::filesystem::is_empty(folder / "closed"));
}

TEST_F(PrintedPagesTest, AFullDiskIsToldAndTheOldFileStays) {
    StartWithRows(3000);
    WriteFile(path, "old");
    const Texts before = FilesInFolder();
    {
        const FileSizeLimit limit(20000);
        PrintTo(path);
    }
    ExpectTold("Fehler: 61 - ");
    EXPECT_EQ(ReadFile(path), "old");
    EXPECT_EQ(FilesInFolder(), before);
}

TEST_F(PrintedPagesTest, APrintReplacesAnOldFile) {
    StartWithRows(3);
    WriteFile(path, "old");
    PrintTo(path);
    EXPECT_THAT(ReadFile(path), StartsWith("%PDF-"));
    EXPECT_TRUE(msgBox.shown.empty());
}

} // namespace quavernet::test
