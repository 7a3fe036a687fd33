#include "scanner/CheckReminder.h"

#include "app/LoadResString.h"
#include "support/TestLibrary.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace quavernet::test {

namespace {

/// Notes what was stored when the question came up, and can let time pass while it is open.
class WatchedMsgBox : public ScriptedMsgBox {
public:
    Answer Show(const std::string& text, const std::string& title, Icon icon, Buttons buttons) override {
        if (onShow) {
            onShow();
        }
        return ScriptedMsgBox::Show(text, title, icon, buttons);
    }

    std::function<void()> onShow;
};

class CheckReminderTest : public LibraryTest {
protected:
    CheckReminderTest() { services.msgBox = &box; }

    void SetReminder(const std::string& flag, const std::string& date, const std::string& period) {
        Execute("Insert Into Reminder (RemindFlag, RemindDate, ScanPeriode) values (" + flag + ", '" + date +
                "', '" + period + "')");
    }
    bool Check() {
        bool result = false;
        CheckReminder(result, [this] { ++splashUnloads; });
        return result;
    }
    std::string NextDate() { return Value("Select RemindDate from Reminder"); }
    /// The date that follows a reminder of today.
    std::string DateAfter(const std::string& period, const DateTime& today) {
        clock.now = today;
        Execute("Delete from Reminder");
        SetReminder("1", ShortDateText(today, services.regional), period);
        EXPECT_FALSE(Check());
        return NextDate();
    }

    WatchedMsgBox box;
    int splashUnloads = 0;
};

} // namespace

TEST_F(CheckReminderTest, WithoutARowNothingIsAsked) {
    RecordingConnection& recorder = Record();
    EXPECT_FALSE(Check());
    EXPECT_THAT(box.shown, IsEmpty());
    EXPECT_EQ(splashUnloads, 0);
    EXPECT_THAT(recorder.statements, ElementsAre("Select RemindFlag, RemindDate from Reminder"));
}

TEST_F(CheckReminderTest, AReminderThatIsOffStaysSilentOnItsDay) {
    for (const char* flag : {"0", "2", "-1", "null"}) {
        Execute("Delete from Reminder");
        SetReminder(flag, "20.11.2026", "d");
        EXPECT_FALSE(Check()) << flag;
    }
    EXPECT_THAT(box.shown, IsEmpty());
    EXPECT_EQ(splashUnloads, 0);
    EXPECT_EQ(NextDate(), "20.11.2026");
}

TEST_F(CheckReminderTest, ADateThatHasPassedNeverFires) {
    SetReminder("1", "19.11.2026", "d");
    EXPECT_FALSE(Check());
    clock.now = AddDays(clock.now, 7);
    EXPECT_FALSE(Check());
    EXPECT_THAT(box.shown, IsEmpty());
    EXPECT_EQ(NextDate(), "19.11.2026");
}

TEST_F(CheckReminderTest, ADateToComeOrNoDateStaysSilent) {
    for (const char* date : {"21.11.2026", "20.11.2027", "20.12.2026", ""}) {
        Execute("Delete from Reminder");
        SetReminder("1", date, "d");
        EXPECT_FALSE(Check()) << date;
        EXPECT_EQ(NextDate(), date);
    }
    Execute("Update Reminder set RemindDate = null");
    EXPECT_FALSE(Check());
    EXPECT_THAT(box.shown, IsEmpty());
}

TEST_F(CheckReminderTest, OnItsDayTheQuestionComesUpWithoutTheSplashWindow) {
    SetReminder("1", "20.11.2026", "d");
    box.onShow = [this] { EXPECT_EQ(splashUnloads, 1); };
    EXPECT_FALSE(Check());
    EXPECT_EQ(splashUnloads, 1);
    EXPECT_THAT(box.shown,
                ElementsAre(ShownBox{"Sie haben die ScanErinnerung aktiviert!\nMöchten Sie nun einen "
                                     "Scanvorgang durchführen?",
                                     "Scan Erinnerung", MsgBox::Icon::Question, MsgBox::Buttons::YesNo}));
}

TEST_F(CheckReminderTest, TheQuestionFollowsTheLanguage) {
    settings.values["Language"] = "ENG";
    SetReminder("1", "20.11.2026", "d");
    (void)Check();
    ASSERT_EQ(box.shown.size(), 1U);
    EXPECT_EQ(box.shown[0].text, LoadResString(385) + "\n" + LoadResString(386));
    EXPECT_EQ(box.shown[0].title, LoadResString(387));
    EXPECT_NE(box.shown[0].title, "Scan Erinnerung");
}

TEST_F(CheckReminderTest, TheTimeOfDayDoesNotMatter) {
    SetReminder("1", "20.11.2026 08:30:00", "d");
    clock.now = {2026, 11, 20, 23, 59, 59};
    (void)Check();
    EXPECT_EQ(box.shown.size(), 1U);
}

