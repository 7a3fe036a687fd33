#include "output/PrintGrid.h"

#include "support/LogicTest.h"
#include "support/LongWorkDouble.h"
#include "support/PrinterDouble.h"

#include <gmock/gmock.h>

namespace quavernet::test {

namespace {

using ::testing::ElementsAre;

class PrintGridTest : public LogicTest {
protected:
    void Print(const std::string& title = "Title", const std::string& subTitle = {},
               std::int16_t keepColumns = 0) {
        PrintGrid(grid, {20, 25, 20, 20}, title, subTitle, keepColumns, printer, work);
    }
    /// So many rows of the two columns.
    void SetRows(std::size_t rows) { grid.contents->Rows = NumberedRows(rows); }

    Paper paper;
    PrinterDouble printer{paper};
    LongWorkDouble work{paper.calls};
    PrintableGridDouble grid{paper.calls};
};

} // namespace

TEST_F(PrintGridTest, TitleDateHeaderAndRowsComeInOneDocumentUnderTheHourglass) {
    Print();
    EXPECT_THAT(paper.calls, ElementsAre("pointer 11", "contents", "start Title", "end", "pointer 0"));
    ASSERT_EQ(paper.pages.size(), 1U);
    EXPECT_THAT(paper.Texts(0),
                ElementsAre("Title", "20.11.2026", "Performer", "Title", "P1", "T1", "P2", "T2"));
}

TEST_F(PrintGridTest, TitleAndDateStandAtTenAndSixteenMillimetresFromTheLeftMargin) {
    Print();
    EXPECT_EQ(paper.pages[0][0].x, 200);
    EXPECT_EQ(paper.pages[0][0].y, 200);
    EXPECT_EQ(paper.pages[0][1].x, 200);
    EXPECT_EQ(paper.pages[0][1].y, 320);
    EXPECT_EQ(paper.pages[0][0].width, 1600) << "no title goes over the right margin";
}

TEST_F(PrintGridTest, TheDateIsThatOfThePrintingWithPointsWhateverTheRegionSays) {
    services.regional.dateSeparator = "/";
    clock.now = {2027, 3, 5, 23, 59, 59};
    settings.values["Language"] = "ENG";
    Print();
    EXPECT_EQ(paper.Texts(0)[1], "05.03.2027");
}

TEST_F(PrintGridTest, ASubtitleComesInPlaceOfTheDate) {
    Print("Title", "Second line");
    EXPECT_EQ(paper.Texts(0)[1], "Second line");
    EXPECT_EQ(paper.pages[0][1].y, 320);
}

TEST_F(PrintGridTest, AnEmptyTitleIsLeftOutAndTheDateKeepsItsPlace) {
    Print("");
    EXPECT_EQ(paper.Texts(0)[0], "20.11.2026");
    EXPECT_EQ(paper.pages[0][0].y, 320);
}

TEST_F(PrintGridTest, AnEmptyListPrintsAPageWithTitleDateAndHeader) {
    SetRows(0);
    Print();
    ASSERT_EQ(paper.pages.size(), 1U);
    EXPECT_THAT(paper.Texts(0), ElementsAre("Title", "20.11.2026", "Performer", "Title"));
    EXPECT_THAT(paper.calls, ::testing::Contains("end"));
}

TEST_F(PrintGridTest, EachPageHasTitleDateAndHeaderAndEachRowComesOnceInOrder) {
    SetRows(3000);
    Print();
    std::size_t row = 0;
    for (std::size_t page = 0; page < paper.pages.size(); ++page) {
        const std::vector<std::string> texts = paper.Texts(page);
        ASSERT_GT(texts.size(), 4U);
        EXPECT_EQ(texts[0], "Title");
        EXPECT_EQ(texts[1], "20.11.2026");
        EXPECT_EQ(texts[2], "Performer");
        for (std::size_t i = 4; i < texts.size(); i += 2) {
            ++row;
            EXPECT_EQ(texts[i], "P" + std::to_string(row));
            EXPECT_EQ(texts[i + 1], "T" + std::to_string(row));
        }
    }
    EXPECT_EQ(row, 3000U);
    // 235 mm are room for 47 rows of 5 mm, one of them the header.
    EXPECT_EQ(paper.pages.size(), 66U);
}

TEST_F(PrintGridTest, FullPagesAreFollowedByNoEmptyOne) {
    SetRows(92);
    Print();
    EXPECT_EQ(paper.pages.size(), 2U);
    EXPECT_EQ(std::count(paper.calls.begin(), paper.calls.end(), "page"), 1);
}

TEST_F(PrintGridTest, NothingIsPrintedBeyondTheMargins) {
    grid.contents->GridLines = true;
    grid.contents->Columns[0].Width = 400;
    SetRows(100);
    Print();
    for (std::size_t page = 0; page < paper.pages.size(); ++page) {
        for (std::size_t i = 0; i < paper.pages[page].size(); ++i) {
            const PrintedText& text = paper.pages[page][i];
            EXPECT_GE(text.x, 200);
            EXPECT_LE(text.x + text.width, 1800);
            EXPECT_GE(text.y, i < 2 ? 200 : 500);
            EXPECT_LE(text.y + 8 * text.points, 5200);
        }
        for (const PrintedLine& line : paper.lines[page]) {
            EXPECT_GE(line.x1, 200);
            EXPECT_LE(line.x2, 1800);
            EXPECT_GE(line.y1, 500);
            EXPECT_LE(line.y2, 5200);
        }
    }
}

TEST_F(PrintGridTest, ColumnsShrinkEvenlyToThePageAndNeverGrow) {
    Print();
    EXPECT_EQ(paper.pages[0][3].x - paper.pages[0][2].x, 400);
    grid.contents->Columns[0].Width = 240;
    grid.contents->Columns[1].Width = 80;
    Print();
    EXPECT_EQ(paper.pages[1][3].x - paper.pages[1][2].x, 1200) << "three quarters of 160 mm";
    EXPECT_DOUBLE_EQ(paper.pages[1][3].x + paper.pages[1][3].width, 1800 - 0.5 * 7.9);
}

TEST_F(PrintGridTest, ATextThatFillsItsCellHasRoomAtEachShare) {
    for (const double width : {130.0, 160.0, 200.0}) {
        grid.contents->Columns[0].Width = width;
        paper.pages.clear();
        Print();
        const PrintedText& text = paper.pages[0][3];
        EXPECT_LT(text.points, 10) << width;
        EXPECT_NEAR(text.width / text.points, (400 - 2 * 7.9) / 10, 1e-9) << width;
    }
}

TEST_F(PrintGridTest, TheDateIsAskedOnceForTheWholeDocument) {
    SetRows(100);
    events.onDoEvents = [&] { clock.now = {2026, 11, 21, 0, 0, 1}; };
    Print();
    ASSERT_EQ(paper.pages.size(), 3U);
    for (std::size_t page = 0; page < 3; ++page) {
        EXPECT_EQ(paper.Texts(page)[1], "20.11.2026");
    }
}

TEST_F(PrintGridTest, RowsShrinkWithTheirColumnsToSixPointsAndTheTitleDoesNot) {
    const auto sizes = [this](double width) {
        grid.contents->Columns[0].Width = width;
        paper.pages.clear();
        Print();
        for (std::size_t i = 4; i < paper.pages[0].size(); ++i) {
            EXPECT_EQ(paper.pages[0][i].points, paper.pages[0][2].points) << "header and rows alike";
        }
        return std::vector<double>{paper.pages[0][0].points, paper.pages[0][1].points,
                                   paper.pages[0][2].points};
    };
    EXPECT_THAT(sizes(40), ElementsAre(10, 10, 10));
    EXPECT_THAT(sizes(160), ElementsAre(10, 10, 8));
    EXPECT_THAT(sizes(1000), ElementsAre(10, 10, 6));
}

TEST_F(PrintGridTest, ThreeThousandSmallRowsAreThereOnceAndInOrderToo) {
    SetRows(3000);
    grid.contents->Columns[0].Width = 160;
    Print();
    std::size_t row = 0;
    for (std::size_t page = 0; page < paper.pages.size(); ++page) {
        const std::vector<std::string> texts = paper.Texts(page);
        for (std::size_t i = 4; i < texts.size(); i += 2) {
            EXPECT_EQ(texts[i], "P" + std::to_string(++row));
        }
    }
    EXPECT_EQ(row, 3000U);
    EXPECT_LT(paper.pages.size(), 60U) << "more of them on a page";
}

TEST_F(PrintGridTest, TheHeaderIsUnderlinedAndGridLinesComeWhereTheGridHasThem) {
    Print();
    EXPECT_THAT(paper.lines[0], ElementsAre(PrintedLine{200, 600, 1000, 600}));
    grid.contents->GridLines = true;
    Print();
    EXPECT_THAT(paper.lines[1],
                ElementsAre(PrintedLine{200, 600, 1000, 600}, PrintedLine{200, 700, 1000, 700},
                            PrintedLine{600, 500, 600, 800}));
}

TEST_F(PrintGridTest, AGridThatCannotPrintPagesPrintsNothingSilently) {
    grid.contents.reset();
    Print();
    EXPECT_THAT(paper.calls, ElementsAre("pointer 11", "contents", "pointer 0"));
    EXPECT_TRUE(paper.pages.empty());
}

TEST_F(PrintGridTest, KeptColumnsArePrintedAloneAndTheOthersGetTheirWidthsBack) {
    grid.widths = {3000, 2000, 1000};
    Print("Title", {}, 1);
    EXPECT_THAT(paper.calls,
                ElementsAre("pointer 11", "redraw off", "width 1 0", "width 2 0", "contents", "start Title",
                            "end", "width 1 2000", "width 2 1000", "redraw on", "pointer 0"));
}

TEST_F(PrintGridTest, NoColumnIsHiddenWhereTheGridHasNoMoreThanAreKept) {
    for (const std::int16_t keep : {std::int16_t{2}, std::int16_t{3}, std::int16_t{0}, std::int16_t{-1}}) {
        paper.calls.clear();
        Print("Title", {}, keep);
        EXPECT_THAT(paper.calls, ElementsAre("pointer 11", "contents", "start Title", "end", "pointer 0"))
            << keep;
    }
}

TEST_F(PrintGridTest, AGridThatRefusesGetsItsColumnsBackToo) {
    grid.contents.reset();
    Print("Title", {}, 1);
    EXPECT_EQ(grid.widths, (std::vector<std::int32_t>{3000, 3000}));
    EXPECT_EQ(paper.calls.back(), "pointer 0");
}

TEST_F(PrintGridTest, AFailingPrinterLeavesColumnsAndPointerAsTheyWere) {
    SetRows(100);
    for (const char* call : {"start", "page", "end"}) {
        paper.calls.clear();
        paper.failing = call;
        EXPECT_THROW(Print("Title", {}, 1), RuntimeError) << call;
        EXPECT_EQ(grid.widths, (std::vector<std::int32_t>{3000, 3000}));
        EXPECT_EQ(paper.calls[paper.calls.size() - 2], "redraw on");
        EXPECT_EQ(paper.calls.back(), "pointer 0");
    }
}

TEST_F(PrintGridTest, EventsRunAfterEachPageButTheLast) {
    SetRows(100);
    std::vector<std::size_t> pages;
    events.onDoEvents = [&] { pages.push_back(paper.pages.size()); };
    Print();
    EXPECT_THAT(pages, ElementsAre(1U, 2U));
}

TEST_F(PrintGridTest, ACancelDropsTheDocumentAfterThePage) {
    SetRows(1000);
    events.onDoEvents = [&] { work.cancelled = paper.pages.size() == 3; };
    Print();
    EXPECT_EQ(paper.pages.size(), 3U);
    EXPECT_THAT(paper.calls,
                ElementsAre("pointer 11", "contents", "start Title", "page", "page", "kill", "pointer 0"));
}

TEST_F(PrintGridTest, WhatHappensToTheGridInTheMiddleDoesNotReachThePaper) {
    SetRows(100);
    events.onDoEvents = [&] {
        grid.contents->Rows = NumberedRows(0);
        grid.contents->Columns.clear();
    };
    Print();
    EXPECT_EQ(paper.Texts(2).back(), "T100");
}

TEST_F(PrintGridTest, APageTooSmallForARowHasTitleAndDateAlone) {
    SetRows(100);
    printer.height = 20 * 54;
    Print();
    printer.height = 5600;
    printer.width = 300;
    Print();
    ASSERT_EQ(paper.pages.size(), 2U);
    EXPECT_THAT(paper.Texts(0), ElementsAre("Title", "20.11.2026"));
    EXPECT_THAT(paper.Texts(1), ElementsAre("Title", "20.11.2026"));
}

TEST_F(PrintGridTest, AGridWithoutVisibleColumnsPrintsTitleAndDate) {
    grid.contents->Columns.clear();
    Print();
    EXPECT_THAT(paper.Texts(0), ElementsAre("Title", "20.11.2026"));
    EXPECT_TRUE(paper.lines[0].empty());
}

} // namespace quavernet::test
