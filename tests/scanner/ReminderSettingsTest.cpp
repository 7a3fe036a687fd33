#include "scanner/ReminderSettings.h"

#include "app/LoadResString.h"
#include "support/TestLibrary.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace quavernet::test {

namespace {

class ReminderSettingsTest : public LibraryTest {
protected:
    void SetReminder(const std::string& flag, const std::string& date, const std::string& period) {
        Execute("Delete from Reminder");
        Execute("Insert Into Reminder (RemindFlag, RemindDate, ScanPeriode) values (" + flag + ", '" + date +
                "', '" + period + "')");
    }
    std::vector<std::string> Stored() {
        return Rows("Select RemindFlag, RemindDate, ScanPeriode from Reminder");
    }
};

/// The options that are set, as letters.
std::string OptionsOf(const ReminderChoice& choice) {
    return std::string(choice.optDaily ? "d" : "") + (choice.optWeekly ? "w" : "") +
           (choice.optMonthly ? "m" : "") + (choice.optYearly ? "y" : "");
}

} // namespace

TEST_F(ReminderSettingsTest, WithoutARowTheReminderIsOffAndTheFormKeepsItsOption) {
    RecordingConnection& recorder = Record();
    const ReminderSettings stored = LoadReminderSettings();
    EXPECT_FALSE(stored.choice.chkRemind);
    EXPECT_EQ(OptionsOf(stored.choice), "");
    EXPECT_EQ(stored.lblDate, LoadResString(408));
    EXPECT_EQ(stored.lblDate, "Erinnerung nicht aktiviert!");
    EXPECT_THAT(recorder.statements, ElementsAre("Select RemindFlag, ScanPeriode, RemindDate from Reminder"));
}

TEST_F(ReminderSettingsTest, TheStoredPeriodIsSelectedAlsoWhileTheReminderIsOff) {
    for (const char* period : {"d", "w", "m", "y"}) {
        SetReminder("0", "20.11.2026", period);
        const ReminderSettings stored = LoadReminderSettings();
        EXPECT_EQ(OptionsOf(stored.choice), period);
        EXPECT_FALSE(stored.choice.chkRemind);
        EXPECT_EQ(stored.lblDate, "Erinnerung nicht aktiviert!");
    }
}

TEST_F(ReminderSettingsTest, AFlagOtherThanOneIsOffInTheFormAsItIsAtTheStart) {
    for (const char* flag : {"2", "-1", "0.5", "null"}) {
        SetReminder(flag, "01.02.2027", "m");
        const ReminderSettings stored = LoadReminderSettings();
        EXPECT_FALSE(stored.choice.chkRemind) << flag;
        EXPECT_EQ(stored.lblDate, "Erinnerung nicht aktiviert!") << flag;
    }
}

TEST_F(ReminderSettingsTest, AReminderThatIsOnShowsItsNextDate) {
    SetReminder("1", "01.02.2027", "m");
    const ReminderSettings stored = LoadReminderSettings();
    EXPECT_TRUE(stored.choice.chkRemind);
    EXPECT_EQ(stored.lblDate, "Nächste Erinnerung am 01.02.2027");
}

TEST_F(ReminderSettingsTest, AReminderThatIsOnWithoutADateSaysSo) {
    SetReminder("1", "", "m");
    EXPECT_EQ(LoadReminderSettings().lblDate, "Kein Erinnerungsdatum vorhanden!");
    Execute("Update Reminder set RemindDate = null");
    EXPECT_EQ(LoadReminderSettings().lblDate, "Kein Erinnerungsdatum vorhanden!");
}

TEST_F(ReminderSettingsTest, OffAndNeverSetAreTwoTextsInBothLanguages) {
    settings.values["Language"] = "ENG";
    EXPECT_EQ(LoadReminderSettings().lblDate, LoadResString(408));
    SetReminder("0", "", "d");
    EXPECT_EQ(LoadReminderSettings().lblDate, LoadResString(409));
    SetReminder("1", "01.02.2027", "d");
    EXPECT_EQ(LoadReminderSettings().lblDate, LoadResString(410) + "01.02.2027");
}

TEST_F(ReminderSettingsTest, AnUnknownPeriodSelectsNoOption) {
    SetReminder("1", "01.02.2027", "q");
    EXPECT_EQ(OptionsOf(LoadReminderSettings().choice), "");
}

TEST_F(ReminderSettingsTest, TheFirstSaveInsertsTheRow) {
    RecordingConnection& recorder = Record();
    SaveReminderSettings({.chkRemind = true, .optWeekly = true});
    EXPECT_THAT(recorder.statements,
                ElementsAre("Select RemindFlag from Reminder",
                            "Insert Into Reminder (RemindFlag, RemindDate, Scanperiode) values (1, "
                            "'27.11.2026', 'w')"));
    EXPECT_THAT(Stored(), ElementsAre("1|27.11.2026|w"));
}

TEST_F(ReminderSettingsTest, ALaterSaveUpdatesTheOneRow) {
    SetReminder("1", "01.01.2020", "d");
    RecordingConnection& recorder = Record();
    SaveReminderSettings({.chkRemind = false, .optYearly = true});
    EXPECT_THAT(
        recorder.statements,
        ElementsAre("Select RemindFlag from Reminder",
                    "Update Reminder Set RemindFlag = 0, RemindDate = '20.11.2027', ScanPeriode = 'y'"));
    EXPECT_THAT(Stored(), ElementsAre("0|20.11.2027|y"));
}

TEST_F(ReminderSettingsTest, EachOptionGivesItsLetterAndOneUnitFromToday) {
    clock.now = {2028, 1, 31, 22, 15, 0};
    SaveReminderSettings({.chkRemind = true, .optDaily = true});
    EXPECT_THAT(Stored(), ElementsAre("1|01.02.2028|d"));
    SaveReminderSettings({.chkRemind = true, .optWeekly = true});
    EXPECT_THAT(Stored(), ElementsAre("1|07.02.2028|w"));
    SaveReminderSettings({.chkRemind = true, .optMonthly = true});
    EXPECT_THAT(Stored(), ElementsAre("1|29.02.2028|m"));
    SaveReminderSettings({.chkRemind = true, .optYearly = true});
    EXPECT_THAT(Stored(), ElementsAre("1|31.01.2029|y"));
}

TEST_F(ReminderSettingsTest, OptionsAreTestedFromDailyToYearly) {
    ReminderChoice choice{true, true, true, true, true};
    std::string letters;
    for (bool* option : {&choice.optDaily, &choice.optWeekly, &choice.optMonthly, &choice.optYearly}) {
        SaveReminderSettings(choice);
        letters += Value("Select ScanPeriode from Reminder");
        *option = false;
    }
    EXPECT_EQ(letters, "dwmy");
}

TEST_F(ReminderSettingsTest, AFailureIsNotCaught) {
    Execute("Drop table Reminder");
    EXPECT_THROW((void)LoadReminderSettings(), RuntimeError);
    EXPECT_THROW(SaveReminderSettings({}), RuntimeError);
}

} // namespace quavernet::test