TEST_F(CheckReminderTest, OnlyYesStartsAScan) {
    SetReminder("1", "20.11.2026", "d");
    box.answers = {MsgBox::Answer::Yes};
    EXPECT_TRUE(Check());
    clock.now = AddDays(clock.now, 1);
    box.answers = {MsgBox::Answer::No};
    EXPECT_FALSE(Check());
    EXPECT_EQ(box.shown.size(), 2U);
}

TEST_F(CheckReminderTest, ANoLeavesTheCallersResultAlone) {
    SetReminder("1", "20.11.2026", "d");
    bool result = true;
    CheckReminder(result, [] {});
    EXPECT_TRUE(result);
}

TEST_F(CheckReminderTest, TheDateMovesOnAfterAnyAnswerSoThatADayAsksOnce) {
    for (const MsgBox::Answer answer : {MsgBox::Answer::Yes, MsgBox::Answer::No}) {
        Execute("Delete from Reminder");
        SetReminder("1", "20.11.2026", "w");
        box.answers = {answer};
        box.onShow = [this] { EXPECT_EQ(NextDate(), "20.11.2026") << "written before the answer"; };
        EXPECT_EQ(Check(), answer == MsgBox::Answer::Yes);
        EXPECT_EQ(NextDate(), "27.11.2026");
        box.shown.clear();
        EXPECT_FALSE(Check());
        EXPECT_THAT(box.shown, IsEmpty());
    }
}

TEST_F(CheckReminderTest, TheStatementsAreThoseOfTheReminder) {
    SetReminder("1", "20.11.2026", "m");
    RecordingConnection& recorder = Record();
    (void)Check();
    EXPECT_THAT(recorder.statements,
                ElementsAre("Select RemindFlag, RemindDate from Reminder", "Select ScanPeriode from Reminder",
                            "Update Reminder Set RemindDate = '20.12.2026'"));
    EXPECT_EQ(Value("Select RemindFlag from Reminder"), "1");
    EXPECT_EQ(Value("Select ScanPeriode from Reminder"), "m");
}

TEST_F(CheckReminderTest, EachPeriodHasItsStep) {
    EXPECT_EQ(DateAfter("d", {2026, 12, 31, 9, 0, 0}), "01.01.2027");
    EXPECT_EQ(DateAfter("w", {2026, 12, 31, 9, 0, 0}), "07.01.2027");
    EXPECT_EQ(DateAfter("m", {2026, 12, 31, 9, 0, 0}), "31.01.2027");
    EXPECT_EQ(DateAfter("y", {2026, 12, 31, 9, 0, 0}), "31.12.2027");
}

TEST_F(CheckReminderTest, MonthsAndYearsEndOnTheLastDayOfFebruary) {
    EXPECT_EQ(DateAfter("m", {2027, 1, 31, 9, 0, 0}), "28.02.2027");
    EXPECT_EQ(DateAfter("m", {2028, 1, 31, 9, 0, 0}), "29.02.2028");
    EXPECT_EQ(DateAfter("y", {2028, 2, 29, 9, 0, 0}), "28.02.2029");
}

TEST_F(CheckReminderTest, AnUnknownPeriodLeavesNoDate) {
    EXPECT_EQ(DateAfter("x", clock.now), "");
    EXPECT_EQ(DateAfter("", clock.now), "");
}

TEST_F(CheckReminderTest, AnAnswerAfterMidnightCountsFromTheNewDay) {
    SetReminder("1", "20.11.2026", "d");
    clock.now = {2026, 11, 20, 23, 59, 50};
    box.onShow = [this] { clock.now = {2026, 11, 21, 0, 10, 0}; };
    (void)Check();
    EXPECT_EQ(NextDate(), "22.11.2026");
}

TEST_F(CheckReminderTest, TheDayIsFoundWithTheDatesOfOtherCountriesToo) {
    services.regional = {".", ",", "/", "M/d/yyyy", true};
    mainModule.Connection = OpenLibrary(libraryPath, services.regional);
    clock.now = {2026, 5, 3, 9, 0, 0};
    SetReminder("1", "5/3/2026", "m");
    RecordingConnection& recorder = Record();
    (void)Check();
    EXPECT_EQ(box.shown.size(), 1U);
    EXPECT_THAT(recorder.StatementsOf("Update"), ElementsAre("Update Reminder Set RemindDate = '6/3/2026'"));
    EXPECT_EQ(NextDate(), "6/3/2026");
}

TEST_F(CheckReminderTest, AYesCountsAlsoIfTheNextDateCannotBeWritten) {
    SetReminder("1", "20.11.2026", "d");
    Record().failOn = "Update Reminder";
    box.answers = {MsgBox::Answer::Yes};
    bool result = false;
    EXPECT_THROW(CheckReminder(result, [] {}), RuntimeError);
    EXPECT_TRUE(result);
}

} // namespace quavernet::test
