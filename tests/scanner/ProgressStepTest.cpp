#include "scanner/ProgressStep.h"

#include "scanner/ClockText.h"

#include "support/LogicTest.h"
#include "support/ScanDoubles.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;

class ProgressStepTest : public LogicTest {
protected:
    ProgressStepTest() {
        mainModule.ScanStartTime = clock.now;
        run.texts.Percent = " Prozent bearbeitet!";
        run.FilesTotal = 3;
        run.FilesDone = 1;
        run.ProgressStep = 1;
    }

    void Advance() { AdvanceProgress(run, run.FilesTotal, "verbl.: ", "Zeit: "); }
    void LetSecondsPass(int seconds) {
        clock.now.minute += seconds / 60;
        clock.now.second += seconds % 60;
    }
    // The time left when `done` of `total` files took so many seconds.
    std::string Left(int seconds, std::int32_t done, double total) {
        clock.now = mainModule.ScanStartTime;
        clock.now.second = 0;
        mainModule.ScanStartTime.second = 0;
        LetSecondsPass(seconds);
        run.FilesDone = done;
        run.FilesTotal = total;
        Advance();
        return work.panels[3];
    }

    CallList calls;
    LongWorkDouble work{calls};
    RecordingScanView view{calls};
    RecordingScanLog log{calls};
    ScanRun run{work, view, log};
};

TEST_F(ProgressStepTest, BarTitleAndPanelsAreSetInThisOrder) {
    run.ProgressStep = 33.4F;
    run.FilesDone = 1;
    LetSecondsPass(10);

    Advance();

    EXPECT_THAT(calls, ElementsAre("progress 33.400002", "title: Quavernet - 33 %",
                                   "panel 2: 33 Prozent bearbeitet!", "panel 3: verbl.: 00:00:20",
                                   "panel 4: Zeit: 00:00:10"));
}

TEST_F(ProgressStepTest, TheBarIsRoundedHalfAwayFromZero) {
    work.progress = 1.5F;
    Advance();
    EXPECT_EQ(work.title, "Quavernet - 3 %");

    work.progress = 0;
    run.ProgressStep = 0.4F;
    Advance();
    EXPECT_EQ(work.title, "Quavernet - 0 %");
    EXPECT_EQ(work.panels[2], "0 Prozent bearbeitet!");
}

TEST_F(ProgressStepTest, TheBarGrowsInSinglePrecisionAndStopsAtAHundred) {
    run.ProgressStep = static_cast<float>(100.0 / 3);
    Advance();
    Advance();
    EXPECT_EQ(work.progress, run.ProgressStep + run.ProgressStep);
    Advance();
    Advance();
    EXPECT_EQ(work.progress, 100.0F);
    EXPECT_EQ(work.title, "Quavernet - 100 %");

    work.progress = 99;
    run.ProgressStep = 1;
    Advance();
    EXPECT_EQ(work.progress, 100.0F) << "not above 100: set as it is";
}

TEST_F(ProgressStepTest, TheTimeLeftIsRoundedHalfToEven) {
    EXPECT_EQ(Left(1, 2, 3), "verbl.: 00:00:00");
    EXPECT_EQ(Left(3, 2, 3), "verbl.: 00:00:02");
    EXPECT_EQ(Left(5, 2, 3), "verbl.: 00:00:02");
    EXPECT_EQ(Left(7, 2, 3), "verbl.: 00:00:04");
}

TEST_F(ProgressStepTest, TheTimeLeftTurnsNegativeWhenMoreFilesAreVisitedThanWereCounted) {
    EXPECT_EQ(Left(10, 5, 4), "verbl.: 00:00:-02");
    EXPECT_EQ(Left(5, 5, 4), "verbl.: 00:00:00") << "a value of exactly -1 second is corrected";
}

TEST_F(ProgressStepTest, TheStepBeforeTheFirstFileShowsNoTimeLeft) {
    EXPECT_EQ(Left(7, 0, 3), "verbl.: 00:00:00");
    EXPECT_EQ(work.panels[4], "Zeit: 00:00:07");
}

TEST_F(ProgressStepTest, ATimeLeftBeyond32BitsOverflows) {
    try {
        Left(59, 1, 1e9);
        FAIL() << "nothing was raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::Overflow);
    }
    EXPECT_EQ(work.panels[2], "1 Prozent bearbeitet!") << "what comes before it has been shown";
    EXPECT_EQ(work.panels.count(3), 0u);
}

TEST_F(ProgressStepTest, PrefixesAndTotalAreTheCallers) {
    LetSecondsPass(10);
    AdvanceProgress(run, 11, "left: ", "used: ");

    EXPECT_EQ(work.panels[3], "left: 00:01:40");
    EXPECT_EQ(work.panels[4], "used: 00:00:10");
}

TEST(ClockTextTest, HoursMinutesAndSecondsHaveTwoDigitsAtLeast) {
    EXPECT_EQ(ClockText(0), "00:00:00");
    EXPECT_EQ(ClockText(59), "00:00:59");
    EXPECT_EQ(ClockText(60), "00:01:00");
    EXPECT_EQ(ClockText(3599), "00:59:59");
    EXPECT_EQ(ClockText(3600), "01:00:00");
    EXPECT_EQ(ClockText(360000), "100:00:00");
}

TEST(ClockTextTest, NegativeTimesCarryTheSignInEachPart) {
    EXPECT_EQ(ClockText(-1), "00:00:00");
    EXPECT_EQ(ClockText(-2), "00:00:-02");
    EXPECT_EQ(ClockText(-61), "00:-01:00");
    EXPECT_EQ(ClockText(-62), "00:-01:-02");
    EXPECT_EQ(ClockText(-3725), "-01:-02:-05");
}

} // namespace
} // namespace quavernet::test
