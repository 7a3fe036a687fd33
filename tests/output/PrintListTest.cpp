#include "output/PrintList.h"

#include "app/MainModule.h"
#include "support/ControlsDouble.h"
#include "support/LogicTest.h"
#include "support/LongWorkDouble.h"
#include "support/PrinterDouble.h"

#include <gmock/gmock.h>

namespace quavernet::test {

namespace {

using ::testing::ElementsAre;

class PrintListTest : public LogicTest {
protected:
    PrintListTest() { dialogs.printer = Chosen(); }

    ChosenPrinter Chosen() {
        return {std::make_unique<PrinterDouble>(paper), 3, Printer::Orientation::Landscape};
    }
    void Print() { PrintList(grid, work, controls); }

    Paper paper;
    LongWorkDouble work{paper.calls};
    ControlsDouble controls;
    PrintableGridDouble grid{paper.calls};
};

} // namespace

TEST_F(PrintListTest, TheDialogComesFirstThenCopiesOrientationPanelListAndTheEmptyPanel) {
    dialogs.onShow = [this] { EXPECT_TRUE(paper.calls.empty()); };
    Print();
    EXPECT_THAT(dialogs.shown, ElementsAre("printer Quavernet Datei Liste"));
    EXPECT_THAT(paper.calls,
                ElementsAre("copies 3", "orientation 2", "panel 1: Drucke Liste...", "pointer 11", "contents",
                            "start Quavernet Datei Liste", "end", "pointer 0", "panel 1: "));
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(PrintListTest, MarginsAreTwentyTwentyFiveTwentyAndTwentyMillimetres) {
    grid.contents->Rows = NumberedRows(1000);
    grid.contents->Columns = {{ListColumn::Interpret, "Performer", 1000}};
    Print();
    const std::vector<PrintedText>& page = paper.pages[0];
    EXPECT_EQ(page[0].x, 200);
    EXPECT_NEAR(page[2].x, 200 + 0.16 * 7.9, 1e-9) << "within the cell";
    EXPECT_EQ(page[2].y, 510) << "10 pixels within the cell";
    EXPECT_NEAR(page[2].x + page[2].width, 2000 - 200 - 0.16 * 7.9, 1e-9);
    const double height = 8 * page.back().points;
    EXPECT_LE(page.back().y + height, 5600 - 400);
    EXPECT_GT(page.back().y + 2 * height + 20, 5600 - 400) << "not one more row has room";
}

TEST_F(PrintListTest, TitleAndPanelFollowTheLanguage) {
    settings.values["Language"] = "ENG";
    Print();
    EXPECT_THAT(dialogs.shown, ElementsAre("printer Quavernet File List"));
    EXPECT_THAT(paper.calls, ::testing::Contains("panel 1: Printing list..."));
    EXPECT_EQ(paper.Texts(0)[0], "Quavernet File List");
    EXPECT_EQ(paper.Texts(0)[1], "20.11.2026");
}

TEST_F(PrintListTest, ACancelledDialogPrintsNothing) {
    dialogs.printer.reset();
    Print();
    EXPECT_TRUE(paper.calls.empty());
    EXPECT_TRUE(paper.pages.empty());
}

TEST_F(PrintListTest, ADialogThatCannotComeUpPrintsNothingSilently) {
    dialogs.fails = true;
    Print();
    EXPECT_TRUE(paper.calls.empty());
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(PrintListTest, ARefusedNumberOfCopiesOrOrientationPrintsNothingSilently) {
    for (const char* call : {"copies", "orientation"}) {
        dialogs.printer = Chosen();
        paper.failing = call;
        Print();
        EXPECT_EQ(work.PanelText(Panel::Scanning), "");
        EXPECT_THAT(paper.calls, ::testing::Not(::testing::Contains("panel 1: Drucke Liste...")));
    }
    EXPECT_TRUE(paper.pages.empty());
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(PrintListTest, APrinterThatGoesAwayIsToldAfterThePanelIsEmptied) {
    grid.contents->Rows = NumberedRows(100);
    for (const char* call : {"start", "page", "end"}) {
        dialogs.printer = Chosen();
        paper.failing = call;
        paper.calls.clear();
        msgBox.shown.clear();
        Print();
        EXPECT_EQ(paper.calls.back(), "panel 1: ");
        EXPECT_THAT(msgBox.shown, ElementsAre(ShownBox{"Fehler: 482 - Printer error", "Drucken nicht möglich",
                                                       MsgBox::Icon::Critical, MsgBox::Buttons::Ok}));
        EXPECT_FALSE(controls.enabled.at("cancel"));
    }
    EXPECT_THAT(work.endWords, ::testing::IsEmpty()) << "the box has told it";
}

TEST_F(PrintListTest, TheToolbarsCancelIsEnabledWhileTheListPrints) {
    grid.contents->Rows = NumberedRows(100);
    int rounds = 0;
    work.cancelled = true; // From a scan before.
    dialogs.onShow = [this] { EXPECT_TRUE(controls.enabled.empty()) << "not yet"; };
    events.onDoEvents = [&] {
        ++rounds;
        EXPECT_TRUE(controls.enabled.at("cancel"));
    };
    Print();
    EXPECT_EQ(rounds, 2);
    EXPECT_FALSE(controls.enabled.at("cancel"));
    EXPECT_EQ(paper.Texts(2).back(), "T100");
}

TEST_F(PrintListTest, TheEndTellsHowManyPagesWerePrintedAfterThePanelIsEmptied) {
    grid.contents->Rows = NumberedRows(100);
    events.onDoEvents = [&] { clock.now.second += 1; };
    Print();
    EXPECT_THAT(work.endWords, ElementsAre("Fertig: 3 Seiten gedruckt, 0:02"));
    EXPECT_EQ(work.PanelText(Panel::Scanning), "");
    settings.values["Language"] = "ENG";
    grid.contents->Rows = NumberedRows(1);
    dialogs.printer = Chosen();
    Print();
    EXPECT_EQ(work.endWords.back(), "Done: 1 page printed, 0:00");
}

TEST_F(PrintListTest, WhatIsNotPrintedTellsNoEnd) {
    grid.contents.reset();
    Print();
    dialogs.printer.reset();
    Print();
    EXPECT_THAT(work.endWords, ::testing::IsEmpty());
}

TEST_F(PrintListTest, ACancelEndsItWithoutABox) {
    grid.contents->Rows = NumberedRows(1000);
    events.onDoEvents = [&] {
        clock.now.second += 4;
        work.cancelled = true;
    };
    Print();
    EXPECT_THAT(work.endWords, ElementsAre("Abgebrochen nach 0:04"));
    EXPECT_EQ(paper.pages.size(), 1U);
    EXPECT_THAT(paper.calls, ::testing::Contains("kill"));
    EXPECT_THAT(paper.calls, ::testing::Not(::testing::Contains("end")));
    EXPECT_TRUE(msgBox.shown.empty());
}

} // namespace quavernet::test
